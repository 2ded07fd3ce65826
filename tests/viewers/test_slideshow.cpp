// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/eventually.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "viewers/slideshow.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zqm::test {
namespace {

constexpr QSize kScreen(60, 40);
constexpr QPoint kMiddle(30, 20);
constexpr QRgb kRed = 0xffff0000, kGreen = 0xff00ff00, kBlue = 0xff0000ff, kBlack = 0xff000000;
constexpr int kCrossFade = 1;

/// A show of one-coloured photos on a clock that the test moves.
class SlideshowTest : public ::testing::Test {
 protected:
  QString Photo(const char* name, QRgb colour, const QSize& size = {30, 30}) {
    QImage photo(size, QImage::Format_RGB32);
    photo.fill(colour);
    EXPECT_TRUE(photo.save(scratch_.Path(name), "PNG"));
    return scratch_.Path(name);
  }
  void Play(const QStringList& photos, bool keys = false) {
    show_ = std::make_unique<Slideshow>(SlideshowPlan{photos, kCrossFade, 5000ms, keys, {}},
                                        [this] { return now_; });
    QObject::connect(show_.get(), &Slideshow::PassedOver,
                     [this](const QStringList& names) { passed_ += names; });
    QObject::connect(show_.get(), &Slideshow::NothingToShow,
                     [this](const QString& name, const QString&) { ended_ = name; });
    show_->SetScreen(kScreen);
  }
  bool Reaches(int place) {
    return Eventually([&] { return show_->Current() == place; });
  }
  void Pass(std::chrono::milliseconds time) {
    now_ += time;
    show_->Tick();
  }
  QRgb Colour(const QPoint& at = kMiddle) { return show_->Frame().pixel(at); }

