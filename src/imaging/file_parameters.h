// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

#include "imaging/codec.h"
#include "imaging/exif_store.h"
#include "imaging/iptc_list.h"

namespace zqm {

/// What a picture file says about itself, reached by string keys whose letter case doesn't matter.
/// Every value travels as text; numbers use ".". Keys:
///
/// - of the file: `FILETYPE` (1 TIFF, 3 JPEG, 24 PSD, …, 0 unknown), `FILETYPESTR`, `FILENAME` (the
///   path), `WIDTH`, `HEIGHT` (pixels, as stored), `DPIX`, `DPIY` (whole dots per inch: the
///   container's density, else EXIF's, else "0"), `BITSPERSAMPLE`, `SAMPLESPERPIXEL`,
///   `COLORMAPCOUNT`, `EXIF_HASEXIF` ("1" or "0"), `XMP_Info` (the packet);
/// - `EXIF_*` and `TIFF_IMAGEDESCRIPTION`: the tags, by the table in file_parameters.cpp. Positions
/// and
///   time stamps are split into a key a component (`EXIF_GPSLatitudeDegrees`, …Minutes, …Seconds);
/// - any other key is an option (`RAW_ExtraParams`, save options) that holds the text last set.
///
/// An absent number is "0", an absent text "". A value: copies are cheap and independent.
class FileParameters {
 public:
  /// The parameters of a file's bytes. `path` gives `FILENAME` and the extension.
  static FileParameters Read(ByteView file, const Codec& codec, const PictureFacts& facts,
                             const QString& path);

  /// Takes the tags, facts and IPTC items of another file; options that were set here stay.
  void ReplaceFile(const FileParameters& file);

  QString GetIOProperty(QStringView key) const;
  void SetIOProperty(QStringView key, const QString& value);

  const IptcList& Iptc() const { return iptc_; }
  IptcList& Iptc() { return iptc_; }

  const ExifStore& Exif() const { return exif_; }
  /// Takes the whole EXIF block, GPS with it, or all IPTC items away.
  void RemoveExif();
  void RemoveIptc() { iptc_ = IptcList(); }

  /// What differs from the file that was read.
  bool IptcChanged() const { return iptc_.Items() != readIptc_.Items(); }
  bool XmpChanged() const { return xmpChanged_; }

  /// An EXIF block with the tags that were set since reading; an empty one stands for none.
  /// `original` is the file's own. What can't be edited in place is written anew from the tags.
  QByteArray EditedExif(const QByteArray& original) const;

 private:
  void ReadFacts(const Codec& codec, const PictureFacts& facts, const QString& path);
  QString Density(double container, QStringView exifKey) const;

  QHash<QString, QString> facts_;    // by upper-case key
  QHash<QString, QString> options_;  // likewise
  ExifStore exif_;
  IptcList iptc_, readIptc_;
  bool xmpChanged_ = false;
};

}  // namespace zqm
