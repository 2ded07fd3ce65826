// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/pdf_photos.h"
#include "shell/files.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

const QString kExists = QString::fromUtf16(kReasonExists);

class PdfPhotos : public testing::Test {
 protected:
  PdfPhotos() {
    QDir().mkpath(scratch_.Path("a"));
    QDir().mkpath(scratch_.Path("b"));
    options_.folder = scratch_.Path("b");
  }
  QString Photo(const char* name, int width = 40, int height = 30) {
    return scratch_.Write(name, test::SampleJpeg(width, height));
  }
  /// A picture that hides red behind full transparency.
  QString Hidden(const char* name) {
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(qRgba(255, 0, 0, 0));
    const QString path = scratch_.Path(name);
    EXPECT_TRUE(picture.save(path, "PNG"));
    return path;
  }
  BatchResult Create(const QStringList& photos) {
    const Result<BatchResult> result = CreatePdf(photos, options_, {});
    EXPECT_TRUE(result);
    return result ? *result : BatchResult();
  }
  BatchResult CreateBook(const QStringList& photos, const char16_t* name = u"book") {
    options_.type = PdfType::OneForAllImages;
    options_.name = QString::fromUtf16(name);
    return Create(photos);
  }
  QByteArray Pdf(const char* name) const { return test::Scratch::Read(scratch_.Path(name)); }
  QStringList Made() const {
    return QDir(options_.folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  test::Scratch scratch_;
  PdfOptions options_;
};

TEST_F(PdfPhotos, OptionsAreCheckedInTheirOrder) {
  struct Case {
    PdfType type;
    const char16_t* folder;
    const char16_t* name;
    const char16_t* message;  ///< null when they will do
  };
  constexpr auto kAll = PdfType::OneForAllImages;
  constexpr auto kEach = PdfType::OneForEachImage;
  for (const Case& c : {Case{kAll, u"", u"", u"Select destination folder."},
                        {kAll, u"/b", u"", u"Enter the name of the PDF Document."},
                        {kAll, u"/b", u"a/b",
                         u"Invalid PDF File name. A PDF File name cannot contain the following "
                         u"characters: \\ / : * ? \" < > |"},
                        {kAll, u"/b", u"ü.pdf", nullptr},
                        {kEach, u"", u"", u"Select destination folder."},
                        {kEach, u"/b", u"a/b", nullptr}}) {
    PdfOptions options;
    options.type = c.type;
    options.folder = QString::fromUtf16(c.folder);
    options.name = QString::fromUtf16(c.name);
    const Outcome checked = CheckPdf(options);
    EXPECT_EQ(bool(checked), c.message == nullptr);
    if (c.message) {
      EXPECT_EQ(checked.Reason(), QString::fromUtf16(c.message));
    }
  }
  EXPECT_EQ(PdfCompressions()[4].compression, options_.compression) << "the dialog's choice";
}

TEST_F(PdfPhotos, ABookHasAPageForEachPhotoThatStands) {
  const QStringList photos{Photo("a/1.jpg", 40, 30), scratch_.Path("a/gone.jpg"),
                           scratch_.Write("a/broken.jpg", "not a picture"),
                           Photo("a/2.jpg", 24, 50)};
  options_.title = u"Two days"_s;
  const BatchResult result = CreateBook(photos, u"book.pdf");
  EXPECT_EQ(result.done, 2);
  ASSERT_EQ(result.failures.rows.size(), 1U);
  EXPECT_EQ(result.failures.rows[0].File, photos[2]);
  EXPECT_EQ(result.failures.label, u"The following pdf files could not be created"_s);
  EXPECT_EQ(Made(), QStringList{u"book.pdf.pdf"_s});
  const QByteArray pdf = Pdf("b/book.pdf.pdf");
  EXPECT_EQ(pdf.count("/MediaBox"), 2);
  EXPECT_LT(pdf.indexOf("[ 0 0 40 30 ]"), pdf.indexOf("[ 0 0 24 50 ]"));
  EXPECT_TRUE(pdf.contains("[ 0 0 40 30 ]"));
  EXPECT_TRUE(pdf.contains("/Title (Two days)"));
  EXPECT_TRUE(pdf.contains("/Creator (Zolmira QM)"));
}

TEST_F(PdfPhotos, ABookThatStandsIsSkippedOrOverwritten) {
  const QString photo = Photo("a/1.jpg");
  const QString old = scratch_.Write("b/Book.PDF", "old");
  const BatchResult skipped = CreateBook({photo, photo});
  ASSERT_EQ(skipped.failures.rows.size(), 1U);
  EXPECT_EQ(skipped.failures.rows[0], (FailureRow{scratch_.Path("b/book.pdf"), kExists}));
  EXPECT_EQ(Pdf("b/Book.PDF"), "old");

  options_.existing = ExistingFiles::Overwrite;
  EXPECT_EQ(CreateBook({photo, photo}).done, 2);
  EXPECT_EQ(Made(), QStringList{u"Book.PDF"_s});
  EXPECT_TRUE(Pdf("b/Book.PDF").startsWith("%PDF-"));
}

TEST_F(PdfPhotos, EachPhotoHasAFileAndTheSecondOfANameMeetsTheFirst) {
  const QStringList photos{Photo("a/1.jpg"), Photo("a/1.jpeg", 24, 20), Photo("a/2.x.jpg"),
                           scratch_.Path("a/gone.jpg")};
  const BatchResult result = Create(photos);
  EXPECT_EQ(result.done, 2);
  ASSERT_EQ(result.failures.rows.size(), 1U);
  EXPECT_EQ(result.failures.rows[0], (FailureRow{scratch_.Path("b/1.pdf"), kExists}));
  EXPECT_EQ(Made(), (QStringList{u"1.pdf"_s, u"2.x.pdf"_s}));
  EXPECT_TRUE(Pdf("b/1.pdf").contains("[ 0 0 40 30 ]"));

  options_.existing = ExistingFiles::Overwrite;
  EXPECT_EQ(Create(photos).done, 3);
  EXPECT_TRUE(Pdf("b/1.pdf").contains("[ 0 0 24 20 ]"));
}

TEST_F(PdfPhotos, APhotoIsNeverOverwritten) {
  const QString photo = Photo("b/1.pdf");
  const QByteArray before = Pdf("b/1.pdf");
  options_.existing = ExistingFiles::Overwrite;
  EXPECT_EQ(Create({photo}).failures.rows.size(), 1U);
  EXPECT_EQ(CreateBook({photo}, u"1").failures.rows.size(), 1U);
  EXPECT_EQ(Pdf("b/1.pdf"), before);
}

TEST_F(PdfPhotos, WhatIsTransparentIsWhiteOnlyInABook) {
  options_.compression = PdfCompression::None;
  const QString photo = Hidden("a/clear.png");
  EXPECT_EQ(Create({photo}).done, 1);
  EXPECT_TRUE(Pdf("b/clear.pdf").contains(QByteArray("\xFF\0\0", 3).repeated(16 * 16)));
  EXPECT_EQ(CreateBook({photo}).done, 1);
  EXPECT_TRUE(Pdf("b/book.pdf").contains(QByteArray(16 * 16 * 3, '\xFF')));
}

TEST_F(PdfPhotos, AFileThatCannotBeWrittenEndsTheRun) {
  options_.folder = scratch_.Path("absent");
  const QStringList photos{Photo("a/1.jpg"), Photo("a/2.jpg")};
  for (const auto type : {PdfType::OneForEachImage, PdfType::OneForAllImages}) {
    options_.type = type;
    options_.name = u"book"_s;
    const Result<BatchResult> result = CreatePdf(photos, options_, {});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.Reason(), u"Could not create the PDF File(s). Access is denied."_s);
  }
}

TEST_F(PdfPhotos, NoFileIsMadeOfNoPage) {
  const BatchResult result = CreateBook({scratch_.Write("a/broken.jpg", "no picture")});
  EXPECT_EQ(result.done, 0);
  EXPECT_EQ(result.failures.rows.size(), 1U);
  EXPECT_EQ(Create({scratch_.Path("a/broken.jpg")}).done, 0);
  EXPECT_TRUE(Made().isEmpty());
}

}  // namespace
}  // namespace zqm
