// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDialog>
#include <QSignalSpy>
#include <QTimer>
#include <QWheelEvent>
#include <QtPrintSupport/QPrinter>

#include "imaging/row_blocks.h"
#include "imaging/ui/image_x.h"
#include "imaging/ui/print_image.h"
#include "shell/messages.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A control of 400 x 300 over a picture of that size: a pixel of one is a pixel of the other.
class Control : public ::testing::Test {
 protected:
  Control() {
    view_.resize(400, 300);
    view_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    Show(Fields());
  }
  /// Blue, with a red field from 100,100 to 200,150.
  static QImage Fields() {
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(qRgb(20, 40, 200));
    for (int y = 100; y < 150; ++y)
      for (int x = 100; x < 200; ++x)
        image.setPixel(x, y, qRgb(220, 30, 30));
    return image;
  }
  void Show(const QImage& image) {
    Picture picture;
    picture.SetImage(image);
    view_.Assign(picture);
  }
  void Mode(const QString& mode) { view_.SetMouseInteract(mode, true); }
  void Press(QPoint at, Qt::KeyboardModifiers with = {}, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(view_.viewport(), button, with, at);
  }
  void MoveTo(QPoint at, Qt::KeyboardModifiers with = {}, Qt::MouseButton held = Qt::LeftButton) {
    QMouseEvent event(QEvent::MouseMove, at, view_.viewport()->mapToGlobal(at), Qt::NoButton, held,
                      with);
    QApplication::sendEvent(view_.viewport(), &event);
  }
  void Release(QPoint at, Qt::KeyboardModifiers with = {},
               Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(view_.viewport(), button, with, at);
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers with = {}) {
    Press(from, with);
    MoveTo((from + to) / 2, with);
    MoveTo(to, with);
    Release(to, with);
  }
  void Click(QPoint at, Qt::KeyboardModifiers with = {}) {
    Press(at, with);
    Release(at, with);
  }
  int AddBox(const QRect& box) {
    const int id = view_.AddObject(ObjectKind::Rectangle);
    const std::pair<const char16_t*, int> values[] = {{u"LEFT", box.left()},
                                                      {u"TOP", box.top()},
                                                      {u"WIDTH", box.width()},
                                                      {u"HEIGHT", box.height()}};
    for (const auto& [key, value] : values)
      view_.SetObjectProperty(id, key, QString::number(value));
    view_.SetObjectProperty(id, u"BRUSHSTYLE", u"0"_s);
    return id;
  }
  QRect BoxOf(int id) const { return view_.Objects().Find(id)->Box().toRect(); }
  QRect Selected() const { return view_.Selected().Bounds(); }

  ImageX view_;
};

TEST_F(Control, RectanglesKeepAspectAndLimits) {
  Mode(u"SelectRect"_s);
  Drag({50, 40}, {150, 100});
  EXPECT_EQ(Selected(), QRect(50, 40, 100, 60));
  EXPECT_TRUE(view_.Selected().IsRectangle());
  view_.SetSelectionAspectRatio(2);
  view_.SetSelectionMaxWidth(80);
  view_.SetSelectionMaxHeight(40);
  Drag({300, 200}, {100, 20});
  EXPECT_EQ(Selected(), QRect(220, 160, 80, 40));
  view_.SetSelectionAspectRatio(-1);
  view_.SetSelectionMaxWidth(0);
  view_.SetSelectionMaxHeight(0);
  Drag({300, 200}, {330, 290}, Qt::ShiftModifier);
  EXPECT_EQ(Selected().size(), QSize(90, 90));
  Drag({300, 200}, {390, 295});
  EXPECT_EQ(Selected(), QRect(300, 200, 90, 95));
  // A click takes it away.
  Click({20, 20});
  EXPECT_FALSE(view_.HasSelection());
}

