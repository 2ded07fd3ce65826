// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QWheelEvent>
#include <atomic>

#include "imaging/tonal.h"
#include "imaging/ui/previews_dialog.h"
#include "tests/support/change_dialogs.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Gradient;
using test::ShownDialog;

class TwoViews : public ::testing::Test {
 protected:
  void Show(const QImage& picture) {
    views_ = std::make_unique<BeforeAfter>(picture);
    views_->resize(700, 300);
    views_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(views_.get()));
    ASSERT_TRUE(Settled());
  }
  bool Settled() {
    return QTest::qWaitFor(
        [this] { return views_->IsCurrent() && !views_->BeforeProxy().isNull(); }, 20'000);
  }
  static PartChange Brighter(int by) {
    return [by](const QImage& part, const PartView&) {
      return AdjustBrightnessContrastSaturation(part, by, 0, 0);
    };
  }

  std::unique_ptr<BeforeAfter> views_;
};

TEST_F(TwoViews, LookAtTheSamePlace) {
  Show(Gradient({2000, 1500}));
  ImageX* before = views_->Before();
  ImageX* after = views_->After();
  EXPECT_TRUE(after->IsFit());
  const QPointF at(100, 80);
  for (ImageX* turned : {before, after, before}) {
    QWheelEvent event(at, turned->viewport()->mapToGlobal(at), {}, {0, 240}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(turned->viewport(), &event);
    EXPECT_DOUBLE_EQ(before->Zoom(), after->Zoom());
    EXPECT_NEAR(before->ToBitmapX(0), after->ToBitmapX(0), 2);
    EXPECT_NEAR(before->ToBitmapY(0), after->ToBitmapY(0), 2);
  }
  EXPECT_FALSE(after->IsFit());
  QTest::keyClick(after, Qt::Key_0);
  EXPECT_TRUE(before->IsFit());
}

TEST_F(TwoViews, WorkOnWhatTheScreenShowsAndZoomedInOnTheRealPixels) {
  const QImage picture = test::Noise({2400, 1800}, QImage::Format_RGB32);
  std::atomic<int> mostPixels = 0, scaleInPercent = 0;
  Show(picture);
  views_->SetChange(
      [&](const QImage& part, const PartView& view) {
        mostPixels = std::max(mostPixels.load(), part.width() * part.height());
        scaleInPercent = static_cast<int>(view.scale * 100);
        return AdjustSaturation(part, -100);
      },
      0);
  ASSERT_TRUE(Settled());
  EXPECT_LT(mostPixels, 350 * 300);
  EXPECT_LT(scaleInPercent, 20);
  EXPECT_EQ(views_->AfterProxy().size(), views_->BeforeProxy().size());
  views_->Before()->SetZoom(100);
  ASSERT_TRUE(Settled());
  EXPECT_LT(mostPixels, 350 * 300);
  EXPECT_EQ(scaleInPercent, 100);
  // The middle of the window is a pixel of the picture as it is, and as it becomes.
  const QPoint middle = views_->Before()->viewport()->rect().center();
  const QPoint pixel(static_cast<int>(views_->Before()->ToBitmapX(middle.x() + 0.5)),
                     static_cast<int>(views_->Before()->ToBitmapY(middle.y() + 0.5)));
  EXPECT_EQ(views_->Before()->viewport()->grab().toImage().pixel(middle), picture.pixel(pixel));
  EXPECT_EQ(views_->After()->viewport()->grab().toImage().pixel(middle),
            AdjustSaturation(picture, -100).pixel(pixel));
}

TEST_F(TwoViews, TheLastChangeWinsAndNothingQueuesUp) {
  Show(Gradient({900, 700}));
  std::atomic<int> runs = 0;
  const auto slow = [&](int by) -> PartChange {
    return [&runs, by](const QImage& part, const PartView&) {
      ++runs;
      QTest::qSleep(30);
      return AdjustBrightnessContrastSaturation(part, by, 0, 0);
    };
  };
  for (int by = 1; by <= 60; ++by) {
    views_->SetChange(slow(by), 0);
    QCoreApplication::processEvents();
  }
  ASSERT_TRUE(Settled());
  EXPECT_LT(runs, 20);
  EXPECT_EQ(views_->AfterProxy(),
            AdjustBrightnessContrastSaturation(views_->BeforeProxy(), 60, 0, 0));
  // What is under way when the change is taken back isn't shown any more.
  views_->SetChange(slow(90), 0);
  QCoreApplication::processEvents();
  views_->SetChange({}, 0);
  EXPECT_EQ(views_->AfterProxy(), views_->BeforeProxy());
  QTest::qWait(100);
  EXPECT_EQ(views_->AfterProxy(), views_->BeforeProxy());
}

TEST_F(TwoViews, TellOfClicksButNotOfDrags) {
  Show(Gradient({1400, 600}));
  views_->Before()->SetZoom(100);
  QSignalSpy clicked(views_.get(), &BeforeAfter::PixelClicked);
  QWidget* viewport = views_->Before()->viewport();
  const QPoint from(120, 90);
  QTest::mousePress(viewport, Qt::LeftButton, {}, from);
  QTest::mouseMove(viewport, from + QPoint(40, 0));
  QTest::mouseRelease(viewport, Qt::LeftButton, {}, from + QPoint(40, 0));
  QTest::mouseClick(viewport, Qt::RightButton, {}, from);
  EXPECT_EQ(clicked.count(), 0);
  const QPoint pixel(static_cast<int>(views_->Before()->ToBitmapX(120)),
                     static_cast<int>(views_->Before()->ToBitmapY(90)));
  QTest::mouseClick(viewport, Qt::LeftButton, {}, from);
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked.front().front().toPoint(), pixel);
}

