// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/standard_templates.h"

#include <QSizeF>

#include "printing/box_layout.h"
#include "printing/paper_measures.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A sheet's paper, in pixels of a sheet.
struct SheetKind {
  const char16_t* name;
  QSize size;
};
constexpr SheetKind kSheets[] = {{u"A4", {826, 1169}}, {u"Letter", {850, 1100}}};
/// What both have.
constexpr QSize kCommonSheet{826, 1100};

struct Grid {
  const char16_t* name;
  int columns, rows;
  double gap;  ///< between the boxes, pixels of the sheet
};
constexpr Grid kGrids[] = {
    {u"Full page", 1, 1, 0}, {u"2 photos", 1, 2, 20}, {u"4 photos", 2, 2, 20},
    {u"6 photos", 2, 3, 20}, {u"9 photos", 3, 3, 20}, {u"Contact sheet", 5, 7, 12},
};

/// Boxes whose size is told.
struct ExactGrid {
  const char16_t* name;
  int columns, rows;
  QSizeF millimetres;
  double gap;
};
constexpr ExactGrid kExactGrids[] = {
    {u"Passport photos 35 x 45 mm", 4, 2, {35, 45}, 40},
    {u"Postcard pair 148 x 105 mm", 1, 2, {148, 105}, 40},
};

/// 10 mm.
constexpr double kMargin = 40;
/// Photos are no squares: where the sheet would make boxes that come near to one, they are less
/// high. What is longer than that in either direction fills its cell.
constexpr double kSquarish = 1.25, kPhotoAspect = 4.0 / 3;

/// Boxes of one size in rows, a cell for each, in the middle of the sheet.
PrintTemplate Rows(const QSize& sheet, int columns, int rows, const QSizeF& cell, double gap,
                   const QSizeF& box) {
  PrintTemplate layout{sheet, {}, {}};
  const double left = (sheet.width() - columns * cell.width() - (columns - 1) * gap) / 2;
  const double top = (sheet.height() - rows * cell.height() - (rows - 1) * gap) / 2;
  for (int row = 0; row < rows; ++row)
    for (int column = 0; column < columns; ++column) {
      const int id = AddPictureBox(layout.objects, QColor(kBoxColour));
      VectorObject object = *layout.objects.Find(id);
      object.width = box.width();
      object.height = box.height();
      object.left = left + column * (cell.width() + gap) + (cell.width() - box.width()) / 2;
      object.top = top + row * (cell.height() + gap) + (cell.height() - box.height()) / 2;
      layout.objects.Replace(object);
      layout.ids.push_back(id);
    }
  return layout;
}

QSizeF BoxIn(const QSizeF& cell) {
  const double aspect = cell.width() / cell.height();
  if (aspect >= kSquarish || aspect <= 1 / kSquarish) return cell;
  return {cell.width(), cell.width() / kPhotoAspect};
}

StandardTemplate OnSheet(const Grid& grid, const SheetKind& sheet) {
  const QSizeF cell(
      (sheet.size.width() - 2 * kMargin - (grid.columns - 1) * grid.gap) / grid.columns,
      (sheet.size.height() - 2 * kMargin - (grid.rows - 1) * grid.gap) / grid.rows);
  return {QString::fromUtf16(grid.name) + u' ' + QString::fromUtf16(sheet.name),
          Rows(sheet.size, grid.columns, grid.rows, cell, grid.gap, BoxIn(cell))};
}

StandardTemplate Exact(const ExactGrid& grid) {
  const QSizeF box = grid.millimetres / kMillimetresPerInch * kSheetDpi;
  return {QString::fromUtf16(grid.name),
          Rows(kCommonSheet, grid.columns, grid.rows, box, grid.gap, box)};
}

}  // namespace

std::vector<StandardTemplate> StandardTemplates() {
  std::vector<StandardTemplate> templates;
  for (const Grid& grid : kGrids)
    for (const SheetKind& sheet : kSheets)
      templates.push_back(OnSheet(grid, sheet));
  for (const ExactGrid& grid : kExactGrids)
    templates.push_back(Exact(grid));
  return templates;
}

}  // namespace zqm
