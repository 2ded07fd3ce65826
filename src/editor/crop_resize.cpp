// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/crop_resize.h"

#include "batch/resize_photos.h"
#include "shell/locale_info.h"
#include "shell/text.h"

namespace zqm {
CropLimits ReadCropLimits(const QString& width, const QString& height) {
  const auto across = PositiveNumber(width), down = PositiveNumber(height);
  if (!across || !down) return {};
  return {*across / *down, *across, *down};
}

QString TwinSide(const QString& typed, int side, int other) {
  const auto number = ToNumber(typed);
  if (!number || side <= 0) return QString();
  return PlainText(Round(*number * other / side, 0));
}

Result<EditorResize> ReadResize(const QString& width, const QString& height, const QString& dpi) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  const auto across = PositiveNumber(width), down = PositiveNumber(height),
             dots = PositiveNumber(dpi);
  if (!across) return refuse(resize_text::kInvalidWidth);
  if (!down) return refuse(resize_text::kInvalidHeight);
  if (!dots) return refuse(resize_text::kInvalidDpi);
  return EditorResize{{WholePixels(*across), WholePixels(*down)},
                      QString::number(WholePixels(*dots))};
}

bool TakesKey(TypedNumber number, QChar key) {
  if (key >= u'0' && key <= u'9') return true;
  return number == TypedNumber::Decimal &&
         QString(key) == GetUserLocaleInfo(LocaleInfo::DecimalSeparator);
}

}  // namespace zqm
