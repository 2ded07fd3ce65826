// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/jpeg_segments.h"

#include <QtEndian>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr qsizetype kMostSegmentBytes = 65533;

QByteArray BigEndian(quint32 value, int bytes) {
  QByteArray out;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
    out.append(static_cast<char>(value >> shift & 0xFF));
  return out;
}

QByteArray Segment(char marker, const QByteArray& content) {
  return QByteArray("\xFF") + marker + BigEndian(static_cast<quint32>(content.size()) + 2, 2) +
         content;
}

/// The IPTC block as image resource 0x0404, the way editors have kept it in JPEG files.
QByteArray PhotoshopResource(const QByteArray& block) {
  QByteArray resource("Photoshop 3.0\0", 14);
  resource += QByteArray("8BIM\x04\x04\0\0", 8);
  resource += BigEndian(static_cast<quint32>(block.size()), 4) + block;
  if (block.size() % 2 != 0) resource.append('\0');
  return resource;
}

}  // namespace

Result<QByteArray> WithMetadata(const QByteArray& jpeg, const FileParameters& parameters) {
  if (!jpeg.startsWith("\xFF\xD8\xFF")) return Failure{u"Not a JPEG file"_s};
  qsizetype at = 2;
  constexpr char kJfifMarker = '\xE0';
  if (jpeg.size() > at + 4 && jpeg[at + 1] == kJfifMarker)
    at += 2 + qFromBigEndian<quint16>(jpeg.constData() + at + 2);

  QByteArray segments;
  const auto add = [&](char marker, const QByteArray& content) {
    if (content.size() > kMostSegmentBytes) return false;
    segments += Segment(marker, content);
    return true;
  };
  const Failure tooLarge{u"Metadata is too large"_s};
  if (const QByteArray exif = parameters.ExifBlock(); !exif.isEmpty())
    if (!add('\xE1', QByteArray("Exif\0\0", 6) + exif)) return tooLarge;
  if (parameters.Iptc().Count() > 0)
    if (!add('\xED', PhotoshopResource(parameters.Iptc().ToBlock()))) return tooLarge;
  return QByteArray(jpeg).insert(at, segments);
}

}  // namespace zqm
