// SPDX-License-Identifier: GPL-3.0-or-later
#include <SQLiteCpp/SQLiteCpp.h>

#include "catalogue/photo_recordset.h"
#include "catalogue/thumbnail_chunks.h"
#include "shell/error.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class RecordsetTest : public test::CatalogueTest {
 protected:
  void SetUp() override {
    CatalogueTest::SetUp();
    for (const char16_t name : u"abcde"_s.toStdU16String())
      ASSERT_TRUE(Add(u"/none/"_s + QChar(name) + u".jpg"_s, {{Column::Flag, u"Unflagged"_s}}));
  }
  PhotoRecordset& Photos() { return catalogue->Photos(); }
};

TEST_F(RecordsetTest, KeepsEveryTextOfEveryColumnThroughAReopening) {
  const QString odd = u"' \" [x] \u00E9\u4E2D\U0001F600\n%"_s + QChar(u'\0') + u"end"_s;
  test::Fields fields;
  for (const ColumnInfo& info : Columns())
    if (info.column != Column::ID && info.column != Column::Thumbnail)
      fields[info.column] = ColumnName(info.column) + odd;
  fields[Column::Photo] = u"/none/all.jpg"_s;
  ASSERT_TRUE(Add(u"/none/all.jpg"_s, fields, "thumbnail"));
  Reopen();
  ASSERT_TRUE(Photos().LocateRow(u"/none/ALL.jpg"_s));
  for (const auto& [column, text] : fields)
    EXPECT_EQ(Photos().GetField(column), text);
  EXPECT_EQ(Photos().GetField(Column::ID), u"6"_s);
  EXPECT_EQ(*Photos().ReadThumbnail(), "thumbnail");
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
}

TEST_F(RecordsetTest, FindsTheRowsBehindADeletedOne) {
  ASSERT_TRUE(Photos().LocateRow(u"/none/b.jpg"_s));
  ASSERT_TRUE(Photos().DeleteCurrentRow());
  EXPECT_EQ(Photos().Position(), -1);
  EXPECT_FALSE(Photos().IsCatalogued(u"/none/b.jpg"_s));
  ASSERT_TRUE(Photos().LocateRow(u"/none/d.jpg"_s));
  EXPECT_EQ(Photos().Position(), 2);
  EXPECT_EQ(Photos().GetField(Column::Photo), u"/none/d.jpg"_s);
  // An ID is never used again, not even the last one's.
  ASSERT_TRUE(Photos().LocateRow(u"/none/e.jpg"_s));
  ASSERT_TRUE(Photos().DeleteCurrentRow());
  Reopen();
  ASSERT_TRUE(Add(u"/none/new.jpg"_s));
  EXPECT_EQ(Photos().GetField(Column::ID), u"6"_s);
  EXPECT_EQ(Photos().Position(), 3);
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
}

TEST_F(RecordsetTest, WritesABatchWithItsLastRowAtTheMoveToTheFirst) {
  for (int i = 0; i < Photos().Count(); ++i) {
    ASSERT_TRUE(Photos().MoveTo(i));
    Photos().SetField(Column::Rating, QString::number(i));
  }
  {
    OpenProblem problem{};
    const auto other = Catalogue::Open(file, problem);
    ASSERT_TRUE(other->Photos().MoveTo(0));
    EXPECT_EQ(other->Photos().GetField(Column::Rating), u""_s) << "gathered, not committed";
  }
  ASSERT_TRUE(Photos().MoveFirst());
  Reopen();
  for (int i = 0; i < Photos().Count(); ++i) {
    ASSERT_TRUE(Photos().MoveTo(i));
    EXPECT_EQ(Photos().GetField(Column::Rating), QString::number(i));
  }
}

TEST_F(RecordsetTest, ALossThatLocatingCannotSayIsSaidByTheNextCommit) {
  SQLite::Database(file.toStdString(), SQLite::OPEN_READWRITE)
      .exec("DELETE FROM texts WHERE Photo = '/none/b.jpg'");
  const std::pair<const char*, std::function<Outcome()>> calls[] = {
      {"MoveFirst", [&] { return Photos().MoveFirst(); }},
      {"BeginNewRow", [&] { return Photos().BeginNewRow(); }},
      {"CommitRow", [&] { return Photos().CommitRow(); }},
      {"DeleteCurrentRow", [&] { return Photos().DeleteCurrentRow(); }}};
  for (const auto& [name, call] : calls) {
    for (const QString& path : {u"/none/a.jpg"_s, u"/none/b.jpg"_s}) {
      ASSERT_TRUE(Photos().LocateRow(path)) << name;
      Photos().SetField(Column::Flag, u"Flagged"_s);
    }
    EXPECT_FALSE(Photos().LocateRow(u"/none/c.jpg"_s)) << name;
    ASSERT_TRUE(Photos().LocateRow(u"/none/d.jpg"_s)) << name;  // a caller that takes no notice
    Photos().SetField(Column::Flag, u"Flagged"_s);
    EXPECT_EQ(call().Reason(), QString::fromUtf16(kReasonNotCatalogued)) << name;
    EXPECT_TRUE(Photos().MoveFirst()) << name << ": said once";
  }
  Reopen();
  for (const QString& path : {u"/none/a.jpg"_s, u"/none/d.jpg"_s})
    EXPECT_EQ(FieldOf(path, Column::Flag), u"Unflagged"_s) << "all or nothing";
  EXPECT_EQ(Photos().Count(), 4);
}

