// SPDX-License-Identifier: GPL-3.0-or-later
// Changing tags of a TIFF-like block (an EXIF block, a TIFF file) without moving anything else.
#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <vector>

#include "imaging/codec.h"
#include "imaging/exif_store.h"

namespace zqm {

/// Bytes of one value of a type, 0 for types that TIFF 6.0 doesn't know.
std::uint32_t TagTypeSize(std::uint16_t type);

/// Edits in place: a value that fits its old room is written there, any other one and a directory
/// that grows go to the end of the block. So a maker note, whose inner offsets count from the
/// block's start, stays where it is and as it is, and so do pictures and further pages. Source of
/// the layout: TIFF 6.0, section 2; Exif 2.3, 4.6 for the directories.
class TiffEditor {
 public:
  /// Nothing for a block that is none, is cut in one of the directories, has 64-bit offsets, or one
  /// directory inside another.
  static std::optional<TiffEditor> Open(QByteArray block);
  /// A new little-endian block with an empty main directory.
  static TiffEditor Empty();

  bool BigEndian() const { return bigEndian_; }

  std::optional<TagValue> Get(ExifTag tag) const;
  /// The tags of a directory in their order.
  std::vector<int> Tags(ExifGroup group) const;
  void Set(ExifTag tag, const TagValue& value);
  void Remove(ExifTag tag);
  /// The tags that were set in the store since it was read.
  void Apply(const ExifStore& store);
  /// The whole directory, with the pointer to it.
  void RemoveGroup(ExifGroup group);

  /// Further bytes at the block's end; gives their offset (even).
  std::uint32_t Append(ByteView bytes);
  /// Number of directories that follow the main one.
  int FollowingDirectories() const;
  /// Cuts off the directories that follow the main one (in an EXIF block: the thumbnail's).
  void DropFollowing();
  /// The JPEG thumbnail of the directory behind the main one, empty without one; setting it needs
  /// one to be there.
  ByteView Thumbnail() const;
  void SetThumbnail(const QByteArray& jpeg);

  /// The block as changed. Empty when it would pass 4 GB.
  QByteArray Take();

  /// A number in the block's byte order, as a value of one SHORT or LONG.
  TagValue Short(std::uint16_t number) const;
  TagValue Long(std::uint32_t number) const;
  std::uint32_t Number(const TagValue& value, std::uint32_t index = 0) const;

 private:
  struct Entry {
    std::uint16_t tag = 0, type = 0;
    std::uint32_t count = 0;
    QByteArray field;  // the four bytes: the value or its offset
  };
  struct Directory {
    std::uint32_t at = 0;         // 0 where it is yet to be placed
    std::size_t storedCount = 0;  // entries that there is room for
    std::vector<Entry> entries;   // by tag
    std::uint32_t next = 0;
    bool changed = false;
  };

  TiffEditor() = default;
  std::optional<Directory> ReadDirectory(std::uint32_t at) const;
  std::optional<Directory>& Of(ExifGroup group) {
    return directories_[static_cast<std::size_t>(group)];
  }
  const std::optional<Directory>& Of(ExifGroup group) const {
    return directories_[static_cast<std::size_t>(group)];
  }
  static Entry* Find(Directory& directory, int tag);
  static const Entry* Find(const Directory& directory, int tag);
  std::uint64_t ValueBytes(const Entry& entry) const;
  TagValue ValueOf(const Entry& entry) const;
  void SetIn(Directory& directory, int tag, const TagValue& value);
  bool UsedByAnother(const Entry& entry, std::uint32_t from, std::uint64_t length) const;
  void Place(Directory& directory);

  std::uint16_t U16(std::uint64_t at) const;
  std::uint32_t U32(std::uint64_t at) const;
  QByteArray Bytes16(std::uint16_t number) const;
  QByteArray Bytes32(std::uint32_t number) const;

  QByteArray block_;
  bool bigEndian_ = false;
  std::optional<Directory> directories_[3];  // by group; the main one always stands
  std::optional<Directory> thumbnail_;
};

}  // namespace zqm
