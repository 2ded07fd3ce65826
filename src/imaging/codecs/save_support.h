// SPDX-License-Identifier: GPL-3.0-or-later
// What the writing halves of the codecs share.
#pragma once

#include <QImage>
#include <optional>
#include <string_view>

#include "imaging/codecs/codec_support.h"
#include "imaging/row_source.h"

namespace zqm {

using SaveFunction = Result<QByteArray>(const QImage& picture, const SaveOptions& options,
                                        const FileBlocks& blocks);
SaveFunction SaveBmp, SaveGif, SaveJ2k, SaveJp2, SavePcx, SavePng, SavePsd, SaveTga;

/// A density or the like as a whole number from 0 to `most`; 0 for what is no number.
std::uint32_t WholeNumber(double value, std::uint32_t most);

/// "File format cannot be written: DETAIL", the detail in the words of the library.
Failure WriteFailure(const char* detail);

/// The picture in one of the formats that a `RowSource` takes, the nearest where it has another.
/// Fails on empty pictures, above `kMostPixels` and above the sides that the format can hold.
Result<QImage> WritablePicture(const QImage& picture, int mostSide);

/// Whether it is Grayscale8 or Grayscale16.
bool IsGray(const QImage& picture);

/// For a Mono picture of black and white: the value of the bits that are white. Nothing for others.
std::optional<int> WhiteBit(const QImage& picture);

/// For formats whose palettes are opaque or that have none of two colours: palettes with alpha
/// become ARGB32, Mono becomes Grayscale8 or Indexed8.
QImage WithoutClearPalette(const QImage& picture);
QImage WithoutMono(const QImage& picture);

/// A file under construction.
class ByteWriter {
 public:
  explicit ByteWriter(bool bigEndian) : bigEndian_(bigEndian) {}

  qsizetype Size() const { return bytes_.size(); }
  void Reserve(qsizetype size) { bytes_.reserve(size); }
  ByteWriter& U8(std::int64_t value) { return Number(value, 1); }
  ByteWriter& U16(std::int64_t value) { return Number(value, 2); }
  ByteWriter& U32(std::int64_t value) { return Number(value, 4); }
  ByteWriter& Zeros(qsizetype count) {
    bytes_.append(count, '\0');
    return *this;
  }
  ByteWriter& Raw(const void* data, std::size_t size) {
    bytes_.append(static_cast<const char*>(data), static_cast<qsizetype>(size));
    return *this;
  }
  ByteWriter& Raw(const QByteArray& part) {
    bytes_.append(part);
    return *this;
  }
  ByteWriter& Text(std::string_view text) { return Raw(text.data(), text.size()); }
  /// Writes a number of 16 or 32 bits over bytes that stand already.
  void Set16(qsizetype at, std::int64_t value) { Put(bytes_.data() + at, value, 2); }
  void Set32(qsizetype at, std::int64_t value) { Put(bytes_.data() + at, value, 4); }
  QByteArray Take() { return std::move(bytes_); }

 private:
  void Put(char* at, std::int64_t value, int size) const {
    for (int i = 0; i < size; ++i)
      at[i] = static_cast<char>(value >> 8 * (bigEndian_ ? size - 1 - i : i));
  }
  ByteWriter& Number(std::int64_t value, int size) {
    char number[4];
    Put(number, value, size);
    bytes_.append(number, size);
    return *this;
  }

  QByteArray bytes_;
  bool bigEndian_;
};

/// One block of a list of image resources.
void AppendResource(ByteWriter& out, int number, const QByteArray& data);

}  // namespace zqm
