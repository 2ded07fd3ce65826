// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/frmprint.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include "imaging/rotate.h"
#include "imaging/ui/picture_view.h"
#include "printing/paper_measures.h"
#include "printing/print_pdf.h"
#include "printing/print_text.h"
#include "printing/ui/frmtemplate.h"
#include "printing/ui/sheet_picture.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/text.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{980, 720};
constexpr int kTemplatesWidth = 280;
constexpr int kTurnerWidth = 56;
constexpr QSize kIcon{48, 64};
constexpr int kMostDialogCopies = 999;  // that the printer's dialog shows

/// Asks for printer, paper and file. Nothing is printed by it.
bool AskForPrinter(QPrinter& printer, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  dialog.setWindowTitle(frmprint::tr("Printer Setup"));
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  dialog.setOption(QAbstractPrintDialog::PrintShowPageSize);
  if (auto* box = dialog.findChild<QDialogButtonBox*>())
    if (QPushButton* ok = box->button(QDialogButtonBox::Ok)) ok->setText(frmprint::tr("OK"));
  return dialog.exec() == QDialog::Accepted;
}

/// Also when it is selected: boxes have colours of their own.
QIcon AsItIs(const QImage& image) {
  const QPixmap pixmap = QPixmap::fromImage(image);
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Selected);
  return icon;
}

/// A sheet with its boxes, small; the empty icon for a template that can't be loaded.
QIcon SmallPicture(const QString& folder, const QString& name, double deviceScale) {
  const auto layout = LoadTemplate(folder, name);
  QImage icon((QSizeF(kIcon) * deviceScale).toSize(), QImage::Format_ARGB32_Premultiplied);
  icon.setDevicePixelRatio(deviceScale);
  icon.fill(Qt::transparent);
  if (!layout) return AsItIs(icon);
  const QImage sheet = SheetPicture(*layout, PreviewDpi(layout->sheet) / 3);
  QRectF place({}, QSizeF(sheet.size()).scaled(kIcon, Qt::KeepAspectRatio));
  place.moveCenter(QRectF({}, kIcon).center());
  QPainter painter(&icon);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, sheet.scaled((place.size() * deviceScale).toSize(),
                                        Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  painter.end();
  return AsItIs(icon);
}

}  // namespace

frmprint::frmprint(QStringList photos, const PictureSettings& load, const SessionFolders& folders,
                   QWidget* parent)
    : QDialog(parent),
      photos_(std::move(photos)),
      load_(load),
      folders_(folders),
      folder_(folders.PrintingTemplatesFolder()),
      printerDialog_(AskForPrinter),
      printer_(std::make_unique<QPrinter>(QPrinter::HighResolution)),
      controls_(new QWidget) {
  setObjectName(u"frmprint"_s);
  setWindowTitle(u"Print Preview"_s);
  printer_->setFullPage(true);
  printer_->setDocName(QString::fromUtf16(kMessageTitle));
  printer_->setCreator(QString::fromUtf16(kMessageTitle));
  auto* left = new QVBoxLayout;
  look::SetSpace(left, 0, look::kSpace8);
  ComposeTemplates(left);
  auto* right = new QVBoxLayout;
  look::SetSpace(right, 0, look::kSpace8);
  ComposePages(right);
  auto* columns = new QHBoxLayout(controls_);
  look::SetSpace(columns, 0, look::kSpace16);
  columns->addLayout(left);
  columns->addLayout(right, 1);
  auto* run = ComposeRun();
  auto* all = new QVBoxLayout(this);
  look::SetSpace(all, look::kSpace16, look::kSpace16);
  all->addWidget(controls_, 1);
  all->addLayout(run);
  ComposeFoot(all);
  resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
  FillTemplates();
  ShowState();
}

frmprint::~frmprint() = default;

QPushButton* frmprint::AddButton(QBoxLayout* row, const QString& caption, const char* name,
                                 void (frmprint::*clicked)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, name, clicked] {
    Guarded("frmprint", name, [this, clicked] { (this->*clicked)(); });
  });
  row->addWidget(button);
  return button;
}

