// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/frmwatermarkimages.h"

#include <QCoreApplication>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "imaging/template_files.h"
#include "imaging/text_shape.h"
#include "imaging/ui/image_multi_x.h"
#include "imaging/ui/image_x.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/failure_table.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"
#include "watermark/stamp_photos.h"
#include "watermark/ui/frmwatermarkcreator.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize{1100, 760};
constexpr int kTemplatesWidth = 240;
constexpr int kThumbnail = 96;
constexpr QSize kSmallestPreview{320, 180};

constexpr char16_t kLoadingTemplates[] = u"Loading watermark templates. Please wait...";
constexpr char16_t kOpeningCreator[] = u"Initializing watermark template creator. Please wait...";
constexpr char16_t kGenerating[] = u"Generating Preview. Please wait...";
constexpr char16_t kDelete[] = u"Do you want to delete the selected template?";

/// Shows of the objects what a photo will have of them.
class PhotoPreview : public ImageX {
 protected:
  void PaintOver(QPainter& painter, const QRegion& region) override {
    painter.save();
    painter.setClipRect(
        QRectF(FromBitmap({0, 0}), FromBitmap(QPointF(ImageWidth(), ImageHeight()))),
        Qt::IntersectClip);
    ImageX::PaintOver(painter, region);
    painter.restore();
  }
};

}  // namespace

frmwatermarkimages::frmwatermarkimages(Session& session, const QStringList& photos, QWidget* parent)
    : QDialog(parent),
      session_(session),
      folder_(session.Folders().WatermarkTemplatesFolder()),
      photos_(photos),
      thumbnailView_(new ImageMultiX),
      preview_(new PhotoPreview),
      pages_(new QStackedWidget),
      failuresHeading_(look::Heading(QString())),
      failures_(new FailureTable),
      templates_(new QListWidget),
      status_(look::Hint(QString())),
      progress_(new RunProgress("Label6")),
      panes_(new QWidget) {
  setObjectName(u"frmwatermarkimages"_s);
  setWindowTitle(u"Watermark Images"_s);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* row = new QHBoxLayout(panes_);
  look::SetSpace(row, 0, look::kSpace12);
  row->addWidget(ComposePhotos(), 1);
  row->addWidget(ComposeTemplates());
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(panes_, 1);
  column->addWidget(progress_);
  column->addLayout(ComposeFoot());
  const QSize room = screen()->availableGeometry().size();
  resize(kUsualSize.boundedTo(room * 0.9));
  Form_Load();
}

frmwatermarkimages::~frmwatermarkimages() = default;

// Putting together.

QWidget* frmwatermarkimages::ComposePhotos() {
  preview_->setObjectName(u"ImageX1"_s);
  preview_->setAccessibleName(tr("Preview"));
  preview_->setMinimumSize(kSmallestPreview);
  auto* failurePage = new QWidget;
  auto* failureColumn = new QVBoxLayout(failurePage);
  look::SetSpace(failureColumn, 0, look::kSpace8);
  failuresHeading_->setObjectName(u"Label5"_s);
  failures_->setObjectName(u"ListView1"_s);
  failureColumn->addWidget(failuresHeading_);
  failureColumn->addWidget(failures_, 1);
  pages_->addWidget(preview_);
  pages_->addWidget(failurePage);
  thumbnailView_->setObjectName(u"ImageMultiX1"_s);
  thumbnailView_->setAccessibleName(tr("Photos"));
  thumbnailView_->setSelectionMode(QAbstractItemView::SingleSelection);
  thumbnailView_->SetList(&thumbnails_);
  thumbnailView_->SetThumbnailSize(kThumbnail);
  thumbnailView_->setFixedHeight(thumbnailView_->gridSize().height() + look::kSpace24);
  auto* photos = new QWidget;
  auto* column = new QVBoxLayout(photos);
  look::SetSpace(column, 0, look::kSpace12);
  column->addWidget(pages_, 1);
  column->addWidget(thumbnailView_);
  connect(thumbnailView_, &ImageMultiX::OnImageSelect, this, [this] {
    Guarded("frmwatermarkimages", "ImageMultiX1_OnImageSelect",
            [this] { ImageMultiX1_OnImageSelect(); });
  });
  connect(preview_, &ImageX::OnProgress, this, [this](int percent) {
    status_->setText(QString::fromUtf16(kGenerating) + u" %1%"_s.arg(percent));
  });
  return photos;
}

