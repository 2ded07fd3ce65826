// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/exif_editor.h"

#include <algorithm>
#include <cmath>

#include "shell/dates.h"
#include "shell/locale_info.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// The editor's own words. They differ from the panel's here and there, and stay as they are: what a
// panel shows in other words leaves a list without a choice.
constexpr CodedWord kExposureModes[] = {
    {0, u"Auto exposure"}, {1, u"Manual exposure"}, {2, u"Auto bracket"}};
constexpr CodedWord kWhiteBalances[] = {{0, u"Auto white balance"}, {1, u"Manual white balance"}};
constexpr CodedWord kMeteringModes[] = {
    {0, u"Unknown"}, {1, u"Average"},    {2, u"Center weighted average"},
    {3, u"Spot"},    {4, u"Multi-spot"}, {5, u"Multi-segment"},
    {6, u"Partial"}, {255, u"Other"}};
constexpr CodedWord kExposurePrograms[] = {
    {0, u"Not defined"},         {1, u"Manual"},           {2, u"Normal program"},
    {3, u"Aperture priority"},   {4, u"Shutter priority"}, {5, u"Creative (Slow speed)"},
    {6, u"Action (High speed)"}, {7, u"Portrait"},         {8, u"Landscape"}};
// The number for an unknown scene is an old one; files keep its low 16 bits.
constexpr CodedWord kSceneTypes[] = {{0, u"Standard"},
                                     {1, u"Landscape"},
                                     {2, u"Portrait"},
                                     {3, u"Night scene"},
                                     {-697737471, u"Unknown"}};
constexpr CodedWord kGainControls[] = {{0, u"None"},
                                       {1, u"Low gain up"},
                                       {2, u"High gain up"},
                                       {3, u"Low gain down"},
                                       {4, u"High gain down"}};
constexpr CodedWord kLightSources[] = {
    {0, u"Auto"},
    {1, u"Daylight"},
    {2, u"Fluorescent"},
    {3, u"Tungsten (incandescent light)"},
    {4, u"Flash"},
    {9, u"Fine weather"},
    {10, u"Cloudy weather"},
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
    {255, u"Other light source"},
};
constexpr CodedWord kFlashModes[] = {
    {0, u"No Flash"},
    {1, u"Flash fired"},
    {5, u"Flash fired but Strobe return light not detected"},
    {7, u"Flash fired and Strobe return light detected"},
    {9, u"Flash On"},
    {13, u"Flash On but Strobe return light not detected"},
    {15, u"Flash On and Strobe return light detected"},
    {16, u"Flash Off"},
    {24, u"Auto Mode but flash Did not fire"},
    {25, u"Auto Mode and Flash fired"},
    {29, u"Auto Mode, Flash fired but Strobe return light not detected"},
    {31, u"Auto Mode, Flash fired and Strobe return light detected"},
    {32, u"No flash function"},
    {65, u"Flash fired with Red-eye reduction"},
    {69, u"Flash fired with Red-eye reduction but Strobe return light not detected"},
    {71, u"Flash firedwith Red-eye reduction and Strobe return light detected"},
    {73, u"Flash On with Red-eye reduction"},
    {77, u"Flash On with Red-eye reduction but Strobe return light not detected"},
    {79, u"Flash On with Red-eye reduction and Strobe return light detected"},
    {89, u"Auto Mode, Flash fired with Red-eye reduction"},
    {93, u"Auto Mode, Flash fired with Red-eye reduction but Strobe return light not detected"},
    {95, u"Auto Mode, Flash fired with Red-eye reduction and Strobe return light detected"},
};
constexpr CodedWord kSoftOrHard[] = {{0, u"Normal"}, {1, u"Soft"}, {2, u"Hard"}};
constexpr CodedWord kSaturations[] = {
    {0, u"Normal"}, {1, u"Low saturation"}, {2, u"High saturation"}};
constexpr CodedWord kSubjectRanges[] = {
    {0, u"Unknown"}, {1, u"Macro"}, {2, u"Close view"}, {3, u"Distant view"}};
// The list's item for 5 has no leading blank, so choosing it writes nothing.
constexpr CodedWord kSensingMethods[] = {{1, u"Not defined"},
                                         {2, u"One-chip color area sensor"},
                                         {3, u"Two-chip color area sensor"},
                                         {4, u"Three-chip color area sensor"},
                                         {5, u" Color sequential area sensor"},
                                         {7, u"Trilinear sensor"},
                                         {8, u"Color sequential linear sensor"}};
