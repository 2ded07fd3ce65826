// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/print_template.h"

#include <QDataStream>
#include <QDir>
#include <algorithm>
#include <set>

#include "imaging/object_file.h"
#include "imaging/picture.h"
#include "printing/print_text.h"
#include "shell/files.h"
#include "shell/record_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// Behind the two numbers.
constexpr int kIdsAt = 8, kIdsBytes = 1000;
constexpr int kRecordBytes = kIdsAt + kIdsBytes;

/// A picture in the folder is none of a template's files.
bool IsPictureFile(const QString& path) {
  Picture picture;
  return static_cast<bool>(picture.ReadParamsFromFile(path)) &&
         picture.GetIOProperty(u"FILETYPE") != u"0";
}

bool IsSheet(const QSize& size) {
  return !size.isEmpty() && std::max(size.width(), size.height()) <= kMostSheetSide;
}

bool IsBox(const VectorObject& object) {
  return object.kind == ObjectKind::Rectangle && object.width > 0 && object.height > 0;
}

/// ",3,,5," to numbers. Each ID has a comma on both sides; one without the second was cut off.
std::vector<int> ParseIds(const QString& text) {
  std::vector<int> ids;
  const QStringList parts = text.split(u',');
  for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
    bool ok = false;
    if (const int id = parts[i].toInt(&ok); ok && id > 0) ids.push_back(id);
  }
  return ids;
}

Result<QByteArray> ReadIfThere(const QString& path) {
  return FileExists(path) ? ReadWholeFile(path) : QByteArray();
}

Failure About(const QString& path, const QString& reason) {
  return Failure{GetFileName(path) + u": "_s + reason};
}

/// Puts back what stood there before a pair could only be written by half.
void Restore(const QString& path, bool stood, const QByteArray& content) {
  const Outcome restored = stood ? WriteFileAtomically(path, content) : DeleteFile(path);
  Q_UNUSED(restored);  // the first failure is the one that is told
}

}  // namespace

std::vector<QRectF> BoxesOf(const PrintTemplate& layout) {
  std::vector<QRectF> boxes;
  std::set<int> taken;
  const auto take = [&](const VectorObject* object) {
    if (object != nullptr && IsBox(*object) && taken.insert(object->id).second)
      boxes.push_back(object->Box());
  };
  for (const int id : layout.ids)
    take(layout.objects.Find(id));
  std::vector<int> others = layout.objects.Ids();
  std::ranges::sort(others);
  for (const int id : others)
    take(layout.objects.Find(id));
  return boxes;
}

QString TemplateObjectsFile(const QString& folder, const QString& name) {
  return PathIn(folder, name + u".iev"_s);
}

QString TemplateRecordFile(const QString& folder, const QString& name) {
  return PathIn(folder, name + u".txt"_s);
}

QStringList PrintTemplatesName(const QString& folder) {
  QStringList names;
  // A name may begin with a point.
  for (const QString& file :
       QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase)) {
    const QString name = GetBaseName(file);
    if (!name.isEmpty() && !names.contains(name) && !IsPictureFile(PathIn(folder, file)))
      names.append(name);
  }
  return names;
}

QByteArray EncodeTemplateRecord(const PrintTemplate& layout) {
  QString ids;
  for (const int id : layout.ids)
    ids += u",%1,"_s.arg(id);
  QByteArray record;
  QDataStream numbers(&record, QDataStream::WriteOnly);
  numbers.setByteOrder(QDataStream::LittleEndian);
  numbers << qint32{layout.sheet.width()} << qint32{layout.sheet.height()};
  return record + RecordField(ids, kIdsBytes);
}

std::optional<TemplateRecord> DecodeTemplateRecord(const QByteArray& bytes) {
  if (bytes.size() != kRecordBytes) return std::nullopt;
  QDataStream numbers(bytes);
  numbers.setByteOrder(QDataStream::LittleEndian);
  qint32 width = 0, height = 0;
  numbers >> width >> height;
  const QSize sheet(width, height);
  if (!IsSheet(sheet)) return std::nullopt;
  return TemplateRecord{sheet, ParseIds(RecordText(bytes, kIdsAt, kIdsBytes))};
}

Result<PrintTemplate> LoadTemplate(const QString& folder, const QString& name) {
  const QString objectsFile = TemplateObjectsFile(folder, name);
  const QString recordFile = TemplateRecordFile(folder, name);
  if (!FileExists(objectsFile) || !FileExists(recordFile))
    return Failure{QString::fromUtf16(print_text::kNotLocated)};
  const auto record = DecodeTemplateRecord(ReadRecordFile(recordFile, kRecordBytes));
  const auto file = LoadObjects(objectsFile);
  if (!record || !file) return Failure{QString::fromUtf16(print_text::kNotLoaded)};
  PrintTemplate layout{record->sheet, file->objects, record->ids};
  if (BoxesOf(layout).empty()) return Failure{QString::fromUtf16(print_text::kNotLoaded)};
  return layout;
}

Outcome SaveTemplate(const QString& folder, const QString& name, const PrintTemplate& layout) {
  if (layout.objects.IsEmpty()) return Failure{QString::fromUtf16(print_text::kNoBoxes)};
  QDir().mkpath(folder);
  const QString objectsFile = TemplateObjectsFile(folder, name);
  const QString recordFile = TemplateRecordFile(folder, name);
  const bool stood = FileExists(objectsFile);
  const auto before = ReadIfThere(objectsFile);
  if (!before) return About(objectsFile, before.Reason());
  if (const Outcome saved = SaveObjects(objectsFile, layout.objects, layout.sheet); !saved)
    return About(objectsFile, saved.Reason());
  const Outcome written = WriteFileAtomically(recordFile, EncodeTemplateRecord(layout));
  if (written) return {};
  Restore(objectsFile, stood, *before);
  return About(recordFile, written.Reason());
}

Outcome RemoveTemplate(const QString& folder, const QString& name) {
  for (const QString& path : {TemplateObjectsFile(folder, name), TemplateRecordFile(folder, name)})
    if (FileExists(path))
      if (const Outcome deleted = DeleteFile(path); !deleted) return deleted;
  return {};
}

}  // namespace zqm
