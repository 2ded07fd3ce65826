// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/edited_picture.h"
#include "imaging/object_painter.h"
#include "imaging/pixel_formats.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Noise;

constexpr QImage::Format kFormats[] = {QImage::Format_Mono,       QImage::Format_Indexed8,
                                       QImage::Format_Grayscale8, QImage::Format_RGB32,
                                       QImage::Format_ARGB32,     QImage::Format_Grayscale16,
                                       QImage::Format_RGBX64,     QImage::Format_RGBA64};

std::unique_ptr<EditedPicture> Editing(const QImage& image) {
  auto edited = std::make_unique<EditedPicture>();
  Picture picture;
  picture.SetImage(image);
  edited->Assign(picture);
  return edited;
}

QImage Inverted(QImage picture) {
  picture.invertPixels(QImage::InvertRgb);
  return picture;
}

struct NamedOperation {
  const char* name;
  std::function<Outcome(EditedPicture&)> run;
};

const NamedOperation kNeutral[] = {
    {"brightness", [](EditedPicture& p) { return p.AdjustBrightnessContrastSaturation(0, 0, 0); }},
    {"hue", [](EditedPicture& p) { return p.AdjustHueSaturationLightness(0, 0, 0); }},
    {"saturation", [](EditedPicture& p) { return p.AdjustSaturation(0); }},
    {"sharpen", [](EditedPicture& p) { return p.Sharpen(0, 5); }},
    {"apply", [](EditedPicture& p) { return p.Apply([](const QImage& i) { return i; }, 3); }},
    {"rotate", [](EditedPicture& p) { return p.Rotate(360); }},
    {"resample",
     [](EditedPicture& p) { return p.Resample(p.ImageWidth(), -1, ResampleFilter::Mitchell); }},
};

const NamedOperation kOthers[] = {
    {"brightness", [](EditedPicture& p) { return p.AdjustBrightnessContrastSaturation(9, 9, 9); }},
    {"hue", [](EditedPicture& p) { return p.AdjustHueSaturationLightness(20, 10, 5); }},
    {"sharpen", [](EditedPicture& p) { return p.Sharpen(50, 3); }},
    {"white", [](EditedPicture& p) { return p.WhiteBalance(); }},
    {"white point", [](EditedPicture& p) { return p.WhiteBalance(QColor(100, 120, 90)); }},
    {"red eyes", [](EditedPicture& p) { return p.RemoveRedEyes(); }},
    {"turn", [](EditedPicture& p) { return p.Rotate(7.5); }},
    {"quarter", [](EditedPicture& p) { return p.Rotate(-90); }},
    {"flip", [](EditedPicture& p) { return p.Flip(FlipDirection::Horizontal); }},
    {"resample", [](EditedPicture& p) { return p.Resample(31, -1, ResampleFilter::Bicubic, 300); }},
    {"grey", [](EditedPicture& p) { return p.ConvertToGrey(); }},
    {"black and white", [](EditedPicture& p) { return p.ConvertToBlackWhite(); }},
    {"palette", [](EditedPicture& p) { return p.ConvertToPalette(16); }},
    {"sepia", [](EditedPicture& p) { return p.Sepia(40, 50, 1.2); }},
    {"alpha", [](EditedPicture& p) { return p.RemoveAlphaChannel(); }},
};

TEST(EditedPicture, NeutralOperationsLeaveThePixels) {
  for (const QImage::Format format : kFormats) {
    for (const QSize& size : {QSize(1, 1), QSize(40, 30)}) {
      const QImage image = Noise(size, format);
      for (const NamedOperation& operation : kNeutral) {
        for (const bool selected : {false, true}) {
          const auto edited = Editing(image);
          if (selected) edited->Select(Selection::Ellipse({0, 0, 20, 10}, size));
          ASSERT_TRUE(operation.run(*edited)) << operation.name;
          EXPECT_EQ(edited->UndoCount(), 1) << operation.name;
          EXPECT_EQ(InWorkFormat(edited->Image()), InWorkFormat(image))
              << operation.name << ' ' << format << ' ' << selected;
        }
      }
    }
  }
}

