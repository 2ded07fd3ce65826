// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/histogram_view.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr QSize kSize(258, 128);
constexpr QRgb kRed = 0xffff6a6a, kGreen = 0xff6ad86a, kBlue = 0xff6aa2ff;

/// The mean of a few levels. A picture of 8 bits whose contrast was changed has some levels twice
/// and others not at all.
double Evened(const Histogram::Levels& levels, std::size_t level) {
  constexpr std::size_t kReach = 2;
  const std::size_t first = level < kReach ? 0 : level - kReach;
  const std::size_t last = std::min(levels.size() - 1, level + kReach);
  double sum = 0;
  for (std::size_t i = first; i <= last; ++i)
    sum += levels[i];
  return sum / static_cast<double>(last - first + 1);
}

/// The number of pixels that reaches the top. Both ends often hold more than all between them.
double TopOf(const Histogram& histogram) {
  constexpr std::size_t kEnd = 3;
  double top = 1;
  for (const auto* levels : {&histogram.luma, &histogram.red, &histogram.green, &histogram.blue}) {
    for (std::size_t level = kEnd; level < levels->size() - kEnd; ++level)
      top = std::max(top, Evened(*levels, level));
  }
  return top;
}

/// From the lower left corner over the levels to the lower right one.
QPainterPath Outline(const Histogram::Levels& levels, double top, const QRectF& area) {
  QPainterPath path(area.bottomLeft());
  const double step = area.width() / static_cast<double>(levels.size() - 1);
  for (std::size_t level = 0; level < levels.size(); ++level) {
    const double height = std::min(1.0, Evened(levels, level) / top) * area.height();
    path.lineTo(area.left() + static_cast<double>(level) * step, area.bottom() - height);
  }
  path.lineTo(area.bottomRight());
  return path;
}

}  // namespace

HistogramView::HistogramView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("histogram"));
  setFixedSize(kSize);
  setAccessibleName(tr("Histogram"));
  setToolTip(
      tr("From dark to light: brightness as an area, colours as lines, before as a gray line"));
}

void HistogramView::Show(const Histogram& before, const Histogram& after) {
  before_ = before;
  after_ = after;
  update();
}

void HistogramView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QColor(look::kLine));
  painter.setBrush(QColor(look::kGround));
  painter.drawRoundedRect(frame, look::kRadius, look::kRadius);
  const QRectF area = frame.adjusted(1, look::kSpace4, -1, -1);
  const double top = TopOf(after_);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(look::kLine).lighter());
  painter.drawPath(Outline(after_.luma, top, area));
  painter.setBrush(Qt::NoBrush);
  const auto line = [&](const Histogram::Levels& levels, double high, QRgb colour) {
    painter.setPen(QColor(colour));
    painter.drawPath(Outline(levels, high, area));
  };
  line(before_.luma, TopOf(before_), look::kQuiet);
  const bool gray = after_.red == after_.green && after_.green == after_.blue;
  if (gray) return;
  line(after_.red, top, kRed);
  line(after_.green, top, kGreen);
  line(after_.blue, top, kBlue);
}

}  // namespace zqm
