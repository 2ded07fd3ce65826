// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "batch/photo_commands.h"
#include "printing/paper_measures.h"
#include "printing/print_pdf.h"
#include "printing/print_text.h"
#include "session/session.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// The paper laid as the sheet lies.
QSizeF TurnedFor(const QSize& sheet, const QSizeF& paper) {
  const Orientation wanted = OrientationOf(sheet), lies = OrientationOf(paper);
  return wanted == Orientation::Static || wanted == lies ? paper : paper.transposed();
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
  const auto given = PaperNamed(text);
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
  if (const Outcome free = CheckPdfTarget(path, photos); !free)
    return console.Refuse(free.Reason());
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