TEST(EditedPicture, EachOperationSavesOneUndoThatIsExact) {
  for (const QImage::Format format : kFormats) {
    for (const QSize& size : {QSize(1, 1), QSize(40, 30)}) {
      const QImage image = Noise(size, format);
      const auto edited = Editing(image);
      edited->SetIOProperty(u"DPIX", u"72"_s);
      int count = 0;
      for (const NamedOperation& operation : kOthers) {
        const Outcome done = operation.run(*edited);
        ASSERT_TRUE(done) << operation.name << ' ' << done.Reason().toStdString();
        EXPECT_EQ(edited->UndoCount(), ++count) << operation.name;
        EXPECT_FALSE(edited->Image().isNull());
      }
      EXPECT_EQ(edited->GetIOProperty(u"DPIX"), u"300");
      ASSERT_TRUE(edited->UndoAt(count - 1));
      EXPECT_EQ(edited->Image().format(), format);
      EXPECT_EQ(edited->Image(), image);
      EXPECT_EQ(edited->GetIOProperty(u"DPIX"), u"72");
      EXPECT_EQ(edited->UndoCount(), count);
    }
  }
}

TEST(EditedPicture, ChangesStayWithinTheSelection) {
  const QRectF area(5, 5, 20, 15);
  for (const QImage::Format format : kFormats) {
    const QImage image = Noise({40, 30}, format);
    for (const bool round : {false, true}) {
      const auto edited = Editing(image);
      edited->Select(round ? Selection::Ellipse(area, image.size())
                           : Selection::Rectangle(area, image.size()));
      QSize handed;
      ASSERT_TRUE(edited->Apply([&](const QImage& part) {
        handed = part.size();
        return Inverted(InWorkFormat(part));
      }));
      EXPECT_EQ(handed, QSize(20, 15));
      const QImage before = InWorkFormat(image), after = InWorkFormat(edited->Image());
      ASSERT_EQ(after.format(), before.format());
      const QImage mask = edited->Selected().Mask(image.size());
      for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
          const int share = qGray(mask.pixel(x, y));
          if (share == 0) {
            EXPECT_EQ(after.pixelColor(x, y), before.pixelColor(x, y));
          }
          if (share == 255) {
            EXPECT_EQ(after.pixelColor(x, y), Inverted(before).pixelColor(x, y)) << format;
          }
        }
      }
      EXPECT_TRUE(edited->HasSelection());
    }
  }
}

TEST(EditedPicture, ColourPutIntoAGraySelectionMakesThePictureColoured) {
  const QImage image = Noise({20, 20}, QImage::Format_Grayscale16);
  const auto edited = Editing(image);
  edited->Select(Selection::Rectangle({0, 0, 10, 10}, image.size()));
  ASSERT_TRUE(edited->Apply([](const QImage& part) {
    QImage red = part.convertToFormat(QImage::Format_RGB32);
    red.fill(Qt::red);
    return red;
  }));
  EXPECT_EQ(edited->Image().format(), QImage::Format_RGBX64);
  EXPECT_EQ(edited->Image().pixelColor(9, 9), QColor(Qt::red));
  EXPECT_EQ(GrayOfEqualSamples(edited->Image().copy(10, 0, 10, 20)), image.copy(10, 0, 10, 20));
}

TEST(EditedPicture, NeighboursOfTheSelectionAreHandedIn) {
  const QImage image = Noise({60, 40}, QImage::Format_RGB32);
  const auto whole = Editing(image), part = Editing(image);
  const QRect box(20, 0, 15, 18);
  ASSERT_TRUE(whole->Sharpen(60, 7));
  part->Select(Selection::Rectangle(box, image.size()));
  ASSERT_TRUE(part->Sharpen(60, 7));
  EXPECT_EQ(part->Image().copy(box), whole->Image().copy(box));
}

