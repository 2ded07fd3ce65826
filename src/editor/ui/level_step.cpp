// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/level_step.h"

#include <QGridLayout>
#include <QRadioButton>

#include "editor/ui/number_edit.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

LevelStep::LevelStep(ImageX& picture)
    : EditStep("fralevel", tr("Level/Rotate"),
               tr("Draw a line along something that should be level or upright, or type an angle."),
               picture) {
  QGridLayout* grid = AddGrid();
  angle_ = new NumberEdit(TypedNumber::Decimal, "txtangle");
  AddField(grid, tr("Angle:"), angle_, look::Hint(u"°"_s));
  clockwise_ = new QRadioButton(tr("C&lockwise"));
  clockwise_->setObjectName(u"Option1"_s);
  clockwise_->setChecked(true);
  counterClockwise_ = new QRadioButton(tr("Cou&nter Clockwise"));
  counterClockwise_->setObjectName(u"Option2"_s);
  Body()->addWidget(clockwise_);
  Body()->addWidget(counterClockwise_);
  AddButton(
      tr("R&otate"), "Command1", [this] { Rotate(); }, true);
  AddButton(tr("Clea&r"), "Command4", [this] { Clear(); });
  connect(&picture, &ImageX::OnMouseDown, this, [this](const QPointF& at, Qt::MouseButton button) {
    if (button == Qt::LeftButton && Image().GetMouseInteract(u"PUTLINE"_s))
      Guarded("frmedit", "ImageX1_OnMouseDown", [this, &at] { BeginLine(at); });
  });
  connect(&picture, &ImageX::OnMouseUp, this, [this](const QPointF& at, Qt::MouseButton button) {
    if (button == Qt::LeftButton && Image().GetMouseInteract(u"PUTLINE"_s))
      Guarded("frmedit", "ImageX1_OnMouseUp", [this, &at] { EndLine(at); });
  });
}

void LevelStep::Enter() {
  Image().RemoveAllObjects();
  Image().Deselect();
  Q_EMIT ToolWanted(QString::fromUtf16(edit_tool::kLevel));
  Image().SetObjectProperty(ImageX::kNextObject, u"PENCOLOR", u"0,0,0"_s);
  Image().SetObjectProperty(ImageX::kNextObject, u"ENDSHAPE", u"0"_s);
  Image().SetMouseInteract(u"PUTLINE"_s, true);
}

void LevelStep::BeginLine(const QPointF& pixel) {
  Image().RemoveAllObjects();
  from_ = pixel;
}

void LevelStep::EndLine(const QPointF& pixel) {
  // A click draws no line.
  if (!from_ || Image().Objects().IsEmpty()) return;
  const LevelTurn turn = LevelAngle(*from_, pixel);
  angle_->setText(turn.angle);
  if (!turn.direction) return;
  const bool clockwise = *turn.direction == TurnDirection::Clockwise;
  (clockwise ? clockwise_ : counterClockwise_)->setChecked(true);
}

TurnDirection LevelStep::Direction() const {
  return clockwise_->isChecked() ? TurnDirection::Clockwise : TurnDirection::CounterClockwise;
}

void LevelStep::Rotate() {
  const Result<double> degrees = TurnDegrees(angle_->text(), Direction());
  if (!degrees) {
    MsgBox(degrees.Reason(), MessageKind::Warning);
    return;
  }
  constexpr int kQuality = 2;
  Tell(Image().Rotate(*degrees, true, kQuality));
  Image().RemoveAllObjects();
  from_.reset();
}

void LevelStep::Clear() {
  Image().RemoveAllObjects();
  from_.reset();
  angle_->clear();
}

}  // namespace zqm
