// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/photo_panel.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include "browser/ui/rating_stars.h"
#include "search/categories.h"
#include "shell/dates.h"
#include "shell/ui/calendar_popup.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kNotesHeight = 96;

struct FlagButton {
  const char16_t* flag;
  const char* icon;
  const char16_t* toolTip;
  const char* name;
};
constexpr FlagButton kFlagButtons[] = {
    {u"Flagged", "flag", u"Flagged", "Imgflag0"},
    {u"Unflagged", "edit-clear", u"Unflagged", "Imgflag2"},
    {u"Rejected", "edit-delete-remove", u"Rejected", "Imgflag1"},
};

QLabel* FieldCaption(const QString& text, QWidget* buddy) {
  QLabel* caption = look::Caption(text);
  caption->setBuddy(buddy);
  buddy->setAccessibleName(text);
  return caption;
}

}  // namespace

PhotoPanel::PhotoPanel(KeywordFields& keywords, QWidget* parent)
    : QWidget(parent), keywords_(keywords) {
  setObjectName(u"panel"_s);
  hint_ = look::Hint(QString());
  hint_->setObjectName(u"lblhint"_s);
  hint_->hide();
  notesEdit_ = new QPlainTextEdit;
  notesEdit_->setObjectName(u"Text16"_s);
  notesEdit_->setTabChangesFocus(true);
  notesEdit_->setFixedHeight(kNotesHeight);
  authorEdit_ = new QLineEdit;
  authorEdit_->setObjectName(u"Text17"_s);
  dateEdit_ = new QLineEdit;
  dateEdit_->setObjectName(u"Text30"_s);
  dateEdit_->setPlaceholderText(ShortDate(QDate(2020, 12, 31)));
  calendarButton_ = look::IconButton("view-calendar", tr("Pick a date"));
  tagsEdit_ = new QLineEdit;
  tagsEdit_->setObjectName(u"Text19"_s);
  categoryList_ = new QListWidget;
  categoryList_->setObjectName(u"List3"_s);
  categoryList_->setAccessibleName(tr("Categories"));

  auto* date = new QHBoxLayout;
  look::SetSpace(date, 0, look::kSpace4);
  date->addWidget(dateEdit_);
  date->addWidget(calendarButton_);

  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(FieldCaption(tr("Notes"), notesEdit_), 0, 0, Qt::AlignRight | Qt::AlignTop);
  grid->addWidget(notesEdit_, 0, 1);
  grid->addWidget(FieldCaption(tr("Author"), authorEdit_), 1, 0);
  grid->addWidget(authorEdit_, 1, 1);
  grid->addWidget(FieldCaption(tr("Date"), dateEdit_), 2, 0);
  grid->addLayout(date, 2, 1);
  grid->addWidget(FieldCaption(tr("Tags"), tagsEdit_), 3, 0);
  grid->addWidget(tagsEdit_, 3, 1);
  grid->setColumnStretch(1, 1);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace12, look::kSpace8);
  column->addWidget(MakeHeader());
  column->addWidget(hint_);
  column->addLayout(grid);
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Categories")));
  column->addWidget(categoryList_, 1);
  column->addLayout(MakeCategoryButtons());
  rebuildButton_ = new QPushButton(tr("Rebuild Thumbnails and Metadata"));
  rebuildButton_->setObjectName(u"cmdinfo(2)"_s);
  rebuildButton_->setToolTip(tr("Read the selected photos' files again"));
  look::MakeCompact(rebuildButton_);
  connect(rebuildButton_, &QPushButton::clicked, this, &PhotoPanel::RebuildWanted);
  column->addSpacing(look::kSpace8);
  column->addWidget(rebuildButton_);

  editors_ = {stars_,      flags_[0], flags_[1],       flags_[2], notesEdit_,
              authorEdit_, dateEdit_, calendarButton_, tagsEdit_};
  ConnectText(authorEdit_, KeywordField::Author);
  ConnectText(dateEdit_, KeywordField::Date);
  ConnectText(tagsEdit_, KeywordField::Tags);
  WatchKeys(notesEdit_, KeywordField::Notes);
  AutoSave& notes = keywords_.Field(KeywordField::Notes);
  connect(notesEdit_, &QPlainTextEdit::textChanged, this,
          [this, &notes] { notes.Edit(notesEdit_->toPlainText()); });
  connect(&notes, &AutoSave::Loaded, this, &PhotoPanel::ShowNotes);
  connect(calendarButton_, &QToolButton::clicked, this, &PhotoPanel::PickDate);
  connect(dateEdit_, &QLineEdit::textChanged, this, &PhotoPanel::ShowDate);

  AutoSave& rating = keywords_.Field(KeywordField::Rating);
  connect(stars_, &RatingStars::Rated, this, &PhotoPanel::SetRating);
  connect(&rating, &AutoSave::Loaded, stars_,
          [this](const QString& text) { stars_->SetRating(text.toInt()); });
  connect(&keywords_.Field(KeywordField::Flag), &AutoSave::Loaded, this, &PhotoPanel::ShowFlag);
  connect(categoryList_, &QListWidget::itemChanged, this, &PhotoPanel::List3_ItemCheck);
  connect(&keywords_.Field(KeywordField::Categories), &AutoSave::Loaded, this,
          &PhotoPanel::Categories);
  SetEditable(false, QString());
}