TEST_F(Control, EllipsesLassosAndPolygons) {
  Mode(u"SELECTCIRCLE"_s);
  Drag({100, 50}, {200, 110});
  EXPECT_EQ(Selected(), QRect(100, 50, 100, 60));
  EXPECT_FALSE(view_.Selected().IsRectangle());
  Mode(u"SELECTLASSO"_s);
  Press({10, 10});
  for (const QPoint at : {QPoint(60, 10), QPoint(60, 60), QPoint(10, 60)})
    MoveTo(at);
  Release({10, 60});
  EXPECT_EQ(Selected(), QRect(10, 10, 50, 50));

  Mode(u"SELECTPOLYGON"_s);
  const auto corners = [this] {
    for (const QPoint at : {QPoint(20, 20), QPoint(120, 20), QPoint(120, 90)})
      Click(at);
  };
  corners();
  EXPECT_FALSE(view_.HasSelection());
  QTest::keyClick(&view_, Qt::Key_Return);
  EXPECT_EQ(Selected(), QRect(20, 20, 100, 70));
  corners();
  Click({22, 21});  // on the first corner
  EXPECT_EQ(Selected(), QRect(20, 20, 100, 70));
  corners();
  Click({300, 200});
  QTest::keyClick(&view_, Qt::Key_Backspace);
  QTest::mouseDClick(view_.viewport(), Qt::LeftButton, {}, {120, 90});
  EXPECT_EQ(Selected(), QRect(20, 20, 100, 70));
  // Escape and another mode forget what is begun.
  corners();
  QTest::keyClick(&view_, Qt::Key_Escape);
  QTest::keyClick(&view_, Qt::Key_Return);
  EXPECT_FALSE(view_.HasSelection());
  corners();
  Mode(u"SELECTRECT"_s);
  QTest::keyClick(&view_, Qt::Key_Return);
  EXPECT_FALSE(view_.HasSelection());
}

TEST_F(Control, TheWandTakesTheFieldUnderIt) {
  Mode(u"SELECTMAGICWAND"_s);
  view_.SetMagicWandTolerance(20);
  QSignalSpy changed(&view_, &ImageX::OnSelectionChange);
  Click({150, 120});
  EXPECT_EQ(Selected(), QRect(100, 100, 100, 50));
  EXPECT_EQ(changed.count(), 1);
  view_.SetMagicWandTolerance(99);
  Click({150, 120});
  EXPECT_EQ(Selected(), QRect(0, 0, 400, 300));
  view_.Deselect();
  EXPECT_FALSE(view_.HasSelection());
}

TEST_F(Control, ModesThatDrawExcludeOneAnother) {
  const QString tools[] = {u"OBJECTSELECT"_s,    u"PUTLINE"_s,       u"SELECTRECT"_s,
                           u"SELECTCIRCLE"_s,    u"SELECTPOLYGON"_s, u"SELECTLASSO"_s,
                           u"SELECTMAGICWAND"_s, u"SELECT"_s};
  Mode(u"SCROLL"_s);
  for (const QString& tool : tools) {
    Mode(tool);
    for (const QString& other : tools)
      EXPECT_EQ(view_.GetMouseInteract(other), other == tool);
    EXPECT_TRUE(view_.GetMouseInteract(u"scroll"_s));
  }
  // Switching off one that isn't on leaves the one that is.
  view_.SetMouseInteract(u"PUTLINE"_s, false);
  EXPECT_TRUE(view_.GetMouseInteract(u"SELECT"_s));
  view_.SetMouseInteract(u"SELECT"_s, false);
  EXPECT_FALSE(view_.GetMouseInteract(u"SELECT"_s));
  Mode(u"SELECTLASSO"_s);
  Mode(u"SCROLL"_s);
  EXPECT_FALSE(view_.GetMouseInteract(u"SELECTLASSO"_s));
  Mode(u"OBJECTSELECT"_s);
  Mode(u"SCROLL"_s);
  EXPECT_TRUE(view_.GetMouseInteract(u"OBJECTSELECT"_s));
}

