// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/filter_lists.h"

#include <QCollator>
#include <QSet>
#include <algorithm>
#include <array>
#include <utility>

#include "catalogue/like_pattern.h"
#include "search/query_builder.h"
#include "shell/locale_info.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// ---- The order of a list -----------------------------------------------------------------------

/// The number in a text without its unit, whichever separator it has: the row may have been written
/// in another locale.
std::optional<float> Number(QStringView text) {
  const QString separator = GetUserLocaleInfo(LocaleInfo::DecimalSeparator);
  std::optional<double> number = ToNumber(text);
  for (const QChar other : {u'.', u','})
    if (!number) number = ToNumber(text.toString().replace(other, separator));
  if (!number) return std::nullopt;
  return static_cast<float>(*number);
}

/// Where a value stands in its list: group first, then key; unreadable ones come last.
struct Rank {
  int group = 0;
  float key = 0;
  auto operator<=>(const Rank&) const = default;
};
constexpr int kUnreadable = 9;

Rank ByNumber(std::optional<float> number) {
  return number ? Rank{0, *number} : Rank{kUnreadable, 0};
}

QString WithoutUnit(const QString& value, QStringView unit) {
  QString text = value;
  text.remove(unit.toString(), Qt::CaseInsensitive).remove(u' ');
  // "5." is what a mask of "#" leaves of a whole number.
  if (text.endsWith(u'.') || text.endsWith(u',')) text.chop(1);
  return text;
}

/// The longest exposure first: seconds fall, and below them the denominators rise.
Rank SortShutterSpeed(const QString& value, QStringView) {
  const QString text = WithoutUnit(value, u"sec");
  if (const auto seconds = Number(text)) return {0, -*seconds};
  if (!text.startsWith("1/"_L1)) return {kUnreadable, 0};
  const auto denominator = Number(QStringView(text).mid(2));
  return denominator ? Rank{1, *denominator} : Rank{kUnreadable, 0};
}

Rank SortCommonAlgorithm(const QString& value, QStringView unit) {
  return ByNumber(Number(WithoutUnit(value, unit)));
}

struct Kind {
  Column column;
  Rank (*rank)(const QString& value, QStringView unit);
  const char16_t* unit;
};

/// Every column that isn't here holds texts.
constexpr Kind kKinds[] = {
    {Column::ImageWidth, SortCommonAlgorithm, u""},
    {Column::ImageHeight, SortCommonAlgorithm, u""},
    {Column::HorizontalResolution, SortCommonAlgorithm, u""},
    {Column::VerticalResolution, SortCommonAlgorithm, u""},
    {Column::CompressedBPP, SortCommonAlgorithm, u""},
    {Column::FocalPlaneXResolution, SortCommonAlgorithm, u""},
    {Column::FocalPlaneYResolution, SortCommonAlgorithm, u""},
    {Column::DigitalZoomRatio, SortCommonAlgorithm, u""},
    {Column::BrightnessValue, SortCommonAlgorithm, u""},
    {Column::FocalLength35mm, SortCommonAlgorithm, u""},
    {Column::LatitudeDegrees, SortCommonAlgorithm, u""},
    {Column::LatitudeMinutes, SortCommonAlgorithm, u""},
    {Column::LatitudeSeconds, SortCommonAlgorithm, u""},
    {Column::LongitudeDegrees, SortCommonAlgorithm, u""},
    {Column::LongitudeMinutes, SortCommonAlgorithm, u""},
    {Column::LongitudeSeconds, SortCommonAlgorithm, u""},
    {Column::AltitudeReference, SortCommonAlgorithm, u""},
    {Column::Altitude, SortCommonAlgorithm, u""},
    {Column::ShutterSpeed, SortShutterSpeed, u"sec"},
    {Column::ExposureTime, SortShutterSpeed, u"sec"},
    {Column::LensAperture, SortCommonAlgorithm, u"F/"},
    {Column::MaxApertureValue, SortCommonAlgorithm, u"F/"},
    {Column::FNumber, SortCommonAlgorithm, u"F/"},
    {Column::FocalLength, SortCommonAlgorithm, u"mm"},
    {Column::ISOSpeed, SortCommonAlgorithm, u"ISO-"},
    {Column::DistanceToFocusPoint, SortCommonAlgorithm, u"m"},
    {Column::ExposureCompensation, SortCommonAlgorithm, u"Ev"},
};

void SortByKind(QStringList& values, const Kind& kind) {
  std::vector<std::pair<Rank, QString>> ranked;
  ranked.reserve(static_cast<std::size_t>(values.size()));
  for (QString& value : values)
    ranked.emplace_back(kind.rank(value, kind.unit), std::move(value));
  std::ranges::stable_sort(ranked, {}, [](const auto& entry) { return entry.first; });
  values.clear();
  for (auto& [rank, value] : ranked)
    values.append(std::move(value));
}

void SortByAlphabet(QStringList& values) {
  QCollator collator{UserLocale()};
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::ranges::stable_sort(values, collator);
}

// ---- The menu ----------------------------------------------------------------------------------

