// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace zqm {

/// How far a dialog's run has come, inside the dialog: what is being done, how many of how many,
/// and a bar. Hidden between runs.
class RunProgress : public QWidget {
  Q_OBJECT
 public:
  /// `textName` is the text's object name.
  explicit RunProgress(const char* textName, QWidget* parent = nullptr);

  /// Shows itself with a bar that tells nothing yet.
  void Begin(const QString& text);
  /// At most about 30 times a second, and at the end; gives windows time to paint. True when it
  /// was shown. An empty text leaves the one that stands.
  bool Show(int done, int total, const QString& text = QString());
  void End();

 private:
  QLabel* text_;
  QLabel* count_;
  QProgressBar* bar_;
  QElapsedTimer sinceYield_;
};

}  // namespace zqm
