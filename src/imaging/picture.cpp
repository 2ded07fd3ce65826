// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/picture.h"

#include "imaging/source_file.h"
#include "shell/files.h"

namespace zqm {

LoadOptions Picture::Options(const QString& path) const {
  LoadOptions options;
  options.colourManagement = colourManagement_;
  options.raw = ParseRawOptions(GetIOProperty(u"RAW_ExtraParams"));
  options.extension = GetExtensionName(path).toLower();
  return options;
}

Outcome Picture::LoadFromFile(const QString& path) {
  const LoadOptions options = Options(path);
  Clear();
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  const Result<QImage> image = source->codec->load(source->View(), options);
  if (!image) return Failure{image.Reason()};
  parameters_.ReplaceFile(
      FileParameters::Read(source->View(), *source->codec, source->facts, path));
  image_ = *image;
  return {};
}

Outcome Picture::ReadParamsFromFile(const QString& path) {
  const LoadOptions options = Options(path);
  parameters_.ReplaceFile(FileParameters());
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  parameters_.ReplaceFile(
      FileParameters::Read(source->View(), *source->codec, source->facts, path));
  return {};
}

void Picture::Clear() {
  image_ = QImage();
  parameters_.ReplaceFile(FileParameters());
}

}  // namespace zqm
