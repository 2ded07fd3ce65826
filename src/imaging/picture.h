// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QStringView>

#include "imaging/codec.h"
#include "imaging/file_parameters.h"
#include "imaging/source_file.h"
#include "shell/result.h"

namespace zqm {

/// How whole pictures are loaded.
struct PictureSettings {
  QString rawWords;               ///< for `RAW_ExtraParams`
  bool colourManagement = false;  ///< whether embedded profiles are applied
};

/// One picture with the parameters of its file. What windows show and what hidden work is done on.
/// Broken or unknown files are outcomes with a reason and leave the picture empty. A value.
class Picture {
 public:
  /// Pixels and parameters. `RAW_ExtraParams` ("-e", "-h", "-a", "-w", joined by blanks) tells how
  /// camera RAW is decoded.
  Outcome LoadFromFile(const QString& path);
  /// Only the parameters; the pixels that are there stay. On failure there are none.
  Outcome ReadParamsFromFile(const QString& path);
  /// Writes the picture with its parameters, whole or not at all; links are followed, a read-only
  /// target is refused, the target's mode is kept.
  ///
  /// - Over the file that it was loaded (or its parameters read) from, pixels untouched since: only
  ///   the metadata changes (see `RewriteMetadata`).
  /// - Over it otherwise: encoded anew in the format that the file has whatever its name says, with
  ///   thumbnail and pixel size of the EXIF block following. A file of several pages, layers or
  ///   frames is refused: "File has several pages and cannot be changed".
  /// - To another path: in the format of the path's extension.
  ///
  /// EXIF, IPTC, XMP and the colour profile go along where the format holds them. `DPIX`, `DPIY`
  /// and the save options are heeded. Formats that can't be written: `kReasonNotWritable`.
  Outcome SaveToFile(const QString& path);
  /// The bytes of the picture encoded anew in the format of an extension (lower case, without "."),
  /// or, as a change of the file that it was loaded from, in that one's. Reasons as above.
  /// Thread-safe on different pictures.
  Result<QByteArray> EncodeAs(const QString& extension);
  Result<QByteArray> EncodeOver();
  /// Whether the file that it was loaded from may be replaced by the picture alone:
  /// `kReasonSeveralPages`, `kReasonNotWritable` for camera RAW, `kReasonIncomplete` where the file
  /// holds more, or held it, than could be read.
  Outcome MayBeWrittenOver() const;
  /// The pixels are those that stand in the file that it was loaded from, or was last saved over.
  bool PixelsUntouched() const { return image_.cacheKey() == loadedPixels_; }
  /// Brings the EXIF block in step with the pixels: their number and the thumbnail. Before each
  /// save in which they may have changed; doing it again changes nothing.
  void PrepareSave();
  /// For the next save.
  void RemoveExif() { parameters_.RemoveExif(); }
  void RemoveIptc() { parameters_.RemoveIptc(); }

  QString GetIOProperty(QStringView key) const { return parameters_.GetIOProperty(key); }
  void SetIOProperty(QStringView key, const QString& value) {
    parameters_.SetIOProperty(key, value);
  }
  const FileParameters& Parameters() const { return parameters_; }
  void SetParameters(const FileParameters& parameters) { parameters_ = parameters; }
  /// Takes the whole parameter block of another picture.
  void CopyParamsHandle(const Picture& from) { parameters_ = from.parameters_; }

  int IPTC_Find(int record, int dataset) const { return parameters_.Iptc().Find(record, dataset); }
  QString IPTC_Get(int index) const { return parameters_.Iptc().Get(index); }
  void IPTC_Remove(int index) { parameters_.Iptc().Remove(index); }
  void IPTC_Add(int record, int dataset, const QString& text) {
    parameters_.Iptc().Add(record, dataset, text);
  }

  int ImageWidth() const { return image_.width(); }
  int ImageHeight() const { return image_.height(); }
  const QImage& Image() const { return image_; }
  void SetImage(const QImage& image) { image_ = image; }
  /// Pixels of the file brought back after others were set.
  void SetLoadedImage(const QImage& image) {
    image_ = image;
    loadedPixels_ = image.cacheKey();
  }
  void Clear();
  void AssignTo(Picture& other) const { other.image_ = image_; }

  /// For the loading to come.
  void SetSettings(const PictureSettings& settings) {
    SetIOProperty(u"RAW_ExtraParams", settings.rawWords);
    colourManagement_ = settings.colourManagement;
  }

 private:
  LoadOptions Options(const QString& path) const;
  Outcome SaveMetadata(const QString& path) const;
  Result<QByteArray> Encode(const Codec* codec);
  void KeepBlocks(const SourceFile& source);
  FileBlocks Blocks() const;

  QImage image_;
  qint64 loadedPixels_ = 0;  // which pixels stand in the file
  QString source_;           // the file
  const Codec* codec_ = nullptr;
  bool severalPages_ = false;
  bool incomplete_ = false;
  QByteArray exif_;     // the block that goes along, but for tags set since loading
  QByteArray profile_;  // of the pixels as loaded
  FileParameters parameters_;
  bool colourManagement_ = false;
};

inline constexpr char16_t kReasonChangedByOther[] = u"File was changed by another program";
inline constexpr char16_t kReasonIncomplete[] = u"File is damaged and cannot be changed";
inline constexpr char16_t kReasonSeveralPages[] = u"File has several pages and cannot be changed";

}  // namespace zqm
