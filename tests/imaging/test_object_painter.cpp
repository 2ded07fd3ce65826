// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/object_painter.h"
#include "imaging/pixel_formats.h"
#include "tests/support/noise.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::Noise;

/// A box of one colour, in whole pixels, without a frame.
VectorObject Filled(const QRectF& box, const QColor& colour) {
  VectorObject object;
  object.id = 1;
  object.left = box.left();
  object.top = box.top();
  object.width = box.width();
  object.height = box.height();
  object.penStyle = PenStyle::None;
  object.brushStyle = BrushStyle::Solid;
  object.brushColour = colour;
  return object;
}

VectorObject TextAt(QPointF at, const QString& text, double height, const QColor& colour) {
  VectorObject object;
  object.id = 1;
  object.kind = ObjectKind::Text;
  object.left = at.x();
  object.top = at.y();
  object.penColour = colour;
  EXPECT_TRUE(SetProperty(object, u"FONTHEIGHT", QString::number(height)));
  EXPECT_TRUE(SetProperty(object, u"TEXT", text));
  return object;
}

VectorObjects ListOf(const VectorObject& object) {
  VectorObjects objects;
  EXPECT_TRUE(objects.Insert(object));
  return objects;
}

QImage Paper(const QSize& size, const QColor& colour = Qt::white) {
  QImage paper(size, QImage::Format_RGB32);
  paper.fill(colour);
  return paper;
}

int CountOf(const QImage& picture, QRgb colour) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      count += picture.pixel(x, y) == colour;
  return count;
}

TEST(Merged, LeavesPixelsOutsideTheObjectsAsTheyWere) {
  const QSize size(90, 70);
  QImage palette = Noise(size, QImage::Format_RGB32).convertToFormat(QImage::Format_Indexed8);
  struct Case {
    QImage picture;
    QImage::Format becomes;
  };
  const Case cases[] = {
      {Noise(size, QImage::Format_RGB32), QImage::Format_RGB32},
      {Noise(size, QImage::Format_ARGB32), QImage::Format_ARGB32},
      {Noise(size, QImage::Format_RGBX64), QImage::Format_RGBX64},
      {Noise(size, QImage::Format_RGBA64), QImage::Format_RGBA64},
      {Noise(size, QImage::Format_Grayscale8), QImage::Format_RGB32},
      {Noise(size, QImage::Format_Grayscale16), QImage::Format_RGBX64},
      {palette, QImage::Format_RGB32},
      {Noise(size, QImage::Format_RGB32).convertToFormat(QImage::Format_Mono),
       QImage::Format_RGB32},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.picture.format());
    VectorObject red = Filled({20, 10, 30, 40}, QColor(200, 10, 30));
    const QImage merged = Merged(c.picture, ListOf(red));
    ASSERT_EQ(merged.format(), c.becomes);
    const QImage before = c.picture.convertToFormat(c.becomes);
    int inside = 0;
    for (int y = 0; y < size.height(); ++y)
      for (int x = 0; x < size.width(); ++x) {
        const QColor pixel = merged.pixelColor(x, y);
        if (QRect(20, 10, 30, 40).contains(x, y))
          inside += pixel.rgb() == qRgb(200, 10, 30) && pixel.alpha() == 255;
        else
          ASSERT_EQ(pixel, before.pixelColor(x, y)) << x << ", " << y;
      }
    EXPECT_EQ(inside, 30 * 40);
  }
}

TEST(Merged, HardlyVisibleColoursInAnObjectsBoxSurvive) {
  QImage faint(40, 20, QImage::Format_ARGB32);
  faint.fill(qRgba(90, 140, 33, 2));
  VectorObject line = Filled({0, 0, 40, 20}, Qt::red);
  line.kind = ObjectKind::Line;
  line.penStyle = PenStyle::Solid;
  line.penColour = Qt::red;
  line.penWidth = 1;
  const QImage merged = Merged(faint, ListOf(line));
  EXPECT_EQ(merged.pixel(35, 3), faint.pixel(35, 3)) << "far from the diagonal";
  EXPECT_NE(merged.pixel(20, 10), faint.pixel(20, 10));
}

TEST(Merged, GrayStaysGrayUnderWhatHasNoColour) {
  for (const QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_Grayscale16}) {
    const QImage picture = Noise({60, 40}, format);
    VectorObject veil = Filled({10, 10, 20, 20}, Qt::white);
    veil.transparency = 0;
    EXPECT_EQ(Merged(picture, ListOf(veil)), picture) << "nothing shows";
    veil.transparency = 128;
    veil.penColour = Qt::red;  // not painted: it has no frame
    const QImage merged = Merged(picture, ListOf(veil));
    ASSERT_EQ(merged.format(), format);
    EXPECT_NEAR(merged.pixelColor(15, 15).redF(),
                picture.pixelColor(15, 15).redF() * 127 / 255 + 128.0 / 255, 0.005);
    EXPECT_EQ(merged.copy(0, 0, 60, 10), picture.copy(0, 0, 60, 10));

    VectorObject stamp;
    stamp.id = 1;
    stamp.kind = ObjectKind::Picture;
    stamp.picture = Paper({8, 8}, QColor(128, 128, 128));
    EXPECT_EQ(Merged(picture, ListOf(stamp)).format(), format);
    stamp.picture = Paper({8, 8}, Qt::green);
    EXPECT_FALSE(IsGray(Merged(picture, ListOf(stamp))));
  }
}

