// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QProcess>

#include "session/session.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Home : public ::testing::Test {
 protected:
  Home() {
    folders_.DocumentsPath = scratch_.Path("Documents");
    folders_.AppDataPath = scratch_.Path("AppData");
    folders_.CommonAppDataPath = scratch_.Path("installed");
    const QString masters = folders_.MasterFolder();
    QDir().mkpath(masters);
    EXPECT_TRUE(CreateCatalogueFile(masters + u"/Zolmira QM.mdb"_s));
    EXPECT_TRUE(CreateCoreFile(masters + u"/CORE.mdb"_s));
    scratch_.Write("installed/Zolmira/QM/printing_templates/two.txt", "two");
    scratch_.Write("installed/Zolmira/QM/watermark_templates/mark.iev", "mark");
  }

  QStringList Working() const {
    QStringList names = QDir(folders_.WorkingFolder())
                            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    return names;
  }

  test::Scratch scratch_;
  SessionFolders folders_;
};

TEST_F(Home, TheFirstRunMakesEverything) {
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  EXPECT_EQ(Working(), (QStringList{u"CORE.mdb"_s, u"Zolmira QM.mdb"_s, u"printing_templates"_s,
                                    u"watermark_templates"_s}));
  EXPECT_TRUE(FileExists(folders_.PrintingTemplatesFolder() + u"/two.txt"_s));
  EXPECT_TRUE(FolderExists(folders_.ScratchFolder()));
  EXPECT_EQ(QDir(folders_.DocumentsPath).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList{u"Zolmira"_s});
  EXPECT_EQ(session.CatalogueNames(), QStringList{u"Zolmira QM.mdb"_s});
}

TEST_F(Home, ARepairBringsBackAllButACatalogue) {
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  ASSERT_TRUE(QDir(folders_.WorkingFolder()).removeRecursively());
  ASSERT_TRUE(session.PrepareFolders());
  EXPECT_EQ(Working(),
            (QStringList{u"CORE.mdb"_s, u"printing_templates"_s, u"watermark_templates"_s}));
  EXPECT_TRUE(session.CatalogueNames().isEmpty());
  // What the user changed or removed inside a template folder stays so.
  QFile::remove(folders_.PrintingTemplatesFolder() + u"/two.txt"_s);
  QFile::remove(folders_.WorkingFolder() + u"/CORE.mdb"_s);
  ASSERT_TRUE(session.PrepareFolders());
  EXPECT_FALSE(FileExists(folders_.PrintingTemplatesFolder() + u"/two.txt"_s));
  EXPECT_TRUE(FileExists(folders_.WorkingFolder() + u"/CORE.mdb"_s));
}

TEST_F(Home, ReadOnlyMastersGiveAHomeThatCanBeWritten) {
  for (const char16_t* name : {u"/Zolmira QM.mdb", u"/CORE.mdb"})
    QFile::setPermissions(folders_.MasterFolder() + QString::fromUtf16(name), QFile::ReadOwner);
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  ASSERT_TRUE(session.LockHome());
  ASSERT_TRUE(session.Activate(u"Zolmira QM.mdb"_s));
  EXPECT_FALSE(session.ActiveCatalogue().ReadOnly());
}

TEST_F(Home, TemplatesAreTheUsersWhateverTheInstallationIsMadeOf) {
  const QString real = scratch_.Write("store/real.txt", "linked");
  const QString master = folders_.MasterFolder() + u"/printing_templates/"_s;
  QFile::link(u"../../../../store/real.txt"_s, master + u"linked.txt"_s);
  QFile::setPermissions(real, QFile::ReadOwner);
  scratch_.Write("installed/Zolmira/QM/printing_templates/deep/.hidden", "hidden");
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  const QString linked = folders_.PrintingTemplatesFolder() + u"/linked.txt"_s;
  EXPECT_EQ(test::Scratch::Read(linked), "linked");
  EXPECT_FALSE(QFileInfo(linked).isSymLink() || ReadOnlyFile(linked));
  EXPECT_TRUE(ReadOnlyFile(real));
  EXPECT_TRUE(FileExists(folders_.PrintingTemplatesFolder() + u"/deep/.hidden"_s));
}