constexpr FilterEntry kTop[] = {
    {"mnunone", std::nullopt},
    {"mnuflag", Column::Flag},
};
constexpr FilterEntry kImage[] = {
    {"mnufiletype", Column::FileType},
    {"mnuimagewidth", Column::ImageWidth},
    {"mnuimageheight", Column::ImageHeight},
    {"mnuhorizontalresolution", Column::HorizontalResolution},
    {"mnuverticalresolution", Column::VerticalResolution},
};
constexpr FilterEntry kExifImage[] = {
    {"mnumake", Column::CameraMake},           {"mnumodel", Column::CameraModel},
    {"mnuauthorexif", Column::AuthorExif},     {"mnucopyrightexif", Column::CopyrightExif},
    {"mnusoftware", Column::CreationSoftware}, {"mnucompressed", Column::CompressedBPP},
};
constexpr FilterEntry kExifCamera[] = {
    {"mnushutter", Column::ShutterSpeed},
    {"mnuexposuretime", Column::ExposureTime},
    {"mnuaperture", Column::LensAperture},
    {"mnumax", Column::MaxApertureValue},
    {"mnufocallength", Column::FocalLength},
    {"mnufnumber", Column::FNumber},
    {"mnuexposuremode", Column::ExposureMode},
    {"mnuexposurecompensation", Column::ExposureCompensation},
    {"mnuiso", Column::ISOSpeed},
    {"mnuwhitebalance", Column::WhiteBalance},
    {"mnumeteringmode", Column::MeteringMode},
    {"mnuexposureprogram", Column::ExposureProgram},
};
constexpr FilterEntry kExifMore[] = {
    {"mnuscenecapture", Column::SceneCaptureType},
    {"mnuorientation", Column::Orientation},
    {"mnux", Column::FocalPlaneXResolution},
    {"mnuY", Column::FocalPlaneYResolution},
    {"mnugain", Column::GainControl},
    {"mnucolor", Column::Colorspace},
    {"mnulightsource", Column::LightSource},
    {"mnuflashmode", Column::FlashMode},
    {"mnudigitalzoom", Column::DigitalZoomRatio},
    {"mnucontrast", Column::Contrast},
    {"mnusaturation", Column::Saturation},
    {"mnusharpness", Column::Sharpness},
    {"mnubrightness", Column::BrightnessValue},
    {"mnudts", Column::DistanceToSubject},
    {"mnudtfp", Column::DistanceToFocusPoint},
    {"mnusensing", Column::SensingMethod},
    {"mnu35", Column::FocalLength35mm},
};
constexpr FilterEntry kIptc[] = {
    {"mnuwriter", Column::Writer},
    {"mnuheadline", Column::Headline},
    {"mnuspecial", Column::SpecialInstructions},
    {"mnuurgency", Column::Urgency},
    {"mnucategory", Column::Category},
    {"mnucopyrightiptc", Column::CopyrightIptc},
    {"mnuauthoriptc", Column::AuthorIptc},
    {"mnuauthortitle", Column::AuthorTitle},
    {"mnucredit", Column::Credit},
    {"mnusource", Column::Source},
    {"mnuobject", Column::ObjectName},
    {"mnucity", Column::City},
    {"mnustate", Column::State},
    {"mnucountrycode", Column::CountryCode},
    {"mnucountryname", Column::CountryName},
    {"mnujobidentifier", Column::JobIdentifier},
};
constexpr FilterEntry kGps[] = {
    {"mnulatitudereference", Column::LatitudeReference},
    {"mnulatitudedegrees", Column::LatitudeDegrees},
    {"mnulatitudeminutes", Column::LatitudeMinutes},
    {"mnulatitudeseconds", Column::LatitudeSeconds},
    {"mnulongitudereference", Column::LongitudeReference},
    {"mnulongitudedegrees", Column::LongitudeDegrees},
    {"mnulongitudeminutes", Column::LongitudeMinutes},
    {"mnulongitudeseconds", Column::LongitudeSeconds},
    {"mnualtitudereference", Column::AltitudeReference},
    {"mnualtitude", Column::Altitude},
};
constexpr FilterGroup kMenu[] = {
    {"", "", kTop},
    {"Image Properties", "", kImage},
    {"EXIF", "Image Information", kExifImage},
    {"EXIF", "Camera Settings", kExifCamera},
    {"EXIF", "Miscellaneous", kExifMore},
    {"IPTC", "", kIptc},
    {"GPS", "", kGps},
};

}  // namespace

bool HasValueList(Column column) {
  return column != Column::ID && column != Column::Date && column != Column::Thumbnail;
}

QStringList Populate(const Catalogue& catalogue, Column column) {
  QStringList values;
  // Most rows repeat a value to the letter; only the others are folded.
  QSet<QString> seen, folded;
  for (const QString& value :
       catalogue.Query(u"Select ["_s + ColumnName(column) + u"] FROM qryphoto"_s, column)) {
    if (value.isEmpty() || seen.contains(value)) continue;
    seen.insert(value);
    const QString key = FoldCase(value);
    if (folded.contains(key)) continue;
    folded.insert(key);
    values.append(value);
  }
  const auto* kind = std::ranges::find(kKinds, column, &Kind::column);
  if (kind != std::end(kKinds))
    SortByKind(values, *kind);
  else
    SortByAlphabet(values);
  return values;
}

QString FilterClause(Column column, const QStringList& ticked) {
  QStringList tests;
  for (QString value : ticked)
    tests.append(u'[' + ColumnName(column) + u"] =\""_s + value.remove(u'"') + u'"');
  return InParentheses(tests, u" OR ");
}

QString sql(const QStringList& slotClauses) {
  QStringList clauses = slotClauses;
  clauses.removeAll(QString());
  return clauses.join(u" AND ");
}

std::span<const FilterGroup> FilterMenu() {
  return kMenu;
}

}  // namespace zqm
