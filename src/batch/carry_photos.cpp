// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/carry_photos.h"

#include <QFileInfo>
#include <cerrno>

#include "batch/existing_names.h"
#include "batch/file_and_row.h"
#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Where a photo goes.
struct Target {
  QString path;
  QString standing;  ///< what stands there, letter case aside; "" when nothing does
};

/// Or why it doesn't go.
Result<Target> FindTarget(const QString& path, const CarryOptions& options, ExistingNames& names) {
  if (!FileExists(path)) return Failure{QString::fromUtf16(kReasonMissing)};
  Target target{PathIn(options.folder, GetFileName(path)), QString()};
  target.standing = names.Find(target.path);
  if (target.standing.isEmpty()) return target;
  if (options.existing != ExistingFiles::Overwrite)
    return Failure{QString::fromUtf16(kReasonExists)};
  // Onto itself, also where links lead back to it.
  const bool itself =
      GetParentFolderName(path) == StripSlash(options.folder) ||
      QFileInfo(path).canonicalFilePath() == QFileInfo(target.standing).canonicalFilePath();
  if (itself) return Failure{QString::fromUtf16(kReasonPermission)};
  return target;
}

/// Over a file whose name differs in letter case: the new one has its own spelling, and the old one
/// goes when the new one is there.
Outcome MoveBeside(const QString& path, const QString& target, const QString& standing) {
  if (ReadOnlyFile(standing)) return Failure{QString::fromUtf16(kReasonPermission)};
  Outcome moved = MoveFile(path, target);
  // Should it stay, both stand, and nothing is lost.
  if (moved) (void)DeleteFile(standing);
  return moved;
}

void TellRemoved(BrowserView* view, const QString& path) {
  if (view != nullptr && !path.isEmpty()) view->RemovePhoto(path);
}

/// How the row of a path spells it, letter case aside; "" without a row.
QString RowPath(const Catalogue& catalogue, const QString& path) {
  const RowIndex& index = catalogue.Photos().Index();
  const auto row = index.Find(path);
  return row ? index.At(index.PositionOf(*row)).path : QString();
}

/// One file of a move.
QStringList MoveOne(Catalogue& catalogue, const QString& path, const CarryOptions& options,
                    ExistingNames& names, BrowserView* view) {
  const auto found = FindTarget(path, options, names);
  if (!found) return {found.Reason()};
  const auto& [target, standing] = *found;
  const FileChange move = [&path, &target, &standing] {
    if (standing.isEmpty()) return AsDenied(MoveFile(path, target));
    return AsDenied(standing == target ? MoveFileOver(path, target)
                                       : MoveBeside(path, target, standing));
  };
  // What was overwritten can't come back, so the move isn't undone then.
  const FileChange back = standing.isEmpty()
                              ? FileChange([&path, &target] { return MoveFile(target, path); })
                              : FileChange();
  // A row of the target whose file is gone is dropped, and its entry with it.
  const QString stale = RowPath(catalogue, target);
  const Outcome moved = ChangeFileAndRow(catalogue, {u"move"_s, path, target}, move, back);
  if (!moved) return Reasons(moved);
  names.Add(target);
  TellRemoved(view, standing.isEmpty() ? target : standing);
  if (stale != RowPath(catalogue, path)) TellRemoved(view, stale);
  TellRemoved(view, path);
  // Of a file whose spelling was another one.
  const bool otherRow = !standing.isEmpty() && standing != target && !FileExists(standing);
  return otherRow ? Reasons(CatalogueRemoval(catalogue, standing)) : QStringList();
}

/// One file of a copy.
QStringList CopyOne(Catalogue& catalogue, const QString& path, const CarryOptions& options,
                    ExistingNames& names, BrowserView* view) {
  const auto found = FindTarget(path, options, names);
  if (!found) return {found.Reason()};
  const auto& [target, standing] = *found;
  const QString copy = standing.isEmpty() ? target : standing;
  const QString stale = RowPath(catalogue, copy);
  const Outcome copied = AsDenied(RunAside([&path, &copy] { return CopyFile(path, copy); }));
  if (!copied) return Reasons(copied);
  names.Add(copy);
  TellRemoved(view, copy);
  TellRemoved(view, stale);
  return Reasons(CatalogueRemoval(catalogue, copy));
}

using CarryStep = decltype(&MoveOne);

BatchResult Carry(const BatchTexts& texts, CarryStep step, Catalogue& catalogue,
                  const QStringList& paths, const CarryOptions& options, BrowserView* view,
                  const BatchObserver& observer) {
  ExistingNames names;
  BatchResult result = BatchRun(
      paths, texts,
      [&](qsizetype, const QString& path) { return step(catalogue, path, options, names, view); },
      observer);
  if (view != nullptr) view->Live();
  return result;
}

}  // namespace

Outcome CheckDestination(const QString& folder) {
  if (!folder.isEmpty()) return {};
  return Failure{QString::fromUtf16(carry_text::kNoDestination)};
}

Outcome CheckFolderName(const QString& name) {
  if (name.isEmpty()) return Failure{QString::fromUtf16(carry_text::kNoFolderName)};
  if (!CheckIfValidFN(name)) return Failure{QString::fromUtf16(carry_text::kInvalidFolderName)};
  return {};
}

Outcome CreateFolderIn(const QString& parent, const QString& name) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  if (Outcome valid = CheckFolderName(name); !valid) return valid;
  if (FolderExists(PathIn(parent, name))) return refuse(carry_text::kFolderExists);
  Outcome made = CreateFolder(PathIn(parent, name));
  for (const int gone : {ENXIO, ENODEV, ENOMEDIUM})
    if (!made && made.Reason() == ReasonForErrno(gone)) return refuse(carry_text::kNotReady);
  return made;
}

BatchResult MovePhotos(Catalogue& catalogue, const QStringList& paths, const CarryOptions& options,
                       BrowserView* view, const BatchObserver& observer) {
  return Carry(carry_text::kMove, MoveOne, catalogue, paths, options, view, observer);
}

BatchResult CopyPhotos(Catalogue& catalogue, const QStringList& paths, const CarryOptions& options,
                       BrowserView* view, const BatchObserver& observer) {
  return Carry(carry_text::kCopy, CopyOne, catalogue, paths, options, view, observer);
}

}  // namespace zqm