TEST_F(Home, WhatAKilledStartLeftGoesAndTheUsersFoldersStay) {
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  const QString own = scratch_.Write("Documents/.zolmira-backup/a.txt", "");
  const QString left =
      scratch_.Write("Documents/.zolmira-qm-building-c1a6e0d2-aB3xYz/QM/a.txt", "");
  for (const char* folder :
       {"Documents/.zolmira-backup", "Documents/.zolmira-qm-building-c1a6e0d2-aB3xYz"})
    ASSERT_EQ(QProcess::execute(u"touch"_s, {u"-d"_s, u"2 hours ago"_s, scratch_.Path(folder)}), 0);
  const QString stale = scratch_.Write("Documents/Zolmira/QM/CORE.mdb-wal", "of another file");
  QFile::remove(folders_.WorkingFolder() + u"/CORE.mdb"_s);
  ASSERT_TRUE(session.PrepareFolders());
  ASSERT_TRUE(session.LockHome());
  EXPECT_TRUE(FileExists(own));
  EXPECT_FALSE(FileExists(left));
  EXPECT_FALSE(FileExists(stale));
}

TEST_F(Home, AFirstRunThatFailsLeavesNothingHalfMade) {
  QFile::remove(folders_.MasterFolder() + u"/CORE.mdb"_s);
  Session session(folders_);
  EXPECT_THROW(static_cast<void>(session.PrepareFolders()), Error);
  EXPECT_TRUE(
      QDir(folders_.DocumentsPath).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(Home, ActivationTellsItsStepsAndWhatIsWrong) {
  Session session(folders_);
  ASSERT_TRUE(session.PrepareFolders());
  QStringList steps;
  ASSERT_TRUE(session.Activate(u"Zolmira QM.mdb"_s, [&](const QString& step) { steps += step; }));
  EXPECT_EQ(steps,
            (QStringList{u"Loading Settings..."_s, u"Loading Categories..."_s,
                         u"Initializing Photo Editors..."_s, u"Initializing Search Engine..."_s}));
  EXPECT_EQ(session.CurrentSettings(), Settings());
  EXPECT_TRUE(session.ReadSettings().colourManagement);

  const QString damaged = folders_.WorkingFolder() + u"/damaged.mdb"_s;
  QFile file(damaged);
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write("not a database at all");
  file.close();
  Session other(folders_);
  const Outcome refused = other.Activate(u"damaged.mdb"_s);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Reason(), QString::fromUtf16(session_text::kDamaged));
  EXPECT_EQ(test::Scratch::Read(damaged), "not a database at all");
  EXPECT_FALSE(other.HasActiveCatalogue());
}

TEST_F(Home, OneProcessWritesAtATime) {
  Session first(folders_), second(folders_);
  ASSERT_TRUE(first.PrepareFolders());
  ASSERT_TRUE(first.LockHome());
  EXPECT_TRUE(first.LockHome());
  EXPECT_FALSE(second.LockHome());
}

TEST(CatalogueSize, WarnsOneByteAboveTheLimit) {
  EXPECT_FALSE(CatalogueTooLarge(1'536'000'000));
  EXPECT_TRUE(CatalogueTooLarge(1'536'000'001));
}

TEST(RAWSettings, JoinsTheWordsThatMeanSomething) {
  const struct {
    QString quality, balance, words;
  } cases[] = {{u"-e"_s, u"-w"_s, u"-e -w"_s},
               {u"f"_s, u"-a"_s, u"-a"_s},
               {u"-h"_s, u""_s, u"-h"_s},
               {u"f"_s, u""_s, u""_s}};
  for (const auto& c : cases)
    EXPECT_EQ(RAWSettings(c.quality, c.balance), c.words);
}

}  // namespace
}  // namespace zqm
