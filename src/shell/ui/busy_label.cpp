// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/busy_label.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kPatienceMilliseconds = 150;
constexpr int kRefusedMilliseconds = 1500;
constexpr int kStripWidth = 360;
}  // namespace

BusyLabel::BusyLabel(Busy& busy, QWidget* over)
    : QWidget(over->window()),
      busy_(busy),
      over_(over),
      strip_(new QWidget(this)),
      text_(new QLabel),
      bar_(new QProgressBar) {
  setObjectName(u"lblbusy"_s);
  strip_->setObjectName(u"busystrip"_s);
  strip_->setAttribute(Qt::WA_StyledBackground);
  text_->setTextFormat(Qt::PlainText);
  bar_->setTextVisible(false);
  auto* column = new QVBoxLayout(strip_);
  look::SetSpace(column, look::kSpace16, look::kSpace8);
  column->addWidget(text_);
  column->addWidget(bar_);
  auto* opacity = new QGraphicsOpacityEffect(strip_);
  strip_->setGraphicsEffect(opacity);
  fade_.setStartValue(0.0);
  fade_.setEndValue(1.0);
  fade_.setDuration(look::kFadeMilliseconds);
  connect(&fade_, &QVariantAnimation::valueChanged, opacity,
          [opacity](const QVariant& value) { opacity->setOpacity(value.toReal()); });

  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMilliseconds);
  connect(&patience_, &QTimer::timeout, this, &BusyLabel::ShowStrip);
  connect(&busy_, &Busy::Changed, this, &BusyLabel::Update);
  connect(&busy_, &Busy::Refused, this, [this] {
    // Who was turned away sees why, also when the work itself is over in a moment.
    show();
    ShowStrip();
    QTimer::singleShot(kRefusedMilliseconds, this, &BusyLabel::Update);
  });
  over->installEventFilter(this);
  hide();
  strip_->hide();
}

bool BusyLabel::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
      if (watched == over_ && isVisible()) Place();
      break;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
      // The focus stays where it is; the mouse hits the cover.
      if (isVisible() && Covers(watched)) return true;
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

bool BusyLabel::Covers(const QObject* object) const {
  const auto* widget = qobject_cast<const QWidget*>(object);
  return over_ && widget != nullptr && (widget == over_ || over_->isAncestorOf(widget));
}

void BusyLabel::Place() {
  if (!over_) return;
  if (parentWidget() != over_->window()) setParent(over_->window());
  setGeometry(QRect(over_->mapTo(over_->window(), QPoint()), over_->size()));
  strip_->resize(qMin(kStripWidth, width()), strip_->sizeHint().height());
  strip_->move((width() - strip_->width()) / 2, (height() - strip_->height()) / 2);
}

void BusyLabel::Update() {
  if (!busy_.IsUp()) {
    patience_.stop();
    fade_.stop();
    strip_->hide();
    hide();
    QCoreApplication::instance()->removeEventFilter(this);
    return;
  }
  text_->setText(busy_.Text());
  bar_->setRange(0, busy_.Percent() < 0 ? 0 : 100);
  bar_->setValue(busy_.Percent());
  if (isVisible()) return;
  Place();
  raise();
  show();
  QCoreApplication::instance()->installEventFilter(this);
  patience_.start();
}

void BusyLabel::ShowStrip() {
  text_->setText(busy_.Text());
  Place();
  raise();
  if (strip_->isVisible()) return;
  strip_->show();
  fade_.start();
}

}  // namespace zqm
