// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace zqm {

/// A tool tip that shows the text letter by letter, also where it looks like markup.
QString PlainToolTip(const QString& text);

/// A line of plain text of which the first part is cut with "..." where the whole is too long.
class ElidedLabel : public QLabel {
  Q_OBJECT
 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  void SetParts(const QString& cut, const QString& kept);
  QSize minimumSizeHint() const override;
  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Fit();

  QString cut_;
  QString kept_;
};

}  // namespace zqm
