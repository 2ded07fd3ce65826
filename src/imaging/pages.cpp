// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pages.h"

#include <algorithm>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"

namespace zqm {
namespace {

bool TiffHasPages(ByteView file) {
  constexpr std::uint16_t kNewSubfileType = 254;
  constexpr std::uint64_t kReduced = 1;
  constexpr int kMostDirectories = 4096;
  auto directory = ReadTiffDirectory(file);
  for (int i = 0; directory && directory->next != 0 && i < kMostDirectories; ++i) {
    directory = ReadTiffDirectory(file, directory->next);
    if (directory && (directory->Value(kNewSubfileType).value_or(0) & kReduced) == 0) return true;
  }
  return false;
}

/// Past a chain of blocks, each behind its length; the last one has none.
std::size_t SkipGifBlocks(const ByteReader& in, std::size_t at) {
  while (const std::uint8_t length = in.U8(at))
    at += 1 + std::size_t{length};
  return at + 1;
}

/// Source of the layout: GIF89a, sections 17 to 26.
bool GifHasFrames(ByteView file) {
  constexpr std::uint8_t kImage = 0x2C, kExtension = 0x21;
  const auto tableBytes = [](std::uint8_t flags) {
    return flags & 0x80 ? std::size_t{3} << ((flags & 7) + 1) : 0;
  };
  const ByteReader in(file, false);
  std::size_t at = 13 + tableBytes(in.U8(10));
  for (int frames = 0; at < file.size();) {
    if (in.U8(at) == kExtension) {
      at = SkipGifBlocks(in, at + 2);
    } else if (in.U8(at) == kImage) {
      if (++frames > 1) return true;
      at = SkipGifBlocks(in, at + 11 + tableBytes(in.U8(at + 9)));
    } else {
      return false;
    }
  }
  return false;
}

/// The layers stand in the fourth section, with 16 bits and more in a block of their own behind an
/// empty list.
bool PsdHasLayers(ByteView file) {
  const ByteReader in(file, true);
  const std::uint64_t lengthBytes = in.U16(4) == 2 ? 8 : 4;
  std::uint64_t at = 26;
  for (int section = 0; section < 2; ++section)
    at += 4 + std::uint64_t{in.U32(at)};
  const ByteView layers = in.Part(at + lengthBytes, lengthBytes == 8 ? in.U64(at) : in.U32(at));
  const ByteReader list(layers, true);
  const std::uint64_t listLength = lengthBytes == 8 ? list.U64(0) : list.U32(0);
  if (listLength > 0) return list.U16(lengthBytes) != 0;
  constexpr std::string_view kDeepLists[] = {"8BIMLr16", "8BIMLr32"};
  return std::ranges::any_of(kDeepLists, [&](std::string_view mark) {
    return std::search(layers.begin(), layers.end(), mark.begin(), mark.end(),
                       [](std::uint8_t byte, char c) {
                         return byte == static_cast<std::uint8_t>(c);
                       }) != layers.end();
  });
}

struct Counter {
  const Codec* codec;
  bool (*hasSeveral)(ByteView file);
};
constexpr Counter kCounters[] = {
    {&kTiffCodec, TiffHasPages}, {&kGifCodec, GifHasFrames}, {&kPsdCodec, PsdHasLayers}};

}  // namespace

bool HasSeveralPages(ByteView file, const Codec& codec) {
  const auto* counter = std::ranges::find(kCounters, &codec, &Counter::codec);
  return counter != std::end(kCounters) && counter->hasSeveral(file);
}

}  // namespace zqm
