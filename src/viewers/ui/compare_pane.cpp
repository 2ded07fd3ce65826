// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/compare_pane.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "shell/files.h"
#include "shell/ui/elided_label.h"
#include "shell/ui/look.h"
#include "viewers/full_info.h"
#include "viewers/photo_values.h"
#include "viewers/ui/viewer_actions.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kFrame = 2;
constexpr int kPatienceMilliseconds = 250;
constexpr QSize kLeastView(160, 120);

}  // namespace

ImageView LinkedView(const ImageView& view, const QSize& size, const QSize& otherSize,
                     double zoomRatio) {
  if (view.fit || size.isEmpty()) return view;
  ImageView linked = view;
  linked.zoom = view.zoom * zoomRatio;
  linked.centre = {view.centre.x() * otherSize.width() / size.width(),
                   view.centre.y() * otherSize.height() / size.height()};
  return linked;
}

ComparePane::ComparePane(Catalogue& catalogue, const ReadRequest& request,
                         const QStringList& photos, int position, QWidget* parent)
    : QWidget(parent),
      catalogue_(catalogue),
      viewer_(catalogue, request, photos, position),
      view_(new PictureView),
      name_(new ElidedLabel),
      values_(new QLabel),
      zoom_(look::Caption(QString())) {
  view_->setObjectName(u"ImageX1"_s);
  view_->setAccessibleName(tr("Photo"));
  view_->setMinimumSize(kLeastView);
  view_->SetMouseInteract(u"SCROLL"_s, true);
  view_->viewport()->installEventFilter(this);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, kFrame, look::kSpace4);
  column->addLayout(ComposeHead());
  column->addWidget(view_, 1);
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMilliseconds);
  connect(&viewer_, &PhotoViewer::Waiting, &patience_, qOverload<>(&QTimer::start));
  connect(&patience_, &QTimer::timeout, this, [this] {
    if (viewer_.IsReading()) name_->SetParts(tr("Loading…"), QString());
  });
  connect(view_, &PictureView::FullSizeWanted, &viewer_, &PhotoViewer::WantFullSize,
          Qt::QueuedConnection);
  connect(view_, &PictureView::OnViewChange, this, &ComparePane::ShowZoom);
}

QToolButton* ComparePane::StepButton(const char* icon, const QString& toolTip, const char* name,
                                     int step) {
  QToolButton* button = look::IconButton(icon, toolTip);
  button->setObjectName(QString::fromLatin1(name));
  // The Tab key goes to the other side.
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::clicked, this, [this, step] {
    Q_EMIT Activated();
    Q_EMIT StepWanted(step);
  });
  return button;
}

QLayout* ComparePane::ComposeHead() {
  name_->setObjectName(u"lblname"_s);
  values_->setObjectName(u"lblvalues"_s);
  values_->setTextFormat(Qt::PlainText);
  zoom_->setObjectName(u"lblzoom"_s);
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->setContentsMargins(look::kSpace4, look::kSpace4, look::kSpace8, 0);
  head->addWidget(StepButton("go-previous", tr("Previous photo (Left)"), "cmdprevious", -1));
  head->addWidget(StepButton("go-next", tr("Next photo (Right)"), "cmdnext", 1));
  head->addWidget(name_, 1);
  head->addWidget(values_);
  head->addWidget(zoom_);
  return head;
}

bool ComparePane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel)
    Q_EMIT Activated();
  if (event->type() == QEvent::MouseButtonDblClick && view_->IsFit() &&
      static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
    Q_EMIT ActualSizeWanted();
  if (event->type() == QEvent::Resize) FitBox();
  return QWidget::eventFilter(watched, event);
}

void ComparePane::FitBox() {
  viewer_.SetBox((QSizeF(view_->maximumViewportSize()) * devicePixelRatioF()).toSize());
}

void ComparePane::SetActive(bool active) {
  active_ = active;
  setAccessibleDescription(active ? tr("Active side") : QString());
  update();
}

void ComparePane::paintEvent(QPaintEvent*) {
  if (!active_) return;
  QPainter painter(this);
  painter.setPen(QPen(QColor(look::kAccent), kFrame));
  const double half = kFrame / 2.0;
  painter.drawRect(QRectF(rect()).adjusted(half, half, -half, -half));
}

void ComparePane::ShowPhoto() {
  patience_.stop();
  const ViewedPhoto& photo = viewer_.Shown();
  const bool replaced = std::exchange(seen_, photo.path) == photo.path;
  ShowOn(*view_, photo, photo.message,
         replaced ? PictureView::KeepView::Zoom : PictureView::KeepView::No);
  ShowValues();
  ShowZoom();
}

void ComparePane::ShowValues() {
  const ViewedPhoto& photo = viewer_.Shown();
  if (photo.path.isEmpty()) return;
  name_->SetParts(GetFileName(photo.path),
                  u"   "_s + PlaceText(photo.position, viewer_.Count()) +
                      (photo.offline ? tr("   missing or offline") : QString()));
  values_->setText(ValuesText(ValuesOf(catalogue_, photo.path)));
}

void ComparePane::ShowZoom() {
  zoom_->setText(view_->HasImage() ? u"%1 %"_s.arg(std::lround(view_->Zoom())) : QString());
}

}  // namespace zqm
