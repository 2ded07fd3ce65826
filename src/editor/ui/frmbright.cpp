// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmbright.h"

#include "imaging/tonal.h"
#include "imaging/ui/change_page.h"
#include "imaging/ui/histogram_view.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class BrightPage : public ChangePage {
 public:
  BrightPage() : levels_(new HistogramView) {
    brightness_ = AddSlider({tr("&Brightness:"), "brightness", -100, 100, 0, u"%"_s});
    contrast_ = AddSlider({tr("C&ontrast:"), "contrast", -100, 100, 0, u"%"_s});
    AddAside(levels_);
  }
  PartChange Change() const override {
    const int brightness = brightness_->Value(), contrast = contrast_->Value();
    if (brightness == 0 && contrast == 0) return {};
    return [=](const QImage& picture, const PartView&) {
      return AdjustBrightnessContrastSaturation(picture, brightness, contrast, 0);
    };
  }
  void PreviewShown(const QImage& before, const QImage& after) override {
    levels_->Show(HistogramOf(before), HistogramOf(after));
  }

 private:
  SliderRow *brightness_, *contrast_;
  HistogramView* levels_;
};

}  // namespace

frmbright::frmbright(const QImage& picture, QWidget* parent)
    : ChangeDialog(picture, u"Brightness/Contrast"_s, new BrightPage, parent) {
  setObjectName(u"frmbright"_s);
}

}  // namespace zqm
