// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <memory>

#include "shell/result.h"

namespace zqm {

/// `PDF_COMPRESSION`. The fax kinds save bilevel pages, the others gray pages as gray and the rest
/// as RGB, 8 bits a sample.
enum class PdfCompression {
  None = 0,
  RunLength = 1,
  Fax4 = 2,
  Fax3TwoDimensional = 3,
  Jpeg = 4,
  Lzw = 5
};

/// Document information; empty texts are left out.
struct PdfInfo {
  QString title, author, subject, keywords, creator, producer;
};

/// A PDF file of pictures, one a page, collected in memory. Nothing is on disk before `Close`.
class PdfFile {
 public:
  explicit PdfFile(const PdfInfo& info, PdfCompression compression = PdfCompression::Jpeg,
                   int jpegQuality = 90);
  ~PdfFile();
  PdfFile(const PdfFile&) = delete;
  PdfFile& operator=(const PdfFile&) = delete;

  /// A page of the picture's size, a pixel a point; beyond 14,400 points the unit of the page
  /// grows. What is transparent shows white. Fails, without a page, for a null picture, one that
  /// the compression can't hold (a side over 65,500 pixels as JPEG), and when all pages together
  /// would take more than 1 GB.
  Outcome AddPage(const QImage& picture);
  int PageCount() const { return pageCount_; }

  /// The whole file; a failure without a page.
  Result<QByteArray> Bytes();
  /// Writes it, all or nothing, over whatever stands there.
  Outcome Close(const QString& path);

 private:
  struct Document;
  std::unique_ptr<Document> document_;
  PdfCompression compression_;
  int jpegQuality_;
  int pageCount_ = 0;
  qint64 bytes_ = 0;
};

}  // namespace zqm
