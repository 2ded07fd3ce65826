// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/failure_table.h"

#include <QAbstractTableModel>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <algorithm>

#include "shell/ui/look.h"
#include "shell/ui/path_delegate.h"

using namespace Qt::StringLiterals;

namespace zqm {

class FailureModel : public QAbstractTableModel {
 public:
  enum FailureColumn { File, Reason, Count };

  using QAbstractTableModel::QAbstractTableModel;

  void Set(const std::vector<FailureRow>& rows) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : Count;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    const FailureRow& row = rows_[static_cast<std::size_t>(index.row())];
    return index.column() == File ? row.File : row.Reason;
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    return section == File ? u"File"_s : u"Reason"_s;
  }

 private:
  std::vector<FailureRow> rows_;
};

namespace {

/// A text as one cell of a table, whatever a file name holds.
QString Cell(QString text) {
  const bool plain = std::ranges::none_of(
      text, [](QChar c) { return c == u'\t' || c == u'\n' || c == u'\r' || c == u'"'; });
  return plain ? text : u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

}  // namespace

FailureTable::FailureTable(QWidget* parent) : QTableView(parent), model_(new FailureModel(this)) {
  auto* sorted = new QSortFilterProxyModel(this);
  sorted->setSourceModel(model_);
  sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
  sorted->setSortLocaleAware(true);
  setObjectName(u"ListView1"_s);
  setAccessibleName(tr("Files and reasons"));
  setModel(sorted);
  setItemDelegateForColumn(FailureModel::File,
                           new PathDelegate(PathDelegate::Folders::Shown, this));
  setItemDelegateForColumn(FailureModel::Reason,
                           new PathDelegate(PathDelegate::Folders::Hidden, this));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(look::kRowHeight);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionResizeMode(FailureModel::File, QHeaderView::Interactive);
  horizontalHeader()->setStretchLastSection(true);
  setSortingEnabled(true);
  // The order in which things happened, until the user wants another.
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  sorted->sort(-1);
  auto* copy = new QAction(tr("Copy"), this);
  // All of its keys: the view's own copy takes the current cell only.
  copy->setShortcuts(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &FailureTable::CopyRows);
  addAction(copy);
  auto* all = new QAction(tr("Select All"), this);
  connect(all, &QAction::triggered, this, &QTableView::selectAll);
  addAction(all);
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

void FailureTable::SetFailures(const FailureList& failures) {
  model_->Set(failures.rows);
}

void FailureTable::CopyRows() const {
  QModelIndexList files = selectionModel()->selectedRows(FailureModel::File);
  std::ranges::sort(files, {}, &QModelIndex::row);
  QStringList lines;
  for (const QModelIndex& file : files)
    lines.append(Cell(file.data().toString()) + u'\t' +
                 Cell(file.siblingAtColumn(FailureModel::Reason).data().toString()));
  if (!lines.isEmpty()) QApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace zqm
