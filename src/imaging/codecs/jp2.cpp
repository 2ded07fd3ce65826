// SPDX-License-Identifier: GPL-3.0-or-later
// JPEG 2000: the boxed file and the bare code stream. The facts come from a small reader of our own
// (ISO/IEC 15444-1, annexes A and I), which also guards the library against hostile headers.
#include <openjpeg.h>

#include <cmath>
#include <cstdio>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/save_support.h"
#include "imaging/colour.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

constexpr std::string_view kSignature("\0\0\0\x0CjP  \r\n\x87\n", 12);
constexpr std::string_view kStreamMark("\xFF\x4F\xFF\x51", 4);
constexpr std::string_view kIptcUuid(
    "\x33\xC7\xA4\xD2\xB8\x1D\x47\x23\xA0\xBA\xF1\xA3\xE0\x97\xAD\x38", 16);

constexpr std::uint32_t Box(const char (&name)[5]) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i)
    value = value << 8 | static_cast<std::uint8_t>(name[i]);
  return value;
}

/// What the code stream's main header says.
struct Header {
  std::int64_t width = 0, height = 0, tiles = 0;
  int components = 0;
  int bits = 8;         ///< of the first component
  int resolutions = 0;  ///< levels that can be left out, by the default coding style
};

struct Container {
  Header header;
  PictureFacts facts;
};

std::optional<Header> ReadHeader(ByteView stream) {
  if (!StartsWith(stream, kStreamMark)) return std::nullopt;
  const ByteReader in(stream, true);
  const std::uint64_t siz = 4;  // behind the marker: length, capabilities, then the sizes
  const auto at = [&](int i) {
    return std::int64_t{in.U32(siz + 4 + 4U * static_cast<unsigned>(i))};
  };
  Header h;
  // The grid's size by the first component's sampling: that is the picture which comes out.
  const std::int64_t dx = in.U8(siz + 39), dy = in.U8(siz + 40);
  const auto sampled = [](std::int64_t from, std::int64_t to, std::int64_t step) {
    return step > 0 ? (to + step - 1) / step - (from + step - 1) / step : 0;
  };
  h.width = sampled(at(2), at(0), dx);
  h.height = sampled(at(3), at(1), dy);
  const std::int64_t tileWidth = at(4), tileHeight = at(5);
  h.components = in.U16(siz + 36);
  h.bits = (in.U8(siz + 38) & 0x7F) + 1;
  if (h.width <= 0 || h.height <= 0 || tileWidth <= 0 || tileHeight <= 0 || h.components == 0) {
    return std::nullopt;
  }
  h.tiles = ((at(0) - at(6) + tileWidth - 1) / tileWidth) *
            ((at(1) - at(7) + tileHeight - 1) / tileHeight);
  // The coding style (COD) stands somewhere among the segments up to the first tile part (SOT).
  for (std::uint64_t p = siz + in.U16(siz); p + 4 < stream.size();) {
    const std::uint16_t marker = in.U16(p);
    if (marker == 0xFF52) h.resolutions = in.U8(p + 9);
    if (marker == 0xFF90 || marker < 0xFF00 || in.U16(p + 2) < 2) break;
    p += 2U + in.U16(p + 2);
  }
  return h;
}

/// Dots per metre as a fraction times a power of ten, vertical first.
double BoxDpi(const ByteReader& in, std::uint64_t at, std::uint64_t exponentAt) {
  if (in.U16(at + 2) == 0) return 0;
  const double perMetre = double(in.U16(at)) / in.U16(at + 2) *
                          std::pow(10.0, static_cast<std::int8_t>(in.U8(exponentAt)));
  const double dpi = perMetre * 0.0254;
  return dpi < 1e6 ? dpi : 0;
}

