// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "viewers/full_info.h"
#include "viewers/photo_viewer.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

class PhotoViewerTest : public HomeTest {
 protected:
  PhotoViewer& Open(const QStringList& paths, int start) {
    viewer_ =
        std::make_unique<PhotoViewer>(session_->ActiveCatalogue(), ReadRequest{}, paths, start);
    QObject::connect(viewer_.get(), &PhotoViewer::Changed,
                     [this] { shown_.append(GetFileName(viewer_->Shown().path)); });
    viewer_->SetBox({64, 64});
    return *viewer_;
  }
  bool Settles() {
    return Eventually([this] { return !viewer_->IsLoading(); });
  }

  QStringList shown_;
  std::unique_ptr<PhotoViewer> viewer_;
};

TEST_F(PhotoViewerTest, WhatWasPassedOverIsNeverShown) {
  QStringList paths;
  for (int i = 0; i < 6; ++i)
    paths.append(scratch_.Write(QStringLiteral("photos/%1.jpg").arg(i), SampleJpeg(320 + i, 200)));
  PhotoViewer& viewer = Open(paths, 1);
  QObject::connect(&viewer, &PhotoViewer::Changed, [&viewer] {
    EXPECT_EQ(viewer.Shown().fullSize.width(), 320 + viewer.Shown().position);
  });
  ASSERT_TRUE(Settles());
  viewer.WantFullSize();  // and is left before it comes
  shown_.clear();
  for (const int position : {2, 3, 4, 5})
    viewer.GoTo(position);
  ASSERT_TRUE(Settles());
  // Neighbours and the photo that was left arrive now.
  const QDeadlineTimer rest(300);
  Eventually([&rest] { return rest.hasExpired(); });
  EXPECT_EQ(shown_.last(), u"5.jpg"_s);
  EXPECT_TRUE(std::ranges::is_sorted(shown_)) << shown_.join(u' ').toStdString();
  EXPECT_EQ(viewer.Shown().image.width(), 64) << "not the full size that was left behind";
  EXPECT_FALSE(viewer.GoTo(99)) << "no further than the end";
  viewer.GoTo(-5);
  ASSERT_TRUE(Settles());
  EXPECT_EQ(shown_.last(), u"0.jpg"_s);
}

TEST_F(PhotoViewerTest, FullSizeComesOnceAndStaysAtHand) {
  PhotoViewer& viewer = Open({AddPhoto(u"a.jpg"_s)}, 0);
  ASSERT_TRUE(Settles());
  viewer.WantFullSize();
  ASSERT_TRUE(Eventually([&] { return viewer.Shown().image.size() == QSize(320, 200); }));
  viewer.SetBox({80, 80});
  ASSERT_TRUE(Eventually([&] { return viewer.Shown().image.size() == QSize(80, 50); }));
  viewer.WantFullSize();
  EXPECT_EQ(viewer.Shown().image.size(), QSize(320, 200));
}

TEST_F(PhotoViewerTest, FullSizeOfAPhotoThatWasLeftIsNotShownForTheNextOne) {
  const QString slow = scratch_.Write("photos/slow.jpg", SampleJpeg(5000, 4000));
  PhotoViewer& viewer =
      Open({AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s), slow}, 0);
  ASSERT_TRUE(Settles());
  viewer.WantFullSize();
  viewer.GoTo(3);
  ASSERT_TRUE(Settles());
  EXPECT_EQ(viewer.Shown().fullSize, QSize(5000, 4000));
}

TEST_F(PhotoViewerTest, FullSizeThatCannotBeReadSaysWhy) {
  const QString path = scratch_.Write("photos/a.jpg", SampleJpeg(320, 200));
  PhotoViewer& viewer = Open({path}, 0);
  ASSERT_TRUE(Settles());
  QString why;
  QObject::connect(&viewer, &PhotoViewer::FullSizeFailed, [&](const QString& text) { why = text; });
  scratch_.Write("photos/a.jpg", "no photo");
  viewer.WantFullSize();
  EXPECT_TRUE(viewer.IsReading());
  ASSERT_TRUE(Eventually([&] { return !why.isEmpty(); }));
  EXPECT_FALSE(viewer.IsReading());
  EXPECT_EQ(viewer.Shown().image.width(), 64) << "what is shown stays";
}

TEST_F(PhotoViewerTest, PhotosThatAreGoneAreShownAsTheirRowsHaveThem) {
  const QString a = AddPhoto(u"a.jpg"_s), row = AddPhoto(u"row.jpg"_s, {{u"EXIF_Make", u"Zorki"}}),
                none = AddPhoto(u"none.jpg"_s), broken = scratch_.Write("photos/x.jpg", "no photo");
  CatalogueThem({row});
  QFile::remove(row);
  QFile::remove(none);
  PhotoViewer& viewer = Open({a, row, none, broken}, 0);
  const auto go = [&](int position) {
    viewer.GoTo(position);
    EXPECT_TRUE(Settles());
    return viewer.Shown();
  };
  ViewedPhoto shown = go(1);
  EXPECT_TRUE(shown.offline);
  EXPECT_EQ(shown.image.size(), QSize(200, 125));
  EXPECT_EQ(shown.info.Line(MetadataPage::Exif, u"Camera Make"), u"Zorki"_s);
  EXPECT_EQ(FullInfo(shown, 4, ValuesOf(session_->ActiveCatalogue(), row)).first(),
            u"2 / 4   missing or offline"_s);
  shown = go(2);
  EXPECT_TRUE(shown.offline && shown.image.isNull());
  EXPECT_FALSE(shown.message.isEmpty());
  shown = go(3);
  EXPECT_FALSE(shown.offline);
  EXPECT_FALSE(shown.message.isEmpty());
  EXPECT_TRUE(go(0).message.isEmpty());
}

TEST_F(PhotoViewerTest, TheOverlayHasWhatTheCameraWrote) {
  const QString path = AddPhoto(u"a.jpg"_s, {{u"EXIF_DateTimeOriginal", u"2020:05:17 11:32:08"},
                                             {u"EXIF_ExposureTime", u"0.004"},
                                             {u"EXIF_Fnumber", u"4"},
                                             {u"EXIF_ISOSpeedRatings0", u"100"}});
  CatalogueThem({path});
  PhotoViewer& viewer = Open({path}, 0);
  ASSERT_TRUE(Settles());
  const auto lines = [&] {
    return FullInfo(viewer.Shown(), 1, ValuesOf(session_->ActiveCatalogue(), path));
  };
  ASSERT_EQ(lines().size(), 4) << lines().join(u'\n').toStdString();
  EXPECT_TRUE(lines()[1].startsWith(u"320 × 200   "_s));
  EXPECT_EQ(lines()[3], u"1/250 sec   F/4   ISO-100"_s);
  ASSERT_TRUE(SetValue(session_->ActiveCatalogue(), path, {KeywordField::Rating, u"3"_s}));
  ASSERT_TRUE(SetValue(session_->ActiveCatalogue(), path, {KeywordField::Flag, u"Rejected"_s}));
  EXPECT_EQ(lines().value(4), u"★★★☆☆   Rejected"_s);
}

}  // namespace
}  // namespace zqm::test