TEST(EditedPicture, FailuresChangeNothing) {
  const QImage image = Noise({20, 20}, QImage::Format_RGB32);
  const auto edited = Editing(image);
  edited->Select(Selection::Rectangle({2, 2, 5, 5}, image.size()));
  const NamedOperation failing[] = {
      {"memory", [](EditedPicture& p) { return p.Apply([](const QImage&) { return QImage(); }); }},
      {"size",
       [](EditedPicture& p) { return p.Apply([](const QImage& i) { return i.scaled(3, 3); }); }},
      {"thrown",
       [](EditedPicture& p) {
         return p.Apply([](const QImage&) -> QImage { throw std::bad_alloc(); });
       }},
      {"angle", [](EditedPicture& p) { return p.Rotate(std::nan("")); }},
      {"width", [](EditedPicture& p) { return p.Resample(0, 5, ResampleFilter::Linear); }},
      {"large", [](EditedPicture& p) { return p.Resample(1 << 20, -1, ResampleFilter::Linear); }},
      {"file", [](EditedPicture& p) { return p.LoadFromFile(u"/no/such/file.jpg"_s); }},
  };
  for (const NamedOperation& operation : failing) {
    const Outcome done = operation.run(*edited);
    EXPECT_FALSE(done) << operation.name;
    EXPECT_FALSE(done.Reason().isEmpty()) << operation.name;
    EXPECT_EQ(edited->Image().cacheKey(), image.cacheKey()) << operation.name;
    EXPECT_EQ(edited->UndoCount(), 0) << operation.name;
    EXPECT_TRUE(edited->HasSelection()) << operation.name;
  }
  // Nothing is there to be worked on.
  EditedPicture empty;
  for (const NamedOperation& operation : kOthers)
    EXPECT_FALSE(operation.run(empty)) << operation.name;
  EXPECT_TRUE(empty.UndoAt(0));
  EXPECT_EQ(empty.UndoCount(), 0);
}

TEST(EditedPicture, CropsAndCopiesTheSelectionsBox) {
  const QImage image = Noise({50, 40}, QImage::Format_Indexed8);
  const auto edited = Editing(image);
  ASSERT_TRUE(edited->CropToSelection());
  EXPECT_EQ(edited->UndoCount(), 0);
  edited->Select(Selection::Ellipse({10, 5, 20, 30}, image.size()));
  EditedPicture part;
  edited->AssignSelectionTo(part);
  EXPECT_EQ(part.Image(), image.copy(10, 5, 20, 30));
  ASSERT_TRUE(edited->CropToSelection());
  EXPECT_EQ(edited->Image(), image.copy(10, 5, 20, 30));
  EXPECT_FALSE(edited->HasSelection());
  edited->AssignSelectionTo(part);
  EXPECT_EQ(part.Image(), edited->Image());
  ASSERT_TRUE(edited->UndoAt(0));
  EXPECT_EQ(edited->Image(), image);
}

TEST(EditedPicture, ASelectionOfALargerPictureSelectsNothing) {
  const auto edited = Editing(Noise({50, 40}, QImage::Format_RGB32));
  edited->Select(Selection::Rectangle({10, 10, 60, 20}, {100, 100}));
  EXPECT_FALSE(edited->HasSelection());
  EXPECT_EQ(edited->SelectedImage(), edited->Image());
}

TEST(EditedPicture, ResamplesByAspectAndIntoAnother) {
  const auto edited = Editing(Noise({300, 200}, QImage::Format_RGB32));
  EditedPicture small;
  ASSERT_TRUE(edited->ResampleTo(small, 200, -1, ResampleFilter::FastLinear));
  EXPECT_EQ(small.Image().size(), QSize(200, 133));
  EXPECT_EQ(edited->UndoCount(), 0);
  ASSERT_TRUE(edited->Resample(-1, 1, ResampleFilter::FastLinear));
  EXPECT_EQ(edited->Image().size(), QSize(2, 1));
  ASSERT_TRUE(edited->Resample(1000, -1, ResampleFilter::Bicubic));
  EXPECT_EQ(edited->Image().size(), QSize(1000, 500));
}

TEST(EditedPicture, MergesObjectsWithoutAnUndoOfItsOwn) {
  const auto edited = Editing(Noise({50, 40}, QImage::Format_Grayscale8));
  const QImage before = edited->Image();
  ASSERT_TRUE(edited->MergeObjects());
  EXPECT_EQ(edited->Image(), before);
  const int id = edited->Objects().Add(ObjectKind::Rectangle);
  edited->Objects().SetObjectProperty(id, u"BRUSHSTYLE", u"0"_s);
  edited->Objects().SetObjectProperty(id, u"BRUSHCOLOR", u"255,0,0"_s);
  edited->Objects().SetObjectProperty(id, u"WIDTH", u"10"_s);
  edited->Objects().SetObjectProperty(id, u"HEIGHT", u"10"_s);
  edited->SaveUndo();
  ASSERT_TRUE(edited->MergeObjects());
  EXPECT_EQ(edited->UndoCount(), 1);
  EXPECT_EQ(edited->Image().pixelColor(5, 5), QColor(Qt::red));
  EXPECT_EQ(edited->Objects().Count(), 1);
  ASSERT_TRUE(edited->UndoAt(0));
  EXPECT_EQ(edited->Image(), before);
}