QWidget* frmwatermarkimages::ComposeTemplates() {
  templates_->setObjectName(u"List1"_s);
  templates_->setMinimumWidth(kTemplatesWidth);
  templates_->setMaximumWidth(kTemplatesWidth);
  create_ = AddButton(u"&Create"_s, "Command1", &frmwatermarkimages::Command1_Click);
  remove_ = AddButton(u"Re&move"_s, "Command2", &frmwatermarkimages::Command2_Click);
  edit_ = AddButton(u"&Edit"_s, "Command3", &frmwatermarkimages::Command3_Click);
  apply_ = AddButton(u"&Apply"_s, "Command4", &frmwatermarkimages::Command4_Click);
  auto* side = new QWidget;
  auto* column = new QVBoxLayout(side);
  look::SetSpace(column, 0, look::kSpace8);
  QLabel* heading = look::Heading(tr("Watermark &Templates"));
  heading->setBuddy(templates_);
  column->addWidget(heading);
  column->addWidget(templates_, 1);
  column->addWidget(apply_);
  auto* keeping = new QHBoxLayout;
  look::SetSpace(keeping, 0, look::kSpace8);
  for (QPushButton* button : {create_, edit_, remove_})
    keeping->addWidget(button);
  column->addLayout(keeping);
  connect(templates_, &QListWidget::itemSelectionChanged, this, [this] { List1_Click(); });
  connect(templates_, &QListWidget::itemActivated, this, [this] { apply_->click(); });
  return side;
}

QLayout* frmwatermarkimages::ComposeFoot() {
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  status_->setObjectName(u"Label4"_s);
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  cancel_ = new QPushButton(tr("Cancel"));
  cancel_->setObjectName(u"cmdcancel"_s);
  cancel_->setAutoDefault(false);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  stamp_ = AddButton(u"&Watermark Images"_s, "Command5", &frmwatermarkimages::Command5_Click);
  look::MakePrimary(stamp_);
  // It can't be taken back: Enter in a list isn't to do it.
  stamp_->setDefault(false);
  stamp_->setAutoDefault(false);
  foot->addWidget(status_, 1);
  foot->addWidget(cancel_);
  foot->addWidget(stamp_);
  return foot;
}

QPushButton* frmwatermarkimages::AddButton(const QString& caption, const char* name,
                                           void (frmwatermarkimages::*handler)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  const QByteArray procedure = QByteArray(name) + "_Click";
  connect(button, &QPushButton::clicked, this, [this, procedure, handler] {
    Guarded("frmwatermarkimages", procedure.constData(), [&] { (this->*handler)(); });
  });
  return button;
}

void frmwatermarkimages::Form_Load() {
  preview_->SetMouseInteract(u"SCROLL"_s, true);
  preview_->SetSettings(session_.WorkSettings());
  thumbnails_.SetReadRequest(session_.ReadSettings());
  thumbnails_.AppendImages(photos_);
  ThumbnailLook plain;
  plain.frame = look::kPlain;
  plain.caption = look::kText;
  thumbnails_.SetLooks(std::vector(static_cast<std::size_t>(photos_.size()), plain));
  status_->setText(QString::fromUtf16(kLoadingTemplates));
  ShowTemplates({});
  UpdateEnabled();
}

void frmwatermarkimages::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (std::exchange(shown_, true) || photos_.isEmpty()) return;
  // When the window stands.
  QTimer::singleShot(0, this, [this] { thumbnailView_->SelectPaths({photos_.first()}); });
}

// Photos.

