// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QTimer>

#include "session/session.h"
#include "viewers/photo_viewer.h"
#include "viewers/ui/viewer_actions.h"

class QLabel;

namespace zqm {

class FullView;

/// One photo on the whole screen, with the others a key away.
class frmfull : public QDialog {
  Q_OBJECT
 public:
  /// The session must have an active catalogue; `photos` has at least one, `start` is a place in
  /// them.
  frmfull(Session& session, const QStringList& photos, int start, QWidget* parent = nullptr);
  ~frmfull() override;

  /// The photo that was seen last.
  QString LastShown() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Run(ViewerCommand command);
  void GoTo(int position);
  void ShowPhoto();
  void ShowInfo();
  void Say(const QString& text);
  /// The notice is what there is to say of the shown photo for as long as it stands.
  void SayStanding();
  void SetNotice(const QString& text);
  QString Elided(const QString& line) const;
  void FitBox();
  void PlaceOverlays();

  Catalogue& catalogue_;
  PhotoViewer viewer_;
  ViewerActions* actions_;
  FullView* view_;
  QLabel* info_;
  QLabel* notice_;
  QTimer patience_;  // until "Loading…" is said
  QTimer said_;      // until the notice goes
};

}  // namespace zqm
