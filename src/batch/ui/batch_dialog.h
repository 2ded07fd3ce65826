// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "batch/batch_run.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace zqm {

class RunProgress;

/// What a dialog over files works on.
struct BatchPlace {
  Catalogue& catalogue;
  BrowserView* view;   ///< may be null
  QStringList photos;  ///< frozen for the dialog's life
};

/// A dialog that runs over photos: the options, the progress below them, the buttons. While it runs
/// every control is disabled and it can't be closed.
class BatchDialog : public QDialog {
  Q_OBJECT
 public:
  void reject() override;

 protected:
  /// `labelName` is the object name of the progress's text.
  BatchDialog(BatchPlace place, const QString& caption, const char* labelName, QWidget* parent);
  void closeEvent(QCloseEvent* event) override;

  Catalogue& TheCatalogue() const { return place_.catalogue; }
  BrowserView* View() const { return place_.view; }
  const QStringList& Photos() const { return place_.photos; }
  /// "1 photo", "3 photos".
  QString PhotoCount() const;

  /// Where a dialog puts its options.
  QVBoxLayout* Body() const { return body_; }
  /// Below the options, and not locked with them.
  void AddBelow(QWidget* widget);
  /// Buttons stand in the order in which they are added, cancel before them.
  QPushButton* AddButton(const QString& caption, const char* name);
  QPushButton* CancelButton() const { return cancelButton_; }

  /// When a run begins, and when it is through, before its closing message.
  virtual void RunShown(bool /*running*/) {}

  /// Fails where a run ends before its last photo.
  using Work = std::function<Result<BatchResult>(const BatchObserver& observer)>;
  /// What stands above the bar while a file is worked on; "" leaves what stands.
  using LabelOf = std::function<QString(const BatchProgress& at)>;
  /// Runs `work` over the photos, shows how it ended, and closes; one that failed leaves the dialog
  /// for another try. `label` stands above the bar until `labelOf` says something else.
  void Run(const BatchTexts& texts, const QString& label, const Work& work,
           const LabelOf& labelOf = {});

 private:
  void SetRunning(bool running);

  BatchPlace place_;
  QString caption_;
  QWidget* controls_;
  QVBoxLayout* body_;
  RunProgress* progress_;
  QHBoxLayout* foot_;
  QPushButton* cancelButton_;
  bool running_ = false;
};

}  // namespace zqm
