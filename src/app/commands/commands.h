// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line does: a function a command, from plain options to an exit code. All of them
// call the same core as the windows do.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "app/commands/console.h"
#include "batch/edit_metadata.h"
#include "batch/pdf_photos.h"
#include "batch/rename_photos.h"
#include "batch/resize_photos.h"
#include "batch/rotate_photos.h"
#include "session/session.h"

namespace zqm {

/// The options before the command.
struct GlobalOptions {
  QString home;       ///< "" for the user's own folders
  QString catalogue;  ///< with or without ".mdb"; "" when there is only one
};

/// A session with its catalogue open, or an exit code with the message told. `writing` takes the
/// home's lock first.
struct OpenedSession {
  std::unique_ptr<Session> session;
  int exitCode = kExitDone;
};
OpenedSession OpenSession(const GlobalOptions& options, bool writing, const Console& console);

/// Runs over files in an opened session and reports; `word` is the JSON document's key for the
/// number of files done.
using FileWork = std::function<BatchResult(Catalogue& catalogue, const BatchObserver& observer)>;
int RunOver(const GlobalOptions& global, bool writing, const BatchTexts& texts, const char* word,
            const FileWork& work, const Console& console);
/// Absolute paths, as the user gave them: a photo named twice is worked on twice.
QStringList PhotosOf(const QStringList& files);
/// That a folder to write into isn't there.
int RefuseFolder(const QString& folder, const Console& console);

struct CatalogOptions {
  QStringList folders;  ///< files are taken too
  bool recursive = false;
  QString notes, author, date;
};
int RunCatalog(const GlobalOptions& global, const CatalogOptions& options, const Console& console);

struct SearchOptions {
  QString keywords, author, from, to;
  bool any = false;  ///< any of the words, not all
  QStringList ratings, categories;
  QStringList filters;    ///< "Column=Value"; several values of one column are alternatives
  bool printSql = false;  ///< print the statement and stop
};
int RunSearch(const GlobalOptions& global, const SearchOptions& options, const Console& console);
int RunValues(const GlobalOptions& global, const QString& column, const Console& console);

/// What isn't given isn't touched; an empty text clears.
struct SetOptions {
  std::optional<QString> notes, author, date, rating, categories, tags, flag;
  QStringList files;
};
int RunSet(const GlobalOptions& global, const SetOptions& options, const Console& console);

enum class CategoryAction { List, Add, Delete };
int RunCategories(const GlobalOptions& global, CategoryAction action, const QString& name,
                  const Console& console);

int RunNew(const GlobalOptions& global, const QString& name, const Console& console);
int RunOptimize(const GlobalOptions& global, const Console& console);
int RunRebuild(const GlobalOptions& global, const QStringList& files, const Console& console);
int RunReconnect(const GlobalOptions& global, const QString& oldFolder, const QString& newFolder,
                 const Console& console);

enum class Carrying { Move, Copy };
struct CarryFiles {
  QString to;  ///< a folder that stands
  bool overwrite = false;
  QStringList files;
};
int RunCarry(const GlobalOptions& global, Carrying what, const CarryFiles& options,
             const Console& console);

enum class Deleting { FromDisk, FromCatalogue };
int RunDelete(const GlobalOptions& global, Deleting what, const QStringList& files,
              const Console& console);

struct RenameFiles {
  RenameOptions options;
  bool preview = false;  ///< print the names and change nothing
  QStringList files;
};
int RunRename(const GlobalOptions& global, const RenameFiles& files, const Console& console);

struct MetadataEdit {
  QStringList settings;  ///< "Caption=text", captions as the editor's check boxes have them
  QStringList files;
};
int RunExif(const GlobalOptions& global, const MetadataEdit& edit, const Console& console);
int RunIptc(const GlobalOptions& global, const MetadataEdit& edit, const Console& console);

struct ExportFiles {
  MetadataKind kind;
  QString to;  ///< a folder that stands
  QStringList files;
};
int RunExport(const GlobalOptions& global, const ExportFiles& options, const Console& console);
int RunStrip(const GlobalOptions& global, MetadataBlock block, const QStringList& files,
             const Console& console);
struct PdfFiles {
  PdfOptions options;
  QStringList files;
};
int RunPdf(const GlobalOptions& global, const PdfFiles& files, const Console& console);

/// Photos on the pages of a template, into a PDF file.
struct PrintFiles {
  QString layout;  ///< name of the template
  QString pdf;     ///< replaced if it is a PDF file already
  QString copies, paper;
  QStringList files;
};
int RunPrint(const GlobalOptions& global, const PrintFiles& options, const Console& console);

int RunInfo(const QStringList& files, const Console& console);
int RunRow(const GlobalOptions& global, const QStringList& files, const Console& console);
int RunThumbnail(const GlobalOptions& global, const QString& file, const QString& out,
                 const Console& console);
int RunCatalogues(const GlobalOptions& global, const Console& console);
int RunDemo(const QString& folder, const Console& console);

/// Where pictures are put; without `to`, beside or over their source.
struct PictureOutput {
  std::optional<QString> to;
  bool overwrite = false;
  bool catalogue = false;
  QStringList files;
};

struct ConvertFiles {
  QString format;
  QStringList options;  ///< "KEY=VALUE"
  PictureOutput output;
};
int RunConvert(const GlobalOptions& global, const ConvertFiles& files, const Console& console);

struct ResizeFiles {
  ResizeOptions options;
  PictureOutput output;
};
int RunResize(const GlobalOptions& global, const ResizeFiles& files, const Console& console);

int RunRotate(const GlobalOptions& global, const Turn& turn, const QStringList& files,
              const Console& console);

/// The template by its name, with or without ".iev", letter case aside.
int RunWatermark(const GlobalOptions& global, const QString& name, const QStringList& files,
                 const Console& console);
/// Those of watermarks, then those of printed pages.
int RunTemplates(const GlobalOptions& global, const Console& console);

}  // namespace zqm
