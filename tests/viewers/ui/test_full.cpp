// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/browser/catalogue_holder.h"
#include "tests/viewers/ui/viewer_fixture.h"
#include "viewers/ui/frmfull.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

class FullScreen : public ViewerTest {
 protected:
  frmfull& Open(const QStringList& photos, int start = 0) {
    return Show(std::make_unique<frmfull>(*session_, photos, start));
  }
  PictureView& View() { return *window_->findChild<PictureView*>(u"ImageX1"_s); }
  /// Until the photo of that name is on the screen.
  bool Sees(const QString& name) {
    return Eventually([&] { return window_->windowTitle() == name; });
  }
  void Wheel(const QPoint& turned, Qt::KeyboardModifiers modifiers = {}) {
    const QPointF at(300, 200);
    QWheelEvent event(at, View().viewport()->mapToGlobal(at), {}, turned, {}, modifiers,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(View().viewport(), &event);
  }
};

TEST_F(FullScreen, KeysStepThroughTheListAndStopAtItsEnds) {
  frmfull& window = Open({AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)}, 1);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  EXPECT_TRUE(View().IsFit());
  const struct {
    Qt::Key key;
    const char16_t* sees;
  } steps[] = {{Qt::Key_Right, u"c.jpg"}, {Qt::Key_Backspace, u"b.jpg"}, {Qt::Key_Space, u"c.jpg"},
               {Qt::Key_Home, u"a.jpg"},  {Qt::Key_PageDown, u"b.jpg"},  {Qt::Key_Left, u"a.jpg"},
               {Qt::Key_End, u"c.jpg"},   {Qt::Key_PageUp, u"b.jpg"}};
  for (const auto& step : steps) {
    Press(step.key);
    EXPECT_TRUE(Sees(QString::fromUtf16(step.sees))) << step.key;
  }
  Press(Qt::Key_End);
  ASSERT_TRUE(Sees(u"c.jpg"_s));
  Press(Qt::Key_Right);
  EXPECT_EQ(Text(u"lblnotice"), u"This is the last photo."_s);
  EXPECT_EQ(window.LastShown(), PhotoPath(u"c.jpg"_s));
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_F11, Qt::Key_Return, Qt::Key_Enter}) {
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    Press(key);
    EXPECT_FALSE(window.isVisible()) << key;
  }
}

TEST_F(FullScreen, TheWheelStepsByWholeNotchesAndZoomsWithCtrl) {
  Open({AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)});
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  Wheel({0, -80});
  Wheel({0, -80});
  EXPECT_TRUE(Sees(u"b.jpg"_s));
  Wheel({-120, 10});  // a swipe
  EXPECT_TRUE(Sees(u"c.jpg"_s));
  Wheel({0, 120});
  EXPECT_TRUE(Sees(u"b.jpg"_s));
  const double zoom = View().Zoom();
  Wheel({0, 120}, Qt::ControlModifier);
  EXPECT_GT(View().Zoom(), zoom);
  Press(Qt::Key_Plus);
  Press(Qt::Key_1);
  EXPECT_EQ(View().Zoom(), 100);
  EXPECT_FALSE(View().IsFit());
  Press(Qt::Key_0);
  EXPECT_TRUE(View().IsFit());
  EXPECT_EQ(window_->windowTitle(), u"b.jpg"_s);
}

TEST_F(FullScreen, ThePointerGoesWhenItRestsAndStaysAwayWhileKeysStep) {
  Open({AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s)});
  const auto shape = [this] { return View().viewport()->cursor().shape(); };
  ASSERT_TRUE(Eventually([&] { return shape() == Qt::BlankCursor; }));
  Press(Qt::Key_Right);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  EXPECT_EQ(shape(), Qt::BlankCursor);
  QTest::mouseMove(View().viewport(), {50, 50});
  QTest::mouseMove(View().viewport(), {60, 60});
  EXPECT_NE(shape(), Qt::BlankCursor);
}

TEST_F(FullScreen, ALargePhotoHasEveryPixelOnceItIsZoomed) {
  Open({scratch_.Write("photos/large.jpg", SampleJpeg(3000, 2000))});
  ASSERT_TRUE(Sees(u"large.jpg"_s));
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_EQ(View().Zoom(), 100);
  const auto sharp = [this] { return View().ImageSize() == QSize(3000, 2000); };
  EXPECT_TRUE(Eventually(sharp));
  EXPECT_EQ(View().Zoom(), 100) << "the view stays";
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, QPoint(10, 10));
  EXPECT_TRUE(View().IsFit());
}

