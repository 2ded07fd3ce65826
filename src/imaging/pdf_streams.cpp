// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pdf_streams.h"

#include <tiffio.h>

#include <cstring>
#include <memory>

namespace zqm {
namespace {

/// A file in memory for the library to write to.
struct Memory {
  QByteArray bytes;
  toff_t at = 0;
};

Memory& MemoryOf(thandle_t handle) {
  return *static_cast<Memory*>(handle);
}

tmsize_t Read(thandle_t handle, void* out, tmsize_t count) {
  Memory& m = MemoryOf(handle);
  const auto size = static_cast<toff_t>(m.bytes.size());
  if (count <= 0 || m.at >= size) return 0;
  const auto taken = std::min(static_cast<toff_t>(count), size - m.at);
  std::memcpy(out, m.bytes.constData() + m.at, taken);
  m.at += taken;
  return static_cast<tmsize_t>(taken);
}

tmsize_t Write(thandle_t handle, void* from, tmsize_t count) {
  Memory& m = MemoryOf(handle);
  if (count <= 0) return 0;
  const auto end = static_cast<qsizetype>(m.at) + count;
  if (end > m.bytes.size()) m.bytes.resize(end);
  std::memcpy(m.bytes.data() + m.at, from, static_cast<std::size_t>(count));
  m.at += static_cast<toff_t>(count);
  return count;
}

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  Memory& m = MemoryOf(handle);
  const auto size = static_cast<toff_t>(m.bytes.size());
  const toff_t base = whence == SEEK_CUR ? m.at : whence == SEEK_END ? size : 0;
  return m.at = base + offset;
}

int Close(thandle_t) {
  return 0;
}

toff_t Size(thandle_t handle) {
  return static_cast<toff_t>(MemoryOf(handle).bytes.size());
}

int Silent(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using OwnedTiff = std::unique_ptr<TIFF, CloseTiff>;

OwnedTiff OpenForWriting(Memory& memory) {
  const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(
      TIFFOpenOptionsAlloc(), TIFFOpenOptionsFree);
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), Silent, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), Silent, nullptr);
  return OwnedTiff(TIFFClientOpenExt("", "wm", &memory, Read, Write, Seek, Close, Size, nullptr,
                                     nullptr, options.get()));
}

/// The one strip that the rows make, as it stands in the file.
QByteArray StripOf(const TiffRows& rows, std::uint16_t compression, std::uint32_t faxOptions) {
  Memory memory;
  const OwnedTiff tiff = OpenForWriting(memory);
  if (!tiff) return {};
  const auto height = static_cast<std::uint32_t>(rows.size.height());
  TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(rows.size.width()));
  TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, height);
  TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, rows.bits);
  TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, rows.samples);
  TIFFSetField(tiff.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC,
               rows.samples == 3 ? PHOTOMETRIC_RGB
               : rows.bits == 1  ? PHOTOMETRIC_MINISWHITE
                                 : PHOTOMETRIC_MINISBLACK);
  TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, compression);
  if (compression == COMPRESSION_CCITTFAX3)
    TIFFSetField(tiff.get(), TIFFTAG_GROUP3OPTIONS, faxOptions);
  QByteArray pixels = rows.pixels;  // the library may turn the bytes about in place
  if (TIFFWriteEncodedStrip(tiff.get(), 0, pixels.data(), pixels.size()) < 0) return {};
  if (!TIFFFlushData(tiff.get())) return {};
  const std::uint64_t at = TIFFGetStrileOffset(tiff.get(), 0);
  const std::uint64_t length = TIFFGetStrileByteCount(tiff.get(), 0);
  return memory.bytes.mid(static_cast<qsizetype>(at), static_cast<qsizetype>(length));
}

}  // namespace

QByteArray RunLengthEncoded(const QByteArray& data) {
  constexpr qsizetype kLongest = 128;
  constexpr char kEnd = '\x80';
  QByteArray out;
  out.reserve(data.size() + data.size() / kLongest + 2);
  const auto runAt = [&](qsizetype at) {
    const qsizetype end = std::min(data.size(), at + kLongest);
    qsizetype next = at + 1;
    while (next < end && data[next] == data[at])
      ++next;
    return next - at;
  };
  for (qsizetype at = 0; at < data.size();) {
    if (const qsizetype run = runAt(at); run > 1) {
      out.append(static_cast<char>(2 * kLongest + 1 - run)).append(data[at]);
      at += run;
      continue;
    }
    // Runs of two inside a literal cost more as runs.
    const qsizetype begin = at;
    while (at < data.size() && at - begin < kLongest && runAt(at) < 3)
      ++at;
    out.append(static_cast<char>(at - begin - 1)).append(data.constData() + begin, at - begin);
  }
  return out.append(kEnd);
}

QByteArray LzwEncoded(const TiffRows& rows) {
  return StripOf(rows, COMPRESSION_LZW, 0);
}

QByteArray FaxEncoded(const TiffRows& rows, FaxKind kind) {
  return kind == FaxKind::Group4 ? StripOf(rows, COMPRESSION_CCITTFAX4, 0)
                                 : StripOf(rows, COMPRESSION_CCITTFAX3, GROUP3OPT_2DENCODING);
}

}  // namespace zqm
