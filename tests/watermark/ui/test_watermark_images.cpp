// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "imaging/template_files.h"
#include "imaging/ui/image_multi_x.h"
#include "imaging/ui/image_x.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"
#include "watermark/ui/frmwatermarkcreator.h"
#include "watermark/ui/frmwatermarkimages.h"
#include "watermark/watermark_layers.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class WatermarkImages : public test::HomeTest {
 protected:
  void SetUp() override {
    QImage red(40, 40, QImage::Format_RGB32);
    red.fill(Qt::red);
    ImportNewImage(square_, red, red.size());
    // Half of it: what is stamped twice is seen.
    SetTransparency(square_, square_.Ids(), 128);
    ASSERT_TRUE(SaveTemplate(PathOf(u"Square"_s), square_, {320, 200}));
  }
  QString PathOf(const QString& name) {
    return TemplatePath(session_->Folders().WatermarkTemplatesFolder(), name);
  }
  void Open(const QStringList& photos) {
    window_ = std::make_unique<frmwatermarkimages>(*session_, photos);
    window_->show();
    ASSERT_TRUE(test::Eventually(
        [&] { return Preview().HasImage() || !Preview().accessibleDescription().isEmpty(); }));
    ASSERT_TRUE(test::Eventually([&] { return Button(u"Command5")->isEnabled(); }));
  }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf16(name));
    EXPECT_NE(widget, nullptr) << QString::fromUtf16(name).toStdString();
    return widget;
  }
  QPushButton* Button(const char16_t* name) { return Find<QPushButton>(name); }
  QListWidget& Templates() { return *Find<QListWidget>(u"List1"); }
  ImageX& Preview() { return *Find<ImageX>(u"ImageX1"); }
  void Choose(const QString& name) {
    Templates().setCurrentItem(Templates().findItems(name, Qt::MatchExactly).value(0));
  }
  void Click(const char16_t* name) {
    EXPECT_TRUE(Button(name)->isEnabled()) << QString::fromUtf16(name).toStdString();
    QTest::mouseClick(Button(name), Qt::LeftButton);
  }
  QStringList Names() {
    QStringList names;
    for (int i = 0; i < Templates().count(); ++i)
      names.append(Templates().item(i)->text());
    return names;
  }
  /// Does something in the creator when it is up, and closes it.
  void InCreator(const std::function<void(QWidget& creator)>& work) {
    QTimer::singleShot(50, window_.get(), [this, work] {
      auto* creator = window_->findChild<frmwatermarkcreator*>();
      ASSERT_NE(creator, nullptr);
      work(*creator);
      creator->close();
    });
  }
  static int RedAt(const QString& path, QPoint at) { return qRed(QImage(path).pixel(at)); }

  VectorObjects square_;
  std::unique_ptr<frmwatermarkimages> window_;
};

TEST_F(WatermarkImages, ATemplateIsSeenThenStampedOnAllPhotos) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  const QByteArray bytes = test::Scratch::Read(a);
  Open({a, b});
  for (const char16_t* name : {u"Command2", u"Command3", u"Command4"})
    EXPECT_FALSE(Button(name)->isEnabled());
  Click(u"Command5");
  EXPECT_EQ(messages_,
            QStringList{u"No template has been applied to the image(s).\nSelect a template from "
                        u"the list and then click on the 'Apply' button."_s});
  Choose(u"Square"_s);
  EXPECT_TRUE(Preview().Objects().IsEmpty());
  Click(u"Command4");
  EXPECT_EQ(Preview().Objects(), square_);
  Click(u"Command4");
  EXPECT_EQ(Preview().Objects().Count(), 1);
  Find<ImageMultiX>(u"ImageMultiX1")->SelectPaths({b});
  ASSERT_TRUE(test::Eventually([&] { return Preview().GetIOProperty(u"FILENAME").endsWith(b); }));
  EXPECT_EQ(Preview().Objects(), square_) << "not over the other photo";
  EXPECT_EQ(test::Scratch::Read(a), bytes) << "looking changes a photo";
  messages_.clear();
  Click(u"Command5");
  EXPECT_EQ(messages_, QStringList{u"Selected images have been watermarked."_s});
  EXPECT_FALSE(window_->isVisible());
  for (const QString& path : {a, b})
    EXPECT_GT(RedAt(path, {40, 40}), RedAt(path, {80, 80}) + 30);
}

TEST_F(WatermarkImages, FailuresAreShownHereAndAnotherTryStampsNoneTwice) {
  const QString good = AddPhoto(u"good.jpg"_s), locked = AddPhoto(u"locked.jpg"_s),
                gone = AddPhoto(u"gone.jpg"_s);
  QFile::setPermissions(locked, QFile::ReadOwner);
  Open({good, locked, gone});
  QFile::remove(gone);
  Choose(u"Square"_s);
  Click(u"Command4");
  Click(u"Command5");
  EXPECT_TRUE(messages_.isEmpty());
  EXPECT_TRUE(window_->isVisible());
  auto* list = Find<QTableView>(u"ListView1");
  ASSERT_TRUE(list->isVisible());
  EXPECT_EQ(Find<QLabel>(u"Label5")->text(), u"The following photos could not be watermarked:"_s);
  ASSERT_EQ(list->model()->rowCount(), 2);
  const auto cell = [&](int row, int column) {
    return list->model()->index(row, column).data().toString();
  };
  EXPECT_EQ(cell(0, 0) + u": "_s + cell(0, 1), locked + u": Permission was denied"_s);
  EXPECT_EQ(cell(1, 0) + u": "_s + cell(1, 1), gone + u": File is offline or missing"_s);
  EXPECT_FALSE(Preview().HasImage()) << "as it was before its stamp";
  const QByteArray stamped = test::Scratch::Read(good);
  QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner);
  Click(u"Command5");
  EXPECT_EQ(list->model()->rowCount(), 1);
  EXPECT_EQ(test::Scratch::Read(good), stamped);
  EXPECT_GT(RedAt(locked, {40, 40}), RedAt(locked, {80, 80}) + 30);
}

