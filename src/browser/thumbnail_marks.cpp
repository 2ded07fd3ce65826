// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/thumbnail_marks.h"

#include <algorithm>

namespace zqm {
namespace {

constexpr char16_t kCatalogued[] = u"Cataloged";
constexpr QRgb kCataloguedColour = qRgb(180, 250, 25);
constexpr QRgb kPlainFrame = qRgb(70, 70, 70);
// Legible on the list's ground, where the frame's own gray would not be.
constexpr QRgb kPlainCaption = qRgb(168, 168, 168);

struct FlagLook {
  const char16_t* flag;
  QRgb frame;
  QRgb caption;
};
constexpr FlagLook kFlagLooks[] = {
    {u"Flagged", qRgb(200, 200, 200), qRgb(200, 200, 200)},
    {u"Rejected", qRgb(255, 0, 0), qRgb(255, 128, 128)},
    {u"Unflagged", kPlainFrame, kPlainCaption},
};

}  // namespace

ThumbnailLook UncataloguedLook() {
  ThumbnailLook look;
  look.frame = kPlainFrame;
  look.caption = kPlainCaption;
  return look;
}

ThumbnailLook CataloguedLook(const QString& flag) {
  ThumbnailLook look = UncataloguedLook();
  look.topText = QString::fromUtf16(kCatalogued);
  look.topColour = kCataloguedColour;
  look.bold = look.underline = true;
  const auto known = std::ranges::find_if(
      kFlagLooks, [&flag](const FlagLook& row) { return flag == QStringView(row.flag); });
  if (known != std::end(kFlagLooks)) {
    look.frame = known->frame;
    look.caption = known->caption;
  }
  return look;
}

}  // namespace zqm
