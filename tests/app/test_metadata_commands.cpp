// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDir>

#include "tests/app/zqm_process.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using MetadataCommands = test::HomeProcessTest;

TEST_F(MetadataCommands, FieldsAreWrittenExportedAndRemoved) {
  const QString photo = scratch_.Write("photos/Föhn.jpg", test::SampleJpeg(30, 20));
  const QString gone = scratch_.Path("photos/gone.jpg");
  ASSERT_EQ(Run({u"catalog"_s, scratch_.Path("photos")}).exitCode, 0);
  const test::Ran edited =
      Run({u"exif"_s, u"--set"_s, u"camera make=A=B"_s, photo, gone, u"--set"_s,
           u"Shutter Speed=1/250"_s, u"--set"_s, u"Flash Mode=no flash"_s});
  EXPECT_EQ(edited.exitCode, 1);
  EXPECT_EQ(edited.err, u"The EXIF data of the following files could not be edited:\n"_s + gone +
                            u": File is offline or missing\n"_s);
  EXPECT_EQ(Run({u"iptc"_s, photo, u"--set"_s, u"City=Graz"_s, u"--set"_s, u"Urgency=8"_s}).out,
            u"Writing IPTC to file(s) completed.\n"_s);
  const QString row = Run({u"row"_s, photo}).out;
  for (const char16_t* line : {u"\nCamera Make: A=B\n", u"\nShutter Speed: 1/250 sec\n",
                               u"\nCity: Graz\n", u"\nUrgency: 8 (least urgent)\n"})
    EXPECT_TRUE(row.contains(QString::fromUtf16(line))) << row.toStdString();
  QDir().mkpath(scratch_.Path("texts"));
  EXPECT_EQ(Run({u"export"_s, u"iptc"_s, u"--to"_s, scratch_.Path("texts"), photo}).exitCode, 0);
  EXPECT_TRUE(test::Scratch::Read(scratch_.Path("texts/IPTC-Föhn.jpg.txt"))
                  .contains("\nCity                   : Graz\n"));
  EXPECT_EQ(Run({u"strip"_s, u"exif"_s, photo}).out,
            u"EXIF data has been removed from the selected file(s).\n"_s);
  const QString stripped = Run({u"row"_s, photo}).out;
  EXPECT_TRUE(stripped.contains(u"\nCamera Make: \n"_s));
  EXPECT_TRUE(stripped.contains(u"\nCity: Graz\n"_s));
}

TEST_F(MetadataCommands, WhatNobodyCouldTypeIsRefusedBeforeAnyFileIsTouched) {
  const QByteArray jpeg = test::SampleJpeg(30, 20);
  const QString photo = scratch_.Write("1.jpg", jpeg);
  for (const QStringList& refused : std::initializer_list<QStringList>{
           {u"exif"_s, u"--set"_s, u"Camera Make"_s, photo},
           {u"exif"_s, u"--set"_s, u"Colour=1"_s, photo},
           {u"exif"_s, u"--set"_s, u"F-number=2,8"_s, photo},
           {u"exif"_s, u"--set"_s, u"Flash Mode=Maybe"_s, photo},
           {u"iptc"_s, u"--set"_s, u"Urgency=9"_s, photo},
           {u"exif"_s, u"--set"_s, u"Camera Make=A"_s},
           {u"export"_s, u"xmp"_s, u"--to"_s, scratch_.Path(), photo},
           {u"export"_s, u"exif"_s, u"--to"_s, scratch_.Path("none"), photo},
           {u"strip"_s, u"gps"_s, photo}}) {
    const test::Ran ran = Run(refused);
    EXPECT_EQ(ran.exitCode, 2) << refused.join(u' ').toStdString();
    EXPECT_NE(ran.err, QString());
  }
  EXPECT_EQ(test::Scratch::Read(photo), jpeg);
}

}  // namespace
}  // namespace zqm