TEST_F(WatermarkImages, TemplatesThatAreGoneOrBrokenAreSaid) {
  Open({AddPhoto(u"a.jpg"_s)});
  Templates().setFocus();
  EXPECT_FALSE(Button(u"Command4")->isEnabled()) << "keys are there, but nothing is chosen";
  Choose(u"Square"_s);
  Click(u"Command4");
  QFile::remove(PathOf(u"Square"_s));
  for (const char16_t* name : {u"Command4", u"Command3", u"Command2"}) {
    messages_.clear();
    Click(name);
    EXPECT_EQ(messages_, QStringList{u"Cannot locate "_s + PathOf(u"Square"_s)});
  }
  ASSERT_TRUE(WriteFileAtomically(PathOf(u"Square"_s), "{\"format\": \"Zolm"));
  messages_.clear();
  Click(u"Command4");
  EXPECT_EQ(messages_.size(), 1);
  EXPECT_TRUE(Preview().Objects().IsEmpty()) << "the one that was applied before";
  answer_ = Answer::No;
  Click(u"Command2");
  EXPECT_EQ(messages_.last(), u"Do you want to delete the selected template?"_s);
  EXPECT_EQ(Names(), QStringList{u"Square"_s});
  answer_ = Answer::Yes;
  Click(u"Command2");
  EXPECT_TRUE(Names().isEmpty());
  EXPECT_FALSE(QFile::exists(PathOf(u"Square"_s)));
  EXPECT_FALSE(Button(u"Command2")->isEnabled());
}

TEST_F(WatermarkImages, WhatTheCreatorSavesIsInTheList) {
  Open({AddPhoto(u"a.jpg"_s)});
  InCreator([&](QWidget& creator) {
    EXPECT_EQ(creator.findChild<QLabel*>(u"Label1"_s)->text(),
              u"Template Size : 320 x 200 pixels"_s);
    EXPECT_FALSE(creator.findChild<QPushButton*>(u"Command5"_s)->isEnabled());
    creator.findChild<QPushButton*>(u"Command1"_s)->click();
    QTimer::singleShot(0, &creator, [&creator] {
      auto* dialog = creator.findChild<QDialog*>(u"frmwatername"_s);
      dialog->findChild<QLineEdit*>(u"Text1"_s)->setText(u"Alpha"_s);
      dialog->findChild<QPushButton*>(u"Command1"_s)->click();
    });
    creator.findChild<QPushButton*>(u"Command6"_s)->click();
  });
  Click(u"Command1");
  EXPECT_EQ(Names(), (QStringList{u"Alpha"_s, u"Square"_s}));
  EXPECT_EQ(Templates().currentItem()->text(), u"Alpha"_s);

  // The applied one follows what is saved over it.
  Click(u"Command4");
  InCreator([&](QWidget& creator) {
    EXPECT_EQ(creator.findChild<ImageX*>(u"ImageX1"_s)->Objects().Count(), 1);
    creator.findChild<QPushButton*>(u"Command1"_s)->click();
    creator.findChild<QPushButton*>(u"Command5"_s)->click();
  });
  Click(u"Command3");
  EXPECT_EQ(Preview().Objects().Count(), 2);
}

TEST_F(WatermarkImages, APhotoThatCantBeShownSaysWhyAndHasNoSurface) {
  const QString broken = scratch_.Write("photos/broken.jpg", "no picture"),
                good = AddPhoto(u"good.jpg"_s);
  Open({broken, good});
  EXPECT_FALSE(Preview().accessibleDescription().isEmpty());
  EXPECT_FALSE(Button(u"Command1")->isEnabled());
  EXPECT_FALSE(Button(u"Command1")->toolTip().isEmpty());
  Find<ImageMultiX>(u"ImageMultiX1")->SelectPaths({good});
  ASSERT_TRUE(test::Eventually([&] { return Button(u"Command1")->isEnabled(); }));
}

TEST_F(WatermarkImages, StaysUntilTheRunIsThroughAndEnterStartsNone) {
  QStringList photos;
  for (int i = 0; i < 6; ++i)
    photos.append(AddPhoto(u"%1.jpg"_s.arg(i)));
  Open(photos);
  Choose(u"Square"_s);
  const QByteArray before = test::Scratch::Read(photos.first());
  QTest::keyClick(&Templates(), Qt::Key_Return);
  EXPECT_EQ(Preview().Objects(), square_) << "Enter applies";
  EXPECT_EQ(test::Scratch::Read(photos.first()), before);
  bool closed = false, enabled = true;
  QTimer::singleShot(0, window_.get(), [&] {
    enabled = Button(u"Command5")->isEnabled() || Templates().isEnabled();
    window_->close();
    closed = !window_->isVisible();
  });
  Click(u"Command5");
  EXPECT_FALSE(closed);
  EXPECT_FALSE(enabled);
  EXPECT_EQ(messages_, QStringList{u"Selected images have been watermarked."_s});
}

}  // namespace
}  // namespace zqm
