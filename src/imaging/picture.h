// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QStringView>

#include "imaging/codec.h"
#include "imaging/file_parameters.h"
#include "shell/result.h"

namespace zqm {

/// One picture with the parameters of its file. What windows show and what hidden work is done on.
/// Broken or unknown files are outcomes with a reason and leave the picture empty. A value.
class Picture {
 public:
  /// Pixels and parameters. `RAW_ExtraParams` ("-e", "-h", "-a", "-w", joined by blanks) tells how
  /// camera RAW is decoded.
  Outcome LoadFromFile(const QString& path);
  /// Only the parameters; the pixels that are there stay. On failure there are none.
  Outcome ReadParamsFromFile(const QString& path);
  QString GetIOProperty(QStringView key) const { return parameters_.GetIOProperty(key); }
  void SetIOProperty(QStringView key, const QString& value) {
    parameters_.SetIOProperty(key, value);
  }
  const FileParameters& Parameters() const { return parameters_; }
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
  void Clear();
  void AssignTo(Picture& other) const { other.image_ = image_; }

  /// Whether embedded profiles are applied on loading.
  void SetColourManagement(bool on) { colourManagement_ = on; }

 private:
  LoadOptions Options(const QString& path) const;

  QImage image_;
  FileParameters parameters_;
  bool colourManagement_ = false;
};

}  // namespace zqm