constexpr CodedWord kOrientations[] = {{1, u"Top left side"},     {2, u"Top right side"},
                                       {3, u"Bottom right side"}, {4, u"Bottom left side"},
                                       {5, u"Left side top"},     {6, u"Right side top"},
                                       {7, u"Right side bottom"}, {8, u"Left side bottom"}};
constexpr CodedWord kUnits[] = {
    {1, u"No-unit"}, {2, u"Inch"}, {3, u"Centimeter"}, {4, u"Millimeter"}, {5, u"Micrometer"}};
constexpr CodedWord kColorSpaces[] = {{1, u"sRGB"}, {2, u"Adobe RGB"}, {65535, u"Uncalibrated"}};

using enum ExifKind;
constexpr ExifField kFields[] = {
    {u"Camera Make", u"EXIF_Make", Text},
    {u"Camera Model", u"EXIF_Model", Text},
    {.caption = u"Image Description",
     .key = u"EXIF_ImageDescription",
     .kind = Text,
     .tiffKey = u"TIFF_IMAGEDESCRIPTION"},
    {u"User Comment", u"EXIF_UserComment", Text},
    {u"Author", u"EXIF_Artist", Text},
    {u"Copyright", u"EXIF_Copyright", Text},
    {u"Shutter Speed", u"EXIF_ShutterSpeedValue", Shutter},
    {u"Exposure Time", u"EXIF_ExposureTime", Exposure},
    {.caption = u"Lens Aperture",
     .key = u"EXIF_ApertureValue",
     .kind = Aperture,
     .plain = Plain::LensAperture},
    {.caption = u"Max Aperture Value",
     .key = u"EXIF_MaxApertureValue",
     .kind = Aperture,
     .plain = Plain::MaxAperture},
    {.caption = u"Focal Length",
     .key = u"EXIF_FocalLength",
     .kind = Number,
     .plain = Plain::FocalLength},
    {.caption = u"F-number", .key = u"EXIF_Fnumber", .kind = Number, .plain = Plain::FNumber},
    {u"Exposure Mode", u"EXIF_ExposureMode", List, kExposureModes},
    {.caption = u"Exposure Compensation",
     .key = u"EXIF_ExposureBiasValue",
     .kind = Signed,
     .plain = Plain::ExposureCompensation},
    {.caption = u"ISO-Speed", .key = u"EXIF_ISOSpeedRatings0", .kind = Number, .plain = Plain::Iso},
    {u"White Balance", u"EXIF_WhiteBalance", List, kWhiteBalances},
    {u"Metering Mode", u"EXIF_MeteringMode", List, kMeteringModes},
    {u"Exposure Program", u"EXIF_ExposureProgram", List, kExposurePrograms},
    {u"Date/Time Original", u"EXIF_DateTimeOriginal", Date},
    {u"Date/Time Digitized", u"EXIF_DateTimeDigitized", Date},
    {u"Sub-Second Time", u"EXIF_SubsecTime", SubSecond},
    {u"Scene Capture Type", u"EXIF_SceneCaptureType", List, kSceneTypes},
    {u"Gain Control", u"EXIF_GainControl", List, kGainControls},
    {u"Light Source", u"EXIF_LightSource", List, kLightSources},
    {u"Flash Mode", u"EXIF_Flash", List, kFlashModes},
    {u"Contrast", u"EXIF_Contrast", List, kSoftOrHard},
    {u"Saturation", u"EXIF_Saturation", List, kSaturations},
    {u"Sharpness", u"EXIF_Sharpness", List, kSoftOrHard},
    {u"Brightness Value", u"EXIF_BrightnessValue", Number},
    {u"Distance to Subject", u"EXIF_SubjectDistanceRange", List, kSubjectRanges},
    {.caption = u"Distance to Focus Point",
     .key = u"EXIF_SubjectDistance",
     .kind = Number,
     .plain = Plain::FocusDistance},
    {u"Sensing Method", u"EXIF_SensingMethod", List, kSensingMethods},
    {u"Orientation", u"EXIF_Orientation", List, kOrientations},
    {u"Focal Plane X Resolution", u"EXIF_FocalPlaneXResolution", Number},
    {u"Focal Plane Y Resolution", u"EXIF_FocalPlaneYResolution", Number},
    {u"Focal Plane Resolution Unit", u"EXIF_FocalPlaneResolutionUnit", List, kUnits},
    {u"Color Space", u"EXIF_ColorSpace", List, kColorSpaces, u"Colorspace"},
    {u"Digital Zoom Ratio", u"EXIF_DigitalZoomRatio", Number},
};

