// SPDX-License-Identifier: GPL-3.0-or-later
#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QtEndian>

#include "catalogue/catalogue.h"
#include "catalogue/core_database.h"
#include "shell/error.h"
#include "shell/files.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

class CatalogueFileTest : public test::CatalogueTest {
 protected:
  OpenProblem ProblemOf(const QString& path, CatalogueAccess access = CatalogueAccess::ReadWrite) {
    OpenProblem problem{};
    const auto opened = Catalogue::Open(path, problem, access, &reason);
    EXPECT_EQ(opened == nullptr, problem != OpenProblem::None);
    return problem;
  }

  [[noreturn]] void ChangeRowsForEver(int round, int underWay) {
    Reopen();
    PhotoRecordset& photos = catalogue->Photos();
    for (int i = 0;; ++i) {
      if (i == 10) (void)!::write(underWay, "x", 1);
      (void)Add(u"/none/%1-%2.jpg"_s.arg(round).arg(i), {{Column::Notes, QString(500, u'n')}},
                QByteArray(3001, 'x'));
      if (i % 3 == 0 && photos.MoveTo(i % photos.Count())) (void)photos.DeleteCurrentRow();
      if (photos.Count() == 0 || !photos.MoveTo(i % photos.Count())) continue;
      photos.SetField(Column::Photo, u"/moved/%1-%2.jpg"_s.arg(round).arg(i));
    }
  }

  void Execute(const QString& path, const std::string& sql) {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    database.exec(sql);
  }

  QString reason;  // of the last problem

  QStringList Left() const {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

TEST_F(CatalogueFileTest, ForeignAndDamagedFilesAreRefusedAndLeftAlone) {
  const QString core = PathOf(u"CORE.mdb"_s);
  ASSERT_TRUE(CreateCoreFile(core));
  Execute(PathOf(u"other.mdb"_s), "CREATE TABLE t (x)");
  catalogue.reset();
  const QByteArray good = Content(file);
  ASSERT_TRUE(QFile::copy(file, PathOf(u"newer.mdb"_s)));
  Execute(PathOf(u"newer.mdb"_s), "PRAGMA user_version = 2");
  ASSERT_TRUE(QFile::copy(file, PathOf(u"changed.mdb"_s)));
  Execute(PathOf(u"changed.mdb"_s),
          "DROP VIEW qryphoto; CREATE VIEW qryphoto AS SELECT 1 AS Photo");
  const auto ourId = std::to_string(qFromBigEndian<qint32>(good.constData() + 68));
  for (const char* version : {"0", "1"}) {
    const QString disguised = PathOf(u"disguised%1.mdb"_s.arg(QLatin1StringView(version)));
    Execute(disguised, "CREATE TABLE t (x)");
    Execute(disguised, "PRAGMA application_id = " + ourId);
    Execute(disguised, std::string("PRAGMA user_version = ") + version);
  }
  test::Touch(PathOf(u"empty.mdb"_s), "");
  test::Touch(PathOf(u"text.mdb"_s), QByteArray(5000, 't'));
  test::Touch(PathOf(u"cut.mdb"_s), good.left(good.size() / 2));
  test::Touch(PathOf(u"header.mdb"_s), good.left(100));
  QByteArray scribbled = good;
  scribbled.replace(100, 8000, QByteArray(8000, '\xA5'));
  test::Touch(PathOf(u"scribbled.mdb"_s), scribbled);
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"folder.mdb"_s));

  EXPECT_EQ(ProblemOf(PathOf(u"absent.mdb"_s)), OpenProblem::Missing);
  EXPECT_EQ(ProblemOf(PathOf(u"folder.mdb"_s)), OpenProblem::Damaged);
  for (const char16_t* name :
       {u"CORE.mdb", u"other.mdb", u"newer.mdb", u"changed.mdb", u"empty.mdb", u"text.mdb",
        u"cut.mdb", u"header.mdb", u"scribbled.mdb", u"disguised0.mdb", u"disguised1.mdb"}) {
    const QString path = PathOf(QString::fromUtf16(name));
    const QByteArray before = Content(path);
    EXPECT_EQ(ProblemOf(path), OpenProblem::Damaged) << path.toStdString();
    EXPECT_EQ(Content(path), before) << path.toStdString();
  }
  EXPECT_EQ(ProblemOf(file), OpenProblem::None);
}

