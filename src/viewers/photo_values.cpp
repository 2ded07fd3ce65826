// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/photo_values.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kStars = 5;
constexpr QChar kFullStar(0x2605), kEmptyStar(0x2606);

}  // namespace

PhotoValues ValuesOf(const Catalogue& catalogue, const QString& path) {
  const PhotoRecordset& photos = catalogue.Photos();
  if (!photos.IsCatalogued(path)) return {};
  const int rating = photos.TextsOf(Column::Rating, {path}).front().toInt();
  return {true, std::clamp(rating, 0, kStars), photos.TextsOf(Column::Flag, {path}).front()};
}

Outcome SetValue(Catalogue& catalogue, const QString& path, const KeywordValue& value) {
  return AssignKeywords(catalogue.Photos(), {value}, {path}, [](int) {});
}

QString RatingText(int rating) {
  return rating > 0 ? QString(rating, kFullStar) + QString(kStars - rating, kEmptyStar) : QString();
}

QString ValuesText(const PhotoValues& values) {
  if (!values.catalogued) return u"Not catalogued"_s;
  QStringList parts;
  if (values.rating > 0) parts.append(RatingText(values.rating));
  if (values.flag == u"Flagged" || values.flag == u"Rejected") parts.append(values.flag);
  return parts.join(u"   ");
}

}  // namespace zqm