constexpr char16_t kFast[] = u"1/";

double Log10(double x) {
  return std::log(x) / std::log(10.0);
}

/// A number as files take it: seven digits, ".".
QString FileNumber(double value) {
  return ConvertedNumber(PlainText(static_cast<float>(value)));
}

/// The number in an input; nothing where none is to be written.
std::optional<double> Typed(const QString& text) {
  return text == u"0" ? std::nullopt : ToNumber(text);
}
std::optional<double> TypedAboveZero(const QString& text) {
  const auto number = Typed(text);
  return number && *number > 0 ? number : std::nullopt;
}

std::optional<QString> ApertureValue(const QString& typed) {
  const auto number = TypedAboveZero(typed);
  if (!number) return std::nullopt;
  return FileNumber(Log10(*number) / Val(u"0.150510832"));
}

std::optional<QString> ShutterValue(const QString& typed) {
  const bool fast = IsFast(typed);
  const auto number = TypedAboveZero(fast ? FastDenominator(typed) : typed);
  if (!number) return std::nullopt;
  const double apex = Log10(*number) / Val(u"0.301029995");
  return FileNumber(fast ? apex : -apex);
}

std::optional<QString> ExposureValue(const QString& typed) {
  if (!IsFast(typed)) return Typed(typed) ? std::optional(ConvertedNumber(typed)) : std::nullopt;
  const auto number = TypedAboveZero(FastDenominator(typed));
  return number ? std::optional(FileNumber(1 / *number)) : std::nullopt;
}

std::optional<QString> ListValue(const ExifField& field, const QString& item) {
  const auto found = std::ranges::find_if(
      field.list, [&item](const CodedWord& word) { return QStringView(word.word) == item; });
  return found == field.list.end() ? std::nullopt : std::optional(QString::number(found->value));
}

std::optional<QDateTime> TypedDate(const QString& typed) {
  const auto exact = ExifDate(typed.trimmed());
  return exact ? exact : ParseDate(typed);
}

QString FilledTime(const std::array<QString, kPlainCount>& plain, Plain denominator,
                   Plain seconds) {
  const QString& below = plain[static_cast<std::size_t>(denominator)];
  return below.isEmpty() ? plain[static_cast<std::size_t>(seconds)] : FastShutter(below);
}

bool IsAsciiDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

}  // namespace

std::span<const ExifField> ExifEditFields() {
  return kFields;
}

int FindExifField(QStringView caption) {
  const auto found = std::ranges::find_if(kFields, [caption](const ExifField& field) {
    return caption.compare(QStringView(field.caption), Qt::CaseInsensitive) == 0;
  });
  return found == std::end(kFields) ? -1 : static_cast<int>(found - kFields);
}

QStringList ListItems(const ExifField& field) {
  QStringList items;
  for (const CodedWord& word : field.list)
    items.append(QString::fromUtf16(word.word).trimmed());
  return items;
}

