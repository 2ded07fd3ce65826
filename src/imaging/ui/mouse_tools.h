// SPDX-License-Identifier: GPL-3.0-or-later
// What the left button does on a picture, one small class a mode. Tools speak in picture pixels.
#pragma once

#include <QCursor>
#include <QPainterPath>
#include <QPointF>
#include <QSize>
#include <QStringView>
#include <memory>

#include "imaging/selection.h"
#include "imaging/vector_objects.h"

namespace zqm {

/// What a tool may know and do of the picture that it works on.
class ToolHost {
 public:
  virtual QSize PictureSize() const = 0;
  virtual const SelectionLimits& Limits() const = 0;
  virtual void TakeSelection(const Selection& selection) = 0;
  virtual void TakeMagicWand(const QPoint& seed) = 0;

  virtual const VectorObjects& ObjectList() const = 0;
  virtual bool IsObjectSelected(int id) const = 0;
  virtual int SelectedCount() const = 0;
  virtual bool KeepsObjectAspect() const = 0;
  virtual void SelectOnly(const std::vector<int>& ids) = 0;
  virtual void ToggleObject(int id) = 0;
  /// What a drag makes of objects.
  virtual void ReplaceObject(const VectorObject& object) = 0;
  /// The drag has ended, or a key has moved them.
  virtual void TellMoved(const std::vector<int>& ids) = 0;
  /// A new line with the properties for the next object; gives its ID.
  virtual int PutLine(const QPointF& from, const QPointF& to) = 0;

 protected:
  ~ToolHost() = default;
};

struct ToolEvent {
  QPointF pixel;
  Qt::KeyboardModifiers modifiers;
  double pixelsPerPoint = 1;  ///< picture pixels that one of the screen's shows
};

/// One mode's handling of the left button and of keys. Press, moves, release; a tool that takes
/// several presses (a polygon) stays `IsBusy` between them.
class MouseTool {
 public:
  explicit MouseTool(ToolHost& host) : host_(host) {}
  virtual ~MouseTool() = default;
  MouseTool(const MouseTool&) = delete;
  MouseTool& operator=(const MouseTool&) = delete;

  virtual void Press(const ToolEvent& event) = 0;
  /// With or without the button down.
  virtual void Move(const ToolEvent& event) = 0;
  virtual void Release(const ToolEvent& event) = 0;
  /// The second press of two quick ones.
  virtual void DoubleClick(const ToolEvent& event) { Press(event); }
  /// Whether the key was the tool's.
  virtual bool Key(int, const ToolEvent&) { return false; }
  /// Whether something is begun and not finished.
  virtual bool IsBusy() const { return false; }
  /// Forgets what is begun.
  virtual void Cancel() {}
  /// What is begun, to be drawn over the picture.
  virtual QPainterPath Draft() const { return {}; }
  virtual QCursor CursorAt(const ToolEvent&) const { return Qt::CrossCursor; }

 protected:
  ToolHost& Host() const { return host_; }

 private:
  ToolHost& host_;
};

/// Whether a mode has a tool of its own for the left button: "SELECT", "SELECTRECT",
/// "SELECTCIRCLE", "SELECTPOLYGON", "SELECTLASSO", "SELECTMAGICWAND", "OBJECTSELECT", "PUTLINE".
bool IsToolMode(QStringView mode);
/// Whether the mode selects pixels.
bool IsSelectionMode(QStringView mode);
/// Null for a mode without one.
std::unique_ptr<MouseTool> MakeMouseTool(QStringView mode, ToolHost& host);

}  // namespace zqm
