// SPDX-License-Identifier: GPL-3.0-or-later
#include <QRegularExpression>

#include "app/commands/commands.h"
#include "batch/photo_commands.h"
#include "printing/paper_measures.h"
#include "printing/print_pdf.h"
#include "printing/print_text.h"
#include "session/session.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct NamedPaper {
  QStringView name;
  QSizeF millimetres;
};
constexpr NamedPaper kPapers[] = {{u"A4", {210, 297}}, {u"Letter", {215.9, 279.4}}};

/// "A4", "Letter" or "200x250mm", upright or not.
std::optional<QSizeF> PaperOf(const QString& text) {
  for (const NamedPaper& paper : kPapers)
    if (paper.name.compare(text, Qt::CaseInsensitive) == 0) return paper.millimetres;
  static const QRegularExpression kSize(uR"(^(\d{1,4}(?:\.\d+)?)x(\d{1,4}(?:\.\d+)?)mm$)"_s,
                                        QRegularExpression::CaseInsensitiveOption);
  const auto match = kSize.match(text);
  const QSizeF size(match.captured(1).toDouble(), match.captured(2).toDouble());
  return match.hasMatch() && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

/// The paper laid as the sheet lies.
QSizeF TurnedFor(const QSize& sheet, const QSizeF& paper) {
  const Orientation wanted = OrientationOf(sheet), lies = OrientationOf(paper);
  return wanted == Orientation::Static || wanted == lies ? paper : paper.transposed();
}

/// Whether a PDF may be written there: no photo, and nothing else that isn't a PDF file, goes.
Outcome CheckTarget(const QString& path, const QStringList& photos) {
  if (FolderExists(path)) return Failure{path + u" is a folder"_s};
  if (!FileExists(path)) return {};
  QFile file(path);
  const bool isPdf = file.open(QFile::ReadOnly) && file.read(5) == "%PDF-";
  const bool isPhoto = std::ranges::any_of(
      photos, [&](const QString& photo) { return platform::SameFile(photo, path); });
  if (!isPdf || isPhoto) return Failure{path + u" exists and is no PDF file"_s};
  if (ReadOnlyFile(path)) return Failure{path + u": "_s + QString::fromUtf16(kReasonPermission)};
  return {};
}

struct Split {
  QStringList standing;
  FailureList missing;
};

Split Standing(const QStringList& photos) {
  Split split;
  for (const QString& photo : photos) {
    if (FileExists(photo))
      split.standing.append(photo);
    else
      split.missing.Add(photo, QString::fromUtf16(kReasonMissing));
  }
  return split;
}

Outcome OpenSettings(Session& session) {
  if (Outcome prepared = session.PrepareFolders(); !prepared) return prepared;
  return session.OpenSettings();
}

/// The paper for a sheet, inches; or why it won't do.
Result<QSizeF> PaperFor(const QSize& sheet, const QString& text) {
  const auto given = PaperOf(text);
  if (!given) return Failure{u"--paper: "_s + text + u" is neither A4, Letter nor WxHmm"_s};
  const QSizeF paper = TurnedFor(sheet, *given);
  if (Outcome fits = CheckPage(sheet, paper / kMillimetresPerInch, OrientationOf(paper)); !fits)
    return Failure{fits.Reason()};
  return paper;
}

}  // namespace

int RunPrint(const GlobalOptions& global, const PrintFiles& options, const Console& console) {
  const QStringList photos = PhotosOf(options.files);
  const QString path = AbsolutePath(options.pdf);
  const auto copies = CopiesOf(options.copies);
  if (!copies) return console.Refuse(copies.Reason());
  if (const QString folder = GetParentFolderName(path); !FolderExists(folder))
    return RefuseFolder(folder, console);
  if (const Outcome free = CheckTarget(path, photos); !free) return console.Refuse(free.Reason());
  Session session(ResolveSessionFolders(global.home));
  if (const Outcome opened = OpenSettings(session); !opened) return console.Refuse(opened.Reason());
  const auto layout = LoadTemplate(session.Folders().PrintingTemplatesFolder(), options.layout);
  if (!layout) return console.Refuse(layout.Reason());
  const auto paper = PaperFor(layout->sheet, options.paper);
  if (!paper) return console.Refuse(paper.Reason());
  Split split = Standing(photos);
  if (split.standing.isEmpty())
    return console.Fail(QString::fromUtf16(FindPhotoCommand(kPrintCommand)->unusable));

  const PrintJob job{*layout, split.standing, *copies, session.WorkSettings()};
  const auto printed = PrintPdf(job, *paper, path, [&](int page, int pages) {
    console.Progress(u"Printing "_s + PageCaption(page, pages));
  });
  console.ClearProgress();
  if (!printed) return console.Fail(printed.Reason());
  for (const FailureRow& row : printed->failures.rows)
    split.missing.Add(row.File, row.Reason);
  return console.Report(printed->pages, "Pages",
                        split.missing.Empty() ? QString::fromUtf16(print_text::kPrinted)
                                              : u"The following images could not be printed:"_s,
                        split.missing);
}

}  // namespace zqm