int FindListItem(const ExifField& field, const QString& text) {
  const QStringList items = ListItems(field);
  const auto found = std::ranges::find_if(
      items, [&text](const QString& item) { return item.compare(text, Qt::CaseInsensitive) == 0; });
  return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

std::optional<QString> ExifValue(const ExifField& field, const QString& typed) {
  switch (field.kind) {
    case Text:
      return typed;
    case Number:
    case Signed:
      return Typed(typed) ? std::optional(ConvertedNumber(typed)) : std::nullopt;
    case SubSecond:
      return Typed(typed) ? std::optional(typed) : std::nullopt;
    case Aperture:
      return ApertureValue(typed);
    case Shutter:
      return ShutterValue(typed);
    case Exposure:
      return ExposureValue(typed);
    case List:
      return ListValue(field, typed);
    case Date:
      break;
  }
  const auto date = TypedDate(typed);
  return date ? std::optional(ExifDateText(*date)) : std::nullopt;
}

Result<QString> TypedText(const ExifField& field, const QString& text) {
  const auto refuse = [&](const QString& why) {
    return Failure{QString::fromUtf16(field.caption) + u": "_s + why};
  };
  if (field.kind == Text) return text;
  if (field.kind == Date && TypedDate(text)) return text;
  if (field.kind == Date) return refuse(u"not a date: "_s + text);
  if (field.kind == List) {
    const QStringList items = ListItems(field);
    if (const int item = FindListItem(field, text); item >= 0) return items.at(item);
    return refuse(u"one of \""_s + items.join(u"\", \""_s) + u"\""_s);
  }
  const bool fast = (field.kind == Shutter || field.kind == Exposure) && IsFast(text);
  const QString number = fast ? FastDenominator(text) : text;
  // What the field takes of the keyboard: no sign where there can be none.
  const QChar separator = GetUserLocaleInfo(LocaleInfo::DecimalSeparator).at(0);
  const bool typable = std::ranges::all_of(
      number, [&](QChar c) { return KeyPasses(KeyFilterOf(field, fast), c, separator); });
  if (number.isEmpty() || (IsNumeric(number) && typable)) return text;
  return refuse(u"not a number: "_s + text);
}

QString ConvertedNumber(const QString& text) {
  return QString(text).replace(u',', u'.');
}

bool IsFast(const QString& typed) {
  return typed.startsWith(QStringView(kFast));
}
QString FastShutter(const QString& denominator) {
  return QString::fromUtf16(kFast) + denominator;
}
QString FastDenominator(const QString& typed) {
  return typed.sliced(QStringView(kFast).size());
}

QString ExifDateText(const QDateTime& time) {
  return time.toString(u"yyyy:MM:dd HH:mm:ss");
}

std::optional<QDateTime> ExifDate(const QString& text) {
  const QDate date = QDate::fromString(text.left(10), u"yyyy:MM:dd");
  const QTime time = QTime::fromString(text.mid(10), u" HH:mm:ss");
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  // Wall-clock time: no clock change moves it.
  return QDateTime(date, time, Qt::UTC);
}

std::optional<QDateTime> PanelDate(const QString& text) {
  if (text.isEmpty()) return std::nullopt;
  return ParseDate(
      QString(text).remove(u"ã. "_s).replace(u"ðµ"_s, u"AM"_s).replace(u"µµ"_s, u"PM"_s));
}

ExifEdit GetExif(const std::function<QString(QStringView caption)>& line,
                 const std::array<QString, kPlainCount>& plain) {
  ExifEdit texts;
  for (int i = 0; i < static_cast<int>(std::size(kFields)); ++i) {
    const ExifField& field = kFields[i];
    const QString shown = line(field.panel != nullptr ? field.panel : field.caption);
    if (field.plain) {
      texts[i] = plain[static_cast<std::size_t>(*field.plain)];
    } else if (field.kind == Shutter) {
      texts[i] = FilledTime(plain, Plain::ShutterDenominator, Plain::ShutterSeconds);
    } else if (field.kind == Exposure) {
      texts[i] = FilledTime(plain, Plain::ExposureDenominator, Plain::ExposureSeconds);
    } else if (field.kind == List) {
      if (const int item = FindListItem(field, shown); item >= 0)
        texts[i] = ListItems(field).at(item);
    } else if (field.kind == Date) {
      if (const auto date = PanelDate(shown)) texts[i] = ExifDateText(*date);
    } else {
      texts[i] = shown;
    }
  }
  return texts;
}

KeyFilter KeyFilterOf(const ExifField& field, bool denominator) {
  switch (field.kind) {
    case Text:
    case Date:
      return KeyFilter::Anything;
    case Signed:
      return KeyFilter::SignedNumber;
    case List:
      return KeyFilter::Nothing;
    default:
      return denominator ? KeyFilter::Digits : KeyFilter::Number;
  }
}

bool KeyPasses(KeyFilter filter, QChar typed, QChar separator) {
  constexpr char16_t kBackspace = 8, kFirstBeyondAscii = 128;
  if (typed == kBackspace) return true;
  switch (filter) {
    case KeyFilter::Anything:
      return true;
    case KeyFilter::SignedNumber:
      if (typed == u'+' || typed == u'-') return true;
      [[fallthrough]];
    case KeyFilter::Number:
      return IsAsciiDigit(typed) || typed == separator;
    case KeyFilter::Digits:
      return IsAsciiDigit(typed);
    case KeyFilter::Nothing:
      break;
  }
  return typed >= kFirstBeyondAscii;
}

}  // namespace zqm
