// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QTextBrowser>

namespace zqm {

/// A text of headings, paragraphs and pictures; links to its headings ("#looking-at-photos") lead
/// there.
class GuideText : public QTextBrowser {
  Q_OBJECT
 public:
  explicit GuideText(const QUrl& source, QWidget* parent = nullptr);

  /// The heading that a link names, at the top of the view. False when there is none.
  bool ShowHeading(const QString& link);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
};

/// The user's guide, beside the other windows.
class frmhelp : public QDialog {
  Q_OBJECT
 public:
  explicit frmhelp(QWidget* parent = nullptr);
};

}  // namespace zqm
