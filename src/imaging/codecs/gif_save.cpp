// SPDX-License-Identifier: GPL-3.0-or-later
// One frame in up to 256 colours, with XMP in its application block. Pixels are clear or opaque,
// nothing between.
#include <gif_lib.h>

#include "imaging/codecs/save_support.h"
#include "imaging/quantise.h"

namespace zqm {
namespace {

constexpr int kMostSide16 = 65535;
constexpr int kColourBits = 8;

int AppendBytes(GifFileType* gif, const GifByteType* bytes, int count) {
  static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
  return count;
}

struct CloseGif {
  void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
};
struct FreeMap {
  void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};
using ColourMap = std::unique_ptr<ColorMapObject, FreeMap>;

/// What each index of the picture is in the file: all clear ones are one.
struct Indices {
  std::array<GifPixelType, 256> number{};
  int clear = NO_TRANSPARENT_COLOR;
};

Indices NumberIndices(const QList<QRgb>& colours) {
  constexpr int kHalfClear = 128;
  Indices indices;
  for (int i = 0; i < colours.size(); ++i) {
    const bool clear = qAlpha(colours[i]) < kHalfClear;
    if (clear && indices.clear == NO_TRANSPARENT_COLOR) indices.clear = i;
    indices.number[static_cast<std::size_t>(i)] =
        static_cast<GifPixelType>(clear ? indices.clear : i);
  }
  return indices;
}

ColourMap MakeMap(const QList<QRgb>& colours) {
  int count = 2;
  while (count < colours.size())
    count *= 2;
  ColourMap map(GifMakeMapObject(count, nullptr));
  if (!map) return map;
  for (int i = 0; i < colours.size(); ++i) {
    const auto part = [](int value) { return static_cast<GifByteType>(value); };
    map->Colors[i] = {part(qRed(colours[i])), part(qGreen(colours[i])), part(qBlue(colours[i]))};
  }
  return map;
}

/// The packet stands bare in its block: the bytes behind it lead a reader that takes its letters
/// for lengths to the block's end, wherever it arrives.
void AppendXmp(QByteArray& out, const QByteArray& xmp) {
  out.append("\x21\xFF\x0BXMP DataXMP").append(xmp).append('\x01');
  for (int i = 255; i >= 0; --i)
    out.append(static_cast<char>(i));
  out.append('\0');
}

bool WriteFrame(GifFileType* gif, const QImage& picture, const Indices& indices) {
  if (indices.clear != NO_TRANSPARENT_COLOR) {
    const GraphicsControlBlock control = {DISPOSAL_UNSPECIFIED, false, 0, indices.clear};
    GifByteType block[4];
    EGifGCBToExtension(&control, block);
    if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, sizeof block, block) != GIF_OK) return false;
  }
  if (EGifPutImageDesc(gif, 0, 0, picture.width(), picture.height(), false, nullptr) != GIF_OK) {
    return false;
  }
  std::vector<GifPixelType> row(static_cast<std::size_t>(picture.width()));
  for (int y = 0; y < picture.height(); ++y) {
    std::transform(picture.constScanLine(y), picture.constScanLine(y) + picture.width(),
                   row.begin(), [&](uchar index) { return indices.number[index]; });
    if (EGifPutLine(gif, row.data(), picture.width()) != GIF_OK) return false;
  }
  return true;
}

}  // namespace

Result<QByteArray> SaveGif(const QImage& given, const SaveOptions&, const FileBlocks& blocks) {
  const auto writable = WritablePicture(given, kMostSide16);
  if (!writable) return Failure{writable.Reason()};
  const QImage picture = Quantised(*writable, 256);
  if (picture.isNull()) return WriteFailure("not enough memory");
  const ColourMap map = MakeMap(picture.colorTable());
  QByteArray out;
  int error = 0;
  std::unique_ptr<GifFileType, CloseGif> gif(EGifOpen(&out, AppendBytes, &error));
  if (!gif || !map) return WriteFailure(GifErrorString(error));
  EGifSetGifVersion(gif.get(), true);
  if (EGifPutScreenDesc(gif.get(), picture.width(), picture.height(), kColourBits, 0, map.get()) !=
      GIF_OK) {
    return WriteFailure(GifErrorString(gif->Error));
  }
  if (!blocks.xmp.isEmpty()) AppendXmp(out, blocks.xmp);
  if (!WriteFrame(gif.get(), picture, NumberIndices(picture.colorTable()))) {
    return WriteFailure(GifErrorString(gif->Error));
  }
  gif.reset();  // writes the end
  return out;
}

}  // namespace zqm