TEST(Merged, DeepPicturesGetDeepObjects) {
  // A veil over 16 bits leaves steps that 8 bits haven't.
  QImage ramp(1000, 4, QImage::Format_RGBX64);
  for (int y = 0; y < ramp.height(); ++y)
    for (int x = 0; x < ramp.width(); ++x)
      ramp.setPixelColor(x, y, QColor::fromRgba64(quint16(30000 + x), 30000, 30000));
  VectorObject veil = Filled({0, 0, 1000, 4}, Qt::black);
  veil.transparency = 51;
  const QImage merged = Merged(ramp, ListOf(veil));
  QSet<quint16> reds;
  for (int x = 0; x < merged.width(); ++x)
    reds.insert(merged.pixelColor(x, 1).rgba64().red());
  EXPECT_GT(reds.size(), 700);
}

TEST(Merged, TakesNothingAndObjectsThatReachOut) {
  const QImage picture = Noise({40, 30}, QImage::Format_Indexed8);
  EXPECT_EQ(Merged(picture, {}), picture) << "not even the palette is touched";
  EXPECT_TRUE(Merged({}, ListOf(Filled({0, 0, 9, 9}, Qt::red))).isNull());
  EXPECT_EQ(Merged(picture, ListOf(Filled({500, 500, 9, 9}, Qt::red))), picture);
  const QImage over =
      Merged(Paper({40, 30}), ListOf(Filled({-1e6, -1e6, 1e6 + 5, 1e6 + 5}, Qt::red)));
  EXPECT_EQ(CountOf(over, qRgb(255, 0, 0)), 25);
  VectorObject hidden = Filled({0, 0, 9, 9}, Qt::red);
  hidden.visible = false;
  EXPECT_EQ(Merged(picture, ListOf(hidden)), picture);
  // One pixel, and more rows than one band takes.
  EXPECT_EQ(CountOf(Merged(Paper({1, 1}), ListOf(Filled({0, 0, 9, 9}, Qt::red))), 0xFFFF0000), 1);
  const QImage wide = Merged(Paper({3000, 1500}), ListOf(Filled({1, 1, 2998, 1498}, Qt::blue)));
  EXPECT_EQ(CountOf(wide, qRgb(0, 0, 255)), 2998 * 1498);
}

TEST(PaintObjects, FramesAndFillingsLieSideBySide) {
  VectorObject box = Filled({10, 10, 40, 30}, Qt::green);
  box.penStyle = PenStyle::Solid;
  box.penWidth = 5;
  box.penColour = Qt::blue;
  const QImage solid = Merged(Paper({60, 50}), ListOf(box));
  EXPECT_EQ(CountOf(solid, qRgb(0, 255, 0)), 30 * 20);
  EXPECT_EQ(CountOf(solid, qRgb(0, 0, 255)), 40 * 30 - 30 * 20);
  box.transparency = 128;
  const QImage half = Merged(Paper({60, 50}), ListOf(box));
  EXPECT_EQ(CountOf(half, half.pixel(12, 12)), 40 * 30 - 30 * 20) << "one tone all round";
  box.transparency = 255;
  box.penWidth = 900;
  EXPECT_EQ(CountOf(Merged(Paper({60, 50}), ListOf(box)), qRgb(0, 0, 255)), 40 * 30);
  box.penWidth = 0;
  box.brushStyle = BrushStyle::Clear;
  EXPECT_EQ(CountOf(Merged(Paper({60, 50}), ListOf(box)), qRgb(0, 0, 255)), 2 * (40 + 30) - 4)
      << "never thinner than a pixel";
  box.penStyle = PenStyle::Dash;
  box.penWidth = 2;
  const int dashes = CountOf(Merged(Paper({60, 50}), ListOf(box)), qRgb(0, 0, 255));
  EXPECT_GT(dashes, 50);
  EXPECT_LT(dashes, 240);
}

TEST(PaintObjects, PicturesFillTheirBox) {
  VectorObject stamp;
  stamp.id = 1;
  stamp.kind = ObjectKind::Picture;
  stamp.left = 5;
  stamp.top = 7;
  const QImage noise = Noise({32, 20}, QImage::Format_RGB32);
  stamp.width = 32;
  stamp.height = 20;
  stamp.picture = noise;
  EXPECT_EQ(Merged(Paper({60, 50}), ListOf(stamp)).copy(5, 7, 32, 20), noise) << "true size";

  // Fine stripes become an even gray, no pattern.
  QImage stripes(1024, 1024, QImage::Format_Grayscale8);
  for (int y = 0; y < stripes.height(); ++y)
    std::fill_n(stripes.scanLine(y), stripes.width(), uchar(y % 2 == 0 ? 255 : 0));
  stamp.picture = stripes;
  stamp.width = stamp.height = 40;
  const QImage small = Merged(Paper({60, 50}), ListOf(stamp));
  for (int y = 10; y < 40; ++y)
    EXPECT_NEAR(qRed(small.pixel(20, y)), 128, 8) << y;

  stamp.picture = QImage();
  EXPECT_EQ(Merged(Paper({60, 50}), ListOf(stamp)), Paper({60, 50}));
}

