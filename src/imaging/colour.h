// SPDX-License-Identifier: GPL-3.0-or-later
// Colour management: embedded profiles to sRGB, and CMYK with or without one.
#pragma once

#include <QByteArray>
#include <QImage>
#include <cstdint>
#include <memory>

#include "imaging/codec.h"

namespace zqm {

/// The picture in sRGB. It comes back unchanged where the profile is broken, describes another kind
/// of pixels (a gray profile on RGB), or is sRGB already. Gray stays gray, with the tone of sRGB.
/// `picture` has a format that codecs give.
QImage ToSrgb(QImage picture, ByteView profile);

/// Whether a profile is one of gray pixels, or of RGB ones.
bool DescribesGray(ByteView profile);
bool DescribesRgb(ByteView profile);

/// The profile of sRGB.
QByteArray SrgbProfile();

/// Rows of CMYK (8 bits, 255 is full ink) to RGB by a profile, or, without a usable one, by the
/// plain formula (255 - ink) * (255 - black) / 255.
class CmykConverter {
 public:
  explicit CmykConverter(ByteView profile = {});

  /// `rgb` takes three bytes a pixel.
  void ConvertRow(const std::uint8_t* cmyk, std::uint8_t* rgb, int width) const;

 private:
  std::shared_ptr<void> transform_;
};

/// The way back from what `LabWriter` writes, to three bytes of sRGB a pixel.
class LabReader {
 public:
  LabReader();

  /// Changes `lab` on the way.
  void ConvertRow(std::uint8_t* lab, std::uint8_t* rgb, int width) const;

 private:
  std::shared_ptr<void> transform_;
};

/// Rows of sRGB to CIE L*a*b* of D50 as TIFF stores it in bytes: L* from 0 to 255, a* and b*
/// signed.
class LabWriter {
 public:
  LabWriter();

  /// `rgbx` has four bytes a pixel, `lab` takes three.
  void ConvertRow(const std::uint8_t* rgbx, std::uint8_t* lab, int width) const;

 private:
  std::shared_ptr<void> transform_;
};

}  // namespace zqm
