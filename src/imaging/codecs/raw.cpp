// SPDX-License-Identifier: GPL-3.0-or-later
// Camera RAW: the embedded preview, half size or full development, always unturned.
#include <libraw/libraw.h>

#include <chrono>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/resample.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

using namespace std::string_view_literals;

constexpr const char* kExtensions[] = {"crw", "cr2", "nef", "orf", "raf", "mrw", "pef", "srf",
                                       "dng", "raw", "x3f", "bay", "dcr", "sr2", "rw2", "arw"};

/// A development that takes longer is given up: no camera's file needs it, a hostile one may.
constexpr std::chrono::seconds kMostTime{20};

struct Mark {
  std::size_t at;
  std::string_view bytes;
};
constexpr Mark kMarks[] = {{6, "HEAPCCDR"sv}, {0, "\0MRM"sv}, {0, "FUJIFILMCCD-RAW"sv},
                           {0, "IIRO"sv},     {0, "IIRS"sv},  {0, "MMOR"sv},
                           {0, "IIU\0"sv},    {0, "FOVb"sv}};

constexpr std::uint16_t kTagPhotometric = 262, kTagMake = 271, kTagSubDirectories = 330,
                        kTagDngVersion = 50706;

bool IsSensorData(const TiffDirectory& directory) {
  constexpr std::uint64_t kColourFilterArray = 32803, kLinearRaw = 34892;
  const auto photometric = directory.Value(kTagPhotometric);
  return photometric == kColourFilterArray || photometric == kLinearRaw;
}

/// Cameras use TIFF as a container. Evidence: the mark of one, the version of another, sensor data
/// in a directory; a maker's name counts only under an extension of such files.
bool IsRawInTiff(ByteView file, bool rawExtension) {
  if (StartsWith(file, "CR", 8)) return true;
  auto directory = ReadTiffDirectory(file);
  if (!directory) return false;
  if (directory->Find(kTagDngVersion)) return true;
  if (rawExtension && directory->Find(kTagMake)) return true;
  for (int chained = 0; directory && chained < 8; ++chained) {
    if (IsSensorData(*directory)) return true;
    for (std::uint64_t i = 0; i < 8; ++i) {
      const auto offset = directory->Value(kTagSubDirectories, i);
      if (!offset) break;
      const auto sub = *offset ? ReadTiffDirectory(file, *offset) : std::nullopt;
      if (sub && IsSensorData(*sub)) return true;
    }
    directory = directory->next ? ReadTiffDirectory(file, directory->next) : std::nullopt;
  }
  return false;
}

bool IsSigma(ByteView file) {
  return StartsWith(file, "FOVb");
}

/// The library with its settings; the callbacks that would print are off.
class Raw {
 public:
  Raw()
      : raw_(std::make_unique<LibRaw>(LIBRAW_OPIONS_NO_MEMERR_CALLBACK |
                                      LIBRAW_OPIONS_NO_DATAERR_CALLBACK)) {
    raw_->imgdata.params.user_flip = 0;
    raw_->imgdata.params.max_raw_memory_mb = kMostDecoderBytes >> 20;
    raw_->set_progress_handler(OnProgress, this);
  }

  LibRaw* operator->() { return raw_.get(); }
  libraw_data_t& Data() { return raw_->imgdata; }
  /// The library's exceptions end at its border, but for running out of memory.
  template <class Step>
  int Try(const Step& step) {
    try {
      return step(*raw_);
    } catch (const std::exception&) {
      return LIBRAW_UNSUFFICIENT_MEMORY;
    } catch (LibRaw_exceptions) {
      return LIBRAW_DATA_ERROR;
    }
  }
  int Open(ByteView file) {
    return Try([&](LibRaw& raw) {
      return raw.open_buffer(const_cast<std::uint8_t*>(file.data()), file.size());
    });
  }

 private:
  static int OnProgress(void* user, LibRaw_progress, int, int) {
    return std::chrono::steady_clock::now() - static_cast<Raw*>(user)->begun_ > kMostTime ? 1 : 0;
  }

  std::unique_ptr<LibRaw> raw_;
  std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
};

bool Sniff(ByteView file, const QString& extension) {
  const auto isMark = [&](const Mark& mark) { return StartsWith(file, mark.bytes, mark.at); };
  if (std::ranges::any_of(kMarks, isMark)) return true;
  const bool rawExtension = std::ranges::any_of(
      kExtensions, [&](const char* known) { return extension == QLatin1String(known); });
  if (kTiffCodec.sniff(file, extension)) return IsRawInTiff(file, rawExtension);
  if (!rawExtension) return false;
  // Some cameras write bare sensor data: what no other format claims is asked of the library.
  const bool claimed = std::ranges::any_of(Codecs(), [&](const Codec* codec) {
    return codec != &kRawCodec && codec->sniff(file, extension);
  });
  return !claimed && Raw().Open(file) == LIBRAW_SUCCESS;
}

