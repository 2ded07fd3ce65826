// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/frmerror.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSet>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include "shell/files.h"
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

frmerror::frmerror(QWidget* parent)
    : QDialog(parent),
      model_(new FailureModel(this)),
      label_(new QLabel),
      count_(look::Hint(QString())),
      table_(new QTableView) {
  setObjectName(u"frmerror"_s);
  setWindowTitle(tr("Files That Could Not Be Handled"));
  label_->setObjectName(u"Label1"_s);
  label_->setWordWrap(true);
  label_->setTextFormat(Qt::PlainText);

  auto* sorted = new QSortFilterProxyModel(this);
  sorted->setSourceModel(model_);
  sorted->setSortCaseSensitivity(Qt::CaseInsensitive);
  sorted->setSortLocaleAware(true);
  table_->setObjectName(u"ListView1"_s);
  table_->setAccessibleName(tr("Files and reasons"));
  table_->setModel(sorted);
  table_->setItemDelegateForColumn(FailureModel::File,
                                   new PathDelegate(PathDelegate::Folders::Shown, table_));
  table_->setItemDelegateForColumn(FailureModel::Reason,
                                   new PathDelegate(PathDelegate::Folders::Hidden, table_));
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(look::kRowHeight);
  table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setSectionResizeMode(FailureModel::File, QHeaderView::Interactive);
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->setSortingEnabled(true);
  // The order in which things happened, until the user wants another.
  table_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  sorted->sort(-1);
  auto* copy = new QAction(tr("Copy"), table_);
  // All of its keys: the view's own copy takes the current cell only.
  copy->setShortcuts(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &frmerror::CopyRows);
  table_->addAction(copy);
  auto* all = new QAction(tr("Select All"), table_);
  connect(all, &QAction::triggered, table_, &QTableView::selectAll);
  table_->addAction(all);
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);

  auto* close = new QPushButton(tr("Close"));
  close->setObjectName(u"cmdclose"_s);
  look::MakePrimary(close);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* foot = new QHBoxLayout;
  foot->addWidget(count_, 1);
  foot->addWidget(close);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(label_);
  column->addWidget(table_, 1);
  column->addLayout(foot);
}

QSize frmerror::sizeHint() const {
  return {760, 420};
}

void frmerror::SetFailures(const FailureList& failures) {
  label_->setText(failures.label);
  label_->setVisible(!failures.label.isEmpty());
  model_->Set(failures.rows);
  count_->setText(
      failures.rows.size() == 1
          ? tr("1 file")
          : tr("%1 files").arg(QLocale().toString(static_cast<int>(failures.rows.size()))));
  table_->setColumnWidth(FailureModel::File, sizeHint().width() / 2);
}

void frmerror::CopyRows() const {
  QModelIndexList files = table_->selectionModel()->selectedRows(FailureModel::File);
  std::ranges::sort(files, {}, &QModelIndex::row);
  QStringList lines;
  for (const QModelIndex& file : files)
    lines.append(Cell(file.data().toString()) + u'\t' +
                 Cell(file.siblingAtColumn(FailureModel::Reason).data().toString()));
  if (!lines.isEmpty()) QApplication::clipboard()->setText(lines.join(u'\n'));
}

frmbug::frmbug(QWidget* parent) : frmerror(parent) {
  setObjectName(u"frmbug"_s);
  setWindowTitle(tr("Fault Report"));
}

void ShowFailures(const FailureList& failures, QWidget* parent) {
  frmerror dialog(parent);
  dialog.SetFailures(failures);
  dialog.exec();
}

}  // namespace zqm
