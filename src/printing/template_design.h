// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QSize>
#include <QString>
#include <vector>

#include "printing/box_layout.h"
#include "printing/paper_measures.h"
#include "printing/print_template.h"

namespace zqm {

/// A template while it is being laid out: the paper, its boxes, which of them are selected, and the
/// unit that the user sees. A value without a window; whatever fails leaves it as it was.
class TemplateDesign {
 public:
  /// An empty A4 sheet, in millimetres.
  TemplateDesign() = default;
  /// One that was loaded; its boxes are those of its objects.
  explicit TemplateDesign(const PrintTemplate& layout);

  const VectorObjects& Objects() const { return objects_; }
  /// In the order in which they were made.
  const std::vector<int>& Ids() const { return ids_; }
  const Paper& PaperSize() const { return paper_; }
  Unit ShownUnit() const { return unit_; }
  void SwitchUnit(Unit unit) { unit_ = unit; }
  /// "No of picture box : 3".
  QString CountCaption() const;

  /// Boxes keep their pixels. Messages and `exact` as those of `SetPaper`.
  Outcome ChangePaper(const QString& width, const QString& height, const Paper& exact = {{}, {}});

  /// A new box, selected alone.
  int Add(const QColor& colour);
  /// The selected ones.
  void Remove();
  void RemoveAll();
  void SendToBack();
  void BringToFront();
  void Move(const BoxPreset& preset);

  /// Only what there is can be selected; the order of selecting stays.
  void Select(const std::vector<int>& ids);
  void SelectAll() { selected_ = ids_; }
  /// What the mouse made of the selection: the ones that stay keep their order, those that join
  /// come behind them as they were made.
  void TakeSelection(const std::vector<int>& ids);
  const std::vector<int>& Selected() const { return selected_; }

  /// Of the first selected box; nothing without one.
  std::optional<BoxMeasures> FirstBox() const;
  enum class Side { Width, Height, Left, Top };
  /// A measure of the first selected box as it was typed in the shown unit. False, and nothing
  /// changes, for what `Measure::Type` passes over, a width or height that isn't above 0, and
  /// without a selection.
  bool Type(Side side, const QString& text);
  /// What the mouse made of the objects. False when they aren't the same boxes.
  bool TakeObjects(const VectorObjects& objects);

  /// As it is saved, or the message why it can't be.
  Result<PrintTemplate> Checked() const;

 private:
  VectorObjects objects_;
  std::vector<int> ids_, selected_;
  Paper paper_;
  Unit unit_ = Unit::Millimetres;
};

}  // namespace zqm
