// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/patch_view.h"

#include <QPainter>

#include "imaging/ui/image_x.h"
#include "shell/ui/look.h"

namespace zqm {

PatchView::PatchView(ImageX* view) : QWidget(view->viewport()), view_(view) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  resize(view->viewport()->size());
  view->viewport()->installEventFilter(this);
  connect(view, &ImageX::OnViewChange, this, [this] { update(); });
}

void PatchView::Show(const QImage& image, const QRect& area) {
  image_ = image;
  area_ = area;
  update();
}

bool PatchView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) resize(view_->viewport()->size());
  return QWidget::eventFilter(watched, event);
}

void PatchView::paintEvent(QPaintEvent*) {
  if (image_.isNull() || !view_->HasImage()) return;
  const double ratio = devicePixelRatioF();
  const double scale = view_->Zoom() / 100 / ratio;
  const QPointF origin(-view_->ToBitmapX(0) * scale, -view_->ToBitmapY(0) * scale);
  const QRectF target(origin + QPointF(area_.topLeft()) * scale, QSizeF(area_.size()) * scale);
  QPainter painter(this);
  // Transparent pixels show the ground, not the softer picture below.
  painter.fillRect(target, QColor(look::kGround));
  const QSizeF device = target.size() * ratio;
  constexpr double kPixelsShowFrom = 2;  // from here single pixels are what the user looks at
  const double enlarged = device.width() / image_.width();
  const bool exact = std::abs(device.width() - image_.width()) < 1 &&
                     std::abs(device.height() - image_.height()) < 1;
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !exact && enlarged < kPixelsShowFrom);
  painter.drawImage(target, image_);
}

}  // namespace zqm