QWidget* PhotoPanel::MakeHeader() {
  auto* header = new QWidget;
  auto* row = new QHBoxLayout(header);
  look::SetSpace(row, 0, look::kSpace4);
  stars_ = new RatingStars;
  stars_->setObjectName(u"Imgrating"_s);
  row->addWidget(stars_);
  row->addStretch();
  for (std::size_t i = 0; i < flags_.size(); ++i) {
    const FlagButton& button = kFlagButtons[i];
    const QString flag = QString::fromUtf16(button.flag);
    flags_[i] = look::IconButton(button.icon, QString::fromUtf16(button.toolTip));
    flags_[i]->setObjectName(QString::fromLatin1(button.name));
    flags_[i]->setCheckable(true);
    connect(flags_[i], &QToolButton::clicked, this, [this, flag] { SetFlag(flag); });
    row->addWidget(flags_[i]);
  }
  return header;
}

QLayout* PhotoPanel::MakeCategoryButtons() {
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  auto* add = new QPushButton(tr("Add New"));
  add->setObjectName(u"cmdinfo(0)"_s);
  add->setToolTip(tr("Add a category to the list"));
  connect(add, &QPushButton::clicked, this, &PhotoPanel::AddCategoryWanted);
  deleteButton_ = new QPushButton(tr("Delete"));
  deleteButton_->setObjectName(u"cmdinfo(1)"_s);
  connect(categoryList_, &QListWidget::itemSelectionChanged, this, &PhotoPanel::UpdateDeleteButton);
  connect(deleteButton_, &QPushButton::clicked, this, [this] {
    const QList<QListWidgetItem*> chosen = categoryList_->selectedItems();
    if (!chosen.isEmpty()) Q_EMIT DeleteCategoryWanted(chosen.first()->text());
  });
  UpdateDeleteButton();
  for (QPushButton* button : {add, deleteButton_}) {
    look::MakeCompact(button);
    row->addWidget(button, 1);
  }
  return row;
}

void PhotoPanel::SetRating(int rating) {
  stars_->SetRating(rating);
  keywords_.Field(KeywordField::Rating).Edit(QString::number(rating));
}

void PhotoPanel::SetFlag(const QString& flag) {
  ShowFlag(flag);
  keywords_.Field(KeywordField::Flag).Edit(flag);
}

void PhotoPanel::ShowFlag(const QString& flag) {
  for (std::size_t i = 0; i < flags_.size(); ++i)
    flags_[i]->setChecked(flag == QStringView(kFlagButtons[i].flag));
}

void PhotoPanel::ConnectText(QLineEdit* edit, KeywordField field) {
  AutoSave& saver = keywords_.Field(field);
  connect(edit, &QLineEdit::textEdited, &saver, &AutoSave::Edit);
  connect(&saver, &AutoSave::Loaded, edit, [edit](const QString& text) {
    edit->setText(text);
    edit->setCursorPosition(0);
  });
  WatchKeys(edit, field);
}