void WalkBoxes(ByteView boxes, int depth, Container& found) {
  const ByteReader in(boxes, true);
  std::uint64_t at = 0;
  for (int count = 0; count < 1000 && at + 8 <= boxes.size(); ++count) {
    std::uint64_t length = in.U32(at), head = 8;
    const std::uint32_t name = in.U32(at + 4);
    if (length == 1) length = in.U64(at + 8), head = 16;
    if (length == 0) length = boxes.size() - at;
    if (length < head) return;
    const ByteView body = in.Part(at + head, length - head);
    const ByteReader content(body, true);
    if ((name == Box("jp2h") || name == Box("res ")) && depth < 3) {
      WalkBoxes(body, depth + 1, found);
    } else if (name == Box("resc") || (name == Box("resd") && found.facts.dpiX == 0)) {
      found.facts.dpiY = BoxDpi(content, 0, 8);
      found.facts.dpiX = BoxDpi(content, 4, 9);
    } else if (name == Box("pclr")) {
      found.facts.colorMapCount = content.U16(0);
    } else if (name == Box("uuid") && StartsWith(body, kIptcUuid)) {
      found.facts.iptc = ToByteArray(body.subspan(16));
    } else if (name == Box("jp2c") && found.header.components == 0) {
      found.header = ReadHeader(body).value_or(Header{});
    }
    if (length > boxes.size() - at) return;
    at += length;
  }
}

std::optional<Container> ReadContainer(ByteView file) {
  Container found;
  if (StartsWith(file, kSignature)) {
    WalkBoxes(file, 0, found);
  } else {
    found.header = ReadHeader(file).value_or(Header{});
  }
  const Header& h = found.header;
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  if (h.components == 0 || h.width > kMost || h.height > kMost) return std::nullopt;
  found.facts.width = static_cast<int>(h.width);
  found.facts.height = static_cast<int>(h.height);
  found.facts.bitsPerSample = h.bits;
  found.facts.samplesPerPixel = h.components;
  return found;
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  auto found = ReadContainer(file);
  if (!found) return Failure{QStringView(kReasonNoImage).toString()};
  return std::move(found->facts);
}

struct Source {
  ByteView file;
  std::size_t at = 0;
};

OPJ_SIZE_T ReadBytes(void* out, OPJ_SIZE_T count, void* user) {
  auto* s = static_cast<Source*>(user);
  const std::size_t taken = std::min(count, s->file.size() - s->at);
  if (taken == 0) return static_cast<OPJ_SIZE_T>(-1);
  std::memcpy(out, s->file.data() + s->at, taken);
  s->at += taken;
  return taken;
}

OPJ_BOOL SeekTo(OPJ_OFF_T to, void* user) {
  auto* s = static_cast<Source*>(user);
  if (to < 0 || static_cast<std::size_t>(to) > s->file.size()) return OPJ_FALSE;
  s->at = static_cast<std::size_t>(to);
  return OPJ_TRUE;
}

OPJ_OFF_T Skip(OPJ_OFF_T count, void* user) {
  auto* s = static_cast<Source*>(user);
  if (count < 0) return -1;
  const auto rest = static_cast<OPJ_OFF_T>(s->file.size() - s->at);
  s->at += static_cast<std::size_t>(std::min(count, rest));
  return count <= rest ? count : -1;
}

void KeepMessage(const char* message, void* user) {
  auto& kept = *static_cast<QByteArray*>(user);
  if (kept.isEmpty()) kept = QByteArray(message).trimmed();
}
void DropMessage(const char*, void*) {}

using Stream = std::unique_ptr<opj_stream_t, decltype(&opj_stream_destroy)>;
using Decoder = std::unique_ptr<opj_codec_t, decltype(&opj_destroy_codec)>;
using Image = std::unique_ptr<opj_image_t, decltype(&opj_image_destroy)>;

Image Decode(ByteView file, int reduce, QByteArray& message) {
  Source source{file};
  const Stream stream(opj_stream_default_create(OPJ_TRUE), opj_stream_destroy);
  opj_stream_set_user_data(stream.get(), &source, nullptr);
  opj_stream_set_user_data_length(stream.get(), file.size());
  opj_stream_set_read_function(stream.get(), ReadBytes);
  opj_stream_set_seek_function(stream.get(), SeekTo);
  opj_stream_set_skip_function(stream.get(), Skip);

  const bool boxed = StartsWith(file, kSignature);
  const Decoder decoder(opj_create_decompress(boxed ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K),
                        opj_destroy_codec);
  opj_set_error_handler(decoder.get(), KeepMessage, &message);
  opj_set_warning_handler(decoder.get(), DropMessage, nullptr);
  opj_set_info_handler(decoder.get(), DropMessage, nullptr);
  opj_dparameters_t parameters;
  opj_set_default_decoder_parameters(&parameters);
  parameters.cp_reduce = static_cast<OPJ_UINT32>(reduce);
  opj_image_t* image = nullptr;
  const bool headed = opj_setup_decoder(decoder.get(), &parameters) &&
                      opj_read_header(stream.get(), decoder.get(), &image);
  Image owned(image, opj_image_destroy);
  if (!headed || !opj_decode(decoder.get(), stream.get(), image))
    return {nullptr, opj_image_destroy};
  return owned;
}

