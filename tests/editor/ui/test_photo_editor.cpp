// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <cmath>
#include <numbers>

#include "editor/editor_settings.h"
#include "editor/ui/frmedit.h"
#include "imaging/ui/image_x.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct Told : BrowserView {
  void ShowChanged(const QString& path) override { changed.append(path); }
  void ShowWritten(const QString& path, bool) override { written.append(path); }
  void Live() override { ++live; }
  QStringList changed, written;
  int live = 0;
};

class PhotoEditor : public test::HomeTest {
 protected:
  PhotoEditor() {
    pick_ = SetPickHandler([this](const PickRequest& request) {
      asked_ = request;
      return picked_;
    });
  }
  ~PhotoEditor() override { SetPickHandler(pick_); }

  QString Png(const QString& name, const QImage& image) {
    const QString path = PhotoPath(name);
    EXPECT_TRUE(image.save(path));
    return path;
  }
  /// Colours that differ from pixel to pixel.
  static QImage Motley(int width = 400, int height = 300) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    return image;
  }
  void Open(const QString& path) {
    window_ = std::make_unique<frmedit>(*session_, &told_);
    window_->resize(1200, 800);
    const Outcome opened = window_->OpenPhoto(path);
    ASSERT_TRUE(opened) << qUtf8Printable(opened.Reason());
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  }
  void OpenMotley() { Open(Png(u"a.png"_s, Motley())); }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf16(name));
    EXPECT_NE(widget, nullptr) << QString::fromUtf16(name).toStdString();
    return widget;
  }
  ImageX& Image() { return *Find<ImageX>(u"ImageX1"); }
  const QImage& Pixels() { return Image().GetPicture().Image(); }
  void Click(const char16_t* button) {
    auto* found = Find<QAbstractButton>(button);
    ASSERT_TRUE(found->isVisible()) << found->objectName().toStdString();
    QTest::mouseClick(found, Qt::LeftButton);
  }
  void Trigger(const char16_t* action) {
    auto* found = Find<QAction>(action);
    EXPECT_TRUE(found->isEnabled()) << found->objectName().toStdString();
    found->trigger();
  }
  void Type(const char16_t* field, const char* text) {
    auto* edit = Find<QLineEdit>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QString::fromLatin1(text));
  }
  QString Text(const char16_t* field) { return Find<QLineEdit>(field)->text(); }
  QString Panel(int number) { return Find<QLabel>(u"panel%1"_s.arg(number))->text(); }
  template <class Widget>
  Widget* Find(const QString& name) {
    return window_->findChild<Widget*>(name);
  }
  QPoint At(QPointF pixel) { return Image().FromBitmap(pixel).toPoint(); }
  void Drag(QPointF from, QPointF to) {
    QWidget* view = Image().viewport();
    QTest::mousePress(view, Qt::LeftButton, {}, At(from));
    QTest::mouseMove(view, At((from + to) / 2));
    QTest::mouseMove(view, At(to));
    QTest::mouseRelease(view, Qt::LeftButton, {}, At(to));
  }
  QString MessageOf(const std::function<void()>& action) {
    messages_.clear();
    action();
    return messages_.join(u'|');
  }

  std::unique_ptr<frmedit> window_;
  Told told_;
  QString picked_;
  PickRequest asked_;

 private:
  PickHandler pick_;
};

