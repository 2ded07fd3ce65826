// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/workflow_help.h"

#include <QDialogButtonBox>
#include <QTextBrowser>

#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr QSize kUsualSize(560, 560);

constexpr char kText[] = R"(
<h3>Editing Workflow</h3>
<p>The steps stand in the order that costs a photo least: geometry first, then detail, then colour,
and what goes over the picture last. Any of them can be left out, and everything can be undone.</p>
<p><b>1. Level/Rotate.</b> Draw a line along the horizon, or along a wall. <i>Rotate</i> turns the
picture so that the line ends level or upright. An angle can be typed too.</p>
<p><b>2. Crop.</b> Draw a rectangle, then <i>Crop</i>. With a width and a height the rectangle keeps
their aspect and grows no larger.</p>
<p><b>3. Resize.</b> In pixels. Resize once and late enough: each time costs a little sharpness.</p>
<p><b>4. Red Eye Removal.</b> Draw an ellipse about an eye that a flash made red.</p>
<p><b>5. Sharpen / Noise.</b> Judge it at actual size (Ctrl+Shift+0).</p>
<p><b>6. Color.</b> Click what should be gray, or move temperature and tint.</p>
<p><b>7. Saturation</b> and <b>8. Brightness/Contrast.</b> Before and after stand side by side.</p>
<p><b>9. Watermark.</b> A line of text that is moved with the mouse. <i>Apply</i> makes it part of
the picture.</p>
<p><b>10. Save.</b> Over the file at the best quality, or as another file.</p>
<p>A selection (magic wand, rectangle, ellipse, polygon, lasso) limits steps 4 to 8 and the effects
to what is in it. The wheel zooms at the pointer; the middle button, or the space bar, moves the
picture with any tool.</p>
)";

}  // namespace

WorkflowHelp::WorkflowHelp(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("workflowhelp"));
  setWindowTitle(tr("Editing Workflow"));
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  auto* text = new QTextBrowser;
  text->setHtml(QString::fromUtf8(kText));
  column->addWidget(text, 1);
  auto* foot = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(foot, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(foot);
  resize(kUsualSize);
}

}  // namespace zqm
