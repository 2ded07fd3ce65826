// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/samples.h"

#include <QDateTime>
#include <cmath>

#include "app/demo/scenes.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm::demo {
namespace {

// Datasets of record 2 (IPTC-NAA Information Interchange Model 4.2).
enum Dataset {
  kObjectName = 5,
  kUrgency = 10,
  kCategory = 15,
  kOtherCategories = 20,
  kKeywords = 25,
  kReleasedDate = 30,
  kInstructions = 40,
  kDateCreated = 55,
  kAuthor = 80,
  kAuthorTitle = 85,
  kCity = 90,
  kState = 95,
  kCountryCode = 100,
  kCountry = 101,
  kJob = 103,
  kHeadline = 105,
  kCredit = 110,
  kSource = 115,
  kCopyright = 116,
  kCaption = 120,
  kWriter = 122,
};

using Exif = std::vector<ExifText>;

/// A camera's own tags, those of the shot behind them.
Exif Shot(const Exif& camera, const Exif& shot) {
  Exif all = camera;
  all.insert(all.end(), shot.begin(), shot.end());
  return all;
}

// Camera makers of our own invention.
const Exif& FieldCamera() {
  static const Exif tags = {{u"EXIF_Make", u"Aurora"},
                            {u"EXIF_Model", u"Aurora A7 Field"},
                            {u"EXIF_Software", u"Aurora Firmware 2.1"},
                            {u"EXIF_Xresolution", u"300"},
                            {u"EXIF_Yresolution", u"300"},
                            {u"EXIF_ResolutionUnit", u"2"},
                            {u"EXIF_Orientation", u"1"},
                            {u"EXIF_ColorSpace", u"1"},
                            {u"EXIF_SensingMethod", u"2"},
                            {u"EXIF_FocalPlaneXResolution", u"3846.15"},
                            {u"EXIF_FocalPlaneYResolution", u"3846.15"},
                            {u"EXIF_FocalPlaneResolutionUnit", u"2"},
                            {u"EXIF_CompressedBitsPerPixel", u"4"},
                            {u"EXIF_MaxApertureValue", u"3"}};
  return tags;
}

const Exif& PocketCamera() {
  static const Exif tags = {{u"EXIF_Make", u"Lumora Optical"},
                            {u"EXIF_Model", u"Pocket 20 Z"},
                            {u"EXIF_Xresolution", u"72"},
                            {u"EXIF_Yresolution", u"72"},
                            {u"EXIF_ResolutionUnit", u"2"},
                            {u"EXIF_Orientation", u"1"},
                            {u"EXIF_ColorSpace", u"1"},
                            {u"EXIF_DigitalZoomRatio", u"1"},
                            {u"EXIF_GainControl", u"0"},
                            {u"EXIF_MaxApertureValue", u"2"},
                            {u"EXIF_CompressedBitsPerPixel", u"3"}};
  return tags;
}

const Exif& Drone() {
  static const Exif tags = {{u"EXIF_Make", u"Kestrel"},
                            {u"EXIF_Model", u"Kestrel Air II"},
                            {u"EXIF_Software", u"v01.04.0520"},
                            {u"EXIF_Xresolution", u"72"},
                            {u"EXIF_Yresolution", u"72"},
                            {u"EXIF_ResolutionUnit", u"2"},
                            {u"EXIF_Orientation", u"1"},
                            {u"EXIF_ColorSpace", u"1"},
                            {u"EXIF_FocalLength", u"8.8"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"24"},
                            {u"EXIF_CompressedBitsPerPixel", u"2.5"}};
  return tags;
}

std::vector<Sample> MountainSamples() {
  return {
      {u"Sunset over the hills.jpg",
       {3000, 2000},
       DrawSunsetHills,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2019:09:21 18:47:12"},
                            {u"EXIF_DateTimeDigitized", u"2019:09:21 18:47:12"},
                            {u"EXIF_DateTime", u"2019:09:22 09:15:40"},
                            {u"EXIF_ExposureTime", u"0.004"},
                            {u"EXIF_ShutterSpeedValue", u"7.965784"},
                            {u"EXIF_Fnumber", u"11"},
                            {u"EXIF_ApertureValue", u"6.918863"},
                            {u"EXIF_ISOSpeedRatings0", u"100"},
                            {u"EXIF_FocalLength", u"135"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"135"},
                            {u"EXIF_ExposureProgram", u"3"},
                            {u"EXIF_ExposureBiasValue", u"-0.666667"},
                            {u"EXIF_MeteringMode", u"5"},
                            {u"EXIF_SceneCaptureType", u"1"},
                            {u"EXIF_Flash", u"16"},
                            {u"EXIF_WhiteBalance", u"1"},
                            {u"EXIF_LightSource", u"10"},
                            {u"EXIF_Saturation", u"2"},
                            {u"EXIF_Artist", u"Marlene Hofstätter"},
                            {u"EXIF_Copyright", u"© 2019 Marlene Hofstätter"},
                            {u"EXIF_ImageDescription", u"Sunset from the vineyards near Gamlitz"},
                            {u"EXIF_UserComment", u"Last light; the fifth of nine frames"}}),
       Position{46.7206, 15.5531, 412, 268},
       {{kObjectName, u"Sunset, southern Styria"},
        {kHeadline, u"Hills behind hills"},
        {kCaption,
         u"The sun sets behind the wooded hills of southern Styria after a warm September day."},
        {kKeywords, u"sunset"},
        {kKeywords, u"hills"},
        {kKeywords, u"haze"},
        {kCity, u"Gamlitz"},
        {kState, u"Steiermark"},
        {kCountryCode, u"AUT"},
        {kCountry, u"Österreich"},
        {kAuthor, u"Marlene Hofstätter"},
        {kAuthorTitle, u"Photographer"},
        {kWriter, u"mh"},
        {kCredit, u"Bildstelle Süd"},
        {kSource, u"Archiv Hofstätter"},
        {kCopyright, u"© 2019 Marlene Hofstätter"},
        {kUrgency, u"5"},
        {kCategory, u"ENV"},
        {kDateCreated, u"20190921"}}},
      {u"Winter morning below the Dachstein.jpg",
       {3600, 2700},
       DrawWinterPeaks,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2021:01:17 08:32:05"},
                            {u"EXIF_DateTimeDigitized", u"2021:01:17 08:32:05"},
                            {u"EXIF_DateTime", u"2021:01:17 08:32:05"},
                            {u"EXIF_SubsecTime", u"34"},
                            {u"EXIF_ExposureTime", u"0.002"},
                            {u"EXIF_Fnumber", u"8"},
                            {u"EXIF_ISOSpeedRatings0", u"100"},
                            {u"EXIF_FocalLength", u"85"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"85"},
                            {u"EXIF_ExposureProgram", u"2"},
                            {u"EXIF_ExposureBiasValue", u"0.666667"},
                            {u"EXIF_MeteringMode", u"2"},
                            {u"EXIF_SceneCaptureType", u"1"},
                            {u"EXIF_LightSource", u"1"},
                            {u"EXIF_Contrast", u"2"},
                            {u"EXIF_Artist", u"Jörg Aßmann"},
                            {u"EXIF_Copyright", u"Jörg Aßmann"}}),
       Position{47.4043, 13.6058, 1702.5, 12},
       {{kHeadline, u"Minus eighteen degrees"},
        {kCaption, u"Fresh snow on the south walls, an hour after sunrise."},
        {kKeywords, u"mountains"},
        {kKeywords, u"snow"},
        {kKeywords, u"Alps"},
        {kKeywords, u"winter"},
        {kCity, u"Ramsau"},
        {kState, u"Steiermark"},
        {kCountryCode, u"AUT"},
        {kCountry, u"Österreich"},
        {kAuthor, u"Jörg Aßmann"},
        {kCredit, u"Alpenbild"},
        {kSource, u"Alpenbild"},
        {kCopyright, u"© Jörg Aßmann, all rights reserved"},
        {kUrgency, u"3"},
        {kJob, u"WIN-2021-004"}}},
      {u"Dunes at first light.jpg",
       {3000, 2000},
       DrawDunes,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2018:11:04 06:28:51"},
                            {u"EXIF_DateTime", u"2018:11:20 21:04:00"},
                            {u"EXIF_ExposureTime", u"0.008"},
                            {u"EXIF_Fnumber", u"9"},
                            {u"EXIF_ISOSpeedRatings0", u"200"},
                            {u"EXIF_FocalLength", u"50"},
                            {u"EXIF_ExposureProgram", u"1"},
                            {u"EXIF_ExposureMode", u"1"},
                            {u"EXIF_MeteringMode", u"3"},
                            {u"EXIF_WhiteBalance", u"0"},
                            {u"EXIF_Artist", u"Noura Benhaddou"}}),
       Position{31.0802, -3.9672, 742, 95},
       {{kObjectName, u"Erg Chebbi"},
        {kCaption, u"Wind ripples on the flank of a dune, minutes after sunrise."},
        {kKeywords, u"desert"},
        {kKeywords, u"dunes"},
        {kKeywords, u"sand"},
        {kCity, u"Merzouga"},
        {kCountryCode, u"MAR"},
        {kCountry, u"Morocco"},
        {kAuthor, u"Noura Benhaddou"},
        {kCopyright, u"Noura Benhaddou"},
        {kUrgency, u"8"}}},
      {u"Moonrise.jpg",
       {2000, 2500},
       DrawMoonrise,
       Shot(PocketCamera(), {{u"EXIF_DateTimeOriginal", u"2022:07:13 21:38:09"},
                             {u"EXIF_DateTime", u"2022:07:13 21:38:09"},
                             {u"EXIF_ExposureTime", u"0.0166667"},
                             {u"EXIF_Fnumber", u"5.6"},
                             {u"EXIF_ISOSpeedRatings0", u"400"},
                             {u"EXIF_FocalLength", u"86.4"},
                             {u"EXIF_FocalLengthIn35mmFilm", u"480"},
                             {u"EXIF_SubjectDistanceRange", u"3"},
                             {u"EXIF_SceneCaptureType", u"3"},
                             {u"EXIF_MeteringMode", u"3"}}),
       {},
       {{kKeywords, u"moon"}, {kCaption, u"Full moon over the spruces"}}},
  };
}

