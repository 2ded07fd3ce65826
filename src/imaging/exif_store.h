// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "imaging/codec.h"

namespace zqm {

/// Where a tag stands: the main directory, the Exif one, the GPS one.
enum class ExifGroup { Image, Photo, Gps };

enum class ExifType { Ascii, Comment, Byte, Short, Rational, SignedRational };

struct ExifTag {
  ExifGroup group;
  int number;
  auto operator<=>(const ExifTag&) const = default;
};

/// A tag's value as a block holds it.
struct TagValue {
  std::uint16_t type = 0;  ///< 1 to 12 as in TIFF 6.0
  std::uint32_t count = 0;
  QByteArray bytes;  ///< `count` times the type's size, in the block's byte order
  bool operator==(const TagValue&) const = default;
};

/// Whether a tag of the main directory describes the photo rather than the layout of a TIFF file.
bool IsDescriptiveTag(int number);

/// The EXIF and XMP blocks of one file. The only place that knows the metadata library: it catches
/// what that throws and speaks texts and numbers outward. A cheap value: copies share their data
/// until one is changed. Reading is thread-safe.
class ExifStore {
 public:
  ExifStore();

  /// The blocks of a file in any format that the library knows; empty where it finds none or where
  /// they are broken.
  static ExifStore Read(ByteView file);

  bool Empty() const;
  /// Whether any tag describes the photo rather than the layout of a TIFF file.
  bool HasDescriptiveTag() const;

  /// A text tag: up to its first NUL, UTF-8 or else Latin-1. "" when absent.
  QString Text(ExifTag tag) const;
  /// `UserComment` by its character-set prefix. "" when absent.
  QString Comment(ExifTag tag) const;
  /// A numeric tag's component as the shortest decimal text of its value, with "."; a fraction over
  /// 0 is "0". Nothing when absent.
  std::optional<QString> Number(ExifTag tag, int index) const;
  /// All components joined by ".", as in a version "2.2.0.0". "" when absent.
  QString Dotted(ExifTag tag) const;

  /// Sets a tag. Numbers are read from text with "."; `index` names the component of a list, whose
  /// earlier ones are kept (or become 0).
  void Set(ExifTag tag, ExifType type, int index, const QString& value);

  /// The tags that were set since the block was read, each once.
  std::vector<ExifTag> Changed() const;
  std::optional<TagValue> Value(ExifTag tag, bool bigEndian) const;
  /// Forgets all tags.
  void ClearExif();
  /// Whether `ClearExif` was called since the block was read.
  bool ExifCleared() const;

  /// The EXIF block as it stands in a JPEG segment behind "Exif\0\0"; empty for an empty store.
  QByteArray EncodeExif() const;
  /// The same for a picture in another file: without what describes the layout of this one (a TIFF
  /// file's, camera RAW's) and without its thumbnail; a maker note that makes the block larger than
  /// a JPEG can hold is left out.
  QByteArray EncodeForOtherFile() const;

  const QByteArray& XmpPacket() const;
  void SetXmpPacket(const QByteArray& packet);

  /// The colour profile that the library found; empty where there is none.
  const QByteArray& Profile() const;

  /// The IPTC block that the library found, for containers whose codec has no reader of its own.
  const QByteArray& IptcBlock() const;

 private:
  struct Data;
  std::shared_ptr<Data> data_;
  Data& Own();
};

}  // namespace zqm