void frmprint::ComposeTemplates(QBoxLayout* column) {
  column->addWidget(look::Heading(tr("Templates")));
  templates_ = new QListWidget;
  templates_->setObjectName(u"List1"_s);
  templates_->setAccessibleName(tr("Printing templates"));
  templates_->setIconSize(kIcon);
  templates_->setFixedWidth(kTemplatesWidth);
  templates_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // Not the current row, which a list has as soon as it gets the focus.
  connect(templates_, &QListWidget::itemSelectionChanged, this,
          [this] { Guarded("frmprint", "List1_Click", [this] { List1_Click(); }); });
  connect(templates_, &QListWidget::itemActivated, this,
          [this] { Guarded("frmprint", "Command6_Click", [this] { Command6_Click(); }); });
  column->addWidget(templates_, 1);
  apply_ = AddButton(column, tr("&Apply"), "Command6", &frmprint::Command6_Click);
  auto* buttons = new QHBoxLayout;
  look::SetSpace(buttons, 0, look::kSpace8);
  AddButton(buttons, tr("&Create"), "Command3", &frmprint::Command3_Click);
  edit_ = AddButton(buttons, tr("&Edit"), "Command5", &frmprint::Command5_Click);
  remove_ = AddButton(buttons, tr("&Remove"), "Command4", &frmprint::Command4_Click);
  column->addLayout(buttons);
}

QPushButton* frmprint::AddTurner(QBoxLayout* row, const QString& caption, const char* name,
                                 const QString& toolTip, int to) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  button->setFixedWidth(kTurnerWidth);
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  constexpr int kOnePage = 1;
  connect(button, &QPushButton::clicked, this, [this, name, to] {
    Guarded("frmprint", name, [this, to] {
      const int last = pages_ - 1;
      ShowPage(std::abs(to) == kOnePage ? std::clamp(page_ + to, 0, last) : to < 0 ? 0 : last);
    });
  });
  row->addWidget(button);
  (to < 0 ? back_ : forward_).push_back(button);
  return button;
}

void frmprint::ComposePages(QBoxLayout* column) {
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(
      look::Heading(photos_.size() == 1 ? tr("1 photo") : tr("%1 photos").arg(photos_.size())));
  head->addStretch(1);
  paper_ = look::Hint(QString());
  paper_->setObjectName(u"Label2"_s);
  paper_->setWordWrap(false);
  head->addWidget(paper_);
  column->addLayout(head);
  view_ = new PictureView;
  view_->setObjectName(u"ImageX1"_s);
  view_->setAccessibleName(tr("Page"));
  column->addWidget(view_, 1);
  auto* turners = new QHBoxLayout;
  look::SetSpace(turners, 0, look::kSpace8);
  turners->addStretch(1);
  AddTurner(turners, u"<<"_s, "Command13", tr("First page"), -2);
  AddTurner(turners, u"<"_s, "Command10", tr("Previous page"), -1);
  pageCaption_ = new QLabel;
  pageCaption_->setObjectName(u"Label3"_s);
  pageCaption_->setMinimumWidth(look::kCaptionWidth);
  pageCaption_->setAlignment(Qt::AlignCenter);
  turners->addWidget(pageCaption_);
  AddTurner(turners, u">"_s, "Command11", tr("Next page"), 1);
  AddTurner(turners, u">>"_s, "Command14", tr("Last page"), 2);
  turners->addStretch(1);
  column->addLayout(turners);
}

/// What runs, and between runs where the last one went. The page above keeps its height.
QLayout* frmprint::ComposeRun() {
  progress_ = new RunProgress("Label1");
  QSizePolicy policy = progress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  progress_->setSizePolicy(policy);
  target_ = look::Hint(QString());
  target_->setObjectName(u"lbltarget"_s);
  target_->setTextFormat(Qt::PlainText);
  target_->setWordWrap(false);
  target_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* run = new QGridLayout;
  look::SetSpace(run, 0, 0);
  run->addWidget(progress_, 0, 0);
  run->addWidget(target_, 0, 0);
  return run;
}

void frmprint::ShowTarget(const QString& path) {
  const QString text = path.isEmpty() ? QString() : tr("Printed into %1").arg(path);
  target_->setText(target_->fontMetrics().elidedText(text, Qt::ElideMiddle, target_->width()));
  target_->setToolTip(path);
}

