// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmcolorcast.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "imaging/effects/colour_balance.h"
#include "imaging/ui/change_page.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class CastPage : public ChangePage {
 public:
  explicit CastPage(const QImage& picture) : picture_(picture), swatch_(new QLabel) {
    temperature_ = AddSlider({tr("&Temperature:"), "temperature", -100, 100, 0, u"%"_s});
    tint_ = AddSlider({tr("T&int:"), "tint", -100, 100, 0, u"%"_s});
    ComposeNeutral();
    ShowNeutral();
  }

  PartChange Change() const override {
    const ColourBalance balance{neutral_, static_cast<double>(temperature_->Value()),
                                static_cast<double>(tint_->Value())};
    if (balance.IsNeutral()) return {};
    return [balance](const QImage& picture, const PartView&) {
      return BalanceColours(picture, balance);
    };
  }
  void Reset() override {
    neutral_.reset();
    ShowNeutral();
    ChangePage::Reset();
    Q_EMIT Changed();
  }
  void PixelClicked(const QPoint& pixel) override {
    constexpr int kNeighbours = 2;  // so that grain doesn't decide
    if (const auto colour = MeanAround(picture_, pixel, kNeighbours)) SetNeutral(colour);
  }
  void PreviewShown(const QImage& before, const QImage&) override {
    if (before.cacheKey() == meanOf_) return;
    meanOf_ = before.cacheKey();
    mean_ = MeanAround(before, before.rect().center(), std::max(before.width(), before.height()));
  }

 private:
  void ComposeNeutral() {
    swatch_->setObjectName(u"lblneutral"_s);
    swatch_->setFixedSize(look::kControlHeight, look::kControlHeight);
    auto* automatic = Button(tr("A&utomatic"), "cmdautomatic");
    automatic->setToolTip(tr("Takes the colours of the whole picture for gray on the average"));
    clear_ = Button(tr("C&lear"), "cmdclear");
    connect(automatic, &QPushButton::clicked, this, [this] { SetNeutral(mean_); });
    connect(clear_, &QPushButton::clicked, this, [this] { SetNeutral(std::nullopt); });
    auto* row = new QHBoxLayout;
    look::SetSpace(row, 0, look::kSpace8);
    row->addWidget(swatch_);
    row->addWidget(look::Hint(tr("Click what should be gray in the picture before.")), 1);
    row->addWidget(automatic);
    row->addWidget(clear_);
    const int at = Grid()->rowCount();
    Grid()->addWidget(look::Caption(tr("Neutral point:")), at, 0);
    Grid()->addLayout(row, at, 1, 1, 2);
  }
  static QPushButton* Button(const QString& caption, const char* name) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
  }
  void SetNeutral(const std::optional<QColor>& neutral) {
    neutral_ = neutral;
    ShowNeutral();
    Q_EMIT Changed();
  }
  void ShowNeutral() {
    QPixmap filled(swatch_->size());
    filled.fill(neutral_ ? *neutral_ : QColor(look::kRaised));
    swatch_->setPixmap(filled);
    swatch_->setToolTip(neutral_ ? neutral_->name() : tr("None chosen"));
    clear_->setEnabled(neutral_.has_value());
    clear_->setToolTip(neutral_ ? QString() : tr("None chosen"));
  }

  QImage picture_;
  std::optional<QColor> neutral_, mean_;
  qint64 meanOf_ = 0;  // the picture that the mean is of
  SliderRow *temperature_, *tint_;
  QLabel* swatch_;
  QPushButton* clear_ = nullptr;
};

}  // namespace

frmcolorcast::frmcolorcast(const QImage& picture, QWidget* parent)
    : ChangeDialog(picture, u"Color"_s, new CastPage(picture), parent) {
  setObjectName(u"frmcolorcast"_s);
}

}  // namespace zqm