TEST_F(PhotoEditor, OpensAPhotoAndTellsOfIt) {
  OpenMotley();
  EXPECT_EQ(window_->windowTitle(), u"Zolmira QM - Photo Editor"_s);
  EXPECT_EQ(Panel(2), u"400px X 300px"_s);
  EXPECT_EQ(Panel(3), u"a.png"_s);
  EXPECT_EQ(Panel(5), u"Bits Per Sample:  8"_s);
  EXPECT_EQ(Panel(6), u"Ready"_s);
  EXPECT_EQ(Panel(7), u"File Type:  Portable Network Graphics (PNG)"_s);
  Trigger(u"mnu_actual_size");
  EXPECT_EQ(Panel(1), u"Zoom :  100%"_s);
  QTest::mouseMove(Image().viewport(), At({20.3, 30.3}));
  EXPECT_EQ(Panel(4), u"20,30"_s);
  QTest::mouseMove(Image().viewport(), At({-20, 330}));
  EXPECT_EQ(Panel(4), u"0,300"_s);
  EXPECT_FALSE(window_->Modified());

  const QString broken = scratch_.Write(u"photos/b.jpg"_s, "no picture");
  frmedit other(*session_, nullptr);
  EXPECT_EQ(other.OpenPhoto(broken).Reason(), u"File could not be read as an image"_s);
  EXPECT_EQ(other.OpenPhoto(PhotoPath(u"gone.jpg"_s)).Reason(),
            u"The selected image is either missing or offline and thus cannot be edited."_s);
}

TEST_F(PhotoEditor, ALineIsTurnedLevelOrUpright) {
  for (const double degrees : {-80.0, -40.0, 3.0, 46.0, 170.0}) {
    // A dark line in the picture, which the user draws over.
    const double angle = degrees * std::numbers::pi / 180;
    const QPointF middle(200, 200);
    const QPointF reach = QPointF(std::cos(angle), std::sin(angle)) * 150;
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 3));
    painter.drawLine(middle - reach, middle + reach);
    painter.end();
    Open(Png(u"line.png"_s, image));
    Trigger(u"mnu_level");
    Trigger(u"mnu_actual_size");
    Drag(middle - reach, middle + reach);
    EXPECT_EQ(Image().Objects().Count(), 1);
    Click(u"Command1");
    EXPECT_EQ(Image().Objects().Count(), 0);
    QRect dark;
    for (int y = 0; y < Pixels().height(); ++y)
      for (int x = 0; x < Pixels().width(); ++x)
        if (qGray(Pixels().pixel(x, y)) < 100) dark |= QRect(x, y, 1, 1);
    EXPECT_LT(std::min(dark.width(), dark.height()), 8)
        << degrees << " " << qPrintable(Text(u"txtangle"));
    EXPECT_GT(std::max(dark.width(), dark.height()), 290) << degrees;
  }
}

TEST_F(PhotoEditor, AnglesAreCheckedAndCleared) {
  OpenMotley();
  Trigger(u"mnu_custom_rotation");
  EXPECT_EQ(MessageOf([&] { Click(u"Command1"); }), u"Invalid rotation angle."_s);
  Type(u"txtangle", "1a2-.5x");
  EXPECT_EQ(Text(u"txtangle"), u"12.5"_s) << "other keys aren't taken";
  Find<QRadioButton>(u"Option2")->setChecked(true);
  Click(u"Command1");
  EXPECT_GT(Pixels().width(), 400);
  Drag({50, 50}, {90, 50});
  EXPECT_EQ(Text(u"txtangle"), u"0"_s) << "a line that is level already";
  EXPECT_TRUE(Find<QRadioButton>(u"Option2")->isChecked());
  Click(u"Command4");
  EXPECT_EQ(Text(u"txtangle"), QString());
  EXPECT_EQ(Image().Objects().Count(), 0);
}

TEST_F(PhotoEditor, CropsToARectangleOfAnAspect) {
  OpenMotley();
  Trigger(u"mnu_crop");
  Drag({40, 30}, {240, 70});
  Click(u"Command7");
  EXPECT_FALSE(Image().HasSelection());
  Type(u"txtwidth", "100");
  Type(u"txtheight", "50");
  Drag({40, 30}, {300, 280});
  const QRect box = Image().Selected().Bounds();
  EXPECT_NEAR(double(box.width()) / box.height(), 2, 0.1);
  EXPECT_LE(box.width(), 100);
  const QImage wanted = Pixels().copy(box);
  Click(u"Command6");
  EXPECT_EQ(Pixels(), wanted);
  EXPECT_FALSE(Image().HasSelection());
  EXPECT_EQ(Panel(2), u"%1px X %2px"_s.arg(box.width()).arg(box.height()));
  Type(u"txtheight", "0");
  Drag({0, 0}, {40, 10});
  EXPECT_NEAR(Image().Selected().Bounds().height(), 10, 1) << "free without both numbers";
}

