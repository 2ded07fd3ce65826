// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/frmslideshow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::chrono::milliseconds kPatience(300), kPercentEvery(100), kNoticeStands(2500);

}  // namespace

frmslideshow::frmslideshow(SlideshowPlan plan, QWidget* parent, Clock clock)
    : QDialog(parent, Qt::Window | Qt::FramelessWindowHint),
      show_(plan, std::move(clock)),
      keys_(plan.keys),
      strip_(new QWidget(this)),
      notice_(new QLabel) {
  setObjectName(u"frmslideshow"_s);
  setWindowTitle(tr("Slideshow"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::BlankCursor);
  ComposeNotice();
  ConnectShow();
  if (parent != nullptr) setGeometry(parent->screen()->geometry());
  setWindowState(Qt::WindowFullScreen);
}

void frmslideshow::ComposeNotice() {
  strip_->setObjectName(u"busystrip"_s);
  strip_->setAttribute(Qt::WA_StyledBackground);
  notice_->setObjectName(u"Label1"_s);
  notice_->setTextFormat(Qt::PlainText);
  auto* row = new QHBoxLayout(strip_);
  look::SetSpace(row, look::kSpace12, 0);
  row->addWidget(notice_);
  strip_->hide();
}

void frmslideshow::ConnectShow() {
  patience_.setSingleShot(true);
  silence_.setSingleShot(true);
  silence_.setInterval(kNoticeStands);
  connect(&silence_, &QTimer::timeout, strip_, &QWidget::hide);
  connect(&patience_, &QTimer::timeout, this,
          [this] { Guarded("frmslideshow", "OnProgress", [this] { OnProgress(); }); });
  connect(&show_, &Slideshow::Waits, this, [this] {
    if (!patience_.isActive()) patience_.start(kPatience);
  });
  connect(&show_, &Slideshow::FrameDue, this, [this] {
    if (loading_) OnProgress();
    update();
  });
  connect(&show_, &Slideshow::PassedOver, this, [this](const QStringList& names) {
    Tell(tr("Could not be shown: %1").arg(names.join(u", "_s)));
    silence_.start();
  });
  connect(&show_, &Slideshow::NothingToShow, this, &frmslideshow::End);
}

void frmslideshow::Tell(const QString& text) {
  loading_ = false;
  silence_.stop();
  const int room = width() - 2 * (look::kSpace24 + look::kSpace12);
  notice_->setText(notice_->fontMetrics().elidedText(text, Qt::ElideMiddle, room));
  strip_->resize(strip_->sizeHint());
  strip_->move(look::kSpace24, height() - look::kSpace24 - strip_->height());
  strip_->show();
}

/// What waiting looks like, as long as it lasts.
void frmslideshow::OnProgress() {
  if (const auto percent = show_.Waiting()) {
    Tell(u"%1 %2%"_s.arg(QString::fromUtf16(slideshow_text::kLoading)).arg(*percent));
    loading_ = true;
    patience_.start(kPercentEvery);
  } else if (std::exchange(loading_, false)) {
    strip_->hide();
  }
}

void frmslideshow::End(const QString& name, const QString& reason) {
  reject();
  MsgBox(u"%1\n%2: %3"_s.arg(QString::fromUtf16(slideshow_text::kNothing), name, reason),
         MessageKind::Warning);
}

// The screen.

void frmslideshow::FitScreen() {
  show_.SetPace(screen()->refreshRate());
  show_.SetScreen((QSizeF(size()) * devicePixelRatioF()).toSize());
}

void frmslideshow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  connect(windowHandle(), &QWindow::screenChanged, this, &frmslideshow::FitScreen,
          Qt::UniqueConnection);
  Guarded("frmslideshow", "Form_Load", [this] { FitScreen(); });
}

void frmslideshow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  if (isVisible()) Guarded("frmslideshow", "Form_Resize", [this] { FitScreen(); });
}

void frmslideshow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QImage& frame = show_.Frame();
  if (frame.isNull()) {
    painter.fillRect(rect(), Qt::black);
    return;
  }
  // Pixel on pixel; the frame itself must not be told the scale, or it would be copied.
  painter.scale(1 / devicePixelRatioF(), 1 / devicePixelRatioF());
  painter.drawImage(0, 0, frame);
}

// Keys.

void frmslideshow::keyPressEvent(QKeyEvent* event) {
  Guarded("frmslideshow", "Form_KeyPress", [this, event] { Form_KeyPress(event->key()); });
}

void frmslideshow::Form_KeyPress(int key) {
  if (key == Qt::Key_Escape) return reject();
  if (!keys_) return;
  switch (key) {
    case Qt::Key_Space:
      return SetPaused(!show_.IsPaused());
    case Qt::Key_Right:
    case Qt::Key_Down:
      return show_.Step(1);
    case Qt::Key_Left:
    case Qt::Key_Up:
      return show_.Step(-1);
    default:
      return;
  }
}

void frmslideshow::SetPaused(bool paused) {
  show_.SetPaused(paused);
  Tell(paused ? tr("Paused") : tr("Playing"));
  silence_.start();
}

}  // namespace zqm