  Scratch scratch_;
  const QString red_ = Photo("red.png", kRed), green_ = Photo("green.png", kGreen),
                blue_ = Photo("blue.png", kBlue);
  std::chrono::milliseconds now_{12345};
  std::unique_ptr<Slideshow> show_;
  QStringList passed_;
  QString ended_;
};

TEST_F(SlideshowTest, EachPhotoStaysForTheIntervalAndTheLastIsFollowedByTheFirst) {
  Play({red_, green_, red_});  // one of them twice: the place counts, not the path
  EXPECT_TRUE(show_->Frame().isNull());
  ASSERT_TRUE(Reaches(0));
  EXPECT_EQ(Colour(), kRed);
  EXPECT_EQ(Colour({14, 20}), kBlack) << "centred, not enlarged";
  EXPECT_EQ(Colour({15, 5}), kRed);
  for (const int place : {1, 2, 0, 1}) {
    const int before = show_->Current();
    Pass(4999ms);
    EXPECT_EQ(show_->Current(), before);
    Pass(1ms);
    ASSERT_TRUE(Reaches(place));
  }
}

TEST_F(SlideshowTest, ATransitionBeginsAndEndsWithTheVeryPictures) {
  Play({red_, green_});
  ASSERT_TRUE(Reaches(0));
  const QImage first = show_->Frame().copy();
  Pass(5000ms);
  ASSERT_TRUE(Reaches(1));
  EXPECT_EQ(show_->Frame(), first);
  Pass(500ms);
  EXPECT_NEAR(qRed(Colour()), 128, 3);
  EXPECT_NEAR(qGreen(Colour()), 128, 3);
  Pass(600ms);  // frames may be left out, the last one never
  EXPECT_EQ(Colour(), kGreen);
  Pass(3899ms);
  EXPECT_EQ(show_->Current(), 1) << "the interval includes the transition";
  std::vector<QRgb> seen;
  QObject::connect(show_.get(), &Slideshow::FrameDue, [&] { seen.push_back(Colour()); });
  Pass(1ms);
  ASSERT_TRUE(Reaches(0));
  EXPECT_EQ(seen.front(), kGreen) << "no flash of what comes";
  Pass(1000ms);
  EXPECT_EQ(show_->Frame(), first);
}

TEST_F(SlideshowTest, TheOldPhotoStaysUntilTheNextOneIsRead) {
  Play({red_, green_, blue_});
  int waits = 0;
  QObject::connect(show_.get(), &Slideshow::Waits, [&] { ++waits; });
  EXPECT_TRUE(show_->Waiting());
  ASSERT_TRUE(Reaches(0));
  EXPECT_FALSE(show_->Waiting());
  waits = 0;
  show_->Step(-1);  // not the one that is read ahead
  EXPECT_EQ(Colour(), kRed);
  EXPECT_TRUE(show_->Waiting());
  EXPECT_EQ(waits, 1);
  ASSERT_TRUE(Reaches(2));
  EXPECT_FALSE(show_->Waiting());
}

TEST_F(SlideshowTest, PhotosAreTurnedUprightWhereThatIsWanted) {
  const QString lying =
      scratch_.Write("lying.jpg", SampleJpeg(30, 10, {{u"EXIF_Orientation", u"6"}}));
  for (const bool upright : {false, true}) {
    const SlideshowPlan plan{{lying}, kCrossFade, 5000ms, false, {}, upright};
    show_ = std::make_unique<Slideshow>(plan, [this] { return now_; });
    show_->SetScreen(kScreen);
    ASSERT_TRUE(Reaches(0));
    EXPECT_EQ(Colour({30, 8}) != kBlack, upright);
    EXPECT_EQ(Colour({18, 20}) != kBlack, !upright);
  }
}

TEST_F(SlideshowTest, OnePhotoStays) {
  Play({red_});
  ASSERT_TRUE(Reaches(0));
  ASSERT_TRUE(QFile::remove(red_));
  for (int slide = 0; slide < 3; ++slide) {
    Pass(5000ms);
    QCoreApplication::processEvents();
    EXPECT_EQ(Colour(), kRed);
  }
  EXPECT_FALSE(show_->Waiting());
  EXPECT_EQ(ended_, u"");
}

TEST_F(SlideshowTest, WhatCantBeShownIsPassedOver) {
  Play({scratch_.Path("never.jpg"), red_, scratch_.Write("broken.jpg", "no picture"), green_,
        blue_});
  ASSERT_TRUE(Reaches(1));
  EXPECT_EQ(std::exchange(passed_, {}), QStringList{u"never.jpg"_s});
  Pass(4999ms);
  EXPECT_TRUE(passed_.isEmpty()) << "told when it would have come";
  Pass(1ms);
  ASSERT_TRUE(Reaches(3));
  EXPECT_EQ(std::exchange(passed_, {}), QStringList{u"broken.jpg"_s});
  ASSERT_TRUE(QFile::remove(red_));  // later in this round
  Pass(5000ms);
  ASSERT_TRUE(Reaches(4));
  Pass(5000ms);
  ASSERT_TRUE(Reaches(3));
  EXPECT_EQ(passed_, (QStringList{u"never.jpg"_s, u"red.png"_s, u"broken.jpg"_s}));
}

TEST_F(SlideshowTest, ABrokenPhotoIsTriedAgainTheNextTimeRound) {
  const QString broken = scratch_.Write("broken.jpg", "no picture");
  Play({red_, broken, green_}, true);
  ASSERT_TRUE(Reaches(0));
  show_->Step(-1);
  ASSERT_TRUE(Reaches(2));
  EXPECT_TRUE(passed_.isEmpty()) << "it lies the other way";
  for (const int place : {0, 2}) {  // forwards again
    Pass(5000ms);
    ASSERT_TRUE(Reaches(place));
  }
  Photo("broken.jpg", kBlue);
  for (const int place : {0, 1}) {
    Pass(5000ms);
    ASSERT_TRUE(Reaches(place));
  }
}

TEST_F(SlideshowTest, TheLastPhotoThatStandsStaysAndWithoutAnyTheShowEnds) {
  Play({red_, green_});
  ASSERT_TRUE(Reaches(0));
  ASSERT_TRUE(QFile::remove(green_));
  // Perhaps the green one has been read already.
  ASSERT_TRUE(Eventually([&] { return Pass(5000ms), passed_.contains(u"green.png"_s); }));
  EXPECT_EQ(show_->Current(), 0);
  EXPECT_EQ(Colour(), kRed);
  EXPECT_EQ(ended_, u"");
  ASSERT_TRUE(QFile::remove(red_));
  ASSERT_TRUE(Eventually([&] { return Pass(5000ms), !ended_.isEmpty(); }));
  EXPECT_EQ(Colour(), kRed) << "never black";
  EXPECT_FALSE(show_->Waiting());
}

TEST_F(SlideshowTest, AnotherScreenHasPhotosOfItsSize) {
  Play({Photo("large.png", kBlue, {400, 200}), green_});
  ASSERT_TRUE(Reaches(0));
  EXPECT_EQ(Colour({0, 20}), kBlue);
  Pass(5000ms);
  ASSERT_TRUE(Reaches(1));
  Pass(5000ms);
  ASSERT_TRUE(Reaches(0));
  Pass(500ms);
  show_->SetScreen({120, 80});  // in the middle of a transition
  EXPECT_EQ(show_->Frame().size(), QSize(120, 80));
  EXPECT_EQ(Colour({60, 40}), kBlue);
  EXPECT_TRUE(Eventually([&] { return Colour({1, 40}) == kBlue; })) << "read anew";
  Pass(4500ms);
  ASSERT_TRUE(Reaches(1));
  Pass(500ms);
  EXPECT_EQ(show_->Frame().size(), QSize(120, 80));
  EXPECT_NEAR(qGreen(Colour({60, 40})), 128, 3) << "its transitions are drawn for it";
}

TEST_F(SlideshowTest, TheUserPausesAndSteps) {
  Play({red_, green_, blue_}, true);
  ASSERT_TRUE(Reaches(0));
  show_->SetPaused(true);
  Pass(60s);
  EXPECT_EQ(show_->Current(), 0);
  show_->Step(-1);
  ASSERT_TRUE(Reaches(2));
  EXPECT_FALSE(show_->Waiting()) << "one step only";
  show_->Step(1);
  show_->Step(1);  // before the first of them came, or after
  ASSERT_TRUE(Reaches(1));
  Pass(60s);
  EXPECT_EQ(Colour(), kGreen);
  show_->SetPaused(false);
  Pass(4999ms);
  EXPECT_EQ(show_->Current(), 1);
  Pass(1ms);
  ASSERT_TRUE(Reaches(2)) << "forwards again";
}

}  // namespace
}  // namespace zqm::test