TEST_F(PhotoEditor, ResizesWithOneSideFollowingTheOther) {
  OpenMotley();
  Trigger(u"mnu_resize_img");
  Find<QCheckBox>(u"Check5")->setChecked(true);
  Type(u"Text13", "200");
  EXPECT_EQ(Text(u"Text14"), u"150"_s);
  Type(u"Text14", "75");
  EXPECT_EQ(Text(u"Text13"), u"100"_s);
  Type(u"Text13", "");
  EXPECT_EQ(Text(u"Text14"), QString());
  EXPECT_EQ(MessageOf([&] { Click(u"Command15"); }), u"Invalid Width."_s);
  Find<QCheckBox>(u"Check5")->setChecked(false);
  Type(u"Text13", "120");
  EXPECT_EQ(MessageOf([&] { Click(u"Command15"); }), u"Invalid Height."_s);
  Find<QCheckBox>(u"Check5")->setChecked(true);
  EXPECT_EQ(Text(u"Text14"), u"90"_s) << "as soon as it is ticked";
  Type(u"Text15", "0");
  EXPECT_EQ(MessageOf([&] { Click(u"Command15"); }), u"Invalid DPI Value."_s);
  EXPECT_EQ(Pixels().size(), QSize(400, 300));
  Type(u"Text15", "300");
  Find<QComboBox>(u"Combo3")->setCurrentIndex(2);
  Click(u"Command15");
  EXPECT_EQ(Pixels().size(), QSize(120, 90));
  EXPECT_EQ(Image().GetIOProperty(u"DPIX"), u"300"_s);
}

TEST_F(PhotoEditor, ADensityIsSavedWithoutAnotherSize) {
  const QString photo = AddPhoto(u"a.jpg"_s);
  Open(photo);
  Trigger(u"mnu_resize_img");
  Type(u"Text15", "240");
  Click(u"Command15");
  Trigger(u"mnu_save");
  Picture saved;
  ASSERT_TRUE(saved.LoadFromFile(photo));
  EXPECT_EQ(saved.GetIOProperty(u"DPIX"), u"240"_s);
  EXPECT_EQ(saved.Image().size(), QSize(320, 200));
}

TEST_F(PhotoEditor, WhatAStepLeavesOverThePictureEndsWithIt) {
  OpenMotley();
  Trigger(u"mnu_crop");
  Click(u"Command6");
  EXPECT_FALSE(window_->Modified()) << "nothing was selected";
  Type(u"txtwidth", "40");
  Type(u"txtheight", "20");
  Drag({10, 10}, {200, 200});
  Trigger(u"mnu_circle");
  EXPECT_FALSE(Image().HasSelection()) << "the crop's rectangle";
  Drag({10, 10}, {200, 220});
  EXPECT_NEAR(Image().Selected().Bounds().width(), 190, 3) << "an ellipse knows no crop's limits";
  EXPECT_NEAR(Image().Selected().Bounds().height(), 210, 3);
  Trigger(u"mnu_flip_vertical");
  EXPECT_FALSE(Image().HasSelection()) << "it would lie over other content";
  Trigger(u"mnu_watermark");
  EXPECT_EQ(Image().Objects().Count(), 1);
  Trigger(u"mnu_resize_img");
  EXPECT_EQ(Image().Objects().Count(), 0) << "it would not be saved";
  EXPECT_EQ(Text(u"Text13"), u"400"_s);
  Trigger(u"mnu_rotate_cw");
  EXPECT_EQ(Text(u"Text13"), u"300"_s);
  EXPECT_EQ(Text(u"Text14"), u"400"_s);
}

