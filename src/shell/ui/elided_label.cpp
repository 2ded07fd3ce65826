// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/elided_label.h"

#include <QFontMetrics>
#include <QTextDocument>

namespace zqm {
namespace {

/// As many characters as fit before "..."; at least one.
QString Shortened(const QString& text, const QFontMetrics& metrics, int width) {
  const QString dots = QStringLiteral("...");
  if (metrics.horizontalAdvance(text) <= width) return text;
  qsizetype length = text.size() - 1;
  while (length > 1 && metrics.horizontalAdvance(text.left(length) + dots) > width)
    --length;
  return text.left(length) + dots;
}

}  // namespace

QString PlainToolTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetParts(const QString& cut, const QString& kept) {
  cut_ = cut;
  kept_ = kept;
  Fit();
}

QSize ElidedLabel::minimumSizeHint() const {
  return {1, QLabel::minimumSizeHint().height()};
}

QSize ElidedLabel::sizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.horizontalAdvance(cut_ + kept_) + metrics.averageCharWidth(), metrics.height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Fit();
}

void ElidedLabel::Fit() {
  const QFontMetrics metrics(font());
  const int room = width() - metrics.horizontalAdvance(kept_);
  const QString shown = cut_.isEmpty() ? cut_ : Shortened(cut_, metrics, room);
  setText(shown + kept_);
  setToolTip(shown == cut_ ? QString() : PlainToolTip(cut_));
  updateGeometry();
}

}  // namespace zqm