// Pages broken behind the opening's back: an error, never a crash or an endless loop.
TEST_F(CatalogueFileTest, DamageMetLaterIsAnError) {
  for (int i = 0; i < 200; ++i)
    ASSERT_TRUE(Add(u"/none/%1.jpg"_s.arg(i), {{Column::Notes, QString(400, u'n')}}));
  catalogue.reset();
  const QByteArray good = Content(file);
  int noticed = 0;
  for (qsizetype page = 1; page < good.size() / 8192; ++page) {
    QByteArray bad = good;
    bad.replace(page * 8192, 2000, QByteArray(2000, '\xFE'));
    test::Touch(file, bad);
    OpenProblem problem{};
    catalogue = Catalogue::Open(file, problem);
    if (!catalogue) {
      EXPECT_EQ(problem, OpenProblem::Damaged);
      ++noticed;
      continue;
    }
    EXPECT_FALSE(catalogue->CheckIntegrity().isEmpty()) << "page " << page;
    try {
      (void)catalogue->Query(u"Select [Notes] from qryphoto"_s, Column::Notes);
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), error_number::kDatabase);
      ++noticed;
    }
    catalogue.reset();
  }
  EXPECT_GT(noticed, 10);
}

TEST_F(CatalogueFileTest, AnotherWriterLocksRowsAndAnExclusiveOneTheFile) {
  ASSERT_TRUE(Add(u"/none/a.jpg"_s));
  SQLite::Database other(file.toStdString(), SQLite::OPEN_READWRITE);
  other.exec("BEGIN IMMEDIATE");
  PhotoRecordset& photos = catalogue->Photos();
  const QString locked = u"The database is locked by another program"_s;
  EXPECT_EQ(photos.BeginNewRow().Reason(), locked);
  ASSERT_TRUE(photos.LocateRow(u"/none/a.jpg"_s));
  photos.SetField(Column::Photo, u"/none/b.jpg"_s);
  EXPECT_EQ(photos.MoveFirst().Reason(), locked);
  EXPECT_TRUE(photos.MoveFirst()) << "said once";
  EXPECT_EQ(FieldOf(u"/none/a.jpg"_s, Column::Photo), u"/none/a.jpg"_s);
  EXPECT_FALSE(photos.IsCatalogued(u"/none/b.jpg"_s));
  other.exec("ROLLBACK");
  EXPECT_TRUE(Add(u"/none/b.jpg"_s));

  catalogue.reset();
  other.exec("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; CREATE TABLE x (y); ROLLBACK;");
  other.exec("BEGIN EXCLUSIVE");
  EXPECT_EQ(ProblemOf(file), OpenProblem::Locked);
}