TEST(EditedPicture, StepsBackAndForth) {
  const QImage image = Noise({30, 30}, QImage::Format_RGB32);
  const auto edited = Editing(image);
  std::vector<QImage> states = {image};
  for (int i = 0; i < 5; ++i) {
    ASSERT_TRUE(edited->AdjustBrightnessContrastSaturation(5, 0, 0));
    states.push_back(edited->Image());
  }
  for (int i = 4; i >= 0; --i) {
    edited->SaveRedo();
    ASSERT_TRUE(edited->UndoAt(0));
    edited->DiscardUndo();
    EXPECT_EQ(edited->Image(), states[static_cast<std::size_t>(i)]);
  }
  EXPECT_EQ(edited->UndoCount(), 0);
  EXPECT_EQ(edited->RedoCount(), 5);
  for (int i = 1; i <= 5; ++i) {
    edited->SaveUndo();
    ASSERT_TRUE(edited->RedoAt(0));
    edited->DiscardRedo();
    EXPECT_EQ(edited->Image(), states[static_cast<std::size_t>(i)]);
  }
  // All at once.
  edited->SaveRedo();
  ASSERT_TRUE(edited->UndoAt(edited->UndoCount() - 1));
  edited->ClearAllUndo();
  EXPECT_EQ(edited->Image(), image);
  edited->ClearAllRedo();
  EXPECT_EQ(edited->UndoCount() + edited->RedoCount(), 0);
  EXPECT_TRUE(edited->UndoAt(-1));
}

TEST(EditedPicture, ALoadedFileUndoneToItsBeginningIsSavedUnchanged) {
  const test::Scratch scratch;
  const QByteArray jpeg = test::SampleJpeg(64, 48);
  const QString path = scratch.Write("ä'b.jpg", jpeg);
  EditedPicture edited(scratch.Path("Temp"));
  ASSERT_TRUE(edited.LoadFromFile(path));
  ASSERT_TRUE(edited.Rotate(90));
  ASSERT_TRUE(edited.Sharpen(30));
  EXPECT_FALSE(edited.GetPicture().PixelsUntouched());
  ASSERT_TRUE(edited.UndoAt(1));
  EXPECT_TRUE(edited.GetPicture().PixelsUntouched());
  ASSERT_TRUE(edited.PictureForSaving().SaveToFile(path));
  EXPECT_EQ(test::Scratch::Read(path), jpeg);
  ASSERT_TRUE(edited.UndoAt(0));
  EXPECT_FALSE(edited.GetPicture().PixelsUntouched());
  // Another file begins anew; a broken one leaves all as it is.
  EXPECT_FALSE(edited.LoadFromFile(scratch.Write("broken.jpg", "no picture")));
  EXPECT_EQ(edited.UndoCount(), 2);
  EXPECT_EQ(edited.ImageWidth(), 48);
  ASSERT_TRUE(edited.LoadFromFile(path));
  EXPECT_EQ(edited.UndoCount(), 0);
}

TEST(EditedPicture, HeavyWorkGoesToTheRunner) {
  const auto edited = Editing(Noise({30, 30}, QImage::Format_RGB32));
  int runs = 0;
  edited->SetRunner([&](const std::function<void()>& work) {
    ++runs;
    work();
  });
  ASSERT_TRUE(edited->Flip(FlipDirection::Vertical));
  const int once = runs;
  EXPECT_GT(once, 0);
  edited->SelectByMagicWand({3, 3}, 0);
  EXPECT_EQ(edited->Selected().Bounds(), QRect(3, 3, 1, 1));
  EXPECT_GT(runs, once);
}

}  // namespace
}  // namespace zqm