TEST_F(RecordsetTest, CancelTakesBackRowsAndPaths) {
  for (const char16_t* name : {u"a", u"b"}) {
    ASSERT_TRUE(Photos().LocateRow(u"/none/%1.jpg"_s.arg(QString::fromUtf16(name))));
    Photos().SetField(Column::Photo, u"/moved/%1.jpg"_s.arg(QString::fromUtf16(name)));
  }
  EXPECT_TRUE(Photos().IsCatalogued(u"/moved/a.jpg"_s));
  Photos().CancelRow();
  EXPECT_EQ(FieldOf(u"/none/a.jpg"_s, Column::Photo), u"/none/a.jpg"_s);
  EXPECT_FALSE(Photos().IsCatalogued(u"/moved/b.jpg"_s));

  ASSERT_TRUE(Photos().BeginNewRow());
  Photos().SetField(Column::Photo, u"/none/never.jpg"_s);
  EXPECT_EQ(Photos().Position(), -1);
  Photos().CancelRow();
  ASSERT_TRUE(Photos().BeginNewRow());
  Photos().SetField(Column::Photo, u"/none/never.jpg"_s);
  ASSERT_TRUE(Photos().MoveTo(0));  // leaving it forgets it too
  EXPECT_EQ(Photos().Count(), 5);
  EXPECT_TRUE(catalogue->CheckIntegrity().isEmpty());
}

TEST_F(RecordsetTest, ProgramFaultsAreErrors) {
  EXPECT_THROW(Photos().SetField(Column::ID, u"7"_s), Error);
  EXPECT_THROW(Photos().SetField(Column::Thumbnail, u"7"_s), Error);
  EXPECT_THROW((void)Photos().MoveTo(5), Error);
  ASSERT_TRUE(Photos().BeginNewRow());
  EXPECT_THROW((void)Photos().CommitRow(), Error);
  Photos().CancelRow();
  EXPECT_THROW((void)Photos().GetField(Column::Notes), Error);
}

TEST_F(RecordsetTest, RefusesThumbnailsOfWholeThousands) {
  const QByteArray jpegStart("\xFF\xD8\xFF\xE0", 4);
  const struct {
    QByteArray bytes;
    bool readable;
  } cases[] = {{"", false},
               {"x", true},
               {QByteArray(2000, 'x'), false},
               {QByteArray(2001, 'x'), true},
               {jpegStart + QByteArray(1996, 'x'), true}};  // our own writer pads a JPEG
  for (const auto& c : cases) {
    ASSERT_TRUE(Photos().LocateRow(u"/none/c.jpg"_s));
    Photos().WriteThumbnail(c.bytes);
    ASSERT_TRUE(Photos().MoveFirst());
    ASSERT_TRUE(Photos().LocateRow(u"/none/c.jpg"_s));
    const auto read = Photos().ReadThumbnail();
    EXPECT_EQ(static_cast<bool>(read), c.readable) << c.bytes.size();
    if (read) {
      EXPECT_TRUE(*read == c.bytes || read->size() == c.bytes.size() + 4);
    }
    if (!read) {
      EXPECT_EQ(read.Reason(), QString::fromUtf16(kReasonThumbnail));
    }
  }
}

TEST(PadThumbnail, TheCommentIsASegmentOfItsOwn) {
  const QByteArray jpeg = QByteArray("\xFF\xD8\xFF\xE0", 4) + QByteArray(996, 'x');
  const QByteArray padded = PadThumbnail(jpeg);
  EXPECT_EQ(padded.left(6).toHex(), "ffd8fffe0002");
  EXPECT_EQ(padded.mid(6), jpeg.mid(2));
  EXPECT_EQ(PadThumbnail(padded), padded);
}

TEST_F(RecordsetTest, AFullCatalogueTakesNoFurtherRow) {
  while (Photos().Count() < RowIndex::kMostRows)
    ASSERT_TRUE(Add(u"/none/%1.jpg"_s.arg(Photos().Count())));
  EXPECT_EQ(Photos().BeginNewRow().Reason(), u"The database is full"_s);
  Reopen();
  EXPECT_EQ(Photos().Count(), RowIndex::kMostRows);
  ASSERT_TRUE(Photos().LocateRow(u"/none/32766.jpg"_s));
  EXPECT_EQ(Photos().Position(), 32766);
  ASSERT_TRUE(Photos().DeleteCurrentRow());
  EXPECT_TRUE(Photos().BeginNewRow());
}

}  // namespace
}  // namespace zqm
