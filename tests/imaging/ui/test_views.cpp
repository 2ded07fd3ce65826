// SPDX-License-Identifier: GPL-3.0-or-later
#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include "imaging/thumbnail_list.h"
#include "imaging/ui/image_multi_x.h"
#include "imaging/ui/image_x.h"
#include "shell/files.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

template <class Done>
bool Eventually(const Done& done) {
  return QTest::qWaitFor(done, 20'000);
}

class Thumbnails : public ::testing::Test {
 protected:
  void Show(int count) {
    for (int i = 0; i < count; ++i)
      paths_.append(scratch_.Write(u"%1.jpg"_s.arg(i, 3, 10, QChar(u'0')), jpeg_));
    list_.AppendImages(paths_);
    view_.SetList(&list_);
    view_.SetRows(ImageMultiX::Rows::Multiple);
    view_.resize(700, 400);
    view_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view_));
  }
  void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(view_.viewport(), Qt::LeftButton, modifiers,
                      view_.visualRect(list_.index(row)).center());
  }
  QStringList Paths(std::initializer_list<int> rows) const {
    QStringList paths;
    for (const int row : rows)
      paths.append(paths_.at(row));
    return paths;
  }
  ThumbnailList::State StateOf(int row) const {
    return list_.index(row).data(ThumbnailList::StateRole).value<ThumbnailList::State>();
  }

  test::Scratch scratch_;
  QByteArray jpeg_ = test::SampleJpeg(300, 200);
  QStringList paths_;
  ThumbnailList list_;
  ImageMultiX view_;
};

TEST_F(Thumbnails, KeepTheOrderOfSelection) {
  Show(8);
  QSignalSpy selected(&view_, &ImageMultiX::OnImageSelect);
  QSignalSpy none(&view_, &ImageMultiX::OnImageDeselect);
  Click(4);
  EXPECT_EQ(selected.count(), 1);
  Click(1, Qt::ControlModifier);
  Click(6, Qt::ControlModifier);
  EXPECT_EQ(view_.SelectedPaths(), Paths({4, 1, 6}));
  Click(1, Qt::ControlModifier);
  EXPECT_EQ(view_.SelectedPaths(), Paths({4, 6}));
  Click(3);
  Click(1, Qt::ControlModifier);
  Click(4, Qt::ShiftModifier);
  EXPECT_EQ(view_.SelectedPaths(), Paths({1, 2, 3, 4})) << "a range has an order of its own";
  Click(0);
  Click(3, Qt::ShiftModifier);
  EXPECT_EQ(view_.SelectedPaths(), Paths({0, 1, 2, 3}));
  QTest::keyClick(&view_, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(view_.SelectedPaths(), Paths({0, 1, 2, 3, 4}));
  list_.Reorder({7, 6, 5, 4, 3, 2, 1, 0});
  EXPECT_EQ(view_.SelectedPaths(), Paths({0, 1, 2, 3, 4}));
  list_.DeleteImages(Paths({1, 3}));
  EXPECT_EQ(view_.SelectedPaths(), Paths({0, 2, 4}));
  view_.selectAll();
  EXPECT_EQ(view_.SelectedPaths(), list_.FileNames()) << "whatever was selected before";
  view_.clearSelection();
  EXPECT_EQ(none.count(), 1);
  view_.SelectPaths(Paths({5, 2}));
  EXPECT_EQ(view_.SelectedPaths(), Paths({5, 2}));
}

TEST_F(Thumbnails, TheRightButtonSelectsWhatIsUnderIt) {
  Show(4);
  Click(0);
  Click(1, Qt::ControlModifier);
  QSignalSpy menu(&view_, &ImageMultiX::MenuWanted);
  const auto rightClick = [this](int row) {
    const QPoint at = view_.visualRect(list_.index(row)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, view_.viewport()->mapToGlobal(at));
    QApplication::sendEvent(view_.viewport(), &event);
  };
  rightClick(1);
  EXPECT_EQ(view_.SelectedPaths(), Paths({0, 1}));
  rightClick(3);
  EXPECT_EQ(view_.SelectedPaths(), Paths({3}));
  EXPECT_EQ(menu.count(), 2);
}

TEST_F(Thumbnails, ComeForWhatIsInViewAndNotForWhatIsFar) {
  Show(700);
  ASSERT_TRUE(Eventually([this] { return StateOf(0) == ThumbnailList::State::Loaded; }));
  EXPECT_EQ(StateOf(699), ThumbnailList::State::Waiting);
  view_.scrollToBottom();
  ASSERT_TRUE(Eventually([this] { return StateOf(699) == ThumbnailList::State::Loaded; }));
  const auto picture = list_.index(699).data(ThumbnailList::PictureRole).value<QImage>();
  EXPECT_EQ(picture.size(), QSize(140, 93));
}

TEST_F(Thumbnails, BrokenAndVanishedFilesAreSaidToBe) {
  Show(3);
  const QString broken = scratch_.Write("broken.jpg", "no picture");
  list_.AppendImages({broken, scratch_.Path("gone.jpg")});
  ASSERT_TRUE(Eventually([this] {
    return StateOf(3) == ThumbnailList::State::Broken && StateOf(4) == ThumbnailList::State::Broken;
  }));
  // Mended, it is read anew.
  scratch_.Write("broken.jpg", jpeg_);
  list_.UpdateImage(list_.IndexOf(broken));
  ASSERT_TRUE(Eventually([this] { return StateOf(3) == ThumbnailList::State::Loaded; }));
}

TEST_F(Thumbnails, TheListCanChangeWhileItIsRead) {
  Show(60);
  for (int round = 0; round < 20; ++round) {
    list_.Clear();
    list_.AppendImages(paths_);
    list_.SetVisible(0, 30);
    QCoreApplication::processEvents();
    list_.DeleteImages(paths_.mid(round, 3));
    list_.SetImageFileName(0, paths_.last() + u".jpg"_s);
  }
  EXPECT_EQ(list_.ImageCount(), 57);
  EXPECT_EQ(list_.IndexOf(paths_.at(19)), -1);
  EXPECT_EQ(list_.IndexOf(paths_.at(22)), 19);
  EXPECT_EQ(list_.IndexOf(paths_.last() + u".jpg"_s), 0);
  ASSERT_TRUE(Eventually([this] { return StateOf(5) == ThumbnailList::State::Loaded; }));
}

class Viewer : public ::testing::Test {
 protected:
  Viewer() {
    view_.resize(400, 300);
    view_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_));
    for (const char16_t* mode : {u"SCROLL", u"MouseWheelZoom", u"NOSUCHMODE"})
      view_.SetMouseInteract(QString::fromUtf16(mode), true);
  }
  static QImage Quarters(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
      for (int x = 0; x < size.width(); ++x)
        image.setPixel(x, y,
                       qRgb(x < size.width() / 2 ? 200 : 20, y < size.height() / 2 ? 200 : 20, 0));
    return image;
  }

  ImageX view_;
};

