// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/text_shape.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace zqm {
namespace {

/// Pixels of the em square at which texts are laid out.
constexpr int kLayoutPixels = 512;

QFont FontOf(const VectorObject& object) {
  // Not the desktop's own font without a name: the command line is to draw what the window showed.
  QFont font(object.fontName.isEmpty() ? QStringLiteral("Sans Serif") : object.fontName);
  font.setPixelSize(kLayoutPixels);
  font.setBold(object.fontBold);
  font.setItalic(object.fontItalic);
  // The outline of a hinted font isn't that of the same font at another size.
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

QStringList LinesOf(const QString& text) {
  QString plain = text;
  plain.remove(QChar(u'\r')).replace(QChar(u'\t'), QStringLiteral("    "));
  return plain.split(QChar(u'\n'));
}

double AlignedAt(TextAlign align, double room) {
  switch (align) {
    case TextAlign::Right:
      return room;
    case TextAlign::Centre:
      return room / 2;
    default:
      return 0;
  }
}

/// Positive for outer contours that run clockwise on the screen.
double SignedArea(const QPainterPath& path) {
  double twice = 0;
  for (const QPolygonF& contour : path.toSubpathPolygons())
    for (qsizetype i = 0; i + 1 < contour.size(); ++i)
      twice +=
          contour.at(i).x() * contour.at(i + 1).y() - contour.at(i + 1).x() * contour.at(i).y();
  return twice / 2;
}

/// A bar that runs as the glyphs do: against them it would cut them out where it crosses them.
void AddBar(QPainterPath& path, const QRectF& bar, bool clockwise) {
  path.moveTo(bar.topLeft());
  path.lineTo(clockwise ? bar.topRight() : bar.bottomLeft());
  path.lineTo(bar.bottomRight());
  path.lineTo(clockwise ? bar.bottomLeft() : bar.topRight());
  path.closeSubpath();
}

void AddBars(QPainterPath& line, const VectorObject& object, const QFontMetricsF& metrics,
             const QPointF& start, double advance) {
  const bool clockwise = SignedArea(line) >= 0;
  const double thickness = std::max(metrics.lineWidth(), kLayoutPixels / 32.0);
  const auto add = [&](double above) {
    AddBar(line, QRectF(start.x(), start.y() - above - thickness / 2, advance, thickness),
           clockwise);
  };
  if (object.fontUnderline) add(-metrics.underlinePos());
  if (object.fontStrikeout) add(metrics.strikeOutPos());
}

/// The contours of a line in groups that stand side by side: letters, or more where they touch.
std::vector<QPainterPath> SideBySide(const QPainterPath& line) {
  std::vector<QPainterPath> contours;
  for (int i = 0; i < line.elementCount(); ++i) {
    const QPainterPath::Element at = line.elementAt(i);
    if (at.isMoveTo())
      contours.emplace_back(at);
    else if (at.isLineTo())
      contours.back().lineTo(at);
    else if (at.isCurveTo() && i + 2 < line.elementCount())
      contours.back().cubicTo(at, line.elementAt(i + 1), line.elementAt(i + 2));
  }
  const auto left = [](const QPainterPath& path) { return path.controlPointRect().left(); };
  std::ranges::sort(contours, {}, left);
  std::vector<QPainterPath> groups;
  double right = 0;
  for (const QPainterPath& contour : contours) {
    if (groups.empty() || left(contour) > right) {
      groups.push_back(contour);
      right = contour.controlPointRect().right();
      continue;
    }
    groups.back().addPath(contour);
    right = std::max(right, contour.controlPointRect().right());
  }
  return groups;
}

std::vector<QPainterPath> ShapeLine(const QString& text, const VectorObject& object,
                                    const QFont& font, const QFontMetricsF& metrics,
                                    const QPointF& start, double advance) {
  QPainterPath line;
  line.addText(start, font, text);
  if (!object.fontUnderline && !object.fontStrikeout) return SideBySide(line);
  AddBars(line, object, metrics, start, advance);
  return {line};
}

QRectF Around(const std::vector<QPainterPath>& outlines) {
  QRectF around;
  for (const QPainterPath& outline : outlines)
    around |= outline.boundingRect();
  return around;
}

/// What a shape depends on.
struct ShapeKey {
  QFont font;
  QString text;
  double height = 0, width = 0;
  TextAlign align = TextAlign::Left;
  bool underline = false, strikeout = false, autosize = true;

  bool operator==(const ShapeKey&) const = default;
};

ShapeKey KeyOf(const VectorObject& object) {
  return {FontOf(object),       object.text,
          object.fontHeight,    object.textAutosize ? 0 : object.width,
          object.textAlign,     object.fontUnderline,
          object.fontStrikeout, object.textAutosize};
}

TextShape Shape(const VectorObject& object, const QFont& font) {
  const QFontMetricsF metrics(font);
  const QStringList lines = LinesOf(object.text);
  std::vector<double> advances;
  for (const QString& line : lines)
    advances.push_back(metrics.horizontalAdvance(line));
  const double scale = object.fontHeight / kLayoutPixels;
  const double widest = std::ranges::max(advances);
  const double room = object.textAutosize ? widest : object.width / scale;

  TextShape shape;
  double baseline = metrics.ascent();
  for (qsizetype i = 0; i < lines.size(); ++i, baseline += metrics.lineSpacing()) {
    const double advance = advances[static_cast<std::size_t>(i)];
    const QPointF start(AlignedAt(object.textAlign, room - advance), baseline);
    std::ranges::move(ShapeLine(lines.at(i), object, font, metrics, start, advance),
                      std::back_inserter(shape.outlines));
  }
  QRectF box(0, 0, widest, baseline - metrics.lineSpacing() + metrics.descent());
  // Slanted and swung letters reach beyond their advance.
  if (object.textAutosize) box |= Around(shape.outlines);
  const QPointF origin = object.textAutosize ? box.topLeft() : QPointF();
  const QTransform place =
      QTransform::fromTranslate(-origin.x(), -origin.y()) * QTransform::fromScale(scale, scale);
  for (QPainterPath& outline : shape.outlines) {
    outline = place.map(outline);
    outline.setFillRule(Qt::WindingFill);
  }
  shape.size = (box.size() * scale).expandedTo(QSizeF(1, 1));
  return shape;
}

}  // namespace

// Kept from the last text: templates repeat one, and large ones are painted in bands.
TextShape ShapeText(const VectorObject& object) {
  thread_local std::optional<std::pair<ShapeKey, TextShape>> last;
  ShapeKey key = KeyOf(object);
  if (last && last->first == key) return last->second;
  TextShape shape = Shape(object, key.font);
  last.emplace(std::move(key), shape);
  return shape;
}

QStringList MissingFonts(const VectorObjects& objects) {
  QStringList missing;
  for (const VectorObject& object : objects.All())
    if (object.kind == ObjectKind::Text && !object.fontName.isEmpty() &&
        !QFontDatabase::hasFamily(object.fontName))
      missing.append(object.fontName);
  missing.removeDuplicates();
  return missing;
}

void FitText(VectorObject& object) {
  if (object.kind != ObjectKind::Text || !object.textAutosize) return;
  const QSizeF size = ShapeText(object).size;
  object.width = size.width();
  object.height = size.height();
}

}  // namespace zqm
