// SPDX-License-Identifier: GPL-3.0-or-later
#include <QBuffer>
#include <QPdfWriter>

#include "printing/box_layout.h"
#include "printing/page_painter.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Red above, blue below, as a PNG.
QString TwoColours(const test::Scratch& scratch, const char* name, const QSize& size,
                   QImage::Format format = QImage::Format_RGB32) {
  QImage image(size, format);
  image.fill(Qt::blue);
  QPainter painter(&image);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(0, 0, size.width(), size.height() / 2,
                   image.hasAlphaChannel() ? QColor(255, 0, 0, 0) : QColor(Qt::red));
  painter.end();
  image.save(scratch.Path(name), "PNG");
  return scratch.Path(name);
}

std::string ColourAt(const QImage& image, double x, double y) {
  const QColor colour =
      image.pixelColor(static_cast<int>(x * image.width()), static_cast<int>(y * image.height()));
  return colour.name().toStdString();
}

constexpr auto kRed = "#ff0000", kBlue = "#0000ff", kWhite = "#ffffff";

TEST(PagePainter, PhotosAreTurnedCroppedAndScaledToDevicePixels) {
  const test::Scratch scratch;
  const QString photo = TwoColours(scratch, "wide.png", {1200, 800});
  const auto upright = PlaceOnSheet(photo, {0, 0, 200, 100}, 300, {});
  ASSERT_TRUE(upright) << upright.Reason().toStdString();
  EXPECT_TRUE(upright->pixels.size() == QSize(600, 300));
  EXPECT_EQ(ColourAt(upright->pixels, 0.5, 0.2), kRed);
  EXPECT_EQ(ColourAt(upright->pixels, 0.5, 0.8), kBlue);
  // Turned counter-clockwise what was above is at the left.
  const auto turned = PlaceOnSheet(photo, {0, 0, 100, 200}, 300, {});
  ASSERT_TRUE(turned);
  EXPECT_TRUE(turned->pixels.size() == QSize(300, 600));
  EXPECT_EQ(ColourAt(turned->pixels, 0.2, 0.5), kRed);
  EXPECT_EQ(ColourAt(turned->pixels, 0.8, 0.5), kBlue);
  // And clockwise at the right.
  const QString tall = TwoColours(scratch, "tall.png", {800, 1200});
  const auto lying = PlaceOnSheet(tall, {0, 0, 200, 100}, 300, {});
  ASSERT_TRUE(lying);
  EXPECT_EQ(ColourAt(lying->pixels, 0.2, 0.5), kBlue);
  EXPECT_EQ(ColourAt(lying->pixels, 0.8, 0.5), kRed);
  // A small one keeps its size on the sheet.
  const auto small = PlaceOnSheet(photo, {5, 6, 2000, 2000}, 300, {});
  ASSERT_TRUE(small);
  EXPECT_TRUE(small->place == QRectF(5, 6, 1200, 800));
  EXPECT_TRUE(small->pixels.size() == QSize(3600, 2400));
}

