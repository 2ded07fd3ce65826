// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the main window that write pictures.
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "batch/ui/frmformat.h"
#include "editor/ui/frmedit.h"
#include "imaging/picture.h"
#include "imaging/template_files.h"
#include "imaging/ui/image_x.h"
#include "tests/browser/ui/main_window_fixture.h"
#include "tests/support/print_text.h"
#include "watermark/ui/frmwatermarkimages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using PictureMenu = test::MainWindowTest;

TEST_F(PictureMenu, ATurnedPhotoIsShownTurnedAndItsRowStays) {
  const QString path = AddPhoto(u"1.jpg"_s);
  CatalogueThem({path});
  ASSERT_TRUE(Photos().LocateRow(path));
  const QString width = Photos().GetField(Column::ImageWidth);
  Open();
  Click(0);
  auto* viewer = Find<ImageX>(u"ImageX1");
  ASSERT_TRUE(test::Eventually([&] { return viewer->HasImage(); }));
  Picture before, after;
  ASSERT_TRUE(before.LoadFromFile(path));
  ASSERT_NE(before.ImageWidth(), before.ImageHeight());
  Trigger(u"mnurotate(1)");
  ASSERT_TRUE(after.LoadFromFile(path));
  EXPECT_EQ(after.Image().size(), before.Image().size().transposed());
  const QString turned = u"%1 × %2"_s.arg(after.ImageWidth()).arg(after.ImageHeight());
  EXPECT_TRUE(test::Eventually([&] { return Text(u"lblstatus").contains(turned); }))
      << Text(u"lblstatus").toStdString();
  ASSERT_TRUE(Photos().LocateRow(path));
  EXPECT_EQ(Photos().GetField(Column::ImageWidth), width);
  EXPECT_TRUE(messages_.isEmpty());
}

TEST_F(PictureMenu, AConvertedPhotoJoinsTheFolder) {
  AddPhoto(u"1.jpg"_s);
  Open();
  Click(0);
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&look] {
    auto* window = qobject_cast<frmformat*>(QApplication::activeModalWidget());
    if (window == nullptr) return;
    look.stop();
    window->findChild<QListWidget*>(u"List1"_s)->setCurrentRow(4);
    window->findChild<QPushButton*>(u"Command4"_s)->click();
  });
  look.start(10);
  Trigger(u"mnufile2(6)");
  EXPECT_EQ(messages_.last(), u"File format conversion completed."_s);
  EXPECT_TRUE(test::Eventually([&] { return List()->model()->rowCount() == 2; }));
}

TEST_F(PictureMenu, AStampedPhotoKeepsItsRowAndMissingOnesStayAway) {
  const QString path = AddPhoto(u"1.jpg"_s), gone = AddPhoto(u"2.jpg"_s);
  CatalogueThem({path, gone});
  ASSERT_TRUE(Photos().LocateRow(path));
  const QByteArray thumbnail = *Photos().ReadThumbnail();
  const QByteArray before = test::Scratch::Read(path);
  VectorObjects objects;
  objects.SetObjectProperty(objects.Add(ObjectKind::Text), u"TEXT", u"Proof"_s);
  ASSERT_TRUE(SaveTemplate(TemplatePath(session_->Folders().WatermarkTemplatesFolder(), u"Proof"_s),
                           objects, {9, 9}));
  Open();
  Find<QAction>(u"mnuselectall")->trigger();
  QFile::remove(gone);
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&look] {
    auto* window = qobject_cast<frmwatermarkimages*>(QApplication::activeModalWidget());
    const auto button = [&](const char16_t* name) {
      return window->findChild<QPushButton*>(QString::fromUtf16(name));
    };
    if (window == nullptr || !button(u"Command5")->isEnabled()) return;
    look.stop();
    window->findChild<QListWidget*>(u"List1"_s)->setCurrentRow(0);
    button(u"Command4")->click();
    button(u"Command5")->click();
  });
  look.start(10);
  Trigger(u"mnufile2(8)");
  EXPECT_EQ(messages_.last(), u"Selected images have been watermarked."_s);
  EXPECT_NE(test::Scratch::Read(path), before);
  ASSERT_TRUE(Photos().LocateRow(path));
  EXPECT_EQ(*Photos().ReadThumbnail(), thumbnail);
}

TEST_F(PictureMenu, AnEditedPhotoIsSavedAndShown) {
  const QString path = AddPhoto(u"1.jpg"_s);
  CatalogueThem({path});
  Open();
  Click(0);
  auto* viewer = Find<ImageX>(u"ImageX1");
  ASSERT_TRUE(test::Eventually([&] { return viewer->HasImage(); }));
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&look] {
    auto* editor = qobject_cast<frmedit*>(QApplication::activeModalWidget());
    if (editor == nullptr) return;
    look.stop();
    for (const char16_t* command : {u"mnu_rotate_cw", u"mnu_save", u"mnu_exit"})
      editor->findChild<QAction*>(QString::fromUtf16(command))->trigger();
  });
  look.start(10);
  Trigger(u"mnufile2(1)");
  EXPECT_EQ(messages_, QStringList{u"Save changes to  1.jpg?"_s});
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"200"_s);
  EXPECT_TRUE(test::Eventually([&] { return Text(u"lblstatus").contains(u"200 × 320"_s); }))
      << Text(u"lblstatus").toStdString();

  ASSERT_TRUE(QFile::remove(path));
  Trigger(u"mnufile2(1)");
  EXPECT_EQ(messages_.last(),
            u"The selected image is either missing or offline and thus cannot be edited."_s);
}

}  // namespace
}  // namespace zqm
