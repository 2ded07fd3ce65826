// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScrollArea>
#include <utility>
#include <vector>

class QGridLayout;
class QLabel;

namespace zqm {

/// Captions with values, one below the other, those with a value first. Values can be selected and
/// copied.
class ValueList : public QScrollArea {
  Q_OBJECT
 public:
  using Lines = std::vector<std::pair<QString, QString>>;

  explicit ValueList(QWidget* parent = nullptr);

  void SetLines(const Lines& lines);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Row {
    QLabel* caption;
    QLabel* value;
  };
  Row& RowAt(std::size_t index);

  QGridLayout* grid_;
  std::vector<Row> rows_;
  Lines shown_;
  int captionWidth_ = 104;
};

}  // namespace zqm
