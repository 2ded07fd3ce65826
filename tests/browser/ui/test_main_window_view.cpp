// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTimer>

#include "browser/ui/rating_stars.h"
#include "imaging/thumbnail_list.h"
#include "tests/browser/ui/main_window_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class MainWindowViewers : public test::MainWindowTest {
 protected:
  /// Does that as soon as a viewer of that name stands and shows a photo.
  void InViewer(const QString& name, std::function<void(QWidget& viewer)> body) {
    poll_.callOnTimeout([this, name, body = std::move(body)] {
      QWidget* viewer = QApplication::activeModalWidget();
      if (viewer == nullptr || viewer->objectName() != name || !viewer->isActiveWindow()) return;
      poll_.stop();
      body(*viewer);
      viewer->close();
    });
    poll_.start(10);
  }
  static void Await(QWidget& viewer, const QString& title) {
    EXPECT_TRUE(test::Eventually([&] { return viewer.windowTitle() == title; })) << "not shown";
  }

  QTimer poll_;
};

TEST_F(MainWindowViewers, TheListIsSeenFromTheActivatedPhotoAndTheLastOneIsSelected) {
  const QStringList photos{AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)};
  CatalogueThem(photos);
  Open();
  Click(1);
  InViewer(u"frmfull"_s, [this](QWidget& viewer) {
    Await(viewer, u"b.jpg"_s);
    QTest::keyClick(&viewer, Qt::Key_Right);
    Await(viewer, u"c.jpg"_s);
    QTest::keyClick(&viewer, Qt::Key_3, Qt::ControlModifier);
    QTest::keyClick(&viewer, Qt::Key_X, Qt::ControlModifier | Qt::ShiftModifier);
  });
  QTest::keyClick(List(), Qt::Key_Return);
  EXPECT_FALSE(poll_.isActive());
  EXPECT_EQ(List()->SelectedPaths(), QStringList{photos[2]});
  EXPECT_EQ(Stored(photos[2], Column::Rating), u"3"_s);
  EXPECT_EQ(Find<RatingStars>(u"Imgrating")->Rating(), 3);
  const auto frame = [this](int row) {
    return static_cast<ThumbnailList*>(List()->model())->Look(row).frame;
  };
  EXPECT_EQ(frame(2), qRgb(255, 0, 0));
  EXPECT_NE(frame(1), frame(2));
}

TEST_F(MainWindowViewers, SeveralSelectedPhotosAreSeenAloneAndComparedInTheirOrder) {
  const QStringList photos{AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)};
  CatalogueThem(photos);
  Open();
  Click(2);
  Trigger(u"mnucompare");
  EXPECT_EQ(messages_, QStringList{u"Please select two or more photos to compare them."_s});
  Click(0, Qt::ControlModifier);
  InViewer(u"frmcompare"_s, [](QWidget& viewer) {
    const auto name = [&viewer](const QString& pane) {
      return viewer.findChild<QWidget*>(pane)->findChild<QLabel*>(u"lblname"_s)->text();
    };
    EXPECT_TRUE(test::Eventually([&] {
      return name(u"pane1"_s).startsWith(u"c.jpg"_s) && name(u"pane2"_s).startsWith(u"a.jpg"_s);
    }));
    QTest::keyClick(&viewer, Qt::Key_X, Qt::ControlModifier | Qt::ShiftModifier);
  });
  Trigger(u"mnucompare");
  EXPECT_EQ(List()->SelectedPaths(), (QStringList{photos[2], photos[0]}));
  EXPECT_EQ(static_cast<ThumbnailList*>(List()->model())->Look(2).frame, qRgb(255, 0, 0));
  InViewer(u"frmfull"_s, [](QWidget& viewer) {
    Await(viewer, u"c.jpg"_s);
    QTest::keyClick(&viewer, Qt::Key_End);
    Await(viewer, u"a.jpg"_s);
  });
  Trigger(u"mnufull");
  EXPECT_EQ(List()->SelectedPaths(), (QStringList{photos[2], photos[0]}));
  EXPECT_EQ(List()->currentIndex().row(), 0) << "the photo seen last";
}

}  // namespace
}  // namespace zqm
