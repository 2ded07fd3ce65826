// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/previews_dialog.h"

#include <QComboBox>

#include "imaging/effects/bump_map.h"
#include "imaging/effects/lens.h"
#include "imaging/effects/morph.h"
#include "imaging/effects/wave.h"
#include "imaging/ui/change_dialog.h"
#include "imaging/ui/change_page.h"
#include "imaging/ui/user_filter_page.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

int Shorter(const QSize& size) {
  return std::min(size.width(), size.height());
}

class BumpMapPage : public ChangePage {
 public:
  explicit BumpMapPage(const QImage& picture) {
    depth_ = AddSlider({tr("&Depth:"), "depth", 0, 100, 40, u"%"_s});
    direction_ = AddSlider({tr("&Light from:"), "direction", 0, 360, 135, u"°"_s});
    elevation_ = AddSlider({tr("&Height of the light:"), "elevation", 5, 90, 45, u"°"_s});
    softness_ = AddSlider({tr("&Softness:"), "softness", 0, 50,
                           std::clamp(Shorter(picture.size()) / 300, 2, 50), u"px"_s});
  }
  PartChange Change() const override {
    const BumpMapSettings settings = Settings();
    if (settings.depth == 0) return {};
    return [settings](const QImage& picture, const PartView& view) {
      return BumpMap(picture, settings, view.scale);
    };
  }
  int Reach() const override { return 2 + 2 * softness_->Value(); }

 private:
  BumpMapSettings Settings() const {
    return {static_cast<double>(depth_->Value()), static_cast<double>(direction_->Value()),
            static_cast<double>(elevation_->Value()), static_cast<double>(softness_->Value())};
  }
  SliderRow *depth_, *direction_, *elevation_, *softness_;
};

class LensPage : public ChangePage {
 public:
  explicit LensPage(const QImage& picture) : size_(picture.size()) {
    strength_ = AddSlider({tr("&Strength:"), "strength", -100, 100, 60, u"%"_s});
    diameter_ = AddSlider({tr("&Diameter:"), "diameter", 1, 300, 90, u"%"_s});
    across_ = AddSlider({tr("A&cross:"), "across", 0, 100, 50, u"%"_s});
    down_ = AddSlider({tr("D&own:"), "down", 0, 100, 50, u"%"_s});
    setToolTip(tr("Click into the picture before to place the lens"));
  }
  PartChange Change() const override {
    const LensSettings settings = Settings();
    if (settings.strength == 0) return {};
    return [settings](const QImage& picture, const PartView& view) {
      return Lens(picture, settings, view);
    };
  }
  int Reach() const override { return LensReach(Settings(), size_) + 4; }
  void PixelClicked(const QPoint& pixel) override {
    across_->SetValue(qRound(100.0 * pixel.x() / std::max(1, size_.width() - 1)));
    down_->SetValue(qRound(100.0 * pixel.y() / std::max(1, size_.height() - 1)));
  }

 private:
  LensSettings Settings() const {
    return {{across_->Value() / 100.0, down_->Value() / 100.0},
            static_cast<double>(diameter_->Value()),
            static_cast<double>(strength_->Value())};
  }
  QSize size_;
  SliderRow *strength_, *diameter_, *across_, *down_;
};

class WavePage : public ChangePage {
 public:
  explicit WavePage(const QImage& picture) {
    // Waves that can be seen, whatever the picture's size.
    const int shorter = Shorter(picture.size());
    amplitude_ = AddSlider({tr("&Height:"), "amplitude", 0, std::clamp(shorter / 8, 10, 1000),
                            std::clamp(shorter / 80, 1, 1000), u"px"_s});
    length_ = AddSlider({tr("&Length:"), "length", 2, std::clamp(shorter, 20, 10'000),
                         std::clamp(shorter / 8, 10, 10'000), u"px"_s});
    phase_ = AddSlider({tr("&Phase:"), "phase", 0, 360, 0, u"°"_s});
    direction_ = AddChoice(tr("&Direction:"), "cmbdirection",
                           {tr("Sideways"), tr("Up and down"), tr("Both")});
  }
  PartChange Change() const override {
    const WaveSettings settings{static_cast<double>(amplitude_->Value()),
                                static_cast<double>(length_->Value()),
                                static_cast<double>(phase_->Value()),
                                static_cast<WaveDirection>(direction_->currentIndex())};
    if (settings.amplitude == 0) return {};
    return [settings](const QImage& picture, const PartView& view) {
      return Wave(picture, settings, view);
    };
  }
  int Reach() const override { return amplitude_->Value() + 4; }

 private:
  SliderRow *amplitude_, *length_, *phase_;
  QComboBox* direction_;
};

class MorphPage : public ChangePage {
 public:
  explicit MorphPage(const QImage& picture) {
    QStringList names;
    for (const MorphOperationName& row : MorphOperationNames())
      names.append(row.name.toString());
    operation_ = AddChoice(tr("&Filter:"), "cmboperation", names);
    radius_ = AddSlider({tr("Rad&ius:"), "radius", 0, 50,
                         std::clamp(Shorter(picture.size()) / 200, 2, 50), u"px"_s});
    shape_ = AddChoice(tr("&Shape:"), "cmbshape", {tr("Round"), tr("Square")});
    setFocusProxy(operation_);
  }
  PartChange Change() const override {
    const MorphSettings settings{
        MorphOperationNames()[static_cast<std::size_t>(operation_->currentIndex())].operation,
        radius_->Value(), shape_->currentIndex() == 0};
    if (settings.radius == 0) return {};
    return [settings](const QImage& picture, const PartView& view) {
      return Morph(picture, settings, view.scale);
    };
  }
  int Reach() const override { return 2 * radius_->Value() + 2; }

 private:
  QComboBox *operation_, *shape_;
  SliderRow* radius_;
};

template <class Page>
ChangePage* Make(const QImage& picture) {
  return new Page(picture);
}

struct PageRow {
  QStringView name;
  QStringView caption;
  ChangePage* (*make)(const QImage& picture);
};

constexpr PageRow kPages[] = {
    {u"UserFilt", u"User Filter", [](const QImage&) -> ChangePage* { return new UserFilterPage; }},
    {u"BumpMap", u"Bump Map", Make<BumpMapPage>},
    {u"Lens", u"Lens", Make<LensPage>},
    {u"Wave", u"Wave", Make<WavePage>},
    {u"Morph", u"Morphing Filters", Make<MorphPage>},
};

}  // namespace

QStringList PreviewPages() {
  QStringList names;
  for (const PageRow& row : kPages)
    names.append(row.name.toString());
  return names;
}

std::unique_ptr<ChangeDialog> MakePreviewsDialog(const QImage& picture, QStringView page,
                                                 QWidget* parent) {
  const auto* row = std::ranges::find(kPages, page, &PageRow::name);
  if (row == std::end(kPages) || picture.isNull()) return nullptr;
  auto dialog =
      std::make_unique<ChangeDialog>(picture, row->caption.toString(), row->make(picture), parent);
  dialog->setObjectName(u"PreviewsDialog"_s);
  return dialog;
}

std::optional<PictureChange> PreviewsDialog(const QImage& picture, QStringView page,
                                            QWidget* parent) {
  const std::unique_ptr<ChangeDialog> dialog = MakePreviewsDialog(picture, page, parent);
  return dialog ? dialog->Ask() : std::nullopt;
}

}  // namespace zqm
