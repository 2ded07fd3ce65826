// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/picture_work.h"

#include "batch/file_and_row.h"
#include "batch/work_ahead.h"
#include "catalogue/like_pattern.h"
#include "cataloguing/catalogue_photo.h"
#include "cataloguing/replaced_photos.h"
#include "imaging/thumbnail.h"
#include "shell/busy.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Over a file of another spelling: the new one has its own, and the old one goes behind it.
Outcome WriteOutput(const QString& path, const QString& standing, const QByteArray& file) {
  if (!standing.isEmpty() && ReadOnlyFile(standing))
    return Failure{QString::fromUtf16(kReasonPermission)};
  Outcome written = RunAside([&path, &file] { return WriteFileAtomically(path, file); });
  if (written && !standing.isEmpty() && standing != path) (void)DeleteFile(standing);
  return written;
}

/// Over itself, however often it is tried.
bool WillNeverBe(const QString& reason) {
  return reason == QStringView(kReasonSeveralPages) || reason == QStringView(kReasonNotWritable) ||
         reason == QStringView(kReasonIncomplete);
}

/// The row of what has just been written: none, or a new one.
Outcome AddToDatabase(Catalogue& catalogue, const QString& path, const OutputOptions& options) {
  Outcome removed = CatalogueRemoval(catalogue, path);
  if (!removed || !options.catalogue) return removed;
  ReadRequest request = options.read;
  request.thumbnail = true;
  const auto photo = RunAside([&path, &request] { return ReadPhotoFile(path, request); });
  if (!photo) return Failure{photo.Reason()};
  return CataloguePhoto(*photo, path, catalogue.Photos());
}

/// With the stamp of the file that it is made of. It may be another one before its turn comes, by
/// an earlier photo of the run or by another program.
MadePicture Make(const PictureMaker& maker, const QString& path) {
  const QString stamp = platform::FileStamp(path);
  MadePicture made = maker(path);
  made.stamp = stamp;
  return made;
}

/// The run that both kinds have: the pictures come made, in order.
PictureResult RunPictures(
    const PictureRun& run, const QStringList& paths, const BatchTexts& texts,
    const PictureMaker& maker,
    const std::function<QStringList(const QString& path, const std::function<MadePicture()>& take,
                                    FailureList& unwritten)>& step) {
  PictureResult result;
  WorkAhead<MadePicture> ahead(paths.size(),
                               [&](qsizetype place) { return Make(maker, paths.at(place)); });
  static_cast<BatchResult&>(result) = BatchRun(
      paths, texts,
      [&](qsizetype place, const QString& path) -> QStringList {
        if (!FileExists(path)) return {QString::fromUtf16(kReasonMissing)};
        const auto take = [&] {
          MadePicture made = ahead.Take(place, YieldToInterface);
          if (made.stamp != platform::FileStamp(path))
            made = RunAside([&] { return Make(maker, path); });
          if (run.show) run.show(path, made.preview);
          return made;
        };
        return step(path, take, result.unwritten);
      },
      run.observer);
  result.done -= static_cast<int>(result.unwritten.rows.size());
  if (run.view != nullptr) {
    if (!result.unwritten.Empty()) run.view->Say(Unwritten(result.unwritten));
    run.view->Live();
  }
  return result;
}

}  // namespace

QString Unwritten(const FailureList& unwritten) {
  const FailureRow& first = unwritten.rows.front();
  const QString line = u"%1 could not be written: %2"_s.arg(GetFileName(first.File), first.Reason);
  const auto more = unwritten.rows.size() - 1;
  return more == 0 ? line : line + u" (and %1 more)"_s.arg(more);
}

