// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "session/session.h"
#include "viewers/ui/viewer_actions.h"

class QLabel;
class QSplitter;
class QTableWidget;
class QToolButton;

namespace zqm {

class ComparePane;
struct ComparedLine;

/// Two photos side by side, their views linked, with what their files say differently.
class frmcompare : public QDialog {
  Q_OBJECT
 public:
  /// The session must have an active catalogue; of `photos`, two at least, the first two are
  /// shown.
  frmcompare(Session& session, const QStringList& photos, QWidget* parent = nullptr);
  ~frmcompare() override;

 protected:
  void showEvent(QShowEvent* event) override;
  /// The details keep their keys while they have the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum Side : std::size_t { Left, Right };

  void Compose();
  QLayout* ComposeBar();
  QWidget* ComposeDetails();
  QToolButton* BarButton(ViewerCommand command);
  void AddPane(ComparePane* pane);
  void Run(ViewerCommand command);
  void Step(int step);
  /// To the photo nearest to `position` in steps of `step`; `way` is where the user wants to go.
  void GoTo(int position, int step, int way);
  void SetActive(ComparePane* pane);
  ComparePane& Active() { return *active_; }
  ComparePane& OtherThan(const ComparePane& pane);
  /// The other side looks where this one does, if they are linked.
  void Lead(ComparePane& pane);
  void ShowIn(ComparePane& pane);
  void Swap();
  void ShowDetails();
  /// The keys go to the details, or back to the photos.
  void SwitchFocus();
  void ShowLine(int row, const ComparedLine& line);
  void Say(const QString& text);
  void ArrangeControls();
  void done(int result) override;

  Catalogue& catalogue_;
  ViewerActions* actions_;
  std::array<ComparePane*, 2> panes_;
  ComparePane* active_;
  QSplitter* sides_;
  QSplitter* parts_;
  QWidget* details_;
  QTableWidget* table_;
  QLabel* said_;
  QTimer* quiet_;  // until what was said goes
  bool linking_ = false;
  bool samePercent_ = false;  // linked by percent, not in proportion to the fitted photos
};

}  // namespace zqm
