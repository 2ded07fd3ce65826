// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons below the main window's pages of metadata.
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "batch/ui/frmexif.h"
#include "browser/ui/info_panel.h"
#include "metadata/exif_editor.h"
#include "shell/files.h"
#include "tests/browser/ui/main_window_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class MetadataButtons : public test::MainWindowTest {
 protected:
  MetadataButtons() {
    before_ = SetPickHandler([this](const PickRequest& request) {
      picks_.append(request.title);
      return folder_;
    });
  }
  ~MetadataButtons() override { SetPickHandler(before_); }

  QString Shown(const char16_t* caption) {
    return window_->findChild<InfoPanel*>()->Info().Line(MetadataPage::Exif, caption);
  }
  bool Shows(const char16_t* caption, const QString& text) {
    return test::Eventually([&] { return Shown(caption) == text; });
  }
  void Press(const char16_t* button) { Find<QPushButton>(button)->click(); }
  /// Meets the editor when it opens.
  void InEditor(const std::function<void(frmexif&)>& act) {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this, act] {
      auto* editor = qobject_cast<frmexif*>(QApplication::activeModalWidget());
      if (editor == nullptr) return;
      look_.stop();
      act(*editor);
    });
    look_.start(10);
  }

  QStringList picks_;
  QString folder_;
  QTimer look_;

 private:
  PickHandler before_;
};

TEST_F(MetadataButtons, AnEditShowsAtOnceAndARemovalToo) {
  const QString path =
      AddPhoto(u"1.jpg"_s, {{u"EXIF_Make", u"Zorki"}, {u"EXIF_FocalLength", u"50"}});
  CatalogueThem({path});
  Open();
  for (const char16_t* button : {u"cmdexif(0)", u"cmdexif(1)", u"cmdexif(2)", u"cmdiptc(0)",
                                 u"cmdiptc(1)", u"cmdiptc(2)", u"cmdcreategps"})
    EXPECT_FALSE(Find<QPushButton>(button)->isEnabled());
  Click(0);
  ASSERT_TRUE(Shows(u"Camera Make", u"Zorki"_s));
  QString filled;
  InEditor([&filled](frmexif& editor) {
    const auto input = [&editor](QStringView caption) {
      return editor.findChild<QLineEdit*>(u"exif(%1)"_s.arg(FindExifField(caption)));
    };
    filled = input(u"Focal Length")->text();
    editor.findChild<QCheckBox*>(u"chkexif(0)"_s)->setChecked(true);
    input(u"Camera Make")->setText(u"Kiev"_s);
    editor.findChild<QPushButton*>(u"cmdapply"_s)->click();
  });
  Press(u"cmdexif(0)");
  EXPECT_EQ(filled, u"50"_s);
  EXPECT_TRUE(Shows(u"Camera Make", u"Kiev"_s));
  EXPECT_EQ(Stored(path, Column::CameraMake), u"Kiev"_s);

  answer_ = Answer::No;
  Press(u"cmdexif(2)");
  EXPECT_EQ(messages_.last(),
            u"Remove all EXIF data from the selected file(s)?\nNote: This will also remove any GPS "
            u"information found in the selected photo(s).\nDo you wish to continue?"_s);
  EXPECT_EQ(Stored(path, Column::CameraMake), u"Kiev"_s);
  answer_ = Answer::Yes;
  Press(u"cmdexif(2)");
  EXPECT_EQ(messages_.last(), u"EXIF data has been removed from the selected file(s)."_s);
  EXPECT_TRUE(Shows(u"Camera Make", QString()));
  EXPECT_EQ(Stored(path, Column::CameraMake), QString());
}

TEST_F(MetadataButtons, TextsGoIntoTheChosenFolder) {
  AddPhoto(u"1.jpg"_s);
  AddPhoto(u"2.jpg"_s);
  Open();
  Trigger(u"mnuselectall");
  Press(u"cmdcreategps");
  EXPECT_EQ(picks_, QStringList{u"Create GPS File(s) in..."_s});
  EXPECT_EQ(messages_, QStringList());
  folder_ = scratch_.Path("texts");
  QDir().mkpath(folder_);
  Press(u"cmdiptc(1)");
  Press(u"cmdexif(1)");
  EXPECT_EQ(messages_,
            (QStringList{u"The IPTC file(s) have been created in the specified folder."_s,
                         u"The EXIF file(s) have been created in the specified folder."_s}));
  EXPECT_EQ(QDir(folder_).entryList(QDir::Files),
            (QStringList{u"EXIF-1.jpg.txt"_s, u"EXIF-2.jpg.txt"_s, u"IPTC-1.jpg.txt"_s,
                         u"IPTC-2.jpg.txt"_s}));
}

}  // namespace
}  // namespace zqm
