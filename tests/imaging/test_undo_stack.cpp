// SPDX-License-Identifier: GPL-3.0-or-later
#include <QColorSpace>

#include "imaging/undo_stack.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Noise;
using List = UndoStack::List;

PictureState StateOf(const QImage& image, const QString& dpi = u"72"_s) {
  FileParameters parameters;
  parameters.SetIOProperty(u"DPIX", dpi);
  return {image, std::make_shared<const FileParameters>(parameters), false};
}

/// The same picture with a spot of another colour, each time another one.
QImage Edited(QImage picture, int round) {
  for (int y = 0; y < std::min(5, picture.height()); ++y)
    for (int x = 0; x < std::min(5, picture.width()); ++x)
      picture.setPixelColor(x, y, QColor(round, 255 - round, x * 9));
  return picture;
}

void ExpectSame(const QImage& is, const QImage& was) {
  EXPECT_EQ(is.format(), was.format());
  EXPECT_EQ(is, was);
  EXPECT_EQ(is.colorTable(), was.colorTable());
  EXPECT_EQ(is.dotsPerMeterX(), was.dotsPerMeterX());
  EXPECT_EQ(is.colorSpace(), was.colorSpace());
  EXPECT_EQ(is.text(), was.text());
}

TEST(UndoStack, BringsBackEveryFormatAndSize) {
  const QImage::Format formats[] = {QImage::Format_Mono,
                                    QImage::Format_MonoLSB,
                                    QImage::Format_Indexed8,
                                    QImage::Format_RGB32,
                                    QImage::Format_ARGB32,
                                    QImage::Format_Grayscale8,
                                    QImage::Format_RGBA64,
                                    QImage::Format_Grayscale16,
                                    QImage::Format_RGBX64,
                                    QImage::Format_RGB888,
                                    QImage::Format_ARGB32_Premultiplied};
  UndoStack stack;
  std::vector<QImage> pushed;
  for (const QImage::Format format : formats) {
    for (const QSize& size : {QSize(1, 1), QSize(3, 300), QSize(257, 129), QSize(1031, 2)}) {
      QImage picture = Noise(size, format);
      picture.setDotsPerMeterX(5000 + size.width());
      picture.setText(u"Title"_s, u"Bögen"_s);
      picture.setColorSpace(QColorSpace::AdobeRgb);
      stack.Push(List::Undo, StateOf(picture));
      pushed.push_back(picture);
    }
  }
  for (int i = 0; i < stack.Count(List::Undo); ++i) {
    const Result<PictureState> state = stack.At(List::Undo, i);
    ASSERT_TRUE(state) << state.Reason().toStdString();
    ExpectSame(state->image, pushed[pushed.size() - 1 - static_cast<std::size_t>(i)]);
  }
}

TEST(UndoStack, KeepsParametersLimitsAndOrder) {
  UndoStack stack;
  stack.SetLimit(3);
  for (int i = 0; i < 5; ++i)
    stack.Push(List::Undo, StateOf(Noise({i + 1, 1}, QImage::Format_RGB32), QString::number(i)));
  EXPECT_EQ(stack.Count(List::Undo), 3);
  EXPECT_EQ(stack.At(List::Undo, 0)->image.width(), 5);
  EXPECT_EQ(stack.At(List::Undo, 2)->parameters->GetIOProperty(u"DPIX"), u"2");
  EXPECT_FALSE(stack.At(List::Undo, 3));
  EXPECT_FALSE(stack.At(List::Undo, -1));
  EXPECT_FALSE(stack.At(List::Redo, 0));
  stack.Discard(List::Undo);
  EXPECT_EQ(stack.At(List::Undo, 0)->image.width(), 4);
  stack.SetLimit(1);
  EXPECT_EQ(stack.Count(List::Undo), 1);
  stack.Clear(List::Undo);
  stack.Discard(List::Undo);
  EXPECT_EQ(stack.Count(List::Undo), 0);
  stack.SetLimit(0);
  stack.Push(List::Undo, StateOf(Noise({2, 2}, QImage::Format_RGB32)));
  EXPECT_EQ(stack.Count(List::Undo), 0);
}

TEST(UndoStack, NeighboursShareWhatIsEqual) {
  QImage picture = Noise({1500, 1000}, QImage::Format_RGB32);
  UndoStack stack;
  for (int i = 0; i < 40; ++i) {
    stack.Push(List::Undo, StateOf(picture));
    picture = Edited(picture, i);
  }
  stack.Push(List::Undo, StateOf(picture));
  stack.WaitForPacking();
  // The newest as it is, all of it packed once, and a spot for each level.
  EXPECT_LT(stack.MemoryUsed(), 3 * picture.sizeInBytes() + (40 << 18));
}

