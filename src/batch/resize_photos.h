// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "batch/picture_work.h"
#include "imaging/resample.h"

namespace zqm {

/// The inputs of a resize as they are typed.
struct ResizeOptions {
  QString width = QStringLiteral("200"), height = QStringLiteral("200");  ///< pixels
  bool autoWidth = false, autoHeight = false;  ///< follows the other by the aspect; at most one
  QString dpi = QStringLiteral("72");
  ResampleFilter filter = ResampleFilter::FastLinear;
  int sharpen = 0;      ///< 0 to 100
  bool inPlace = true;  ///< over the photos themselves; else into the folder
  QString folder;
  OutputOptions output;
  PictureSettings load;
};

/// "Invalid Height.", "Invalid Width.", "Invalid DPI Value.", "Please select destination folder.",
/// in the order of the checks, or nothing to say.
Outcome CheckResize(const ResizeOptions& options);

/// Resamples, sets the density, sharpens and saves each photo at the best quality of its format,
/// over itself (its row then follows: thumbnail and everything that is read from the file, not the
/// user's columns) or under its name in the folder. Reasons: "File is offline or missing", "File
/// already exists in destination folder", "File format cannot be written" and "File has several
/// pages and cannot be changed" over itself. What else can't be loaded or saved is told apart.
PictureResult ResizePhotos(const PictureRun& run, const QStringList& paths,
                           const ResizeOptions& options);

/// At least one pixel, and never so many that multiplying them could overflow: too large a picture
/// is refused when it is made.
int WholePixels(double number);

/// Sets the save options at which runs write photos over themselves: uncompressed, or the best
/// quality.
void SetBestQuality(Picture& picture);

namespace resize_text {
inline constexpr BatchTexts kResize = {u"Resizing selected image(s). Please wait...",
                                       u"The following images could not be resized:",
                                       u"Resizing image(s) completed."};
inline constexpr char16_t kInvalidHeight[] = u"Invalid Height.";
inline constexpr char16_t kInvalidWidth[] = u"Invalid Width.";
inline constexpr char16_t kInvalidDpi[] = u"Invalid DPI Value.";
}  // namespace resize_text

}  // namespace zqm
