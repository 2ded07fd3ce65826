// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/metadata_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "metadata/exif_editor.h"
#include "shell/error.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kWidth = 600;

}  // namespace

MetadataDialog::MetadataDialog(const Names& names, BatchPlace place, QWidget* parent)
    : BatchDialog(std::move(place), QString::fromUtf16(names.caption), "lblprogress", parent),
      names_(names),
      tabs_(new QTabWidget) {
  setObjectName(QString::fromLatin1(names.window));
  tabs_->setObjectName(QString::fromLatin1(names.tabs));
  tabs_->setDocumentMode(true);
  CancelButton()->setObjectName(u"Command2"_s);
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Hint(tr("Only checked fields are written.")), 1);
  head->addWidget(look::Hint(PhotoCount()));
  Body()->addLayout(head);
  Body()->addWidget(tabs_, 1);
  QPushButton* apply = AddButton(tr("&Apply"), "cmdapply");
  look::MakePrimary(apply);
  connect(apply, &QPushButton::clicked, this,
          [this] { Guarded(names_.window, "cmdapply_Click", [this] { cmdapply_Click(); }); });
}

QGridLayout* MetadataDialog::AddPage(const char16_t* caption) {
  auto* page = new QWidget;
  page->setObjectName(u"panel"_s);
  auto* grid = new QGridLayout(page);
  look::SetSpace(grid, look::kSpace12, look::kSpace8);
  grid->setColumnStretch(1, 1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(page);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  tabs_->addTab(scroll, QString::fromUtf16(caption));
  return grid;
}

QCheckBox* MetadataDialog::AddField(QGridLayout* page, int index, const char16_t* caption,
                                    const QString& boxName, QWidget* input, const char* inputName) {
  auto* box = new QCheckBox(QString::fromUtf16(caption));
  box->setObjectName(boxName);
  input->setObjectName(u"%1(%2)"_s.arg(QLatin1StringView(inputName)).arg(index));
  input->setAccessibleName(box->text());
  input->setEnabled(false);
  connect(box, &QCheckBox::toggled, input, &QWidget::setEnabled);
  const int row = page->rowCount();
  page->addWidget(box, row, 0);
  page->addWidget(input, row, 1);
  fields_[index] = {box, input};
  return box;
}

QComboBox* MetadataDialog::MakeList(const QStringList& items) {
  constexpr int kShownCharacters = 24;
  auto* list = new QComboBox;
  list->addItems(items);
  list->setCurrentIndex(-1);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kShownCharacters);
  return list;
}

void MetadataDialog::Finish() {
  int highest = 0;
  for (int i = 0; i < tabs_->count(); ++i) {
    QWidget* page = qobject_cast<QScrollArea*>(tabs_->widget(i))->widget();
    auto* grid = qobject_cast<QGridLayout*>(page->layout());
    grid->setRowStretch(grid->rowCount(), 1);
    page->ensurePolished();
    highest = std::max(highest, grid->sizeHint().height());
  }
  fields_.begin()->second.box->setFocus();
  // As high as the highest page; what stands around the pages is measured without them.
  tabs_->setMaximumHeight(tabs_->tabBar()->sizeHint().height());
  const int around = sizeHint().height() + look::kSpace24;
  tabs_->setMaximumHeight(QWIDGETSIZE_MAX);
  resize(QSize(kWidth, around + highest).boundedTo(screen()->availableSize() * 9 / 10));
}

void MetadataDialog::Fill(const std::map<int, QString>& texts) {
  for (const auto& [index, text] : texts) {
    const auto field = fields_.find(index);
    if (field == fields_.end()) continue;
    if (auto* edit = qobject_cast<QLineEdit*>(field->second.input))
      edit->setText(text);
    else if (auto* list = qobject_cast<QComboBox*>(field->second.input))
      list->setCurrentIndex(list->findText(text));
    else if (auto* time = qobject_cast<QDateTimeEdit*>(field->second.input))
      time->setDateTime(ExifDate(text).value_or(time->dateTime()));
  }
}

QString MetadataDialog::TypedText(int index) const {
  const QWidget* input = fields_.at(index).input;
  if (const auto* edit = qobject_cast<const QLineEdit*>(input)) return edit->text();
  if (const auto* list = qobject_cast<const QComboBox*>(input)) return list->currentText();
  const auto* time = qobject_cast<const QDateTimeEdit*>(input);
  return time != nullptr ? ExifDateText(time->dateTime()) : QString();
}

std::map<int, QString> MetadataDialog::Edit() const {
  std::map<int, QString> edit;
  for (const auto& [index, field] : fields_)
    if (field.box->isChecked()) edit[index] = TypedText(index);
  return edit;
}

void MetadataDialog::cmdapply_Click() {
  const QString writing = u' ' + QString::fromUtf16(names_.texts.wait);
  Run(
      names_.texts, writing, [this](const BatchObserver& observer) { return Write(observer); },
      [&writing](const BatchProgress& at) { return writing + u" %1%"_s.arg(at.Percent()); });
}

}  // namespace zqm
