// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

#include "imaging/picture.h"
#include "printing/page_painter.h"
#include "shell/session_folders.h"

class QBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;
class QPageLayout;
class QPrinter;
class QPushButton;

namespace zqm {

class PictureView;
class RunProgress;
class frmtemplate;

/// Puts photos into the boxes of a template, page after page, shows the pages and prints them.
class frmprint : public QDialog {
  Q_OBJECT
 public:
  frmprint(QStringList photos, const PictureSettings& load, const SessionFolders& folders,
           QWidget* parent = nullptr);
  ~frmprint() override;

  /// Lets the user choose printer and paper; false when it was called off. Tests set their own.
  using PrinterDialog = std::function<bool(QPrinter& printer, QWidget* parent)>;
  void SetPrinterDialog(PrinterDialog dialog) { printerDialog_ = std::move(dialog); }

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ComposeTemplates(QBoxLayout* column);
  void ComposePages(QBoxLayout* column);
  QLayout* ComposeRun();
  void ComposeFoot(QBoxLayout* column);
  QPushButton* AddButton(QBoxLayout* row, const QString& caption, const char* name,
                         void (frmprint::*clicked)());
  QPushButton* AddTurner(QBoxLayout* row, const QString& caption, const char* name,
                         const QString& toolTip, int to);
  void FillTemplates();
  QString SelectedName() const;

  void List1_Click();
  void Command3_Click();  // Create
  void Command5_Click();  // Edit
  void RunDesigner(frmtemplate& designer);
  void ShowSaved(const QString& name);
  void RestorePrtSettings(const QPageLayout& settings);
  void Command6_Click();  // Apply
  void Command4_Click();  // Remove
  void Command2_Click();  // Printer Setup
  void Command12_Click();
  bool PrintsToFile() const;
  /// Whether a file may be printed into; asks for its name and before another is replaced.
  bool ChooseFile();
  void PrintTemplate(int copies);
  Result<PrintResult> PrintTo(const PrintJob& job);

  QSizeF PageMillimetres() const;
  Orientation PrinterOrientation() const;
  /// Whether the page is large enough for the template; tells when it isn't.
  bool PageFits();
  void ShowPage(int page);
  void ImagePreview();
  void ShowSheet(const QImage& sheet);
  void ResetEverything();
  void ShowState();
  /// The file that was printed into; none between.
  void ShowTarget(const QString& path);
  void SetRunning(bool running);

  QStringList photos_;
  PictureSettings load_;
  SessionFolders folders_;
  QString folder_;  // of the templates
  PrinterDialog printerDialog_;
  std::unique_ptr<QPrinter> printer_;
  QString pdfPath_;                           // for the next print into a file; "" asks
  std::optional<zqm::PrintTemplate> layout_;  // the one that is selected
  std::vector<QRectF> boxes_;
  int pages_ = 0;  // none before a template is applied
  int page_ = 0;
  bool running_ = false;

  QWidget* controls_;
  QListWidget* templates_ = nullptr;
  PictureView* view_ = nullptr;
  QLabel* pageCaption_ = nullptr;
  QLabel* paper_ = nullptr;
  QLineEdit* copies_ = nullptr;
  RunProgress* progress_ = nullptr;
  QLabel* target_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* edit_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* print_ = nullptr;
  std::vector<QPushButton*> back_, forward_;
};

}  // namespace zqm
