// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "imaging/codecs/codecs.h"
#include "imaging/object_file.h"
#include "shell/files.h"
#include "tests/support/noise.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Noise;
using test::Scratch;
using test::SmallDisk;

VectorObjects Mixed() {
  VectorObjects objects;
  const int box = objects.Add(ObjectKind::Rectangle);
  objects.SetObjectProperty(box, u"LEFT", u"10.25"_s);
  const int text = objects.Add(ObjectKind::Text);
  objects.SetObjectProperty(text, u"TEXT", u"Größe \"ß\"\n日本 \t\\ '"_s);
  objects.SetObjectProperty(text, u"FONTANGLE", u"-12.5"_s);
  objects.Remove(objects.Add(ObjectKind::Line));
  objects.AddLine({9, 8}, {-7, 6.5});
  for (const QImage::Format format :
       {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Grayscale16,
        QImage::Format_RGBA64, QImage::Format_ARGB32_Premultiplied})
    objects.SetPicture(objects.Add(ObjectKind::Picture), Noise({33, 21}, format));
  objects.SendToBack(text);
  return objects;
}

TEST(ObjectFile, ComesBackAsItWas) {
  const Scratch scratch;
  const QString path = scratch.Path(u"Häuser 'A'.iev"_s);
  for (const VectorObjects& objects : {Mixed(), VectorObjects()}) {
    ASSERT_TRUE(SaveObjects(path, objects, {826, 1169}));
    const auto loaded = LoadObjects(path);
    ASSERT_TRUE(loaded) << loaded.Reason().toStdString();
    EXPECT_EQ(loaded->objects, objects);
    EXPECT_EQ(loaded->objects.Ids(), objects.Ids());
    EXPECT_EQ(loaded->surfaceSize, QSize(826, 1169));
  }
  VectorObjects loaded = LoadObjects(path)->objects;
  EXPECT_EQ(loaded.Add(ObjectKind::Text), 1) << "an empty list begins anew";
}

