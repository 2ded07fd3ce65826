// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmsharpen.h"

#include <cmath>

#include "imaging/effects/blur.h"
#include "imaging/effects/noise.h"
#include "imaging/tonal.h"
#include "imaging/ui/change_page.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Noise goes first, or it would be sharpened.
class SharpenPage : public ChangePage {
 public:
  SharpenPage() {
    sharpen_ = AddSlider({tr("&Sharpen:"), "sharpen", 0, 100, 0, u"%"_s});
    width_ = AddSlider({tr("&Width:"), "width", 1, 25, 1, u"px"_s});
    blur_ = AddSlider({tr("&Blur:"), "blur", 0, static_cast<int>(kMostBlur), 0, u"px"_s});
    grain_ = AddSlider({tr("&Noise:"), "noise", 0, 100, 0, u"%"_s});
    colour_ = AddSlider({tr("&Colour noise:"), "colournoise", 0, 100, 0, u"%"_s});
  }
  PartChange Change() const override {
    const int sharpen = sharpen_->Value(), neighbourhood = 2 * width_->Value() + 1;
    const int blur = blur_->Value(), grain = grain_->Value(), colour = colour_->Value();
    if (sharpen == 0 && blur == 0 && grain == 0 && colour == 0) return {};
    return [=](const QImage& picture, const PartView& view) {
      const QImage even = ReduceNoise(picture, grain, colour, view.scale);
      return Sharpen(Blur(even, blur, view.scale), sharpen, neighbourhood, view.scale);
    };
  }
  int Reach() const override {
    constexpr int kNoise = 8;
    return width_->Value() + 2 * blur_->Value() + kNoise;
  }

 private:
  SliderRow *sharpen_, *width_, *blur_, *grain_, *colour_;
};

}  // namespace

frmsharpen::frmsharpen(const QImage& picture, QWidget* parent)
    : ChangeDialog(picture, u"Sharpen / Noise"_s, new SharpenPage, parent) {
  setObjectName(u"frmsharpen"_s);
}

}  // namespace zqm
