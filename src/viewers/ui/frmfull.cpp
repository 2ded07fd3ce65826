// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/frmfull.h"

#include <QApplication>
#include <QLabel>
#include <QResizeEvent>
#include <QScreen>
#include <QWindow>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/ui/look.h"
#include "shell/window_settings.h"
#include "viewers/full_info.h"
#include "viewers/ui/full_view.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatienceMilliseconds = 250;
constexpr int kNoticeMilliseconds = 1800;
constexpr QLatin1StringView kInfoKey("full/information");

}  // namespace

frmfull::frmfull(Session& session, const QStringList& photos, int start, QWidget* parent)
    : QDialog(parent),
      catalogue_(session.ActiveCatalogue()),
      viewer_(catalogue_, session.ReadSettings(), photos, start),
      actions_(new ViewerActions(ViewerKind::Full, this)),
      view_(new FullView),
      info_(look::Overlay(view_->viewport())),
      notice_(look::Overlay(view_->viewport())) {
  setObjectName(u"frmfull"_s);
  setWindowTitle(tr("Full Screen"));
  view_->setObjectName(u"ImageX1"_s);
  view_->setAccessibleName(tr("Photo"));
  view_->setContextMenuPolicy(Qt::ActionsContextMenu);
  view_->addActions(actions_->Menu());
  info_->setObjectName(u"lblinfo"_s);
  notice_->setObjectName(u"lblnotice"_s);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, 0);
  column->addWidget(view_);
  patience_.setSingleShot(true);
  patience_.setInterval(kPatienceMilliseconds);
  said_.setSingleShot(true);
  said_.setInterval(kNoticeMilliseconds);

  connect(actions_, &ViewerActions::Triggered, this, [this](ViewerCommand command) {
    Guarded("frmfull", "Run", [this, command] { Run(command); });
  });
  connect(view_, &FullView::Stepped, this, [this](int step) {
    Guarded("frmfull", "ImageX1_MouseWheel", [this, step] { GoTo(viewer_.Position() + step); });
  });
  connect(view_, &FullView::FullSizeWanted, &viewer_, &PhotoViewer::WantFullSize,
          Qt::QueuedConnection);
  connect(&viewer_, &PhotoViewer::Changed, this,
          [this] { Guarded("frmfull", "ShowPhoto", [this] { ShowPhoto(); }); });
  connect(&viewer_, &PhotoViewer::Waiting, &patience_, qOverload<>(&QTimer::start));
  connect(&patience_, &QTimer::timeout, this, [this] {
    if (!viewer_.IsReading()) return;
    said_.stop();  // it stands until the photo does
    SetNotice(tr("Loading %1…").arg(GetFileName(viewer_.PathAt(viewer_.Position()))));
  });
  connect(&viewer_, &PhotoViewer::FullSizeFailed, this, &frmfull::Say);
  connect(&said_, &QTimer::timeout, this, &frmfull::SayStanding);

  const bool upright = ShownUpright();
  actions_->Get(ViewerCommand::Upright)->setChecked(upright);
  viewer_.SetUpright(upright);
  actions_->Get(ViewerCommand::Information)
      ->setChecked(WindowSettings().value(kInfoKey, false).toBool());
  const QScreen* screen = parent != nullptr ? parent->screen() : QApplication::primaryScreen();
  setGeometry(screen->geometry());
  setWindowState(Qt::WindowFullScreen);
}

frmfull::~frmfull() = default;

QString frmfull::LastShown() const {
  const QString& path = viewer_.Shown().path;
  return path.isEmpty() ? viewer_.PathAt(viewer_.Position()) : path;
}

void frmfull::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  FitBox();
  PlaceOverlays();
}

void frmfull::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  connect(windowHandle(), &QWindow::screenChanged, this, &frmfull::FitBox, Qt::UniqueConnection);
}

/// The layout follows later; the view fills the window.
void frmfull::FitBox() {
  viewer_.SetBox((QSizeF(size()) * devicePixelRatioF()).toSize());
}

void frmfull::Run(ViewerCommand command) {
  if (ZoomBy(command, *view_)) return;
  switch (command) {
    case ViewerCommand::Next:
      return GoTo(viewer_.Position() + 1);
    case ViewerCommand::Previous:
      return GoTo(viewer_.Position() - 1);
    case ViewerCommand::First:
      return GoTo(0);
    case ViewerCommand::Last:
      return GoTo(viewer_.Count() - 1);
    case ViewerCommand::Upright: {
      const bool upright = actions_->Get(command)->isChecked();
      RememberUpright(upright);
      view_->Fit();
      viewer_.SetUpright(upright);
      return Say(upright ? tr("Upright by the camera's orientation") : tr("As the pixels lie"));
    }
    case ViewerCommand::Information:
      WindowSettings().setValue(kInfoKey, actions_->Get(command)->isChecked());
      return ShowInfo();
    case ViewerCommand::Close:
      return reject();
    default:
      break;
  }
  // The photo that is seen, not one that is still to come.
  const QString said = ChangeValue(command, catalogue_, viewer_.Shown().path);
  if (said.isNull()) return;
  ShowInfo();
  if (!said.isEmpty()) Say(said);
}

/// The ends are ends: whoever looks a list through wants to know when he is done.
void frmfull::GoTo(int position) {
  if (position < 0) return Say(tr("This is the first photo."));
  if (position >= viewer_.Count()) return Say(tr("This is the last photo."));
  said_.stop();
  SayStanding();
  viewer_.GoTo(position);
}

void frmfull::ShowPhoto() {
  patience_.stop();
  if (!said_.isActive()) SayStanding();
  const ViewedPhoto& photo = viewer_.Shown();
  ShowOn(*view_, photo, Elided(GetFileName(photo.path)) + u"\n"_s + photo.message,
         PictureView::KeepView::Zoom);
  setWindowTitle(GetFileName(photo.path));
  ShowInfo();
}

void frmfull::ShowInfo() {
  const bool wanted =
      actions_->Get(ViewerCommand::Information)->isChecked() && !viewer_.Shown().path.isEmpty();
  info_->setVisible(wanted);
  if (!wanted) return;
  const QString name = info_->fontMetrics().elidedText(GetFileName(viewer_.Shown().path),
                                                       Qt::ElideMiddle, width() / 2);
  QStringList lines{name};
  for (const QString& line :
       FullInfo(viewer_.Shown(), viewer_.Count(), ValuesOf(catalogue_, viewer_.Shown().path)))
    lines.append(Elided(line));
  info_->setText(lines.join(u'\n'));
  PlaceOverlays();
}

void frmfull::Say(const QString& text) {
  SetNotice(text);
  said_.start();
}

void frmfull::SayStanding() {
  const ViewedPhoto& photo = viewer_.Shown();
  if (photo.offline && !photo.image.isNull())
    SetNotice(tr("%1 is missing or offline.").arg(GetFileName(photo.path)));
  else
    notice_->hide();
}

void frmfull::SetNotice(const QString& text) {
  notice_->setText(Elided(text));
  notice_->show();
  PlaceOverlays();
}

/// No wider than the screen, with the overlay's own edges.
QString frmfull::Elided(const QString& line) const {
  return notice_->fontMetrics().elidedText(line, Qt::ElideMiddle, width() - 4 * look::kSpace24);
}

void frmfull::PlaceOverlays() {
  info_->adjustSize();
  info_->move(look::kSpace16, look::kSpace16);
  notice_->adjustSize();
  notice_->move((width() - notice_->width()) / 2, height() - notice_->height() - look::kSpace24);
}

}  // namespace zqm