void PhotoPanel::WatchKeys(QWidget* editor, KeywordField field) {
  editor->setProperty("keywordField", static_cast<int>(field));
  editor->installEventFilter(this);
}

bool PhotoPanel::eventFilter(QObject* watched, QEvent* event) {
  const bool press = event->type() == QEvent::KeyPress;
  const bool release = event->type() == QEvent::KeyRelease;
  if (press || (release && !static_cast<QKeyEvent*>(event)->isAutoRepeat())) {
    AutoSave& saver =
        keywords_.Field(static_cast<KeywordField>(watched->property("keywordField").toInt()));
    press ? saver.KeyDown() : saver.KeyUp();
  }
  return QWidget::eventFilter(watched, event);
}

void PhotoPanel::ShowNotes(const QString& text) {
  if (notesEdit_->toPlainText() == text) return;
  const QSignalBlocker quiet(notesEdit_);
  notesEdit_->setPlainText(text);
}

void PhotoPanel::ShowDate(const QString& text) {
  const bool wrong = !text.trimmed().isEmpty() && !IsDate(text);
  dateEdit_->setToolTip(wrong ? tr("This is not a date; it will not be saved.") : QString());
  QPalette palette = dateEdit_->palette();
  palette.setColor(QPalette::Text, QColor(wrong ? look::kRejectedText : look::kText));
  dateEdit_->setPalette(palette);
}

void PhotoPanel::PickDate() {
  const auto shown = ParseDate(dateEdit_->text());
  const auto picked =
      zqm::PickDate(calendarButton_, shown ? std::optional(shown->date()) : std::nullopt);
  if (!picked) return;
  dateEdit_->setText(ShortDate(*picked));
  keywords_.Field(KeywordField::Date).Edit(dateEdit_->text());
}

void PhotoPanel::UpdateDeleteButton() {
  const bool chosen = !categoryList_->selectedItems().isEmpty();
  deleteButton_->setEnabled(chosen);
  deleteButton_->setToolTip(chosen ? tr("Delete the selected category from the list")
                                   : tr("Select a category of the list first"));
}

void PhotoPanel::SetCategories(const QStringList& names) {
  const QSignalBlocker quiet(categoryList_);
  categoryList_->clear();
  categoryList_->addItems(names);
  UpdateDeleteButton();
  Categories(keywords_.Field(KeywordField::Categories).Text());
}

void PhotoPanel::Categories(const QString& stored) {
  const QSignalBlocker quiet(categoryList_);
  const QStringList names = CategoryNames(stored);
  for (int row = 0; row < categoryList_->count(); ++row) {
    QListWidgetItem* item = categoryList_->item(row);
    const bool ticked = names.contains(item->text(), Qt::CaseInsensitive);
    item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    item->setFlags(item->flags().setFlag(Qt::ItemIsUserCheckable, categoriesEditable_));
    item->setForeground(QColor(categoriesEditable_ ? look::kText : look::kQuiet));
  }
}

void PhotoPanel::List3_ItemCheck() {
  AutoSave& saver = keywords_.Field(KeywordField::Categories);
  // Names that the list doesn't know were given by another catalogue's user; they stay.
  QStringList names;
  for (const QString& name : CategoryNames(saver.Text()))
    if (categoryList_->findItems(name, Qt::MatchFixedString).isEmpty()) names.append(name);
  for (int row = 0; row < categoryList_->count(); ++row)
    if (categoryList_->item(row)->checkState() == Qt::Checked)
      names.append(categoryList_->item(row)->text());
  saver.Edit(CategoriesText(names));
}

void PhotoPanel::SetEditable(bool editable, const QString& why) {
  for (QWidget* editor : editors_)
    editor->setEnabled(editable);
  // A category can be selected and deleted without any photo.
  categoriesEditable_ = editable;
  Categories(keywords_.Field(KeywordField::Categories).Text());
  hint_->setText(why);
  hint_->setVisible(!why.isEmpty());
}

}  // namespace zqm
