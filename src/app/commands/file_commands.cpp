// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QJsonObject>

#include "app/commands/commands.h"
#include "batch/carry_photos.h"
#include "batch/delete_photos.h"
#include "batch/pdf_photos.h"
#include "batch/photo_commands.h"
#include "batch/rename_photos.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {

QStringList PhotosOf(const QStringList& files) {
  QStringList paths;
  for (const QString& file : files)
    paths.append(AbsolutePath(file));
  return paths;
}

int RefuseFolder(const QString& folder, const Console& console) {
  return console.Refuse(OnOneLine(folder) + u": "_s + QString::fromUtf16(kReasonMissing));
}

int RunOver(const GlobalOptions& global, bool writing, const BatchTexts& texts, const char* word,
            const FileWork& work, const Console& console) {
  const OpenedSession opened = OpenSession(global, writing, console);
  if (!opened.session) return opened.exitCode;
  const BatchResult result = work(opened.session->ActiveCatalogue(), [&](const BatchProgress& at) {
    console.Progress(QString::fromUtf16(texts.wait) + u" %1%"_s.arg(at.Percent()));
  });
  console.ClearProgress();
  return console.Report(result.done, word,
                        QString::fromUtf16(result.failures.Empty() ? texts.done : texts.failures),
                        result.failures);
}

int RunCarry(const GlobalOptions& global, Carrying what, const CarryFiles& options,
             const Console& console) {
  const QStringList photos = PhotosOf(options.files);
  const QString folder = AbsolutePath(options.to);
  if (!FolderExists(folder)) return RefuseFolder(folder, console);
  const bool moves = what == Carrying::Move;
  const auto usable =
      PreparePhotos(*FindPhotoCommand(moves ? kMoveCommand : kCopyCommand), photos, {});
  if (!usable) return console.Fail(usable.Reason());
  const CarryOptions carry{folder,
                           options.overwrite ? ExistingFiles::Overwrite : ExistingFiles::Skip};
  const auto run = moves ? MovePhotos : CopyPhotos;
  return RunOver(
      global, true, moves ? carry_text::kMove : carry_text::kCopy, moves ? "Moved" : "Copied",
      [&](Catalogue& catalogue, const BatchObserver& observer) {
        return run(catalogue, photos, carry, nullptr, observer);
      },
      console);
}

int RunDelete(const GlobalOptions& global, Deleting what, const QStringList& files,
              const Console& console) {
  const bool deletes = what == Deleting::FromDisk;
  const auto run = deletes ? DeletePhotos : RemovePhotos;
  return RunOver(
      global, true, deletes ? delete_text::kDelete : delete_text::kRemove,
      deletes ? "Deleted" : "Removed",
      [&](Catalogue& catalogue, const BatchObserver& observer) {
        return run(catalogue, PhotosOf(files), nullptr, observer);
      },
      console);
}

int RunRename(const GlobalOptions& global, const RenameFiles& files, const Console& console) {
  const RenameOptions& options = files.options;
  if (const Outcome valid = CheckRename(options); !valid) return console.Refuse(valid.Reason());
  const QStringList photos = PhotosOf(files.files);
  if (options.mode == RenameMode::SingleFile && photos.size() > 1)
    return console.Refuse(u"--name: for a single file only"_s);
  const QStringList names = RenamePreview(photos, options);
  const auto usable = PreparePhotos(kRenameCommand, photos, {});
  if (!files.preview && !usable) return console.Fail(usable.Reason());
  if (!files.preview)
    return RunOver(
        global, true, rename_text::kRename, "Renamed",
        [&](Catalogue& catalogue, const BatchObserver& observer) {
          return RenamePhotos(catalogue, photos, names, nullptr, observer);
        },
        console);
  QJsonArray rows;
  for (qsizetype i = 0; i < photos.size(); ++i) {
    const QString name = GetFileName(photos.at(i));
    rows.append(QJsonObject{{u"Current Name"_s, name}, {u"New Name"_s, names.at(i)}});
    if (!console.Json()) console.Line(OnOneLine(name) + u" -> "_s + OnOneLine(names.at(i)));
  }
  if (console.Json()) console.Document(QJsonDocument(rows));
  return kExitDone;
}

int RunPdf(const GlobalOptions& global, const PdfFiles& files, const Console& console) {
  PdfOptions options = files.options;
  options.folder = AbsolutePath(options.folder);
  if (!FolderExists(options.folder)) return RefuseFolder(options.folder, console);
  if (const Outcome valid = CheckPdf(options); !valid) return console.Refuse(valid.Reason());
  const auto photos = PreparePhotos(*FindPhotoCommand(kPdfCommand), PhotosOf(files.files), {});
  if (!photos) return console.Fail(photos.Reason());
  Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared)
    return console.Refuse(prepared.Reason());
  if (const Outcome opened = session.OpenSettings(); !opened)
    return console.Refuse(opened.Reason());
  options.load = session.WorkSettings();
  const BatchTexts& texts = PdfTexts(options.type);
  const auto result = CreatePdf(*photos, options, [&](const BatchProgress& at) {
    console.Progress(QString::fromUtf16(texts.wait) + u" %1%"_s.arg(at.Percent()));
  });
  console.ClearProgress();
  if (!result) return console.Fail(result.Reason());
  return console.Report(result->done, "Created",
                        QString::fromUtf16(result->failures.Empty() ? texts.done : texts.failures),
                        result->failures);
}

}  // namespace zqm
