// SPDX-License-Identifier: GPL-3.0-or-later
// The first frame of a GIF, on its logical screen.
#include <gif_lib.h>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/save_support.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

struct CloseGif {
  void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};

int ReadBytes(GifFileType* gif, GifByteType* out, int count) {
  auto* rest = static_cast<ByteView*>(gif->UserData);
  const std::size_t taken = std::min(rest->size(), static_cast<std::size_t>(std::max(0, count)));
  std::copy_n(rest->data(), taken, out);
  *rest = rest->subspan(taken);
  return static_cast<int>(taken);
}

/// A GIF, positioned behind the descriptor of its first frame.
struct Frame {
  ByteView rest;  // outlives `gif`
  std::unique_ptr<GifFileType, CloseGif> gif;
  int transparent = NO_TRANSPARENT_COLOR;
  int screenWidth = 0, screenHeight = 0;
  const ColorMapObject* palette = nullptr;
};

/// Reads on to the first frame; its transparent colour stands in an extension before it.
bool SeekFrame(Frame& frame) {
  GifRecordType record = UNDEFINED_RECORD_TYPE;
  while (DGifGetRecordType(frame.gif.get(), &record) == GIF_OK) {
    if (record == IMAGE_DESC_RECORD_TYPE) return DGifGetImageDesc(frame.gif.get()) == GIF_OK;
    if (record != EXTENSION_RECORD_TYPE) return false;
    int code = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(frame.gif.get(), &code, &block) != GIF_OK) return false;
    while (block) {
      GraphicsControlBlock control;
      if (code == GRAPHICS_EXT_FUNC_CODE &&
          DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK) {
        frame.transparent = control.TransparentColor;
      }
      if (DGifGetExtensionNext(frame.gif.get(), &block) != GIF_OK) return false;
    }
  }
  return false;
}

Result<std::unique_ptr<Frame>> OpenFrame(ByteView file) {
  auto frame = std::make_unique<Frame>();
  frame->rest = file;
  int error = 0;
  frame->gif.reset(DGifOpen(&frame->rest, ReadBytes, &error));
  if (!frame->gif) return DecodeFailure(GifErrorString(error));
  if (!SeekFrame(*frame)) {
    const char* detail = GifErrorString(frame->gif->Error);
    return DecodeFailure(detail ? detail : "no picture in the file");
  }
  const GifFileType& gif = *frame->gif;
  frame->screenWidth = gif.SWidth > 0 ? gif.SWidth : gif.Image.Left + gif.Image.Width;
  frame->screenHeight = gif.SHeight > 0 ? gif.SHeight : gif.Image.Top + gif.Image.Height;
  frame->palette = gif.Image.ColorMap ? gif.Image.ColorMap : gif.SColorMap;
  return frame;
}

bool Sniff(ByteView file, const QString&) {
  return StartsWith(file, "GIF87a") || StartsWith(file, "GIF89a");
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const auto opened = OpenFrame(file);
  if (!opened) return Failure{opened.Reason()};
  const Frame& frame = **opened;
  if (frame.screenWidth <= 0 || frame.screenHeight <= 0) {
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  PictureFacts facts;
  facts.width = frame.screenWidth;
  facts.height = frame.screenHeight;
  facts.samplesPerPixel = 1;
  facts.colorMapCount = frame.palette ? frame.palette->ColorCount : 0;
  return facts;
}

/// Interlaced rows come in four passes, each with its first row and its step.
struct Pass {
  int first, step;
};
constexpr Pass kInterlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
constexpr Pass kStraight[] = {{0, 1}};

/// The colours by index, as bytes RGBA; indices beyond the palette are black.
std::array<std::uint32_t, 256> Colours(const Frame& frame) {
  std::array<std::uint32_t, 256> colours;
  for (int i = 0; i < 256; ++i) {
    std::uint8_t rgba[4] = {0, 0, 0, 255};
    if (frame.palette && i < frame.palette->ColorCount) {
      const GifColorType& colour = frame.palette->Colors[i];
      rgba[0] = colour.Red, rgba[1] = colour.Green, rgba[2] = colour.Blue;
    }
    if (i == frame.transparent) std::ranges::fill(rgba, std::uint8_t{0});
    std::memcpy(&colours[static_cast<std::size_t>(i)], rgba, 4);
  }
  return colours;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  auto opened = OpenFrame(file);
  if (!opened) return Failure{opened.Reason()};
  Frame& frame = **opened;
  GifFileType* gif = frame.gif.get();
  const QRect screen(0, 0, frame.screenWidth, frame.screenHeight);
  const QRect area(gif->Image.Left, gif->Image.Top, gif->Image.Width, gif->Image.Height);
  const bool alpha = frame.transparent != NO_TRANSPARENT_COLOR || !area.contains(screen);
  auto sink = RowSink::Create(screen.width(), screen.height(),
                              alpha ? RowFormat::Rgba32 : RowFormat::Rgb24, options.box);
  if (!sink) return Failure{sink.Reason()};
  if (area.width() <= 0 || area.height() <= 0) return DecodeFailure("no picture in the file");

  const auto colours = Colours(frame);
  std::vector<GifPixelType> indices(static_cast<std::size_t>(area.width()));
  const std::size_t bytes = alpha ? 4 : 3;
  std::vector<std::uint8_t> row(static_cast<std::size_t>(screen.width()) * bytes);
  const int end = std::min(area.right(), screen.right());
  bool any = false;
  for (const Pass& pass : gif->Image.Interlace ? std::span<const Pass>(kInterlaced)
                                               : std::span<const Pass>(kStraight)) {
    for (int y = pass.first; y < area.height(); y += pass.step) {
      if (DGifGetLine(gif, indices.data(), area.width()) != GIF_OK) {
        if (!any) return DecodeFailure(GifErrorString(gif->Error));
        options.TellIncomplete();
        return sink->Take();
      }
      any = true;
      for (int x = area.left(); x <= end; ++x) {
        const std::uint32_t colour = colours[indices[static_cast<std::size_t>(x - area.left())]];
        std::memcpy(row.data() + static_cast<std::size_t>(x) * bytes, &colour, bytes);
      }
      sink->PutRow(area.top() + y, row.data());
    }
  }
  return sink->Take();
}

constexpr const char* kExtensions[] = {"gif"};

}  // namespace

constinit const Codec kGifCodec{
    "GIF", kExtensions, 2, "CompuServe Bitmap (GIF)", 50, Sniff, ReadFacts, Load, false, SaveGif};

}  // namespace zqm
