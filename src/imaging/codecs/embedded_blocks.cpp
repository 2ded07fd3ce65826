// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/codecs/embedded_blocks.h"

#include <QCryptographicHash>
#include <QtEndian>
#include <utility>

#include "imaging/codecs/codec_support.h"

namespace zqm {
namespace {

constexpr std::uint16_t kIptcResource = 0x0404, kIptcDigestResource = 0x0425;

/// Bytes of one value by its type number; 0 for unknown types.
constexpr std::array<std::uint8_t, 19> kTypeSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4,
                                                     8, 4, 8, 4, 0, 0, 8, 8, 8};

struct Resource {
  std::uint16_t number = 0;
  ByteView whole, data;
};

std::vector<Resource> ReadResources(ByteView resources) {
  const ByteReader in(resources, true);
  std::vector<Resource> list;
  std::uint64_t at = 0;
  while (at + 12 <= resources.size() && StartsWith(resources, "8BIM", at)) {
    const std::uint64_t name = (std::uint64_t{in.U8(at + 6)} + 2) & ~std::uint64_t{1};
    const std::uint32_t length = in.U32(at + 6 + name);
    const std::uint64_t data = at + 6 + name + 4;
    const std::uint64_t end = data + length + (length & 1);
    list.push_back({in.U16(at + 4), in.Part(at, end - at), in.Part(data, length)});
    at = end;
  }
  return list;
}

}  // namespace

ByteView FindResource(ByteView resources, std::uint16_t number) {
  for (const Resource& resource : ReadResources(resources))
    if (resource.number == number) return resource.data;
  return {};
}

QByteArray WithResource(ByteView resources, std::uint16_t number, const QByteArray& data) {
  QByteArray fresh;
  if (!data.isEmpty()) {
    const auto bigNumber = qToBigEndian(number);
    const auto bigLength = qToBigEndian(static_cast<quint32>(data.size()));
    fresh.append("8BIM").append(reinterpret_cast<const char*>(&bigNumber), 2).append(2, '\0');
    fresh.append(reinterpret_cast<const char*>(&bigLength), 4).append(data);
    if (data.size() % 2 != 0) fresh.append('\0');
  }
  QByteArray list;
  for (const Resource& resource : ReadResources(resources)) {
    if (resource.number == number)
      list += std::exchange(fresh, QByteArray());
    else
      list += ToByteArray(resource.whole);
  }
  return list + fresh;
}

QByteArray WithIptcResource(ByteView resources, const QByteArray& iptc) {
  const bool hasDigest = !FindResource(resources, kIptcDigestResource).empty();
  const QByteArray list = WithResource(resources, kIptcResource, iptc);
  if (!hasDigest) return list;
  return WithResource(Bytes(list), kIptcDigestResource,
                      QCryptographicHash::hash(iptc, QCryptographicHash::Md5));
}

QByteArray IptcFromResources(ByteView resources) {
  return ToByteArray(FindResource(resources, kIptcResource));
}

const TiffEntry* TiffDirectory::Find(std::uint16_t tag) const {
  const auto found = std::ranges::find(entries, tag, &TiffEntry::tag);
  return found == entries.end() ? nullptr : &*found;
}

std::optional<std::uint64_t> TiffDirectory::Value(std::uint16_t tag, std::uint64_t index) const {
  const TiffEntry* entry = Find(tag);
  if (!entry || entry->type >= kTypeSizes.size()) return std::nullopt;
  const std::uint64_t size = kTypeSizes[entry->type];
  if (size == 0 || index >= entry->data.size() / size) return std::nullopt;
  const ByteReader in(entry->data, bigEndian);
  switch (size) {
    case 1:
      return in.U8(index);
    case 2:
      return in.U16(index * 2);
    case 4:
      return in.U32(index * 4);
    default:
      return in.U64(index * 8);
  }
}

std::optional<TiffDirectory> ReadTiffDirectory(ByteView file, std::uint64_t offset) {
  const bool bigEndian = StartsWith(file, "MM");
  if (file.size() < 16 || (!bigEndian && !StartsWith(file, "II"))) return std::nullopt;
  const ByteReader in(file, bigEndian);
  const bool wide = in.U16(2) == 43;
  if (offset == 0) offset = wide ? in.U64(8) : in.U32(4);
  if (offset < 8 || offset >= file.size()) return std::nullopt;

  const std::uint64_t entrySize = wide ? 20 : 12;
  const std::uint64_t first = offset + (wide ? 8 : 2);
  const std::uint64_t room = first < file.size() ? (file.size() - first) / entrySize : 0;
  const std::uint64_t count = std::min(wide ? in.U64(offset) : in.U16(offset), room);
  TiffDirectory directory;
  directory.bigEndian = bigEndian;
  for (std::uint64_t i = 0; i < std::min<std::uint64_t>(count, 4096); ++i) {
    const std::uint64_t at = first + i * entrySize;
    TiffEntry entry;
    entry.tag = in.U16(at);
    entry.type = in.U16(at + 2);
    entry.count = wide ? in.U64(at + 4) : in.U32(at + 4);
    const std::uint64_t size = entry.type < kTypeSizes.size() ? kTypeSizes[entry.type] : 0;
    const std::uint64_t length = std::min<std::uint64_t>(entry.count, file.size()) * size;
    const std::uint64_t inlineAt = at + (wide ? 12 : 8);
    const bool isInline = length <= (wide ? 8U : 4U);
    const std::uint64_t dataAt = isInline ? inlineAt : wide ? in.U64(inlineAt) : in.U32(inlineAt);
    entry.data = in.Part(dataAt, length);
    directory.entries.push_back(entry);
  }
  const std::uint64_t nextAt = first + count * entrySize;
  directory.next = wide ? in.U64(nextAt) : in.U32(nextAt);
  return directory;
}

}  // namespace zqm
