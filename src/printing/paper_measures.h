// SPDX-License-Identifier: GPL-3.0-or-later
// Paper and boxes as the user types them, in millimetres or inches.
#pragma once

#include <QSize>
#include <QSizeF>
#include <QString>
#include <array>
#include <optional>

#include "shell/result.h"

namespace zqm {

enum class Unit { Millimetres, Inches };
inline constexpr double kMillimetresPerInch = 25.4;

/// "mm" or "inches".
QString UnitWord(Unit unit);

/// One measure with an exact copy in each unit, so that switching the unit to and fro never rounds
/// what was typed.
struct Measure {
  double millimetres = 0;
  double inches = 0;

  double In(Unit unit) const { return unit == Unit::Inches ? inches : millimetres; }
  /// Two decimals at most, in the user's locale.
  QString Text(Unit unit) const;
  /// What was typed in `unit`. False, and nothing changes, for a text that is empty, no number, or
  /// "0".
  bool Type(const QString& text, Unit unit);
  /// In pixels of a sheet, for a box.
  double Pixels() const { return inches * 100; }

  bool operator==(const Measure&) const = default;
};

/// Of a box, from pixels of a sheet; millimetres have two decimals then.
Measure MeasureOfPixels(double pixels);

/// A measure's field after the unit was switched: the exact copy in the new unit where the field
/// holds a number, else what it holds.
QString SwitchedText(const QString& shown, const Measure& measure, Unit unit);

/// The four measures of a box.
struct BoxMeasures {
  Measure width, height, left, top;
};
BoxMeasures MeasuresOf(const QRectF& box);

/// A sheet's width and height.
struct Paper {
  Measure width{210, 8.26666666666667};   // A4 as it has always been written here,
  Measure height{297, 11.6916666666667};  // a little less than 210 / 25.4

  /// In pixels of a sheet, cut to whole ones.
  QSize Sheet() const;
  bool operator==(const Paper&) const = default;
};
Paper PaperOfSheet(const QSize& sheet);

/// "Current paper size : 210 x 297 mm", "Current paper size : 8.5 x 11 in.".
QString PaperLabel(const Paper& paper, Unit unit);

/// "Minimum Width  = 76.2 mm" and "Minimum Height = 127 mm", or in inches.
std::array<QString, 2> LimitLabels(Unit unit);

/// The paper that two typed texts make, or the message why they make none. Sides of more than
/// `kMostSheetSide` pixels are invalid too. A text that shows a measure of `exact`, rounded, means
/// that measure.
Result<Paper> SetPaper(const QString& width, const QString& height, Unit unit,
                       const Paper& exact = {{}, {}});

/// "A4", "Letter" or "200x250mm" with the point or the user's separator; millimetres as it says.
std::optional<QSizeF> PaperNamed(const QString& text);

}  // namespace zqm
