// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "catalogue/catalogue.h"
#include "search/query_builder.h"
#include "shell/busy.h"

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace zqm {

class CheckList;
class FilterSlot;
class SwitchBoxes;

/// What to look for in the catalogue.
class SearchPanel : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kSlots = 6;

  SearchPanel(Catalogue& catalogue, Busy& busy, QWidget* parent = nullptr);

  SearchCriteria Criteria() const;
  /// The date boxes, after one has taken the other's text.
  void SetDates(const QString& from, const QString& to);
  /// The categories to tick, in their order; ticks of those that stay are kept.
  void SetCategories(const QStringList& names);
  bool AdvancedSearch() const;
  void SetAdvancedSearch(bool on);
  /// Puts the cursor into the first field.
  void Begin();

 Q_SIGNALS:
  /// The Search button, or Enter in a field.
  void SearchWanted();

 private:
  void AddFields(QGridLayout* grid);
  QLineEdit* DateField(const char* name, const QString& caption);
  QLayout* AdvancedHeader();
  QLayout* Buttons();
  QStringList ValuesOf(Column column);
  void ShowAdvanced(bool on);
  void ClearAll();
  void sql();

  Catalogue& catalogue_;
  Busy& busy_;
  QLineEdit* keywordsEdit_;
  QComboBox* wordMode_;
  QLineEdit* authorEdit_;
  QLineEdit* fromEdit_;
  QLineEdit* toEdit_;
  CheckList* ratings_;
  CheckList* categories_;
  SwitchBoxes* advanced_;
  QWidget* slotArea_;
  std::array<FilterSlot*, kSlots> slots_{};
  QString advancedClause_;
};

}  // namespace zqm