TEST(ObjectFile, FailuresLeaveTheOldFile) {
  const Scratch scratch;
  QDir().mkpath(scratch.Path("small"));
  const SmallDisk disk(scratch.Path("small"));
  if (!disk.IsMounted()) GTEST_SKIP() << "no file system may be mounted here";
  const QString path = scratch.Path("small/a.iev");
  ASSERT_TRUE(SaveObjects(path, Mixed(), {10, 10}));
  const QByteArray before = Scratch::Read(path);
  VectorObjects large;
  large.SetPicture(large.Add(ObjectKind::Picture), Noise({700, 700}, QImage::Format_RGB32));
  EXPECT_FALSE(SaveObjects(path, large, {10, 10}));
  EXPECT_EQ(Scratch::Read(path), before);
  EXPECT_EQ(QDir(scratch.Path("small")).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(ObjectFile, WhatCouldNotBeReadIsNotWritten) {
  VectorObjects many;
  for (int i = 0; i < 5'001; ++i)
    many.Add(ObjectKind::Rectangle);
  EXPECT_EQ(EncodeObjects(many, {9, 9}).Reason(), u"The objects are too large together");
  VectorObjects talkative;
  for (int i = 0; i < 21; ++i)
    ASSERT_TRUE(talkative.SetObjectProperty(talkative.Add(ObjectKind::Rectangle), u"TEXT",
                                            QString(10'000, u'x')));
  EXPECT_FALSE(EncodeObjects(talkative, {9, 9}));
}

/// A file that reads, to be spoilt.
QJsonObject Sound() {
  VectorObjects objects;
  objects.Add(ObjectKind::Rectangle);
  objects.SetPicture(objects.Add(ObjectKind::Picture), Noise({4, 3}, QImage::Format_RGB32));
  return QJsonDocument::fromJson(*EncodeObjects(objects, {100, 80})).object();
}

QByteArray Text(const QJsonObject& root) {
  return QJsonDocument(root).toJson();
}

TEST(ObjectFile, RefusesWhatItDidNotWrite) {
  ASSERT_TRUE(DecodeObjects(Text(Sound())));
  const QByteArray whole = Text(Sound());
  for (qsizetype size = 0; size < whole.trimmed().size(); ++size)
    ASSERT_FALSE(DecodeObjects(whole.left(size))) << "cut after " << size;

  const auto with = [](const QString& key, const QJsonValue& value) {
    QJsonObject root = Sound();
    root[key] = value;
    return Text(root);
  };
  const auto withObject = [](int at, const QString& key, const QJsonValue& value) {
    QJsonObject root = Sound();
    QJsonArray objects = root[u"objects"_s].toArray();
    QJsonObject object = objects.at(at).toObject();
    object[key] = value;
    objects[at] = object;
    root[u"objects"_s] = objects;
    return Text(root);
  };
  QByteArray hugePng = QByteArray::fromBase64(
      Sound()[u"objects"_s].toArray().at(1).toObject()[u"PICTURE"_s].toString().toLatin1());
  hugePng.replace(16, 8, QByteArray("\x00\x01\x86\xA0\x00\x01\x86\xA0", 8));  // 100,000 squared
  QImage large(20'000, 10'000, QImage::Format_Mono);
  large.fill(0);
  const auto largePng = kPngCodec.save(large, {}, {});
  ASSERT_TRUE(largePng);
  const struct {
    const char* what;
    QByteArray file;
    QString reason;
  } cases[] = {
      {"nothing", {}, u"File is not a file of objects"_s},
      {"a picture", Noise({9, 9}, QImage::Format_RGB32).text().toUtf8() + "\x89PNG",
       u"File is not a file of objects"_s},
      {"a list", "[1,2]", u"File is not a file of objects"_s},
      {"another format", with(u"format"_s, u"else"_s), u"File is not a file of objects"_s},
      {"a later version", with(u"version"_s, 2),
       u"File was written by a newer version of the program"_s},
      {"no version", with(u"version"_s, u"1"_s), u"File is not a file of objects"_s},
      {"a surface below nothing", with(u"surface"_s, QJsonArray{-1, 5}),
       u"File is not a file of objects"_s},
      {"no surface", with(u"surface"_s, 7), u"File is not a file of objects"_s},
      {"no objects", with(u"objects"_s, u"none"_s), u"File is not a file of objects"_s},
      {"an object that is none", with(u"objects"_s, QJsonArray{3}),
       u"File is not a file of objects"_s},
      {"one ID twice", withObject(0, u"ID"_s, 2), u"File is not a file of objects"_s},
      {"an ID below one", withObject(0, u"ID"_s, -3), u"File is not a file of objects"_s},
      {"an ID beyond all", withObject(0, u"ID"_s, 2e9), u"File is not a file of objects"_s},
      {"no such kind", withObject(0, u"KIND"_s, u"3"_s), u"File is not a file of objects"_s},
      {"no such key", withObject(0, u"SCRIPT"_s, u"1"_s), u"File is not a file of objects"_s},
      {"a value out of range", withObject(0, u"WIDTH"_s, u"1e30"_s),
       u"File is not a file of objects"_s},
      {"a number as a number", withObject(0, u"WIDTH"_s, 5), u"File is not a file of objects"_s},
      {"no base64", withObject(1, u"PICTURE"_s, u"%%%%"_s), u"File is not a file of objects"_s},
      {"no PNG", withObject(1, u"PICTURE"_s, u"R0lGODlhAQAB"_s),
       u"File is not a file of objects"_s},
      {"ten gigapixels", withObject(1, u"PICTURE"_s, QString::fromLatin1(hugePng.toBase64())),
       u"File is not a file of objects"_s},
      {"many pixels", withObject(1, u"PICTURE"_s, QString::fromLatin1(largePng->toBase64())),
       u"The objects are too large together"_s},
      {"deep brackets", QByteArray(1'900'000, '['), u"File is not a file of objects"_s},
      {"many brackets", QByteArray(5'000'000, '['), u"The objects are too large together"_s},
      {"many objects", with(u"objects"_s, QJsonArray::fromVariantList(QVariantList(5'001, 0))),
       u"The objects are too large together"_s},
  };
  for (const auto& c : cases) {
    const auto read = DecodeObjects(c.file);
    EXPECT_FALSE(read) << c.what;
    EXPECT_EQ(read.Reason(), c.reason) << c.what;
  }
}

TEST(ObjectFile, SaysWhatIsWrongWithAPath) {
  const Scratch scratch;
  EXPECT_EQ(LoadObjects(scratch.Path("none.iev")).Reason(), QStringView(kReasonMissing));
  QFile large(scratch.Path("large.iev"));
  ASSERT_TRUE(large.open(QFile::WriteOnly) && large.resize(qint64{129} << 20));
  EXPECT_EQ(LoadObjects(large.fileName()).Reason(), QStringView(kReasonFileTooLarge));
}

}  // namespace
}  // namespace zqm
