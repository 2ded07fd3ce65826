// SPDX-License-Identifier: GPL-3.0-or-later
// Page layouts with a name: a sheet of paper and the picture boxes on it. A template is a pair of
// files in one folder, NAME.iev with the boxes and NAME.txt with a record of 1008 bytes: width and
// height of the sheet (32 bits each, lowest byte first) and the boxes' IDs as ",3,,5,,8,".
#pragma once

#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>
#include <vector>

#include "imaging/vector_objects.h"
#include "shell/result.h"

namespace zqm {

/// Sheets are measured in pixels of a hundredth of an inch, whatever unit the user sees.
inline constexpr double kSheetDpi = 100;
/// Of a sheet's side, in its pixels.
inline constexpr int kMostSheetSide = 32767;

struct PrintTemplate {
  QSize sheet;  ///< pixels
  VectorObjects objects;
  std::vector<int> ids;  ///< of the boxes in the order in which they were made

  bool operator==(const PrintTemplate&) const = default;
};

/// The picture boxes, sheet pixels, in the order in which photos are put into them: as the record
/// has them, those that found no room there behind the others as they were made.
std::vector<QRectF> BoxesOf(const PrintTemplate& layout);

/// The two files of a template.
QString TemplateObjectsFile(const QString& folder, const QString& name);
QString TemplateRecordFile(const QString& folder, const QString& name);

/// The base names of the files in the folder that are no pictures, each once, sorted.
QStringList PrintTemplatesName(const QString& folder);

/// Reasons are whole messages.
Result<PrintTemplate> LoadTemplate(const QString& folder, const QString& name);
/// Both files, or none is changed; the folder is made when it is missing. `IsOutsidePaper` is the
/// caller's question.
Outcome SaveTemplate(const QString& folder, const QString& name, const PrintTemplate& layout);
/// Both files; one that is missing is no failure.
Outcome RemoveTemplate(const QString& folder, const QString& name);

/// The record, and back; no ID that was cut off at its end counts.
QByteArray EncodeTemplateRecord(const PrintTemplate& layout);
struct TemplateRecord {
  QSize sheet;
  std::vector<int> ids;
};
/// Nothing for what isn't such a record.
std::optional<TemplateRecord> DecodeTemplateRecord(const QByteArray& bytes);

}  // namespace zqm
