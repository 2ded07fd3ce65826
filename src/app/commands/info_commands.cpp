// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QJsonObject>

#include "app/commands/commands.h"
#include "cataloguing/decode_ahead.h"
#include "cataloguing/virtual_exif.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using ColumnTexts = std::vector<std::pair<Column, QString>>;

/// Prints one photo after the other: a block of lines each, or the objects of one JSON array.
class RecordPrinter {
 public:
  explicit RecordPrinter(const Console& console) : console_(console) {}

  void Print(const ColumnTexts& texts) {
    if (console_.Json()) {
      QJsonObject object;
      for (const auto& [column, text] : texts)
        object.insert(ColumnName(column), text);
      objects_.append(object);
      return;
    }
    if (!first_) console_.Line(QString());
    first_ = false;
    for (const auto& [column, text] : texts)
      console_.Line(ColumnName(column) + u": "_s + OnOneLine(text));
  }

  /// The failures, the JSON document, and the exit code.
  int Finish(const FailureList& failures) const {
    if (console_.Json()) console_.Document(QJsonDocument(objects_));
    console_.Failures(failures);
    return failures.Empty() ? kExitDone : kExitSomeFailed;
  }

 private:
  const Console& console_;
  QJsonArray objects_;
  bool first_ = true;
};

ColumnTexts RowTexts(const PhotoRecordset& photos) {
  ColumnTexts texts{{Column::Photo, photos.GetField(Column::Photo)}};
  for (const ColumnInfo& info : Columns())
    if (info.group == ColumnGroup::User) texts.emplace_back(info.column, QString());
  for (const Column column : RecordColumns())
    texts.emplace_back(column, QString());
  for (auto& [column, text] : texts)
    text = photos.GetField(column);
  return texts;
}

}  // namespace

int RunInfo(const QStringList& files, const Console& console) {
  QStringList paths;
  for (const QString& file : files)
    paths.append(AbsolutePath(file));
  DecodeAhead ahead(paths, ReadRequest(), [](const QString&) { return true; });
  RecordPrinter printer(console);
  FailureList failures;
  for (qsizetype i = 0; i < paths.size(); ++i) {
    console.Progress(u"%1/%2  %3"_s.arg(i).arg(paths.size()).arg(GetFileName(paths.at(i))));
    const Result<PhotoFile> photo = ahead.Take(i, [] {});
    console.ClearProgress();
    if (!photo) {
      failures.Add(paths.at(i), photo.Reason());
      continue;
    }
    const MetadataRecord record = ReadMetadataRecord(*photo, paths.at(i));
    ColumnTexts texts{{Column::Photo, paths.at(i)}};
    for (const Column column : RecordColumns())
      texts.emplace_back(column, record.Text(column));
    printer.Print(texts);
  }
  return printer.Finish(failures);
}

int RunRow(const GlobalOptions& global, const QStringList& files, const Console& console) {
  const OpenedSession opened = OpenSession(global, false, console);
  if (!opened.session) return opened.exitCode;
  PhotoRecordset& photos = opened.session->ActiveCatalogue().Photos();
  RecordPrinter printer(console);
  FailureList failures;
  for (const QString& file : files) {
    const QString path = AbsolutePath(file);
    if (photos.LocateRow(path))
      printer.Print(RowTexts(photos));
    else
      failures.Add(path, QString::fromUtf16(kReasonNotCatalogued));
  }
  return printer.Finish(failures);
}

int RunThumbnail(const GlobalOptions& global, const QString& file, const QString& out,
                 const Console& console) {
  const OpenedSession opened = OpenSession(global, false, console);
  if (!opened.session) return opened.exitCode;
  PhotoRecordset& photos = opened.session->ActiveCatalogue().Photos();
  const QString path = AbsolutePath(file);
  const QString target = AbsolutePath(out);
  FailureList failures;
  if (!photos.LocateRow(path)) {
    failures.Add(path, QString::fromUtf16(kReasonNotCatalogued));
  } else if (QFileInfo::exists(target)) {
    failures.Add(target, u"File already exists"_s);
  } else if (const Result<QByteArray> thumbnail = photos.ReadThumbnail(); !thumbnail) {
    failures.Add(path, thumbnail.Reason());
  } else if (const Outcome written = WriteFileAtomically(AbsolutePath(out), *thumbnail); !written) {
    failures.Add(AbsolutePath(out), written.Reason());
  }
  if (console.Json()) {
    QJsonObject written;
    if (failures.Empty()) written = {{u"Photo"_s, path}, {u"File"_s, target}};
    console.Document(QJsonDocument(written));
  }
  console.Failures(failures);
  return failures.Empty() ? kExitDone : kExitSomeFailed;
}

}  // namespace zqm
