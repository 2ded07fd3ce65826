// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmrename.h"

#include <QAbstractTableModel>
#include <QButtonGroup>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/text.h"
#include "shell/ui/look.h"
#include "shell/ui/path_delegate.h"

using namespace Qt::StringLiterals;

namespace zqm {

/// Each photo's name and the one that it is to have.
class NamesModel : public QAbstractTableModel {
 public:
  NamesModel(const QStringList& photos, QObject* parent) : QAbstractTableModel(parent) {
    for (const QString& path : photos)
      names_.append(GetFileName(path));
    newNames_ = names_;
  }
  const QStringList& NewNames() const { return newNames_; }
  void SetNewNames(const QStringList& names) {
    newNames_ = names;
    if (!names_.isEmpty())
      Q_EMIT dataChanged(index(0, 1), index(static_cast<int>(names_.size()) - 1, 1));
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(names_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : 2;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    return (index.column() == 0 ? names_ : newNames_).at(index.row());
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return section == 0 ? u"Current Name"_s : u"New Name"_s;
  }

 private:
  QStringList names_, newNames_;
};

namespace {

constexpr QSize kSize{640, 600};

QTableView* MakePreview(QAbstractItemModel* model) {
  auto* table = new QTableView;
  table->setObjectName(u"ListView1"_s);
  table->setAccessibleName(QLatin1StringView("Rename Preview"));
  table->setModel(model);
  table->setItemDelegate(new PathDelegate(PathDelegate::Folders::Hidden, table));
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->verticalHeader()->hide();
  table->verticalHeader()->setDefaultSectionSize(look::kRowHeight);
  table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table->horizontalHeader()->setHighlightSections(false);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  return table;
}

}  // namespace

frmrename::frmrename(BatchPlace place, QWidget* parent)
    : BatchDialog(std::move(place), u"Rename Images"_s, "Label4", parent),
      modes_(new QButtonGroup(this)),
      names_(new NamesModel(Photos(), this)) {
  setObjectName(u"frmrename"_s);
  Body()->addLayout(ComposeModes());
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Heading(tr("Rename Preview")), 1);
  head->addWidget(look::Hint(PhotoCount()));
  Body()->addLayout(head);
  Body()->addWidget(MakePreview(names_), 1);

  CancelButton()->setObjectName(u"Command2"_s);
  QPushButton* rename = AddButton(tr("&Rename Files"), "Command1");
  look::MakePrimary(rename);
  connect(rename, &QPushButton::clicked, this,
          [this] { Guarded("frmrename", "Command1_Click", [this] { Command1_Click(); }); });

  customText_->setText(DefaultCustomText(QDate::currentDate()));
  startNumber_->setText(u"1"_s);
  connect(modes_, &QButtonGroup::idToggled, this, [this](int, bool on) {
    if (on) Option_Click();
  });
  connect(customText_, &QLineEdit::textChanged, this, &frmrename::Text1_Change);
  connect(startNumber_, &QLineEdit::textChanged, this, &frmrename::Text2_Change);
  connect(searchFor_, &QLineEdit::textChanged, this, &frmrename::Rebuild);
  connect(replaceBy_, &QLineEdit::textChanged, this, [this] {
    if (!searchFor_->text().isEmpty()) Rebuild();
  });
  connect(newName_, &QLineEdit::textChanged, this, &frmrename::Rebuild);
  resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
  Option_Click();
  customText_->setFocus();
  customText_->selectAll();
}

QLayout* frmrename::ComposeModes() {
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnMinimumWidth(0, look::kSpace16);
  grid->setColumnStretch(2, 1);
  AddOption(grid, RenameMode::Sequential, u"Sequential Rename"_s, "Option1");
  customText_ = AddField(grid, RenameMode::Sequential, u"Custom Text :"_s, "Text1");
  startNumber_ = AddField(grid, RenameMode::Sequential, u"Start Number :"_s, "Text2");
  AddOption(grid, RenameMode::SearchAndReplace, u"Search and Replace"_s, "Option2");
  searchFor_ = AddField(grid, RenameMode::SearchAndReplace, u"Search for :"_s, "Text3");
  replaceBy_ = AddField(grid, RenameMode::SearchAndReplace, u"Replace by :"_s, "Text4");
  AddOption(grid, RenameMode::SingleFile, u"Single File Rename (For single image only)"_s,
            "Option3");
  newName_ = AddField(grid, RenameMode::SingleFile, tr("New Name :"), "Text10");
  modes_->button(static_cast<int>(RenameMode::Sequential))->setChecked(true);
  if (Photos().size() > 1) {
    modes_->button(static_cast<int>(RenameMode::SingleFile))->hide();
    for (const auto& [mode, field] : fields_)
      if (mode == RenameMode::SingleFile) field->hide();
  } else if (Photos().size() == 1) {
    newName_->setText(GetBaseName(Photos().first()));
  }
  return grid;
}

void frmrename::AddOption(QGridLayout* grid, RenameMode mode, const QString& caption,
                          const char* name) {
  auto* option = new QRadioButton(caption);
  option->setObjectName(QString::fromLatin1(name));
  modes_->addButton(option, static_cast<int>(mode));
  grid->addWidget(option, grid->rowCount(), 0, 1, 3);
}

QLineEdit* frmrename::AddField(QGridLayout* grid, RenameMode mode, const QString& caption,
                               const char* name) {
  auto* edit = new QLineEdit;
  edit->setObjectName(QString::fromLatin1(name));
  QLabel* label = look::Caption(caption);
  label->setBuddy(edit);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 1);
  grid->addWidget(edit, row, 2);
  fields_.emplace_back(mode, label);
  fields_.emplace_back(mode, edit);
  return edit;
}

RenameMode frmrename::Mode() const {
  return static_cast<RenameMode>(modes_->checkedId());
}

RenameOptions frmrename::Options() const {
  return {Mode(),
          customText_->text(),
          startNumber_->text(),
          searchFor_->text(),
          replaceBy_->text(),
          newName_->text()};
}

void frmrename::Option_Click() {
  for (const auto& [mode, field] : fields_)
    field->setEnabled(mode == Mode());
  Rebuild();
}

void frmrename::Text1_Change() {
  if (startNumber_->text().isEmpty()) startNumber_->setText(u"1"_s);
  Rebuild();
}

void frmrename::Text2_Change() {
  if (IsNumeric(startNumber_->text())) Rebuild();
}

void frmrename::Rebuild() {
  names_->SetNewNames(RenamePreview(Photos(), Options()));
}

void frmrename::Command1_Click() {
  if (const Outcome valid = CheckRename(Options()); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  const QStringList newNames = names_->NewNames();
  Run(rename_text::kRename, QString::fromUtf16(rename_text::kRunning),
      [&](const BatchObserver& observer) {
        return RenamePhotos(TheCatalogue(), Photos(), newNames, View(), observer);
      });
  // Told after the closing message.
  if (View() != nullptr) View()->Live();
}

}  // namespace zqm