TEST_F(PhotoEditor, OneToolIsOnAtATime) {
  OpenMotley();
  const char16_t* modes[] = {u"SELECTMAGICWAND", u"SELECTRECT", u"SELECTCIRCLE", u"SELECTPOLYGON",
                             u"SELECTLASSO"};
  Trigger(u"mnu_level");
  for (int tool = 0; tool < 5; ++tool) {
    QTest::mouseClick(Find<QToolButton>(u"imgtool(%1)"_s.arg(tool)), Qt::LeftButton);
    for (int other = 0; other < 5; ++other) {
      EXPECT_EQ(Image().GetMouseInteract(QString::fromUtf16(modes[other])), other == tool);
      EXPECT_EQ(Find<QToolButton>(u"imgtool(%1)"_s.arg(other))->isChecked(), other == tool);
    }
    EXPECT_FALSE(Image().GetMouseInteract(u"PUTLINE"_s));
  }
  Drag({20, 20}, {120, 100});
  EXPECT_TRUE(Image().HasSelection());
  Trigger(u"mnu_clear_sel");
  EXPECT_FALSE(Image().HasSelection());
  Click(u"Image13");
  EXPECT_FALSE(Image().GetMouseInteract(u"SELECTLASSO"_s));
  EXPECT_TRUE(Image().GetMouseInteract(u"SCROLL"_s));
}

TEST_F(PhotoEditor, TheWandTakesItsToleranceFromItsFile) {
  EXPECT_TRUE(SaveMagicWandSettings(session_->Folders().StateFolder(), u"35"_s));
  OpenMotley();
  EXPECT_EQ(Image().MagicWandTolerance(), 35);
  Trigger(u"mnu_magic_settings");
  EXPECT_TRUE(Image().GetMouseInteract(u"SELECTMAGICWAND"_s));
  EXPECT_EQ(Text(u"Text23"), u"35"_s);
  Type(u"Text23", "");
  EXPECT_EQ(MessageOf([&] { Click(u"Command20"); }), u"Invalid Tolerance Value."_s);
  EXPECT_EQ(Image().MagicWandTolerance(), 35);
  Type(u"Text23", "-0x");
  Click(u"Command20");
  EXPECT_EQ(Image().MagicWandTolerance(), 0);
  EXPECT_EQ(LoadMagicWandSettings(session_->Folders().StateFolder()).tolerance, 0);
}

TEST_F(PhotoEditor, EverythingIsUndoneToTheExactPixels) {
  OpenMotley();
  EXPECT_FALSE(Find<QAction>(u"mnu_undo")->isEnabled());
  std::vector<QImage> states{Pixels()};
  for (const char16_t* command :
       {u"mnu_flip_horizontal", u"mnu_rotate_cw", u"mnu_sepia", u"mnu_256_threshold",
        u"mnu_flip_vertical", u"mnu_16_colors", u"mnu_grey", u"mnu_rotate_180", u"mnu_bw"}) {
    Trigger(command);
    states.push_back(Pixels());
    EXPECT_NE(states.back(), states[states.size() - 2]) << qPrintable(QString::fromUtf16(command));
  }
  for (auto state = states.rbegin() + 1; state != states.rend(); ++state) {
    Trigger(u"mnu_undo");
    EXPECT_EQ(Pixels(), *state);
  }
  EXPECT_FALSE(Find<QAction>(u"mnu_undo")->isEnabled());
  for (std::size_t i = 1; i < states.size(); ++i) {
    Trigger(u"mnu_redo");
    EXPECT_EQ(Pixels(), states[i]);
  }
  Trigger(u"mnu_undo_all");
  EXPECT_EQ(Pixels(), states.front());
  EXPECT_FALSE(Find<QAction>(u"mnu_undo_all")->isEnabled());
  Trigger(u"mnu_redo");
  EXPECT_EQ(Pixels(), states.back()) << "the state that was left";
  Trigger(u"mnu_flip_vertical");
  EXPECT_FALSE(Find<QAction>(u"mnu_redo")->isEnabled()) << "a new operation ends redoing";
}