class Spilling : public ::testing::Test {
 protected:
  /// Pushes different pictures until much more than the memory is taken.
  void Fill(UndoStack& stack) {
    for (int i = 0; i < 12; ++i) {
      pushed_.push_back(Noise({300 + i, 200}, QImage::Format_RGB32));
      stack.Push(List::Undo, StateOf(pushed_.back()));
    }
  }
  void ExpectExact(UndoStack& stack, int levels) {
    ASSERT_EQ(stack.Count(List::Undo), levels);
    for (int i = 0; i < levels; ++i) {
      const Result<PictureState> state = stack.At(List::Undo, i);
      ASSERT_TRUE(state) << i;
      ExpectSame(state->image, pushed_[pushed_.size() - 1 - static_cast<std::size_t>(i)]);
    }
  }

  static constexpr qint64 kMemory = 600'000;  // about three of them
  test::Scratch scratch_;
  std::vector<QImage> pushed_;
};

TEST_F(Spilling, OldLevelsGoToTheScratchFolderAndFromThereWithTheStack) {
  {
    UndoStack stack(scratch_.Path("new/Temp"), kMemory);
    Fill(stack);
    EXPECT_LT(stack.MemoryUsed(), 2 * kMemory);
    EXPECT_GT(stack.BytesOnDisk(), kMemory);
    EXPECT_EQ(stack.Lost(), 0);
    ExpectExact(stack, 12);
    stack.SetLimit(2);
    EXPECT_LT(stack.BytesOnDisk(), kMemory);
  }
  EXPECT_TRUE(QDir(scratch_.Path("new/Temp")).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

TEST_F(Spilling, WithoutADiskTheOldestLevelsAreLostAndSaidToBe) {
  scratch_.Write("file", "no folder");
  for (const QString& folder : {scratch_.Path("file/Temp"), QString()}) {
    pushed_.clear();
    UndoStack stack(folder, kMemory);
    Fill(stack);
    EXPECT_LT(stack.MemoryUsed(), 2 * kMemory);
    EXPECT_GT(stack.Lost(), 0);
    EXPECT_EQ(stack.Lost() + stack.Count(List::Undo), 12);
    EXPECT_FALSE(stack.LostReason().isEmpty());
    ExpectExact(stack, stack.Count(List::Undo));
    stack.Clear(List::Undo);
    EXPECT_EQ(stack.Lost(), 0);
  }
}

TEST_F(Spilling, AFullDiskLosesTheOldestLevelsOnly) {
  const test::SmallDisk disk(scratch_.Path());
  if (!disk.IsMounted()) GTEST_SKIP() << "no right to mount";
  UndoStack stack(scratch_.Path(), kMemory);
  Fill(stack);
  EXPECT_GT(stack.Lost(), 0);
  EXPECT_GT(stack.BytesOnDisk(), 0);
  ExpectExact(stack, stack.Count(List::Undo));
}

TEST_F(Spilling, APictureOverTheLimitCanStillBeUndone) {
  UndoStack stack({}, 1000);
  const QImage picture = Noise({400, 400}, QImage::Format_RGBA64);
  stack.Push(List::Undo, StateOf(picture));
  stack.Push(List::Undo, StateOf(picture.mirrored()));
  ASSERT_GE(stack.Count(List::Undo), 1);
  ExpectSame(stack.At(List::Undo, 0)->image, picture.mirrored());
}

TEST(UndoStack, GoesBackAndForthWithoutPackingAnew) {
  UndoStack stack;
  std::vector<QImage> states;
  for (int i = 0; i < 4; ++i)
    states.push_back(Noise({200 + i, 150}, QImage::Format_RGB32));
  for (int i = 0; i < 3; ++i)
    stack.Push(List::Undo, StateOf(states[static_cast<std::size_t>(i)]));
  QImage now = states[3];
  for (int round = 0; round < 3; ++round) {
    for (int back = 2; back >= 0; --back) {
      stack.Push(List::Redo, StateOf(now));
      now = stack.At(List::Undo, 0)->image;
      stack.Discard(List::Undo);
      EXPECT_EQ(now, states[static_cast<std::size_t>(back)]);
    }
    for (int forth = 1; forth <= 3; ++forth) {
      stack.Push(List::Undo, StateOf(now));
      now = stack.At(List::Redo, 0)->image;
      stack.Discard(List::Redo);
      EXPECT_EQ(now, states[static_cast<std::size_t>(forth)]);
    }
  }
}

}  // namespace
}  // namespace zqm
