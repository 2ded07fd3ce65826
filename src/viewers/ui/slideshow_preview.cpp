// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/slideshow_preview.h"

#include <QPainter>
#include <QScreen>

#include "shell/error.h"
#include "shell/ui/look.h"
#include "viewers/slideshow_samples.h"

namespace zqm {
namespace {

constexpr std::chrono::milliseconds kBetween(2500);

}  // namespace

SlideshowPreview::SlideshowPreview(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName(tr("Preview of the transition"));
  timer_.setObjectName(QStringLiteral("Timer1"));
  timer_.setInterval(kBetween);
  const auto run = [this] {
    Guarded("frmconfigureslideshow", "Timer1_Timer", [this] { Timer1_Timer(); });
  };
  connect(&timer_, &QTimer::timeout, this, run);
  connect(&player_, &TransitionPlayer::Prepared, this, run);
  connect(&player_, &TransitionPlayer::FrameDue, this, qOverload<>(&QWidget::update));
  timer_.start();
}

void SlideshowPreview::SetTransition(int number) {
  number_ = number;
  if (samples_[0].isNull()) return;  // shown when there is room for it
  player_.PrepareTransition(number_, samples_[0].size());
}

void SlideshowPreview::Timer1_Timer() {
  if (samples_[0].isNull() || !player_.IsPrepared()) return;
  marker_ = 1 - marker_;
  player_.RunTransition(samples_[marker_], kTransitionTime);
  timer_.start();
}

void SlideshowPreview::DrawSamples() {
  const QSize room = (QSizeF(size()) * devicePixelRatioF()).toSize();
  if (room.isEmpty() || room == samples_[0].size()) return;
  samples_[0] = DrawSlideSample(SlideSample::Dusk, room);
  samples_[1] = DrawSlideSample(SlideSample::Noon, room);
  player_.Show(samples_[marker_]);
  player_.SetPace(screen()->refreshRate());
  player_.PrepareTransition(number_, room);
}

void SlideshowPreview::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  DrawSamples();
}

void SlideshowPreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QImage& frame = player_.Frame();
  if (frame.isNull()) {
    painter.fillRect(rect(), QColor(look::kGround));
    return;
  }
  painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
  painter.drawImage(0, 0, frame);
}

}  // namespace zqm
