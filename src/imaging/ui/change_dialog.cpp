// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/change_dialog.h"

#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "imaging/ui/before_after.h"
#include "imaging/ui/change_page.h"
#include "shell/error.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize(900, 650);

}  // namespace

ChangeDialog::ChangeDialog(const QImage& picture, const QString& caption, ChangePage* page,
                           QWidget* parent)
    : QDialog(parent), page_(page), views_(new BeforeAfter(picture)) {
  setWindowTitle(caption);
  setModal(true);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addWidget(views_, 1);
  column->addWidget(page_);
  auto* foot = new DialogFoot(tr("&Apply"));
  auto* reset = new QPushButton(tr("&Reset"));
  reset->setObjectName(u"cmdreset"_s);
  reset->setAutoDefault(false);
  foot->insertWidget(0, reset);
  column->addLayout(foot);
  connect(foot->Ok(), &QPushButton::clicked, this, &QDialog::accept);
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  connect(reset, &QPushButton::clicked, this,
          [this] { Guarded("ChangeDialog", "cmdreset_Click", [this] { page_->Reset(); }); });
  connect(page_, &ChangePage::Changed, this,
          [this] { Guarded("ChangeDialog", "Changed", [this] { UpdatePreview(); }); });
  connect(views_, &BeforeAfter::PixelClicked, this, [this](const QPoint& pixel) {
    Guarded("ChangeDialog", "PixelClicked", [&] { page_->PixelClicked(pixel); });
  });
  connect(views_, &BeforeAfter::ProxyChanged, this,
          [this] { page_->PreviewShown(views_->BeforeProxy(), views_->AfterProxy()); });
  // Controls come first, the pictures after the buttons.
  setTabOrder(foot->Ok(), views_);
  page_->setFocus();
  resize(kSize.boundedTo(screen()->availableSize()));
  UpdatePreview();
}

void ChangeDialog::UpdatePreview() {
  views_->SetChange(page_->Change(), page_->Reach());
}

std::optional<PictureChange> ChangeDialog::Change() const {
  const PartChange change = page_->Change();
  if (result() != Accepted || !change) return std::nullopt;
  return [change](const QImage& picture) { return change(picture, {}); };
}

std::optional<PictureChange> ChangeDialog::Ask() {
  exec();
  return Change();
}

}  // namespace zqm
