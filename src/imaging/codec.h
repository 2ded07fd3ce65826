// SPDX-License-Identifier: GPL-3.0-or-later
// A file format is a file under codecs/ that declares itself in one `Codec`. The rest of the
// program never names a format: it asks the registry who knows a file's bytes.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <cstdint>
#include <span>

#include "shell/result.h"

namespace zqm {

using ByteView = std::span<const std::uint8_t>;

inline ByteView Bytes(const QByteArray& array) {
  return {reinterpret_cast<const std::uint8_t*>(array.constData()),
          static_cast<std::size_t>(array.size())};
}

/// No header makes a codec allocate for more pixels than this.
inline constexpr std::int64_t kMostPixels = std::int64_t{1} << 28;

/// What a header tells without decoding pixels.
struct PictureFacts {
  int width = 0;    ///< pixels, as stored: no orientation tag is applied
  int height = 0;   ///< pixels
  double dpiX = 0;  ///< the container's own density in dots per inch; 0 where it has none
  double dpiY = 0;
  int bitsPerSample = 8;
  int samplesPerPixel = 3;
  int colorMapCount = 0;  ///< entries of the palette, 0 without one
  QByteArray iptc;        ///< the raw IIM block (datasets 0x1C …), empty where there is none
};

/// How camera RAW is decoded: the words of the settings, as text in `RAW_ExtraParams`.
struct RawOptions {
  enum class Quality { EmbeddedPreview, HalfSize, Full };  ///< "-e", "-h", nothing
  enum class WhiteBalance { Camera, Automatic };           ///< "-w" (also by default), "-a"
  Quality quality = Quality::EmbeddedPreview;
  WhiteBalance whiteBalance = WhiteBalance::Camera;
};
RawOptions ParseRawOptions(QStringView words);

struct LoadOptions {
  /// Empty for the full size. Otherwise the picture is only needed to fill this box: a codec
  /// decodes as small as it can, never smaller than the fit of the picture into the box, 8 bits a
  /// sample.
  QSize box;
  /// Whether the embedded profile of a JPEG or TIFF file is applied: the result is then sRGB. Other
  /// formats pass it over.
  bool colourManagement = false;
  RawOptions raw;
  /// The file's extension without ".", lower case. Only camera RAW asks for it.
  QString extension;
};

/// One format. All functions are pure, thread-safe and never throw; broken input is a `Failure`.
struct Codec {
  const char* name;                         ///< "JPEG"
  std::span<const char* const> extensions;  ///< lower case, without "."; the first is the usual one
  int fileType;                             ///< `FILETYPE`: 1 TIFF, 3 JPEG, 24 PSD, … never 0
  const char* typeText;                     ///< `FILETYPESTR`
  int priority;                             ///< who is asked first: higher before lower

  /// Whether these are the first bytes (or, where a format needs it, all bytes) of such a file.
  bool (*sniff)(ByteView file, const QString& extension);
  Result<PictureFacts> (*readFacts)(ByteView file, const LoadOptions& options);
  /// In the best `QImage` format for the content: Grayscale8/16, RGB32, ARGB32 (not premultiplied),
  /// RGBX64, RGBA64.
  Result<QImage> (*load)(ByteView file, const LoadOptions& options);
  /// Whether the file's own extension is shown behind `typeText`, in brackets and capitals.
  bool typeTextTakesExtension = false;
};

/// All formats, by priority.
std::span<const Codec* const> Codecs();

/// The codec that knows these bytes, or nullptr.
const Codec* SniffCodec(ByteView file, const QString& extension);

/// Whether a folder scan takes a file of this name: a known extension, letter case ignored.
bool HasKnownExtension(const QString& path);

inline constexpr char16_t kReasonNoImage[] = u"File could not be read as an image";

}  // namespace zqm