TEST(PaintObjects, LinesEndWhereTheyEndAndArrowsPointThere) {
  VectorObjects objects;
  const int id = objects.AddLine({50, 25}, {10, 25});
  objects.SetObjectProperty(id, u"PENWIDTH", u"2"_s);
  const QImage plain = Merged(Paper({60, 50}), objects);
  EXPECT_EQ(plain.pixel(30, 24), qRgb(0, 0, 0));
  EXPECT_EQ(plain.pixel(5, 25), qRgb(255, 255, 255));
  EXPECT_EQ(plain.pixel(16, 22), qRgb(255, 255, 255));
  objects.SetObjectProperty(id, u"ENDSHAPE", u"1"_s);
  const QImage arrow = Merged(Paper({60, 50}), objects);
  EXPECT_EQ(arrow.pixel(17, 23), qRgb(0, 0, 0)) << "its head";
  EXPECT_EQ(arrow.pixel(46, 22), qRgb(255, 255, 255)) << "not at its start";
}

TEST(PaintObjects, TextsStayInTheirBounds) {
  const VectorObject plain = TextAt({60, 60}, u"Ågfj\nQy Wort"_s, 48, Qt::black);
  struct Case {
    const char* what;
    std::function<void(VectorObject& text)> change;
  };
  const Case cases[] = {
      {"plain", [](VectorObject&) {}},
      {"turned", [](VectorObject& text) { text.fontAngle = 33; }},
      {"italic", [](VectorObject& text) { SetProperty(text, u"FONTITALIC", u"1"_s); }},
      {"lined", [](VectorObject& text) { SetProperty(text, u"FONTUNDERLINE", u"1"_s); }},
      {"centred", [](VectorObject& text) { SetProperty(text, u"TEXTALIGN", u"2"_s); }},
      {"cut",
       [](VectorObject& text) {
         text.textAutosize = false;
         text.width = 60;
         text.height = 40;
       }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    VectorObject text = plain;
    c.change(text);
    QImage paper = Paper({500, 300});
    QPainter painter(&paper);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintObject(painter, text);
    painter.end();
    const QRect bounds = text.Bounds().toAlignedRect();
    EXPECT_GT(CountOf(paper.copy(bounds), qRgb(0, 0, 0)), 200);
    QPainter wipe(&paper);
    wipe.fillRect(bounds, Qt::white);
    wipe.end();
    EXPECT_EQ(CountOf(paper, qRgb(255, 255, 255)), 500 * 300);
  }
}

TEST(PaintObjects, TextsAreTheSameAtEveryScale) {
  const VectorObject text = TextAt({20, 10}, u"Seitenmaß"_s, 30, Qt::black);
  const auto ink = [&text](double scale) {
    QImage paper = Paper(QSizeF(300 * scale, 60 * scale).toSize());
    QPainter painter(&paper);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    PaintObject(painter, text);
    painter.end();
    double sum = 0;
    for (int y = 0; y < paper.height(); ++y)
      for (int x = 0; x < paper.width(); ++x)
        sum += 255 - qRed(paper.pixel(x, y));
    return sum / (scale * scale);
  };
  EXPECT_NEAR(ink(4) / ink(1), 1, 0.02);
  EXPECT_NEAR(ink(0.25) / ink(1), 1, 0.05);
}

TEST(PaintObjects, BarsOfATextCutNothingOut) {
  for (const char16_t* font : {u"DejaVu Sans", u"Nimbus Sans"}) {  // outlines run either way
    VectorObject text = TextAt({10, 10}, u"HHHH"_s, 120, Qt::black);
    SetProperty(text, u"FONTNAME", QString::fromUtf16(font));
    const int plain = CountOf(Merged(Paper({500, 200}), ListOf(text)), qRgb(0, 0, 0));
    SetProperty(text, u"FONTSTRIKEOUT", u"1"_s);
    EXPECT_GT(CountOf(Merged(Paper({500, 200}), ListOf(text)), qRgb(0, 0, 0)), plain);
  }
}

TEST(PaintObjects, SmoothedTextsAreSmoothOnAnyPainter) {
  VectorObject text = TextAt({5, 5}, u"Sss"_s, 60, Qt::black);
  const auto tones = [&text] {
    QImage paper = Paper({200, 100});
    QPainter painter(&paper);
    PaintObject(painter, text);
    painter.end();
    return 200 * 100 - CountOf(paper, qRgb(0, 0, 0)) - CountOf(paper, qRgb(255, 255, 255));
  };
  EXPECT_EQ(tones(), 0) << "as the painter is set";
  text.fontQuality = FontQuality::Smoothed;
  EXPECT_GT(tones(), 100);
}

}  // namespace
}  // namespace zqm