MadePicture MakePicture(const QString& path, const PictureSettings& settings,
                        const std::function<Outcome(Picture& picture)>& change,
                        const std::function<Result<QByteArray>(Picture& picture)>& encode) {
  Picture picture;
  picture.SetSettings(settings);
  Outcome made = picture.LoadFromFile(path);
  picture.SetIOProperty(u"EXIF_Software", u"Zolmira QM"_s);
  const QImage preview = FitThumbnail(picture.Image(), kPreviewBox);
  if (made) made = change(picture);
  return {made ? encode(picture) : Failure{made.Reason()}, preview};
}

PictureResult WritePictures(const PictureRun& run, const QStringList& paths,
                            const BatchTexts& texts, const PictureMaker& maker,
                            const std::function<QString(const QString& path)>& output,
                            const OutputOptions& options) {
  ExistingNames names;
  const bool overwrite = options.existing == ExistingFiles::Overwrite;
  // What will be passed over isn't worth the work; whether it stands is asked again in its turn.
  const PictureMaker wanted = [&](const QString& path) {
    return overwrite || !FileExists(output(path)) ? maker(path) : MadePicture{};
  };
  return RunPictures(
      run, paths, texts, wanted,
      [&](const QString& path, const std::function<MadePicture()>& take,
          FailureList& unwritten) -> QStringList {
        const QString target = output(path);
        const QString standing = names.Find(target);
        if (!standing.isEmpty() && !overwrite) return {QString::fromUtf16(kReasonExists)};
        MadePicture made = take();
        // What stood there when it was passed over is gone by now.
        if (!made.file && made.file.Reason().isEmpty())
          made = RunAside([&] { return Make(maker, path); });
        const bool overItself = FoldCase(path) == FoldCase(target);
        if (!made.file && overItself && WillNeverBe(made.file.Reason()))
          return {made.file.Reason()};
        if (!made.file) {
          unwritten.Add(path, made.file.Reason());
          return {};
        }
        const auto intent = ReplaceIntent::Record(run.catalogue, standing);
        if (!intent) return {intent.Reason()};
        if (const Outcome written = WriteOutput(target, standing, *made.file); !written) {
          intent->Drop();
          unwritten.Add(path, written.Reason());
          return {};
        }
        names.Add(target);
        if (run.view != nullptr) run.view->ShowWritten(target, options.catalogue);
        if (standing != target && !standing.isEmpty())
          if (const Outcome removed = CatalogueRemoval(run.catalogue, standing); !removed)
            return {removed.Reason()};
        const Outcome followed = AddToDatabase(run.catalogue, target, options);
        return Reasons(followed ? intent->Finish() : followed);
      });
}

PictureResult ReplacePictures(const PictureRun& run, const QStringList& paths,
                              const BatchTexts& texts, const PictureMaker& maker,
                              SaveFailures report,
                              const std::function<Outcome(const QString& path)>& written) {
  const PictureMaker wanted = [&](const QString& path) {
    return ReadOnlyFile(path) ? MadePicture{Failure{QString::fromUtf16(kReasonPermission)}, {}, {}}
                              : maker(path);
  };
  return RunPictures(run, paths, texts, wanted,
                     [&](const QString& path, const std::function<MadePicture()>& take,
                         FailureList& unwritten) -> QStringList {
                       const MadePicture made = take();
                       const auto intent =
                           ReplaceIntent::Record(run.catalogue, written ? path : QString());
                       if (!intent) return {intent.Reason()};
                       const Outcome saved = made.file ? WriteOutput(path, path, *made.file)
                                                       : Failure{made.file.Reason()};
                       if (!saved) {
                         intent->Drop();
                         // What will never be written is worth a row in any run.
                         if (WillNeverBe(saved.Reason()) || report == SaveFailures::Listed)
                           return {saved.Reason()};
                         unwritten.Add(path, saved.Reason());
                         return {};
                       }
                       const Outcome followed = written ? written(path) : Outcome();
                       if (run.view != nullptr) run.view->ShowChanged(path);
                       return Reasons(followed ? intent->Finish() : followed);
                     });
}

}  // namespace zqm
