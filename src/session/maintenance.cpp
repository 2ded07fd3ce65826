// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/maintenance.h"

#include <QFile>
#include <QFileInfo>

#include "catalogue/reasons.h"
#include "shell/busy.h"
#include "shell/files.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

void RemoveDatabase(const QString& path) {
  for (const QLatin1StringView suffix : {""_L1, "-wal"_L1, "-shm"_L1, "-journal"_L1})
    QFile::remove(path + suffix);
}

/// Why the new file can't take the catalogue's place; nothing when it holds all rows.
Outcome CheckCompacted(const QString& path, int rows) {
  OpenProblem problem = OpenProblem::None;
  const auto compacted = Catalogue::Open(path, problem, CatalogueAccess::Reading);
  QStringList faults;
  if (!compacted)
    faults.append(u"it can't be opened"_s);
  else if (compacted->Photos().Count() != rows)
    faults.append(u"rows are missing"_s);
  else
    faults = compacted->CheckIntegrity();
  if (faults.isEmpty()) return {};
  return Failure{u"The optimized database is not sound, and the old one stays: "_s +
                 faults.join(u", ")};
}

Outcome CompactAndCheck(Catalogue& catalogue, const QString& compacted,
                        const std::function<void(int done, int total)>& progress) {
  RemoveDatabase(compacted);
  if (Outcome written = catalogue.CompactTo(compacted, progress); !written) return written;
  return RunAside(
      [compacted, rows = catalogue.Photos().Count()] { return CheckCompacted(compacted, rows); });
}

}  // namespace

QString OptimizeReport::Text() const {
  const auto line = [](const QString& caption, qint64 bytes) {
    return caption + SizeText(static_cast<double>(bytes) / 1024) + u'\n';
  };
  const double saved =
      before > 0 ? 100.0 * static_cast<double>(before - after) / static_cast<double>(before) : 0;
  return line(u"Old size: "_s, before) + line(u"New size: "_s, after) + u"Saving: "_s +
         QString::number(static_cast<int>(Round(saved, 0))) + u" %\n"_s;
}

Result<OptimizeReport> Optimize(Session& session,
                                const std::function<void(int done, int total)>& progress,
                                const std::function<void()>& closing) {
  const QString path = session.HasActiveCatalogue() ? session.ActiveCatalogue().Path() : QString();
  if (!FileExists(path)) return Failure{QString::fromUtf16(maintenance_text::kNotLocated)};
  Catalogue& catalogue = session.ActiveCatalogue();
  const QString compacted = session.Folders().ScratchFolder() + u"/temp.mdb"_s;
  OptimizeReport report{catalogue.Bytes(), 0};

  Outcome done = CompactAndCheck(catalogue, compacted, progress);
  report.after = QFileInfo(compacted).size();
  // A log beside the old file would be taken for the new one's.
  if (done) done = catalogue.DropSideFiles();
  if (done.Reason() == QStringView(kReasonDatabaseLocked))
    done = Failure{QString::fromUtf16(session_text::kLocked)};
  if (done) {
    if (closing) closing();
    session.CloseCatalogue();
    done = ReplaceFile(compacted, path);
  }
  RemoveDatabase(compacted);
  if (!done) return Failure{done.Reason()};
  return report;
}

Outcome CreateCatalogue(const SessionFolders& folders, const QString& name) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  if (name.trimmed().isEmpty()) return refuse(maintenance_text::kNoName);
  if (!CheckIfValidFN(name)) return refuse(maintenance_text::kInvalidName);
  const QString file = name + u".mdb"_s;
  const QString target = folders.WorkingFolder() + u'/' + file;
  const QStringList standing = QDir(folders.WorkingFolder()).entryList(QDir::Files | QDir::Hidden);
  if (standing.contains(file, Qt::CaseInsensitive)) return refuse(maintenance_text::kNameExists);

  // Complete under another name before it stands among the catalogues.
  const QString master = folders.MasterFolder() + u"/Zolmira QM.mdb"_s;
  const QString copy = folders.ScratchFolder() + u'/' + file;
  RemoveDatabase(copy);
  Outcome made = CopyFile(master, copy);
  if (made) QFile::setPermissions(copy, QFile::permissions(copy) | QFile::WriteOwner);
  if (made) made = MoveFile(copy, target);
  if (!made) RemoveDatabase(copy);
  return made;
}

}  // namespace zqm
