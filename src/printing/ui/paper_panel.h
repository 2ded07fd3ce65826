// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "printing/paper_measures.h"
#include "printing/ui/measure_row.h"

class QGridLayout;
class QPushButton;
class QRadioButton;

namespace zqm {

/// The unit of all measures, and the paper. What is typed counts when it is asked for.
class PaperPanel : public QWidget {
  Q_OBJECT
 public:
  explicit PaperPanel(QWidget* parent = nullptr);

  /// A paper in the fields and in the words below; in millimetres.
  void ShowPaper(const Paper& paper);
  /// The paper that was made of what is typed; the fields stay.
  void ShowCurrent(const Paper& paper);
  /// Whether the fields show this paper.
  bool Shows(const Paper& paper) const;
  struct Typed {
    QString width, height;
    Paper exact;  ///< what the fields show rounded
  };
  Typed AsTyped() const;

 Q_SIGNALS:
  /// After this panel has followed.
  void UnitChosen(zqm::Unit unit);
  void SetPaperAsked();

 private:
  void ComposeUnits(QGridLayout* grid);
  void ComposePaper(QGridLayout* grid);
  QRadioButton* AddOption(const QString& caption, const char* name, Unit unit);
  void Option_Click(Unit unit);
  void Text_Change(const MeasureRow& row, Measure& measure);
  void Text9_Change();

  MeasureRow width_, height_;
  Measure typedWidth_, typedHeight_;
  Unit unit_ = Unit::Millimetres;
  QRadioButton *millimetres_ = nullptr, *inches_ = nullptr;
  QLabel *leastWidth_ = nullptr, *leastHeight_ = nullptr, *current_ = nullptr;
  bool filling_ = false;  // the fields are the code's, not the user's
};

}  // namespace zqm
