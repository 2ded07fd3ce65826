// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/eventually.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "viewers/photos_ahead.h"

namespace zqm::test {
namespace {

class PhotosAheadTest : public ::testing::Test {
 protected:
  QSize ShownSize(const QString& path) {
    EXPECT_TRUE(Eventually([&] { return ahead_.Get(path) != nullptr; }));
    const auto* photo = ahead_.Get(path);
    return photo != nullptr && *photo ? (*photo)->image.size() : QSize();
  }

  Scratch scratch_;
  const QString wide_ = scratch_.Write("wide.jpg", SampleJpeg(400, 200));
  const QString tall_ = scratch_.Write("tall.jpg", SampleJpeg(100, 300));
  PhotosAhead ahead_{ReadRequest{}};
};

TEST_F(PhotosAheadTest, WhatIsWantedIsReadAndTheRestForgotten) {
  ahead_.SetBox({100, 100});
  const QString gone = scratch_.Path("gone.jpg");
  ahead_.Want({wide_, tall_, gone});
  EXPECT_EQ(ahead_.Get(wide_), nullptr) << "nothing is read on this thread";
  EXPECT_EQ(ShownSize(wide_), QSize(100, 50));
  EXPECT_GT(ahead_.Percent(wide_), 0) << "its rows were counted";
  EXPECT_EQ(ShownSize(tall_), QSize(33, 100));
  ASSERT_TRUE(Eventually([&] { return ahead_.Get(gone) != nullptr; }));
  EXPECT_FALSE(*ahead_.Get(gone));
  EXPECT_EQ(ahead_.Percent(gone), 0);

  const auto* kept = ahead_.Get(tall_);
  ahead_.Want({tall_});
  EXPECT_EQ(ahead_.Get(tall_), kept) << "not read again";
  EXPECT_EQ(ahead_.Get(wide_), nullptr);
}

TEST_F(PhotosAheadTest, WhatWasForgottenWhileItWasReadNeverArrives) {
  QStringList arrived;
  QObject::connect(&ahead_, &PhotosAhead::Ready, [&](const QString& path) { arrived << path; });
  ahead_.SetBox({100, 100});
  ahead_.Want({wide_, tall_});
  ahead_.SetBox({200, 200});  // the window grew in the middle
  ahead_.Want({wide_});
  EXPECT_EQ(ShownSize(wide_), QSize(200, 100));
  QCoreApplication::processEvents();
  EXPECT_EQ(arrived, QStringList{wide_});
}

TEST_F(PhotosAheadTest, WhatIsLargeEnoughIsNotReadForAnotherBox) {
  ahead_.SetBox({200, 200});
  ahead_.Want({wide_});
  EXPECT_EQ(ShownSize(wide_), QSize(200, 100));
  const auto reads = [&](const QSize& box) {
    ahead_.SetBox(box);
    ahead_.Want({wide_});
    return ahead_.IsReading(wide_);
  };
  EXPECT_FALSE(reads({120, 150}));
  EXPECT_TRUE(reads({120, 250})) << "higher than what was read";
  EXPECT_TRUE(reads({500, 500}));
  EXPECT_EQ(ShownSize(wide_), QSize(400, 200));
  EXPECT_FALSE(reads({}));
  EXPECT_FALSE(reads({900, 900})) << "there are no more pixels";
}

TEST_F(PhotosAheadTest, AViewerThatIsGoneIsNotReachedAnyMore) {
  for (int run = 0; run < 50; ++run) {
    auto ahead = std::make_unique<PhotosAhead>(ReadRequest{});
    bool reached = false;
    QObject::connect(ahead.get(), &PhotosAhead::Ready, [&reached] { reached = true; });
    ahead->Want({wide_, tall_});
    ahead.reset();  // in the middle of the reading, or while it is on its way here
    QCoreApplication::processEvents();
    EXPECT_FALSE(reached);
  }
}

TEST_F(PhotosAheadTest, AFileThatWasWrittenIsReadAnew) {
  ahead_.Want({wide_});
  EXPECT_EQ(ShownSize(wide_), QSize(400, 200));
  scratch_.Write("wide.jpg", SampleJpeg(60, 40));
  ahead_.Want({wide_});
  EXPECT_EQ(ShownSize(wide_), QSize(60, 40));
}

}  // namespace
}  // namespace zqm::test
