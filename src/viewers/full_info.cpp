// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/full_info.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kGap[] = u"   ";

/// Of two lines that mean the same the one that the camera wrote.
struct ExposureLine {
  const char16_t* caption;
  const char16_t* otherwise;
};
constexpr ExposureLine kExposure[] = {
    {u"Exposure Time", u"Shutter Speed"},
    {u"F-number", u"Lens Aperture"},
    {u"ISO-Speed", nullptr},
    {u"Focal Length", nullptr},
};

QString Joined(QStringList parts) {
  parts.removeAll(QString());
  return parts.join(QString::fromUtf16(kGap));
}

QString Exposure(const PhotoInfo& info) {
  QStringList parts;
  for (const ExposureLine& line : kExposure) {
    const QString text = info.Line(MetadataPage::Exif, line.caption);
    parts.append(text.isEmpty() && line.otherwise != nullptr
                     ? info.Line(MetadataPage::Exif, line.otherwise)
                     : text);
  }
  return Joined(parts);
}

/// Of the file; a row's thumbnail has a size of its own.
QString Size(const ViewedPhoto& photo) {
  const QString pixels =
      photo.offline || photo.fullSize.isEmpty()
          ? QString()
          : u"%1 × %2"_s.arg(photo.fullSize.width()).arg(photo.fullSize.height());
  return Joined({pixels, photo.info.Text(Property::Size)});
}

}  // namespace

QString PlaceText(int position, int count) {
  return u"%1 / %2"_s.arg(position + 1).arg(count);
}

QStringList FullInfo(const ViewedPhoto& photo, int count, const PhotoValues& values) {
  QStringList lines{Joined({PlaceText(photo.position, count),
                            photo.offline ? u"missing or offline"_s : QString()}),
                    Size(photo), photo.info.Line(MetadataPage::Exif, u"Date/Time Original"),
                    Exposure(photo.info), ValuesText(values)};
  lines.removeAll(QString());
  return lines;
}

}  // namespace zqm
