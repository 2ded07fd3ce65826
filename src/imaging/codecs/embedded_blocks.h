// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks that other formats carry inside: image resources, and the directories of TIFF-like files.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "imaging/codec.h"

namespace zqm {

/// The data of one block in a list of image resources ("8BIM", number, name, length, data padded to
/// even; big-endian). Empty where there is none.
ByteView FindResource(ByteView resources, std::uint16_t number);

/// The IPTC block in a list of image resources, number 0x0404. Empty where there is none.
QByteArray IptcFromResources(ByteView resources);

/// The list with another block of that number in the place of the first one, at the end where there
/// was none; an empty block takes all of the number out. What else is in the list stays byte for
/// byte.
QByteArray WithResource(ByteView resources, std::uint16_t number, const QByteArray& data);

/// The list with this IPTC block and, where there is a digest of it, the digest of this one.
QByteArray WithIptcResource(ByteView resources, const QByteArray& iptc);

struct TiffEntry {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint64_t count = 0;
  ByteView data;  ///< the values as in the file, cut at its end
};

/// One directory of a TIFF-like file, classic or with 64-bit offsets.
struct TiffDirectory {
  std::vector<TiffEntry> entries;
  std::uint64_t next = 0;  ///< offset of the following directory, 0 after the last
  bool bigEndian = false;

  const TiffEntry* Find(std::uint16_t tag) const;
  /// The value of a BYTE, SHORT, LONG, IFD or 64-bit entry.
  std::optional<std::uint64_t> Value(std::uint16_t tag, std::uint64_t index = 0) const;
};

/// The directory at `offset`, or the first one for 0. Nothing for what isn't such a file.
std::optional<TiffDirectory> ReadTiffDirectory(ByteView file, std::uint64_t offset = 0);

}  // namespace zqm
