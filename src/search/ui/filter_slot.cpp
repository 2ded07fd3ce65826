// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/filter_slot.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <map>
#include <string>

#include "search/filter_lists.h"
#include "search/ui/check_list.h"
#include "shell/error.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kMostRows = 6;

}  // namespace

FilterSlot::FilterSlot(int number, ReadValues values, QWidget* parent)
    : QWidget(parent),
      values_(std::move(values)),
      heading_(new QPushButton),
      find_(new QLineEdit),
      list_(new CheckList) {
  setObjectName(u"filterslot(%1)"_s.arg(number));
  heading_->setObjectName(u"lblfilter(%1)"_s.arg(number));
  look::MakeChoice(heading_);
  heading_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  heading_->setToolTip(tr("Choose the column to filter by"));
  connect(heading_, &QPushButton::clicked, this, [this, menu = MakeMenu()] {
    menu->popup(heading_->mapToGlobal(heading_->rect().bottomLeft()));
  });
  find_->setObjectName(u"find(%1)"_s.arg(number));
  find_->setPlaceholderText(tr("Find a value"));
  find_->setClearButtonEnabled(true);
  list_->setObjectName(u"lstfilter(%1)"_s.arg(number));
  list_->SetEmptyText(tr("No values"));

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, look::kSpace4);
  column->addWidget(heading_);
  column->addWidget(find_);
  column->addWidget(list_);

  connect(find_, &QLineEdit::textChanged, list_, &CheckList::Find);
  connect(list_, &CheckList::ItemCheck, this,
          [this] { Guarded("frmmain", "lstfilter_itemcheck", [this] { lstfilter_itemcheck(); }); });
  SetHeading(std::nullopt);
}

QMenu* FilterSlot::MakeMenu() {
  auto* filter = new QMenu(tr("Filter"), this);
  filter->setObjectName(u"mnufilter"_s);
  // A submenu is made when its caption comes first.
  std::map<std::string, QMenu*> menus;
  const auto within = [&menus](QMenu* above, const char* caption) {
    if (caption[0] == '\0') return above;
    QMenu*& menu = menus[caption];
    if (menu == nullptr) menu = above->addMenu(QString::fromLatin1(caption));
    return menu;
  };
  for (const FilterGroup& group : FilterMenu()) {
    QMenu* menu = within(within(filter, group.caption), group.part);
    for (const FilterEntry& entry : group.entries) {
      QAction* action =
          menu->addAction(entry.column ? ColumnName(*entry.column) : QString::fromUtf16(kNoFilter));
      action->setObjectName(QString::fromLatin1(entry.name));
      connect(action, &QAction::triggered, this, [this, column = entry.column] {
        Guarded("Form3", "Populate", [&] { SetHeading(column); });
      });
    }
    if (menu == filter) filter->addSeparator();
  }
  return filter;
}

void FilterSlot::SetHeading(std::optional<Column> column) {
  column_ = column;
  const QString caption = column ? ColumnName(*column) : QString::fromUtf16(kNoFilter);
  heading_->setText(caption);
  heading_->setAccessibleName(tr("Filter column: %1").arg(caption));
  list_->setAccessibleName(tr("Values of %1").arg(caption));
  find_->clear();
  find_->setVisible(column.has_value());
  list_->setVisible(column.has_value());
  Populate();
}

void FilterSlot::Populate() {
  list_->SetItems({});
  if (column_) list_->SetItems(values_(*column_));
  const auto rows = std::clamp(static_cast<int>(list_->Items().size()), 1, kMostRows);
  list_->setFixedHeight(look::ListHeight(rows));
  find_->setEnabled(!list_->Items().isEmpty());
  lstfilter_itemcheck();
}

void FilterSlot::TickNone() {
  list_->TickNone();
}

void FilterSlot::lstfilter_itemcheck() {
  clause_ = column_ ? FilterClause(*column_, list_->Ticked()) : QString();
  Q_EMIT ClauseChanged();
}

}  // namespace zqm
