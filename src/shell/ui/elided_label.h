// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

namespace zqm {

/// A line of which the first part is cut with "..." where the whole is too long.
class ElidedLabel : public QLabel {
  Q_OBJECT
 public:
  using QLabel::QLabel;

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