TEST_F(FullScreen, ZoomAndPlaceStayForTheNextPhotoAndForOneThatWasReplaced) {
  const QString a = scratch_.Write("photos/a.jpg", SampleJpeg(3000, 2000)),
                b = scratch_.Write("photos/b.jpg", SampleJpeg(2400, 3200));
  Open({a, b});
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {},
                     View().viewport()->rect().center() + QPoint(100, -40));
  const auto middle = [this](const QSize& size) {
    const QPointF at = View().View().centre;
    return QPointF(at.x() / size.width(), at.y() / size.height());
  };
  const QPointF place = middle({3000, 2000});
  Press(Qt::Key_Right);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  EXPECT_EQ(View().Zoom(), 100);
  EXPECT_NE(place.x(), 0.5);
  EXPECT_LT((middle({2400, 3200}) - place).manhattanLength(), 0.01);
  EXPECT_TRUE(Eventually([this] { return View().ImageSize() == QSize(2400, 3200); }));
  Press(Qt::Key_0);
  Press(Qt::Key_Left);
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  EXPECT_TRUE(View().IsFit());
  scratch_.Write("photos/a.jpg", SampleJpeg(2000, 1600));
  Press(Qt::Key_1);
  EXPECT_TRUE(Eventually([this] { return View().ImageSize() == QSize(2000, 1600); }));
  EXPECT_EQ(View().Zoom(), 100) << "what was asked for of the photo of before";
}

TEST_F(FullScreen, RatingAndFlagAreSavedAtOnce) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s), c = AddPhoto(u"c.jpg"_s);
  CatalogueThem({a, b});
  Open({a, b, c}, 1);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  Press(Qt::Key_I);
  Press(Qt::Key_4, Qt::ControlModifier);
  Press(Qt::Key_X);
  EXPECT_EQ(Stored(b, Column::Rating), u"4"_s);
  EXPECT_EQ(Stored(b, Column::Flag), u"Rejected"_s);
  EXPECT_EQ(Stored(a, Column::Rating), QString());
  EXPECT_TRUE(Text(u"lblinfo").contains(u"★★★★☆   Rejected"_s)) << Text(u"lblinfo").toStdString();
  {
    const CatalogueHolder holder(session_->ActiveCatalogue().Path());
    Press(Qt::Key_1, Qt::ControlModifier);
  }
  EXPECT_EQ(messages_.size(), 1) << "a save that fails says so";
  EXPECT_EQ(Stored(b, Column::Rating), u"4"_s);
  EXPECT_TRUE(Text(u"lblinfo").contains(u"★★★★☆"_s));

  Press(Qt::Key_Right);
  ASSERT_TRUE(Sees(u"c.jpg"_s));
  Press(Qt::Key_5, Qt::ControlModifier);
  EXPECT_EQ(messages_.size(), 1) << "a photo without a row is no reason for a message";
  EXPECT_TRUE(Text(u"lblnotice").contains(u"not in the catalogue"_s));
}

TEST_F(FullScreen, ValuesAreForThePhotoThatIsSeen) {
  QStringList photos;
  for (int i = 0; i < 6; ++i)
    photos.append(AddPhoto(u"%1.jpg"_s.arg(i)));
  CatalogueThem(photos);
  Open(photos);
  ASSERT_TRUE(Sees(u"0.jpg"_s));
  Press(Qt::Key_End);
  ASSERT_EQ(window_->windowTitle(), u"0.jpg"_s) << "not read ahead";
  Press(Qt::Key_5, Qt::ControlModifier);
  EXPECT_EQ(Stored(photos.first(), Column::Rating), u"5"_s);
  EXPECT_EQ(Stored(photos.last(), Column::Rating), QString());
  EXPECT_TRUE(Sees(u"5.jpg"_s));
}

TEST_F(FullScreen, UprightIsRememberedForTheNextTime) {
  const QString a = AddPhoto(u"a.jpg"_s, {{u"EXIF_Orientation", u"8"}});
  const auto tall = [this] { return View().ImageSize() == QSize(200, 320); };
  Open({a});
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  EXPECT_EQ(View().ImageSize(), QSize(320, 200));
  Press(Qt::Key_O);
  EXPECT_TRUE(Eventually(tall));
  Open({a});
  EXPECT_TRUE(Eventually(tall));
}

TEST_F(FullScreen, APhotoThatIsOfflineIsSaidToBeAsLongAsItStands) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  QFile::remove(a);
  Open({a, b});
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  const auto* notice = window_->findChild<QLabel*>(u"lblnotice"_s);
  EXPECT_TRUE(notice->isVisible());
  Press(Qt::Key_Left);  // says something else for a moment
  EXPECT_TRUE(Eventually([&] { return notice->text() == u"a.jpg is missing or offline."_s; }));
  EXPECT_GT(View().ImageSize().width(), 200) << "larger than the stored thumbnail";
  Press(Qt::Key_Right);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  EXPECT_FALSE(notice->isVisible());
}

TEST_F(FullScreen, APhotoThatVanishedIsNamedAndSteppedOver) {
  const QStringList photos{AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)};
  QFile::remove(photos[1]);
  Open(photos);
  ASSERT_TRUE(Sees(u"a.jpg"_s));
  Press(Qt::Key_Right);
  ASSERT_TRUE(Sees(u"b.jpg"_s));
  EXPECT_FALSE(View().HasImage());
  EXPECT_TRUE(View().accessibleDescription().startsWith(u"b.jpg\n"_s));
  Press(Qt::Key_Right);
  EXPECT_TRUE(Sees(u"c.jpg"_s));
  EXPECT_TRUE(View().HasImage());
}

}  // namespace
}  // namespace zqm::test