std::vector<Sample> WaterSamples() {
  return {
      {u"Föhnsturm am See.jpg",
       {3000, 2000},
       DrawStormLake,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2020:10:03 15:12:33"},
                            {u"EXIF_DateTimeDigitized", u"2020:10:03 15:12:33"},
                            {u"EXIF_DateTime", u"2020:10:05 19:20:11"},
                            {u"EXIF_ExposureTime", u"0.0025"},
                            {u"EXIF_Fnumber", u"5.6"},
                            {u"EXIF_ISOSpeedRatings0", u"320"},
                            {u"EXIF_FocalLength", u"28"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"28"},
                            {u"EXIF_ExposureProgram", u"4"},
                            {u"EXIF_ExposureBiasValue", u"-1"},
                            {u"EXIF_MeteringMode", u"5"},
                            {u"EXIF_LightSource", u"10"},
                            {u"EXIF_Artist", u"Jörg Aßmann"},
                            {u"EXIF_ImageDescription", u"Föhnsturm über dem Traunsee"}}),
       Position{47.9172, 13.7997, 423, 175},
       {{kObjectName, u"Föhnsturm"},
        {kHeadline, u"Böen bis 120 km/h"},
        {kCaption, u"Regenvorhänge über dem Traunsee kurz vor dem Durchzug der Kaltfront."},
        {kKeywords, u"storm"},
        {kKeywords, u"lake"},
        {kKeywords, u"Föhn"},
        {kKeywords, u"rain"},
        {kCity, u"Gmunden"},
        {kState, u"Oberösterreich"},
        {kCountryCode, u"AUT"},
        {kCountry, u"Österreich"},
        {kAuthor, u"Jörg Aßmann"},
        {kAuthorTitle, u"Bildjournalist"},
        {kWriter, u"jä"},
        {kCredit, u"Alpenbild"},
        {kSource, u"Alpenbild"},
        {kCopyright, u"© 2020 Jörg Aßmann"},
        {kInstructions, u"No use in advertising"},
        {kUrgency, u"1"},
        {kCategory, u"WEA"},
        {kOtherCategories, u"Unwetter"},
        {kReleasedDate, u"20201003"},
        {kDateCreated, u"20201003"},
        {kJob, u"WET-1003"}}},
      {u"Fog on the lake.jpg",
       {2400, 1600},
       DrawFogLake,
       Shot(PocketCamera(), {{u"EXIF_DateTimeOriginal", u"2016:10:29 07:41:26"},
                             {u"EXIF_DateTimeDigitized", u"2016:10:29 07:41:26"},
                             {u"EXIF_DateTime", u"2016:10:29 07:41:26"},
                             {u"EXIF_ExposureTime", u"0.00625"},
                             {u"EXIF_Fnumber", u"4"},
                             {u"EXIF_ISOSpeedRatings0", u"160"},
                             {u"EXIF_FocalLength", u"9.2"},
                             {u"EXIF_FocalLengthIn35mmFilm", u"51"},
                             {u"EXIF_ExposureProgram", u"2"},
                             {u"EXIF_MeteringMode", u"5"},
                             {u"EXIF_SceneCaptureType", u"1"},
                             {u"EXIF_Flash", u"24"},
                             {u"EXIF_Artist", u"Aino Lehtonen"}}),
       Position{62.2415, 25.7209, 79, 64},
       {{kHeadline, u"Silence"},
        {kKeywords, u"lake"},
        {kKeywords, u"fog"},
        {kCity, u"Jyväskylä"},
        {kCountryCode, u"FIN"},
        {kCountry, u"Finland"},
        {kAuthor, u"Aino Lehtonen"},
        {kUrgency, u"5"}}},
      {u"Surf from above.jpg",
       {2800, 2100},
       DrawBeach,
       Shot(Drone(), {{u"EXIF_DateTimeOriginal", u"2023:08:06 11:54:20"},
                      {u"EXIF_DateTimeDigitized", u"2023:08:06 11:54:20"},
                      {u"EXIF_DateTime", u"2023:08:06 11:54:20"},
                      {u"EXIF_ExposureTime", u"0.000625"},
                      {u"EXIF_Fnumber", u"2.8"},
                      {u"EXIF_ISOSpeedRatings0", u"100"},
                      {u"EXIF_ExposureProgram", u"2"},
                      {u"EXIF_MeteringMode", u"1"},
                      {u"EXIF_BrightnessValue", u"9.4"},
                      {u"EXIF_LightSource", u"1"},
                      {u"EXIF_Sharpness", u"1"}}),
       Position{39.6011, -9.0701, 96.4, 301},
       {{kCaption, u"Praia do Norte on a calm day"},
        {kKeywords, u"beach"},
        {kKeywords, u"surf"},
        {kKeywords, u"aerial"},
        {kCity, u"Nazaré"},
        {kState, u"Leiria"},
        {kCountryCode, u"PRT"},
        {kCountry, u"Portugal"},
        {kAuthor, u"Tiago Falcão"},
        {kCredit, u"Costa Aérea"},
        {kCopyright, u"© Costa Aérea"}}},
      {u"Waterfall in the gorge.jpg",
       {1800, 2700},
       DrawWaterfall,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2017:06:02 10:05:44"},
                            {u"EXIF_DateTimeDigitized", u"2017:06:02 10:05:44"},
                            {u"EXIF_ExposureTime", u"2"},
                            {u"EXIF_ShutterSpeedValue", u"-1"},
                            {u"EXIF_Fnumber", u"16"},
                            {u"EXIF_ISOSpeedRatings0", u"50"},
                            {u"EXIF_FocalLength", u"35"},
                            {u"EXIF_ExposureProgram", u"1"},
                            {u"EXIF_ExposureMode", u"1"},
                            {u"EXIF_MeteringMode", u"6"},
                            {u"EXIF_SubjectDistance", u"14.5"},
                            {u"EXIF_UserComment", u"Grey filter, tripod in the stream"}}),
       Position{46.4102, 13.8461, 655, 210},
       {{kObjectName, u"Waterfall"},
        {kKeywords, u"waterfall"},
        {kKeywords, u"moss"},
        {kCity, u"Bovec"},
        {kCountryCode, u"SVN"},
        {kCountry, u"Slovenija"},
        {kSource, u"Own work"}}},
  };
}

