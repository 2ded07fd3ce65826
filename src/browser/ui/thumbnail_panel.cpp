// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/thumbnail_panel.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include "browser/ui/main_actions.h"
#include "imaging/ui/image_multi_x.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kSmallest = 80, kLargest = 320, kUsual = 140;
constexpr int kSliderWidth = 120;
constexpr int kBelowText = 32;  // from the list's middle to the button under its text
}  // namespace

ThumbnailPanel::ThumbnailPanel(ThumbnailList& list, const MainActions& actions, QWidget* parent)
    : QWidget(parent),
      counter_(new QLabel),
      size_(new QSlider(Qt::Horizontal)),
      view_(new ImageMultiX),
      importButton_(new QPushButton(tr("Catalog Folders…"), view_)) {
  setObjectName(u"panel"_s);
  counter_->setObjectName(u"lblcounter"_s);
  view_->setObjectName(u"ImageMultiX1"_s);
  view_->setAccessibleName(tr("Thumbnails"));
  view_->SetList(&list);

  auto* sort = new QToolButton;
  sort->setText(tr("Sort"));
  sort->setIcon(look::Icon("view-sort"));
  sort->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  sort->setPopupMode(QToolButton::InstantPopup);
  sort->setMinimumHeight(look::kControlHeight);
  auto* orders = new QMenu(sort);
  orders->addAction(actions.Get(Command::SortByName));
  orders->addAction(actions.Get(Command::SortByFlag));
  sort->setMenu(orders);

  size_->setRange(kSmallest, kLargest);
  size_->setValue(kUsual);
  size_->setFixedWidth(kSliderWidth);
  size_->setToolTip(tr("Size of the thumbnails"));
  size_->setAccessibleName(tr("Size of the thumbnails"));
  connect(size_, &QSlider::valueChanged, view_, &ImageMultiX::SetThumbnailSize);
  connect(view_, &ImageMultiX::ThumbnailSizeChanged, size_, &QSlider::setValue);
  view_->SetThumbnailSize(kUsual);

  auto* header = new QHBoxLayout;
  header->setContentsMargins(look::kSpace12, look::kSpace4, look::kSpace12, look::kSpace4);
  header->setSpacing(look::kSpace12);
  header->addWidget(counter_);
  header->addStretch();
  header->addWidget(sort);
  header->addWidget(size_);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, 0);
  column->addLayout(header);
  column->addWidget(view_, 1);

  look::MakePrimary(importButton_);
  importButton_->setDefault(false);
  importButton_->setObjectName(u"cmdemptyimport"_s);
  importButton_->hide();
  connect(importButton_, &QPushButton::clicked, this, &ThumbnailPanel::ImportWanted);
}

void ThumbnailPanel::SetCounter(const QString& text) {
  counter_->setText(text);
}

void ThumbnailPanel::SetRows(ThumbnailRows rows) {
  view_->SetRows(rows == ThumbnailRows::Single ? ImageMultiX::Rows::Single
                                               : ImageMultiX::Rows::Multiple);
}

int ThumbnailPanel::ThumbnailSize() const {
  return size_->value();
}

void ThumbnailPanel::SetThumbnailSize(int pixels) {
  size_->setValue(pixels);
}

void ThumbnailPanel::SetEmptyState(const QString& text, bool offerImport) {
  view_->SetEmptyText(text);
  importButton_->setVisible(offerImport);
  PlaceImportButton();
}

void ThumbnailPanel::PlaceImportButton() {
  importButton_->adjustSize();
  importButton_->move((view_->width() - importButton_->width()) / 2,
                      view_->height() / 2 + kBelowText);
}

void ThumbnailPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceImportButton();
}

}  // namespace zqm
