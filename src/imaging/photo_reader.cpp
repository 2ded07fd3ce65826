// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/photo_reader.h"

#include <new>

#include "imaging/source_file.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"

namespace zqm {

namespace {

Result<PhotoFile> Read(const QString& path, const ReadRequest& request) {
  LoadOptions options;
  options.box = kThumbnailBox;
  options.colourManagement = request.colourManagement;
  options.raw = request.raw;
  options.extension = GetExtensionName(path).toLower();
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};

  PhotoFile photo;
  photo.bytes = source->content.size();
  photo.parameters = FileParameters::Read(source->View(), *source->codec, source->facts, path);
  const QSize size(source->facts.width, source->facts.height);
  if (request.thumbnail)
    if (Result<QByteArray> thumbnail = MakeThumbnail(source->View(), *source->codec, size, options))
      photo.thumbnail = *thumbnail;
  return photo;
}

}  // namespace

Result<PhotoFile> ReadPhotoFile(const QString& path, const ReadRequest& request) {
  try {
    return Read(path, request);
  } catch (const std::bad_alloc&) {
    // One monstrous file must not end a run over thousands.
    return Failure{QStringLiteral("Not enough memory")};
  }
}

}  // namespace zqm