TEST_F(PhotoEditor, StepsShowOnePanelAndLightTheirCaption) {
  OpenMotley();
  const std::pair<const char16_t*, const char16_t*> steps[] = {
      {u"Label1", u"fralevel"},  {u"Label2", u"fracrop"},  {u"Label9", u"fraresize"},
      {u"Label3", u"fraredeye"}, {u"Label8", u"frawater"}, {u"Label10", u"frasave"}};
  for (const auto& [caption, frame] : steps) {
    Click(caption);
    for (const auto& [other, otherFrame] : steps) {
      EXPECT_EQ(Find<QWidget>(otherFrame)->isVisible(), frame == otherFrame);
      EXPECT_EQ(Find<QPushButton>(other)->isChecked(), caption == other);
    }
  }
  Trigger(u"mnu_magic_settings");
  EXPECT_TRUE(Find<QWidget>(u"framagic")->isVisible());
  for (const auto& [caption, frame] : steps)
    EXPECT_FALSE(Find<QPushButton>(caption)->isChecked());
  Click(u"Label11");
  EXPECT_TRUE(Find<ImageX>(u"ImageX2")->isVisible());
  EXPECT_FALSE(Image().isVisible());
  Click(u"Label12");
  EXPECT_TRUE(Image().isVisible());
}

TEST_F(PhotoEditor, AWatermarkIsSeenMovedAndMerged) {
  Open(Png(u"black.png"_s, [] {
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
  }()));
  const QImage before = Pixels();
  Click(u"Label8");
  Type(u"Text6", "Hi");
  Type(u"Text7", "40");
  Trigger(u"mnu_actual_size");
  ASSERT_EQ(Image().Objects().Count(), 1);
  const QRectF box = Image().Objects().All().front().Box();
  Drag(box.center(), box.center() + QPointF(100, 80));
  Find<QCheckBox>(u"Check1")->setChecked(true);
  const QRectF moved = Image().Objects().All().front().Box();
  EXPECT_NEAR(moved.left(), box.left() + 100, 2) << "where it was moved to";
  EXPECT_EQ(Pixels(), before);
  Click(u"Command14");
  EXPECT_EQ(Image().Objects().Count(), 0);
  QRect white;
  for (int y = 0; y < 300; ++y)
    for (int x = 0; x < 400; ++x)
      if (qGray(Pixels().pixel(x, y)) > 128) white |= QRect(x, y, 1, 1);
  EXPECT_TRUE(moved.toAlignedRect().contains(white));
  EXPECT_GT(white.height(), 15);
  Trigger(u"mnu_undo");
  EXPECT_EQ(Pixels(), before);
}

TEST_F(PhotoEditor, PanelsAreKeptForTheNextPhoto) {
  OpenMotley();
  Click(u"Label9");
  Type(u"Text15", "240");
  Find<QCheckBox>(u"Check5")->setChecked(true);
  Click(u"Label8");
  Type(u"Text6", "Mine");
  Find<QSlider>(u"Slider1")->setValue(90);
  window_->close();
  EXPECT_TRUE(messages_.isEmpty()) << "nothing was changed in the picture";
  OpenMotley();
  EXPECT_EQ(Text(u"Text15"), u"240"_s);
  EXPECT_TRUE(Find<QCheckBox>(u"Check5")->isChecked());
  EXPECT_EQ(Text(u"Text6"), u"Mine"_s);
  EXPECT_EQ(Find<QSlider>(u"Slider1")->value(), 90);
}