void frmwatermarkimages::ImageMultiX1_OnImageSelect() {
  if (locked_ || thumbnailView_->SelectedPaths().isEmpty()) return;
  pages_->setCurrentIndex(0);
  SetLocked(true, QString::fromUtf16(kGenerating));
  preview_->LockUpdate(true);
  const QString path = thumbnailView_->SelectedPaths().last();
  const Outcome loaded = preview_->LoadFromFile(path);
  if (!loaded) {
    preview_->Clear();
    preview_->SetMessage(loaded.Reason());
  }
  ShowApplied();
  preview_->LockUpdate(false);
  SetLocked(false);
}

void frmwatermarkimages::ShowApplied() {
  if (preview_->HasImage()) preview_->SetObjects(applied_);
}

// Templates.

void frmwatermarkimages::ShowTemplates(const QString& selected) {
  templates_->clear();
  templates_->addItems(TemplatesName(folder_));
  for (QListWidgetItem* item : templates_->findItems(selected, Qt::MatchExactly))
    templates_->setCurrentItem(item);
}

QString frmwatermarkimages::SelectedTemplate() const {
  // Not the current one: that may only be where the keys are.
  const QList<QListWidgetItem*> items = templates_->selectedItems();
  return items.isEmpty() ? QString() : items.first()->text();
}

void frmwatermarkimages::List1_Click() {
  UpdateEnabled();
}

bool frmwatermarkimages::LoadSelected(VectorObjects& objects) {
  const auto file = LoadTemplate(TemplatePath(folder_, SelectedTemplate()));
  if (!file) {
    MsgBox(file.Reason(), MessageKind::Warning);
    return false;
  }
  objects = file->objects;
  return true;
}

void frmwatermarkimages::Command4_Click() {
  const bool located = FileExists(TemplatePath(folder_, SelectedTemplate()));
  // One that stands but can't be read leaves nothing applied: the former isn't what was asked for.
  VectorObjects objects;
  SetLocked(true);
  const bool loaded = LoadSelected(objects);
  SetLocked(false);
  if (!loaded && !located) return;
  applied_ = std::move(objects);
  appliedName_ = loaded ? SelectedTemplate() : QString();
  UpdateEnabled();
  pages_->setCurrentIndex(0);
  if (!preview_->HasImage() && !photos_.isEmpty()) thumbnailView_->SelectPaths({photos_.first()});
  ShowApplied();
}

void frmwatermarkimages::ShowCreator(
    const std::function<void(frmwatermarkcreator& creator)>& prepare) {
  SetLocked(true, QString::fromUtf16(kOpeningCreator));
  status_->repaint();
  frmwatermarkcreator creator(folder_, session_.WorkSettings(), preview_->GetPicture(), this);
  connect(&creator, &frmwatermarkcreator::TemplateSaved, this, &frmwatermarkimages::TemplateSaved);
  prepare(creator);
  SetLocked(false);
  creator.exec();
}

void frmwatermarkimages::Command1_Click() {
  ShowCreator([](frmwatermarkcreator&) {});
}

void frmwatermarkimages::Command3_Click() {
  VectorObjects objects;
  SetLocked(true);
  const bool loaded = LoadSelected(objects);
  SetLocked(false);
  if (!loaded) return;
  ShowCreator(
      [&](frmwatermarkcreator& creator) { creator.EditTemplate(SelectedTemplate(), objects); });
}

void frmwatermarkimages::TemplateSaved(const QString& name) {
  ShowTemplates(name);
  // What stands on the photos isn't an older one than the user has just seen.
  if (name != appliedName_) return;
  if (const auto file = LoadTemplate(TemplatePath(folder_, name))) applied_ = file->objects;
  ShowApplied();
}

void frmwatermarkimages::Command2_Click() {
  const QString path = TemplatePath(folder_, SelectedTemplate());
  if (!FileExists(path)) {
    MsgBox(u"Cannot locate "_s + path, MessageKind::Warning);
    return;
  }
  if (MsgBox(QString::fromUtf16(kDelete), MessageKind::Question, Buttons::YesNo) != Answer::Yes)
    return;
  if (const Outcome removed = RemoveTemplate(path); !removed) {
    MsgBox(removed.Reason(), MessageKind::Warning);
    return;
  }
  qDeleteAll(templates_->selectedItems());
  UpdateEnabled();
}

