// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>

#include "tests/app/zqm_process.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class PrintCommand : public ::testing::Test {
 protected:
  test::Ran Print(const QStringList& arguments) {
    return test::RunZqm(QStringList{u"--home"_s, scratch_.Path("home"), u"print"_s} + arguments);
  }
  QByteArray Out() const { return test::Scratch::Read(scratch_.Path("out.pdf")); }

  test::Scratch scratch_;
  QString photo_ = scratch_.Write("Föhn d'été.jpg", test::SampleJpeg(60, 40));
  QString pdf_ = scratch_.Path("out.pdf");
};

TEST_F(PrintCommand, PagesComeOutAsAPdf) {
  const QStringList template_{u"--template"_s, u"4 photos A4"_s, u"--pdf"_s, pdf_};
  const QStringList five{photo_, photo_, photo_, photo_, photo_};
  const test::Ran printed = Print(template_ + QStringList{u"--copies"_s, u"2"_s} + five);
  EXPECT_EQ(printed.exitCode, 0);
  EXPECT_EQ(printed.out, u"You have successfully printed your pictures.\n");
  EXPECT_EQ(Out().count("/Type /Page\n"), 4);
  // A PDF that stands is replaced; what can't be printed is told, the others are printed.
  const QString bad = scratch_.Write("bad.jpg", "no picture"), gone = scratch_.Path("gone.jpg");
  const test::Ran some = Print(template_ + QStringList{bad, gone, photo_});
  EXPECT_EQ(some.exitCode, 1);
  EXPECT_TRUE(some.err.contains(bad + u": File could not be read as an image"_s));
  EXPECT_TRUE(some.err.contains(gone + u": File is offline or missing"_s));
  EXPECT_EQ(Out().count("/Type /Page\n"), 1);
  EXPECT_EQ(scratch_.Names().size(), 4);  // no temporary file
}

TEST_F(PrintCommand, WhatCantBePrintedLeavesTheFile) {
  const QString text = scratch_.Write("notes.pdf", "my notes");
  const QByteArray photo = test::Scratch::Read(photo_);
  struct Case {
    QStringList arguments;
    int exitCode;
    const char16_t* message;
  };
  const QString a4 = u"Full page A4"_s;
  const Case cases[] = {
      {{u"--template"_s, u"None"_s, u"--pdf"_s, pdf_, photo_}, 2, u"Cannot locate the selected"},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, u"--copies"_s, u"1.5"_s, photo_},
       2,
       u"Number of copies"},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, u"--paper"_s, u"A9"_s, photo_}, 2, u"--paper"},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, u"--paper"_s, u"100x150mm"_s, photo_},
       2,
       u"page width is only 3.94 inches"},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, u"--paper"_s, u"297x204.6mm"_s, photo_},
       2,  // turned first
       u"minimum width of 8.06 inches (Portrait mode).\nThe current page width is only 8.06 "},
      {{u"--template"_s, a4, u"--pdf"_s, photo_, photo_}, 2, u"exists and is no PDF file"},
      {{u"--template"_s, a4, u"--pdf"_s, text, photo_}, 2, u"exists and is no PDF file"},
      {{u"--template"_s, a4, u"--pdf"_s, scratch_.Path("no/out.pdf"), photo_}, 2, u"no"},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, scratch_.Path("gone.jpg")},
       1,
       u"either offline or missing and thus cannot be printed."},
      {{u"--template"_s, a4, u"--pdf"_s, pdf_, text}, 1, u"could not be read as an image"},
  };
  for (const Case& c : cases) {
    const test::Ran ran = Print(c.arguments);
    EXPECT_EQ(ran.exitCode, c.exitCode) << &c - cases << ran.err.toStdString();
    EXPECT_TRUE(ran.err.contains(QString::fromUtf16(c.message))) << ran.err.toStdString();
    EXPECT_FALSE(QFile::exists(pdf_)) << &c - cases;
  }
  EXPECT_EQ(test::Scratch::Read(text), "my notes");
  EXPECT_EQ(test::Scratch::Read(photo_), photo);
  // By a hair it fits, also wide.
  EXPECT_EQ(Print({u"--template"_s, a4, u"--pdf"_s, pdf_, u"--paper"_s, u"297x204.8mm"_s, photo_})
                .exitCode,
            0);
}

TEST_F(PrintCommand, AFullDiskLeavesTheOldFile) {
  const QString folder = scratch_.Path("disk");
  ASSERT_TRUE(QDir().mkpath(folder));
  const test::SmallDisk disk(folder);
  if (!disk.IsMounted()) GTEST_SKIP() << "no file system can be mounted here";
  const QByteArray before = "%PDF-1.4 as it was";
  scratch_.Write("disk/out.pdf", before);
  const QString noise = scratch_.Path("noise.png");
  ASSERT_TRUE(test::Noise({1500, 1000}, QImage::Format_RGB32).save(noise));
  const test::Ran ran =
      Print({u"--template"_s, u"Full page A4"_s, u"--pdf"_s, scratch_.Path("disk/out.pdf"), noise});
  EXPECT_EQ(ran.exitCode, 1) << ran.err.toStdString();
  EXPECT_EQ(test::Scratch::Read(scratch_.Path("disk/out.pdf")), before);
  EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList(u"out.pdf"_s));
}

}  // namespace
}  // namespace zqm