TEST_F(PhotoEditor, ASaveIsFollowedByRowAndBrowser) {
  const QString photo = AddPhoto(u"a.jpg"_s);
  CatalogueThem({photo});
  Open(photo);
  Trigger(u"mnu_rotate_cw");
  Click(u"Label10");
  Click(u"Command16");
  EXPECT_EQ(Stored(photo, Column::ImageWidth), u"200"_s);
  EXPECT_EQ(told_.changed, QStringList{photo});
  EXPECT_EQ(told_.live, 1);
  EXPECT_EQ(Panel(6), u"Ready"_s);
  EXPECT_TRUE(window_->isEnabled());

  // It asks again: a save doesn't settle the changes.
  answer_ = Answer::No;
  EXPECT_EQ(MessageOf([&] { window_->close(); }), u"Save changes to  a.jpg?"_s);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(PhotoEditor, WhatCannotBeSavedIsNotGivenUp) {
  OpenMotley();
  Trigger(u"mnu_grey");
  const QImage edited = Pixels();
  QFile::setPermissions(PhotoPath(u"a.png"_s), QFile::ReadOwner);
  answer_ = Answer::Yes;
  EXPECT_EQ(MessageOf([&] { window_->close(); }),
            u"Save changes to  a.png?|Permission was denied"_s);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(Pixels(), edited);
  // A picture that can't be opened doesn't take its place.
  answer_ = Answer::No;
  picked_ = scratch_.Write(u"photos/broken.png"_s, "no picture");
  EXPECT_EQ(MessageOf([&] { Trigger(u"mnu_open"); }),
            u"Save changes to  a.png?|File could not be read as an image"_s);
  EXPECT_EQ(Pixels(), edited);
  EXPECT_EQ(window_->CurrentPath(), PhotoPath(u"a.png"_s));
}

TEST_F(PhotoEditor, SavesUnderAnotherName) {
  const QString other = AddPhoto(u"other.jpg"_s);
  CatalogueThem({other});
  OpenMotley();
  Trigger(u"mnu_flip_vertical");
  picked_ = other;
  answer_ = Answer::No;
  EXPECT_EQ(MessageOf([&] { Trigger(u"mnu_save_as"); }),
            other + u" already exists.\nDo you want to replace it?"_s);
  EXPECT_EQ(asked_.title, u"File open"_s);
  EXPECT_EQ(asked_.filters.first(), u"JPEG Bitmap (JPG) (*.jpg)"_s);
  EXPECT_TRUE(Photos().IsCatalogued(other));
  EXPECT_TRUE(window_->Modified());
  answer_ = Answer::Yes;
  Trigger(u"mnu_save_as");
  EXPECT_FALSE(Photos().IsCatalogued(other)) << "the replaced photo's row";
  EXPECT_EQ(QImage(other).size(), QSize(400, 300));
  EXPECT_EQ(told_.written, QStringList{other});
  EXPECT_FALSE(window_->Modified());
  EXPECT_EQ(window_->CurrentPath(), PhotoPath(u"a.png"_s));
  picked_.clear();
  EXPECT_EQ(MessageOf([&] { Trigger(u"mnu_save_as"); }), QString());
}

TEST_F(PhotoEditor, AnotherPhotoTakesThePlaceOfTheFirst) {
  OpenMotley();
  Trigger(u"mnu_grey");
  Trigger(u"mnu_crop");
  Drag({10, 10}, {60, 60});
  picked_ = AddPhoto(u"next.jpg"_s);
  answer_ = Answer::Yes;
  EXPECT_EQ(MessageOf([&] { Trigger(u"mnu_open"); }), u"Save changes to  a.png?"_s);
  EXPECT_TRUE(QImage(PhotoPath(u"a.png"_s)).allGray()) << "saved first";
  EXPECT_EQ(Panel(3), u"next.jpg"_s);
  EXPECT_EQ(Pixels().size(), QSize(320, 200));
  EXPECT_EQ(Find<ImageX>(u"ImageX2")->ImageWidth(), 320);
  EXPECT_FALSE(Image().HasSelection());
  EXPECT_FALSE(Find<QAction>(u"mnu_undo")->isEnabled());
  EXPECT_FALSE(Find<QWidget>(u"fracrop")->isVisible());
  EXPECT_FALSE(window_->Modified());
}

}  // namespace
}  // namespace zqm
