// SPDX-License-Identifier: GPL-3.0-or-later
// JPEG 2000: the library gives the code stream, the boxes around it are ours (ISO/IEC 15444-1,
// annex I). The bare stream has no place for a colour space: there "YCbCr" means the transform of
// the components inside, which RGB pictures get in any case and every reader undoes.
#include <openjpeg.h>

#include <QThread>
#include <cmath>

#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

/// Larger pictures are cut into tiles, so that the library holds no more of one at a time.
constexpr int kTileSide = 4096;

enum class Space { Gray = 17, Rgb = 16, Ycc = 18 };  // by their numbers in the box

struct Shape {
  Space space = Space::Rgb;
  int colours = 3;
  bool alpha = false;
  int bits = 8;

  int Components() const { return colours + (alpha ? 1 : 0); }
};

Shape ShapeOf(const QImage& picture, int wanted, bool boxed) {
  constexpr int kWantGray = 0, kWantYcc = 2;
  Shape shape;
  const bool deep = picture.depth() == 64 || picture.format() == QImage::Format_Grayscale16;
  shape.bits = deep ? 16 : 8;
  const bool isGray = IsGray(picture) || WhiteBit(picture);
  if (wanted == kWantGray || (wanted < 0 && isGray)) {
    shape.space = Space::Gray;
    shape.colours = 1;
    return shape;
  }
  if (wanted == kWantYcc && boxed) shape.space = Space::Ycc;
  shape.alpha = boxed && picture.hasAlphaChannel();
  return shape;
}

RowFormat FormatFor(const Shape& shape) {
  const bool deep = shape.bits == 16;
  if (shape.colours == 1) return deep ? RowFormat::Gray16 : RowFormat::Gray8;
  if (shape.alpha) return deep ? RowFormat::Rgba64 : RowFormat::Rgba32;
  return deep ? RowFormat::Rgb48 : RowFormat::Rgb24;
}

/// ITU-R BT.601, full range.
template <class Sample>
void RgbToYcc(const Sample* rgb, Sample* ycc) {
  constexpr float most = std::numeric_limits<Sample>::max(), middle = (most + 1) / 2;
  const auto whole = [&](float v) { return static_cast<Sample>(std::clamp(v, 0.0F, most) + 0.5F); };
  const float red = rgb[0], green = rgb[1], blue = rgb[2];
  const float luma = 0.299F * red + 0.587F * green + 0.114F * blue;
  ycc[0] = whole(luma);
  ycc[1] = whole((blue - luma) / 1.772F + middle);
  ycc[2] = whole((red - luma) / 1.402F + middle);
}

/// A part of the picture, component by component.
class Tiles {
 public:
  Tiles(const QImage& picture, const Shape& shape)
      : shape_(shape), rows_(picture, FormatFor(shape)) {}

  std::vector<std::uint8_t>& Get(const QRect& area) {
    const auto samples =
        static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height());
    data_.resize(samples * static_cast<std::size_t>(shape_.Components() * shape_.bits / 8));
    shape_.bits == 16 ? Fill<std::uint16_t>(area, samples) : Fill<std::uint8_t>(area, samples);
    return data_;
  }

 private:
  template <class Sample>
  void Fill(const QRect& area, std::size_t samples) {
    const auto count = static_cast<std::size_t>(shape_.Components());
    auto* out = reinterpret_cast<Sample*>(data_.data());
    for (int y = area.top(); y <= area.bottom(); ++y) {
      const auto* in =
          static_cast<const Sample*>(rows_.Row(y)) + static_cast<std::size_t>(area.left()) * count;
      for (int x = 0; x < area.width(); ++x, in += count, ++out) {
        Sample ycc[4] = {};
        const Sample* pixel = in;
        if (shape_.space == Space::Ycc) {
          RgbToYcc(in, ycc);
          if (shape_.alpha) ycc[3] = in[3];
          pixel = ycc;
        }
        for (std::size_t c = 0; c < count; ++c)
          out[c * samples] = pixel[c];
      }
    }
  }

  const Shape& shape_;
  RowSource rows_;
  std::vector<std::uint8_t> data_;
};

struct Sink {
  QByteArray bytes;
  qsizetype at = 0;
};

OPJ_SIZE_T WriteBytes(void* data, OPJ_SIZE_T count, void* user) {
  auto* sink = static_cast<Sink*>(user);
  const auto length = static_cast<qsizetype>(count);
  if (sink->at + length > sink->bytes.size()) sink->bytes.resize(sink->at + length);
  std::memcpy(sink->bytes.data() + sink->at, data, count);
  sink->at += length;
  return count;
}
OPJ_BOOL SeekTo(OPJ_OFF_T to, void* user) {
  auto* sink = static_cast<Sink*>(user);
  if (to < 0 || to > sink->bytes.size()) return OPJ_FALSE;
  sink->at = static_cast<qsizetype>(to);
  return OPJ_TRUE;
}
OPJ_OFF_T Skip(OPJ_OFF_T count, void* user) {
  const auto* sink = static_cast<Sink*>(user);
  return SeekTo(sink->at + count, user) ? count : -1;
}