void frmprint::ComposeFoot(QBoxLayout* column) {
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  auto* label = look::Caption(u"&Number of times to print each image :"_s);
  copies_ = new QLineEdit(u"1"_s);
  copies_->setObjectName(u"Text1"_s);
  copies_->setFixedWidth(look::kSpace24 * 2);
  label->setBuddy(copies_);
  foot->addWidget(label);
  foot->addWidget(copies_);
  for (const int by : {-1, 1}) {
    QToolButton* step = look::IconButton(by < 0 ? "list-remove" : "list-add",
                                         by < 0 ? tr("One copy less") : tr("One copy more"));
    connect(step, &QToolButton::clicked, this,
            [this, by] { copies_->setText(QString::number(SteppedCopies(copies_->text(), by))); });
    foot->addWidget(step);
  }
  foot->addStretch(1);
  AddButton(foot, tr("Printer &Setup"), "Command2", &frmprint::Command2_Click);
  auto* close = new QPushButton(tr("Close"));
  close->setObjectName(u"cmdcancel"_s);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &frmprint::reject);
  foot->addWidget(close);
  print_ = AddButton(foot, tr("&Print"), "Command12", &frmprint::Command12_Click);
  look::MakePrimary(print_);
  // Enter applies the template that is selected, and nothing prints by it.
  print_->setDefault(false);
  print_->setAutoDefault(false);
  auto* holder = new QWidget;
  foot->setContentsMargins(0, 0, 0, 0);
  holder->setLayout(foot);
  holder->setObjectName(u"foot"_s);
  column->addWidget(holder);
}

// Templates.

void frmprint::FillTemplates() {
  const QSignalBlocker quiet(templates_);
  templates_->clear();
  for (const QString& name : PrintTemplatesName(folder_)) {
    auto* item = new QListWidgetItem(SmallPicture(folder_, name, devicePixelRatioF()), name);
    item->setToolTip(name);
    templates_->addItem(item);
  }
  ResetEverything();
}

QString frmprint::SelectedName() const {
  const auto selected = templates_->selectedItems();
  return selected.isEmpty() ? QString() : selected.first()->text();
}

void frmprint::ResetEverything() {
  layout_.reset();
  boxes_.clear();
  pages_ = page_ = 0;
  view_->Clear();
  view_->SetMessage(templates_->count() == 0
                        ? tr("There are no printing templates in\n%1").arg(folder_)
                        : tr("Select a template from the list, then Apply it to the photos."));
}

void frmprint::List1_Click() {
  ResetEverything();
  if (const QString name = SelectedName(); !name.isEmpty()) {
    auto layout = LoadTemplate(folder_, name);
    if (layout) {
      layout_ = std::move(*layout);
      ShowSheet(SheetPicture(*layout_, PreviewDpi(layout_->sheet)));
    } else {
      MsgBox(layout.Reason(), MessageKind::Warning);
    }
  }
  ShowState();
}

void frmprint::Command6_Click() {
  const QString name = SelectedName();
  if (running_ || name.isEmpty()) return;
  // Read again: it may have gone since it was selected.
  auto layout = LoadTemplate(folder_, name);
  if (!layout) {
    MsgBox(layout.Reason(), MessageKind::Warning);
    return;
  }
  layout_ = std::move(*layout);
  if (!PageFits()) return;
  boxes_ = BoxesOf(*layout_);
  pages_ = PagesRequired(static_cast<int>(photos_.size()), static_cast<int>(boxes_.size()));
  ShowPage(0);
}

void frmprint::Command4_Click() {
  const QString name = SelectedName();
  if (name.isEmpty() || MsgBox(u"Delete the selected template?"_s, MessageKind::Question,
                               Buttons::YesNo) != Answer::Yes)
    return;
  const Outcome removed = RemoveTemplate(folder_, name);
  // Half of it may have gone.
  FillTemplates();
  ShowState();
  if (!removed) {
    MsgBox(removed.Reason(), MessageKind::Warning);
    return;
  }
  MsgBox(u"The selected template has been deleted."_s);
}

// The designer.

void frmprint::Command3_Click() {
  frmtemplate designer(folders_, this);
  RunDesigner(designer);
}

