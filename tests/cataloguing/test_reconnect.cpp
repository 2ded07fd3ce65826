// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "cataloguing/folder_import.h"
#include "cataloguing/reconnect.h"
#include "cataloguing/user_fields.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Reconnect : public test::CatalogueTest {
 protected:
  QString Photo(const QString& name) {
    const QString path = PathOf(name);
    QDir().mkpath(QFileInfo(path).path());
    test::Touch(path);
    return path;
  }
  QString Catalogued(const QString& name) {
    const QString path = PathOf(name);
    EXPECT_TRUE(Add(
        path, {{Column::ParentFolder, QFileInfo(path).path()}, {Column::Notes, u"of "_s + name}}));
    return path;
  }
  FailureList Run(const QString& from, const QString& to) {
    return ReconnectFolder(*catalogue, PathOf(from), PathOf(to), [](int, int) {});
  }
  QString NotesAt(const QString& name) { return FieldOf(PathOf(name), Column::Notes); }
};

TEST_F(Reconnect, RowsBelowTheFolderFollow) {
  Catalogued(u"old%_[1]/a.jpg"_s);
  Catalogued(u"old%_[1]/sub/b.jpg"_s);
  Catalogued(u"oldXX1/c.jpg"_s);
  Catalogued(u"old%_[1] beside/d.jpg"_s);
  for (const QString& name : {u"new/a.jpg"_s, u"new/sub/b.jpg"_s, u"new/c.jpg"_s})
    Photo(name);
  int rows = 0;
  const FailureList failures = ReconnectFolder(*catalogue, PathOf(u"old%_[1]/"_s), PathOf(u"new"_s),
                                               [&rows](int, int total) { rows = total; });
  EXPECT_EQ(rows, 2);
  EXPECT_TRUE(failures.Empty());
  Reopen();
  EXPECT_EQ(NotesAt(u"new/a.jpg"_s), u"of old%_[1]/a.jpg"_s);
  EXPECT_EQ(NotesAt(u"new/sub/b.jpg"_s), u"of old%_[1]/sub/b.jpg"_s);
  EXPECT_EQ(FieldOf(PathOf(u"new/sub/b.jpg"_s), Column::ParentFolder), PathOf(u"new/sub"_s));
  EXPECT_EQ(CatalogueFolders(*catalogue),
            (QStringList{PathOf(u"new"_s), PathOf(u"new/sub"_s), PathOf(u"oldXX1"_s),
                         PathOf(u"old%_[1] beside"_s)}));
  EXPECT_EQ(catalogue->CheckIntegrity(), QStringList());
}

TEST_F(Reconnect, EachRowIsJudgedAlone) {
  const QString lost = Catalogued(u"old/lost.jpg"_s);
  const QString taken = Catalogued(u"old/taken.jpg"_s);
  Catalogued(u"old/fine.jpg"_s);
  Catalogued(u"new/taken.jpg"_s);
  Photo(u"new/taken.jpg"_s);
  Photo(u"new/fine.jpg"_s);
  const FailureList failures = Run(u"old"_s, u"new"_s);
  EXPECT_EQ(failures.label, u"The path of the following files could not be updated."_s);
  const std::vector<FailureRow> expected = {
      {lost, u"File could not be located in the specified folder"_s},
      {taken, u"Changing the path of this file will create duplicates in the database"_s}};
  EXPECT_EQ(failures.rows, expected);
  EXPECT_EQ(NotesAt(u"new/fine.jpg"_s), u"of old/fine.jpg"_s);
  EXPECT_EQ(NotesAt(u"old/taken.jpg"_s), u"of old/taken.jpg"_s);
}

TEST_F(Reconnect, OddFolders) {
  // Onto itself: every row is there already.
  Photo(u"same/a.jpg"_s);
  Catalogued(u"same/a.jpg"_s);
  EXPECT_EQ(Run(u"same"_s, u"same"_s).rows.size(), 1U);
  // The folder's text a second time in a path changes there too.
  const QString root = folder.path();
  Catalogued(u"x/sub"_s + root + u"/x/b.jpg"_s);
  const QString changed = PathOf(u"y/sub"_s) + root + u"/y/b.jpg"_s;
  QDir().mkpath(QFileInfo(changed).path());
  test::Touch(changed);
  EXPECT_TRUE(Run(u"x"_s, u"y"_s).Empty());
  EXPECT_EQ(FieldOf(changed, Column::Notes), u"of x/sub"_s + root + u"/x/b.jpg"_s);
  // Only the spelling of the folder has changed.
  Catalogued(u"Case/c.jpg"_s);
  Photo(u"case/c.jpg"_s);
  EXPECT_TRUE(Run(u"Case"_s, u"case"_s).Empty());
  EXPECT_EQ(catalogue->Photos().Index().Paths().back(), PathOf(u"case/c.jpg"_s));
}

TEST_F(Reconnect, ARunThatCantBeWrittenChangesNothing) {
  const QString path = Catalogued(u"old/a.jpg"_s);
  Photo(u"new/a.jpg"_s);
  Reopen(CatalogueAccess::Reading);
  const std::vector<FailureRow> expected = {{path, u"The database is read-only"_s}};
  EXPECT_EQ(Run(u"old"_s, u"new"_s).rows, expected);
  EXPECT_EQ(NotesAt(u"old/a.jpg"_s), u"of old/a.jpg"_s);
}

// ---- Rebuilding ---------------------------------------------------------------------------------

TEST_F(Reconnect, RebuildingReadsFilesAndKeepsWhatTheUserGave) {
  const QString path = Photo(u"a.jpg"_s);
  test::Touch(path, test::SampleJpeg(300, 200, {}, {{90, u"Graz"}}));
  ASSERT_TRUE(Add(path, {{Column::Notes, u"mine"_s},
                         {Column::Flag, u"Rejected"_s},
                         {Column::City, u"Linz"_s},
                         {Column::CameraMake, u"of an older file"_s}}));
  const QString unknown = Photo(u"unknown.jpg"_s);
  const QString broken = Photo(u"broken.jpg"_s);
  ASSERT_TRUE(Add(broken, {{Column::City, u"Wels"_s}}, QByteArray(11, 't')));
  const ImportResult result =
      RebuildPhotos({path, unknown, broken, PathOf(u"gone.jpg"_s)}, ReadRequest(), *catalogue, {});
  EXPECT_EQ(result.added, 1);
  const std::vector<FailureRow> expected = {
      {unknown, u"File is not in the database"_s},
      {broken, u"File could not be read as an image"_s},
      {PathOf(u"gone.jpg"_s), u"File is offline or missing"_s}};
  EXPECT_EQ(result.failures.rows, expected);
  Reopen();
  const test::Fields fields = {{Column::Notes, u"mine"_s},
                               {Column::Flag, u"Rejected"_s},
                               {Column::City, u"Graz"_s},
                               {Column::CameraMake, u""_s},
                               {Column::ImageWidth, u"300"_s}};
  for (const auto& [column, text] : fields)
    EXPECT_EQ(FieldOf(path, column), text) << ColumnName(column).toStdString();
  EXPECT_EQ(QImage::fromData(*catalogue->Photos().ThumbnailOf(path)).size(), QSize(200, 133));
  EXPECT_EQ(FieldOf(broken, Column::City), u"Wels"_s);
  EXPECT_EQ(catalogue->Photos().ThumbnailOf(broken)->size(), 11);
}

}  // namespace
}  // namespace zqm