TEST_F(TwoViews, SayWhenThereIsNoMemoryAndCloseInTheMidst) {
  Show(Gradient({500, 400}));
  views_->SetChange([](const QImage&, const PartView&) { return QImage(); }, 0);
  ASSERT_TRUE(Settled());
  EXPECT_FALSE(views_->After()->HasImage());
  EXPECT_FALSE(views_->After()->accessibleDescription().isEmpty());
  views_->SetChange(Brighter(10), 0);
  ASSERT_TRUE(Settled());
  EXPECT_TRUE(views_->After()->HasImage());
  EXPECT_TRUE(views_->After()->accessibleDescription().isEmpty());
  views_->SetChange(
      [](const QImage& part, const PartView&) {
        QTest::qSleep(50);
        return part;
      },
      0);
  views_.reset();
  QCoreApplication::processEvents();
}

TEST(PreviewsDialog, EveryPageShowsItsEffectAndCanBeReset) {
  const QImage picture = Gradient({640, 480});
  EXPECT_EQ(PreviewPages(),
            (QStringList{u"UserFilt"_s, u"BumpMap"_s, u"Lens"_s, u"Wave"_s, u"Morph"_s}));
  EXPECT_EQ(MakePreviewsDialog(picture, u"NoSuchPage"), nullptr);
  EXPECT_EQ(MakePreviewsDialog({}, u"Lens"), nullptr);
  for (const QString& page : PreviewPages()) {
    const auto dialog = MakePreviewsDialog(picture, page);
    ShownDialog shown(*dialog);
    EXPECT_EQ(dialog->size(), QSize(900, 650)) << page.toStdString();
    shown.CheckMnemonics();
    if (page == u"UserFilt") shown.Find<QComboBox>("cmbpreset")->setCurrentText(u"Emboss"_s);
    ASSERT_TRUE(shown.Settled());
    EXPECT_NE(shown.Views().AfterProxy(), shown.Views().BeforeProxy()) << page.toStdString();
    const QImage first = shown.Views().AfterProxy();
    for (auto* slider : dialog->findChildren<QSlider*>())
      slider->setValue(slider->maximum());
    for (auto* choice : dialog->findChildren<QComboBox*>())
      choice->setCurrentIndex(1);
    ASSERT_TRUE(shown.Settled());
    EXPECT_NE(shown.Views().AfterProxy(), first) << page.toStdString();
    shown.Click("cmdreset");
    ASSERT_TRUE(shown.Settled());
    if (page == u"UserFilt")
      EXPECT_EQ(shown.Views().AfterProxy(), shown.Views().BeforeProxy());
    else
      EXPECT_EQ(shown.Views().AfterProxy(), first) << page.toStdString();
    EXPECT_EQ(shown.Applied(picture) == picture, page == u"UserFilt");
  }
}

