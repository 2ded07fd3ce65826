// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that convert and resize photos and make PDF files of them.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

#include "batch/ui/frmformat.h"
#include "batch/ui/frmpdf.h"
#include "batch/ui/frmresize.h"
#include "shell/ui/folder_tree.h"
#include "tests/batch/ui/batch_window_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Sees what the window looks like in the middle of a run.
struct Watcher : test::ToldView {
  std::function<void()> look;
  void ShowWritten(const QString& path, bool) override {
    told.append(u"+ "_s + path);
    if (look) look();
  }
};

class PictureWindows : public test::BatchWindowTest<Watcher> {};

TEST_F(PictureWindows, AConversionTakesTheSettingsOfItsFormat) {
  const QString photo = Photo("a/1.jpg");
  Open<frmformat>({photo}, PictureSettings(), ReadRequest());
  EXPECT_EQ(Find<QListWidget>(u"List1")->count(), 8);
  Click(u"Command4");
  Find<QListWidget>(u"List1")->setCurrentRow(2);
  EXPECT_EQ(Find<QSpinBox>(u"JPEG_QUALITY")->value(), 80);
  EXPECT_EQ(Find<QComboBox>(u"JPEG_COLORSPACE")->currentText(), u"YCbCr"_s);
  Find<QRadioButton>(u"Option2")->setChecked(true);
  Click(u"Command4");
  EXPECT_EQ(messages_,
            (QStringList{u"Select output format."_s, u"Please select destination folder."_s}));
  Find<QComboBox>(u"JPEG_COLORSPACE")->setCurrentText(u"B/W"_s);
  Find<QSlider>(u"JPEG_QUALITY slider")->setValue(30);
  EXPECT_EQ(Find<QSpinBox>(u"JPEG_QUALITY")->value(), 30);
  Find<QLineEdit>(u"Text1")->setText(In("b"));

  QString label;
  bool preview = false;
  told_.look = [&] {
    label = Find<QLabel>(u"Label6")->text();
    preview = !Find<QLabel>(u"ImageX2")->pixmap(Qt::ReturnByValue).isNull();
    window_->close();
  };
  Click(u"Command4");
  EXPECT_EQ(label, u"Converting 1.jpg"_s);
  EXPECT_TRUE(preview);
  EXPECT_EQ(messages_.last(), u"File format conversion completed."_s);
  EXPECT_FALSE(window_->isVisible());
  Picture made;
  ASSERT_TRUE(made.LoadFromFile(In("b/1.jpg")));
  EXPECT_EQ(made.GetIOProperty(u"SAMPLESPERPIXEL"), u"1"_s);
  EXPECT_EQ(told_.told, (QStringList{u"+ "_s + In("b/1.jpg"), u"live"_s}));
}

TEST_F(PictureWindows, AResizeLetsOneSideFollowAndChecksWhatIsTyped) {
  const QString photo = Photo("a/1.jpg");
  Open<frmresize>({photo}, PictureSettings(), ReadRequest());
  EXPECT_EQ(Find<QLineEdit>(u"Text1")->text(), u"200"_s);
  // What destroys nothing comes first.
  EXPECT_TRUE(Find<QRadioButton>(u"Option2")->isChecked());
  EXPECT_EQ(Find<QComboBox>(u"Combo1")->currentText(), u"Skip"_s);
  Find<QRadioButton>(u"Option1")->setChecked(true);
  EXPECT_FALSE(Find<QPushButton>(u"cmdbrowse")->isEnabled());
  EXPECT_FALSE(Find<QComboBox>(u"Combo1")->isEnabled());
  Find<QCheckBox>(u"Check2")->setChecked(true);
  EXPECT_FALSE(Find<QLineEdit>(u"Text1")->isEnabled());
  Find<QCheckBox>(u"Check3")->setChecked(true);
  EXPECT_FALSE(Find<QCheckBox>(u"Check2")->isChecked());
  EXPECT_FALSE(Find<QLineEdit>(u"Text2")->isEnabled());
  Find<QLineEdit>(u"Text1")->setText(u"0"_s);
  Click(u"cmdresize");
  EXPECT_EQ(messages_.last(), u"Invalid Width."_s);
  Find<QLineEdit>(u"Text1")->setText(u"16"_s);
  Find<QSlider>(u"Slider1")->setValue(40);
  EXPECT_EQ(Find<QLabel>(u"txtsharpen")->text(), u"40"_s);
  Click(u"cmdresize");
  EXPECT_EQ(messages_.last(), u"Resizing image(s) completed."_s);
  ASSERT_TRUE(Photos().LocateRow(photo));
  EXPECT_EQ(Photos().GetField(Column::ImageWidth), u"16"_s);
  EXPECT_EQ(Photos().GetField(Column::ImageHeight), u"12"_s);
}

TEST_F(PictureWindows, APdfFileOfAllNeedsANameAndStaysOpenWhenItCannotBeWritten) {
  const QString photo = Photo("a/1.jpg");
  Open<frmpdf>({photo}, PictureSettings(), In("a"));
  EXPECT_FALSE(Find<QLineEdit>(u"Text8")->isEnabled());
  EXPECT_EQ(Find<QComboBox>(u"Combo2")->currentText(), u"DCT-jpeg (only color images)"_s);
  Click(u"Command3");
  Q_EMIT Find<FolderTree>(u"FolderTreeview1")->FolderClick(In("gone"));
  Find<QRadioButton>(u"Option4")->setChecked(true);
  Click(u"Command3");
  Find<QLineEdit>(u"Text8")->setText(u"book"_s);
  Click(u"Command3");
  EXPECT_EQ(messages_,
            (QStringList{u"Select destination folder."_s, u"Enter the name of the PDF Document."_s,
                         u"Could not create the PDF File(s). Access is denied."_s}));
  EXPECT_TRUE(window_->isVisible());
  Q_EMIT Find<FolderTree>(u"FolderTreeview1")->FolderClick(In("b"));
  Click(u"Command3");
  EXPECT_EQ(messages_.last(), u"The pdf file(s) have been created in the destination folder."_s);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(Names("b"), QStringList{u"book.pdf"_s});
}

}  // namespace
}  // namespace zqm