TEST_F(CatalogueFileTest, AReadOnlyCatalogueReadsAndRefusesEveryWrite) {
  ASSERT_TRUE(Add(u"/none/a.jpg"_s, {{Column::Notes, u"note"_s}}, "thumbnail"));
  ASSERT_TRUE(catalogue->AddCategory(u"Family"_s));
  catalogue.reset();
  ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
  Reopen();
  const QByteArray before = Content(file);
  reason = u"The database is read-only"_s;
  PhotoRecordset& photos = catalogue->Photos();
  EXPECT_TRUE(catalogue->ReadOnly());
  EXPECT_EQ(photos.BeginNewRow().Reason(), reason);
  ASSERT_TRUE(photos.LocateRow(u"/none/a.jpg"_s));
  EXPECT_EQ(*photos.ReadThumbnail(), "thumbnail");
  photos.SetField(Column::Notes, u"other"_s);
  EXPECT_EQ(photos.CommitRow().Reason(), reason);
  EXPECT_EQ(photos.GetField(Column::Notes), u"note"_s);
  EXPECT_EQ(photos.DeleteCurrentRow().Reason(), reason);
  EXPECT_EQ(catalogue->AddCategory(u"Travel"_s).Reason(), reason);
  EXPECT_EQ(catalogue->RecordIntent({}).Reason(), reason);
  EXPECT_EQ(catalogue->Query(u"Select Notes from qryphoto"_s, Column::Notes),
            QStringList{u"note"_s});
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
  catalogue.reset();
  EXPECT_EQ(Content(file), before);
  EXPECT_EQ(Left(), QStringList{u"Photos.mdb"_s});
  QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(CatalogueFileTest, ReadingLeavesEverythingToTheNextWriter) {
  const QString from = PathOf(u"a.jpg"_s), to = PathOf(u"b.jpg"_s);
  ASSERT_TRUE(Add(from));
  ASSERT_TRUE(catalogue->RecordIntent({u"move"_s, from, to}));
  test::Touch(to);
  // Beside a writer, of whom all stands in the log yet.
  OpenProblem problem{};
  auto reader = Catalogue::Open(file, problem, CatalogueAccess::Reading);
  ASSERT_TRUE(reader);
  EXPECT_TRUE(reader->ReadOnly());
  EXPECT_TRUE(reader->Photos().IsCatalogued(from));
  EXPECT_EQ(reader->Photos().BeginNewRow().Reason(), u"The database is read-only"_s);
  ASSERT_TRUE(Add(PathOf(u"c.jpg"_s)));
  reader->Photos().Load();
  EXPECT_EQ(reader->Photos().Count(), 2);
  // A log that a killed writer left stays as it is.
  for (const QString& name : {u"Photos.mdb"_s, u"Photos.mdb-wal"_s})
    ASSERT_TRUE(QFile::copy(PathOf(name), PathOf(u"Killed"_s + name.sliced(6))));
  reader.reset();
  catalogue.reset();
  for (const auto& [name, left] :
       {std::pair(u"Photos.mdb"_s, QStringList{u"Photos.mdb"_s}),
        {u"Killed.mdb"_s, {u"Killed.mdb"_s, u"Killed.mdb-shm"_s, u"Killed.mdb-wal"_s}}}) {
    file = PathOf(name);
    const QByteArray before = Content(file) + Content(file + u"-wal"_s);
    Reopen(CatalogueAccess::Reading);
    EXPECT_TRUE(catalogue->Photos().IsCatalogued(from)) << name.toStdString();
    EXPECT_EQ(catalogue->Photos().Count(), 2);
    catalogue.reset();
    EXPECT_EQ(Content(file) + Content(file + u"-wal"_s), before);
    EXPECT_EQ(Left().filter(name), left);
    Reopen();
    EXPECT_TRUE(catalogue->Photos().IsCatalogued(to)) << name.toStdString();
    catalogue.reset();
  }
}

TEST_F(CatalogueFileTest, AFileWithoutPermissionIsUnreadableAndNotDamaged) {
  catalogue.reset();
  ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7555)));
  ASSERT_TRUE(QFile::setPermissions(file, QFile::Permissions()));
  const auto user = ::geteuid();
  constexpr uid_t kNobody = 65534;  // only root would be let in
  ASSERT_TRUE(user != 0 || ::seteuid(kNobody) == 0);
  const OpenProblem problem = ProblemOf(file);
  ASSERT_EQ(::seteuid(user), 0);
  EXPECT_EQ(problem, OpenProblem::Unreadable);
  EXPECT_EQ(reason, QString::fromUtf16(kReasonPermission));
}

TEST_F(CatalogueFileTest, MoreRowsThanTheIndexHoldsAreNoDamage) {
  catalogue.reset();
  {
    SQLite::Database database(file.toStdString(), SQLite::OPEN_READWRITE);
    std::string names, values;
    SQLite::Statement columns(database,
                              "SELECT name FROM pragma_table_info('texts') "
                              "WHERE name NOT IN ('ID', 'Photo')");
    while (columns.executeStep()) {
      names += ", \"" + columns.getColumn(0).getString() + '"';
      values += ", ''";
    }
    database.exec(
        "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 32768) "
        "INSERT INTO texts (Photo" +
        names + ") SELECT '/none/' || x" + values + " FROM n");
  }
  try {
    (void)ProblemOf(file);
    ADD_FAILURE() << "opened";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), error_number::kOverflow);
  }
}

