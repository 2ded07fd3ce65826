// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/symbol_picker.h"

#include <QKeyEvent>
#include <QScreen>

#include "shell/ui/look.h"
#include "watermark/watermark_layers.h"

namespace zqm {
namespace {
constexpr int kColumns = 8, kCell = 32;
}

SymbolPicker::SymbolPicker(QWidget* parent) : QListWidget(parent) {
  setObjectName(QStringLiteral("lstsym"));
  setWindowFlag(Qt::Popup);
  setAccessibleName(tr("Symbols"));
  setViewMode(IconMode);
  setMovement(Static);
  setUniformItemSizes(true);
  setGridSize({kCell, kCell});
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (const char16_t* symbol : WatermarkSymbols()) {
    auto* item = new QListWidgetItem(QString::fromUtf16(symbol), this);
    item->setTextAlignment(Qt::AlignCenter);
    item->setSizeHint({kCell, kCell});
  }
  const int rows = (count() + kColumns - 1) / kColumns;
  setFixedSize(kColumns * kCell + look::kSpace12, rows * kCell + look::kSpace12);
  setCurrentRow(0);
  connect(this, &QListWidget::itemClicked, this, &SymbolPicker::Pick);
  connect(this, &QListWidget::itemActivated, this, &SymbolPicker::Pick);
}

void SymbolPicker::ShowBelow(const QWidget& button) {
  const QRect room = button.screen()->availableGeometry();
  QPoint at = button.mapToGlobal(QPoint(0, button.height()));
  at.setX(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() - width())));
  at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - height())));
  move(at);
  show();
  setFocus();
}

void SymbolPicker::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel))
    hide();
  else
    QListWidget::keyPressEvent(event);
}

void SymbolPicker::Pick(QListWidgetItem* item) {
  // A click may activate as well.
  if (!isVisible()) return;
  hide();
  Q_EMIT Picked(item->text());
}

}  // namespace zqm
