// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFileInfo>

#include "imaging/codec.h"
#include "imaging/codecs/codecs.h"

namespace zqm {

std::span<const Codec* const> Codecs() {
  static const std::vector<const Codec*> codecs = [] {
    std::vector<const Codec*> list{
        &kBmpCodec, &kGifCodec, &kJ2kCodec, &kJp2Codec, &kJpegCodec, &kPcxCodec,
        &kPngCodec, &kPsdCodec, &kRawCodec, &kTgaCodec, &kTiffCodec,
    };
    std::ranges::stable_sort(list, std::greater{}, &Codec::priority);
    return list;
  }();
  return codecs;
}

const Codec* SniffCodec(ByteView file, const QString& extension) {
  const auto codecs = Codecs();
  const auto found =
      std::ranges::find_if(codecs, [&](const Codec* c) { return c->sniff(file, extension); });
  return found == codecs.end() ? nullptr : *found;
}

const Codec* CodecForSaving(const QString& extension) {
  const auto writes = [&](const Codec* codec) {
    return codec->save && std::ranges::any_of(codec->extensions, [&](const char* known) {
             return extension == QLatin1String(known);
           });
  };
  const auto codecs = Codecs();
  const auto found = std::ranges::find_if(codecs, writes);
  return found == codecs.end() ? nullptr : *found;
}

bool HasKnownExtension(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  return !extension.isEmpty() && std::ranges::any_of(Codecs(), [&](const Codec* codec) {
    return std::ranges::any_of(
        codec->extensions, [&](const char* known) { return extension == QLatin1String(known); });
  });
}

RawOptions ParseRawOptions(QStringView words) {
  RawOptions options{.quality = RawOptions::Quality::Full};
  for (const QStringView word : words.split(u' ', Qt::SkipEmptyParts)) {
    if (word == u"-e") {
      options.quality = RawOptions::Quality::EmbeddedPreview;
    } else if (word == u"-h") {
      options.quality = RawOptions::Quality::HalfSize;
    } else if (word == u"-a") {
      options.whiteBalance = RawOptions::WhiteBalance::Automatic;
    } else if (word == u"-w") {
      options.whiteBalance = RawOptions::WhiteBalance::Camera;
    }
  }
  return options;
}

}  // namespace zqm