TEST_F(CatalogueFileTest, AFullDiskUndoesTheRowAndSaysSo) {
  const test::SmallDisk disk(folder.path());
  if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount";
  const auto close = qScopeGuard([this] { catalogue.reset(); });
  catalogue.reset();
  ASSERT_TRUE(CreateCatalogueFile(file));
  // Without room for the side files reading goes on.
  const QString ballast = PathOf(u"ballast"_s);
  test::Touch(ballast, QByteArray(1 << 20, 'x'));
  EXPECT_EQ(ProblemOf(file), OpenProblem::Unreadable);
  EXPECT_EQ(reason, u"The disk is full"_s);
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(ProblemOf(file, CatalogueAccess::Reading), OpenProblem::None);
  ASSERT_TRUE(QFile::remove(ballast));
  Reopen();
  for (int i = 0; i < 100 && reason.isEmpty(); ++i)
    reason = Add(u"/none/%1.jpg"_s.arg(i), {}, QByteArray(30001, 'x')).Reason();
  EXPECT_EQ(reason, u"The disk is full"_s);
  const int rows = catalogue->Photos().Count();
  EXPECT_GT(rows, 1);
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
  ASSERT_TRUE(catalogue->Photos().LocateRow(u"/none/0.jpg"_s));
  EXPECT_TRUE(catalogue->Photos().ReadThumbnail());
  Reopen();
  EXPECT_EQ(catalogue->Photos().Count(), rows);
}

// A child is killed while it adds, changes and deletes rows; the file must open as if nothing was.
TEST_F(CatalogueFileTest, SurvivesAKillAtAnyMoment) {
  catalogue.reset();
  for (int round = 0; round < 6; ++round) {
    int underWay[2];
    ASSERT_EQ(::pipe(underWay), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      try {
        ChangeRowsForEver(round, underWay[1]);
      } catch (...) {
      }
      ::_exit(1);  // never back into the tests; the parent notices
    }
    ::close(underWay[1]);
    char byte = 0;
    EXPECT_EQ(::read(underWay[0], &byte, 1), 1);
    ::close(underWay[0]);
    ::usleep(static_cast<useconds_t>(17000 * round));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child ended by itself";
    Reopen();
    EXPECT_EQ(catalogue->CheckIntegrity(), QStringList());
    EXPECT_GT(catalogue->Photos().Count(), 0);
    catalogue.reset();
  }
}

TEST_F(CatalogueFileTest, IntentsLeftByAKillAreSettled) {
  const struct {
    const char* name;
    bool fromExists, toExists, toCatalogued;
    bool follows;
  } cases[] = {{"moved", false, true, false, true},
               {"replaced", false, true, true, true},
               {"notyet", true, false, false, false},
               {"copied", true, true, false, false},
               {"offline", false, false, false, false}};
  for (const auto& c : cases) {
    const QString from = PathOf(QLatin1StringView(c.name) + u".jpg"_s);
    const QString to = PathOf(QLatin1StringView(c.name) + u" new.jpg"_s);
    if (c.fromExists) test::Touch(from);
    if (c.toExists) test::Touch(to);
    if (c.toCatalogued) {
      ASSERT_TRUE(Add(to, {{Column::Notes, u"stale"_s}}));
    }
    ASSERT_TRUE(Add(from, {{Column::Notes, u"mine"_s}}));
    ASSERT_TRUE(catalogue->RecordIntent({u"rename"_s, from, to}));
  }
  // Files that were to go, one of them gone; and one that replaced a catalogued one without having
  // a row itself.
  const QString gone = PathOf(u"gone.jpg"_s), stays = PathOf(u"stays.jpg"_s),
                over = PathOf(u"over.jpg"_s);
  for (const QString& path : {gone, stays, over})
    ASSERT_TRUE(Add(path));
  for (const QString& path : {stays, over})
    test::Touch(path);
  ASSERT_TRUE(catalogue->RecordIntent({u"delete"_s, gone, QString()}));
  ASSERT_TRUE(catalogue->RecordIntent({u"delete"_s, stays, QString()}));
  ASSERT_TRUE(catalogue->RecordIntent({u"move"_s, PathOf(u"unknown.jpg"_s), over}));
  Reopen();
  EXPECT_FALSE(catalogue->Photos().IsCatalogued(gone));
  EXPECT_TRUE(catalogue->Photos().IsCatalogued(stays));
  EXPECT_FALSE(catalogue->Photos().IsCatalogued(over));
  for (const auto& c : cases) {
    const QString from = PathOf(QLatin1StringView(c.name) + u".jpg"_s);
    const QString to = PathOf(QLatin1StringView(c.name) + u" new.jpg"_s);
    EXPECT_EQ(catalogue->Photos().IsCatalogued(c.follows ? from : to), false) << c.name;
    EXPECT_EQ(FieldOf(c.follows ? to : from, Column::Notes), u"mine"_s) << c.name;
    if (c.follows) {
      EXPECT_EQ(FieldOf(to, Column::Filename), GetFileName(to));
    }
  }
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
  // Settled once: what happens to the files later is no business of theirs.
  test::Touch(PathOf(u"offline new.jpg"_s));
  Reopen();
  EXPECT_TRUE(catalogue->Photos().IsCatalogued(PathOf(u"offline.jpg"_s)));
}