std::vector<Sample> TownAndNightSamples() {
  return {
      {u"Fisherman's harbour.jpg",
       {3000, 2000},
       DrawHarbour,
       Shot(PocketCamera(), {{u"EXIF_DateTimeOriginal", u"2015:05:23 09:18:02"},
                             {u"EXIF_DateTimeDigitized", u"2015:05:23 09:18:02"},
                             {u"EXIF_DateTime", u"2015:06:01 12:00:00"},
                             {u"EXIF_ExposureTime", u"0.002"},
                             {u"EXIF_Fnumber", u"6.3"},
                             {u"EXIF_ISOSpeedRatings0", u"100"},
                             {u"EXIF_FocalLength", u"12.6"},
                             {u"EXIF_FocalLengthIn35mmFilm", u"70"},
                             {u"EXIF_ExposureProgram", u"2"},
                             {u"EXIF_MeteringMode", u"5"},
                             {u"EXIF_SceneCaptureType", u"0"},
                             {u"EXIF_Artist", u"Ingrid O'Leary"},
                             {u"EXIF_Copyright", u"Ingrid O'Leary"}}),
       Position{60.3975, 5.3221, 3, 41},
       {{kHeadline, u"Saturday at the quay"},
        {kCaption, u"Cutters and sailing boats before the merchants' houses."},
        {kKeywords, u"harbour"},
        {kKeywords, u"boats"},
        {kKeywords, u"reflection"},
        {kCity, u"Bergen"},
        {kState, u"Vestland"},
        {kCountryCode, u"NOR"},
        {kCountry, u"Norge"},
        {kAuthor, u"Ingrid O'Leary"},
        {kCredit, u"Fjord & Hav"},
        {kSource, u"Fjord & Hav"},
        {kCopyright, u"Ingrid O'Leary"},
        {kUrgency, u"4"}}},
      {u"Old town by night.jpg",
       {2880, 1920},
       DrawNightTown,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2022:12:08 17:26:37"},
                            {u"EXIF_DateTimeDigitized", u"2022:12:08 17:26:37"},
                            {u"EXIF_DateTime", u"2022:12:10 20:41:08"},
                            {u"EXIF_ExposureTime", u"8"},
                            {u"EXIF_ShutterSpeedValue", u"-3"},
                            {u"EXIF_Fnumber", u"8"},
                            {u"EXIF_ISOSpeedRatings0", u"200"},
                            {u"EXIF_FocalLength", u"70"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"70"},
                            {u"EXIF_ExposureProgram", u"1"},
                            {u"EXIF_ExposureMode", u"1"},
                            {u"EXIF_MeteringMode", u"5"},
                            {u"EXIF_SceneCaptureType", u"3"},
                            {u"EXIF_LightSource", u"3"},
                            {u"EXIF_Artist", u"Marlene Hofstätter"},
                            {u"EXIF_Copyright", u"© 2022 Marlene Hofstätter"}}),
       Position{47.0736, 15.4340, 348, 87},
       {{kObjectName, u"Night view"},
        {kHeadline, u"Advent over the river"},
        {kCaption, u"Lights of the old town and its fortress in the river."},
        {kKeywords, u"night"},
        {kKeywords, u"town"},
        {kKeywords, u"lights"},
        {kKeywords, u"reflection"},
        {kCity, u"Graz"},
        {kState, u"Steiermark"},
        {kCountryCode, u"AUT"},
        {kCountry, u"Österreich"},
        {kAuthor, u"Marlene Hofstätter"},
        {kCredit, u"Bildstelle Süd"},
        {kSource, u"Archiv Hofstätter"},
        {kCopyright, u"© 2022 Marlene Hofstätter"},
        {kUrgency, u"5"},
        {kCategory, u"TRA"},
        {kDateCreated, u"20221208"}}},
      {u"Milky Way over the desert.jpg",
       {3000, 2000},
       DrawMilkyWay,
       Shot(FieldCamera(), {{u"EXIF_DateTimeOriginal", u"2018:11:05 20:49:58"},
                            {u"EXIF_DateTimeDigitized", u"2018:11:05 20:49:58"},
                            {u"EXIF_ExposureTime", u"20"},
                            {u"EXIF_ShutterSpeedValue", u"-4.321928"},
                            {u"EXIF_Fnumber", u"1.8"},
                            {u"EXIF_ISOSpeedRatings0", u"3200"},
                            {u"EXIF_FocalLength", u"20"},
                            {u"EXIF_FocalLengthIn35mmFilm", u"20"},
                            {u"EXIF_ExposureProgram", u"1"},
                            {u"EXIF_ExposureMode", u"1"},
                            {u"EXIF_GainControl", u"2"},
                            {u"EXIF_Artist", u"Noura Benhaddou"},
                            {u"EXIF_Copyright", u"Noura Benhaddou"}}),
       Position{31.0994, -4.0128, 710, 224},
       {{kHeadline, u"Camp below the galaxy"},
        {kKeywords, u"night"},
        {kKeywords, u"stars"},
        {kKeywords, u"desert"},
        {kCity, u"Merzouga"},
        {kCountryCode, u"MAR"},
        {kCountry, u"Morocco"},
        {kAuthor, u"Noura Benhaddou"},
        {kCopyright, u"Noura Benhaddou"},
        {kCategory, u"SCI"},
        {kOtherCategories, u"Astronomy"}}},
      {u"Rain on the window.jpg",
       {2700, 1800},
       DrawRainyWindow,
       Shot(PocketCamera(), {{u"EXIF_Orientation", u"6"},
                             {u"EXIF_DateTimeOriginal", u"2024:02:11 19:03:15"},
                             {u"EXIF_DateTime", u"2024:02:11 19:03:15"},
                             {u"EXIF_ExposureTime", u"0.0333333"},
                             {u"EXIF_Fnumber", u"2"},
                             {u"EXIF_ISOSpeedRatings0", u"1600"},
                             {u"EXIF_FocalLength", u"4.5"},
                             {u"EXIF_FocalLengthIn35mmFilm", u"26"},
                             {u"EXIF_Flash", u"16"},
                             {u"EXIF_GainControl", u"2"},
                             {u"EXIF_SubjectDistanceRange", u"1"},
                             {u"EXIF_MeteringMode", u"5"}}),
       {},
       {}},
  };
}

