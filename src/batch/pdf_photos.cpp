// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/pdf_photos.h"

#include "batch/existing_names.h"
#include "imaging/picture.h"
#include "imaging/raster.h"
#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr PdfCompressionItem kCompressions[] = {
    {u"Uncompressed", PdfCompression::None},
    {u"Run length compression", PdfCompression::RunLength},
    {u"G4Fax (only black/white images)", PdfCompression::Fax4},
    {u"G3Fax-2D (only black/white images)", PdfCompression::Fax3TwoDimensional},
    {u"DCT-jpeg (only color images)", PdfCompression::Jpeg},
    {u"LZW", PdfCompression::Lzw},
};

std::unique_ptr<PdfFile> NewPdf(const PdfOptions& options) {
  const PdfInfo info{options.title,    options.author,  options.subject,
                     options.keywords, u"Zolmira QM"_s, u"Zolmira QM"_s};
  return std::make_unique<PdfFile>(info, options.compression);
}

Outcome AddPhoto(PdfFile& pdf, const QString& path, const PdfOptions& options) {
  return RunAside([&]() -> Outcome {
    Picture picture;
    picture.SetSettings(options.load);
    if (Outcome loaded = picture.LoadFromFile(path); !loaded) return loaded;
    const AlphaRemoval removal =
        options.type == PdfType::OneForAllImages ? AlphaRemoval::Merge : AlphaRemoval::Drop;
    return pdf.AddPage(RemoveAlphaChannel(picture.Image(), removal));
  });
}

/// What a file would be written over; "" when nothing stands there. Or why it can't be.
Result<QString> FindStanding(const QString& target, const QStringList& photos,
                             const PdfOptions& options, ExistingNames& names) {
  const QString standing = names.Find(target);
  if (standing.isEmpty()) return QString();
  if (options.existing != ExistingFiles::Overwrite)
    return Failure{QString::fromUtf16(kReasonExists)};
  // A photo may have any name.
  if (photos.contains(standing)) return Failure{QString::fromUtf16(kReasonPermission)};
  return standing;
}

Outcome WritePdf(PdfFile& pdf, const QString& target, const QString& standing) {
  const QString path = standing.isEmpty() ? target : standing;
  const Outcome written = RunAside([&] { return pdf.Close(path); });
  if (!written) return Failure{QString::fromUtf16(pdf_text::kNotCreated)};
  return {};
}

Result<BatchResult> CreateForAll(const QStringList& paths, const PdfOptions& options,
                                 const BatchObserver& observer) {
  const QString target = PdfBookPath(options);
  ExistingNames names;
  const Result<QString> standing = FindStanding(target, paths, options, names);
  if (!standing) {
    BatchResult refused{0, {QString::fromUtf16(pdf_text::kAll.failures), {}}};
    refused.failures.Add(target, standing.Reason());
    return refused;
  }
  const auto pdf = NewPdf(options);
  const auto step = [&](qsizetype, const QString& path) -> QStringList {
    if (!FileExists(path)) return {};
    return Reasons(AddPhoto(*pdf, path, options));
  };
  BatchResult result = BatchRun(paths, pdf_text::kAll, step, observer);
  result.done = pdf->PageCount();
  if (result.done == 0) {
    if (result.failures.Empty()) result.failures.Add(target, QString::fromUtf16(kReasonMissing));
    return result;
  }
  const Outcome written = WritePdf(*pdf, target, *standing);
  if (!written) return Failure{written.Reason()};
  return result;
}

/// One photo into a file of its own. Why not goes under the name that it is about: the file that
/// stands, or the photo.
class EachImage {
 public:
  EachImage(const QStringList& photos, const PdfOptions& options)
      : photos_(photos), options_(options) {}

  void Create(const QString& photo) {
    if (!written_ || !FileExists(photo)) return;
    const QString target = PathIn(options_.folder, GetBaseName(photo) + u".pdf"_s);
    const Result<QString> standing = FindStanding(target, photos_, options_, names_);
    if (!standing) return failures_.Add(target, standing.Reason());
    const auto pdf = NewPdf(options_);
    if (const Outcome added = AddPhoto(*pdf, photo, options_); !added)
      return failures_.Add(photo, added.Reason());
    written_ = WritePdf(*pdf, target, *standing);
    if (!written_) return;
    names_.Add(standing->isEmpty() ? target : *standing);
    ++done_;
  }

  Result<BatchResult> Take(const QString& label) const {
    if (!written_) return Failure{written_.Reason()};
    return BatchResult{done_, {label, failures_.rows}};
  }

 private:
  const QStringList& photos_;
  const PdfOptions& options_;
  ExistingNames names_;
  FailureList failures_;
  Outcome written_;  ///< nothing is made after a failure
  int done_ = 0;
};

Result<BatchResult> CreateForEach(const QStringList& paths, const PdfOptions& options,
                                  const BatchObserver& observer) {
  EachImage each(paths, options);
  const auto step = [&each](qsizetype, const QString& path) {
    each.Create(path);
    return QStringList();
  };
  const BatchResult run = BatchRun(paths, pdf_text::kEach, step, observer);
  return each.Take(run.failures.label);
}

}  // namespace

std::span<const PdfCompressionItem> PdfCompressions() {
  return kCompressions;
}

QString PdfBookPath(const PdfOptions& options) {
  return PathIn(options.folder, options.name + u".pdf"_s);
}

Outcome CheckPdf(const PdfOptions& options) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  if (Outcome given = CheckDestination(options.folder); !given) return given;
  if (options.type == PdfType::OneForEachImage) return {};
  if (options.name.isEmpty()) return refuse(pdf_text::kNoName);
  if (!CheckIfValidFN(options.name)) return refuse(pdf_text::kInvalidName);
  return {};
}

Result<BatchResult> CreatePdf(const QStringList& paths, const PdfOptions& options,
                              const BatchObserver& observer) {
  return options.type == PdfType::OneForAllImages ? CreateForAll(paths, options, observer)
                                                  : CreateForEach(paths, options, observer);
}

}  // namespace zqm
