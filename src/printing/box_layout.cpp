// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/box_layout.h"

#include <algorithm>

#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::pair<const char16_t*, const char16_t*> kNewBox[] = {
    {u"LEFT", u"10"},      {u"TOP", u"10"},     {u"WIDTH", u"100"},
    {u"HEIGHT", u"100"},   {u"PENWIDTH", u"1"}, {u"BRUSHSTYLE", u"0"},
    {u"SELECTABLE", u"1"}, {u"MOVEABLE", u"1"}, {u"SIZEABLE", u"1"},
};

constexpr BoxPreset kPresets[] = {
    {u"Center", "Label44", 0.5, 0.5},      {u"Top-right", "Label45", 1, 0},
    {u"Top-left", "Label46", 0, 0},        {u"Bottom-left", "Label47", 0, 1},
    {u"Bottom-right", "Label48", 1, 1},    {u"Top-center", "Label49", 0.5, 0},
    {u"Middle-left", "Label50", 0, 0.5},   {u"Middle-right", "Label51", 1, 0.5},
    {u"Bottom-center", "Label52", 0.5, 1},
};

bool ReachesBeyond(const Measure& start, const Measure& length, const Measure& paper, Unit unit) {
  return start.In(unit) < 0 ||
         Round(start.In(unit) + length.In(unit), 1) > Round(paper.In(unit), 1);
}

}  // namespace

int AddPictureBox(VectorObjects& objects, const QColor& colour) {
  const int id = objects.Add(ObjectKind::Rectangle);
  for (const auto& [key, value] : kNewBox)
    objects.SetObjectProperty(id, key, QString::fromUtf16(value));
  for (const char16_t* key : {u"PENCOLOR", u"BRUSHCOLOR"})
    objects.SetObjectProperty(id, key, DecimalColour(colour));
  return id;
}

bool IsOutsidePaper(const VectorObjects& objects, std::span<const int> ids, const Paper& paper,
                    Unit unit) {
  return std::ranges::any_of(ids, [&](int id) {
    const VectorObject* object = objects.Find(id);
    if (object == nullptr) return false;
    const BoxMeasures box = MeasuresOf(object->Box());
    return ReachesBeyond(box.left, box.width, paper.width, unit) ||
           ReachesBeyond(box.top, box.height, paper.height, unit);
  });
}

QRectF GetBoundingBox(const VectorObjects& objects, std::span<const int> selected) {
  QRectF bounds;
  for (const int id : selected)
    if (const VectorObject* object = objects.Find(id)) bounds |= object->Box();
  return bounds;
}

std::span<const BoxPreset> BoxPresets() {
  return kPresets;
}

void MoveToPreset(VectorObjects& objects, std::span<const int> selected, const QSize& sheet,
                  const BoxPreset& preset) {
  const QRectF block = GetBoundingBox(objects, selected);
  const QPointF place((sheet.width() - block.width()) * preset.across,
                      (sheet.height() - block.height()) * preset.down);
  for (const int id : selected)
    if (const VectorObject* object = objects.Find(id))
      objects.Replace(Moved(*object, place - block.topLeft()));
}

QString VBHexColor(const QColor& colour) {
  const int number = colour.blue() << 16 | colour.green() << 8 | colour.red();
  return u"&H"_s + QString::number(number, 16).rightJustified(6, u'0').toUpper();
}

QString DecimalColour(const QColor& colour) {
  return u"%1,%2,%3"_s.arg(colour.red()).arg(colour.green()).arg(colour.blue());
}

}  // namespace zqm
