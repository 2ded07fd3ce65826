// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/tool_strip.h"

#include <QToolButton>

#include "shell/error.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr SelectionTool kTools[] = {
    {u"M", u"SELECTMAGICWAND", u"Magic Wand (W)", "tools-wizard"},
    {u"R", u"SELECTRECT", u"Rectangular Selection (R)", "tool_rect_selection"},
    {u"C", u"SELECTCIRCLE", u"Ellipse (E)", "tool_elliptical_selection"},
    {u"P", u"SELECTPOLYGON", u"Polygon (P)", "tool_polyline"},
    {u"L", u"SELECTLASSO", u"Lasso (L)", "draw-freehand"},
};

}  // namespace

std::span<const SelectionTool> SelectionTools() {
  return kTools;
}

ToolStrip::ToolStrip(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  look::SetSpace(row, 0, look::kSpace4);
  for (int i = 0; i < static_cast<int>(std::size(kTools)); ++i) {
    QToolButton* button = look::IconButton(kTools[i].icon, QString::fromUtf16(kTools[i].caption));
    button->setObjectName(u"imgtool(%1)"_s.arg(i));
    button->setCheckable(true);
    connect(button, &QToolButton::clicked, this, [this, i] { Q_EMIT ToolClicked(i); });
    row->addWidget(button);
    tools_.push_back(button);
  }
  navigate_ = look::IconButton("transform-browse", tr("Navigate/Zoom (H)"));
  navigate_->setObjectName(u"Image13"_s);
  navigate_->setCheckable(true);
  connect(navigate_, &QToolButton::clicked, this, &ToolStrip::NavigateClicked);
  row->addSpacing(look::kSpace8);
  row->addWidget(navigate_);
}

void ToolStrip::SetTool(const QString& letter) {
  for (std::size_t i = 0; i < tools_.size(); ++i)
    tools_[i]->setChecked(letter == QStringView(kTools[i].letter));
  navigate_->setChecked(letter.isEmpty());
}

}  // namespace zqm