TEST_F(Viewer, FitsWithoutEnlarging) {
  view_.ShowImage(Quarters({1600, 800}), {1600, 800});
  EXPECT_TRUE(view_.IsFit());
  EXPECT_DOUBLE_EQ(view_.Zoom(), 25);
  EXPECT_DOUBLE_EQ(view_.ToBitmapX(0), 0);
  EXPECT_DOUBLE_EQ(view_.ToBitmapY(50), 0);
  const QImage shown = view_.viewport()->grab().toImage();
  EXPECT_EQ(shown.pixel(50, 20), 0xff323232);
  EXPECT_EQ(shown.pixel(100, 100), qRgb(200, 200, 0));
  EXPECT_EQ(shown.pixel(300, 200), qRgb(20, 20, 0));
  view_.ShowImage(Quarters({40, 40}), {40, 40});
  EXPECT_DOUBLE_EQ(view_.Zoom(), 100);
}

TEST_F(Viewer, ShowsEveryFormatAlike) {
  // High enough to be taken in several pieces.
  const QImage image = Quarters({700, 400});
  view_.ShowImage(image, image.size());
  const QImage shown = view_.viewport()->grab().toImage();
  for (const QImage::Format format : {QImage::Format_RGBA64, QImage::Format_ARGB32,
                                      QImage::Format_Indexed8, QImage::Format_RGBX64}) {
    view_.ShowImage(image.convertToFormat(format), image.size());
    const QImage other = view_.viewport()->grab().toImage();
    for (const QPoint at : {QPoint(60, 60), QPoint(340, 60), QPoint(60, 250), QPoint(340, 250)})
      EXPECT_EQ(other.pixel(at), shown.pixel(at)) << format << ' ' << at.x() << ' ' << at.y();
  }
}

TEST_F(Viewer, TheWheelKeepsThePixelUnderThePointer) {
  view_.ShowImage(Quarters({4000, 3000}), {4000, 3000});
  const QPointF at(120, 210);
  const double x = view_.ToBitmapX(at.x()), y = view_.ToBitmapY(at.y());
  for (int notch = 0; notch < 8; ++notch) {
    QWheelEvent event(at, view_.viewport()->mapToGlobal(at), {}, {0, 120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_.viewport(), &event);
  }
  EXPECT_FALSE(view_.IsFit());
  EXPECT_NEAR(view_.Zoom(), 10 * std::pow(1.2, 8), 0.01);
  const double pixel = 100 / view_.Zoom();
  EXPECT_NEAR(view_.ToBitmapX(at.x()), x, 2 * pixel * 8);
  EXPECT_NEAR(view_.ToBitmapY(at.y()), y, 2 * pixel * 8);
  const int before = view_.horizontalScrollBar()->value();
  QTest::mousePress(view_.viewport(), Qt::LeftButton, {}, {200, 150});
  QTest::mouseMove(view_.viewport(), {170, 150});
  QTest::mouseRelease(view_.viewport(), Qt::LeftButton, {}, {170, 150});
  EXPECT_EQ(view_.horizontalScrollBar()->value(), before + 30);
  QTest::keyClick(&view_, Qt::Key_0);
  EXPECT_TRUE(view_.IsFit());
  EXPECT_FALSE(view_.GetMouseInteract(u"NOSUCHMODE"_s));
}

TEST_F(Viewer, AsksOnceForPixelsThatAStandInLacks) {
  QSignalSpy wanted(&view_, &ImageX::FullSizeWanted);
  view_.ShowImage(Quarters({400, 300}), {4000, 3000});
  EXPECT_EQ(wanted.count(), 0);
  view_.SetZoom(50);
  view_.SetZoom(100);
  EXPECT_EQ(wanted.count(), 1);
  const double x = view_.ToBitmapX(200), y = view_.ToBitmapY(150);
  view_.ShowImage(Quarters({4000, 3000}), {4000, 3000}, ImageX::KeepView::SamePhoto);
  EXPECT_DOUBLE_EQ(view_.Zoom(), 100);
  EXPECT_NEAR(view_.ToBitmapX(200), x, 2);
  EXPECT_NEAR(view_.ToBitmapY(150), y, 2);
  EXPECT_EQ(wanted.count(), 1);
  view_.ShowImage(Quarters({800, 600}), {800, 600});
  EXPECT_TRUE(view_.IsFit());
  view_.Clear();
  EXPECT_FALSE(view_.HasImage());
}

}  // namespace
}  // namespace zqm
