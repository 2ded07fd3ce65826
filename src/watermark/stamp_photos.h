// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include "batch/picture_work.h"
#include "imaging/vector_objects.h"

namespace zqm {

/// Paints the objects into each photo, at their own pixel positions, and writes it back over itself
/// at the best quality of its format, each file once. What lies beyond a photo's edge is lost. The
/// catalogue isn't
/// touched, and whoever shows the photos isn't told. Reasons: "File is offline or missing", or why
/// a photo can't be loaded or saved; each of them is in the failure list.
PictureResult StampPhotos(const PictureRun& run, const QStringList& paths,
                          const VectorObjects& objects, const PictureSettings& load);

namespace stamp_text {
inline constexpr BatchTexts kStamp = {
    u"Applying watermark to the selected image(s). Please wait...",
    u"The following photos could not be watermarked:", u"Selected images have been watermarked."};
inline constexpr char16_t kNoneApplied[] =
    u"No template has been applied to the image(s).\n"
    u"Select a template from the list and then click on the 'Apply' button.";
}  // namespace stamp_text

}  // namespace zqm