TEST_F(Control, ZoomAndPanWorkInEveryMode) {
  for (const QString& mode : {u"SELECTRECT"_s, u"PUTLINE"_s, u"OBJECTSELECT"_s, u"SCROLL"_s}) {
    Mode(mode);
    view_.SetZoom(400);
    const auto place = [this] { return QPointF(view_.ToBitmapX(0), view_.ToBitmapY(0)); };
    QPointF before = place();
    Press({200, 150}, {}, Qt::MiddleButton);
    MoveTo({160, 130}, {}, Qt::MiddleButton);
    Release({160, 130}, {}, Qt::MiddleButton);
    EXPECT_EQ(place() - before, QPointF(10, 5)) << mode.toStdString();
    before = place();
    QTest::keyPress(&view_, Qt::Key_Space);
    Drag({200, 150}, {240, 190});
    QTest::keyRelease(&view_, Qt::Key_Space);
    EXPECT_EQ(place() - before, QPointF(-10, -10)) << mode.toStdString();
    EXPECT_FALSE(view_.HasSelection());
    const double zoom = view_.Zoom();
    QWheelEvent event({200, 150}, view_.viewport()->mapToGlobal(QPoint(200, 150)), {}, {0, 120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_.viewport(), &event);
    EXPECT_GT(view_.Zoom(), zoom);
    view_.Fit();
  }
  EXPECT_EQ(view_.Objects().Count(), 0);
}

TEST_F(Control, SelectionsAreDrawnInPicturePixelsAtAnyZoom) {
  view_.SetZoom(200);
  const QPoint corner(static_cast<int>(view_.ToBitmapX(100)),
                      static_cast<int>(view_.ToBitmapY(80)));
  Mode(u"SELECTRECT"_s);
  Drag({100, 80}, {200, 160});
  EXPECT_EQ(Selected(), QRect(corner, QSize(50, 40)));
  EXPECT_EQ(view_.FromBitmap(corner), QPointF(100, 80));
}

TEST_F(Control, TheSelectionsLineMarchesAndNothingElseIsPainted) {
  view_.Select(Selection::Rectangle({50, 50, 200, 150}, {400, 300}));
  const QImage before = view_.viewport()->grab().toImage();
  int differing = 0;
  ASSERT_TRUE(QTest::qWaitFor([&] { return view_.viewport()->grab().toImage() != before; }, 5000));
  const QImage after = view_.viewport()->grab().toImage();
  for (int y = 0; y < 300; ++y) {
    for (int x = 0; x < 400; ++x) {
      if (before.pixel(x, y) == after.pixel(x, y)) continue;
      ++differing;
      const bool onLine = (std::abs(x - 50) <= 1 || std::abs(x - 250) <= 1 ||
                           std::abs(y - 50) <= 1 || std::abs(y - 200) <= 1);
      EXPECT_TRUE(onLine) << x << ' ' << y;
    }
  }
  EXPECT_GT(differing, 50);
  view_.Deselect();
  EXPECT_EQ(view_.viewport()->grab().toImage().pixel(50, 100), Fields().pixel(50, 100));
  // Around everything it is seen on all four sides.
  view_.Select(Selection::Rectangle({0, 0, 400, 300}, {400, 300}));
  const QImage framed = view_.viewport()->grab().toImage();
  for (const QPoint at : {QPoint(0, 150), QPoint(399, 150), QPoint(200, 0), QPoint(200, 299)})
    EXPECT_NE(framed.pixel(at), Fields().pixel(at)) << at.x() << ' ' << at.y();
}

TEST_F(Control, ALineIsPutWithThePropertiesSetForIt) {
  EXPECT_TRUE(view_.SetObjectProperty(ImageX::kNextObject, u"PENCOLOR", u"10,20,30"_s));
  EXPECT_TRUE(view_.SetObjectProperty(ImageX::kNextObject, u"penwidth", u"3"_s));
  EXPECT_FALSE(view_.SetObjectProperty(ImageX::kNextObject, u"PENCOLOR", u"much"_s));
  EXPECT_EQ(view_.GetObjectProperty(ImageX::kNextObject, u"PenColor"), u"10,20,30");
  Mode(u"PUTLINE"_s);
  // As a window does it that wants one line only.
  QObject::connect(&view_, &ImageX::OnMouseDown, &view_, [this] { view_.RemoveAllObjects(); });
  QSignalSpy up(&view_, &ImageX::OnMouseUp);
  Drag({50, 60}, {150, 40});
  Drag({10, 20}, {110, 70});
  ASSERT_EQ(view_.Objects().Count(), 1);
  const VectorObject& line = view_.Objects().All().front();
  EXPECT_EQ(line.kind, ObjectKind::Line);
  EXPECT_EQ(QRectF(line.left, line.top, line.width, line.height), QRectF(10, 20, 100, 50));
  EXPECT_EQ(line.penColour, QColor(10, 20, 30));
  EXPECT_EQ(line.penWidth, 3);
  EXPECT_EQ(up.count(), 2);
  EXPECT_EQ(up.back().at(0).toPointF(), QPointF(110, 70));
  Click({200, 200});
  EXPECT_EQ(view_.Objects().Count(), 0);
}

class Objects : public Control {
 protected:
  Objects() {
    a_ = AddBox({20, 20, 60, 40});
    b_ = AddBox({200, 150, 80, 80});
    Mode(u"OBJECTSELECT"_s);
  }
  int a_ = 0, b_ = 0;
};

TEST_F(Objects, AreSelectedByClicksBandsAndCalls) {
  QSignalSpy selected(&view_, &ImageX::OnSelectObject);
  const auto is = [this](std::vector<int> ids) { return view_.SelectedObjects() == ids; };
  Click({50, 40});
  EXPECT_TRUE(is({a_}));
  EXPECT_EQ(selected.count(), 1);
  Click({50, 40});
  EXPECT_EQ(selected.count(), 1);
  Click({240, 190}, Qt::ControlModifier);
  EXPECT_TRUE(is({a_, b_}));
  Click({50, 40}, Qt::ShiftModifier);
  EXPECT_TRUE(is({b_}));
  Click({350, 20});
  EXPECT_TRUE(is({}));
  Drag({5, 5}, {30, 30});
  EXPECT_TRUE(is({a_}));
  Drag({390, 290}, {270, 220}, Qt::ShiftModifier);
  EXPECT_TRUE(is({a_, b_}));
  view_.DeselectAllObjects();
  view_.SetObjectProperty(b_, u"SELECTABLE", u"0"_s);
  view_.SelectAllObjects();
  EXPECT_TRUE(is({a_}));
  Click({240, 190});
  EXPECT_TRUE(is({}));
  view_.SelectObject(a_, true);
  view_.SelectObject(4711, true);
  EXPECT_TRUE(is({a_}));
  const int before = static_cast<int>(selected.count());
  view_.RemoveObject(a_);
  EXPECT_TRUE(is({}));
  EXPECT_EQ(selected.count(), before + 1);
}

TEST_F(Objects, AreMovedByMouseAndArrows) {
  QSignalSpy moved(&view_, &ImageX::OnObjectMoved);
  Drag({50, 40}, {90, 70});
  EXPECT_EQ(BoxOf(a_), QRect(60, 50, 60, 40));
  ASSERT_EQ(moved.count(), 1);
  EXPECT_EQ(moved.back().at(0).toInt(), a_);
  // A click that trembles moves nothing.
  Drag({90, 70}, {91, 71});
  EXPECT_EQ(BoxOf(a_), QRect(60, 50, 60, 40));
  view_.SelectAllObjects();
  Drag({240, 190}, {230, 180});
  EXPECT_EQ(BoxOf(a_), QRect(50, 40, 60, 40));
  EXPECT_EQ(BoxOf(b_), QRect(190, 140, 80, 80));
  EXPECT_EQ(moved.count(), 3);
  QTest::keyClick(&view_, Qt::Key_Right);
  QTest::keyClick(&view_, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(BoxOf(a_), QRect(51, 50, 60, 40));
  EXPECT_EQ(BoxOf(b_), QRect(191, 150, 80, 80));
  view_.SetObjectProperty(a_, u"MOVEABLE", u"0"_s);
  QTest::keyClick(&view_, Qt::Key_Right);
  Drag({80, 70}, {180, 90});
  EXPECT_EQ(BoxOf(a_), QRect(51, 50, 60, 40));
  // Escape while dragging brings them back.
  const QRect before = BoxOf(b_);
  Press({230, 190});
  MoveTo({100, 100});
  EXPECT_NE(BoxOf(b_), before);
  QTest::keyClick(&view_, Qt::Key_Escape);
  EXPECT_EQ(BoxOf(b_), before);
  Release({100, 100});
  EXPECT_EQ(BoxOf(b_), before);
}

TEST_F(Objects, AreSizedByTheirHandles) {
  QSignalSpy moved(&view_, &ImageX::OnObjectMoved);
  // Without being selected they have none.
  Drag({80, 60}, {80, 60});
  Drag({80, 60}, {110, 70});
  EXPECT_EQ(BoxOf(a_), QRect(20, 20, 90, 50));
  EXPECT_EQ(moved.count(), 1);
  view_.SetKeepObjectAspect(true);
  Click({240, 190});
  Drag({280, 230}, {320, 240});
  EXPECT_EQ(BoxOf(b_).size(), QSize(120, 120));
  view_.SetObjectProperty(b_, u"SIZEABLE", u"0"_s);
  Drag({200, 150}, {190, 140});
  EXPECT_EQ(BoxOf(b_).size(), QSize(120, 120));
}

TEST_F(Objects, LieOverThePictureUntilTheyAreMerged) {
  view_.SetObjectProperty(a_, u"BRUSHCOLOR", u"0,255,0"_s);
  EXPECT_EQ(view_.viewport()->grab().toImage().pixel(50, 40), qRgb(0, 255, 0));
  EXPECT_EQ(view_.GetPicture().Image().pixel(50, 40), qRgb(20, 40, 200));
  view_.SaveUndo();
  ASSERT_TRUE(view_.MergeObjects());
  view_.RemoveAllObjects();
  EXPECT_EQ(view_.viewport()->grab().toImage().pixel(50, 40), qRgb(0, 255, 0));
  EXPECT_EQ(view_.UndoCount(), 1);
  ASSERT_TRUE(view_.UndoAt(0));
  EXPECT_EQ(view_.viewport()->grab().toImage().pixel(50, 40), qRgb(20, 40, 200));
}

TEST_F(Control, OperationsTellThatTheyAreDoneAndUndoingDoesNot) {
  QSignalSpy finished(&view_, &ImageX::OnFinishWork);
  QSignalSpy changed(&view_, &ImageX::OnImageChange);
  ASSERT_TRUE(view_.Flip(FlipDirection::Horizontal));
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(view_.UndoCount(), 1);
  EXPECT_EQ(view_.viewport()->grab().toImage().pixel(250, 120), qRgb(220, 30, 30));
  view_.SaveRedo();
  ASSERT_TRUE(view_.UndoAt(0));
  view_.DiscardUndo();
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(changed.count(), 2);
  EXPECT_EQ(view_.GetPicture().Image(), Fields());
  ASSERT_TRUE(view_.RedoAt(0));
  EXPECT_EQ(finished.count(), 1);
  EXPECT_FALSE(view_.Apply([](const QImage&) { return QImage(); }));
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(Control, TheViewStaysWhereThePicturesSizeDoes) {
  view_.SetZoom(300);
  const double x = view_.ToBitmapX(0);
  ASSERT_TRUE(view_.AdjustSaturation(20));
  EXPECT_DOUBLE_EQ(view_.Zoom(), 300);
  EXPECT_EQ(view_.ToBitmapX(0), x);
  view_.Select(Selection::Rectangle({0, 0, 40, 40}, {400, 300}));
  ASSERT_TRUE(view_.CropToSelection());
  EXPECT_TRUE(view_.IsFit());
  EXPECT_FALSE(view_.HasSelection());
  EXPECT_EQ(view_.ImageWidth(), 40);
}

TEST_F(Control, WhileItWorksOthersAreTurnedAwayAndTheWindowLives) {
  Outcome second;
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &view_, [&] {
    ++ticks;
    second = view_.Flip(FlipDirection::Vertical);
    EXPECT_TRUE(view_.IsWorking());
  });
  timer.start(1);
  ASSERT_TRUE(view_.Apply([](const QImage& image) {
    QTest::qSleep(120);
    return image;
  }));
  timer.stop();
  EXPECT_GT(ticks, 0);
  EXPECT_FALSE(second);
  EXPECT_FALSE(view_.IsWorking());
  EXPECT_EQ(view_.UndoCount(), 1);
  EXPECT_EQ(view_.GetPicture().Image(), Fields());
}

TEST_F(Control, MayEndWhileItWorks) {
  auto* view = new ImageX;
  Picture picture;
  picture.SetImage(Fields());
  view->Assign(picture);
  QTimer::singleShot(10, view, [view] { delete view; });
  const Outcome done = view->Apply([](const QImage& image) {
    QTest::qSleep(100);
    return image.mirrored();
  });
  EXPECT_TRUE(done);
}

TEST_F(Control, LargeWorkTellsHowFarItIs) {
  QImage large(3000, 2000, QImage::Format_RGB32);
  large.fill(Qt::gray);
  Show(large);
  QSignalSpy progress(&view_, &ImageX::OnProgress);
  // Rows that take their time, so that somebody looks in between.
  ASSERT_TRUE(view_.Apply([](const QImage& image) {
    ForRowBlocks(image.height(), std::int64_t{image.width()} * 4,
                 [](int, int) { QTest::qSleep(15); });
    return image;
  }));
  ASSERT_GT(progress.count(), 2);
  int before = 0;
  for (const auto& told : progress) {
    EXPECT_GT(told.at(0).toInt(), before);
    before = told.at(0).toInt();
  }
  EXPECT_EQ(before, 100);
}

TEST_F(Control, FilesAreLoadedHandedOnAndSaved) {
  const test::Scratch scratch;
  const QString path = scratch.Write("ü.jpg", test::SampleJpeg(64, 48, {{u"EXIF_Make", u"Canon"}}));
  QSignalSpy finished(&view_, &ImageX::OnFinishWork);
  ASSERT_TRUE(view_.LoadFromFile(path));
  EXPECT_EQ(finished.count(), 0);
  EXPECT_EQ(view_.ImageWidth(), 64);
  EXPECT_EQ(view_.GetIOProperty(u"FILETYPE"), u"3");
  EXPECT_TRUE(view_.IsFit());
  ImageX other, thumbnail;
  view_.Select(Selection::Rectangle({8, 8, 16, 10}, {64, 48}));
  view_.AssignSelectionTo(other);
  EXPECT_EQ(other.GetPicture().Image(), view_.GetPicture().Image().copy(8, 8, 16, 10));
  view_.AssignTo(other);
  EXPECT_EQ(other.GetIOProperty(u"EXIF_Make"), u"Canon");
  ASSERT_TRUE(view_.ResampleTo(thumbnail, 32, -1, ResampleFilter::FastLinear));
  EXPECT_EQ(thumbnail.ImageHeight(), 24);
  ASSERT_TRUE(other.Rotate(90));
  ASSERT_TRUE(other.SaveToFile(scratch.Path("turned.png")));
  ASSERT_TRUE(view_.LoadFromFile(scratch.Path("turned.png")));
  EXPECT_EQ(view_.ImageWidth(), 48);
  EXPECT_FALSE(view_.LoadFromFile(scratch.Path("gone.jpg")));
  EXPECT_EQ(view_.ImageWidth(), 48);
  view_.CopyParamsHandle(other);
  EXPECT_EQ(view_.GetIOProperty(u"FILENAME"), path);
  view_.Clear();
  EXPECT_FALSE(view_.HasImage());
  EXPECT_EQ(view_.ImageWidth(), 0);
}

TEST_F(Control, APictureOfOnePixelGoesThroughEverything) {
  QImage dot(1, 1, QImage::Format_ARGB32);
  dot.fill(qRgba(10, 200, 30, 128));
  Show(dot);
  for (const QString& mode :
       {u"SELECTRECT"_s, u"SELECTCIRCLE"_s, u"SELECTPOLYGON"_s, u"SELECTLASSO"_s,
        u"SELECTMAGICWAND"_s, u"PUTLINE"_s, u"OBJECTSELECT"_s}) {
    Mode(mode);
    Drag({150, 100}, {250, 200});
    QTest::keyClick(&view_, Qt::Key_Return);
    Click({200, 150});
    view_.viewport()->grab();
  }
  view_.SetZoom(3200);
  view_.Select(Selection::MagicWand(dot, {0, 0}, 10));
  view_.viewport()->grab();
  ASSERT_TRUE(view_.CropToSelection());
  ASSERT_TRUE(view_.Rotate(45));
  ASSERT_TRUE(view_.UndoAt(view_.UndoCount() - 1));
  EXPECT_EQ(view_.GetPicture().Image(), dot);
}

TEST_F(Control, CursorsFollowTheModeUnlessOneIsSet) {
  const auto shape = [this] { return view_.viewport()->cursor().shape(); };
  Mode(u"SCROLL"_s);
  EXPECT_EQ(shape(), Qt::ArrowCursor);
  view_.SetZoom(300);
  EXPECT_EQ(shape(), Qt::OpenHandCursor);
  Mode(u"SELECTRECT"_s);
  EXPECT_EQ(shape(), Qt::CrossCursor);
  view_.SetMouseCursor(Qt::PointingHandCursor);
  EXPECT_EQ(shape(), Qt::PointingHandCursor);
  view_.ResetMouseCursor();
  EXPECT_EQ(shape(), Qt::CrossCursor);
  view_.Fit();
  Mode(u"OBJECTSELECT"_s);
  AddBox({100, 100, 100, 100});
  view_.SelectAllObjects();
  MoveTo({150, 150}, {}, Qt::NoButton);
  EXPECT_EQ(shape(), Qt::SizeAllCursor);
  MoveTo({100, 150}, {}, Qt::NoButton);
  EXPECT_EQ(shape(), Qt::SizeHorCursor);
  MoveTo({300, 250}, {}, Qt::NoButton);
  EXPECT_EQ(shape(), Qt::ArrowCursor);
}

TEST(PlaceOnPage, FitsAndCentres) {
  const struct {
    QSizeF picture;
    QRectF page, place;
  } cases[] = {
      {{400, 300}, {0, 0, 800, 800}, {0, 100, 800, 600}},
      {{300, 400}, {10, 20, 800, 800}, {110, 20, 600, 800}},
      {{8000, 10}, {0, 0, 80, 100}, {0, 49.95, 80, 0.1}},
      {{0, 10}, {0, 0, 80, 100}, {}},
      {{10, 10}, {}, {}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(PlaceOnPage(c.picture, c.page), c.place);
}

TEST(PrintImage, WritesOnePageOrSaysWhyNot) {
  const test::Scratch scratch;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(scratch.Path("page.pdf"));
  printer.setDocName(u"A title"_s);
  QImage image(300, 200, QImage::Format_RGB32);
  image.fill(Qt::red);
  ASSERT_TRUE(PrintImage(image, printer));
  EXPECT_TRUE(test::Scratch::Read(scratch.Path("page.pdf")).startsWith("%PDF"));
  EXPECT_FALSE(PrintImage(QImage(), printer));
  printer.setOutputFileName(scratch.Path("no folder/page.pdf"));
  EXPECT_FALSE(PrintImage(image, printer));
}

TEST_F(Control, PrintingCanBeCalledOff) {
  QString title;
  QTimer::singleShot(0, &view_, [&title] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    title = dialog->windowTitle();
    dialog->reject();
  });
  const MessageHandler before = SetMessageHandler([](const QString& text, MessageKind, Buttons) {
    ADD_FAILURE() << text.toStdString();
    return Answer::Ok;
  });
  view_.PrintImageDialog(u"A quick print"_s);
  SetMessageHandler(before);
  EXPECT_EQ(title, u"A quick print");
}

}  // namespace
}  // namespace zqm
