// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "batch/batch_run.h"
#include "batch/carry_photos.h"
#include "imaging/pdf_file.h"
#include "imaging/picture.h"
#include "shell/result.h"

namespace zqm {

enum class PdfType { OneForEachImage, OneForAllImages };

/// How the photos get into PDF files.
struct PdfOptions {
  PdfType type = PdfType::OneForEachImage;
  QString folder;  ///< without a closing separator
  QString name;    ///< of the one for all images; ".pdf" is put behind it as it stands
  PdfCompression compression = PdfCompression::Jpeg;
  ExistingFiles existing = ExistingFiles::Skip;
  QString title, author, subject, keywords;
  PictureSettings load;
};

/// An item of the list of compressions.
struct PdfCompressionItem {
  const char16_t* caption;
  PdfCompression compression;
};
/// In the list's order, which is that of their numbers.
std::span<const PdfCompressionItem> PdfCompressions();

/// Whether the options can be worked with, or the message why not.
Outcome CheckPdf(const PdfOptions& options);

/// Where the one file for all images goes.
QString PdfBookPath(const PdfOptions& options);

/// Writes the photos into PDF files, each on a page of its own size. What is transparent shows
/// white in the one file for all images; in a file of its own a photo keeps the colours that it
/// hides. Photos that don't stand are passed over, those that can't be read are listed with the
/// reason. A file that stands already is listed with "File already exists in destination folder",
/// or overwritten; "Permission was denied" if it is one of the photos. `done` counts the photos
/// that went in. Fails, with the message, when a file can't be written: the run ends there; files
/// made before stay, the one that failed is as it was.
Result<BatchResult> CreatePdf(const QStringList& paths, const PdfOptions& options,
                              const BatchObserver& observer);

namespace pdf_text {
inline constexpr BatchTexts kEach = {
    u"Creating PDF File(s). Please wait...", u"The following pdf files could not be created",
    u"The pdf file(s) have been created in the destination folder."};
inline constexpr BatchTexts kAll = {u"Creating PDF File. Please wait...", kEach.failures,
                                    kEach.done};
inline constexpr char16_t kNoName[] = u"Enter the name of the PDF Document.";
inline constexpr char16_t kInvalidName[] =
    u"Invalid PDF File name. A PDF File name cannot contain the following characters: "
    u"\\ / : * ? \" < > |";
inline constexpr char16_t kNotCreated[] = u"Could not create the PDF File(s). Access is denied.";
}  // namespace pdf_text

/// The texts of the run.
constexpr const BatchTexts& PdfTexts(PdfType type) {
  return type == PdfType::OneForAllImages ? pdf_text::kAll : pdf_text::kEach;
}

}  // namespace zqm
