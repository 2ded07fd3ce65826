// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers of chapters are those of PDF 32000-1:2008.
#include "imaging/pdf_file.h"

// The library is asked for its present types, without those kept for old callers.
#define POINTERHOLDER_TRANSITION 4
#include <exception>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

#include "imaging/pdf_streams.h"
#include "imaging/pixel_formats.h"
#include "imaging/raster.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using Object = QPDFObjectHandle;

constexpr qint64 kMostBytes = qint64{1} << 30;
/// No side of a page is longer in its unit (annex C).
constexpr int kLongestSide = 14400;

Failure PageFailure() {
  return {u"The page could not be made"_s};
}

/// The pixels of a page as they go into a stream, and what the stream's dictionary says of them.
struct PageImage {
  QByteArray stream;
  QSize size;
  int bits = 8;
  const char* colourSpace = "/DeviceRGB";
  const char* filter = nullptr;
  QByteArray parameters;  ///< the filter's, as they are written
};

QByteArray RowsOf(const QImage& picture, qsizetype bytesPerRow) {
  QByteArray rows;
  rows.reserve(bytesPerRow * picture.height());
  for (int y = 0; y < picture.height(); ++y)
    rows.append(reinterpret_cast<const char*>(picture.constScanLine(y)), bytesPerRow);
  return rows;
}

/// Gray or RGB, one byte a sample.
TiffRows ColourRows(const QImage& picture) {
  const bool gray = IsGray(picture);
  const QImage in =
      picture.convertToFormat(gray ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
  const int samples = gray ? 1 : 3;
  return {in.size(), samples, 8, RowsOf(in, qsizetype{samples} * in.width())};
}

/// One bit a pixel, 1 black: the other way round than pictures have it.
TiffRows BilevelRows(const QImage& picture) {
  QImage in = ConvertToBlackWhite(picture);
  in.invertPixels();
  return {in.size(), 1, 1, RowsOf(in, (in.width() + 7) / 8)};
}

PageImage Faxed(const QImage& picture, FaxKind kind) {
  const TiffRows rows = BilevelRows(picture);
  const QByteArray shape = "/Columns " + QByteArray::number(rows.size.width()) + " /Rows " +
                           QByteArray::number(rows.size.height());
  const QByteArray parameters = kind == FaxKind::Group4
                                    ? "<< /K -1 " + shape + " >>"
                                    : "<< /K 4 /EndOfLine true /EndOfBlock false " + shape + " >>";
  return {FaxEncoded(rows, kind), rows.size, 1, "/DeviceGray", "/CCITTFaxDecode", parameters};
}

PageImage Encoded(const QImage& picture, PdfCompression compression, int jpegQuality) {
  if (compression == PdfCompression::Fax4) return Faxed(picture, FaxKind::Group4);
  if (compression == PdfCompression::Fax3TwoDimensional)
    return Faxed(picture, FaxKind::Group3TwoDimensional);
  PageImage out{{}, picture.size(), 8, IsGray(picture) ? "/DeviceGray" : "/DeviceRGB"};
  if (compression == PdfCompression::Jpeg) {
    out.filter = "/DCTDecode";
    const QImage in =
        IsGray(picture) ? picture.convertToFormat(QImage::Format_Grayscale8) : picture;
    out.stream = EncodeJpeg(in, jpegQuality);
    return out;
  }
  const TiffRows rows = ColourRows(picture);
  if (compression == PdfCompression::Lzw) {
    out.filter = "/LZWDecode";
    out.stream = LzwEncoded(rows);
  } else if (compression == PdfCompression::RunLength) {
    out.filter = "/RunLengthDecode";
    out.stream = RunLengthEncoded(rows.pixels);
  } else {
    out.stream = rows.pixels;
  }
  return out;
}

/// A stream that keeps the bytes without copying them.
Object StreamOf(QPDF& pdf, const QByteArray& bytes) {
  struct Holder {
    explicit Holder(const QByteArray& held)
        : bytes(held),
          buffer(reinterpret_cast<unsigned char*>(bytes.data()),
                 static_cast<std::size_t>(bytes.size())) {}
    QByteArray bytes;
    Buffer buffer;
  };
  const auto holder = std::make_shared<Holder>(bytes);
  return Object::newStream(&pdf, std::shared_ptr<Buffer>(holder, &holder->buffer));
}

Object ImageObject(QPDF& pdf, const PageImage& image) {
  Object stream = StreamOf(pdf, image.stream);
  Object dictionary = stream.getDict();
  dictionary.replaceKey("/Type", Object::newName("/XObject"));
  dictionary.replaceKey("/Subtype", Object::newName("/Image"));
  dictionary.replaceKey("/Width", Object::newInteger(image.size.width()));
  dictionary.replaceKey("/Height", Object::newInteger(image.size.height()));
  dictionary.replaceKey("/BitsPerComponent", Object::newInteger(image.bits));
  dictionary.replaceKey("/ColorSpace", Object::newName(image.colourSpace));
  if (image.filter) dictionary.replaceKey("/Filter", Object::newName(image.filter));
  if (!image.parameters.isEmpty())
    dictionary.replaceKey("/DecodeParms", Object::parse(image.parameters.toStdString()));
  return stream;
}

/// A length in the page's unit.
std::string Length(int pixels, int unit) {
  return QByteArray::number(double(pixels) / unit, 'g', 12).toStdString();
}

Object PageObject(QPDF& pdf, const PageImage& image) {
  const int longest = std::max(image.size.width(), image.size.height());
  const int unit = (longest + kLongestSide - 1) / kLongestSide;
  const std::string width = Length(image.size.width(), unit);
  const std::string height = Length(image.size.height(), unit);
  Object page = Object::parse("<< /Type /Page /MediaBox [0 0 " + width + " " + height +
                              "] /Resources << /XObject << >> >> >>");
  if (unit > 1) page.replaceKey("/UserUnit", Object::newInteger(unit));  // 14.11.2, since 1.6
  page.getKey("/Resources")
      .getKey("/XObject")
      .replaceKey("/Picture", pdf.makeIndirectObject(ImageObject(pdf, image)));
  const std::string content = "q " + width + " 0 0 " + height + " 0 0 cm /Picture Do Q\n";
  page.replaceKey("/Contents", Object::newStream(&pdf, content));
  return pdf.makeIndirectObject(page);
}

Object InfoObject(QPDF& pdf, const PdfInfo& info) {
  const std::pair<const char*, const QString&> texts[] = {
      {"/Title", info.title},       {"/Author", info.author},   {"/Subject", info.subject},
      {"/Keywords", info.keywords}, {"/Creator", info.creator}, {"/Producer", info.producer}};
  Object dictionary = Object::newDictionary();
  for (const auto& [key, text] : texts)
    if (!text.isEmpty())
      dictionary.replaceKey(key, Object::newUnicodeString(text.toUtf8().toStdString()));
  return pdf.makeIndirectObject(dictionary);
}

}  // namespace

