// SPDX-License-Identifier: GPL-3.0-or-later
#include <jpeglib.h>
#include <lcms2.h>

#include <cstdio>
#include <cstdlib>

#include "imaging/codecs/codecs.h"
#include "imaging/row_sink.h"
#include "imaging/thumbnail.h"

namespace zqm {
namespace {

struct Sample {
  const char* name;
  J_COLOR_SPACE input, stored;
  int components;
  bool progressive;
  int restartRows;
  std::array<JSAMPLE, 4> left, right;  // as handed to the encoder
  QRgb expectedLeft, expectedRight;
};

constexpr int kWidth = 96, kHeight = 64;

struct Segment {
  int marker;
  QByteArray data;
};

/// Two flat halves.
QByteArray Write(const Sample& s, const std::vector<Segment>& segments = {}) {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* data = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &data, &size);
  info.image_width = kWidth;
  info.image_height = kHeight;
  info.input_components = s.components;
  info.in_color_space = s.input;
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, s.stored);
  jpeg_set_quality(&info, 95, TRUE);
  info.restart_in_rows = s.restartRows;
  info.density_unit = 2, info.X_density = 100, info.Y_density = 50;
  if (s.progressive) jpeg_simple_progression(&info);
  jpeg_start_compress(&info, TRUE);
  for (const Segment& segment : segments) {
    jpeg_write_marker(&info, segment.marker,
                      reinterpret_cast<const JOCTET*>(segment.data.constData()),
                      static_cast<unsigned>(segment.data.size()));
  }
  std::vector<JSAMPLE> row;
  for (int x = 0; x < kWidth; ++x) {
    const auto& colour = x < kWidth / 2 ? s.left : s.right;
    row.insert(row.end(), colour.begin(), colour.begin() + s.components);
  }
  JSAMPROW pointer = row.data();
  while (info.next_scanline < info.image_height)
    jpeg_write_scanlines(&info, &pointer, 1);
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  std::free(data);
  return bytes;
}

const Sample kYcc = {"YCbCr",       JCS_RGB,           JCS_YCbCr,        3, false, 0, {200, 40, 30},
                     {20, 60, 220}, qRgb(200, 40, 30), qRgb(20, 60, 220)};
const Sample kProgressive = {
    "progressive", JCS_RGB,           JCS_YCbCr,        3, true, 0, {200, 40, 30},
    {20, 60, 220}, qRgb(200, 40, 30), qRgb(20, 60, 220)};

bool Near(QRgb a, QRgb b, int tolerance = 6) {
  return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
         std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

TEST(JpegCodec, EveryColourSpaceGivesItsColours) {
  const Sample samples[] = {kYcc,
                            kProgressive,
                            {"RGB, restarts",
                             JCS_RGB,
                             JCS_RGB,
                             3,
                             false,
                             1,
                             {200, 40, 30},
                             {20, 60, 220},
                             qRgb(200, 40, 30),
                             qRgb(20, 60, 220)},
                            {"gray",
                             JCS_GRAYSCALE,
                             JCS_GRAYSCALE,
                             1,
                             false,
                             0,
                             {90},
                             {180},
                             qRgb(90, 90, 90),
                             qRgb(180, 180, 180)},
                            // No ink is 255: full cyan, then half black.
                            {"CMYK",
                             JCS_CMYK,
                             JCS_CMYK,
                             4,
                             false,
                             0,
                             {0, 255, 255, 255},
                             {255, 255, 255, 128},
                             qRgb(0, 255, 255),
                             qRgb(128, 128, 128)},
                            {"YCCK",
                             JCS_CMYK,
                             JCS_YCCK,
                             4,
                             true,
                             0,
                             {255, 0, 255, 255},
                             {255, 255, 0, 128},
                             qRgb(255, 0, 255),
                             qRgb(128, 128, 0)}};
  for (const Sample& s : samples) {
    SCOPED_TRACE(s.name);
    const QByteArray file = Write(s);
    ASSERT_EQ(SniffCodec(Bytes(file), {}), &kJpegCodec);
    const auto full = kJpegCodec.load(Bytes(file), {});
    ASSERT_TRUE(full) << qPrintable(full.Reason());
    EXPECT_EQ(full->size(), QSize(kWidth, kHeight));
    EXPECT_EQ(full->format() == QImage::Format_Grayscale8, s.components == 1);
    EXPECT_TRUE(Near(full->pixel(20, 30), s.expectedLeft));
    EXPECT_TRUE(Near(full->pixel(80, 30), s.expectedRight));
    const auto small = kJpegCodec.load(Bytes(file), {.box = {24, 24}});
    ASSERT_TRUE(small);
    EXPECT_EQ(small->size(), QSize(24, 16)) << "two eighths fill the box exactly";
    EXPECT_TRUE(Near(small->pixel(3, 8), s.expectedLeft));
  }
}

TEST(JpegCodec, FactsComeFromTheHeader) {
  // The block is cut in the middle over two segments.
  const QByteArray iptc("\x1C\x02\x50\x00\x05Maria", 10);
  const QByteArray resource = QByteArray("8BIM\x04\x04\0\0\0\0\0\x0A", 12) + iptc;
  const QByteArray mark("Photoshop 3.0\0", 14);
  const std::vector<Segment> segments = {{JPEG_APP0 + 13, mark + resource.left(15)},
                                         {JPEG_APP0 + 13, mark + resource.mid(15)}};
  const auto facts = kJpegCodec.readFacts(Bytes(Write(kYcc, segments)), {});
  ASSERT_TRUE(facts);
  EXPECT_EQ(QSize(facts->width, facts->height), QSize(kWidth, kHeight));
  EXPECT_DOUBLE_EQ(facts->dpiX, 254);
  EXPECT_DOUBLE_EQ(facts->dpiY, 127);
  EXPECT_EQ(facts->samplesPerPixel, 3);
  EXPECT_EQ(facts->iptc, iptc);
}

QByteArray Patched(QByteArray file, const char* marker, int at, const QByteArray& bytes) {
  return file.replace(file.indexOf(QByteArray(marker, 2)) + at, bytes.size(), bytes);
}

TEST(JpegCodec, DamageIsToleratedAndHostilityRefused) {
  const QByteArray good = Write(kYcc), layered = Write(kProgressive);
  EXPECT_TRUE(kJpegCodec.load(Bytes(good + QByteArray(5000, 'x')), {}));
  EXPECT_TRUE(kJpegCodec.load(Bytes(good.left(good.size() - 40)), {}));

  const QByteArray deep = Patched(good, "\xFF\xC0", 4, "\x0C");
  EXPECT_EQ(kJpegCodec.readFacts(Bytes(deep), {})->bitsPerSample, 12);
  EXPECT_TRUE(kJpegCodec.load(Bytes(deep), {}).Reason().contains(QLatin1String("12")));

  const QByteArray flat = Patched(good, "\xFF\xC0", 5, QByteArray(2, '\0'));
  EXPECT_FALSE(kJpegCodec.readFacts(Bytes(flat), {})) << "no height";

  // The coefficients of 16,000 x 16,000 x 3 samples would take 1.5 GB.
  Sample full = kProgressive;
  full.input = full.stored = JCS_RGB;
  const QByteArray vast = Patched(Write(full), "\xFF\xC2", 5, "\x3E\x80\x3E\x80");
  EXPECT_TRUE(kJpegCodec.readFacts(Bytes(vast), {}));
  EXPECT_FALSE(kJpegCodec.load(Bytes(vast), {.box = {200, 200}}));

  const qsizetype scan = layered.lastIndexOf(QByteArray("\xFF\xDA", 2));
  const QByteArray again = layered.mid(scan, layered.size() - 2 - scan);
  EXPECT_TRUE(kJpegCodec.load(Bytes(layered.left(scan) + again.repeated(10)), {}));
  EXPECT_FALSE(kJpegCodec.load(Bytes(layered.left(scan) + again.repeated(1100)), {}));
}

QByteArray ProfileBytes(cmsHPROFILE profile) {
  cmsUInt32Number size = 0;
  cmsSaveProfileToMem(profile, nullptr, &size);
  QByteArray bytes(static_cast<qsizetype>(size), '\0');
  cmsSaveProfileToMem(profile, bytes.data(), &size);
  cmsCloseProfile(profile);
  return bytes;
}

cmsHPROFILE WideProfile() {
  const cmsCIExyY white = {0.3127, 0.3290, 1};
  const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.21, 0.71, 1}, {0.15, 0.06, 1}};
  cmsToneCurve* gamma = cmsBuildGamma(nullptr, 2.2);
  cmsToneCurve* const curves[] = {gamma, gamma, gamma};
  cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
  cmsFreeToneCurve(gamma);
  return profile;
}