std::vector<Sample> CountrySamples() {
  return {
      // What an agency sends: captioned well, the camera's own data gone.
      {u"Lavender rows.jpg",
       {3120, 2080},
       DrawLavender,
       {},
       {},
       {{kObjectName, u"Lavande"},
        {kHeadline, u"Three weeks of violet"},
        {kCaption, u"Lavender before the harvest on the plateau of Valensole."},
        {kKeywords, u"lavender"},
        {kKeywords, u"field"},
        {kKeywords, u"summer"},
        {kCity, u"Valensole"},
        {kState, u"Provence-Alpes-Côte d'Azur"},
        {kCountryCode, u"FRA"},
        {kCountry, u"France"},
        {kAuthor, u"Hélène Garçon"},
        {kAuthorTitle, u"Staff photographer"},
        {kCredit, u"Agence Midi"},
        {kSource, u"Agence Midi"},
        {kCopyright, u"© Agence Midi"},
        {kUrgency, u"6"},
        {kCategory, u"AGR"},
        {kInstructions, u"Embargo until 1 July"},
        {kReleasedDate, u"20230701"},
        {kDateCreated, u"20230624"},
        {kJob, u"MIDI 7731"},
        {kWriter, u"hg"}}},
      // One file about which nothing is known.
      {u"Beech wood in October.jpg", {2000, 3000}, DrawBeechWood, {}, {}, {}},
  };
}

