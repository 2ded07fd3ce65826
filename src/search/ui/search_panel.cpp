// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/search_panel.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "search/filter_lists.h"
#include "search/ui/check_list.h"
#include "search/ui/filter_slot.h"
#include "search/ui/switch_boxes.h"
#include "shell/dates.h"
#include "shell/error.h"
#include "shell/ui/calendar_popup.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kCategoryRows = 5;
constexpr int kRatings = 5;
constexpr int kRatingWidth = 33;

QLineEdit* Field(const char* name, const QString& caption) {
  auto* edit = new QLineEdit;
  edit->setObjectName(QString::fromLatin1(name));
  edit->setAccessibleName(caption);
  return edit;
}

}  // namespace

SearchPanel::SearchPanel(Catalogue& catalogue, Busy& busy, QWidget* parent)
    : QWidget(parent), catalogue_(catalogue), busy_(busy) {
  setObjectName(u"searchpanel"_s);
  auto* content = new QWidget;
  content->setObjectName(u"panel"_s);
  auto* column = new QVBoxLayout(content);
  look::SetSpace(column, look::kSpace8, look::kSpace8);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  AddFields(grid);
  column->addLayout(grid);

  ratings_ = new CheckList;
  ratings_->setObjectName(u"List1"_s);
  ratings_->setAccessibleName(tr("Photo Rating"));
  ratings_->setFlow(QListView::LeftToRight);
  ratings_->setGridSize({kRatingWidth, look::kRowHeight});
  QStringList ratings;
  for (int rating = 1; rating <= kRatings; ++rating)
    ratings.append(QString::number(rating));
  ratings_->SetItems(ratings);
  ratings_->setFixedHeight(look::ListHeight(1));
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Photo Rating")));
  column->addWidget(ratings_);

  categories_ = new CheckList;
  categories_->setObjectName(u"List2"_s);
  categories_->setAccessibleName(tr("Categories"));
  categories_->SetEmptyText(tr("No categories yet. Add New in the photo panel makes one."));
  categories_->setFixedHeight(look::ListHeight(kCategoryRows));
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Categories")));
  column->addWidget(categories_);
  column->addSpacing(look::kSpace8);
  column->addLayout(AdvancedHeader());

  slotArea_ = new QWidget;
  auto* slotColumn = new QVBoxLayout(slotArea_);
  look::SetSpace(slotColumn, 0, look::kSpace8);
  for (int i = 0; i < kSlots; ++i) {
    auto* slot = new FilterSlot(i, [this](Column c) { return ValuesOf(c); });
    connect(slot, &FilterSlot::ClauseChanged, this, &SearchPanel::sql);
    slotColumn->addWidget(slot);
    slots_[static_cast<std::size_t>(i)] = slot;
  }
  column->addWidget(slotArea_);
  column->addStretch();

  auto* scroll = new QScrollArea;
  scroll->setWidget(content);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* whole = new QVBoxLayout(this);
  look::SetSpace(whole, 0, 0);
  whole->addWidget(scroll, 1);
  whole->addLayout(Buttons());
  ShowAdvanced(false);
}

void SearchPanel::AddFields(QGridLayout* grid) {
  keywordsEdit_ = Field("Text6", tr("Keywords"));
  keywordsEdit_->setToolTip(
      tr("Words to look for in tags, notes, captions and keywords, separated by commas"));
  wordMode_ = new QComboBox;
  wordMode_->setObjectName(u"Combo1"_s);
  wordMode_->setAccessibleName(tr("Which of the words"));
  wordMode_->addItems({u"All of these words"_s, u"Any of these words"_s});
  // A narrow panel cuts the box, not the window.
  wordMode_->setMinimumContentsLength(1);
  wordMode_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  authorEdit_ = Field("Text31", tr("Author"));
  fromEdit_ = DateField("Text9", tr("Date From"));
  toEdit_ = DateField("Text7", tr("Date to"));
  const std::pair<QString, QWidget*> rows[] = {
      {tr("Keywords"), keywordsEdit_}, {QString(), wordMode_},   {tr("Author"), authorEdit_},
      {tr("Date From"), fromEdit_},    {tr("Date to"), toEdit_},
  };
  int row = 0;
  for (const auto& [caption, editor] : rows) {
    const bool alone = caption.isEmpty();
    if (!alone) grid->addWidget(look::Caption(caption), row, 0);
    grid->addWidget(editor, row++, alone ? 0 : 1, 1, alone ? 2 : 1);
  }
  grid->setColumnStretch(1, 1);
  for (QLineEdit* edit : {keywordsEdit_, authorEdit_, fromEdit_, toEdit_})
    connect(edit, &QLineEdit::returnPressed, this, &SearchPanel::SearchWanted);
}