struct PdfFile::Document {
  QPDF pdf;
};

PdfFile::PdfFile(const PdfInfo& info, PdfCompression compression, int jpegQuality)
    : document_(std::make_unique<Document>()),
      compression_(compression),
      jpegQuality_(std::clamp(jpegQuality, 1, 100)) {
  document_->pdf.emptyPDF();
  document_->pdf.getTrailer().replaceKey("/Info", InfoObject(document_->pdf, info));
}

PdfFile::~PdfFile() = default;

Outcome PdfFile::AddPage(const QImage& picture) {
  if (picture.isNull()) return PageFailure();
  try {
    const PageImage image =
        Encoded(RemoveAlphaChannel(InWorkFormat(picture)), compression_, jpegQuality_);
    if (image.stream.isEmpty()) return PageFailure();
    if (bytes_ + image.stream.size() > kMostBytes) return Failure{u"The PDF file is too large"_s};
    document_->pdf.addPage(PageObject(document_->pdf, image), false);
    bytes_ += image.stream.size();
    ++pageCount_;
  } catch (const std::exception&) {
    return PageFailure();
  }
  return {};
}

Result<QByteArray> PdfFile::Bytes() {
  if (pageCount_ == 0) return Failure{u"The PDF file has no page"_s};
  try {
    QPDFWriter writer(document_->pdf);
    writer.setOutputMemory();
    writer.setMinimumPDFVersion("1.6");
    writer.setDeterministicID(true);
    // Pictures stay in the compression that was asked for.
    writer.setCompressStreams(false);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.write();
    const std::shared_ptr<Buffer> made = writer.getBufferSharedPointer();
    return QByteArray(reinterpret_cast<const char*>(made->getBuffer()),
                      static_cast<qsizetype>(made->getSize()));
  } catch (const std::exception& problem) {
    return Failure{QString::fromUtf8(problem.what())};
  }
}

Outcome PdfFile::Close(const QString& path) {
  const Result<QByteArray> bytes = Bytes();
  if (!bytes) return Failure{bytes.Reason()};
  return WriteFileAtomically(path, *bytes);
}

}  // namespace zqm
