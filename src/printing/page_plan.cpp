// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/page_plan.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "printing/print_text.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A page may be this much smaller than the sheet, inches.
constexpr double kSpared = 0.2;
/// No paper is cut so exactly; differences of units vanish in it.
constexpr double kSlackInches = 1e-6;

int TurnToFit(const QSize& photo, const QRectF& box) {
  const Orientation of = OrientationOf(photo), in = OrientationOf(box.size());
  if (of == Orientation::Landscape && in == Orientation::Portrait) return 90;
  if (of == Orientation::Portrait && in == Orientation::Landscape) return 270;
  return 0;
}

QRect Centred(const QSize& part, const QSize& whole) {
  return {{(whole.width() - part.width()) / 2, (whole.height() - part.height()) / 2}, part};
}

QString Inches(double inches) {
  return PlainText(Round(inches, 2));
}

Failure TooSmall(const char16_t* text, double needed, Orientation printer, double has) {
  return {QString::fromUtf16(text).arg(Inches(needed), OrientationWord(printer), Inches(has))};
}

}  // namespace

int PagesRequired(int photos, int boxes) {
  return boxes > 0 && photos > 0 ? (photos - 1) / boxes + 1 : 0;
}

PagePhotos PhotosOnPage(int page, int photos, int boxes) {
  const int from = page * boxes;
  return {from, std::min(from + boxes, photos) - 1};
}

QString PageCaption(int page, int pages) {
  return u"Page %1 of %2"_s.arg(page + 1).arg(pages);
}

Orientation OrientationOf(const QSizeF& size) {
  if (size.width() > size.height()) return Orientation::Landscape;
  return size.width() < size.height() ? Orientation::Portrait : Orientation::Static;
}

QString OrientationWord(Orientation orientation) {
  constexpr const char16_t* kWords[] = {u"Portrait", u"Landscape", u"Static"};
  return QString::fromUtf16(kWords[static_cast<int>(orientation)]);
}

QSize CropSize(const QSize& photo, double boxRatio) {
  constexpr double kFirst = 1, kStep = 10;
  const auto fits = [&](double width) {
    return width < photo.width() && width / boxRatio < photo.height();
  };
  // Where not even the first step fits, as much as there is.
  double width = std::min<double>(photo.width(), photo.height() * boxRatio);
  for (double step = kFirst; fits(step); step += kStep)
    width = step;
  const auto pixels = [](double side, int most) {
    return std::clamp(static_cast<int>(std::lround(side)), 1, most);
  };
  return {pixels(width, photo.width()), pixels(width / boxRatio, photo.height())};
}

PhotoPlace PlacePhoto(const QSize& photo, const QRectF& box) {
  PhotoPlace result;
  result.turn = TurnToFit(photo, box);
  const QSize turned = result.turn == 0 ? photo : photo.transposed();
  if (turned.width() < box.width() && turned.height() < box.height()) {
    result.crop = QRect({}, turned);
    result.place = QRectF(box.topLeft(), turned);
    return result;
  }
  result.crop = Centred(CropSize(turned, box.width() / box.height()), turned);
  result.place = box;
  return result;
}

QSizeF SheetInches(const QSize& sheet) {
  return QSizeF(sheet) / kSheetDpi;
}

QSizeF NeededInches(const QSize& sheet) {
  return SheetInches(sheet) - QSizeF(kSpared, kSpared);
}

Outcome CheckPage(const QSize& sheet, const QSizeF& page, Orientation printer) {
  const QSizeF needed = NeededInches(sheet);
  if (page.width() < needed.width() - kSlackInches)
    return TooSmall(print_text::kPageTooNarrow, needed.width(), printer, page.width());
  if (page.height() < needed.height() - kSlackInches)
    return TooSmall(print_text::kPageTooLow, needed.height(), printer, page.height());
  return {};
}

bool AdjustPreview(const QSize& sheet, Orientation printer) {
  const Orientation lies = OrientationOf(sheet);
  return lies != Orientation::Static && printer != Orientation::Static && lies != printer;
}

Result<int> CopiesOf(const QString& text) {
  const auto number = ToNumber(text);
  const bool separated =
      text.contains(u'.') || text.contains(u',') || text.contains(QLocale().decimalPoint());
  if (!number || separated || *number < 1 || *number > std::numeric_limits<int>::max())
    return Failure{QString::fromUtf16(print_text::kBadCopies)};
  return static_cast<int>(*number);
}

int SteppedCopies(const QString& text, int by) {
  constexpr int kMost = 9999;
  const auto copies = CopiesOf(text);
  if (!copies) return 1;
  const bool mayStep = by < 0 ? *copies > 1 : *copies < kMost;
  return mayStep ? *copies + by : *copies;
}

}  // namespace zqm
