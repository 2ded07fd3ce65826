// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/paper_measures.h"

#include <QLocale>
#include <QRectF>
#include <QRegularExpression>
#include <cmath>

#include "printing/print_template.h"
#include "printing/print_text.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct Limit {
  double width, height;
  const char16_t* narrow;
  const char16_t* low;
};
constexpr Limit kLimits[] = {
    {76.2, 127, print_text::kNarrowMillimetres, print_text::kLowMillimetres},
    {3, 5, print_text::kNarrowInches, print_text::kLowInches},
};

const Limit& LimitIn(Unit unit) {
  return kLimits[static_cast<int>(unit)];
}

QString Rounded(double value) {
  return PlainText(Round(value, 2));
}

/// Cut to whole pixels, but not by the last bit of a decimal fraction: 8.27 inches are 827 pixels.
int CutPixels(double inches) {
  constexpr double kLastBits = 1e-6;
  return static_cast<int>(std::floor(inches * kSheetDpi + kLastBits));
}

bool IsTooLong(const Measure& measure) {
  return measure.inches * kSheetDpi > kMostSheetSide;
}

Outcome CheckLimits(const Paper& paper, Unit unit) {
  const Limit& limit = LimitIn(unit);
  QString narrow = QString::fromUtf16(limit.narrow);
  if (unit == Unit::Millimetres) narrow = narrow.arg(PlainText(limit.width));
  if (paper.width.In(unit) < limit.width) return Failure{narrow};
  if (paper.height.In(unit) < limit.height) return Failure{QString::fromUtf16(limit.low)};
  return {};
}

struct NamedPaper {
  QStringView name;
  QSizeF millimetres;
};
constexpr NamedPaper kPapers[] = {{u"A4", {210, 297}}, {u"Letter", {215.9, 279.4}}};

}  // namespace

QString UnitWord(Unit unit) {
  return unit == Unit::Inches ? u"inches"_s : u"mm"_s;
}

QString Measure::Text(Unit unit) const {
  return Rounded(In(unit));
}

bool Measure::Type(const QString& text, Unit unit) {
  const auto number = ToNumber(text);
  if (!number || text.trimmed() == u"0") return false;
  inches = unit == Unit::Inches ? *number : *number / kMillimetresPerInch;
  millimetres = unit == Unit::Inches ? *number * kMillimetresPerInch : *number;
  return true;
}

Measure MeasureOfPixels(double pixels) {
  const double inches = pixels / kSheetDpi;
  return {Round(inches * kMillimetresPerInch, 2), inches};
}

QString SwitchedText(const QString& shown, const Measure& measure, Unit unit) {
  return IsNumeric(shown) ? measure.Text(unit) : shown;
}

BoxMeasures MeasuresOf(const QRectF& box) {
  return {MeasureOfPixels(box.width()), MeasureOfPixels(box.height()), MeasureOfPixels(box.left()),
          MeasureOfPixels(box.top())};
}

QSize Paper::Sheet() const {
  return {CutPixels(width.inches), CutPixels(height.inches)};
}

Paper PaperOfSheet(const QSize& sheet) {
  return {MeasureOfPixels(sheet.width()), MeasureOfPixels(sheet.height())};
}

QString PaperLabel(const Paper& paper, Unit unit) {
  return u"Current paper size : %1 x %2 %3"_s.arg(paper.width.Text(unit), paper.height.Text(unit),
                                                  unit == Unit::Inches ? u"in."_s : u"mm"_s);
}

std::array<QString, 2> LimitLabels(Unit unit) {
  const Limit& limit = LimitIn(unit);
  return {u"Minimum Width  = %1 %2"_s.arg(PlainText(limit.width), UnitWord(unit)),
          u"Minimum Height = %1 %2"_s.arg(PlainText(limit.height), UnitWord(unit))};
}

Result<Paper> SetPaper(const QString& width, const QString& height, Unit unit, const Paper& exact) {
  Paper paper;
  if (!paper.width.Type(width, unit) || IsTooLong(paper.width))
    return Failure{QString::fromUtf16(print_text::kInvalidWidth)};
  if (!paper.height.Type(height, unit) || IsTooLong(paper.height))
    return Failure{QString::fromUtf16(print_text::kInvalidHeight)};
  if (const Outcome fits = CheckLimits(paper, unit); !fits) return Failure{fits.Reason()};
  if (width == exact.width.Text(unit)) paper.width = exact.width;
  if (height == exact.height.Text(unit)) paper.height = exact.height;
  return paper;
}

std::optional<QSizeF> PaperNamed(const QString& text) {
  for (const NamedPaper& paper : kPapers)
    if (paper.name.compare(text, Qt::CaseInsensitive) == 0) return paper.millimetres;
  static const QRegularExpression kSize(uR"(^(\d{1,4}(?:\.\d+)?)x(\d{1,4}(?:\.\d+)?)mm$)"_s,
                                        QRegularExpression::CaseInsensitiveOption);
  const auto match = kSize.match(QString(text).replace(QLocale().decimalPoint(), u"."_s));
  const QSizeF size(match.captured(1).toDouble(), match.captured(2).toDouble());
  return match.hasMatch() && !size.isEmpty() ? std::optional(size) : std::nullopt;
}

}  // namespace zqm
