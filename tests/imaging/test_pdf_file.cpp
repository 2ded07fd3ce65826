// SPDX-License-Identifier: GPL-3.0-or-later
#define POINTERHOLDER_TRANSITION 4
#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include "imaging/codec.h"
#include "imaging/pdf_file.h"
#include "imaging/pdf_streams.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Colours, flat parts and noise, so that each compression has its good and its bad places.
QImage Drawn(const QSize& size, QImage::Format format = QImage::Format_RGB32) {
  QImage picture(size, QImage::Format_RGB32);
  quint32 state = 3;
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      state = state * 1664525 + 1013904223;
      const int grain = x < size.width() / 2 ? 0 : static_cast<int>(state >> 25);
      picture.setPixel(x, y, qRgb((x * 3 + grain) & 255, y & 255, y < 20 ? 255 : grain));
    }
  }
  return picture.convertToFormat(format);
}

/// A file read back by the library that knows the structure.
class ReadBack {
 public:
  explicit ReadBack(const QByteArray& bytes) : bytes_(bytes) {
    pdf.setSuppressWarnings(true);
    pdf.processMemoryFile("", bytes_.constData(), static_cast<std::size_t>(bytes_.size()));
    pages = QPDFPageDocumentHelper(pdf).getAllPages();
  }
  QPDFObjectHandle Image(std::size_t page) { return pages.at(page).getImages().at("/Picture"); }
  QByteArray Decoded(std::size_t page) {
    const auto data = Image(page).getStreamData(qpdf_dl_all);
    return {reinterpret_cast<const char*>(data->getBuffer()),
            static_cast<qsizetype>(data->getSize())};
  }
  QString Info(const char* key) {
    return QString::fromStdString(pdf.getTrailer().getKey("/Info").getKey(key).getUTF8Value());
  }

  QPDF pdf;
  std::vector<QPDFPageObjectHelper> pages;

 private:
  QByteArray bytes_;
};

QByteArray OnePage(const QImage& picture, PdfCompression compression) {
  PdfFile file({}, compression);
  EXPECT_TRUE(file.AddPage(picture));
  const Result<QByteArray> bytes = file.Bytes();
  return bytes ? *bytes : QByteArray();
}

QByteArray Samples(const QImage& picture) {
  QByteArray all;
  const qsizetype row = qsizetype{picture.width()} * picture.depth() / 8;
  for (int y = 0; y < picture.height(); ++y)
    all.append(reinterpret_cast<const char*>(picture.constScanLine(y)), row);
  return all;
}

TEST(PdfFile, CompressionsWithoutLossGiveThePixelsBack) {
  struct Case {
    PdfCompression compression;
    const char* filter;
  };
  for (const Case& c : {Case{PdfCompression::None, ""},
                        {PdfCompression::RunLength, "/RunLengthDecode"},
                        {PdfCompression::Lzw, "/LZWDecode"}}) {
    for (const QSize& size : {QSize(1, 1), QSize(61, 47), QSize(333, 250)}) {
      const QImage colour = Drawn(size);
      ReadBack read(OnePage(colour, c.compression));
      ASSERT_EQ(read.pages.size(), 1U);
      QPDFObjectHandle filter = read.Image(0).getDict().getKey("/Filter");
      EXPECT_EQ(filter.isName() ? filter.getName() : "", c.filter);
      EXPECT_EQ(read.Image(0).getDict().getKey("/ColorSpace").getName(), "/DeviceRGB");
      EXPECT_EQ(read.Decoded(0), Samples(colour.convertToFormat(QImage::Format_RGB888)))
          << c.filter << size.width();
      const QImage gray = colour.convertToFormat(QImage::Format_Grayscale8);
      ReadBack grayRead(OnePage(gray, c.compression));
      EXPECT_EQ(grayRead.Image(0).getDict().getKey("/ColorSpace").getName(), "/DeviceGray");
      EXPECT_EQ(grayRead.Decoded(0), Samples(gray)) << c.filter << size.width();
    }
  }
}