/// The header of the one format that the library may know without being able to decode it: columns
/// and rows, in files before version 4.
Result<PictureFacts> SigmaFacts(ByteView file) {
  const ByteReader in(file, false);
  PictureFacts facts;
  if (in.U16(6) < 4) {
    facts.width = static_cast<int>(std::min(in.U32(28), 0xFFFFU));
    facts.height = static_cast<int>(std::min(in.U32(32), 0xFFFFU));
  }
  if (facts.width <= 0 || facts.height <= 0) {
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  return facts;
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  Raw raw;
  int status = raw.Open(file);
  if (status == LIBRAW_SUCCESS) {
    status = raw.Try([](LibRaw& r) { return r.adjust_sizes_info_only(); });
  }
  const auto& sizes = raw.Data().sizes;
  if (status != LIBRAW_SUCCESS || sizes.iwidth == 0 || sizes.iheight == 0) {
    if (IsSigma(file)) return SigmaFacts(file);
    if (status == LIBRAW_SUCCESS) return Failure{QStringView(kReasonNoImage).toString()};
    return DecodeFailure(libraw_strerror(status));
  }
  PictureFacts facts;
  facts.width = sizes.iwidth;
  facts.height = sizes.iheight;
  facts.samplesPerPixel = raw.Data().idata.colors == 1 ? 1 : 3;
  return facts;
}

/// A preview stored as plain pixels, 8 or 16 bits a sample in native order.
Result<QImage> FromBitmap(const libraw_thumbnail_t& thumb, const QSize& box) {
  const bool deep = thumb.tformat == LIBRAW_THUMBNAIL_BITMAP16;
  const std::size_t samples = thumb.tcolors == 1 ? 1 : 3;
  const std::size_t rowBytes = thumb.twidth * samples * (deep ? 2 : 1);
  if (!thumb.thumb || rowBytes == 0 || thumb.tlength < rowBytes * thumb.theight) {
    return DecodeFailure("the preview is damaged");
  }
  const RowFormat format = samples == 1 ? (deep ? RowFormat::Gray16 : RowFormat::Gray8)
                                        : (deep ? RowFormat::Rgb48 : RowFormat::Rgb24);
  auto sink = RowSink::Create(thumb.twidth, thumb.theight, format, box);
  if (!sink) return Failure{sink.Reason()};
  for (int y = 0; y < thumb.theight; ++y) {
    sink->PutRow(y, thumb.thumb + rowBytes * static_cast<std::size_t>(y));
  }
  return sink->Take();
}

Result<QImage> LoadPreview(ByteView file, const LoadOptions& options) {
  Raw raw;
  int status = raw.Open(file);
  if (status == LIBRAW_SUCCESS) status = raw.Try([](LibRaw& r) { return r.unpack_thumb(); });
  if (status != LIBRAW_SUCCESS) return DecodeFailure(libraw_strerror(status));
  const libraw_thumbnail_t& thumb = raw.Data().thumbnail;
  switch (thumb.tformat) {
    case LIBRAW_THUMBNAIL_JPEG:
      return kJpegCodec.load({reinterpret_cast<const std::uint8_t*>(thumb.thumb), thumb.tlength},
                             options);
    case LIBRAW_THUMBNAIL_BITMAP:
    case LIBRAW_THUMBNAIL_BITMAP16:
      return FromBitmap(thumb, options.box);
    default:
      return DecodeFailure("the preview has an unknown format");
  }
}

Result<QImage> Develop(ByteView file, const LoadOptions& options, bool halfSize) {
  Raw raw;
  auto& params = raw.Data().params;
  const bool automatic = options.raw.whiteBalance == RawOptions::WhiteBalance::Automatic;
  params.use_auto_wb = automatic ? 1 : 0;
  params.use_camera_wb = automatic ? 0 : 1;
  params.output_bps = 8;
  params.half_size = halfSize ? 1 : 0;
  int status = raw.Open(file);
  const auto& sizes = raw.Data().sizes;
  if (status == LIBRAW_SUCCESS && std::int64_t{sizes.raw_width} * sizes.raw_height > kMostPixels) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  // Half of the sensor's size still fills most boxes.
  if (status == LIBRAW_SUCCESS && !options.box.isEmpty()) {
    const QSize size(sizes.width, sizes.height);
    const QSize fit = FitInto(size, options.box);
    if (size.width() / 2 >= fit.width() && size.height() / 2 >= fit.height()) params.half_size = 1;
  }
  if (status == LIBRAW_SUCCESS) status = raw.Try([](LibRaw& r) { return r.unpack(); });
  if (status == LIBRAW_SUCCESS) status = raw.Try([](LibRaw& r) { return r.dcraw_process(); });
  if (status != LIBRAW_SUCCESS) return DecodeFailure(libraw_strerror(status));

  const std::unique_ptr<libraw_processed_image_t, decltype(&LibRaw::dcraw_clear_mem)> image(
      raw->dcraw_make_mem_image(&status), LibRaw::dcraw_clear_mem);
  if (!image || image->type != LIBRAW_IMAGE_BITMAP || image->bits != 8 ||
      (image->colors != 1 && image->colors != 3)) {
    return DecodeFailure(libraw_strerror(status));
  }
  auto sink =
      RowSink::Create(image->width, image->height,
                      image->colors == 1 ? RowFormat::Gray8 : RowFormat::Rgb24, options.box);
  if (!sink) return Failure{sink.Reason()};
  const std::size_t rowBytes = std::size_t{image->width} * image->colors;
  for (int y = 0; y < image->height; ++y) {
    sink->PutRow(y, image->data + rowBytes * static_cast<std::size_t>(y));
  }
  QImage picture = sink->Take();
  // Data without a mosaic is developed in full whatever was asked for.
  const bool stillFull = image->width == sizes.width && image->height == sizes.height;
  if (halfSize && stillFull && options.box.isEmpty()) {
    const QSize half((picture.width() + 1) / 2, (picture.height() + 1) / 2);
    return Resample(picture, half, ResampleFilter::FastLinear);
  }
  return picture;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  using Quality = RawOptions::Quality;
  if (options.raw.quality == Quality::EmbeddedPreview) {
    if (auto preview = LoadPreview(file, options)) return preview;
  }
  return Develop(file, options, options.raw.quality != Quality::Full);
}

}  // namespace

/// Ahead of TIFF, since many cameras use it as a container.
constinit const Codec kRawCodec{"Camera RAW", kExtensions, 22,   "Camera RAW", 90,
                                Sniff,        ReadFacts,   Load, true};

}  // namespace zqm
