// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/tiff_editor.h"

#include <QSet>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <limits>

#include "imaging/codecs/codec_support.h"

namespace zqm {
namespace {

constexpr std::array<std::uint8_t, 13> kTypeSizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
constexpr std::uint16_t kShort = 3, kLong = 4;
constexpr std::uint32_t kHeaderBytes = 8, kEntryBytes = 12;
constexpr int kExifPointer = 0x8769, kGpsPointer = 0x8825;
constexpr int kThumbnailOffset = 0x0201, kThumbnailLength = 0x0202;
constexpr int kMostDirectories = 4096;

struct SubDirectory {
  ExifGroup group;
  int pointer;
};
constexpr SubDirectory kSubDirectories[] = {{ExifGroup::Photo, kExifPointer},
                                            {ExifGroup::Gps, kGpsPointer}};

/// From the entry count up to and with the offset of the next directory.
std::uint64_t DirectoryBytes(std::size_t entries) {
  return 2 + std::uint64_t{kEntryBytes} * entries + 4;
}

}  // namespace

std::uint32_t TagTypeSize(std::uint16_t type) {
  return type < kTypeSizes.size() ? kTypeSizes[type] : 0;
}

std::optional<TiffEditor> TiffEditor::Open(QByteArray block) {
  TiffEditor editor;
  editor.block_ = std::move(block);
  editor.bigEndian_ = editor.block_.startsWith("MM");
  if (!editor.bigEndian_ && !editor.block_.startsWith("II")) return std::nullopt;
  if (editor.block_.size() < qsizetype{kHeaderBytes} || editor.U16(2) != 42) return std::nullopt;
  if (editor.block_.size() > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  auto& main = editor.Of(ExifGroup::Image);
  main = editor.ReadDirectory(editor.U32(4));
  if (!main) return std::nullopt;
  QSet<std::uint32_t> places{main->at};
  for (const auto& [group, pointer] : kSubDirectories) {
    const Entry* entry = Find(*main, pointer);
    if (!entry) continue;
    auto directory = editor.ReadDirectory(editor.Number(editor.ValueOf(*entry)));
    if (!directory || places.contains(directory->at)) return std::nullopt;
    places.insert(directory->at);
    editor.Of(group) = std::move(directory);
  }
  // A following directory that is cut is left alone.
  if (main->next != 0 && !places.contains(main->next))
    editor.thumbnail_ = editor.ReadDirectory(main->next);
  return editor;
}

TiffEditor TiffEditor::Empty() {
  TiffEditor editor;
  editor.block_ = QByteArray("II*\0\0\0\0\0", kHeaderBytes);
  editor.Of(ExifGroup::Image) = Directory{.changed = true};
  return editor;
}

std::uint16_t TiffEditor::U16(std::uint64_t at) const {
  return ByteReader(zqm::Bytes(block_), bigEndian_).U16(at);
}

std::uint32_t TiffEditor::U32(std::uint64_t at) const {
  return ByteReader(zqm::Bytes(block_), bigEndian_).U32(at);
}

QByteArray TiffEditor::Bytes16(std::uint16_t number) const {
  QByteArray bytes(2, Qt::Uninitialized);
  if (bigEndian_)
    qToBigEndian(number, bytes.data());
  else
    qToLittleEndian(number, bytes.data());
  return bytes;
}

QByteArray TiffEditor::Bytes32(std::uint32_t number) const {
  const QByteArray high = Bytes16(static_cast<std::uint16_t>(number >> 16));
  const QByteArray low = Bytes16(static_cast<std::uint16_t>(number & 0xFFFF));
  return bigEndian_ ? high + low : low + high;
}

TagValue TiffEditor::Short(std::uint16_t number) const {
  return {kShort, 1, Bytes16(number)};
}

TagValue TiffEditor::Long(std::uint32_t number) const {
  return {kLong, 1, Bytes32(number)};
}

std::uint32_t TiffEditor::Number(const TagValue& value, std::uint32_t index) const {
  const ByteReader in(zqm::Bytes(value.bytes), bigEndian_);
  if (value.type == kShort) return in.U16(std::uint64_t{index} * 2);
  return TagTypeSize(value.type) == 4 ? in.U32(std::uint64_t{index} * 4) : in.U8(index);
}

std::optional<TiffEditor::Directory> TiffEditor::ReadDirectory(std::uint32_t at) const {
  if (at < kHeaderBytes) return std::nullopt;
  Directory directory{.at = at, .storedCount = U16(at)};
  const std::uint64_t end = at + DirectoryBytes(directory.storedCount);
  if (end > static_cast<std::uint64_t>(block_.size())) return std::nullopt;
  for (std::size_t i = 0; i < directory.storedCount; ++i) {
    const auto entryAt = static_cast<qsizetype>(at + 2 + i * kEntryBytes);
    const auto where = static_cast<std::uint64_t>(entryAt);
    directory.entries.push_back(
        {U16(where), U16(where + 2), U32(where + 4), block_.mid(entryAt + 8, 4)});
  }
  directory.next = U32(end - 4);
  return directory;
}

const TiffEditor::Entry* TiffEditor::Find(const Directory& directory, int tag) {
  const auto found = std::ranges::find(directory.entries, tag, &Entry::tag);
  return found == directory.entries.end() ? nullptr : &*found;
}

TiffEditor::Entry* TiffEditor::Find(Directory& directory, int tag) {
  return const_cast<Entry*>(Find(std::as_const(directory), tag));
}

std::uint64_t TiffEditor::ValueBytes(const Entry& entry) const {
  return std::uint64_t{entry.count} * TagTypeSize(entry.type);
}

TagValue TiffEditor::ValueOf(const Entry& entry) const {
  const std::uint64_t size = ValueBytes(entry);
  if (size <= 4) return {entry.type, entry.count, entry.field.left(static_cast<qsizetype>(size))};
  const std::uint32_t at = ByteReader(zqm::Bytes(entry.field), bigEndian_).U32(0);
  return {entry.type, entry.count,
          ToByteArray(ByteReader(zqm::Bytes(block_), bigEndian_).Part(at, size))};
}

std::optional<TagValue> TiffEditor::Get(ExifTag tag) const {
  const auto& directory = Of(tag.group);
  const Entry* entry = directory ? Find(*directory, tag.number) : nullptr;
  if (!entry) return std::nullopt;
  return ValueOf(*entry);
}

std::vector<int> TiffEditor::Tags(ExifGroup group) const {
  std::vector<int> tags;
  if (const auto& directory = Of(group))
    for (const Entry& entry : directory->entries)
      tags.push_back(entry.tag);
  return tags;
}

// Two tags may share one value, and a damaged file may have a value anywhere.
bool TiffEditor::UsedByAnother(const Entry& self, std::uint32_t from, std::uint64_t length) const {
  const std::uint64_t end = from + length;
  const auto clashes = [&](const std::optional<Directory>& directory) {
    if (!directory) return false;
    const std::uint64_t directoryEnd = directory->at + DirectoryBytes(directory->storedCount);
    if (directory->at != 0 && directory->at < end && from < directoryEnd) return true;
    return std::ranges::any_of(directory->entries, [&](const Entry& other) {
      const std::uint64_t size = ValueBytes(other);
      if (&other == &self || size <= 4) return false;
      const std::uint32_t at = ByteReader(zqm::Bytes(other.field), bigEndian_).U32(0);
      return at < end && from < at + size;
    });
  };
  return from < kHeaderBytes || end > static_cast<std::uint64_t>(block_.size()) ||
         std::ranges::any_of(directories_, clashes) || clashes(thumbnail_);
}

void TiffEditor::SetIn(Directory& directory, int tag, const TagValue& value) {
  Entry* entry = Find(directory, tag);
  if (entry && ValueOf(*entry) == value) return;
  directory.changed = true;
  const std::uint64_t room = entry ? ValueBytes(*entry) : 0;
  const auto size = static_cast<std::uint64_t>(value.bytes.size());
  const std::uint32_t oldAt =
      room > 4 ? ByteReader(zqm::Bytes(entry->field), bigEndian_).U32(0) : 0;
  if (!entry) {
    const auto behind = std::ranges::upper_bound(directory.entries, tag, {}, &Entry::tag);
    entry = &*directory.entries.insert(behind, Entry{static_cast<std::uint16_t>(tag)});
  }
  QByteArray field = value.bytes.leftJustified(4, '\0');
  if (size > 4 && room >= size && !UsedByAnother(*entry, oldAt, room)) {
    block_.replace(oldAt, static_cast<qsizetype>(room),
                   value.bytes.leftJustified(static_cast<qsizetype>(room), '\0'));
    field = Bytes32(oldAt);
  } else if (size > 4) {
    field = Bytes32(Append(zqm::Bytes(value.bytes)));
  }
  entry->type = value.type;
  entry->count = value.count;
  entry->field = field;
}

void TiffEditor::Set(ExifTag tag, const TagValue& value) {
  auto& directory = Of(tag.group);
  if (!directory) directory = Directory{.changed = true};
  SetIn(*directory, tag.number, value);
}

void TiffEditor::Remove(ExifTag tag) {
  auto& directory = Of(tag.group);
  if (!directory) return;
  const auto removed =
      std::erase_if(directory->entries, [&](const Entry& e) { return e.tag == tag.number; });
  if (removed > 0) directory->changed = true;
}

void TiffEditor::Apply(const ExifStore& store) {
  for (const ExifTag tag : store.Changed())
    if (const auto value = store.Value(tag, bigEndian_)) Set(tag, *value);
}

void TiffEditor::RemoveGroup(ExifGroup group) {
  Of(group).reset();
  for (const auto& [sub, pointer] : kSubDirectories)
    if (sub == group) Remove({ExifGroup::Image, pointer});
}

std::uint32_t TiffEditor::Append(ByteView bytes) {
  if (block_.size() % 2 != 0) block_.append('\0');
  const auto at = static_cast<std::uint32_t>(block_.size());
  block_.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  return at;
}

int TiffEditor::FollowingDirectories() const {
  QSet<std::uint32_t> seen;
  for (std::uint32_t at = Of(ExifGroup::Image)->next; at != 0 && !seen.contains(at);) {
    const auto directory = ReadDirectory(at);
    if (!directory || seen.size() == kMostDirectories) break;
    seen.insert(at);
    at = directory->next;
  }
  return static_cast<int>(seen.size());
}

void TiffEditor::DropFollowing() {
  thumbnail_.reset();
  auto& main = Of(ExifGroup::Image);
  main->changed |= main->next != 0;
  main->next = 0;
}

ByteView TiffEditor::Thumbnail() const {
  const Entry* offset = thumbnail_ ? Find(*thumbnail_, kThumbnailOffset) : nullptr;
  const Entry* length = thumbnail_ ? Find(*thumbnail_, kThumbnailLength) : nullptr;
  if (!offset || !length) return {};
  return ByteReader(zqm::Bytes(block_), bigEndian_)
      .Part(Number(ValueOf(*offset)), Number(ValueOf(*length)));
}

void TiffEditor::SetThumbnail(const QByteArray& jpeg) {
  const ByteView old = Thumbnail();
  if (old.empty()) return;
  const qsizetype oldAt = old.data() - zqm::Bytes(block_).data();
  const auto size = static_cast<std::uint32_t>(jpeg.size());
  std::uint32_t at = 0;
  const Entry none;
  const bool fits =
      old.size() >= size && !UsedByAnother(none, static_cast<std::uint32_t>(oldAt), old.size());
  if (fits) {
    const auto room = static_cast<qsizetype>(old.size());
    block_.replace(oldAt, room, jpeg.leftJustified(room, '\0'));
    at = static_cast<std::uint32_t>(oldAt);
  } else {
    at = Append(zqm::Bytes(jpeg));
  }
  SetIn(*thumbnail_, kThumbnailOffset, Long(at));
  SetIn(*thumbnail_, kThumbnailLength, Long(size));
}

// A directory without room for a further entry moves to the end.
void TiffEditor::Place(Directory& directory) {
  QByteArray bytes = Bytes16(static_cast<std::uint16_t>(directory.entries.size()));
  for (const Entry& entry : directory.entries)
    bytes += Bytes16(entry.tag) + Bytes16(entry.type) + Bytes32(entry.count) + entry.field;
  bytes += Bytes32(directory.next);
  const bool fits = directory.at != 0 && directory.entries.size() <= directory.storedCount;
  if (fits) {
    const auto room = static_cast<qsizetype>(DirectoryBytes(directory.storedCount));
    block_.replace(directory.at, room, bytes.leftJustified(room, '\0'));
  } else {
    directory.at = Append(zqm::Bytes(bytes));
    directory.storedCount = directory.entries.size();
  }
  directory.changed = false;
}

// From the leaves up: a directory that moves changes the pointer to it.
QByteArray TiffEditor::Take() {
  Directory& main = *Of(ExifGroup::Image);
  for (const auto& [group, pointer] : kSubDirectories) {
    auto& directory = Of(group);
    if (!directory || !directory->changed) continue;
    Place(*directory);
    SetIn(main, pointer, Long(directory->at));
  }
  if (thumbnail_ && thumbnail_->changed) {
    Place(*thumbnail_);
    main.changed |= main.next != thumbnail_->at;
    main.next = thumbnail_->at;
  }
  if (main.changed) {
    Place(main);
    block_.replace(4, 4, Bytes32(main.at));
  }
  if (block_.size() > std::numeric_limits<std::uint32_t>::max()) return {};
  return block_;
}

}  // namespace zqm