void frmprint::Command5_Click() {
  const QString name = SelectedName();
  if (running_ || name.isEmpty()) return;
  for (const QString& path :
       {TemplateObjectsFile(folder_, name), TemplateRecordFile(folder_, name)})
    if (!FileExists(path)) {
      MsgBox(QString::fromUtf16(print_text::kCannotLocate).arg(path), MessageKind::Warning);
      return;
    }
  SetRunning(true);
  progress_->Begin(QString::fromUtf16(print_text::kLoading));
  const auto layout = RunAside([&] { return LoadTemplate(folder_, name); });
  progress_->End();
  SetRunning(false);
  if (!layout) {
    MsgBox(layout.Reason(), MessageKind::Warning);
    return;
  }
  frmtemplate designer(folders_, this);
  designer.EditTemplate(name, *layout);
  RunDesigner(designer);
}

void frmprint::RunDesigner(frmtemplate& designer) {
  connect(&designer, &frmtemplate::TemplateSaved, this, &frmprint::ShowSaved);
  const QPageLayout settings = printer_->pageLayout();
  designer.exec();
  RestorePrtSettings(settings);
}

/// In the list and selected, as it is now.
void frmprint::ShowSaved(const QString& name) {
  FillTemplates();
  for (QListWidgetItem* item : templates_->findItems(name, Qt::MatchExactly))
    templates_->setCurrentItem(item);
}

/// The printer's page is the user's, whatever the templates' paper.
void frmprint::RestorePrtSettings(const QPageLayout& settings) {
  printer_->setPageLayout(settings);
  ShowState();
}

// The printer and its paper.

QSizeF frmprint::PageMillimetres() const {
  return printer_->pageLayout().fullRect(QPageLayout::Millimeter).size();
}

Orientation frmprint::PrinterOrientation() const {
  return printer_->pageLayout().orientation() == QPageLayout::Landscape ? Orientation::Landscape
                                                                        : Orientation::Portrait;
}

bool frmprint::PageFits() {
  const Outcome fits =
      CheckPage(layout_->sheet, PageMillimetres() / kMillimetresPerInch, PrinterOrientation());
  if (!fits) MsgBox(fits.Reason(), MessageKind::Warning);
  return static_cast<bool>(fits);
}

void frmprint::Command2_Click() {
  const auto copies = CopiesOf(copies_->text());
  const int shown = std::min(copies ? *copies : 1, kMostDialogCopies);
  printer_->setCopyCount(shown);
  const bool chosen = printerDialog_(*printer_, this);
  // Copies are made here: the printer's would multiply them.
  const int wanted = printer_->copyCount();
  printer_->setCopyCount(1);
  if (!chosen) return;
  if (wanted != shown) copies_->setText(QString::number(wanted));
  printer_->setFullPage(true);
  pdfPath_ =
      printer_->outputFormat() == QPrinter::PdfFormat ? printer_->outputFileName() : QString();
  ShowState();
  if (pages_ > 0)
    ShowPage(page_);
  else if (layout_)
    ShowSheet(SheetPicture(*layout_, PreviewDpi(layout_->sheet)));
  if (layout_) PageFits();
}

// Pages.

void frmprint::ShowPage(int page) {
  if (pages_ == 0 || running_) return;
  page_ = page;
  ImagePreview();
  ShowState();
}

void frmprint::ImagePreview() {
  SetRunning(true);
  progress_->Begin(u"Generating Preview. Please wait..."_s);
  const PagePhotos which =
      PhotosOnPage(page_, static_cast<int>(photos_.size()), static_cast<int>(boxes_.size()));
  const QStringList photos = photos_.mid(which.from, which.Count());
  const QImage sheet = RunAside([photos, boxes = boxes_, size = layout_->sheet, load = load_] {
    return SheetPicture(size, boxes, photos, PreviewDpi(size), load);
  });
  progress_->End();
  SetRunning(false);
  ShowSheet(sheet);
}

void frmprint::ShowSheet(const QImage& sheet) {
  const bool turned = AdjustPreview(layout_->sheet, PrinterOrientation());
  const QImage shown = turned ? Rotated(sheet, 90, false) : sheet;
  if (shown.isNull()) return view_->Clear();
  view_->SetMessage(QString());
  view_->ShowImage(shown, shown.size());
}

