// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmformat.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <memory>

#include "batch/convert_settings.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

frmformat::frmformat(BatchPlace place, const PictureSettings& load, const ReadRequest& read,
                     QWidget* parent)
    : PictureDialog(std::move(place), u"Convert File Format"_s, "Label6",
                    {u"Place Converted Files in Source Folder",
                     u"Place Converted Files in the following folder", u"Overwrite existing files:",
                     u"Catalog Converted Files", "Text1", u"Conversion Progress"},
                    read, parent),
      load_(load),
      formats_(new QListWidget),
      settings_(new QStackedWidget) {
  setObjectName(u"frmformat"_s);
  formats_->setObjectName(u"List1"_s);
  formats_->setAccessibleName(QLatin1StringView("Select output format"));
  settings_->addWidget(ComposeHint(tr("Each format has its own.")));
  for (const ConvertFormat& format : ConvertFormats()) {
    if (!format.listed) continue;
    formats_->addItem(QString::fromUtf16(format.caption));
    settings_->addWidget(ComposeSettings(format));
  }
  formats_->setFixedHeight(look::ListHeight(formats_->count()));

  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Heading(u"Select output format"_s), 1);
  head->addWidget(look::Hint(PhotoCount()));
  auto* choice = new QGridLayout;
  look::SetSpace(choice, 0, look::kSpace12);
  choice->addLayout(head, 0, 0);
  choice->addWidget(formats_, 1, 0);
  choice->addWidget(look::Heading(u"File Format Settings"_s), 0, 1);
  choice->addWidget(settings_, 1, 1);
  choice->setColumnStretch(0, 1);
  choice->setColumnStretch(1, 1);
  Body()->addLayout(choice);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  Body()->addLayout(grid);
  AddPlace(grid);
  UpdatePlace();

  CancelButton()->setObjectName(u"Command3"_s);
  QPushButton* convert = AddButton(tr("Con&vert"), "Command4");
  look::MakePrimary(convert);
  connect(convert, &QPushButton::clicked, this,
          [this] { Guarded("frmformat", "Command4_Click", [this] { Command4_Click(); }); });
  connect(formats_, &QListWidget::itemSelectionChanged, this, &frmformat::List1_Click);
  formats_->setFocus();
}

QWidget* frmformat::ComposeSettings(const ConvertFormat& format) {
  auto page = std::make_unique<QWidget>();
  auto* grid = new QGridLayout(page.get());
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  for (const ConvertSetting& setting : ConvertSettings()) {
    if (!Concerns(setting, format.name)) continue;
    const int row = grid->rowCount();
    QWidget* control = Control(setting);
    if (setting.kind == SettingKind::Switch) {
      grid->addWidget(control, row, 0, 1, 2);
      continue;
    }
    QLabel* caption = look::Caption(QString::fromUtf16(setting.caption));
    caption->setBuddy(control);
    grid->addWidget(caption, row, 0);
    grid->addWidget(control, row, 1);
  }
  if (grid->count() == 0) return ComposeHint(tr("This format has none."));
  grid->setRowStretch(grid->rowCount(), 1);
  return page.release();
}

QWidget* frmformat::ComposeHint(const QString& text) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  look::SetSpace(column, 0, 0);
  column->addWidget(look::Hint(text));
  column->addStretch();
  return page;
}

QWidget* frmformat::Control(const ConvertSetting& setting) {
  const QString name = QString::fromUtf16(setting.key);
  if (setting.kind == SettingKind::Switch) {
    auto* box = new QCheckBox(QString::fromUtf16(setting.caption));
    box->setObjectName(name);
    box->setChecked(setting.standard != 0);
    chosen_.push_back({&setting, [box] { return box->isChecked() ? 1 : 0; }});
    return box;
  }
  if (setting.kind == SettingKind::Choice) {
    auto* list = new QComboBox;
    list->setObjectName(name);
    for (const SettingChoice& choice : setting.choices)
      list->addItem(QString::fromUtf16(choice.caption));
    list->setCurrentIndex(setting.standard);
    chosen_.push_back({&setting, [list] { return list->currentIndex(); }});
    return list;
  }
  auto* number = new QSpinBox;
  number->setObjectName(name);
  number->setRange(setting.least, setting.most);
  number->setValue(setting.standard);
  number->setButtonSymbols(QAbstractSpinBox::NoButtons);
  chosen_.push_back({&setting, [number] { return number->value(); }});
  if (setting.kind == SettingKind::Number) return number;
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setObjectName(name + u" slider"_s);
  slider->setAccessibleName(QString::fromUtf16(setting.caption));
  slider->setRange(setting.least, setting.most);
  slider->setValue(setting.standard);
  connect(slider, &QSlider::valueChanged, number, &QSpinBox::setValue);
  connect(number, &QSpinBox::valueChanged, slider, &QSlider::setValue);
  auto* both = new QWidget;
  auto* row = new QHBoxLayout(both);
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(slider, 1);
  row->addWidget(number);
  both->setFocusProxy(number);
  return both;
}

int frmformat::FormatRow() const {
  const auto selected = formats_->selectedItems();
  return selected.isEmpty() ? -1 : formats_->row(selected.first());
}

void frmformat::List1_Click() {
  settings_->setCurrentIndex(FormatRow() + 1);
}

void frmformat::Command4_Click() {
  ConvertOptions options;
  const int row = FormatRow();
  if (row >= 0) options.format = &ConvertFormats()[static_cast<std::size_t>(row)];
  options.besideSource = InOwnPlace();
  options.folder = Folder();
  options.output = Output();
  options.load = load_;
  if (const Outcome valid = CheckConvert(options); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  for (const auto& [setting, value] : chosen_)
    if (Concerns(*setting, options.format->name))
      options.saveKeys.insert_or_assign(QString::fromUtf16(setting->key),
                                        KeyValue(*setting, value()));
  RunPictures(
      convert_text::kConvert, QString::fromUtf16(convert_text::kConverting),
      [&](const PictureRun& run) { return ConvertPhotos(run, Photos(), options); },
      [](const BatchProgress& at) {
        return QString::fromUtf16(convert_text::kConverting) + GetFileName(at.path);
      });
}

}  // namespace zqm
