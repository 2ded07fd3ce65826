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

using PictureCommands = test::HomeProcessTest;

TEST_F(PictureCommands, PhotosAreConvertedResizedAndTurned) {
  const QString photo = scratch_.Write("in/Föhn.jpg", test::SampleJpeg(60, 40));
  const QString bad = scratch_.Write("in/bad.jpg", "no picture"), out = scratch_.Path("out");
  ASSERT_TRUE(QDir().mkpath(out));
  const test::Ran converted =
      Run({u"convert"_s, u"--format"_s, u"png"_s, u"--option"_s, u"PNG_INTERLACED=1"_s, u"--to"_s,
           out, u"--catalog"_s, photo, bad});
  EXPECT_EQ(converted.exitCode, 1);
  EXPECT_TRUE(converted.err.contains(bad + u": could not be written: "_s));
  EXPECT_TRUE(Run({u"row"_s, out + u"/Föhn.png"_s}).out.contains(u"60"_s));
  EXPECT_EQ(Run({u"convert"_s, u"--format"_s, u"PNG"_s, u"--to"_s, out, photo}).err,
            u"The following images could not be converted to the specified format:\n"_s + photo +
                u": File already exists in destination folder\n"_s);
  EXPECT_EQ(Run({u"rotate"_s, u"cw"_s, photo}).exitCode, 0);
  EXPECT_EQ(Run({u"resize"_s, u"--width"_s, u"20"_s, photo}).out,
            u"Resizing image(s) completed.\n"_s);
  const QString info = Run({u"info"_s, photo}).out;
  EXPECT_TRUE(info.contains(u"Width: 20\n"_s) && info.contains(u"Height: 30\n"_s))
      << info.toStdString();
}

TEST_F(PictureCommands, WhatMakesNoSenseIsRefusedBeforeAnyFileIsTouched) {
  const QByteArray bytes = test::SampleJpeg(30, 20);
  const QString photo = scratch_.Write("a.jpg", bytes);
  const QStringList senseless[] = {
      {u"convert"_s, u"--format"_s, u"WEBP"_s, photo},
      {u"convert"_s, u"--format"_s, u"PNG"_s, u"--option"_s, u"PNG_FILTER=best"_s, photo},
      {u"convert"_s, u"--format"_s, u"PNG"_s, u"--option"_s, u"COLOUR=1"_s, photo},
      {u"convert"_s, u"--format"_s, u"PNG"_s, u"--to"_s, scratch_.Path("gone"), photo},
      {u"resize"_s, photo},
      {u"resize"_s, u"--width"_s, u"0"_s, photo},
      {u"resize"_s, u"--width"_s, u"9"_s, u"--dpi"_s, u"abc"_s, photo},
      {u"resize"_s, u"--width"_s, u"9"_s, u"--filter"_s, u"magic"_s, photo},
      {u"rotate"_s, u"left"_s, photo}};
  for (const QStringList& arguments : senseless)
    EXPECT_EQ(Run(arguments).exitCode, 2) << arguments.join(u' ').toStdString();
  EXPECT_EQ(test::Scratch::Read(photo), bytes);
}

}  // namespace
}  // namespace zqm