void frmprint::ShowState() {
  const QSizeF page = PageMillimetres();
  paper_->setText(OrientationWord(PrinterOrientation()) + u", "_s +
                  PlainText(Round(page.width(), 2)) + u" x "_s +
                  PlainText(Round(page.height(), 2)) + u" mm"_s);
  const bool selected = layout_.has_value();
  apply_->setEnabled(selected);
  const QString none = tr("Select a template first");
  apply_->setToolTip(selected ? QString() : none);
  for (QPushButton* button : {edit_, remove_}) {
    button->setEnabled(!SelectedName().isEmpty());
    button->setToolTip(button->isEnabled() ? QString() : none);
  }
  pageCaption_->setText(pages_ > 0 ? PageCaption(page_, pages_) : QString());
  for (QPushButton* button : back_)
    button->setEnabled(page_ > 0);
  for (QPushButton* button : forward_)
    button->setEnabled(page_ + 1 < pages_);
}

// Printing.

void frmprint::Command12_Click() {
  if (pages_ == 0) {
    MsgBox(
        u"No printing template has been selected.\n"
        u"Select a template from the list and then click on the 'Apply' button."_s,
        MessageKind::Warning);
    return;
  }
  const auto copies = CopiesOf(copies_->text());
  if (!copies) {
    MsgBox(copies.Reason(), MessageKind::Warning);
    copies_->setFocus();
    copies_->selectAll();
    return;
  }
  if (!PageFits() || (PrintsToFile() && !ChooseFile())) return;
  PrintTemplate(*copies);
}

bool frmprint::PrintsToFile() const {
  return printer_->outputFormat() == QPrinter::PdfFormat;
}

bool frmprint::ChooseFile() {
  // Named for each time, so that none is printed over another. The printer's dialog has asked
  // whether to replace its file.
  const bool asked = !pdfPath_.isEmpty();
  if (!asked)
    pdfPath_ = Pick(
        {PickRequest::What::SaveFile, tr("Print to File"), u"print.pdf"_s, {u"PDF (*.pdf)"_s}});
  if (pdfPath_.isEmpty()) return false;
  const Outcome free = CheckPdfTarget(pdfPath_, photos_);
  if (!free) MsgBox(free.Reason() + u'.', MessageKind::Warning);
  const bool mayWrite =
      free && (asked || !FileExists(pdfPath_) ||
               MsgBox(pdfPath_ + u" already exists.\nDo you want to replace it?"_s,
                      MessageKind::Question, Buttons::YesNo) == Answer::Yes);
  if (!mayWrite) pdfPath_.clear();
  return mayWrite;
}

void frmprint::PrintTemplate(int copies) {
  const QString path = pdfPath_;
  ShowTarget({});
  SetRunning(true);
  progress_->Begin(QString::fromUtf16(print_text::kPreparing));
  const auto printed = PrintTo({*layout_, photos_, copies, load_});
  progress_->End();
  SetRunning(false);
  if (printed && printed->pages > 0) ShowTarget(path);
  if (!printed)
    MsgBox(u"The pictures could not be printed: %1."_s.arg(printed.Reason()), MessageKind::Warning);
  else if (!printed->failures.Empty())
    ShowFailures(printed->failures, this);
  else
    MsgBox(QString::fromUtf16(print_text::kPrinted));
}

Result<PrintResult> frmprint::PrintTo(const PrintJob& job) {
  const PrintObserver observer = [this](int page, int pages) {
    progress_->Show(page, pages, u"Printing "_s + PageCaption(page, pages));
  };
  Result<PrintResult> printed =
      PrintsToFile()
          ? PrintPdf(job, PageMillimetres(), std::exchange(pdfPath_, QString()), observer)
          : PrintPages(job, *printer_, observer);
  // As far as the printer tells: a queue takes a job and fails later, on its own.
  const QPrinter::PrinterState state = printer_->printerState();
  if (printed && !PrintsToFile() && (state == QPrinter::Error || state == QPrinter::Aborted))
    return Failure{u"the printer refused the pages"_s};
  if (printed) printed->failures.label = u"The following images could not be printed:"_s;
  return printed;
}

void frmprint::SetRunning(bool running) {
  running_ = running;
  controls_->setEnabled(!running);
  target_->setVisible(!running);
  findChild<QWidget*>(u"foot"_s)->setEnabled(!running);
}

void frmprint::reject() {
  if (!running_) QDialog::reject();
}

void frmprint::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
