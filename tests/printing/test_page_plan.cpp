// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/page_plan.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

TEST(PagePlan, PhotosFillBoxesPageByPage) {
  struct Case {
    int photos, boxes, pages, page;
    PagePhotos on;
  };
  const Case cases[] = {
      {3, 4, 1, 0, {0, 2}}, {4, 4, 1, 0, {0, 3}}, {5, 4, 2, 0, {0, 3}},
      {5, 4, 2, 1, {4, 4}}, {8, 4, 2, 1, {4, 7}}, {1, 1, 1, 0, {0, 0}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(PagesRequired(c.photos, c.boxes), c.pages);
    EXPECT_EQ(PhotosOnPage(c.page, c.photos, c.boxes), c.on) << c.photos << " on " << c.boxes;
  }
  EXPECT_EQ(PagesRequired(0, 4), 0);
  EXPECT_EQ(PagesRequired(4, 0), 0);
  EXPECT_EQ(PageCaption(1, 3), u"Page 2 of 3");
}

TEST(PagePlan, PhotosAreTurnedAndCroppedToTheirBox) {
  const QRectF square(10, 20, 400, 400), wide(10, 20, 400, 200), tall(10, 20, 200, 400);
  struct Case {
    QSize photo;
    QRectF box;
    int turn;
    QRect crop;
    QRectF place;
  };
  const Case cases[] = {
      // Wide and tall in every shape of box. The crop's width is 1 and some tens.
      {{3000, 2000}, wide, 0, {4, 252, 2991, 1496}, wide},
      {{3000, 2000}, tall, 90, {254, 9, 1491, 2982}, tall},
      {{3000, 2000}, square, 0, {504, 4, 1991, 1991}, square},
      {{2000, 3000}, wide, 270, {4, 252, 2991, 1496}, wide},
      {{2000, 3000}, tall, 0, {254, 9, 1491, 2982}, tall},
      {{2000, 3000}, square, 0, {4, 504, 1991, 1991}, square},
      {{2000, 2000}, wide, 0, {4, 502, 1991, 996}, wide},
      {{2000, 2000}, tall, 0, {504, 9, 991, 1982}, tall},
      // Smaller in both directions: as it is, in the corner, though turned.
      {{300, 300}, square, 0, {0, 0, 300, 300}, {10, 20, 300, 300}},
      {{300, 150}, tall, 90, {0, 0, 150, 300}, {10, 20, 150, 300}},
      {{150, 300}, wide, 270, {0, 0, 300, 150}, {10, 20, 300, 150}},
      {{399, 399}, square, 0, {0, 0, 399, 399}, {10, 20, 399, 399}},
      // As large in one direction: filled. A step that meets the edge doesn't fit.
      {{400, 300}, square, 0, {54, 4, 291, 291}, square},
      {{391, 400}, square, 0, {5, 9, 381, 381}, square},
      {{392, 400}, square, 0, {0, 4, 391, 391}, square},
      // Where not even the first step fits.
      {{1, 1000}, QRectF(0, 0, 100, 100), 0, {0, 499, 1, 1}, {0, 0, 100, 100}},
      {{1, 1}, QRectF(0, 0, 1, 1), 0, {0, 0, 1, 1}, {0, 0, 1, 1}},
  };
  for (const Case& c : cases) {
    const PhotoPlace how = PlacePhoto(c.photo, c.box);
    EXPECT_EQ(how.turn, c.turn) << &c - cases;
    EXPECT_TRUE(how.crop == c.crop) << &c - cases << ": " << how.crop.x() << ' ' << how.crop.y()
                                    << ' ' << how.crop.width() << ' ' << how.crop.height();
    EXPECT_TRUE(how.place == c.place) << &c - cases;
  }
}

TEST(PagePlan, PagesMayLackAFifthOfAnInch) {
  struct Case {
    QSize sheet;
    QSizeF page;
    const char16_t* message;  // without its last line; none where it fits
  };
  const Case cases[] = {
      {{827, 1169}, {8.07, 11.49}, nullptr},
      {{827, 1169},
       {8.0699, 11.49},
       u"minimum width of 8.07 inches (Portrait mode).\nThe current page width is only 8.07 "},
      {{827, 1169},
       {8.07, 4},
       u"minimum height of 11.49 inches (Portrait mode).\nThe current page height is only 4 "},
      {{1169, 827},
       {8.07, 11.49},  // the wrong way
       u"minimum width of 11.49 inches (Portrait mode).\nThe current page width is only 8.07 "},
  };
  for (const Case& c : cases) {
    const Outcome fits = CheckPage(c.sheet, c.page, Orientation::Portrait);
    EXPECT_EQ(static_cast<bool>(fits), c.message == nullptr) << &c - cases;
    if (c.message != nullptr) {
      EXPECT_TRUE(fits.Reason().contains(QString::fromUtf16(c.message)))
          << fits.Reason().toStdString();
    }
  }
  const test::ScopedLocale comma("de_DE");
  EXPECT_EQ(CheckPage({850, 1100}, {2.5, 3}, Orientation::Landscape).Reason(),
            u"The selected template was desiged to be used on a page having a minimum width of 8,3 "
            u"inches (Landscape mode).\nThe current page width is only 2,5 inches. \n"
            u"Adjust your page width and apply the template again.");
}

TEST(PagePlan, ThePreviewTurnsWhatLiesTheOtherWay) {
  const QSize portrait(826, 1169), landscape(1169, 826), square(500, 500);
  EXPECT_TRUE(AdjustPreview(landscape, Orientation::Portrait));
  EXPECT_TRUE(AdjustPreview(portrait, Orientation::Landscape));
  EXPECT_FALSE(AdjustPreview(portrait, Orientation::Portrait));
  EXPECT_FALSE(AdjustPreview(square, Orientation::Portrait));
  EXPECT_FALSE(AdjustPreview(square, Orientation::Landscape));
}

TEST(PagePlan, ArrowsNeverLeadFarFromWhatWasTyped) {
  struct Case {
    const char16_t* text;
    int less, more;
  };
  const Case cases[] = {{u"1", 1, 2},
                        {u"9999", 9998, 9999},
                        {u"20000", 19999, 20000},
                        {u"2147483647", 2147483646, 2147483647},
                        {u"many", 1, 1}};
  for (const Case& c : cases) {
    EXPECT_EQ(SteppedCopies(QString::fromUtf16(c.text), -1), c.less) << &c - cases;
    EXPECT_EQ(SteppedCopies(QString::fromUtf16(c.text), 1), c.more) << &c - cases;
  }
}

TEST(PagePlan, CopiesAreWholeAndAtLeastOne) {
  for (const char* name : {"en_US", "de_DE"}) {
    const test::ScopedLocale locale(name);
    for (const auto& [text, copies] : {std::pair{u"1"_s, 1}, {u"12"_s, 12}, {u" 3 "_s, 3}}) {
      const auto result = CopiesOf(text);
      ASSERT_TRUE(result) << text.toStdString();
      EXPECT_EQ(*result, copies);
    }
    for (const QString& text : {u"1.5"_s, u"1,5"_s, u"2."_s, u"1,000"_s, u"1.000"_s, u"0"_s,
                                u"-1"_s, u"abc"_s, u""_s, u"1e3"_s, u"99999999999"_s})
      EXPECT_EQ(CopiesOf(text).Reason(),
                u"Number of copies to be printed should be a numeric value and equal to or greater "
                u"than 1.")
          << text.toStdString();
  }
}

}  // namespace
}  // namespace zqm
