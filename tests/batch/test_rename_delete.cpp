// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/delete_photos.h"
#include "batch/rename_photos.h"
#include "tests/batch/batch_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

const QString kDuplicates =
    u"Renaming this file would create duplicates in the destination folder"_s;

class Rename : public test::BatchTest {
 protected:
  BatchResult Run(const QStringList& paths, const QStringList& names) {
    return RenamePhotos(TheCatalogue(), paths, names, &view_, {});
  }
};

RenameOptions Sequence(const QString& text, const QString& start) {
  return {.mode = RenameMode::Sequential, .customText = text, .startNumber = start};
}
RenameOptions Replace(const QString& searchFor, const QString& replaceBy) {
  return {.mode = RenameMode::SearchAndReplace, .searchFor = searchFor, .replaceBy = replaceBy};
}

TEST(RenamePreview, OfEachMode) {
  const QStringList paths{u"/p/a.b.JPG"_s, u"/p/bb"_s, u"/p/B.png"_s};
  EXPECT_EQ(RenamePreview(paths, Sequence(u"Föhn"_s, u"007"_s)),
            (QStringList{u"Föhn-007.JPG"_s, u"Föhn-8."_s, u"Föhn-9.png"_s}));
  EXPECT_EQ(RenamePreview(paths, Sequence(u"x"_s, u"1.5"_s)),
            (QStringList{u"x-1.5.JPG"_s, u"x-2.5."_s, u"x-3.5.png"_s}));
  EXPECT_EQ(RenamePreview(paths, Sequence(u"x"_s, u"-1"_s)),
            (QStringList{u"x--1.JPG"_s, u"x-0."_s, u"x-1.png"_s}));
  EXPECT_EQ(RenamePreview(paths, Replace(u"b"_s, u"Ü"_s)),
            (QStringList{u"a.Ü.JPG"_s, u"ÜÜ."_s, u"B.png"_s}));
  EXPECT_EQ(RenamePreview(paths, Replace(QString(), u"Ü"_s)),
            (QStringList{u"a.b.JPG"_s, u"bb."_s, u"B.png"_s}));
  EXPECT_EQ(RenamePreview({u"/p/a.b.JPG"_s}, {.mode = RenameMode::SingleFile, .newName = u"c"_s}),
            QStringList{u"c.JPG"_s});
  EXPECT_EQ(DefaultCustomText(QDate(2026, 1, 2)), u"2026-01-02"_s);
}

TEST(RenamePreview, CountsInTheUsersNumbers) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German));
  EXPECT_EQ(RenamePreview({u"/a.jpg"_s, u"/b.jpg"_s}, Sequence(u"x"_s, u"1,5"_s)),
            (QStringList{u"x-1,5.jpg"_s, u"x-2,5.jpg"_s}));
  QLocale::setDefault(before);
}

TEST(CheckRename, TheFirstThatFailsIsTold) {
  const QString characters =
      u"File name cannot contain the following characters: \\ / : * ? \" < > |"_s;
  const auto told = [](const RenameOptions& options) { return CheckRename(options).Reason(); };
  EXPECT_EQ(told(Sequence(QString(), QString())), u"The 'Custom Text' field is empty."_s);
  EXPECT_EQ(told(Sequence(u"a|b"_s, QString())), u"Enter start number."_s);
  EXPECT_EQ(told(Sequence(u"a|b"_s, u"abc"_s)),
            u"Enter a valid number in the start number field."_s);
  EXPECT_EQ(told(Sequence(u"a|b"_s, u"1"_s)), characters);
  EXPECT_EQ(told(Sequence(u"2026-01-02"_s, u"007"_s)), QString());
  EXPECT_EQ(told(Replace(QString(), QString())), u"The 'Search for' field is empty."_s);
  EXPECT_EQ(told(Replace(u"/"_s, QString())), u"The 'Replace by' field is empty."_s);
  EXPECT_EQ(told(Replace(u"/"_s, u"?"_s)), characters);
  EXPECT_EQ(told({.mode = RenameMode::SingleFile}), u"Enter the new name of the image."_s);
  EXPECT_EQ(told({.mode = RenameMode::SingleFile, .newName = u"a/b"_s}), characters);
}