TEST(JpegCodec, AnEmbeddedProfileIsAppliedOnlyWhenAsked) {
  const QByteArray mark("ICC_PROFILE\0\x01\x01", 14);
  const auto load = [&](const QByteArray& profile, bool managed) {
    const QByteArray file = Write(kYcc, {{JPEG_APP0 + 2, mark + profile}});
    return *kJpegCodec.load(Bytes(file), {.colourManagement = managed});
  };
  const QByteArray wide = ProfileBytes(WideProfile());
  const QImage plain = load(wide, false);
  EXPECT_TRUE(Near(plain.pixel(20, 30), kYcc.expectedLeft));
  // By hand: linear red 0.586 * 1.398 - green 0.017 * 0.398, green as it is.
  const QRgb managed = load(wide, true).pixel(20, 30);
  EXPECT_NEAR(qRed(managed), 231, 5);
  EXPECT_NEAR(qGreen(managed), 35, 5);
  EXPECT_EQ(load(ProfileBytes(cmsCreate_sRGBProfile()), true), plain);
  EXPECT_EQ(load(QByteArray(400, 'x'), true), plain) << "a broken profile is no profile";
}

TEST(Thumbnail, FitsTheBoxIsNeverEnlargedAndStandsOnWhite) {
  const struct {
    QSize picture, expected;
  } cases[] = {{{3264, 2448}, {200, 150}}, {{100, 3000}, {7, 200}}, {{40, 30}, {40, 30}},
               {{200, 200}, {200, 200}},   {{20000, 10}, {200, 1}}, {{201, 201}, {200, 200}}};
  for (const auto& c : cases) {
    EXPECT_EQ(FitInto(c.picture, kThumbnailBox), c.expected);
    QImage picture(c.picture, QImage::Format_ARGB32);
    picture.fill(qRgba(0, 200, 0, 0));
    const QImage thumbnail = FitThumbnail(picture);
    EXPECT_EQ(thumbnail.size(), c.expected);
    EXPECT_EQ(thumbnail.pixel(0, 0), qRgb(255, 255, 255));
  }
  const auto made = MakeThumbnail(Bytes(Write(kYcc)), kJpegCodec, {}, {});
  ASSERT_TRUE(made);
  const auto back = kJpegCodec.load(Bytes(*made), {});
  ASSERT_TRUE(back);
  EXPECT_EQ(back->size(), QSize(kWidth, kHeight));
  EXPECT_TRUE(Near(back->pixel(80, 30), kYcc.expectedRight));
  EXPECT_FALSE(MakeThumbnail(Bytes(Write(kYcc).left(100)), kJpegCodec, {}, {}));
}

}  // namespace
}  // namespace zqm
