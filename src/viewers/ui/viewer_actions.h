// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QList>
#include <QObject>
#include <map>

#include "catalogue/catalogue.h"
#include "imaging/ui/picture_view.h"

class QWidget;

namespace zqm {

struct ViewedPhoto;

/// What the keys of the viewers do.
enum class ViewerCommand {
  Next,
  Previous,
  First,
  Last,
  ZoomIn,
  ZoomOut,
  Fit,
  ActualSize,
  Upright,
  Information,
  OtherSide,
  Details,
  Linked,
  Swap,
  AllValues,
  Rate1,
  Rate2,
  Rate3,
  Rate4,
  Rate5,
  Flag,
  Unflag,
  Reject,
  Close,
};

enum class ViewerKind { Full, Compare };

/// The commands of a viewer, with their keys, from one table.
class ViewerActions : public QObject {
  Q_OBJECT
 public:
  ViewerActions(ViewerKind kind, QWidget* window);

  /// Null for a command of the other kind only.
  QAction* Get(ViewerCommand command) const;
  /// For a pop-up menu, with separators.
  const QList<QAction*>& Menu() const { return menu_; }

 Q_SIGNALS:
  void Triggered(zqm::ViewerCommand command);

 private:
  std::map<ViewerCommand, QAction*> actions_;
  QList<QAction*> menu_;
};

/// Puts what a viewer shows into its view; `message` stands where there is no picture, `keep` is
/// for another photo or another size.
void ShowOn(PictureView& view, const ViewedPhoto& photo, const QString& message,
            PictureView::KeepView keep);

/// Zooming, if the command is about that.
bool ZoomBy(ViewerCommand command, PictureView& view);

/// Rating or flag of one photo, if the command is about that: written at once. What the user is to
/// know quietly comes back, or null for another command; why a row can't be written is a message.
QString ChangeValue(ViewerCommand command, Catalogue& catalogue, const QString& path);

/// Whether photos are shown upright: one answer for all viewers, remembered.
bool ShownUpright();
void RememberUpright(bool upright);

}  // namespace zqm
