// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/value_tables.h"

#include <algorithm>

#include "shell/text.h"

namespace zqm {
namespace {

constexpr CodedWord kUnitWords[] = {
    {1, u"No-unit"}, {2, u"Inch"}, {3, u"Centimeter"}, {4, u"Millimeter"}, {5, u"Micrometer"},
};
constexpr CodedWord kExposureModeWords[] = {
    {0, u"Auto exposure"},
    {1, u"Manual exposure"},
    {2, u"Auto bracket"},
};
constexpr CodedWord kWhiteBalanceWords[] = {
    {0, u"Auto white balance"},
    {1, u"Manual white balance"},
};
constexpr CodedWord kMeteringModeWords[] = {
    {0, u"Unknown"}, {1, u"Average"},    {2, u"Center weighted average"},
    {3, u"Spot"},    {4, u"Multi-spot"}, {5, u"Multi-segment"},
    {6, u"Partial"}, {255, u"Other"},
};
constexpr CodedWord kExposureProgramWords[] = {
    {0, u"Not defined"},        {1, u"Manual"},           {2, u"Normal program"},
    {3, u"Aperture priority"},  {4, u"Shutter priority"}, {5, u"Creative (slow speed)"},
    {6, u"Action(high speed)"}, {7, u"Portrait mode"},    {8, u"Landscape mode"},
};
constexpr CodedWord kSceneCaptureWords[] = {
    {0, u"Standard"},
    {1, u"Landscape"},
    {2, u"Portrait"},
    {3, u"Night scene"},
};
constexpr CodedWord kOrientationWords[] = {
    {1, u"Top left side"},     {2, u"Top right side"},   {3, u"Bottom right side"},
    {4, u"Bottom left side"},  {5, u"Left side top"},    {6, u"Right side top"},
    {7, u"Right side bottom"}, {8, u"Left side bottom"},
};
constexpr CodedWord kGainControlWords[] = {
    {0, u"None"},          {1, u"Low gain up"},    {2, u"High gain up"},
    {3, u"Low gain down"}, {4, u"High gain down"},
};
constexpr CodedWord kColorspaceWords[] = {
    {1, u"sRGB"},
    {2, u"Adobe RGB"},
    {65535, u"Uncalibrated"},
};
constexpr CodedWord kContrastOrSharpnessWords[] = {
    {0, u"Normal"},
    {1, u"Soft"},
    {2, u"Hard"},
};
constexpr CodedWord kSaturationWords[] = {
    {0, u"Normal"},
    {1, u"Low Saturation"},
    {2, u"High Saturation"},
};
constexpr CodedWord kSubjectRangeWords[] = {
    {0, u"Unknown"},
    {1, u"Macro"},
    {2, u"Close View"},
    {3, u"Distant View"},
};
constexpr CodedWord kSensingMethodWords[] = {
    {1, u"Not defined"},
    {2, u"One-chip color area sensor"},
    {3, u"Two-chip color area sensor"},
    {4, u"Three-chip color area sensor"},
    {5, u"Color sequential area sensor"},
    {7, u"Trilinear sensor"},
    {8, u"Color sequential linear sensor"},
};
constexpr CodedWord kLightSourceWords[] = {
    {0, u"Auto"},
    {1, u"Daylight"},
    {2, u"Fluorescent"},
    {3, u"Tungsten (Incandescent light)"},
    {4, u"Flash"},
    {9, u"Fine Weather"},
    {10, u"Cloudy Weather"},
    {11, u"Shade"},
    {12, u"Daylight fluorescent (D 5700 - 7100K)"},
    {13, u"Day white fluorescent (N 4600 - 5400K)"},
    {14, u"Cool white fluorescent (W 3900 - 4500K)"},
    {15, u"White fluorescent (WW 3200 - 3700K)"},
    {17, u"Standard light A"},
    {18, u"Standard light B"},
    {19, u"Standard light C"},
    {20, u"D55"},
    {21, u"D65"},
    {22, u"D75"},
    {23, u"D50"},
    {24, u"ISO studio tungsten"},
    {255, u"Other"},
};
constexpr CodedWord kFlashWords[] = {
    {0, u"No flash"},
    {1, u"Flash fired"},
    {5, u"Flash fired but strobe return light not detected "},
    {7, u"Flash fired and strobe return light detected"},
    {9, u"Flash on"},
    {13, u"Flash On but strobe return light not detected"},
    {15, u"Flash On and strobe return light detected"},
    {16, u"Flash off"},
    {24, u"Auto Mode but flash did not fire"},
    {25, u"Auto Mode and flash fired"},
    {29, u"Auto Mode, Flash fired but strobe return light not detected"},
    {31, u"Auto Mode, flash fired and strobe return light detected"},
    {32, u"No flash function"},
    {65, u"Flash fired with Red-eye reduction"},
    {69, u"Flash fired with Red-eye reduction but strobe return light not detected"},
    {71, u"Flash firedwith Red-eye reduction and strobe return light detected"},
    {73, u"Flash On with Red-eye reduction"},
    {77, u"Flash On with Red-eye reduction but strobe return light not detected"},
    {79, u"Flash On with Red-eye reduction and strobe return light detected"},
    {89, u"Auto Mode, Flash fired with Red-eye reduction"},
    {93, u"Auto Mode, Flash fired with Red-eye reduction but strobe return light not detected"},
    {95, u"Auto Mode, Flash fired with Red-eye reduction and strobe return light detected"},
};
constexpr LetterWord kLatitudeWords[] = {{u"N", u"North Latitude"}, {u"S", u"South Latitude"}};
constexpr LetterWord kLongitudeWords[] = {{u"E", u"East Longitude"}, {u"W", u"West Longitude"}};
constexpr LetterWord kDestinationLatitudeWords[] = {{u"N", u"North latitude"},
                                                    {u"S", u"South latitude"}};
constexpr LetterWord kDestinationLongitudeWords[] = {{u"E", u"East longitude"},
                                                     {u"W", u"West longitude"}};
constexpr LetterWord kGpsStatusWords[] = {{u"A", u"Measurement is in progress"},
                                          {u"V", u"Measurement is Interoperability"}};
constexpr LetterWord kMeasureModeWords[] = {{u"2", u"Two-dimensional"},
                                            {u"3", u"Three-dimensional"}};
constexpr LetterWord kSpeedWords[] = {
    {u"K", u"Kilometers per hour"}, {u"M", u"Miles per hour"}, {u"N", u"Knots"}};
constexpr LetterWord kDirectionWords[] = {{u"T", u"True direction"}, {u"M", u"Magnetic direction"}};
constexpr LetterWord kDistanceWords[] = {{u"K", u"Kilometers"}, {u"M", u"Miles"}, {u"N", u"Knots"}};
constexpr LetterWord kUrgencyWords[] = {
    {u"1", u"1 (most urgent)"}, {u"5", u"5 (normal urgency)"}, {u"8", u"8 (least urgent)"}};

}  // namespace

QString ValueTable::Translate(const QString& number) const {
  if (number.isEmpty()) return number;
  const double value = Val(number);
  const auto found =
      std::ranges::find_if(words, [value](const CodedWord& row) { return row.value == value; });
  if (found != words.end()) return QString::fromUtf16(found->word);
  return other != nullptr ? QString::fromUtf16(other) : number;
}

QString LetterTable::Translate(const QString& text) const {
  const auto found = std::ranges::find_if(
      words, [&text](const LetterWord& row) { return QStringView(row.letter) == text; });
  return found != words.end() ? QString::fromUtf16(found->word) : text;
}

namespace tables {
constinit const ValueTable kUnit{kUnitWords};
constinit const ValueTable kExposureMode{kExposureModeWords};
constinit const ValueTable kWhiteBalance{kWhiteBalanceWords};
constinit const ValueTable kMeteringMode{kMeteringModeWords};
constinit const ValueTable kExposureProgram{kExposureProgramWords};
constinit const ValueTable kSceneCapture{kSceneCaptureWords, u"Unknown"};
constinit const ValueTable kOrientation{kOrientationWords};
constinit const ValueTable kGainControl{kGainControlWords};
constinit const ValueTable kColorspace{kColorspaceWords};
constinit const ValueTable kContrastOrSharpness{kContrastOrSharpnessWords};
constinit const ValueTable kSaturation{kSaturationWords};
constinit const ValueTable kSubjectRange{kSubjectRangeWords};
constinit const ValueTable kSensingMethod{kSensingMethodWords};
constinit const ValueTable kLightSource{kLightSourceWords};
constinit const ValueTable kFlash{kFlashWords};
constinit const LetterTable kLatitude{kLatitudeWords};
constinit const LetterTable kLongitude{kLongitudeWords};
constinit const LetterTable kDestinationLatitude{kDestinationLatitudeWords};
constinit const LetterTable kDestinationLongitude{kDestinationLongitudeWords};
constinit const LetterTable kGpsStatus{kGpsStatusWords};
constinit const LetterTable kMeasureMode{kMeasureModeWords};
constinit const LetterTable kSpeed{kSpeedWords};
constinit const LetterTable kDirection{kDirectionWords};
constinit const LetterTable kDistance{kDistanceWords};
constinit const LetterTable kUrgency{kUrgencyWords};
}  // namespace tables

}  // namespace zqm