QLineEdit* SearchPanel::DateField(const char* name, const QString& caption) {
  QLineEdit* edit = Field(name, caption);
  edit->setToolTip(tr("A date such as %1").arg(ShortDate(QDate(2020, 12, 31))));
  look::MakeCompact(edit);
  // Inside the field, since the panel may be narrow.
  QAction* calendar = edit->addAction(look::Icon("view-calendar"), QLineEdit::TrailingPosition);
  calendar->setToolTip(tr("Pick a date"));
  connect(calendar, &QAction::triggered, this, [edit] {
    const auto shown = ParseDate(edit->text(), DateOrder::MonthFirst);
    const auto picked = PickDate(edit, shown ? std::optional(shown->date()) : std::nullopt);
    if (picked) edit->setText(DateBoxText(*picked));
  });
  return edit;
}

QLayout* SearchPanel::AdvancedHeader() {
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  advanced_ = new SwitchBoxes(tr("Advanced Search"));
  advanced_->setObjectName(u"lblnmnm(13)"_s);
  connect(advanced_, &SwitchBoxes::toggled, this, &SearchPanel::ShowAdvanced);
  row->addWidget(look::Heading(tr("Advanced Search")));
  row->addStretch();
  row->addWidget(advanced_);
  return row;
}

QLayout* SearchPanel::Buttons() {
  auto* clear = new QPushButton(tr("Clear"));
  clear->setObjectName(u"cmdclear"_s);
  clear->setToolTip(tr("Empty every field and untick every value"));
  connect(clear, &QPushButton::clicked, this, &SearchPanel::ClearAll);
  auto* search = new QPushButton(tr("Search"));
  search->setObjectName(u"Command1"_s);
  look::MakePrimary(search);
  connect(search, &QPushButton::clicked, this, &SearchPanel::SearchWanted);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, look::kSpace8, look::kSpace8);
  row->addWidget(clear);
  row->addWidget(search, 1);
  return row;
}

SearchCriteria SearchPanel::Criteria() const {
  const bool all = wordMode_->currentIndex() == 0;
  return {keywordsEdit_->text(), all ? WordMode::AllOfTheseWords : WordMode::AnyOfTheseWords,
          authorEdit_->text(),   fromEdit_->text(),
          toEdit_->text(),       ratings_->Ticked(),
          categories_->Ticked(), AdvancedSearch(),
          advancedClause_};
}

void SearchPanel::SetDates(const QString& from, const QString& to) {
  fromEdit_->setText(from);
  toEdit_->setText(to);
}

void SearchPanel::SetCategories(const QStringList& names) {
  categories_->SetItems(names);
}

bool SearchPanel::AdvancedSearch() const {
  return advanced_->isChecked();
}

void SearchPanel::SetAdvancedSearch(bool on) {
  advanced_->setChecked(on);
}

void SearchPanel::Begin() {
  keywordsEdit_->setFocus(Qt::ShortcutFocusReason);
  keywordsEdit_->selectAll();
}

/// Values ticked before the search was switched off stay ticked, and come back with it.
void SearchPanel::ShowAdvanced(bool on) {
  slotArea_->setVisible(on);
}

QStringList SearchPanel::ValuesOf(Column column) {
  const BusyRun run(busy_, u"Retrieving Information. Please wait..."_s);
  return Populate(catalogue_, column);
}

void SearchPanel::ClearAll() {
  for (QLineEdit* edit : {keywordsEdit_, authorEdit_, fromEdit_, toEdit_})
    edit->clear();
  for (CheckList* list : {ratings_, categories_})
    list->TickNone();
  for (FilterSlot* slot : slots_)
    slot->TickNone();
  Begin();
}

void SearchPanel::sql() {
  QStringList clauses;
  for (const FilterSlot* slot : slots_)
    if (slot != nullptr) clauses.append(slot->RTBFilter());
  advancedClause_ = zqm::sql(clauses);
}

}  // namespace zqm
