// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmbright.h"
#include "editor/ui/frmcolorcast.h"
#include "editor/ui/frmsaturation.h"
#include "editor/ui/frmsharpen.h"
#include "imaging/tonal.h"
#include "tests/support/change_dialogs.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Gradient;
using test::ShownDialog;

using Make = std::function<std::unique_ptr<ChangeDialog>(const QImage&)>;

template <class Window>
std::unique_ptr<ChangeDialog> Of(const QImage& picture) {
  return std::make_unique<Window>(picture);
}

const Make kWindows[] = {Of<frmcolorcast>, Of<frmsharpen>, Of<frmsaturation>, Of<frmbright>};

TEST(AdjustWindows, BeginNeutralAndThenApplyNothing) {
  const QImage picture = Gradient({300, 200}, QImage::Format_RGBX64);
  for (const Make& make : kWindows) {
    const auto dialog = make(picture);
    ShownDialog shown(*dialog);
    shown.CheckMnemonics();
    EXPECT_EQ(shown.Views().AfterProxy(), shown.Views().BeforeProxy());
    EXPECT_NE(qobject_cast<QSlider*>(dialog->focusWidget()), nullptr);
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(dialog->Change().has_value());
  }
}

TEST(AdjustWindows, SlidersAndFieldsFollowEachOtherAndResetIsNeutral) {
  const QImage picture = Gradient({300, 200});
  for (const Make& make : kWindows) {
    const auto dialog = make(picture);
    ShownDialog shown(*dialog);
    for (auto* slider : dialog->findChildren<QSlider*>()) {
      const QString name = slider->objectName().mid(3);
      auto* field = dialog->findChild<QSpinBox*>(u"txt"_s + name);
      const int before = slider->value();
      QTest::keyClick(slider, Qt::Key_Right);
      EXPECT_EQ(field->value(), before + 1) << name.toStdString();
      field->selectAll();
      QTest::keyClicks(field, u"17"_s);
      EXPECT_EQ(slider->value(), 17) << name.toStdString();
      field->selectAll();
      QTest::keyClicks(field, u"99999"_s);
      EXPECT_LE(slider->value(), slider->maximum());
    }
    ASSERT_TRUE(shown.Settled());
    EXPECT_NE(shown.Views().AfterProxy(), shown.Views().BeforeProxy());
    shown.Click("cmdreset");
    EXPECT_EQ(shown.Views().AfterProxy(), shown.Views().BeforeProxy()) << "at once";
    EXPECT_EQ(shown.Applied(picture), picture);
  }
}

TEST(AdjustWindows, ApplyDoesToTheFullPictureWhatTheSlidersSay) {
  const QImage picture = Gradient({1800, 1200}, QImage::Format_RGBA64);
  struct Case {
    Make make;
    std::vector<std::pair<const char*, int>> sliders;
    std::function<QImage(const QImage&)> wanted;
  };
  const Case cases[] = {
      {Of<frmsharpen>,
       {{"sldsharpen", 40}, {"sldwidth", 2}},
       [](const QImage& p) { return Sharpen(p, 40, 5); }},
      {Of<frmsaturation>,
       {{"sldsaturation", -30}},
       [](const QImage& p) { return AdjustSaturation(p, -30); }},
      {Of<frmbright>,
       {{"sldbrightness", 12}, {"sldcontrast", -20}},
       [](const QImage& p) { return AdjustBrightnessContrastSaturation(p, 12, -20, 0); }},
  };
  for (const Case& c : cases) {
    const auto dialog = c.make(picture);
    ShownDialog shown(*dialog);
    for (const auto& [name, value] : c.sliders)
      shown.Slide(name, value);
    EXPECT_EQ(shown.Applied(picture), c.wanted(picture));
  }
}

TEST(AdjustWindows, EscapeCancels) {
  const QImage picture = Gradient({100, 80});
  for (const Make& make : kWindows) {
    const auto dialog = make(picture);
    ShownDialog shown(*dialog);
    for (auto* slider : dialog->findChildren<QSlider*>())
      slider->setValue(slider->maximum());
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_FALSE(dialog->Change().has_value());
  }
}

TEST(ColourCast, AClickOnWhatShouldBeGrayMakesItGray) {
  QImage picture(300, 200, QImage::Format_RGB32);
  picture.fill(qRgb(180, 150, 120));
  for (int y = 0; y < 200; ++y) {
    for (int x = 200; x < 300; ++x)
      picture.setPixel(x, y, qRgb(60, 90, 160));
  }
  frmcolorcast dialog(picture);
  ShownDialog shown(dialog);
  EXPECT_FALSE(shown.Find<QAbstractButton>("cmdclear")->isEnabled());
  ImageX* before = shown.Views().Before();
  const QPoint at(before->viewport()->rect().center() - QPoint(40, 0));
  QTest::mouseClick(before->viewport(), Qt::LeftButton, {}, at);
  ASSERT_TRUE(shown.Settled());
  const QColor gray = shown.Views().AfterProxy().pixelColor(20, 20);
  EXPECT_NEAR(gray.red(), gray.blue(), 1);
  EXPECT_NEAR(gray.red(), gray.green(), 1);
  shown.Click("cmdclear");
  EXPECT_EQ(shown.Views().AfterProxy(), shown.Views().BeforeProxy());
  shown.Click("cmdautomatic");
  ASSERT_TRUE(shown.Settled());
  EXPECT_NE(shown.Views().AfterProxy(), shown.Views().BeforeProxy());
  // Of the mean of all, (140, 130, 133.3), not of one place.
  const QColor after = shown.Applied(picture).pixelColor(20, 20);
  EXPECT_NEAR(after.red(), 180 * 133.4 / 140, 2);
  EXPECT_NEAR(after.green(), 150 * 133.4 / 130, 2);
}

}  // namespace
}  // namespace zqm