TEST_F(CatalogueFileTest, AnIntentEndsTogetherWithItsRow) {
  const QString from = PathOf(u"a.jpg"_s), to = PathOf(u"b.jpg"_s);
  ASSERT_TRUE(Add(from));
  const auto intent = catalogue->RecordIntent({u"rename"_s, from, to});
  ASSERT_TRUE(intent);
  ASSERT_TRUE(catalogue->Photos().LocateRow(from));
  catalogue->Photos().SetField(Column::Photo, to);
  ASSERT_TRUE(catalogue->FinishIntent(*intent));
  catalogue->Photos().CancelRow();
  Reopen();
  EXPECT_TRUE(catalogue->Photos().IsCatalogued(to));
}

TEST_F(CatalogueFileTest, CategoriesKeepTheirOrderAndIgnoreCase) {
  for (const char16_t* name : {u"Travel", u"Änderung", u"Family"})
    ASSERT_TRUE(catalogue->AddCategory(QString::fromUtf16(name)));
  EXPECT_THAT(catalogue->AddCategory(u"äNDERUNG"_s).Reason().toStdString(),
              ::testing::StartsWith("'äNDERUNG' already exists"));
  EXPECT_TRUE(catalogue->DeleteCategory(u"TRAVEL"_s));
  EXPECT_FALSE(catalogue->DeleteCategory(u"Travel"_s));
  Reopen();
  EXPECT_EQ(catalogue->Categories(), (QStringList{u"Änderung"_s, u"Family"_s}));
}

TEST_F(CatalogueFileTest, CompactingKeepsTheRowsAndLosesTheGaps) {
  for (int i = 0; i < 60; ++i)
    ASSERT_TRUE(Add(u"/none/%1.jpg"_s.arg(i), {}, QByteArray(9001, 'x')));
  for (int i = 0; i < 50; ++i) {
    ASSERT_TRUE(catalogue->Photos().MoveTo(0));
    ASSERT_TRUE(catalogue->Photos().DeleteCurrentRow());
  }
  const QString compacted = PathOf(u"temp.mdb"_s);
  ASSERT_TRUE(catalogue->CompactTo(compacted));
  EXPECT_FALSE(catalogue->CompactTo(compacted));
  Reopen();
  EXPECT_LT(QFileInfo(compacted).size() * 3, QFileInfo(file).size());
  OpenProblem problem{};
  const auto opened = Catalogue::Open(compacted, problem);
  ASSERT_EQ(problem, OpenProblem::None);
  EXPECT_EQ(opened->Photos().Index().Paths(), catalogue->Photos().Index().Paths());
  EXPECT_TRUE(opened->CheckIntegrity().isEmpty());
}

