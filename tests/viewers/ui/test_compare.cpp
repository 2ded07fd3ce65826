// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTableWidget>

#include "tests/viewers/ui/viewer_fixture.h"
#include "viewers/ui/compare_pane.h"
#include "viewers/ui/frmcompare.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

class Compare : public ViewerTest {
 protected:
  void Open(const QStringList& photos) {
    Show(std::make_unique<frmcompare>(*session_, photos));
    ASSERT_TRUE(Eventually([this] { return View(1).HasImage() && View(2).HasImage(); }));
  }
  ComparePane& Pane(int number) {
    return *window_->findChild<ComparePane*>(u"pane%1"_s.arg(number));
  }
  PictureView& View(int number) { return Pane(number).View(); }
  bool Sees(int pane, const QString& path) {
    return Eventually([&] { return Pane(pane).ShownPath() == path; });
  }
  /// The place in the middle of a view, as shares of the photo.
  QPointF Middle(int number) {
    const QPointF at = View(number).View().centre;
    const QSize size = Pane(number).Viewer().Shown().fullSize;
    return {at.x() / size.width(), at.y() / size.height()};
  }
  void ExpectInStep() {
    EXPECT_DOUBLE_EQ(View(1).Zoom(), View(2).Zoom());
    EXPECT_LT((Middle(1) - Middle(2)).manhattanLength(), 0.005);
  }
  QStringList Captions() {
    const auto* table = window_->findChild<QTableWidget*>(u"lstdetails"_s);
    QStringList captions;
    for (int row = 0; row < table->rowCount(); ++row)
      captions.append(table->item(row, 0)->text());
    return captions;
  }
};

TEST_F(Compare, LinkedViewsKeepInStepWhateverTheSizes) {
  const QString wide = scratch_.Write("photos/wide.jpg", SampleJpeg(3200, 2000)),
                tall = scratch_.Write("photos/tall.jpg", SampleJpeg(1600, 2400)),
                third = scratch_.Write("photos/third.jpg", SampleJpeg(2000, 3000));
  Open({wide, tall, third});
  EXPECT_TRUE(View(1).IsFit() && View(2).IsFit());
  Press(Qt::Key_1);
  EXPECT_FALSE(View(2).IsFit());
  ExpectInStep();
  QTest::mousePress(View(2).viewport(), Qt::LeftButton, {}, {200, 150});
  QTest::mouseMove(View(2).viewport(), {120, 60});
  QTest::mouseRelease(View(2).viewport(), Qt::LeftButton, {}, {120, 60});
  EXPECT_GT(Middle(1).x(), 0.51);
  ExpectInStep();
  // What comes meanwhile, larger pictures and another photo, looks at the same place.
  EXPECT_TRUE(Eventually([&] { return View(1).ImageSize() == QSize(3200, 2000); }));
  ExpectInStep();
  Press(Qt::Key_Right);  // the side that was clicked
  ASSERT_TRUE(Sees(2, third));
  ExpectInStep();
  Press(Qt::Key_0);
  EXPECT_TRUE(View(1).IsFit() && View(2).IsFit());

  Press(Qt::Key_L);
  Press(Qt::Key_1);
  EXPECT_TRUE(View(1).IsFit());
  EXPECT_FALSE(View(2).IsFit());
  Press(Qt::Key_L);
  ExpectInStep();
}

TEST_F(Compare, LinkedZoomGoesByTheFittedPhotosAndByPercentForActualSize) {
  Open({scratch_.Write("photos/large.jpg", SampleJpeg(6000, 4000)),
        scratch_.Write("photos/small.jpg", SampleJpeg(160, 200))});
  const double large = View(1).Zoom(), small = View(2).Zoom();
  ASSERT_LT(large, small);
  Press(Qt::Key_Plus);
  EXPECT_NEAR(View(1).Zoom() / large, 1.25, 0.01);
  EXPECT_NEAR(View(2).Zoom() / small, 1.25, 0.01);
  Press(Qt::Key_1);
  Press(Qt::Key_Plus);
  ExpectInStep();
  Press(Qt::Key_0);
  QTest::mouseDClick(View(1).viewport(), Qt::LeftButton, {}, QPoint(150, 150));
  EXPECT_EQ(View(2).Zoom(), 100);
  Press(Qt::Key_0);
  Press(Qt::Key_Minus);
  EXPECT_NEAR(View(2).Zoom() / small, 0.8, 0.01);
}

