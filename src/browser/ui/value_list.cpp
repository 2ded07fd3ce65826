// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/value_list.h"

#include <QGridLayout>
#include <QLabel>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "shell/ui/look.h"

namespace zqm {
namespace {
constexpr int kNarrowest = 104, kWidest = 152;
}

ValueList::ValueList(QWidget* parent) : QScrollArea(parent) {
  auto* page = new QWidget;
  page->setObjectName(QStringLiteral("panel"));
  auto* column = new QVBoxLayout(page);
  look::SetSpace(column, look::kSpace12, 0);
  grid_ = new QGridLayout;
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setHorizontalSpacing(look::kSpace12);
  grid_->setVerticalSpacing(look::kSpace4);
  grid_->setColumnStretch(1, 1);
  column->addLayout(grid_);
  column->addStretch();
  setWidget(page);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

ValueList::Row& ValueList::RowAt(std::size_t index) {
  while (rows_.size() <= index) {
    Row row{look::Caption(QString()), new QLabel};
    row.caption->setFixedWidth(captionWidth_);
    row.caption->setWordWrap(true);
    row.caption->setAlignment(Qt::AlignRight | Qt::AlignTop);
    row.value->setWordWrap(true);
    row.value->setTextFormat(Qt::PlainText);
    row.value->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    row.value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    row.value->setMinimumWidth(1);
    const int at = static_cast<int>(rows_.size());
    grid_->addWidget(row.caption, at, 0);
    grid_->addWidget(row.value, at, 1);
    rows_.push_back(row);
  }
  return rows_[index];
}

void ValueList::SetLines(const Lines& lines) {
  if (lines == shown_) return;
  shown_ = lines;
  Lines ordered = lines;
  std::ranges::stable_partition(ordered, [](const auto& line) { return !line.second.isEmpty(); });
  widget()->setUpdatesEnabled(false);
  for (std::size_t i = 0; i < std::max(ordered.size(), rows_.size()); ++i) {
    Row& row = RowAt(i);
    const bool there = i < ordered.size();
    row.caption->setVisible(there);
    row.value->setVisible(there);
    if (!there) continue;
    const auto& [caption, text] = ordered[i];
    row.caption->setText(caption);
    row.caption->setEnabled(!text.isEmpty());
    row.value->setText(text);
    row.value->setAccessibleName(caption);
  }
  widget()->setUpdatesEnabled(true);
}

void ValueList::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  // Where there is room, a caption takes one line.
  captionWidth_ = std::clamp(event->size().width() / 2 - look::kSpace16, kNarrowest, kWidest);
  for (const Row& row : rows_)
    row.caption->setFixedWidth(captionWidth_);
}

}  // namespace zqm
