// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/filter_lists.h"

#include <QCollator>
#include <QSet>
#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

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
Rank SortShutterSpeed(const QString& value) {
  const QString text = WithoutUnit(value, u"sec");
  if (const auto seconds = Number(text)) return {0, -*seconds};
  if (!text.startsWith("1/"_L1)) return {kUnreadable, 0};
  const auto denominator = Number(QStringView(text).mid(2));
  return denominator ? Rank{1, *denominator} : Rank{kUnreadable, 0};
}

template <const char16_t* kUnit>
Rank SortByNumber(const QString& value) {
  return ByNumber(Number(WithoutUnit(value, kUnit)));
}

constexpr char16_t kNoUnit[] = u"", kAperture[] = u"F/", kLength[] = u"mm", kSpeed[] = u"ISO-",
                   kDistance[] = u"m", kCompensation[] = u"Ev";
constexpr auto SortCommonAlgorithm = SortByNumber<kNoUnit>;
constexpr auto SortLensAperture = SortByNumber<kAperture>;
constexpr auto SortFocalLength = SortByNumber<kLength>;
constexpr auto SortISOSpeed = SortByNumber<kSpeed>;
constexpr auto SortDistToFocusPt = SortByNumber<kDistance>;
constexpr auto SortExposureCompensation = SortByNumber<kCompensation>;

struct Kind {
  Column column;
  Rank (*rank)(const QString& value);
};

/// Every column that isn't here holds texts.
constexpr Kind kKinds[] = {
    {Column::ImageWidth, SortCommonAlgorithm},
    {Column::ImageHeight, SortCommonAlgorithm},
    {Column::HorizontalResolution, SortCommonAlgorithm},
    {Column::VerticalResolution, SortCommonAlgorithm},
    {Column::CompressedBPP, SortCommonAlgorithm},
    {Column::FocalPlaneXResolution, SortCommonAlgorithm},
    {Column::FocalPlaneYResolution, SortCommonAlgorithm},
    {Column::DigitalZoomRatio, SortCommonAlgorithm},
    {Column::BrightnessValue, SortCommonAlgorithm},
    {Column::FocalLength35mm, SortCommonAlgorithm},
    {Column::LatitudeDegrees, SortCommonAlgorithm},
    {Column::LatitudeMinutes, SortCommonAlgorithm},
    {Column::LatitudeSeconds, SortCommonAlgorithm},
    {Column::LongitudeDegrees, SortCommonAlgorithm},
    {Column::LongitudeMinutes, SortCommonAlgorithm},
    {Column::LongitudeSeconds, SortCommonAlgorithm},
    {Column::AltitudeReference, SortCommonAlgorithm},
    {Column::Altitude, SortCommonAlgorithm},
    {Column::ShutterSpeed, SortShutterSpeed},
    {Column::ExposureTime, SortShutterSpeed},
    {Column::LensAperture, SortLensAperture},
    {Column::MaxApertureValue, SortLensAperture},
    {Column::FNumber, SortLensAperture},
    {Column::FocalLength, SortFocalLength},
    {Column::ISOSpeed, SortISOSpeed},
    {Column::DistanceToFocusPoint, SortDistToFocusPt},
    {Column::ExposureCompensation, SortExposureCompensation},
};

void SortByKind(QStringList& values, const Kind& kind) {
  std::vector<std::pair<Rank, QString>> ranked;
  ranked.reserve(static_cast<std::size_t>(values.size()));
  for (QString& value : values)
    ranked.emplace_back(kind.rank(value), std::move(value));
  std::ranges::stable_sort(ranked, {}, [](const auto& entry) { return entry.first; });
  values.clear();
  for (auto& [rank, value] : ranked)
    values.append(std::move(value));
}

/// What stands before what in most alphabets: marks, digits, letters without their case and
/// accents.
std::uint16_t RoughWeight(char16_t character) {
  static constexpr auto kWeights = [] {
    constexpr std::string_view order =
        " _-,;:!?.'\"()[]{}@*/\\&#%`^+<=>|~$0123456789abcdefghijklmnopqrstuvwxyz";
    std::array<std::uint16_t, 128> weights{};
    for (std::size_t i = 0; i < order.size(); ++i)
      weights[static_cast<unsigned char>(order[i])] = static_cast<std::uint16_t>(i + 1);
    for (std::size_t capital = 'A'; capital <= 'Z'; ++capital)
      weights[capital] = weights[capital + 32];
    return weights;
  }();
  if (character < 128) return kWeights[character];
  const QString parts = QChar(character).decomposition();
  return parts.isEmpty() || parts[0].unicode() >= 128 ? character : kWeights[parts[0].unicode()];
}

/// A text with the weights of its first four characters, the first one highest.
struct Weighed {
  explicit Weighed(QString value) : text(std::move(value)) {
    for (qsizetype i = 0; i < 4; ++i)
      start = start << 16 | (i < text.size() ? RoughWeight(text[i].unicode()) : 0);
  }

  bool operator<(const Weighed& other) const {
    if (start != other.start) return start < other.start;
    const auto rest = [](const QString& whole) {
      return QStringView(whole).mid(std::min<qsizetype>(4, whole.size()));
    };
    return std::ranges::lexicographical_compare(
        rest(text), rest(other.text), {}, [](QChar c) { return RoughWeight(c.unicode()); },
        [](QChar c) { return RoughWeight(c.unicode()); });
  }

  std::uint64_t start = 0;
  QString text;
};

/// A collator takes long for each pair, so the texts are first brought near their order without
/// one; then it is asked for neighbours, and only those that stand wrong are sorted by it.
void SortByAlphabet(QStringList& values) {
  QCollator collator{UserLocale()};
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::vector<Weighed> near(std::make_move_iterator(values.begin()),
                            std::make_move_iterator(values.end()));
  std::ranges::stable_sort(near, std::less<>());
  std::vector<QString> right, wrong;
  right.reserve(near.size());
  for (Weighed& next : near) {
    if (right.empty() || collator.compare(right.back(), next.text) <= 0) {
      right.push_back(std::move(next.text));
      continue;
    }
    // Either of the two may be the one that stands wrong.
    wrong.push_back(std::move(right.back()));
    right.pop_back();
    wrong.push_back(std::move(next.text));
  }
  std::ranges::stable_sort(wrong, collator);
  values.clear();
  std::ranges::merge(right, wrong, std::back_inserter(values), collator);
}

/// A value to which only the letters count, not their case.
struct Spelling {
  QStringView value;

  friend bool operator==(const Spelling& left, const Spelling& right) {
    return EqualFolded(left.value, right.value);
  }
  friend size_t qHash(const Spelling& spelling, size_t seed) {
    return HashFolded(spelling.value, seed);
  }
};

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
  const QStringList all =
      catalogue.Query(u"Select ["_s + ColumnName(column) + u"] FROM qryphoto"_s, column);
  QStringList values;
  QSet<Spelling> seen;
  seen.reserve(all.size());
  for (const QString& value : all) {
    const qsizetype before = seen.size();
    if (!value.isEmpty()) seen.insert({value});
    if (seen.size() > before) values.append(value);
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