void KeepMessage(const char* message, void* user) {
  auto& kept = *static_cast<QByteArray*>(user);
  if (kept.isEmpty()) kept = QByteArray(message).trimmed();
}
void DropMessage(const char*, void*) {}

using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;
using Encoder = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Image = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;

Image DescribeImage(const QSize& size, const Shape& shape) {
  opj_image_cmptparm_t components[4] = {};
  for (opj_image_cmptparm_t& c : components) {
    c.dx = c.dy = 1;
    c.w = static_cast<OPJ_UINT32>(size.width());
    c.h = static_cast<OPJ_UINT32>(size.height());
    c.prec = static_cast<OPJ_UINT32>(shape.bits);
  }
  Image image(opj_image_tile_create(static_cast<OPJ_UINT32>(shape.Components()), components,
                                    shape.colours == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB),
              opj_image_destroy);
  if (!image) return image;
  image->x0 = image->y0 = 0;
  image->x1 = components[0].w;
  image->y1 = components[0].h;
  return image;
}

opj_cparameters_t ParametersFor(const QSize& tile, const Shape& shape, double rate) {
  opj_cparameters_t parameters;
  opj_set_default_encoder_parameters(&parameters);
  const bool lossless = rate >= 1;
  parameters.irreversible = lossless ? 0 : 1;
  parameters.cp_disto_alloc = 1;
  parameters.tcp_numlayers = 1;
  parameters.tcp_rates[0] = lossless ? 0.0F : static_cast<float>(1 / std::max(rate, 0.001));
  parameters.tcp_mct = shape.space == Space::Rgb ? 1 : 0;
  parameters.tile_size_on = OPJ_TRUE;
  parameters.cp_tdx = tile.width();
  parameters.cp_tdy = tile.height();
  const int side = std::min(tile.width(), tile.height());
  while (parameters.numresolution > 1 && side >> (parameters.numresolution - 1) == 0)
    --parameters.numresolution;
  return parameters;
}

Result<QByteArray> Encode(const QImage& picture, const Shape& shape, double rate) {
  const bool cut = std::int64_t{picture.width()} * picture.height() > kTileSide * kTileSide;
  const QSize tile = cut ? picture.size().boundedTo({kTileSide, kTileSide}) : picture.size();
  const int columns = (picture.width() + tile.width() - 1) / tile.width();
  const int lines = (picture.height() + tile.height() - 1) / tile.height();

  Sink sink;
  QByteArray message;
  const Stream stream(opj_stream_default_create(OPJ_FALSE), opj_stream_destroy);
  const Encoder encoder(opj_create_compress(OPJ_CODEC_J2K), opj_destroy_codec);
  const Image image = DescribeImage(picture.size(), shape);
  if (!stream || !encoder || !image) return WriteFailure("not enough memory");
  opj_stream_set_user_data(stream.get(), &sink, nullptr);
  opj_stream_set_write_function(stream.get(), WriteBytes);
  opj_stream_set_seek_function(stream.get(), SeekTo);
  opj_stream_set_skip_function(stream.get(), Skip);
  opj_set_error_handler(encoder.get(), KeepMessage, &message);
  opj_set_warning_handler(encoder.get(), DropMessage, nullptr);
  opj_set_info_handler(encoder.get(), DropMessage, nullptr);

  opj_cparameters_t parameters = ParametersFor(tile, shape, rate);
  bool done = opj_setup_encoder(encoder.get(), &parameters, image.get());
  opj_codec_set_threads(encoder.get(), QThread::idealThreadCount());
  done = done && opj_start_compress(encoder.get(), image.get(), stream.get());
  Tiles tiles(picture, shape);
  for (int i = 0; done && i < columns * lines; ++i) {
    const QPoint corner(i % columns * tile.width(), i / columns * tile.height());
    auto& data = tiles.Get(QRect(corner, tile) & picture.rect());
    done = opj_write_tile(encoder.get(), static_cast<OPJ_UINT32>(i), data.data(),
                          static_cast<OPJ_UINT32>(data.size()), stream.get());
  }
  if (!done || !opj_end_compress(encoder.get(), stream.get())) {
    return WriteFailure(message.constData());
  }
  return std::move(sink.bytes);
}

void AppendBox(ByteWriter& out, std::string_view name, const QByteArray& body) {
  out.U32(body.size() + 8).Text(name).Raw(body);
}