TEST(PagePainter, EveryKindOfPixelReachesThePaper) {
  const test::Scratch scratch;
  struct Case {
    QImage::Format format;
    std::string above;
  };
  const Case cases[] = {
      {QImage::Format_ARGB32, kWhite},  // transparent
      {QImage::Format_RGBA64, kWhite},  {QImage::Format_RGBX64, kRed},
      {QImage::Format_Grayscale16, ""}, {QImage::Format_Grayscale8, ""},
  };
  for (const Case& c : cases) {
    const QString photo = TwoColours(scratch, "photo.png", {400, 400}, c.format);
    const auto placed = PlaceOnSheet(photo, {0, 0, 100, 100}, 100, {});
    ASSERT_TRUE(placed) << placed.Reason().toStdString();
    const bool gray = c.above.empty();
    EXPECT_EQ(placed->pixels.format(), gray ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (!gray) {
      EXPECT_EQ(ColourAt(placed->pixels, 0.5, 0.2), c.above) << c.format;
    }
  }
}

TEST(PagePainter, PostersStayWithinMemory) {
  const test::Scratch scratch;
  const QString photo = TwoColours(scratch, "photo.png", {200, 200});
  const auto poster = PlaceOnSheet(photo, {0, 0, 32767, 32767}, 1200, {});
  ASSERT_TRUE(poster) << poster.Reason().toStdString();
  EXPECT_LE(qint64{poster->pixels.width()} * poster->pixels.height(), qint64{1} << 26);
}

/// A sheet of one by one inch with four boxes.
PrintTemplate FourBoxes() {
  PrintTemplate layout{{300, 500}, {}, {}};
  for (int i = 0; i < 4; ++i) {
    VectorObject box = *layout.objects.Find(AddPictureBox(layout.objects, Qt::red));
    box.left = 20 + i % 2 * 140, box.top = 30 + i / 2 * 140;
    layout.objects.Replace(box);
    layout.ids.push_back(box.id);
  }
  return layout;
}

int PagesIn(const QByteArray& pdf) {
  return static_cast<int>(pdf.count("/Type /Page\n"));
}

TEST(PagePainter, PagesAndTheirCopiesFollowOneAnother) {
  const test::Scratch scratch;
  const QString photo = TwoColours(scratch, "photo.png", {400, 400});
  PrintJob job{FourBoxes(), {photo, photo, scratch.Path("gone.png"), photo, photo}, 3, {}};
  QBuffer out;
  ASSERT_TRUE(out.open(QBuffer::WriteOnly));
  std::vector<int> told;
  {
    QPdfWriter writer(&out);
    writer.setResolution(300);
    const auto printed = PrintPages(job, writer, [&](int page, int pages) {
      EXPECT_EQ(pages, 2);
      if (told.empty() || told.back() != page) told.push_back(page);
    });
    ASSERT_TRUE(printed) << printed.Reason().toStdString();
    EXPECT_EQ(printed->pages, 2);
    // Gone since it was chosen: the others are printed.
    ASSERT_EQ(printed->failures.rows.size(), 1u);
    EXPECT_EQ(printed->failures.rows[0].File, scratch.Path("gone.png"));
  }
  EXPECT_EQ(told, (std::vector{0, 1}));
  EXPECT_EQ(PagesIn(out.data()), 6);
  EXPECT_EQ(out.data().count("/Subtype /Image"), 4);  // copies share theirs
  QBuffer closed;                                     // takes nothing
  QPdfWriter refused(&closed);
  job.photos.clear();
  EXPECT_FALSE(PrintPages(job, refused, {}));
}

TEST(PagePainter, PageIsAtTrueSizeFromTheUpperLeft) {
  const test::Scratch scratch;
  const QString photo = TwoColours(scratch, "photo.png", {400, 400});
  const auto boxes = BoxesOf(FourBoxes());
  const QString gone = scratch.Path("gone.png");
  QImage paper(600, 1000, QImage::Format_RGB32);
  paper.fill(Qt::white);
  QPainter painter(&paper);
  painter.scale(2, 2);
  const auto empty = PaintPage(painter, boxes, {photo, gone, photo}, 200, {});
  painter.end();
  ASSERT_EQ(empty.size(), 1u);
  EXPECT_EQ(empty[0].why.File, gone);
  EXPECT_TRUE(empty[0].box == boxes[1]);
  EXPECT_EQ(paper.pixelColor(39, 70).name().toStdString(), kWhite);
  EXPECT_EQ(paper.pixelColor(41, 70).name().toStdString(), kRed);
  EXPECT_EQ(paper.pixelColor(238, 258).name().toStdString(), kBlue);
  EXPECT_EQ(paper.pixelColor(241, 258).name().toStdString(), kWhite);
  EXPECT_EQ(paper.pixelColor(41, 538).name().toStdString(), kBlue);    // the third
  EXPECT_EQ(paper.pixelColor(330, 500).name().toStdString(), kWhite);  // the fourth has none
}

}  // namespace
}  // namespace zqm