// Stamping.

void frmwatermarkimages::Command5_Click() {
  if (applied_.IsEmpty()) {
    MsgBox(QString::fromUtf16(stamp_text::kNoneApplied), MessageKind::Warning);
    return;
  }
  const QString wait = QString::fromUtf16(stamp_text::kStamp.wait);
  failures_->SetFailures({});
  SetLocked(true);
  panes_->setEnabled(false);
  progress_->Begin(wait);
  const BatchObserver observer = [&](const BatchProgress& at) {
    progress_->Show(at.done, at.total, wait + u" %1%"_s.arg(at.Percent()));
  };
  const PictureResult result = StampPhotos({session_.ActiveCatalogue(), nullptr, observer, {}},
                                           photos_, applied_, session_.WorkSettings());
  // What the user clicked meanwhile was for locked controls.
  QCoreApplication::processEvents();
  progress_->End();
  panes_->setEnabled(true);
  SetLocked(false);
  ShowEnd(result.failures);
}

void frmwatermarkimages::ShowEnd(const FailureList& failures) {
  if (failures.Empty()) {
    MsgBox(QString::fromUtf16(stamp_text::kStamp.done), MessageKind::Information);
    return accept();
  }
  QStringList failed;
  for (const FailureRow& row : failures.rows)
    failed.append(row.File);
  // Another try isn't to stamp the others twice.
  QStringList stamped = photos_;
  stamped.removeIf([missed = QSet<QString>(failed.begin(), failed.end())](const QString& path) {
    return missed.contains(path);
  });
  photos_ = failed;
  thumbnailView_->BlockSelectionSignals(true);
  thumbnails_.DeleteImages(stamped);
  thumbnailView_->clearSelection();
  thumbnailView_->BlockSelectionSignals(false);
  // It may show a photo as it was before its stamp.
  preview_->Clear();
  UpdateEnabled();
  failuresHeading_->setText(failures.label);
  failures_->SetFailures(failures);
  failures_->setColumnWidth(0, failures_->width() / 2);
  pages_->setCurrentIndex(1);
}

void frmwatermarkimages::SetLocked(bool locked, const QString& text) {
  if (locked) focus_ = focusWidget();
  locked_ = locked;
  status_->setText(text);
  UpdateEnabled();
  // Keys go on where they were: a button that is disabled lets go of them.
  if (!locked && focus_) focus_->setFocus();
}

void frmwatermarkimages::UpdateEnabled() {
  const bool chosen = !SelectedTemplate().isEmpty() && !locked_;
  const bool surface = preview_->HasImage() && !locked_;
  for (QPushButton* button : {remove_, apply_})
    button->setEnabled(chosen);
  edit_->setEnabled(chosen && surface);
  create_->setEnabled(surface);
  const QString noSurface = surface ? QString() : tr("Choose a photo to draw the template on");
  const QString noChoice = chosen ? QString() : tr("Choose a template of the list");
  create_->setToolTip(noSurface);
  edit_->setToolTip(chosen ? noSurface : noChoice);
  for (QPushButton* button : {remove_, apply_})
    button->setToolTip(noChoice);
  if (!locked_) status_->setText(StatusText());
  stamp_->setEnabled(!locked_);
  cancel_->setEnabled(!locked_);
}

QString frmwatermarkimages::StatusText() const {
  if (applied_.IsEmpty())
    return templates_->count() > 0 ? QString() : tr("No templates yet: create one.");
  if (const QStringList missing = MissingFonts(applied_); !missing.isEmpty())
    return tr("%1: this machine lacks the font %2").arg(appliedName_, missing.join(u", "));
  return tr("\"%1\" will be painted into the photos themselves").arg(appliedName_);
}

void frmwatermarkimages::reject() {
  if (!locked_) QDialog::reject();
}

}  // namespace zqm