/// Whether a profile is of the picture's kind and made of curves and a matrix, as all that this
/// format takes.
bool TakesProfile(const QByteArray& profile, const Shape& shape) {
  constexpr qsizetype kSpaceAt = 16, kTagCountAt = 128;
  if (profile.size() <= kTagCountAt + 4 || shape.space == Space::Ycc) return false;
  const ByteReader in(Bytes(profile), true);
  const std::uint32_t tags = std::min<std::uint32_t>(in.U32(kTagCountAt), 1000);
  for (std::uint32_t i = 0; i < tags; ++i) {
    if (StartsWith(Bytes(profile), "A2B", kTagCountAt + 4 + 12 * i)) return false;
  }
  return profile.mid(kSpaceAt, 4) == (shape.colours == 1 ? "GRAY" : "RGB ");
}

/// Samples a metre as a fraction times a power of ten, vertical first.
QByteArray ResolutionBox(double dpiX, double dpiY) {
  ByteWriter numbers(true), exponents(true), box(true);
  for (const double dpi : {dpiY, dpiX}) {
    // An inch is 254 tenths of a millimetre: dpi * 10^4 / 254, as exact as 16 bits allow.
    int power = 2;
    double top = dpi * 100;
    for (; top > 0xFFFF && power < 4; ++power)
      top /= 10;
    numbers.U16(WholeNumber(top, 0xFFFF)).U16(254);
    exponents.U8(power);
  }
  AppendBox(box, "resd", numbers.Take() + exponents.Take());
  return box.Take();
}

QByteArray HeaderBoxes(const QSize& size, const Shape& shape, const FileBlocks& blocks) {
  constexpr int kWavelets = 7, kByNumber = 1, kByProfile = 2;
  ByteWriter image(true), colour(true), boxes(true);
  image.U32(size.height()).U32(size.width()).U16(shape.Components()).U8(shape.bits - 1);
  AppendBox(boxes, "ihdr", image.U8(kWavelets).U8(0).U8(0).Take());
  const bool profile = TakesProfile(blocks.profile, shape);
  colour.U8(profile ? kByProfile : kByNumber).U8(0).U8(0);
  profile ? void(colour.Raw(blocks.profile)) : void(colour.U32(static_cast<int>(shape.space)));
  AppendBox(boxes, "colr", colour.Take());
  if (shape.alpha) {
    constexpr int kColour = 0, kOpacity = 1, kWholePicture = 0;
    ByteWriter channels(true);
    channels.U16(shape.Components());
    for (int i = 0; i < shape.colours; ++i)
      channels.U16(i).U16(kColour).U16(i + 1);
    channels.U16(shape.colours).U16(kOpacity).U16(kWholePicture);
    AppendBox(boxes, "cdef", channels.Take());
  }
  if (blocks.dpiX > 0 && blocks.dpiY > 0) {
    AppendBox(boxes, "res ", ResolutionBox(blocks.dpiX, blocks.dpiY));
  }
  return boxes.Take();
}

constexpr std::string_view kExifUuid = "JpgTiffExif->JP2";
constexpr std::string_view kIptcUuid(
    "\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38", 16);
constexpr std::string_view kXmpUuid(
    "\xBE\x7A\xCF\xCB\x97\xA9\x42\xE8\x9C\x71\x99\x94\x91\xE3\xAF\xAC", 16);

}  // namespace

Result<QByteArray> SaveJ2k(const QImage& given, const SaveOptions& options, const FileBlocks&) {
  const auto picture = WritablePicture(given, kMostSide);
  if (!picture) return Failure{picture.Reason()};
  return Encode(*picture, ShapeOf(*picture, options.j2000ColourSpace, false), options.j2000Rate);
}

Result<QByteArray> SaveJp2(const QImage& given, const SaveOptions& options,
                           const FileBlocks& blocks) {
  const auto picture = WritablePicture(given, kMostSide);
  if (!picture) return Failure{picture.Reason()};
  const Shape shape = ShapeOf(*picture, options.j2000ColourSpace, true);
  const auto stream = Encode(*picture, shape, options.j2000Rate);
  if (!stream) return Failure{stream.Reason()};
  ByteWriter out(true);
  AppendBox(out, "jP  ", "\r\n\x87\n");
  AppendBox(out, "ftyp", QByteArray("jp2 \0\0\0\0jp2 ", 12));
  AppendBox(out, "jp2h", HeaderBoxes(picture->size(), shape, blocks));
  const std::pair<std::string_view, const QByteArray&> parts[] = {
      {kExifUuid, blocks.exif}, {kIptcUuid, blocks.iptc}, {kXmpUuid, blocks.xmp}};
  for (const auto& [uuid, part] : parts) {
    if (part.isEmpty()) continue;
    AppendBox(out, "uuid", QByteArray(uuid.data(), qsizetype(uuid.size())) + part);
  }
  AppendBox(out, "jp2c", *stream);
  return out.Take();
}

}  // namespace zqm
