// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <QThreadPool>
#include <QWidget>

#include "imaging/effects/part_view.h"

class QLabel;

namespace zqm {

class ImageX;
class PatchView;

/// A picture and beside it what a change makes of it, zoomed and scrolled together. The change runs
/// beside the interface thread, on no more than what is seen: the whole picture at the window's
/// size, and zoomed in what is in view. Whatever comes while it runs waits; of several the last.
class BeforeAfter : public QWidget {
  Q_OBJECT
 public:
  explicit BeforeAfter(const QImage& picture, QWidget* parent = nullptr);
  ~BeforeAfter() override;

  /// An empty change shows the picture as it is, at once. `reach` tells how many pixels of the full
  /// picture around it a pixel depends on.
  void SetChange(const PartChange& change, int reach);

  ImageX* Before() const { return before_; }
  ImageX* After() const { return after_; }
  /// Both pictures as a whole, of 8 bits, at the size they are shown at; null until they are made.
  const QImage& BeforeProxy() const { return base_; }
  const QImage& AfterProxy() const { return afterProxy_; }
  /// Whether all that is seen comes from the last change.
  bool IsCurrent() const;

 Q_SIGNALS:
  /// Both proxies are those of the newest change that is done.
  void ProxyChanged();
  /// The picture before was clicked, not dragged.
  void PixelClicked(const QPoint& pixel);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  enum class Kind { Base, Proxy, Patch };
  /// What a patch shows: a part of the picture at a size.
  struct Sight {
    QRect area;        // pixels of the picture
    double scale = 1;  // pixels shown for one of the picture, at most 1
    bool operator==(const Sight&) const = default;
  };
  struct Job {
    Kind kind;
    quint64 change;
    Sight sight;
  };
  struct Made {
    QImage before, after;
  };

  QWidget* ComposeSide(const QString& caption, ImageX* view, bool last);
  void LinkViews(ImageX* from, ImageX* to);
  void ListenForClicks();
  void Next();
  void Start(const Job& job);
  void Take(const Job& job, const Made& made);
  void TakeBase(const QImage& base);
  void ShowAfter(const QImage& picture, quint64 change);
  QSize BaseSize() const;
  /// What is in view, when it needs more pixels than the base has.
  Sight WantedSight() const;

  QImage picture_;
  PartChange change_;
  int reach_ = 0;
  quint64 newest_ = 1;   // number of the change that is wanted
  quint64 shown_ = 0;    // and of the one whose proxy is shown
  quint64 patched_ = 0;  // and of the patches'
  Sight patch_;
  QImage base_, afterProxy_;
  ImageX* before_;
  ImageX* after_;
  PatchView* beforePatch_;
  PatchView* afterPatch_;
  QLabel* zoom_;
  QPointF pressedAt_;  // in the view
  bool linking_ = false;
  bool running_ = false;
  QThreadPool worker_;  // one thread; last: waits for its work before the rest goes
};

}  // namespace zqm