/// One component as 16-bit samples, at its own place in a picture of which it may have fewer
/// samples.
class Component {
 public:
  Component(const opj_image_comp_t& c, std::uint32_t width, std::uint32_t height)
      : data_(c.data), width_(c.w), height_(c.h), of_{width, height} {
    most_ = (std::int64_t{1} << std::min(c.prec, OPJ_UINT32{31})) - 1;
    offset_ = c.sgnd ? (most_ + 1) / 2 : 0;
  }

  std::uint16_t At(std::uint32_t x, std::uint32_t y) const {
    const std::uint32_t cx = Place(x, width_, of_[0]), cy = Place(y, height_, of_[1]);
    const std::int64_t value =
        std::clamp<std::int64_t>(data_[std::size_t{cy} * width_ + cx] + offset_, 0, most_);
    return static_cast<std::uint16_t>((value * 65535 + most_ / 2) / most_);
  }

 private:
  static std::uint32_t Place(std::uint32_t at, std::uint32_t mine, std::uint32_t all) {
    return mine == all ? at : static_cast<std::uint32_t>(std::uint64_t{at} * mine / all);
  }

  const OPJ_INT32* data_;
  std::uint32_t width_, height_;
  std::uint32_t of_[2];
  std::int64_t most_ = 255, offset_ = 0;
};

enum class Kind { Gray, Rgb, Ycc, Cmyk };

/// How the components are meant: colours first, then an optional alpha.
struct Meaning {
  Kind kind = Kind::Gray;
  bool alpha = false;
};

Meaning MeaningOf(const opj_image_t& image) {
  const bool subsampled = image.numcomps >= 3 && (image.comps[1].w != image.comps[0].w ||
                                                  image.comps[1].h != image.comps[0].h);
  if (image.numcomps < 3) return {Kind::Gray, image.numcomps == 2};
  if (image.color_space == OPJ_CLRSPC_CMYK && image.numcomps >= 4) return {Kind::Cmyk, false};
  const bool ycc =
      image.color_space == OPJ_CLRSPC_SYCC || image.color_space == OPJ_CLRSPC_EYCC || subsampled;
  return {ycc ? Kind::Ycc : Kind::Rgb, image.numcomps >= 4};
}

std::uint16_t Clamp16(double value) {
  return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0, 65535.0)));
}

/// ITU-R BT.601, full range. `middle` is the level of no colour.
void YccToRgb(std::uint16_t* p, double middle) {
  const double y = p[0], cb = p[1] - middle, cr = p[2] - middle;
  p[0] = Clamp16(y + 1.402 * cr);
  p[1] = Clamp16(y - 0.344136 * cb - 0.714136 * cr);
  p[2] = Clamp16(y + 1.772 * cb);
}

RowFormat FormatOf(const Meaning& meaning, bool deep) {
  if (meaning.kind == Kind::Cmyk) return RowFormat::Rgb24;
  if (meaning.alpha) return deep ? RowFormat::Rgba64 : RowFormat::Rgba32;
  if (meaning.kind == Kind::Gray) return deep ? RowFormat::Gray16 : RowFormat::Gray8;
  return deep ? RowFormat::Rgb48 : RowFormat::Rgb24;
}

