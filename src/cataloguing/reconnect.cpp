// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/reconnect.h"

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// The text as a pattern that matches nothing but it.
QString Escaped(const QString& text) {
  QString pattern;
  for (const QChar c : text) {
    if (c == u'%' || c == u'_' || c == u'[')
      pattern += u'[' + QString(c) + u']';
    else if (c == u'"')
      pattern += u"\"\""_s;
    else
      pattern += c;
  }
  return pattern;
}

/// Why the row of `path` can't have `newPath`; "" when it can.
QString ReasonAgainst(const RowIndex& index, const QString& path, const QString& newPath) {
  if (!FileExists(newPath)) return QString::fromUtf16(reconnect_text::kNotLocated);
  const auto standing = index.Find(newPath);
  const bool taken = standing && (newPath == path || standing != index.Find(path));
  return taken ? QString::fromUtf16(reconnect_text::kDuplicates) : QString();
}

}  // namespace

QStringList CatalogueFolders(const Catalogue& catalogue) {
  QStringList folders =
      catalogue.Query(u"Select [Parent Folder] FROM qryphoto"_s, Column::ParentFolder);
  folders.removeDuplicates();
  folders.removeAll(QString());
  return folders;
}

QString WithSeparator(const QString& folder) {
  return folder.endsWith(u'/') ? folder : folder + u'/';
}

FailureList ReconnectFolder(Catalogue& catalogue, const QString& oldFolder,
                            const QString& newFolder,
                            const std::function<void(int done, int total)>& progress) {
  FailureList failures{QString::fromUtf16(reconnect_text::kFailures), {}};
  const QString from = WithSeparator(oldFolder), to = WithSeparator(newFolder);
  PhotoRecordset& photos = catalogue.Photos();
  const QStringList paths = catalogue.Query(
      u"Select * from qryphoto WHERE Photo LIKE \""_s + Escaped(from) + u"%\""_s, Column::Photo);
  const auto total = static_cast<int>(paths.size());
  Outcome written = photos.MoveFirst();
  for (int done = 0; done < total && written; progress(++done, total)) {
    const QString& path = paths.at(done);
    const QString newPath = QString(path).replace(from, to);
    const QString reason = ReasonAgainst(photos.Index(), path, newPath);
    if (!reason.isEmpty()) {
      failures.Add(path, reason);
      continue;
    }
    if (!photos.LocateRow(path)) break;  // the move below says why
    photos.SetField(Column::Photo, newPath);
    photos.SetField(Column::ParentFolder, GetParentFolderName(newPath));
  }
  if (written) written = photos.MoveFirst();
  if (written) return failures;
  failures.rows.clear();
  for (const QString& path : paths)
    failures.Add(path, written.Reason());
  return failures;
}

}  // namespace zqm
