// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/frmconfigureslideshow.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "imaging/transitions.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/text.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"
#include "shell/window_settings.h"
#include "viewers/slideshow_settings.h"
#include "viewers/ui/slideshow_preview.h"
#include "viewers/ui/viewer_actions.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{920, 500};
constexpr QSize kSmallestPreview{320, 200};
constexpr int kListWidth = 408;
constexpr int kDurationWidth = 72;

constexpr char16_t kKeysKey[] = u"slideshow/keys";

}  // namespace

frmconfigureslideshow::frmconfigureslideshow(QStringList photos, const ReadRequest& request,
                                             const QString& stateFolder, QWidget* parent)
    : QDialog(parent),
      stateFolder_(stateFolder),
      transitions_(new QListWidget),
      preview_(new SlideshowPreview),
      duration_(new QLineEdit),
      keys_(new QCheckBox(tr("Space &pauses, arrow keys step"))),
      upright_(new QCheckBox(tr("Turn photos &upright"))) {
  setObjectName(u"frmconfigureslideshow"_s);
  setWindowTitle(u"Slideshow Settings"_s);
  plan_.photos = std::move(photos);
  plan_.request = request;
  auto* columns = new QHBoxLayout;
  look::SetSpace(columns, 0, look::kSpace16);
  columns->addWidget(ComposeTransitions());
  columns->addLayout(ComposeRest(), 1);
  auto* foot = new DialogFoot(tr("&Start"));
  foot->Ok()->setObjectName(u"Command2"_s);
  foot->Cancel()->setObjectName(u"Command1"_s);
  auto* all = new QVBoxLayout(this);
  look::SetSpace(all, look::kSpace16, look::kSpace16);
  all->addLayout(columns, 1);
  all->addLayout(foot);
  resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
  connect(foot->Ok(), &QPushButton::clicked, this, [this] {
    Guarded("frmconfigureslideshow", "Command2_Click", [this] { Command2_Click(); });
  });
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  connect(transitions_, &QListWidget::currentRowChanged, this, [this] {
    Guarded("frmconfigureslideshow", "List1_Click", [this] { ShowTransition(); });
  });
  Guarded("frmconfigureslideshow", "Form_Load", [this] { LoadSettings(); });
  transitions_->setFocus();
}

QWidget* frmconfigureslideshow::ComposeTransitions() {
  auto* holder = new QWidget;
  holder->setFixedWidth(kListWidth);
  auto* column = new QVBoxLayout(holder);
  look::SetSpace(column, 0, look::kSpace8);
  QLabel* heading = look::Heading(tr("&Transition Type"));
  heading->setBuddy(transitions_);
  column->addWidget(heading);
  transitions_->setObjectName(u"List1"_s);
  transitions_->setAccessibleName(tr("Transition Type"));
  transitions_->setUniformItemSizes(true);
  transitions_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (const Transition& transition : Transitions()) {
    auto* item = new QListWidgetItem(transition.entry, transitions_);
    item->setToolTip(transition.entry);  // in a large font some are longer than the list is wide
  }
  column->addWidget(transitions_, 1);
  return holder;
}

QLayout* frmconfigureslideshow::ComposeRest() {
  auto* column = new QVBoxLayout;
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(look::Heading(tr("Preview")));
  preview_->setObjectName(u"ImageX1"_s);
  preview_->setMinimumSize(kSmallestPreview);
  column->addWidget(preview_, 1);
  column->addSpacing(look::kSpace8);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  QLabel* caption = look::Caption(tr("Slide &Duration :"));
  caption->setBuddy(duration_);
  duration_->setObjectName(u"Text1"_s);
  duration_->setFixedWidth(kDurationWidth);
  row->addWidget(caption);
  row->addWidget(duration_);
  row->addWidget(look::Hint(tr("5 to 60 seconds")), 1);
  column->addLayout(row);
  keys_->setObjectName(u"Check1"_s);
  keys_->setToolTip(tr("While the slideshow runs; the Escape key ends it in any case"));
  column->addWidget(keys_);
  upright_->setObjectName(u"chkupright"_s);
  upright_->setToolTip(tr("By the camera's orientation; full screen and comparison do the same"));
  column->addWidget(upright_);
  return column;
}

void frmconfigureslideshow::LoadSettings() {
  const SlideshowSettings settings = LoadTransition(stateFolder_);
  duration_->setText(settings.duration);
  transitions_->setCurrentRow(settings.transition);
  keys_->setChecked(WindowSettings().value(QString::fromUtf16(kKeysKey), false).toBool());
  upright_->setChecked(ShownUpright());
}

void frmconfigureslideshow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  transitions_->scrollToItem(transitions_->currentItem(), QAbstractItemView::PositionAtCenter);
}

void frmconfigureslideshow::ShowTransition() {
  preview_->SetTransition(transitions_->currentRow());
}

void frmconfigureslideshow::Command2_Click() {
  const auto interval = SlideInterval(duration_->text());
  if (!interval) {
    MsgBox(interval.Reason(), MessageKind::Warning);
    duration_->setFocus();
    duration_->selectAll();
    return;
  }
  plan_.interval = *interval;
  plan_.transition = transitions_->currentRow();
  plan_.keys = keys_->isChecked();
  plan_.upright = upright_->isChecked();
  const Outcome saved =
      SaveTransition(stateFolder_, plan_.transition, *ToNumber(duration_->text()));
  if (!saved) MsgBox(saved.Reason(), MessageKind::Warning);
  WindowSettings().setValue(QString::fromUtf16(kKeysKey), plan_.keys);
  RememberUpright(plan_.upright);
  accept();
}

}  // namespace zqm