TEST(PdfFile, JpegPagesHoldAJpegOfThePicture) {
  for (const auto format : {QImage::Format_RGB32, QImage::Format_Grayscale16}) {
    QImage in(90, 60, format);
    in.fill(QColor(150, 150, 150));
    ReadBack read(OnePage(in, PdfCompression::Jpeg));
    EXPECT_EQ(read.Image(0).getDict().getKey("/Filter").getName(), "/DCTDecode");
    const auto raw = read.Image(0).getRawStreamData();
    const ByteView jpeg(raw->getBuffer(), raw->getSize());
    const Codec* codec = SniffCodec(jpeg, {});
    ASSERT_TRUE(codec);
    const Result<QImage> out = codec->load(jpeg, {});
    ASSERT_TRUE(out);
    EXPECT_EQ(out->size(), in.size());
    EXPECT_EQ(out->pixelColor(40, 30), in.pixelColor(40, 30));
  }
}

TEST(PdfFile, FaxPagesAreBilevelAndBlackStaysBlack) {
  QImage drawing(83, 40, QImage::Format_RGB32);
  drawing.fill(Qt::white);
  for (int y = 5; y < 30; ++y) {
    for (int x = 0; x < 30 + y; ++x)
      drawing.setPixel(x, y, qRgb(20, 0, 40));
  }
  // The streams, wrapped as a TIFF file, through the other library's decoder.
  const auto decoded = [&](const QByteArray& stream, quint16 compression, quint32 options) {
    QByteArray tiff("II*\0\x08\0\0\0", 8);
    const auto put16 = [&](quint16 v) { tiff.append(char(v & 255)).append(char(v >> 8)); };
    const auto put32 = [&](quint32 v) { put16(v & 0xFFFF), put16(quint16(v >> 16)); };
    const std::pair<quint16, quint32> tags[] = {{256, 83},     {257, 40},
                                                {258, 1},      {259, compression},
                                                {262, 0},      {273, 8 + 2 + 9 * 12 + 4},
                                                {278, 40},     {279, quint32(stream.size())},
                                                {292, options}};
    put16(std::size(tags));
    for (const auto& [tag, value] : tags)
      put16(tag), put16(4), put32(1), put32(value);
    put32(0);
    tiff += stream;
    const Codec* codec = SniffCodec(Bytes(tiff), {});
    const Result<QImage> out = codec ? codec->load(Bytes(tiff), {}) : Failure{u"no codec"_s};
    return out ? out->convertToFormat(QImage::Format_RGB32) : QImage();
  };
  QImage expected = drawing;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 83; ++x) {
      if (drawing.pixel(x, y) != qRgb(255, 255, 255)) expected.setPixel(x, y, qRgb(0, 0, 0));
    }
  }
  struct Case {
    PdfCompression compression;
    quint16 tiff;
    quint32 options;
    int k;
  };
  for (const Case& c :
       {Case{PdfCompression::Fax4, 4, 0, -1}, {PdfCompression::Fax3TwoDimensional, 3, 1, 4}}) {
    ReadBack read(OnePage(drawing, c.compression));
    QPDFObjectHandle dictionary = read.Image(0).getDict();
    EXPECT_EQ(dictionary.getKey("/Filter").getName(), "/CCITTFaxDecode");
    EXPECT_EQ(dictionary.getKey("/BitsPerComponent").getIntValue(), 1);
    EXPECT_EQ(dictionary.getKey("/DecodeParms").getKey("/K").getIntValue(), c.k);
    const auto raw = read.Image(0).getRawStreamData();
    const QByteArray stream(reinterpret_cast<const char*>(raw->getBuffer()),
                            static_cast<qsizetype>(raw->getSize()));
    EXPECT_EQ(decoded(stream, c.tiff, c.options), expected) << c.tiff;
  }
}

