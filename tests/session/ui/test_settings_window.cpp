// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "session/ui/frmsettings.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class SettingsWindow : public test::HomeTest {
 protected:
  AssociationFolders Folders() { return {scratch_.Path("config"), scratch_.Path("apps")}; }
  template <class Widget>
  static Widget* Find(const frmsettings& window, const char16_t* name) {
    return window.findChild<Widget*>(QString::fromUtf16(name));
  }
};

TEST_F(SettingsWindow, WritesWhatWasChosen) {
  frmsettings window(*session_, nullptr, Folders());
  EXPECT_TRUE(Find<QRadioButton>(window, u"optdefault")->isChecked());
  EXPECT_FALSE(Find<QLineEdit>(window, u"txtcustom")->isEnabled());
  Find<QRadioButton>(window, u"optcustom")->click();
  auto* ok = Find<QPushButton>(window, u"cmdok");
  ok->click();
  EXPECT_EQ(messages_, QStringList{u"No startup folder has been specified!"_s});
  EXPECT_EQ(window.result(), QDialog::Rejected);
  EXPECT_EQ(session_->CurrentSettings(), Settings());
  Find<QLineEdit>(window, u"txtcustom")->setText(u"/Fotos/Jörg's"_s);
  Find<QComboBox>(window, u"cmbrawview")->setCurrentIndex(1);
  Find<QComboBox>(window, u"cmbrawbatch")->setCurrentIndex(0);
  Find<QRadioButton>(window, u"optautowb")->click();
  Find<QCheckBox>(window, u"chkcms")->setChecked(false);
  ok->click();
  EXPECT_EQ(window.result(), QDialog::Accepted);
  const Settings expected{u"Custom"_s, u"/Fotos/Jörg's"_s, u"-h"_s, u"-e"_s, u"-a"_s, u"false"_s};
  EXPECT_EQ(session_->Core().ReadSettings(), expected);
  EXPECT_EQ(session_->CurrentSettings(), expected);
}

TEST_F(SettingsWindow, KeepsTheFolderThatTheProgramRemembers) {
  Settings settings;
  settings.StartupType = u"LastOpened"_s;
  settings.StartupFolder = u"/last"_s;
  ASSERT_TRUE(session_->ChangeSettings(settings));
  frmsettings window(*session_, nullptr, Folders());
  EXPECT_TRUE(Find<QRadioButton>(window, u"optlast")->isChecked());
  Find<QPushButton>(window, u"cmdok")->click();
  EXPECT_EQ(session_->Core().ReadSettings(), settings);
}

TEST_F(SettingsWindow, LeavesAloneWhatItDoesNotKnow) {
  const Settings foreign{u"Somewhere"_s, u"/last"_s, u"-x"_s, u""_s, u"-y"_s, u"true"_s};
  ASSERT_TRUE(session_->ChangeSettings(foreign));
  frmsettings window(*session_, nullptr, Folders());
  Find<QCheckBox>(window, u"chkcms")->click();
  Find<QPushButton>(window, u"cmdok")->click();
  Settings expected = foreign;
  expected.CMS = u"false"_s;
  EXPECT_EQ(session_->Core().ReadSettings(), expected);
}

TEST_F(SettingsWindow, StaysInsideAHomeOfItsOwn) {
  frmsettings window(*session_);
  for (auto* box : window.findChildren<QCheckBox*>())
    if (box->text() == u"PNG") box->click();
  Find<QPushButton>(window, u"cmdok")->click();
  EXPECT_TRUE(messages_.isEmpty());
  const AssociationFolders own = AssociationFoldersOf(session_->Folders());
  for (const QString& folder : {own.config, own.applications})
    EXPECT_TRUE(folder.startsWith(scratch_.Path("AppData/"))) << folder.toStdString();
  EXPECT_TRUE(IsAssociated(own, FileKinds()[4]));
  EXPECT_TRUE(FileExists(own.applications + u"/zolmira-qm.desktop"_s));
}

TEST_F(SettingsWindow, SaysWhatCouldNotBeWritten) {
  scratch_.Write("config", "a file where a folder should be");
  frmsettings window(*session_, nullptr, Folders());
  for (auto* box : window.findChildren<QCheckBox*>())
    if (box->text() == u"PNG") box->click();
  Find<QPushButton>(window, u"cmdok")->click();
  ASSERT_EQ(messages_.size(), 1);
  EXPECT_TRUE(messages_[0].startsWith(u"The file associations could not be saved: "));

  session_ = std::make_unique<Session>(session_->Folders());
  ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));  // without the home's lock
  const frmsettings readOnly(*session_, nullptr, Folders());
  const auto* ok = Find<QPushButton>(readOnly, u"cmdok");
  EXPECT_FALSE(ok->isEnabled() || ok->toolTip().isEmpty());
}

TEST(FileAssociations, GiveAndTakeWithoutTouchingOthers) {
  const test::Scratch scratch;
  const AssociationFolders folders{scratch.Path("config"), scratch.Path("apps")};
  const QByteArray foreign =
      "# mine\n[Added Associations]\nimage/png=a.desktop;\n\n[Default Applications]\n"
      "image/png=viewer.desktop;\ntext/plain=ed.desktop\n[Other]\nimage/gif=x.desktop\n";
  scratch.Write("config/mimeapps.list", foreign);
  const auto kinds = FileKinds();
  std::vector<bool> ticked(kinds.size());
  ASSERT_TRUE(Associate(folders, ticked, u"/opt/a b/zolmira-qm"_s));
  EXPECT_EQ(test::Scratch::Read(scratch.Path("config/mimeapps.list")), foreign);
  EXPECT_FALSE(FolderExists(folders.applications));
  ticked[0] = ticked[4] = true;  // JPEG and PNG
  ASSERT_TRUE(Associate(folders, ticked, u"/opt/a b/zolmira-qm"_s));
  for (std::size_t i = 0; i < kinds.size(); ++i)
    EXPECT_EQ(IsAssociated(folders, kinds[i]), ticked[i]) << i;
  const QByteArray changed = test::Scratch::Read(scratch.Path("config/mimeapps.list"));
  EXPECT_TRUE(changed.contains("image/png=zolmira-qm.desktop;viewer.desktop;\n"));
  EXPECT_TRUE(changed.contains("[Other]\nimage/gif=x.desktop\n"));
  EXPECT_TRUE(test::Scratch::Read(scratch.Path("apps/zolmira-qm.desktop"))
                  .contains("Exec=\"/opt/a b/zolmira-qm\" %F\n"));
  // What is special in an Exec line: quoted, then the backslashes of the quotes doubled.
  QFile::remove(scratch.Path("apps/zolmira-qm.desktop"));
  ticked[1] = true;
  ASSERT_TRUE(Associate(folders, ticked, u"/o$t/50%\\\"q\"/zqm"_s));
  EXPECT_TRUE(test::Scratch::Read(scratch.Path("apps/zolmira-qm.desktop"))
                  .contains(R"(Exec="/o\\$t/50%%\\\\\\"q\\"/zqm" %F)"));
  ticked.assign(kinds.size(), false);
  ASSERT_TRUE(Associate(folders, ticked, QString()));
  EXPECT_EQ(test::Scratch::Read(scratch.Path("config/mimeapps.list")), foreign);
}

}  // namespace
}  // namespace zqm
