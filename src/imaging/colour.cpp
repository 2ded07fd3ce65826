// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/colour.h"

#include <lcms2.h>

#include <cmath>

namespace zqm {
namespace {

/// Larger blocks are no camera's or editor's profile.
constexpr std::size_t kMostProfileBytes = std::size_t{16} << 20;

struct CloseProfile {
  void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

Profile OpenProfile(ByteView bytes, cmsColorSpaceSignature space) {
  if (bytes.size() < 128 || bytes.size() > kMostProfileBytes) return nullptr;
  Profile profile(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
  if (profile && cmsGetColorSpace(profile.get()) != space) profile.reset();
  return profile;
}

/// IEC 61966-2-1, as a parametric curve of type 4.
using ToneCurve = std::unique_ptr<cmsToneCurve, decltype(&cmsFreeToneCurve)>;
ToneCurve SrgbCurve() {
  const cmsFloat64Number parameters[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
  return {cmsBuildParametricToneCurve(nullptr, 4, parameters), cmsFreeToneCurve};
}

bool IsSrgbCurve(const cmsToneCurve* curve) {
  const ToneCurve srgb = SrgbCurve();
  if (!curve || !srgb) return false;
  for (const float x : {0.1F, 0.25F, 0.5F, 0.75F}) {
    if (std::abs(cmsEvalToneCurveFloat(curve, x) - cmsEvalToneCurveFloat(srgb.get(), x)) > 0.004F) {
      return false;
    }
  }
  return true;
}

/// Most photos carry sRGB in one of its many spellings: by its numbers, not by its name. The
/// colorants are those of sRGB adapted to the profile connection space's D50.
bool IsSrgb(cmsHPROFILE profile) {
  struct Primary {
    cmsTagSignature colorant, curve;
    double x, y, z;
  };
  static constexpr Primary kPrimaries[] = {
      {cmsSigRedColorantTag, cmsSigRedTRCTag, 0.4361, 0.2225, 0.0139},
      {cmsSigGreenColorantTag, cmsSigGreenTRCTag, 0.3851, 0.7169, 0.0971},
      {cmsSigBlueColorantTag, cmsSigBlueTRCTag, 0.1431, 0.0606, 0.7141}};
  if (cmsIsTag(profile, cmsSigAToB0Tag)) return false;
  return std::ranges::all_of(kPrimaries, [&](const Primary& p) {
    const auto* found = static_cast<const cmsCIEXYZ*>(cmsReadTag(profile, p.colorant));
    const auto near = [](double a, double b) { return std::abs(a - b) < 0.003; };
    return found && near(found->X, p.x) && near(found->Y, p.y) && near(found->Z, p.z) &&
           IsSrgbCurve(static_cast<const cmsToneCurve*>(cmsReadTag(profile, p.curve)));
  });
}

Profile SrgbGray() {
  const ToneCurve curve = SrgbCurve();
  return Profile(curve ? cmsCreateGrayProfile(cmsD50_xyY(), curve.get()) : nullptr);
}

using Transform = std::shared_ptr<void>;
Transform MakeTransform(const Profile& from, cmsUInt32Number in, const Profile& to,
                        cmsUInt32Number out, cmsUInt32Number flags = 0) {
  if (!from || !to) return nullptr;
  // Without its one-pixel cache a transform may be used by several threads at once.
  cmsHTRANSFORM made = cmsCreateTransform(from.get(), in, to.get(), out, INTENT_PERCEPTUAL,
                                          flags | cmsFLAGS_NOCACHE);
  return made ? Transform(made, cmsDeleteTransform) : nullptr;
}

/// a* and b* count from 128 in the library, from 0 with a sign in TIFF.
void FlipChromaSigns(std::uint8_t* lab, int width) {
  for (int x = 0; x < width; ++x, lab += 3) {
    lab[1] ^= 0x80;
    lab[2] ^= 0x80;
  }
}

Transform TransformFor(QImage::Format format, ByteView profile) {
  switch (format) {
    case QImage::Format_Grayscale8:
      return MakeTransform(OpenProfile(profile, cmsSigGrayData), TYPE_GRAY_8, SrgbGray(),
                           TYPE_GRAY_8);
    case QImage::Format_Grayscale16:
      return MakeTransform(OpenProfile(profile, cmsSigGrayData), TYPE_GRAY_16, SrgbGray(),
                           TYPE_GRAY_16);
    default:
      break;
  }
  const Profile from = OpenProfile(profile, cmsSigRgbData);
  if (!from || IsSrgb(from.get())) return nullptr;
  const bool deep = format == QImage::Format_RGBX64 || format == QImage::Format_RGBA64;
  const cmsUInt32Number layout = deep ? TYPE_RGBA_16 : TYPE_BGRA_8;
  return MakeTransform(from, layout, Profile(cmsCreate_sRGBProfile()), layout, cmsFLAGS_COPY_ALPHA);
}

}  // namespace

QImage ToSrgb(QImage picture, ByteView profile) {
  if (picture.isNull() || profile.empty()) return picture;
  const Transform transform = TransformFor(picture.format(), profile);
  if (!transform) return picture;
  for (int y = 0; y < picture.height(); ++y) {
    uchar* line = picture.scanLine(y);
    cmsDoTransform(transform.get(), line, line, static_cast<cmsUInt32Number>(picture.width()));
  }
  return picture;
}

bool DescribesGray(ByteView profile) {
  return OpenProfile(profile, cmsSigGrayData) != nullptr;
}

bool DescribesRgb(ByteView profile) {
  return OpenProfile(profile, cmsSigRgbData) != nullptr;
}

QByteArray SrgbProfile() {
  const Profile profile(cmsCreate_sRGBProfile());
  cmsUInt32Number size = 0;
  if (!profile || !cmsSaveProfileToMem(profile.get(), nullptr, &size)) return {};
  QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
  if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &size)) return {};
  return bytes;
}

CmykConverter::CmykConverter(ByteView profile) {
  if (profile.empty()) return;
  transform_ = MakeTransform(OpenProfile(profile, cmsSigCmykData), TYPE_CMYK_8,
                             Profile(cmsCreate_sRGBProfile()), TYPE_RGB_8);
}

void CmykConverter::ConvertRow(const std::uint8_t* cmyk, std::uint8_t* rgb, int width) const {
  if (transform_) {
    cmsDoTransform(transform_.get(), cmyk, rgb, static_cast<cmsUInt32Number>(width));
    return;
  }
  for (int x = 0; x < width; ++x, cmyk += 4, rgb += 3) {
    for (int c = 0; c < 3; ++c) {
      rgb[c] = static_cast<std::uint8_t>(((255 - cmyk[c]) * (255 - cmyk[3]) + 127) / 255);
    }
  }
}

LabWriter::LabWriter()
    : transform_(MakeTransform(Profile(cmsCreate_sRGBProfile()), TYPE_RGBA_8,
                               Profile(cmsCreateLab4Profile(nullptr)), TYPE_Lab_8)) {}

void LabWriter::ConvertRow(const std::uint8_t* rgbx, std::uint8_t* lab, int width) const {
  if (!transform_) return;
  cmsDoTransform(transform_.get(), rgbx, lab, static_cast<cmsUInt32Number>(width));
  FlipChromaSigns(lab, width);
}

LabReader::LabReader()
    : transform_(MakeTransform(Profile(cmsCreateLab4Profile(nullptr)), TYPE_Lab_8,
                               Profile(cmsCreate_sRGBProfile()), TYPE_RGB_8)) {}

void LabReader::ConvertRow(std::uint8_t* lab, std::uint8_t* rgb, int width) const {
  if (!transform_) return;
  FlipChromaSigns(lab, width);
  cmsDoTransform(transform_.get(), lab, rgb, static_cast<cmsUInt32Number>(width));
}

}  // namespace zqm
