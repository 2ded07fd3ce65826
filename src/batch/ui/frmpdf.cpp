// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmpdf.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{760, 560};
constexpr int kStandardCompression = 4;

}  // namespace

frmpdf::frmpdf(BatchPlace place, const PictureSettings& load, const QString& startFolder,
               QWidget* parent)
    : BatchDialog(std::move(place), u"Create PDF"_s, "Label6", parent),
      load_(load),
      types_(new QButtonGroup(this)),
      tree_(new FolderTree(FolderTree::Ticks::No)),
      folder_(new QLineEdit) {
  setObjectName(u"frmpdf"_s);
  tree_->setObjectName(u"FolderTreeview1"_s);
  tree_->setAccessibleName(tr("Destination folder"));
  folder_->setObjectName(u"Text1"_s);
  folder_->setReadOnly(true);
  folder_->setPlaceholderText(tr("No folder chosen yet"));
  auto* left = new QVBoxLayout;
  look::SetSpace(left, 0, look::kSpace8);
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Heading(u"Create in:"_s), 1);
  head->addWidget(look::Hint(PhotoCount()));
  left->addLayout(head);
  left->addWidget(tree_, 1);
  left->addWidget(folder_);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  ComposeType(grid);
  ComposeInfo(grid);
  grid->setRowStretch(grid->rowCount(), 1);
  auto* columns = new QHBoxLayout;
  look::SetSpace(columns, 0, look::kSpace16);
  columns->addLayout(left, 1);
  columns->addLayout(grid, 1);
  Body()->addLayout(columns, 1);

  CancelButton()->setObjectName(u"Command2"_s);
  QPushButton* create = AddButton(tr("Create &PDF"), "Command3");
  look::MakePrimary(create);
  connect(create, &QPushButton::clicked, this,
          [this] { Guarded("frmpdf", "Command3_Click", [this] { Command3_Click(); }); });
  connect(types_, &QButtonGroup::idToggled, this, &frmpdf::Option_Click);
  // The tree opens where the photos are; choosing is the user's.
  if (!startFolder.isEmpty()) tree_->SetCurrentFolder(startFolder);
  connect(tree_, &FolderTree::FolderClick, this, [this](const QString& folder) {
    chosen_ = folder;
    folder_->setText(PathIn(folder, QString()));
    folder_->setToolTip(folder_->text());
  });
  resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
  Option_Click();
  tree_->setFocus();
}

void frmpdf::ComposeType(QGridLayout* grid) {
  grid->addWidget(look::Heading(u"PDF Type"_s), 0, 0, 1, 2);
  const auto add = [&](PdfType type, const QString& caption, const char* name) {
    auto* option = new QRadioButton(caption);
    option->setObjectName(QString::fromLatin1(name));
    types_->addButton(option, static_cast<int>(type));
    grid->addWidget(option, grid->rowCount(), 0, 1, 2);
  };
  add(PdfType::OneForEachImage, u"Create one PDF file for each image"_s, "Option3");
  add(PdfType::OneForAllImages, u"Create one PDF file containing all images"_s, "Option4");
  types_->button(static_cast<int>(PdfType::OneForEachImage))->setChecked(true);
  name_ = AddField(grid, u"PDF File Name:"_s, "Text8");
}

void frmpdf::ComposeInfo(QGridLayout* grid) {
  compression_ = AddList(grid, u"Compression:"_s, "Combo2");
  for (const PdfCompressionItem& item : PdfCompressions())
    compression_->addItem(QString::fromUtf16(item.caption));
  compression_->setCurrentIndex(kStandardCompression);
  existing_ = AddList(grid, u"Overwrite existing file"_s, "Combo3");
  existing_->addItems({u"Skip"_s, u"Overwrite"_s});
  title_ = AddField(grid, u"Title:"_s, "Text2");
  author_ = AddField(grid, u"Author:"_s, "Text3");
  subject_ = AddField(grid, u"Subject:"_s, "Text4");
  keywords_ = AddField(grid, u"Keywords:"_s, "Text5");
}

QLineEdit* frmpdf::AddField(QGridLayout* grid, const QString& caption, const char* name) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromLatin1(name));
  QLabel* label = look::Caption(caption);
  label->setBuddy(field);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(field, row, 1);
  return field;
}

QComboBox* frmpdf::AddList(QGridLayout* grid, const QString& caption, const char* name) {
  auto* list = new QComboBox;
  list->setObjectName(QString::fromLatin1(name));
  QLabel* label = look::Caption(caption);
  label->setBuddy(list);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(list, row, 1);
  return list;
}

void frmpdf::Option_Click() {
  name_->setEnabled(Options().type == PdfType::OneForAllImages);
}

PdfOptions frmpdf::Options() const {
  PdfOptions options;
  options.type = PdfType{types_->checkedId()};
  options.folder = chosen_;
  options.name = name_->text();
  options.compression =
      PdfCompressions()[static_cast<std::size_t>(compression_->currentIndex())].compression;
  options.existing =
      existing_->currentIndex() == 1 ? ExistingFiles::Overwrite : ExistingFiles::Skip;
  options.title = title_->text();
  options.author = author_->text();
  options.subject = subject_->text();
  options.keywords = keywords_->text();
  options.load = load_;
  return options;
}

void frmpdf::Command3_Click() {
  const PdfOptions options = Options();
  if (const Outcome valid = CheckPdf(options); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  const BatchTexts& texts = PdfTexts(options.type);
  Run(texts, QString::fromUtf16(texts.wait),
      [&](const BatchObserver& observer) { return CreatePdf(Photos(), options, observer); });
}

}  // namespace zqm
