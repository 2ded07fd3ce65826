// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/jpeg_segments.h"

#include <QtEndian>
#include <array>
#include <string_view>
#include <vector>

#include "imaging/codecs/codec_support.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::size_t kMostSegmentBytes = 65533;
constexpr std::uint8_t kStartOfScan = 0xDA, kApp0 = 0xE0, kApp1 = 0xE1, kApp2 = 0xE2, kApp13 = 0xED;

constexpr std::string_view kExifMark("Exif\0\0", 6);
constexpr std::string_view kXmpMark("http://ns.adobe.com/xap/1.0/\0", 29);
constexpr std::string_view kXmpExtensionMark("http://ns.adobe.com/xmp/extension/\0", 35);
constexpr std::string_view kResourceMark("Photoshop 3.0\0", 14);
constexpr std::string_view kProfileMark("ICC_PROFILE\0", 12);

struct Segment {
  std::uint8_t marker = 0;
  ByteView whole, content;
};

struct Segments {
  std::vector<Segment> list;
  ByteView rest;  // from the first scan on
};

std::optional<Segments> Split(ByteView jpeg) {
  if (!StartsWith(jpeg, "\xFF\xD8\xFF")) return std::nullopt;
  const ByteReader in(jpeg, true);
  Segments segments;
  for (std::size_t at = 2; at + 4 <= jpeg.size();) {
    const std::size_t start = at;
    if (jpeg[at] != 0xFF) return std::nullopt;
    while (at + 1 < jpeg.size() && jpeg[at + 1] == 0xFF)
      ++at;
    const std::uint8_t marker = in.U8(at + 1);
    if (marker == kStartOfScan) {
      segments.rest = jpeg.subspan(start);
      return segments;
    }
    const std::size_t length = in.U16(at + 2);
    if (length < 2 || jpeg.size() - at - 2 < length) return std::nullopt;
    segments.list.push_back(
        {marker, jpeg.subspan(start, at + 2 + length - start), jpeg.subspan(at + 4, length - 2)});
    at += 2 + length;
  }
  return std::nullopt;
}

bool Is(const Segment& segment, std::uint8_t marker, std::string_view mark) {
  return segment.marker == marker && StartsWith(segment.content, mark);
}

QByteArray Mark(std::string_view mark) {
  return QByteArray(mark.data(), static_cast<qsizetype>(mark.size()));
}

void AddSegment(QByteArray& out, std::uint8_t marker, const QByteArray& content) {
  const auto length = qToBigEndian(static_cast<quint16>(content.size() + 2));
  out.append('\xFF').append(static_cast<char>(marker));
  out.append(reinterpret_cast<const char*>(&length), 2).append(content);
}

bool AddSingle(QByteArray& out, std::string_view mark, const QByteArray& block) {
  if (block.isEmpty()) return true;
  if (static_cast<std::size_t>(block.size()) + mark.size() > kMostSegmentBytes) return false;
  AddSegment(out, kApp1, Mark(mark) + block);
  return true;
}

void AddResources(QByteArray& out, const QByteArray& resources) {
  const auto most = static_cast<qsizetype>(kMostSegmentBytes - kResourceMark.size());
  for (qsizetype at = 0; at < resources.size(); at += most)
    AddSegment(out, kApp13, Mark(kResourceMark) + resources.mid(at, most));
}

// Numbered from 1, each with the count of all; more than 255 can't be told.
bool AddProfile(QByteArray& out, const QByteArray& profile) {
  const auto most = static_cast<qsizetype>(kMostSegmentBytes - kProfileMark.size() - 2);
  const qsizetype count = (profile.size() + most - 1) / most;
  if (count > 255) return false;
  for (qsizetype i = 0; i < count; ++i)
    AddSegment(out, kApp2,
               Mark(kProfileMark) + static_cast<char>(i + 1) + static_cast<char>(count) +
                   profile.mid(i * most, most));
  return true;
}

}  // namespace

bool HasWholeSegments(ByteView jpeg) {
  return Split(jpeg).has_value();
}

QByteArray JpegExif(ByteView jpeg) {
  const auto segments = Split(jpeg);
  if (!segments) return {};
  for (const Segment& segment : segments->list)
    if (Is(segment, kApp1, kExifMark))
      return ToByteArray(segment.content.subspan(kExifMark.size()));
  return {};
}

QByteArray JpegResources(ByteView jpeg) {
  QByteArray joined;
  if (const auto segments = Split(jpeg))
    for (const Segment& segment : segments->list)
      if (Is(segment, kApp13, kResourceMark))
        joined += ToByteArray(segment.content.subspan(kResourceMark.size()));
  return joined;
}

Result<QByteArray> WithBlocks(ByteView jpeg, const JpegChange& change) {
  const auto segments = Split(jpeg);
  if (!segments) return Failure{u"Not a JPEG file"_s};
  QByteArray exif, xmp, resources, profile;
  const bool fits = AddSingle(exif, kExifMark, change.exif.value_or(QByteArray())) &&
                    AddSingle(xmp, kXmpMark, change.xmp.value_or(QByteArray())) &&
                    AddProfile(profile, change.profile.value_or(QByteArray()));
  if (!fits) return Failure{u"Metadata is too large"_s};
  AddResources(resources, change.resources.value_or(QByteArray()));

  struct Kind {
    bool changes;
    std::uint8_t marker;
    std::string_view mark;
    QByteArray* bytes;
  };
  const std::array<Kind, 5> kinds{
      {{change.exif.has_value(), kApp1, kExifMark, &exif},
       {change.xmp.has_value(), kApp1, kXmpMark, &xmp},
       {change.xmp.has_value(), kApp1, kXmpExtensionMark, nullptr},
       {change.resources.has_value(), kApp13, kResourceMark, &resources},
       {change.profile.has_value(), kApp2, kProfileMark, &profile}}};
  const auto kindOf = [&](const Segment& segment) {
    return std::ranges::find_if(kinds, [&](const Kind& kind) {
      return kind.changes && Is(segment, kind.marker, kind.mark);
    });
  };

  // What no segment of its kind makes place for stands in front.
  QByteArray front, behind;
  std::size_t firstFree = 0;
  while (firstFree < segments->list.size() && segments->list[firstFree].marker == kApp0)
    ++firstFree;
  for (std::size_t i = 0; i < segments->list.size(); ++i) {
    const Segment& segment = segments->list[i];
    const auto kind = kindOf(segment);
    if (kind == kinds.end()) {
      (i < firstFree ? front : behind) += ToByteArray(segment.whole);
    } else if (kind->bytes) {
      behind += std::exchange(*kind->bytes, QByteArray());
    }
  }
  return "\xFF\xD8" + front + exif + xmp + resources + profile + behind +
         ToByteArray(segments->rest);
}

}  // namespace zqm