void SetAngle(FileParameters& parameters, const QString& key, double degrees) {
  const qint64 hundredths = std::llround(std::abs(degrees) * 360000);
  const std::pair<QString, double> parts[] = {
      {u"Degrees"_s, static_cast<double>(hundredths / 360000)},
      {u"Minutes"_s, static_cast<double>(hundredths / 6000 % 60)},
      {u"Seconds"_s, static_cast<double>(hundredths % 6000) / 100},
  };
  for (const auto& [part, value] : parts)
    parameters.SetIOProperty(key + part, QString::number(value));
}

void SetPosition(FileParameters& parameters, const Position& position) {
  const std::pair<const char16_t*, QString> values[] = {
      {u"EXIF_GPSVersionID", u"2.3.0.0"_s},
      {u"EXIF_GPSLatitudeRef", position.latitude < 0 ? u"S"_s : u"N"_s},
      {u"EXIF_GPSLongitudeRef", position.longitude < 0 ? u"W"_s : u"E"_s},
      {u"EXIF_GPSAltitudeRef", u"0"_s},
      {u"EXIF_GPSAltitude", QString::number(position.altitude)},
      {u"EXIF_GPSImgDirectionRef", u"T"_s},
      {u"EXIF_GPSImgDirection", QString::number(position.direction)},
      {u"EXIF_GPSMapDatum", u"WGS-84"_s},
      {u"EXIF_GPSStatus", u"A"_s},
      {u"EXIF_GPSMeasureMode", u"3"_s},
  };
  for (const auto& [key, value] : values)
    parameters.SetIOProperty(key, value);
  SetAngle(parameters, u"EXIF_GPSLatitude"_s, position.latitude);
  SetAngle(parameters, u"EXIF_GPSLongitude"_s, position.longitude);
  // The clocks of these cameras run an hour ahead of universal time.
  QDateTime taken = QDateTime::fromString(parameters.GetIOProperty(u"EXIF_DateTimeOriginal"),
                                          u"yyyy:MM:dd HH:mm:ss"_s);
  taken.setTimeSpec(Qt::UTC);
  taken = taken.addSecs(-3600);
  if (!taken.isValid()) return;
  parameters.SetIOProperty(u"EXIF_GPSDateStamp", taken.toString(u"yyyy:MM:dd"));
  parameters.SetIOProperty(u"EXIF_GPSTimeStampHour", QString::number(taken.time().hour()));
  parameters.SetIOProperty(u"EXIF_GPSTimeStampMinute", QString::number(taken.time().minute()));
  parameters.SetIOProperty(u"EXIF_GPSTimeStampSecond", QString::number(taken.time().second()));
}

}  // namespace

const std::vector<Sample>& Samples() {
  static const std::vector<Sample> samples = [] {
    std::vector<Sample> all = MountainSamples();
    for (auto group : {WaterSamples, TownAndNightSamples, CountrySamples})
      for (Sample& sample : group())
        all.push_back(std::move(sample));
    return all;
  }();
  return samples;
}

FileParameters ParametersOf(const Sample& sample) {
  FileParameters parameters;
  for (const ExifText& item : sample.exif)
    parameters.SetIOProperty(item.key, QString::fromUtf16(item.value));
  // As cameras do, the same time as an APEX value too.
  const double seconds = Val(parameters.GetIOProperty(u"EXIF_ExposureTime"));
  if (seconds > 0 && Val(parameters.GetIOProperty(u"EXIF_ShutterSpeedValue")) == 0)
    parameters.SetIOProperty(u"EXIF_ShutterSpeedValue",
                             QString::number(-std::log2(seconds), 'f', 6));
  if (sample.position) SetPosition(parameters, *sample.position);
  for (const IptcText& item : sample.iptc)
    parameters.Iptc().Add(2, item.dataset, QString::fromUtf16(item.text));
  return parameters;
}

}  // namespace zqm::demo
