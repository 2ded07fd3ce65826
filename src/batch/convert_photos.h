// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <span>

#include "batch/picture_work.h"

namespace zqm {

/// A format that photos can be converted into.
struct ConvertFormat {
  const char16_t* name;       ///< "JPG"
  const char16_t* caption;    ///< as the list shows it
  const char16_t* extension;  ///< without "."
  bool keepsAlpha;
  bool listed;  ///< whether the list of the window offers it
};
std::span<const ConvertFormat> ConvertFormats();
/// By name, letter case ignored; nullptr for an unknown one.
const ConvertFormat* FindConvertFormat(QStringView name);

struct ConvertOptions {
  const ConvertFormat* format = nullptr;
  bool besideSource = true;
  QString folder;  ///< where the files go otherwise
  /// Save keys and their numbers as text ("JPEG_QUALITY", "80"). What makes a picture gray by its
  /// number ("JPEG_COLORSPACE" 1, …) does so.
  std::map<QString, QString> saveKeys;
  OutputOptions output;
  PictureSettings load;
};

/// "Select output format.", "Please select destination folder.", or nothing to say.
Outcome CheckConvert(const ConvertOptions& options);

/// Encodes each photo anew in the format, beside it or in the folder, under its base name. Rows of
/// files that are written over go; new ones come when wanted. Reasons: "File is offline or
/// missing", "File already exists in destination folder", "File has several pages and cannot be
/// changed" for one that would be written over itself. A photo that can't be loaded, saved or
/// replaced is told apart.
PictureResult ConvertPhotos(const PictureRun& run, const QStringList& paths,
                            const ConvertOptions& options);

namespace convert_text {
inline constexpr BatchTexts kConvert = {
    u"Converting", u"The following images could not be converted to the specified format:",
    u"File format conversion completed."};
inline constexpr char16_t kNoFormat[] = u"Select output format.";
inline constexpr char16_t kNoFolder[] = u"Please select destination folder.";
inline constexpr char16_t kConverting[] = u"Converting ";
}  // namespace convert_text

}  // namespace zqm
