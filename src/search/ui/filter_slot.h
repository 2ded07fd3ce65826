// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "catalogue/columns.h"

class QLineEdit;
class QMenu;
class QPushButton;

namespace zqm {

class CheckList;

/// One filter column of Advanced Search: a heading that is set from the Filter menu, and the values
/// of that column to tick.
class FilterSlot : public QWidget {
  Q_OBJECT
 public:
  using ReadValues = std::function<QStringList(Column column)>;

  /// `values` gives a column's list when it is chosen.
  FilterSlot(int number, ReadValues values, QWidget* parent = nullptr);

  /// Nothing for an unused slot.
  std::optional<Column> Heading() const { return column_; }
  void SetHeading(std::optional<Column> column);
  /// The slot's clause, kept current; "" without a ticked value.
  const QString& RTBFilter() const { return clause_; }
  void TickNone();

 Q_SIGNALS:
  void ClauseChanged();

 private:
  QMenu* MakeMenu();
  void Populate();
  void lstfilter_itemcheck();

  ReadValues values_;
  std::optional<Column> column_;
  QString clause_;
  QPushButton* heading_;
  QLineEdit* find_;
  CheckList* list_;
};

}  // namespace zqm