TEST_F(CatalogueFileTest, CreatingNeverReplacesAndListsOnlyCatalogues) {
  EXPECT_FALSE(CreateCatalogueFile(file));
  EXPECT_EQ(CreateCatalogueFile(PathOf(u"no folder/x.mdb"_s)).Reason(),
            QString::fromUtf16(kReasonMissing));
  ASSERT_TRUE(CreateCoreFile(PathOf(u"CORE.mdb"_s)));
  ASSERT_TRUE(CreateCatalogueFile(PathOf(u"#a 100%?.mdb"_s)));
  EXPECT_EQ(ProblemOf(PathOf(u"#a 100%?.mdb"_s)), OpenProblem::None);
  ASSERT_TRUE(Add(u"/none/a.jpg"_s));  // its side files stand now
  test::Touch(PathOf(u"old.mdb.bak"_s));
  test::Touch(PathOf(u"old.mdb-journal"_s));
  test::Touch(PathOf(u"notes.txt"_s));
  test::Touch(PathOf(u"core.mdb"_s));  // only the name as the program spells it is taken
  EXPECT_TRUE(Left().contains(u"Photos.mdb-wal"_s));
  EXPECT_EQ(ListCatalogues(folder.path()),
            (QStringList{u"#a 100%?.mdb"_s, u"core.mdb"_s, u"old.mdb.bak"_s, u"Photos.mdb"_s}));
}

TEST_F(CatalogueFileTest, TheSourcesOfTheProgramHaveTheirColumns) {
  SQLite::Database database(file.toStdString(), SQLite::OPEN_READONLY);
  SQLite::Statement photos(database, "SELECT * FROM qryphoto");
  ASSERT_EQ(photos.getColumnCount(), kColumnCount);
  for (int i = 0; i < kColumnCount; ++i)
    EXPECT_EQ(QString::fromUtf8(photos.getColumnName(i)), ColumnName(static_cast<Column>(i)));
  SQLite::Statement categories(database, "SELECT ID, Categories FROM qrycategories");
  EXPECT_EQ(categories.getColumnCount(), 2);
}

TEST_F(CatalogueFileTest, CoreKeepsSettingsAndEditors) {
  const QString path = PathOf(u"CORE.mdb"_s);
  ASSERT_TRUE(CreateCoreFile(path));
  OpenProblem problem{};
  auto core = CoreDatabase::Open(path, problem);
  ASSERT_TRUE(core);
  EXPECT_EQ(core->ReadSettings(), Settings());
  EXPECT_TRUE(core->Editors().empty());
  const Settings changed{u"Custom"_s, u"/a 'b'"_s, u"-h"_s, u"-e"_s, u"-a"_s, u"false"_s};
  const std::vector<ExternalEditor> editors{{u"Z"_s, u"/bin/z"_s}, {u"A"_s, u"/bin/a"_s}};
  ASSERT_TRUE(core->WriteSettings(changed));
  ASSERT_TRUE(core->WriteEditors({{u"old"_s, u"/bin/old"_s}}));
  ASSERT_TRUE(core->WriteEditors(editors));
  core.reset();
  EXPECT_FALSE(CoreDatabase::Open(file, problem));
  EXPECT_EQ(problem, OpenProblem::Damaged);
  core = CoreDatabase::Open(path, problem);
  ASSERT_TRUE(core);
  EXPECT_EQ(core->ReadSettings(), changed);
  EXPECT_EQ(core->Editors(), editors);
  core.reset();
  // Whichever page breaks: no core database that fails later.
  const QByteArray good = Content(path);
  int refused = 0;
  for (qsizetype page = 1; page < good.size() / 4096; ++page) {
    QByteArray bad = good;
    bad.replace(page * 4096, 4096, QByteArray(4096, '\xFE'));
    test::Touch(path, bad);
    if ((core = CoreDatabase::Open(path, problem))) {
      EXPECT_NO_THROW((void)(core->ReadSettings(), core->Editors()));
      core.reset();
      continue;
    }
    EXPECT_EQ(problem, OpenProblem::Damaged);
    ++refused;
  }
  EXPECT_GE(refused, 2);
}

}  // namespace
}  // namespace zqm
