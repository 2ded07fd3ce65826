// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/object_file.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "imaging/codecs/codecs.h"
#include "imaging/object_keys.h"
#include "imaging/pixel_formats.h"
#include "imaging/text_shape.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr auto kFormat = "Zolmira QM objects"_L1;
constexpr int kVersion = 1;

// What a file may ask for: far beyond any template, within what a machine has.
constexpr qint64 kMostBytes = 128 << 20;
constexpr qsizetype kMostMarks = 2'000'000;  // of the JSON: each value costs memory
constexpr int kMostObjects = 5'000;
constexpr int kMostTexts = 200'000;  // characters of all texts
constexpr int kMostId = 1'000'000'000;
constexpr int kMostSide = 1 << 28;
constexpr std::int64_t kMostObjectPixels = std::int64_t{1}
                                           << 27;  // of all; 16-bit ones count twice

constexpr char16_t kNoObjects[] = u"File is not a file of objects";
constexpr char16_t kNewer[] = u"File was written by a newer version of the program";
constexpr char16_t kTooMuch[] = u"The objects are too large together";

Failure Refuse(const char16_t* reason) {
  return Failure{QString::fromUtf16(reason)};
}

/// What all objects of a file have taken of its bounds.
struct Spent {
  std::int64_t pixels = 0;
  qsizetype characters = 0;

  bool TooMuch() const { return pixels > kMostObjectPixels || characters > kMostTexts; }
};

std::int64_t Weight(int width, int height, bool deep) {
  return std::int64_t{width} * height * (deep ? 2 : 1);
}

// Writing.

Result<QJsonObject> Encode(const VectorObject& object) {
  QJsonObject json{{u"ID"_s, object.id}};
  for (const char16_t* key : ObjectKeys())
    json.insert(QString::fromUtf16(key), ObjectProperty(object, key));
  if (object.picture.Image().isNull()) return json;
  const auto png = kPngCodec.save(object.picture.Image(), {}, {});
  if (!png) return Failure{png.Reason()};
  json.insert(u"PICTURE"_s, QString::fromLatin1(png->toBase64()));
  return json;
}

// Reading. Whatever isn't as it was written gives `nullopt`, and the file is refused.

std::optional<QImage> DecodePicture(const QString& text, Spent& spent) {
  const auto png =
      QByteArray::fromBase64Encoding(text.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!png || !kPngCodec.sniff(Bytes(*png), {})) return std::nullopt;
  const auto facts = kPngCodec.readFacts(Bytes(*png), {});
  if (!facts) return std::nullopt;
  spent.pixels += Weight(facts->width, facts->height, facts->bitsPerSample > 8);
  if (spent.TooMuch()) return std::nullopt;
  const auto image = kPngCodec.load(Bytes(*png), {});
  return image ? std::optional(*image) : std::nullopt;
}

bool DecodeKey(const QString& key, const QJsonValue& value, VectorObject& object, Spent& spent) {
  if (key == "ID"_L1 || key == "KIND"_L1) return true;
  if (!value.isString()) return false;
  if (key == "PICTURE"_L1) {
    const auto image = DecodePicture(value.toString(), spent);
    if (image) object.picture = *image;
    return image.has_value();
  }
  return SetKey(object, key, value.toString());
}

std::optional<ObjectKind> DecodeKind(const QJsonValue& value) {
  for (const auto kind :
       {ObjectKind::Line, ObjectKind::Rectangle, ObjectKind::Picture, ObjectKind::Text})
    if (value.toString() == QString::number(static_cast<int>(kind))) return kind;
  return std::nullopt;
}

std::optional<VectorObject> DecodeObject(const QJsonObject& json, Spent& spent) {
  VectorObject object;
  object.id = json.value("ID"_L1).toInt();
  if (object.id <= 0 || object.id > kMostId) return std::nullopt;
  const auto kind = DecodeKind(json.value("KIND"_L1));
  if (!kind) return std::nullopt;
  object.kind = *kind;
  for (auto entry = json.begin(); entry != json.end(); ++entry)
    if (!DecodeKey(entry.key(), entry.value(), object, spent)) return std::nullopt;
  spent.characters += object.text.size();
  if (spent.TooMuch()) return std::nullopt;
  FitText(object);
  return object;
}

QSize DecodeSize(const QJsonValue& value) {
  const QJsonArray sides = value.toArray();
  if (sides.size() != 2) return {};
  const QSize size(sides.at(0).toInt(), sides.at(1).toInt());
  const bool sound = std::min(size.width(), size.height()) >= 0 &&
                     std::max(size.width(), size.height()) <= kMostSide;
  return sound ? size : QSize();
}

bool TooManyMarks(const QByteArray& json) {
  return std::ranges::count_if(json, [](char c) { return c == ',' || c == '[' || c == '{'; }) >
         kMostMarks;
}

}  // namespace

Outcome CheckObjectBounds(const VectorObjects& objects) {
  Spent spent;
  for (const VectorObject& object : objects.All()) {
    const QImage& image = object.picture.Image();
    spent.pixels += Weight(image.width(), image.height(), IsDeep(image));
    spent.characters += object.text.size();
  }
  if (objects.Count() > kMostObjects || spent.TooMuch()) return Refuse(kTooMuch);
  return {};
}

Result<QByteArray> EncodeObjects(const VectorObjects& objects, QSize surfaceSize) {
  if (Outcome within = CheckObjectBounds(objects); !within) return Failure{within.Reason()};
  QJsonArray list;
  for (const VectorObject& object : objects.All()) {
    const auto json = Encode(object);
    if (!json) return Failure{json.Reason()};
    list.append(*json);
  }
  const QJsonObject root{{u"format"_s, kFormat},
                         {u"version"_s, kVersion},
                         {u"surface"_s, QJsonArray{surfaceSize.width(), surfaceSize.height()}},
                         {u"objects"_s, list}};
  QByteArray json = QJsonDocument(root).toJson();
  if (json.size() > kMostBytes || TooManyMarks(json)) return Refuse(kTooMuch);
  return json;
}

Result<ObjectFile> DecodeObjects(const QByteArray& json) {
  if (json.size() > kMostBytes || TooManyMarks(json)) return Refuse(kTooMuch);
  const QJsonObject root = QJsonDocument::fromJson(json).object();
  if (root.value("format"_L1).toString() != kFormat) return Refuse(kNoObjects);
  if (root.value("version"_L1).toInt() > kVersion) return Refuse(kNewer);
  ObjectFile file;
  file.surfaceSize = DecodeSize(root.value("surface"_L1));
  const bool known = root.value("version"_L1).toInt() == kVersion && file.surfaceSize.isValid() &&
                     root.value("objects"_L1).isArray();
  if (!known) return Refuse(kNoObjects);
  const QJsonArray list = root.value("objects"_L1).toArray();
  if (list.size() > kMostObjects) return Refuse(kTooMuch);
  Spent spent;
  for (const QJsonValue& each : list) {
    const auto object = DecodeObject(each.toObject(), spent);
    if (spent.TooMuch()) return Refuse(kTooMuch);
    if (!object || !file.objects.Insert(*object)) return Refuse(kNoObjects);
  }
  return file;
}

Outcome SaveObjects(const QString& path, const VectorObjects& objects, QSize surfaceSize) {
  const auto json = EncodeObjects(objects, surfaceSize);
  return json ? WriteFileAtomically(path, *json) : Failure{json.Reason()};
}

Result<ObjectFile> LoadObjects(const QString& path) {
  const auto json = ReadWholeFile(path, kMostBytes);
  if (!json) return Failure{json.Reason()};
  return DecodeObjects(*json);
}

}  // namespace zqm
