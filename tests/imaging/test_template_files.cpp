// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/template_files.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

VectorObjects OneText(const QString& text = u"proof"_s) {
  VectorObjects objects;
  objects.SetObjectProperty(objects.Add(ObjectKind::Text), u"TEXT", text);
  return objects;
}

TEST(TemplateFiles, AreListedByNameAndFoundInAnyLetterCase) {
  const test::Scratch scratch;
  const QString folder = scratch.Path("templates");
  EXPECT_TRUE(TemplatesName(folder).isEmpty());
  for (const QString& name :
       {u"Zoo"_s, u"äpfel"_s, u"Proof 10"_s, u"Proof 9"_s, u"it's"_s, u".hidden"_s, u"a.b"_s})
    ASSERT_TRUE(SaveTemplate(TemplatePath(folder, name), OneText(), {10, 10}));
  scratch.Write("templates/readme.txt", "words");
  scratch.Write("templates/.iev", "");
  QDir(folder).mkdir(u"folder.iev"_s);
  QStringList names = TemplatesName(folder);
  EXPECT_LT(names.indexOf(u"Proof 9"_s), names.indexOf(u"Proof 10"_s));
  EXPECT_LT(names.indexOf(u"äpfel"_s), names.indexOf(u"Zoo"_s));
  names.sort();
  EXPECT_EQ(names, (QStringList{u".hidden"_s, u"Proof 10"_s, u"Proof 9"_s, u"Zoo"_s, u"a.b"_s,
                                u"it's"_s, u"äpfel"_s}));
  EXPECT_EQ(FindTemplate(folder, u"ÄPFEL"_s), u"äpfel"_s);
  EXPECT_EQ(FindTemplate(folder, u"zoo"_s), u"Zoo"_s);
  EXPECT_EQ(FindTemplate(folder, u"Zo"_s), QString());
  ASSERT_TRUE(SaveTemplate(TemplatePath(folder, u"zoo"_s), OneText(), {10, 10}));
  EXPECT_EQ(FindTemplate(folder, u"zoo"_s), u"zoo"_s) << "the same spelling comes first";
}

TEST(TemplateFiles, NamesThatNoFileCanHaveAreRefused) {
  const QString invalid = u"Invalid template name."_s;
  const QString forbidden =
      u"A filename cannot contain any of the following characters:\n\\ / : * ? \" < > |"_s;
  const std::pair<QString, QString> cases[] = {{u""_s, invalid},        {u"  "_s, invalid},
                                               {u"a/b"_s, forbidden},   {u"a\\b"_s, forbidden},
                                               {u"what?"_s, forbidden}, {u"../up"_s, forbidden},
                                               {u"Für Ma's"_s, {}},     {u"水印"_s, {}}};
  for (const auto& [name, reason] : cases)
    EXPECT_EQ(CheckTemplateName(name).Reason(), reason) << name.toStdString();
}

TEST(TemplateFiles, ComeBackAsTheyWereSaved) {
  const test::Scratch scratch;
  VectorObjects objects;
  for (const QString& text :
       {u"© 2024 Ünal's"_s, u"مرحبا שלום\n水印 🦊"_s, u""_s, u" "_s}) {
    const int id = objects.Add(ObjectKind::Text);
    objects.SetObjectProperty(id, u"TEXT", text);
    objects.SetObjectProperty(id, u"FONTNAME", u"A Font That Nobody Has"_s);
    objects.SetObjectProperty(id, u"FONTANGLE", u"-33.5"_s);
  }
  QImage logo(30, 20, QImage::Format_ARGB32);
  logo.fill(QColor(10, 20, 30, 40));
  objects.SetPicture(objects.Add(ObjectKind::Picture), logo);
  const QString path = TemplatePath(scratch.Path(), u"all"_s);
  ASSERT_TRUE(SaveTemplate(path, objects, {4000, 3000}));
  const auto loaded = LoadTemplate(path);
  ASSERT_TRUE(loaded) << loaded.Reason().toStdString();
  EXPECT_EQ(loaded->objects, objects);
  EXPECT_EQ(loaded->surfaceSize, QSize(4000, 3000));
}

TEST(TemplateFiles, WhatIsWrongWithOneIsSaidWithItsName) {
  const test::Scratch scratch;
  const QByteArray good = *EncodeObjects(OneText(), {10, 10});
  QByteArray newer = good, many = good.left(good.indexOf("\"objects\"")), wide = good;
  newer.replace("\"version\": 1", "\"version\": 2");
  many += "\"objects\":[" + QByteArray("{},").repeated(1'000'000) + "{}]}";
  // A picture whose header promises ten gigapixels.
  wide.replace("\"KIND\": \"6\"",
               "\"KIND\": \"5\", \"PICTURE\": \"" +
                   QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000186a0000186a00802000000")
                       .toBase64() +
                   '"');
  const std::pair<const char*, QByteArray> cases[] = {{"cut", good.left(good.size() / 2)},
                                                      {"newer", newer},
                                                      {"many", many},
                                                      {"wide", wide},
                                                      {"empty", {}},
                                                      {"foreign", QByteArray(3000, '\xff')}};
  for (const auto& [name, bytes] : cases) {
    const QString file = QString::fromUtf8(name) + u".iev"_s;
    const auto loaded = LoadTemplate(scratch.Write(file, bytes));
    EXPECT_FALSE(loaded) << name;
    EXPECT_TRUE(loaded.Reason().startsWith(file + u": "_s)) << loaded.Reason().toStdString();
  }
  const QString gone = scratch.Path("gone.iev");
  EXPECT_EQ(LoadTemplate(gone).Reason(), u"Cannot locate "_s + gone);
  EXPECT_EQ(RemoveTemplate(gone).Reason(), u"Cannot locate "_s + gone);
}

TEST(TemplateFiles, AFailedSaveLeavesTheOldOne) {
  const test::Scratch scratch;
  const QString folder = scratch.Path("disk");
  QDir().mkpath(folder);
  const test::SmallDisk disk(folder);
  if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount";
  const QString path = TemplatePath(folder, u"t"_s);
  ASSERT_TRUE(SaveTemplate(path, OneText(), {10, 10}));
  const QByteArray before = test::Scratch::Read(path);
  VectorObjects large = OneText();
  QImage noise(800, 600, QImage::Format_RGB32);
  quint32 state = 1;
  for (qsizetype i = 0; i < noise.sizeInBytes(); ++i)
    noise.bits()[i] = static_cast<uchar>((state = state * 1664525 + 1013904223) >> 24);
  large.SetPicture(large.Add(ObjectKind::Picture), noise);
  const Outcome full = SaveTemplate(path, large, {10, 10});
  EXPECT_TRUE(full.Reason().startsWith(u"t.iev: "_s)) << full.Reason().toStdString();
  EXPECT_EQ(test::Scratch::Read(path), before);
  QFile::setPermissions(path, QFile::ReadOwner);
  EXPECT_EQ(SaveTemplate(path, OneText(u"new"_s), {10, 10}).Reason(),
            u"t.iev: Permission was denied"_s);
  EXPECT_EQ(test::Scratch::Read(path), before);
}

}  // namespace
}  // namespace zqm
