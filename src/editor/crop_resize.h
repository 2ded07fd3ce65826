// SPDX-License-Identifier: GPL-3.0-or-later
// What is typed in the crop and resize panels.
#pragma once

#include <QSize>
#include <QString>

#include "imaging/resample.h"
#include "shell/result.h"

namespace zqm {

/// What a selection is held to.
struct CropLimits {
  double aspect = -1;                  ///< width by height; -1 is free
  double maxWidth = 0, maxHeight = 0;  ///< pixels; 0 is without limit
};

/// Free unless both boxes hold a number above 0.
CropLimits ReadCropLimits(const QString& width, const QString& height);

/// The other side of a picture that keeps its aspect: of `typed` pixels along a side that has
/// `side` of them now, beside one of `other`. "" when nothing or no number is typed.
QString TwinSide(const QString& typed, int side, int other);

struct EditorResize {
  QSize size;   ///< pixels
  QString dpi;  ///< whole dots per inch, for `DPIX` and `DPIY`
};

/// "Invalid Width.", "Invalid Height.", "Invalid DPI Value.", in the order of the checks.
Result<EditorResize> ReadResize(const QString& width, const QString& height, const QString& dpi);

/// The resize panel's filters in the order of its list: the place in the list is the number that is
/// passed on.
inline constexpr const char16_t* kEditorFilters[] = {u"Fast linear", u"Bilinear", u"Bicubic"};
inline constexpr int kEditorFilterCount = 3;
inline ResampleFilter EditorFilter(int place) {
  return static_cast<ResampleFilter>(place);
}

/// Which keys a box takes beside those that edit it.
enum class TypedNumber { Digits, Decimal };
bool TakesKey(TypedNumber number, QChar key);

}  // namespace zqm