TEST(PdfFile, PagesHaveTheSizeOfTheirPictures) {
  PdfFile file({}, PdfCompression::Fax4);
  ASSERT_TRUE(file.AddPage(Drawn({640, 480})));
  ASSERT_TRUE(file.AddPage(QImage(20000, 10, QImage::Format_Grayscale8)));
  EXPECT_EQ(file.PageCount(), 2);
  ReadBack read(*file.Bytes());
  ASSERT_EQ(read.pages.size(), 2U);
  const auto box = read.pages[0].getObjectHandle().getKey("/MediaBox").getArrayAsRectangle();
  EXPECT_EQ(box.urx, 640);
  EXPECT_EQ(box.ury, 480);
  EXPECT_FALSE(read.pages[0].getObjectHandle().hasKey("/UserUnit"));
  const auto wide = read.pages[1].getObjectHandle().getKey("/MediaBox").getArrayAsRectangle();
  const double unit = read.pages[1].getObjectHandle().getKey("/UserUnit").getNumericValue();
  EXPECT_LE(wide.urx, 14400);
  EXPECT_EQ(wide.urx * unit, 20000);
  EXPECT_EQ(wide.ury * unit, 10);
}

TEST(PdfFile, TransparentPartsShowWhite) {
  QImage clear(8, 8, QImage::Format_ARGB32);
  clear.fill(qRgba(255, 0, 0, 0));
  EXPECT_EQ(ReadBack(OnePage(clear, PdfCompression::None)).Decoded(0),
            QByteArray(8 * 8 * 3, '\xFF'));
}

TEST(PdfFile, InformationKeepsItsLetters) {
  PdfFile file({u"Frühling in Österreich"_s, u"Jürgen"_s, QString(), u"日本, Straße"_s,
                u"Zolmira QM"_s, u"Zolmira QM"_s});
  ASSERT_TRUE(file.AddPage(Drawn({8, 8})));
  ReadBack read(*file.Bytes());
  EXPECT_EQ(read.Info("/Title"), u"Frühling in Österreich"_s);
  EXPECT_EQ(read.Info("/Author"), u"Jürgen"_s);
  EXPECT_EQ(read.Info("/Keywords"), u"日本, Straße"_s);
  EXPECT_EQ(read.Info("/Producer"), u"Zolmira QM"_s);
  EXPECT_FALSE(read.pdf.getTrailer().getKey("/Info").hasKey("/Subject"));
}

TEST(PdfFile, NothingIsWrittenWithoutAPage) {
  const test::Scratch scratch;
  const QString path = scratch.Path("book.pdf");
  PdfFile file({}, PdfCompression::Jpeg);
  EXPECT_FALSE(file.Close(path));
  EXPECT_FALSE(file.AddPage({}));
  EXPECT_FALSE(file.AddPage(QImage(70000, 2, QImage::Format_Grayscale8))) << "too wide for a JPEG";
  EXPECT_FALSE(file.Close(path));
  EXPECT_FALSE(QFile::exists(path));
  ASSERT_TRUE(file.AddPage(Drawn({30, 20})));
  EXPECT_TRUE(file.Close(path));
  EXPECT_EQ(ReadBack(test::Scratch::Read(path)).pages.size(), 1U);
  EXPECT_FALSE(file.Close(scratch.Path("absent/book.pdf")));
}

TEST(RunLengthEncoded, KeepsToTheFormatAtItsEdges) {
  EXPECT_EQ(RunLengthEncoded({}), QByteArray("\x80"));
  EXPECT_EQ(RunLengthEncoded("a"), QByteArray("\0a\x80", 3));
  EXPECT_EQ(RunLengthEncoded(QByteArray(129, 'x')), QByteArray("\x81x\0x\x80", 5));
  EXPECT_EQ(RunLengthEncoded("abccd"), QByteArray("\x04"
                                                  "abccd\x80"));
}

}  // namespace
}  // namespace zqm