TEST_F(Compare, DetailsHaveTheirKeysWhileTheyHaveTheFocusAndTheirTextIsNoMarkup) {
  const QString a = AddPhoto(u"a<b>.jpg"_s, {{u"EXIF_Model", u"<b>x</b>"}});
  Open({a, AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)});
  auto* table = window_->findChild<QTableWidget*>(u"lstdetails"_s);
  ASSERT_TRUE(Eventually([this] { return Captions().contains(u"Camera Model"_s); }));
  EXPECT_EQ(Pane(1).findChild<QLabel*>(u"lblname"_s)->textFormat(), Qt::PlainText);
  const auto model = static_cast<int>(Captions().indexOf(u"Camera Model"_s));
  EXPECT_TRUE(table->item(model, 1)->toolTip().contains(u"&lt;b&gt;"_s));
  Press(Qt::Key_F6);
  ASSERT_TRUE(table->hasFocus());
  QTest::keyClick(table, Qt::Key_Down);
  EXPECT_EQ(table->currentRow(), 1);
  EXPECT_EQ(Pane(1).Viewer().Position(), 0);
  QTest::keyClick(table, Qt::Key_F6);
  EXPECT_TRUE(View(1).hasFocus());
  QTest::keyClick(&View(1), Qt::Key_Down);
  EXPECT_TRUE(Sees(1, PhotoPath(u"c.jpg"_s)));
}

TEST_F(Compare, EachSideStepsByItselfAndNeverShowsTheOthersPhoto) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s), c = AddPhoto(u"c.jpg"_s);
  Open({a, b, c});
  Press(Qt::Key_Right);
  EXPECT_TRUE(Sees(1, c));
  Press(Qt::Key_Tab);
  Press(Qt::Key_Left);
  EXPECT_TRUE(Sees(2, a));
  EXPECT_TRUE(Text(u"lblname", u"pane2").contains(u"1 / 3"_s));
  QTest::mouseClick(View(1).viewport(), Qt::LeftButton);
  Press(Qt::Key_Right);
  EXPECT_EQ(Text(u"lblnotice"), u"There is no further photo."_s);
  Press(Qt::Key_End);
  EXPECT_EQ(Text(u"lblnotice"), u"There is no further photo."_s);
  Press(Qt::Key_Tab);
  Press(Qt::Key_Home);
  EXPECT_EQ(Text(u"lblnotice"), u"There is no photo before this one."_s);
  Press(Qt::Key_Tab);
  const int before = Pane(1).x();
  Press(Qt::Key_S);
  EXPECT_TRUE(Eventually([&] { return Pane(2).x() < Pane(1).x(); })) << before;
  Press(Qt::Key_Left);
  EXPECT_TRUE(Sees(1, b)) << "the same side stays active";
}

TEST_F(Compare, ValuesGoToTheActiveSideOnly) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({b});
  Open({a, b});
  Press(Qt::Key_2, Qt::ControlModifier);
  EXPECT_TRUE(Text(u"lblnotice").contains(u"not in the catalogue"_s));
  Press(Qt::Key_Tab);
  Press(Qt::Key_2, Qt::ControlModifier);
  Press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Stored(b, Column::Rating), u"2"_s);
  EXPECT_EQ(Text(u"lblvalues", u"pane2"), u"★★☆☆☆   Flagged"_s);
  EXPECT_EQ(Text(u"lblvalues", u"pane1"), u"Not catalogued"_s);
  EXPECT_TRUE(messages_.isEmpty());
}

TEST_F(Compare, DetailsAreWhatDiffersUntilAllAreWanted) {
  Open({AddPhoto(u"a.jpg"_s, {{u"EXIF_Make", u"Zorki"}, {u"EXIF_Model", u"4"}}),
        AddPhoto(u"b.jpg"_s, {{u"EXIF_Make", u"Zorki"}, {u"EXIF_Model", u"6"}})});
  ASSERT_TRUE(Eventually([this] { return Captions().contains(u"Camera Model"_s); }));
  EXPECT_FALSE(Captions().contains(u"Camera Make"_s));
  Press(Qt::Key_A);
  EXPECT_TRUE(Captions().contains(u"Camera Make"_s));
  EXPECT_FALSE(Captions().contains(u"Copyright"_s)) << "said of neither";
  Press(Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
}

}  // namespace
}  // namespace zqm::test
