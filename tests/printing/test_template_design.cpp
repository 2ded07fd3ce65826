// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/print_text.h"
#include "printing/template_design.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using Side = TemplateDesign::Side;
using Ids = std::vector<int>;

TEST(TemplateDesign, BoxesAreAddedSelectedAndRemoved) {
  TemplateDesign design;
  for (int i = 0; i < 4; ++i)
    design.Add(QColor(kBoxColour));
  EXPECT_EQ(design.CountCaption(), u"No of picture box : 4");
  EXPECT_EQ(design.Selected(), Ids{4});
  const VectorObject& box = *design.Objects().Find(1);
  EXPECT_TRUE(box.Box() == QRectF(10, 10, 100, 100));
  EXPECT_EQ(box.brushColour, QColor(255, 202, 16));
  EXPECT_EQ(box.brushStyle, BrushStyle::Solid);
  design.Select({3, 9, 1});
  EXPECT_EQ(design.Selected(), (Ids{3, 1}));
  design.SendToBack();
  EXPECT_EQ(design.Objects().Ids(), (Ids{1, 3, 2, 4}));
  design.BringToFront();
  EXPECT_EQ(design.Objects().Ids(), (Ids{2, 4, 3, 1}));
  design.Remove();
  EXPECT_EQ(design.Ids(), (Ids{2, 4}));
  EXPECT_TRUE(design.Selected().empty());
  EXPECT_FALSE(design.FirstBox());
  // What is saved is in the order of making, and no number is given twice.
  design.Add(Qt::red);
  EXPECT_EQ(design.Checked()->ids, (Ids{2, 4, 5}));
  design.RemoveAll();
  EXPECT_EQ(design.CountCaption(), u"No of picture box : 0");
  EXPECT_EQ(design.Checked().Reason(), print_text::kNoBoxes);
}

TEST(TemplateDesign, TypedMeasuresMoveTheFirstBox) {
  TemplateDesign design;
  EXPECT_FALSE(design.Type(Side::Left, u"5"_s));
  const int id = design.Add(Qt::red);
  EXPECT_TRUE(design.Type(Side::Left, u"25.4"_s));
  EXPECT_TRUE(design.Type(Side::Width, u"50.8"_s));
  design.SwitchUnit(Unit::Inches);
  EXPECT_TRUE(design.Type(Side::Top, u"3"_s));
  EXPECT_TRUE(design.Type(Side::Height, u"0.5"_s));
  EXPECT_TRUE(design.Objects().Find(id)->Box() == QRectF(100, 300, 200, 50));
  for (const QString& text : {u""_s, u"0"_s, u"wide"_s, u"-2"_s})
    EXPECT_FALSE(design.Type(Side::Width, text)) << text.toStdString();
  EXPECT_EQ(design.FirstBox()->width.Text(Unit::Inches), u"2");
  EXPECT_EQ(design.FirstBox()->width.Text(Unit::Millimetres), u"50.8");
}

TEST(TemplateDesign, BoxesBeyondTheirPaperArentSaved) {
  TemplateDesign design;
  design.Add(Qt::red);
  design.Type(Side::Width, u"150"_s);
  EXPECT_TRUE(design.Checked());
  EXPECT_EQ(design.ChangePaper(u"50"_s, u"200"_s).Reason(),
            u"Paper width should be at least 76.2 mm.");
  EXPECT_TRUE(design.Checked()->sheet == QSize(826, 1169));
  ASSERT_TRUE(design.ChangePaper(u"100"_s, u"200"_s));
  EXPECT_EQ(design.Objects().Find(1)->left, 10);
  EXPECT_EQ(design.Checked().Reason(), print_text::kOutsidePaper);
  design.Type(Side::Width, u"90"_s);
  design.Move(BoxPresets()[1]);  // upper right
  const auto saved = design.Checked();
  ASSERT_TRUE(saved) << saved.Reason().toStdString();
  EXPECT_TRUE(saved->sheet == QSize(393, 787));
  // Loaded again it is the same, on the paper that its pixels tell.
  const TemplateDesign loaded(*saved);
  EXPECT_EQ(loaded.Ids(), design.Ids());
  EXPECT_EQ(PaperLabel(loaded.PaperSize(), Unit::Millimetres),
            u"Current paper size : 99.82 x 199.9 mm");
  EXPECT_TRUE(loaded.Checked());
}

TEST(TemplateDesign, TakesOnlyItsOwnBoxesBack) {
  TemplateDesign design;
  design.Add(Qt::red);
  VectorObjects moved = design.Objects();
  moved.SetObjectProperty(1, u"LEFT", u"70"_s);
  EXPECT_TRUE(design.TakeObjects(moved));
  EXPECT_EQ(design.Objects().Find(1)->left, 70);
  moved.Add(ObjectKind::Rectangle);
  EXPECT_FALSE(design.TakeObjects(moved));
  EXPECT_EQ(design.Objects().Count(), 1);
}

}  // namespace
}  // namespace zqm
