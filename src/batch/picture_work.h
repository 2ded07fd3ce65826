// SPDX-License-Identifier: GPL-3.0-or-later
// What runs that write pictures share: loading and encoding ahead of their turn, the rules for
// files that stand, rows and thumbnails that follow.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>

#include "batch/batch_run.h"
#include "batch/carry_photos.h"
#include "batch/existing_names.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "imaging/photo_reader.h"
#include "imaging/picture.h"

namespace zqm {

/// A picture made from a file, ready to be written; or why there is none.
struct MadePicture {
  Result<QByteArray> file = Failure{};
  QImage preview;  ///< as loaded, fits `kPreviewBox`; null when it couldn't be
  QString stamp;   ///< of the file as it was then; set by the run
};
inline constexpr QSize kPreviewBox{320, 240};

/// Makes the picture of a file, on any thread: loads, changes, encodes.
using PictureMaker = std::function<MadePicture(const QString& path)>;

/// Runs `change` over a loaded picture and encodes it; `encode` is `EncodeAs` or `EncodeOver`.
/// `EXIF_Software` is stamped.
MadePicture MakePicture(const QString& path, const PictureSettings& settings,
                        const std::function<Outcome(Picture& picture)>& change,
                        const std::function<Result<QByteArray>(Picture& picture)>& encode);

/// A run that writes pictures. Photos that can't be loaded or saved make no row in the failure
/// list; they are told apart.
struct PictureResult : BatchResult {
  FailureList unwritten;  ///< each with its reason
};

/// The first of them with its reason, and how many more: for a line. `unwritten` isn't empty.
QString Unwritten(const FailureList& unwritten);

/// Where pictures are put.
struct OutputOptions {
  ExistingFiles existing = ExistingFiles::Skip;
  bool catalogue = false;  ///< whether what is written gets a row
  ReadRequest read;        ///< for that row
};

/// What a run works with.
struct PictureRun {
  Catalogue& catalogue;
  BrowserView* view;  ///< may be null
  const BatchObserver& observer;
  /// Each picture as its turn comes, null for one that can't be loaded; may be empty.
  std::function<void(const QString& path, const QImage& preview)> show;
};

/// Writes what `maker` makes of each photo to `output(path)`. A file that stands there, letter case
/// aside, is left ("File already exists in destination folder") or replaced whole; the row that it
/// had goes, and a new one comes when wanted.
PictureResult WritePictures(const PictureRun& run, const QStringList& paths,
                            const BatchTexts& texts, const PictureMaker& maker,
                            const std::function<QString(const QString& path)>& output,
                            const OutputOptions& options);

/// Puts what `maker` makes of each photo in its place. `written` lets the row follow; without one
/// the row stays as it is. What fails is a row of the failure list when `report` says so, else told
/// apart.
enum class SaveFailures { Listed, ToldApart };
PictureResult ReplacePictures(const PictureRun& run, const QStringList& paths,
                              const BatchTexts& texts, const PictureMaker& maker,
                              SaveFailures report,
                              const std::function<Outcome(const QString& path)>& written);

}  // namespace zqm
