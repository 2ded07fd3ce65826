// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/ui/frmcatalog.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>

#include "imaging/ui/image_multi_x.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kNotesHeight = 72;
constexpr int kPreviewSize = 120;
constexpr int kTreeWidth = 360, kPreviewWidth = 480;

void Tell(const char16_t* text, MessageKind kind) {
  MsgBox(QString::fromUtf16(text), kind);
}

}  // namespace

frmcatalog::frmcatalog(Session& session, BrowserView* view, const QString& startFolder,
                       QWidget* parent)
    : QDialog(parent),
      session_(session),
      view_(view),
      tree_(new FolderTree(FolderTree::Ticks::Yes)),
      showPreview_(new QCheckBox(tr("Show &Preview"))),
      previewList_(new ImageMultiX) {
  setObjectName(u"frmcatalog"_s);
  setWindowTitle(u"Catalog Folders / Subfolders"_s);
  tree_->setObjectName(u"FolderTreeview1"_s);
  tree_->setAccessibleName(tr("Folders to catalog"));
  showPreview_->setObjectName(u"Check1"_s);
  preview_.SetReadRequest(session_.ReadSettings());
  previewList_->setObjectName(u"ImageMultiX1"_s);
  previewList_->setAccessibleName(tr("Photos of the folder"));
  previewList_->SetList(&preview_);
  previewList_->SetRows(ImageMultiX::Rows::Multiple);
  previewList_->SetThumbnailSize(kPreviewSize);
  previewList_->SetEmptyText(tr("Choose a folder to see its photos."));
  previewList_->hide();

  auto* panes = new QSplitter(Qt::Horizontal);
  panes->setHandleWidth(1);
  panes->setChildrenCollapsible(false);
  panes->addWidget(tree_);
  panes->addWidget(previewList_);
  panes->setSizes({kTreeWidth, kPreviewWidth});
  panes->setStretchFactor(1, 1);

  importButton_ = new QPushButton(tr("&Catalog"));
  importButton_->setObjectName(u"cmdimport"_s);
  look::MakePrimary(importButton_);
  cancelButton_ = new QPushButton(tr("Cancel"));
  cancelButton_->setObjectName(u"cmdcancel"_s);
  auto* buttons = new QHBoxLayout;
  look::SetSpace(buttons, 0, look::kSpace8);
  buttons->addWidget(showPreview_);
  buttons->addStretch();
  buttons->addWidget(cancelButton_);
  buttons->addWidget(importButton_);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(
      look::Hint(tr("Tick the folders whose photos are to be added. A folder below a "
                    "ticked one is only visited when it is ticked itself.")));
  column->addWidget(panes, 1);
  column->addWidget(ComposeTexts());
  progress_ = new RunProgress("Label12");
  column->addWidget(progress_);
  column->addLayout(buttons);

  connect(tree_, &FolderTree::FolderClick, this, [this](const QString& path) {
    Guarded("frmcatalog", "FolderTreeview1_FolderClick",
            [&] { FolderTreeview1_FolderClick(path); });
  });
  connect(tree_, &FolderTree::TicksChanged, this, &frmcatalog::UpdateImportButton);
  connect(showPreview_, &QCheckBox::toggled, this,
          [this] { Guarded("frmcatalog", "Check1_Click", [this] { Check1_Click(); }); });
  connect(cancelButton_, &QPushButton::clicked, this, &frmcatalog::reject);
  connect(importButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmcatalog", "cmdimport_Click", [this] { cmdimport_Click(); }); });
  // By itself a window takes two thirds of a small screen at most.
  resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
  UpdateImportButton();
  if (!startFolder.isEmpty()) tree_->SetCurrentFolder(startFolder);
  tree_->setFocus();
}

QSize frmcatalog::sizeHint() const {
  return {880, 640};
}

QWidget* frmcatalog::ComposeTexts() {
  notesEdit_ = new QPlainTextEdit;
  notesEdit_->setObjectName(u"txtnotes"_s);
  notesEdit_->setTabChangesFocus(true);
  notesEdit_->setFixedHeight(kNotesHeight);
  notesEdit_->setAccessibleName(tr("Notes"));
  authorEdit_ = new QLineEdit;
  authorEdit_->setObjectName(u"txtauthor"_s);
  authorEdit_->setAccessibleName(tr("Author"));
  dateEdit_ = new QLineEdit;
  dateEdit_->setObjectName(u"txtdate"_s);
  dateEdit_->setPlaceholderText(u"dd/mm/yyyy"_s);
  dateEdit_->setAccessibleName(tr("Date"));

  auto* texts = new QWidget;
  auto* grid = new QGridLayout(texts);
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(look::Heading(tr("Database Information - Optional")), 0, 0, 1, 4);
  grid->addWidget(look::Caption(tr("Notes")), 1, 0, Qt::AlignRight | Qt::AlignTop);
  grid->addWidget(notesEdit_, 1, 1, 2, 1);
  grid->addWidget(look::Caption(tr("Author")), 1, 2);
  grid->addWidget(authorEdit_, 1, 3);
  grid->addWidget(look::Caption(tr("Date")), 2, 2);
  grid->addWidget(dateEdit_, 2, 3);
  grid->setColumnStretch(1, 3);
  grid->setColumnStretch(3, 2);
  return texts;
}

// The preview.

void frmcatalog::FolderTreeview1_FolderClick(const QString& path) {
  if (!showPreview_->isChecked() || path == shownFolder_) return;
  shownFolder_ = path;
  preview_.Clear();
  previewList_->SetEmptyText(tr("Reading…"));
  FailureList unread;
  const QStringList files = RunAside([path, &unread] { return ScanFolder(path, false, unread); });
  // Another folder may have been chosen meanwhile.
  if (path != shownFolder_) return;
  preview_.AppendImages(files);
  ThumbnailLook look;
  look.frame = look::kPlain;
  look.caption = look::kText;
  preview_.SetLooks(std::vector<ThumbnailLook>(static_cast<std::size_t>(files.size()), look));
  previewList_->SetEmptyText(tr("There are no photos in this folder."));
}

void frmcatalog::Check1_Click() {
  const bool on = showPreview_->isChecked();
  previewList_->setVisible(on);
  preview_.Clear();
  shownFolder_.clear();
  if (on && !tree_->CurrentFolder().isEmpty()) FolderTreeview1_FolderClick(tree_->CurrentFolder());
}

// The import.

void frmcatalog::cmdimport_Click() {
  if (running_) return;
  const QStringList folders = tree_->TickedFolders();
  if (folders.isEmpty()) return Tell(import_text::kNoFolder, MessageKind::Information);
  ImportTexts texts{notesEdit_->toPlainText(), authorEdit_->text(), {}};
  if (!dateEdit_->text().isEmpty()) {
    texts.date = ParseImportDate(dateEdit_->text());
    if (!texts.date.isValid()) {
      dateEdit_->setFocus();
      return Tell(import_text::kInvalidDate, MessageKind::Warning);
    }
  }
  LockControlsImport();
  FailureList unread;
  const QStringList files = ScanFolders(folders, unread);
  if (files.isEmpty() && unread.Empty()) {
    UnlockControlsImport();
    Tell(import_text::kNoImages, MessageKind::Warning);
    preview_.Clear();
    shownFolder_.clear();
    return;
  }
  RunImport(files, texts, std::move(unread));
}

QStringList frmcatalog::ScanFolders(const QStringList& folders, FailureList& failures) {
  return RunAside([&folders, &failures] {
    QStringList files;
    for (const QString& folder : folders)
      files += ScanFolder(folder, false, failures);
    return files;
  });
}

void frmcatalog::RunImport(const QStringList& files, const ImportTexts& texts, FailureList unread) {
  ImportResult result = CatalogueFiles(
      files, texts, session_.ReadSettings(), session_.ActiveCatalogue(), view_,
      [this](const ImportProgress& at) {
        progress_->Show(at.done, at.total,
                        at.file.isEmpty() ? QString() : u"Processing "_s + GetFileName(at.file));
      });
  preview_.Clear();
  shownFolder_.clear();
  notesEdit_->clear();
  authorEdit_->clear();
  dateEdit_->clear();
  UnlockControlsImport();
  unread.rows.insert(unread.rows.end(), result.failures.rows.begin(), result.failures.rows.end());
  if (unread.Empty()) return Tell(import_text::kDone, MessageKind::Information);
  unread.label = QString::fromUtf16(import_text::kFailures);
  ShowFailures(unread, this);
}

void frmcatalog::UpdateImportButton() {
  QString whyNot;
  if (session_.ActiveCatalogue().ReadOnly())
    whyNot = tr("The catalogue is read-only.");
  else if (tree_->IsTicking())
    whyNot = tr("Folders are still being ticked.");
  importButton_->setEnabled(whyNot.isEmpty() && !running_);
  importButton_->setToolTip(whyNot);
}

void frmcatalog::LockControlsImport() {
  SetLocked(true);
}

void frmcatalog::UnlockControlsImport() {
  // What the user clicked and typed meanwhile was for locked controls.
  QCoreApplication::processEvents();
  SetLocked(false);
}

void frmcatalog::SetLocked(bool locked) {
  running_ = locked;
  for (QWidget* widget : std::initializer_list<QWidget*>{cancelButton_, showPreview_, tree_,
                                                         notesEdit_, authorEdit_, dateEdit_})
    widget->setEnabled(!locked);
  UpdateImportButton();
  if (locked)
    progress_->Begin(tr("Looking for photos"));
  else
    progress_->End();
}

void frmcatalog::reject() {
  if (!running_) QDialog::reject();
}

void frmcatalog::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
