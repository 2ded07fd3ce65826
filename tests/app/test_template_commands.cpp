// SPDX-License-Identifier: GPL-3.0-or-later
// The templates that come with the program, listed and stamped by the command line.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "imaging/template_files.h"
#include "tests/app/zqm_process.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class TemplateCommands : public ::testing::Test {
 protected:
  test::Ran Run(const QStringList& arguments) {
    return test::RunZqm(QStringList{u"--home"_s, scratch_.Path("home")} + arguments);
  }
  QString Templates(const QString& kind) const {
    return scratch_.Path("home") + u"/Documents/Zolmira/QM/"_s + kind + u"_templates"_s;
  }
  test::Scratch scratch_;
};

TEST_F(TemplateCommands, EachTemplateThatComesAlongMarksAPhotoAtItsTopLeft) {
  const test::Ran listed = Run({u"--json"_s, u"templates"_s});
  const QJsonObject lists = QJsonDocument::fromJson(listed.out.toUtf8()).object();
  EXPECT_TRUE(lists.value(u"Print"_s).isArray());
  const QJsonArray names = lists.value(u"Watermark"_s).toArray();
  ASSERT_EQ(names.size(), 6);
  QImage plain(1600, 1200, QImage::Format_RGB32);
  plain.fill(QColor(60, 90, 120));
  for (const QJsonValue& each : names) {
    const QString name = each.toString();
    const QString photo = scratch_.Path(name + u".png"_s);
    ASSERT_TRUE(plain.save(photo));
    const test::Ran ran = Run({u"watermark"_s, u"--template"_s, name, photo});
    EXPECT_EQ(ran.out, u"Selected images have been watermarked.\n"_s) << ran.err.toStdString();
    const QImage stamped = QImage(photo).convertToFormat(QImage::Format_RGB32);
    qint64 changed = 0;
    for (int y = 0; y < 700; ++y)
      for (int x = 0; x < 1600; ++x)
        changed += stamped.pixel(x, y) != plain.pixel(x, y);
    EXPECT_GT(changed, 5000) << name.toStdString();
    const auto file = LoadTemplate(TemplatePath(Templates(u"watermark"_s), name));
    ASSERT_TRUE(file) << file.Reason().toStdString();
    for (const VectorObject& object : file->objects.All())
      EXPECT_GE(std::min(object.Bounds().left(), object.Bounds().top()), 0) << name.toStdString();
  }
}

TEST_F(TemplateCommands, ListsBothKindsAndPagesOnlyWithTheirRecord) {
  ASSERT_EQ(Run({u"templates"_s}).exitCode, 0);
  const QString pages = Templates(u"printing"_s);
  for (const QString& name : {u"Four"_s, u"Lost"_s})
    ASSERT_TRUE(SaveTemplate(TemplatePath(pages, name), {}, {826, 1169}));
  QFile record(pages + u"/Four.txt"_s);
  ASSERT_TRUE(record.open(QFile::WriteOnly));
  record.close();
  const QStringList lines = Run({u"templates"_s}).out.split(u'\n', Qt::SkipEmptyParts);
  EXPECT_TRUE(lines.contains(u"watermark: Picture logo"_s));
  EXPECT_TRUE(lines.contains(u"print: Four"_s));
  EXPECT_FALSE(lines.contains(u"print: Lost"_s));
}

TEST_F(TemplateCommands, WhatFailsIsPrintedAndNoPhotoIsTouchedWithoutATemplate) {
  const QByteArray bytes = test::SampleJpeg(300, 200);
  const QString photo = scratch_.Write("Föhn's.jpg", bytes), gone = scratch_.Path("gone.jpg");
  const QString empty = TemplatePath(Templates(u"watermark"_s), u"empty"_s);
  ASSERT_EQ(Run({u"templates"_s}).exitCode, 0);
  ASSERT_TRUE(SaveTemplate(empty, {}, {10, 10}));
  ASSERT_TRUE(QFile::copy(photo, TemplatePath(Templates(u"watermark"_s), u"jpeg"_s)));
  for (const QString& name : {u"none"_s, u"empty"_s, u"jpeg"_s, u"../up"_s, u""_s})
    EXPECT_EQ(Run({u"watermark"_s, u"--template"_s, name, photo}).exitCode, 2)
        << name.toStdString();
  EXPECT_EQ(test::Scratch::Read(photo), bytes);
  EXPECT_EQ(Run({u"watermark"_s, u"--template"_s, u"none"_s, photo}).err,
            u"Cannot locate "_s + TemplatePath(Templates(u"watermark"_s), u"none"_s) + u'\n');

  const test::Ran ran = Run({u"watermark"_s, u"--template"_s, u"PROOF.iev"_s, gone, photo});
  EXPECT_EQ(ran.exitCode, 1);
  EXPECT_EQ(ran.err, u"The following photos could not be watermarked:\n"_s + gone +
                         u": File is offline or missing\n"_s);
  EXPECT_NE(test::Scratch::Read(photo), bytes);
  EXPECT_EQ(Run({u"watermark"_s, u"--template"_s, u"Proof"_s, gone}).err,
            u"The selected image(s) cannot be watermarked since they are offline or missing.\n"_s);
}

}  // namespace
}  // namespace zqm