TEST_F(Rename, RowAndListFollow) {
  const QString path = Photo("a/1.jpg"), other = In("a/Föhn's.jpg");
  Note(path, u"mine"_s);
  EXPECT_EQ(Run({path}, {u"Föhn's.jpg"_s}).done, 1);
  EXPECT_EQ(Stored(other, Column::Notes), u"mine"_s);
  EXPECT_EQ(Stored(other, Column::Filename), u"Föhn's.jpg"_s);
  EXPECT_EQ(Stored(other, Column::ParentFolder), In("a"));
  EXPECT_EQ(view_.told, QStringList{path + u" > "_s + other});
  // A row of a photo that is long gone makes room.
  Note(other, u"stays"_s);
  const QString stale = Photo("a/stale.jpg");
  QFile::remove(stale);
  EXPECT_EQ(Run({other}, {u"stale.jpg"_s}).done, 1);
  EXPECT_EQ(Photos().Count(), 1);
  EXPECT_EQ(Stored(stale, Column::Notes), u"stays"_s);
}

TEST_F(Rename, NamesThatStandAreKept) {
  const QString a = Photo("a/1.jpg"), b = Photo("a/2.jpg");
  // Onto itself, in other letters, onto one that is renamed later, and one that has been.
  EXPECT_EQ(
      ReasonsOf(Run({a, a, a, b, a}, {u"1.jpg"_s, u"1.JPG"_s, u"2.jpg"_s, u"3.jpg"_s, u"2.jpg"_s})),
      (QStringList{kDuplicates, kDuplicates, kDuplicates}));
  EXPECT_EQ(Names("a"), (QStringList{u"2.jpg"_s, u"3.jpg"_s}));
  EXPECT_EQ(ReasonsOf(Run({a}, {u"4.jpg"_s})), QStringList{u"File is offline or missing"_s});
  EXPECT_EQ(Photos().Index().Paths(), (QStringList{In("a/2.jpg"), In("a/3.jpg")}));
}

TEST_F(Rename, NamesThatTheFileSystemRefuses) {
  const QString path = Photo("a/1.jpg");
  const QString longest(251, u'n');
  EXPECT_EQ(Run({path}, {longest + u".jpg"_s}).done, 1);
  const QString there = PathIn(In("a"), longest + u".jpg"_s);
  EXPECT_EQ(ReasonsOf(Run({there}, {longest + u"n.jpg"_s})),
            QStringList{u"New name contain invalid characters"_s});
  EXPECT_TRUE(Photos().IsCatalogued(there));
  EXPECT_TRUE(FileExists(there));
}

using Delete = test::BatchTest;

TEST_F(Delete, FilesAndRowsGoTogether) {
  const QString a = Photo("a/1.jpg"), offline = Photo("a/2.jpg"), plain = Write("a/3.jpg");
  QFile::remove(offline);
  const BatchResult result = DeletePhotos(TheCatalogue(), {a, a, offline, plain}, &view_, {});
  EXPECT_EQ(result.done, 2);
  EXPECT_EQ(ReasonsOf(result),
            (QStringList{u"File is offline or missing"_s, u"File is offline or missing"_s}));
  EXPECT_EQ(Names("a"), QStringList());
  EXPECT_EQ(Photos().Index().Paths(), QStringList{offline});
  EXPECT_EQ(view_.told, (QStringList{u"- "_s + a, u"- "_s + plain, u"live"_s}));
}

TEST_F(Delete, RemovingTakesTheRowOnly) {
  const QString a = Photo("a/1.jpg"), offline = Photo("a/2.jpg"), plain = Write("a/3.jpg");
  QFile::remove(offline);
  EXPECT_TRUE(RemovePhotos(TheCatalogue(), {a, offline, plain, a}, &view_, {}).failures.Empty());
  EXPECT_EQ(Photos().Count(), 0);
  EXPECT_EQ(Names("a"), (QStringList{u"1.jpg"_s, u"3.jpg"_s}));
  EXPECT_EQ(view_.told,
            (QStringList{u"! "_s + a, u"- "_s + offline, u"! "_s + plain, u"! "_s + a, u"live"_s}));
  EXPECT_EQ(TheCatalogue().CheckIntegrity(), QStringList());
}

TEST_F(Delete, RejectedAreThoseThatAreShown) {
  const QString a = Photo("a/1.jpg"), b = Photo("a/2.jpg"), c = Photo("a/3.jpg");
  for (const QString& path : {a, c}) {
    ASSERT_TRUE(Photos().LocateRow(path));
    Photos().SetField(Column::Flag, u"Rejected"_s);
  }
  ASSERT_TRUE(Photos().MoveFirst());
  EXPECT_EQ(RejectedPhotos(TheCatalogue(), {b, a, Write("a/4.jpg")}), QStringList{a});
}

}  // namespace
}  // namespace zqm