Result<QImage> ToPicture(const opj_image_t& image, const Meaning& meaning, const QSize& box) {
  const std::uint32_t colours = meaning.kind == Kind::Gray ? 1 : meaning.kind == Kind::Cmyk ? 4 : 3;
  const std::uint32_t used = colours + (meaning.alpha ? 1 : 0);
  const std::uint32_t width = image.comps[0].w, height = image.comps[0].h;
  std::vector<Component> components;
  for (std::uint32_t c = 0; c < used; ++c) {
    const opj_image_comp_t& component = image.comps[c];
    if (!component.data || component.w == 0 || component.h == 0 || component.prec == 0) {
      return DecodeFailure("a component is missing");
    }
    components.emplace_back(component, width, height);
  }
  const bool deep = image.comps[0].prec > 8 && meaning.kind != Kind::Cmyk;
  auto sink = RowSink::Create(static_cast<int>(width), static_cast<int>(height),
                              FormatOf(meaning, deep), box);
  if (!sink) return Failure{sink.Reason()};

  const std::uint32_t channels = meaning.alpha ? 4 : colours;
  std::vector<std::uint16_t> row(std::size_t{width} * channels);
  std::vector<std::uint8_t> bytes(row.size()), rgb(std::size_t{width} * 3);
  const CmykConverter cmyk;
  // Half of all levels, brought to 16 bits as the samples are.
  const double levels = std::exp2(image.comps[0].prec), middle = levels / 2 * 65535 / (levels - 1);
  bool sawAlpha = false;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      std::uint16_t* p = row.data() + std::size_t{x} * channels;
      for (std::uint32_t c = 0; c < colours; ++c)
        p[c] = components[c].At(x, y);
      if (meaning.alpha && colours == 1) p[1] = p[2] = p[0];
      if (meaning.alpha) p[3] = components[colours].At(x, y);
      sawAlpha = sawAlpha || (meaning.alpha && p[3] != 0);
      if (meaning.kind == Kind::Ycc) YccToRgb(p, middle);
    }
    if (deep) {
      sink->PutRow(static_cast<int>(y), row.data());
      continue;
    }
    std::ranges::transform(row, bytes.begin(), [](std::uint16_t v) {
      return static_cast<std::uint8_t>((v * 255U + 32895U) >> 16);
    });
    if (meaning.kind == Kind::Cmyk) {
      cmyk.ConvertRow(bytes.data(), rgb.data(), static_cast<int>(width));
    }
    sink->PutRow(static_cast<int>(y), meaning.kind == Kind::Cmyk ? rgb.data() : bytes.data());
  }
  // Behind a last component that isn't declared as alpha, all zero, the picture must not vanish.
  if (meaning.alpha && !image.comps[colours].alpha && !sawAlpha) {
    return ToPicture(image, {meaning.kind, false}, box);
  }
  return sink->Take();
}

/// How often the size can be halved without falling below the fit into the box.
int ChooseReduction(const Header& h, const QSize& box) {
  if (box.isEmpty()) return 0;
  const QSize fit = FitInto({static_cast<int>(h.width), static_cast<int>(h.height)}, box);
  int reduce = 0;
  while (reduce < h.resolutions && (h.width >> (reduce + 1)) >= fit.width() &&
         (h.height >> (reduce + 1)) >= fit.height()) {
    ++reduce;
  }
  return reduce;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const auto found = ReadContainer(file);
  if (!found) return Failure{QStringView(kReasonNoImage).toString()};
  const Header& h = found->header;
  int reduce = ChooseReduction(h, options.box);
  // The library holds four bytes a sample, twice while a picture of one tile is put together.
  const auto bytesFor = [&](int halvings) {
    return (h.width >> halvings) * (h.height >> halvings) * h.components * 8;
  };
  if (h.width > kMostPixels / h.height || h.tiles > 65535 || h.components > 64 ||
      bytesFor(reduce) > kMostDecoderBytes) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  QByteArray message;
  Image image = Decode(file, reduce, message);
  // A tile may have fewer resolutions than the main header promises.
  if (!image && reduce > 0 && bytesFor(0) <= kMostDecoderBytes) image = Decode(file, 0, message);
  if (!image || image->numcomps == 0) return DecodeFailure(message.constData());
  return ToPicture(*image, MeaningOf(*image), options.box);
}

bool SniffBoxed(ByteView file, const QString&) {
  return StartsWith(file, kSignature);
}
bool SniffStream(ByteView file, const QString&) {
  return StartsWith(file, kStreamMark);
}

constexpr const char* kBoxedExtensions[] = {"jp2"};
constexpr const char* kStreamExtensions[] = {"j2k", "jpc", "j2c"};

}  // namespace

constinit const Codec kJp2Codec{"JPEG 2000", kBoxedExtensions, 13,        "JPEG2000 File (JP2)",
                                50,          SniffBoxed,       ReadFacts, Load,
                                false,       SaveJp2};
constinit const Codec kJ2kCodec{"JPEG 2000 code stream",
                                kStreamExtensions,
                                14,
                                "JPEG2000 Code Stream (J2K)",
                                50,
                                SniffStream,
                                ReadFacts,
                                Load,
                                false,
                                SaveJ2k};

}  // namespace zqm
