// SPDX-License-Identifier: GPL-3.0-or-later
// What the codecs share: bounded reading of bytes, reasons, and the fence around C libraries that
// report errors by a jump.
#pragma once

#include <QString>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "imaging/codec.h"

namespace zqm {

/// Most memory that one decoder may take for itself.
inline constexpr std::int64_t kMostDecoderBytes = std::int64_t{800} << 20;

inline constexpr double kMetresPerInch = 0.0254;

/// Numbers of a file by offset; whatever lies beyond the end reads as zero.
class ByteReader {
 public:
  ByteReader(ByteView bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

  std::uint8_t U8(std::uint64_t at) const {
    return at < bytes_.size() ? bytes_[static_cast<std::size_t>(at)] : std::uint8_t{0};
  }
  std::uint16_t U16(std::uint64_t at) const { return static_cast<std::uint16_t>(Number(at, 2)); }
  std::uint32_t U32(std::uint64_t at) const { return static_cast<std::uint32_t>(Number(at, 4)); }
  std::uint64_t U64(std::uint64_t at) const { return Number(at, 8); }

  /// The part from `at`, cut at the end of the bytes.
  ByteView Part(std::uint64_t at, std::uint64_t length) const {
    if (at >= bytes_.size()) return {};
    return bytes_.subspan(at, std::min<std::uint64_t>(length, bytes_.size() - at));
  }

 private:
  std::uint64_t Number(std::uint64_t at, unsigned count) const {
    std::uint64_t value = 0;
    for (unsigned i = 0; i < count; ++i) {
      const std::uint64_t byte = U8(at + i);
      value |= byte << (8 * (bigEndian_ ? count - 1 - i : i));
    }
    return value;
  }

  ByteView bytes_;
  bool bigEndian_;
};

inline bool StartsWith(ByteView bytes, std::string_view mark, std::size_t at = 0) {
  return bytes.size() >= at + mark.size() &&
         std::memcmp(bytes.data() + at, mark.data(), mark.size()) == 0;
}

inline QByteArray ToByteArray(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// "File could not be decoded: DETAIL", the detail in the words of the library.
inline Failure DecodeFailure(const char* detail) {
  QString reason = QStringLiteral("File could not be decoded");
  if (detail && *detail) reason += QStringLiteral(": ") + QString::fromLatin1(detail);
  return {reason};
}

/// Where a C library's error handler jumps to, with the message that it left.
struct ErrorTrap {
  std::jmp_buf jump;
  char message[256] = {};
};

/// Runs `body`; false when the library gave up by a jump to the trap. The jump skips destructors:
/// `body` may own nothing while it calls the library, everything with a destructor stands outside.
template <class Body>
[[gnu::noinline]] bool RunTrapped(ErrorTrap& trap, const Body& body) {
  if (setjmp(trap.jump) != 0) return false;
  body();
  return true;
}

}  // namespace zqm
