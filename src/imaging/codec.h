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
  /// Set to true where the file ends, or can't be read on, before its picture does: what there is
  /// comes out all the same. May be null.
  bool* incomplete = nullptr;

  void TellIncomplete() const {
    if (incomplete != nullptr) *incomplete = true;
  }
};

/// How a picture is written, each option by its number; keys and numbers stand in save_options.cpp.
/// A codec reads those of its own format.
struct SaveOptions {
  int jpegQuality = 100;  ///< 1 to 100; chroma is subsampled below 100
  int jpegDctMethod = 0;  ///< 0 slow integer, 1 fast integer, 2 floating point
  int jpegSmooth = 0;     ///< 0 to 100
  int jpegColourSpace =
      -1;  ///< 0 RGB, 1 gray, 2 YCbCr, 3 CMYK, 4 YCCK; -1: gray or YCbCr, as the picture is
  bool jpegOptimalHuffman = false;
  bool jpegProgressive = false;
  int tiffCompression =
      0;  ///< 0 none, 1 to 4 fax, 5 LZW, 6 and 7 JPEG, 8 packed bits, 9, 10 deflate
  int tiffPhotometric = -1;  ///< 0, 1 gray, 2 RGB, 3 palette, 4 mask, 5 CMYK, 6 YCbCr, 7 CIELAB
  int tiffJpegQuality = 100;
  int pngFilter = 0;       ///< 0 none, 1 sub, 2 Paeth
  int pngCompression = 5;  ///< 0 to 9
  bool pngInterlaced = false;
  bool tgaCompressed = false;
  bool pcxCompressed = true;
  int bmpCompression = 0;     ///< only 0
  double j2000Rate = 1;       ///< compressed size by uncompressed, 1 is lossless
  int j2000ColourSpace = -1;  ///< 0 gray, 1 RGB, 2 YCbCr; -1: gray or RGB, as the picture is
};

/// What goes into a file beside the pixels, each part empty (or 0) where there is none. A format
/// that can't hold a part leaves it out.
struct FileBlocks {
  QByteArray exif;            ///< a TIFF-like block, as it stands in a JPEG behind "Exif\0\0"
  QByteArray iptc;            ///< the IIM block
  QByteArray xmp;             ///< the packet
  QByteArray profile;         ///< ICC, of the pixels as given
  double dpiX = 0, dpiY = 0;  ///< dots per inch
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
  /// The file's bytes for a picture of any size and of one of the formats that `load` gives, or
  /// Indexed8 or Mono. 16 bits, alpha and palettes are kept where the format and the options can;
  /// what the options ask for and the library can't do is a `Failure`, "File format cannot be
  /// written" and more. Null where a format can't be written at all.
  Result<QByteArray> (*save)(const QImage& picture, const SaveOptions& options,
                             const FileBlocks& blocks) = nullptr;
};

/// All formats, by priority.
std::span<const Codec* const> Codecs();

/// The codec that knows these bytes, or nullptr.
const Codec* SniffCodec(ByteView file, const QString& extension);

/// The codec that writes files of this extension (lower case, without "."), or nullptr.
const Codec* CodecForSaving(const QString& extension);

/// Whether a folder scan takes a file of this name: a known extension, letter case ignored.
bool HasKnownExtension(const QString& path);

inline constexpr char16_t kReasonNotWritable[] = u"File format cannot be written";
inline constexpr char16_t kReasonNoImage[] = u"File could not be read as an image";

}  // namespace zqm
