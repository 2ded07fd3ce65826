// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/view_reader.h"

#include <new>

#include "imaging/source_file.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"

namespace zqm {
namespace {

LoadOptions OptionsFor(const QString& path, const QSize& box, const ReadRequest& request) {
  LoadOptions options;
  options.box = box;
  options.colourManagement = request.colourManagement;
  options.raw = request.raw;
  options.extension = GetExtensionName(path).toLower();
  return options;
}

QSize SizeOf(const PictureFacts& facts) {
  return {facts.width, facts.height};
}

Result<ViewPhoto> ReadView(const QString& path, const QSize& box, const ReadRequest& request) {
  const LoadOptions options = OptionsFor(path, box, request);
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};

  ViewPhoto photo;
  photo.file.bytes = source->content.size();
  photo.file.parameters = FileParameters::Read(source->View(), *source->codec, source->facts, path);
  photo.fullSize = SizeOf(source->facts);
  const Result<QImage> picture = source->codec->load(source->View(), options);
  if (!picture) {
    photo.reason = picture.Reason();
    return photo;
  }
  // Also at full size: what is shown has 8 bits a sample and no transparency.
  photo.image = FitThumbnail(*picture, box.isEmpty() ? picture->size() : box,
                             box.isEmpty() ? QSize() : photo.fullSize);
  return photo;
}

Result<QImage> ReadPicture(const QString& path, const QSize& box, const ReadRequest& request) {
  const LoadOptions options = OptionsFor(path, box, request);
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  const Result<QImage> picture = source->codec->load(source->View(), options);
  if (!picture) return Failure{picture.Reason()};
  return FitThumbnail(*picture, box, SizeOf(source->facts));
}

/// One monstrous file must not end the program.
template <class Read>
auto WithinMemory(const Read& read) -> decltype(read()) {
  try {
    return read();
  } catch (const std::bad_alloc&) {
    return Failure{QStringLiteral("Not enough memory")};
  }
}

}  // namespace

Result<ViewPhoto> ReadViewPhoto(const QString& path, const QSize& box, const ReadRequest& request) {
  return WithinMemory([&] { return ReadView(path, box, request); });
}

Result<QImage> ReadThumbnailPicture(const QString& path, const QSize& box,
                                    const ReadRequest& request) {
  return WithinMemory([&] { return ReadPicture(path, box, request); });
}

}  // namespace zqm
