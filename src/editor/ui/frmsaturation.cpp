// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmsaturation.h"

#include "imaging/tonal.h"
#include "imaging/ui/change_page.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class SaturationPage : public ChangePage {
 public:
  SaturationPage() {
    saturation_ = AddSlider({tr("&Saturation:"), "saturation", -100, 100, 0, u"%"_s});
    hue_ = AddSlider({tr("&Hue:"), "hue", -180, 180, 0, u"°"_s});
    lightness_ = AddSlider({tr("&Lightness:"), "lightness", -100, 100, 0, u"%"_s});
  }
  /// Saturation by the luma, which the eye takes for brightness; the rest in the double cone.
  PartChange Change() const override {
    const int saturation = saturation_->Value(), hue = hue_->Value();
    const int lightness = lightness_->Value();
    if (saturation == 0 && hue == 0 && lightness == 0) return {};
    return [=](const QImage& picture, const PartView&) {
      return AdjustHueSaturationLightness(AdjustSaturation(picture, saturation), hue, 0, lightness);
    };
  }

 private:
  SliderRow *saturation_, *hue_, *lightness_;
};

}  // namespace

frmsaturation::frmsaturation(const QImage& picture, QWidget* parent)
    : ChangeDialog(picture, u"Saturation"_s, new SaturationPage, parent) {
  setObjectName(u"frmsaturation"_s);
}

}  // namespace zqm