TEST(PreviewsDialog, NeutralSettingsAndCancelGiveNoChange) {
  const QImage picture = Gradient({300, 200});
  struct Case {
    const char16_t* page;
    const char* slider;  // 0 is neutral
  };
  for (const Case& c : {Case{u"BumpMap", "slddepth"},
                        {u"Lens", "sldstrength"},
                        {u"Wave", "sldamplitude"},
                        {u"Morph", "sldradius"}}) {
    for (const bool cancel : {false, true}) {
      const auto dialog = MakePreviewsDialog(picture, c.page);
      ShownDialog shown(*dialog);
      if (cancel) {
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
      } else {
        shown.Slide(c.slider, 0);
        QTest::keyClick(shown.Find<QSlider>(c.slider), Qt::Key_Return);
      }
      EXPECT_FALSE(dialog->isVisible());
      EXPECT_EQ(dialog->result() == QDialog::Accepted, !cancel);
      EXPECT_FALSE(dialog->Change().has_value());
    }
  }
}

TEST(PreviewsDialog, AMatrixIsTypedAndLeavesThePresets) {
  QImage picture = Gradient({40, 30});
  const auto dialog = MakePreviewsDialog(picture, u"UserFilt");
  ShownDialog shown(*dialog);
  auto* preset = shown.Find<QComboBox>("cmbpreset");
  preset->setCurrentText(u"Soften"_s);
  EXPECT_EQ(shown.Find<QSpinBox>("cell(12)")->value(), 4);
  EXPECT_EQ(shown.Find<QSpinBox>("txtdivisor")->value(), 16);
  auto* cell = shown.Find<QSpinBox>("cell(12)");
  cell->selectAll();
  QTest::keyClicks(cell, u"8"_s);
  EXPECT_EQ(preset->currentText(), u"Own matrix"_s);
  shown.Click("cmdkeep");
  EXPECT_EQ(shown.Find<QSpinBox>("txtdivisor")->value(), 20);
  picture.fill(qRgb(90, 100, 110));
  EXPECT_EQ(shown.Applied(picture).pixel(20, 15), qRgb(90, 100, 110));
}

TEST(PreviewsDialog, AClickPlacesTheLens) {
  const QImage picture = Gradient({400, 200});
  const auto dialog = MakePreviewsDialog(picture, u"Lens");
  ShownDialog shown(*dialog);
  Q_EMIT shown.Views().PixelClicked({100, 150});
  EXPECT_EQ(shown.Find<QSlider>("sldacross")->value(), 25);
  EXPECT_EQ(shown.Find<QSpinBox>("txtdown")->value(), 75);
}

TEST(PreviewsDialog, TakesEveryPicture) {
  for (const auto format : {QImage::Format_Mono, QImage::Format_Indexed8,
                            QImage::Format_Grayscale16, QImage::Format_RGBA64}) {
    for (const QSize& size : {QSize(1, 1), QSize(2, 900), QSize(1500, 3)}) {
      const QImage picture = test::Noise(size, format);
      for (const QString& page : PreviewPages()) {
        const auto dialog = MakePreviewsDialog(picture, page);
        ShownDialog shown(*dialog);
        shown.Views().Before()->SetZoom(100);
        ASSERT_TRUE(shown.Settled()) << page.toStdString();
        EXPECT_EQ(shown.Applied(picture).size(), size);
      }
    }
  }
}

}  // namespace
}  // namespace zqm
