// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/watermark_layers.h"

#include <algorithm>
#include <cmath>
#include <ranges>

#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kCascadeStep = 24;  // pixels

QString Key(bool on) {
  return on ? u"1"_s : u"0"_s;
}

/// From what is typed to a key's value; "", which no key of a number takes, for what is none.
QString NumberKey(const QString& typed) {
  const auto number = ToNumber(typed);
  return number ? QString::number(*number, 'f', QLocale::FloatingPointShortest) : QString();
}

QString TextKey(const QString& text) {
  QString key = text.left(kMostObjectText);
  if (!key.isEmpty() && key.back().isHighSurrogate()) key.chop(1);
  return key;
}

/// A part of the panel, the key that it becomes and its value.
struct Part {
  const char16_t* word;
  const char16_t* key;
  QString (*value)(const TextPanel& panel);
};
constexpr Part kParts[] = {
    {text_part::kText, u"TEXT", [](const TextPanel& p) { return TextKey(p.text); }},
    {text_part::kSize, u"FONTHEIGHT", [](const TextPanel& p) { return NumberKey(p.size); }},
    {text_part::kAngle, u"FONTANGLE", [](const TextPanel& p) { return NumberKey(p.angle); }},
    {text_part::kFont, u"FONTNAME", [](const TextPanel& p) { return p.fontName; }},
    {text_part::kColor, u"PENCOLOR", [](const TextPanel& p) { return p.colour; }},
    {text_part::kBold, u"FONTBOLD", [](const TextPanel& p) { return Key(p.bold); }},
    {text_part::kItalic, u"FONTITALIC", [](const TextPanel& p) { return Key(p.italic); }},
    {text_part::kUnderline, u"FONTUNDERLINE", [](const TextPanel& p) { return Key(p.underline); }},
    {text_part::kStrikeout, u"FONTSTRIKEOUT", [](const TextPanel& p) { return Key(p.strikeout); }},
    {text_part::kTransparency, u"TRANSPARENCY",
     [](const TextPanel& p) { return QString::number(p.transparency); }},
};

/// What each change of a text sets as well.
constexpr std::pair<const char16_t*, const char16_t*> kFixed[] = {{u"PENSTYLE", u"5"},
                                                                  {u"MOVEABLE", u"1"},
                                                                  {u"SIZEABLE", u"1"},
                                                                  {u"TEXTAUTOSIZE", u"1"},
                                                                  {u"FONTQUALITY", u"5"}};

/// The first place down the diagonal at which no object begins; its start where the surface has no
/// such place.
QPointF FreeCorner(const VectorObjects& objects, QSize surface) {
  const QPointF start(kCascadeStep, kCascadeStep);
  const QRectF room(QPointF(), surface);
  if (!surface.isEmpty() && !room.contains(2 * start)) return {};
  QPointF corner = start;
  const auto taken = [&](const VectorObject& object) {
    return std::hypot(object.left - corner.x(), object.top - corner.y()) < kCascadeStep / 2;
  };
  while (std::ranges::any_of(objects.All(), taken))
    corner += start;
  return surface.isEmpty() || room.contains(corner + start) ? corner : start;
}

void MoveTo(VectorObjects& objects, int id, QPointF corner) {
  objects.SetObjectProperty(id, u"LEFT", QString::number(corner.x()));
  objects.SetObjectProperty(id, u"TOP", QString::number(corner.y()));
}

/// How far a stretch from `from` to `to` goes to lie at an edge or in the middle of `length`, and
/// the line that it lies at then; nothing when that is out of reach.
struct Pull {
  double by, line;
};
std::optional<Pull> PullOf(double from, double to, double length, double reach) {
  const Pull pulls[] = {{-from, 0}, {length - to, length}, {(length - from - to) / 2, length / 2}};
  const auto nearest =
      std::ranges::min_element(pulls, {}, [](const Pull& p) { return std::abs(p.by); });
  if (std::abs(nearest->by) > reach) return std::nullopt;
  return *nearest;
}

constexpr const char16_t* kSymbols[] = {
    u"©", u"®", u"™", u"℗", u"№", u"§", u"¶", u"†", u"‡", u"•", u"·", u"…", u"–", u"—", u"«", u"»",
    u"“", u"”", u"‘", u"’", u"°", u"±", u"×", u"÷", u"½", u"¼", u"¾", u"¹", u"²", u"³", u"€", u"£",
    u"¥", u"¢", u"←", u"↑", u"→", u"↓", u"★", u"☆", u"♥", u"♦", u"♣", u"♠", u"♪", u"♫", u"☼", u"☺",
    u"✓", u"✗", u"✉", u"☎", u"✂", u"✿", u"❄", u"▲", u"●", u"■", u"◆", u"α", u"β", u"µ", u"π", u"Ω"};

}  // namespace

void AlterText(VectorObjects& objects, std::span<const int> ids, const TextPanel& panel,
               QStringView what) {
  for (const int id : ids) {
    const VectorObject* object = objects.Find(id);
    if (object == nullptr || object->kind != ObjectKind::Text) continue;
    for (const auto& [key, value] : kFixed)
      objects.SetObjectProperty(id, key, QString::fromUtf16(value));
    for (const Part& part : kParts)
      if (what == QStringView(part.word) || what == QStringView(text_part::kAll))
        objects.SetObjectProperty(id, part.key, part.value(panel));
  }
}

TextPanel GtTxtProp(const VectorObject& object) {
  TextPanel panel;
  panel.text = object.text;
  panel.size = PlainText(object.fontHeight);
  panel.angle = PlainText(object.fontAngle);
  panel.fontName = object.fontName;
  panel.colour = ObjectProperty(object, u"PENCOLOR");
  panel.bold = object.fontBold;
  panel.italic = object.fontItalic;
  panel.underline = object.fontUnderline;
  panel.strikeout = object.fontStrikeout;
  panel.transparency = object.transparency;
  return panel;
}

void SetTransparency(VectorObjects& objects, std::span<const int> ids, int transparency) {
  for (const int id : ids)
    objects.SetObjectProperty(id, u"TRANSPARENCY", QString::number(transparency));
}

int InsertNewText(VectorObjects& objects, const TextPanel& panel, QSize surface) {
  const QPointF corner = FreeCorner(objects, surface);
  const int id = objects.Add(ObjectKind::Text);
  objects.SetObjectProperty(id, u"TEXTEDITABLE", u"0"_s);
  objects.SetObjectProperty(id, u"TEXTALIGN", u"2"_s);
  AlterText(objects, std::span(&id, 1), panel, text_part::kAll);
  MoveTo(objects, id, corner);
  return id;
}

int ImportNewImage(VectorObjects& objects, const ObjectPicture& picture, QSize size,
                   QSize surface) {
  const QPointF corner = FreeCorner(objects, surface);
  const int id = objects.Add(ObjectKind::Picture);
  objects.SetPicture(id, picture);
  objects.SetObjectProperty(id, u"WIDTH", QString::number(size.width()));
  objects.SetObjectProperty(id, u"HEIGHT", QString::number(size.height()));
  objects.SetObjectProperty(id, u"MOVEABLE", u"1"_s);
  objects.SetObjectProperty(id, u"SIZEABLE", u"1"_s);
  MoveTo(objects, id, corner);
  return id;
}

SelectionState StateOf(const VectorObjects& objects, std::span<const int> ids) {
  SelectionState state;
  state.any = !ids.empty();
  const VectorObject* object = ids.size() == 1 ? objects.Find(ids.front()) : nullptr;
  if (object == nullptr) return state;
  state.transparency = object->transparency;
  if (object->kind == ObjectKind::Text) state.text = GtTxtProp(*object);
  return state;
}

void SendToBack(VectorObjects& objects, std::span<const int> ids) {
  for (const int id : std::views::reverse(ids))
    objects.SendToBack(id);
}

void BringToFront(VectorObjects& objects, std::span<const int> ids) {
  for (const int id : ids)
    objects.BringToFront(id);
}

void RemoveLayers(VectorObjects& objects, std::span<const int> ids) {
  for (const int id : ids)
    objects.Remove(id);
}

SnappedObject SnapToSurface(const VectorObject& object, QSize surface, double reach) {
  const QRectF box = object.Outline().boundingRect();
  const auto across = PullOf(box.left(), box.right(), surface.width(), reach);
  const auto down = PullOf(box.top(), box.bottom(), surface.height(), reach);
  SnappedObject snapped{Moved(object, {across ? across->by : 0, down ? down->by : 0}), {}, {}};
  if (across) snapped.x = across->line;
  if (down) snapped.y = down->line;
  return snapped;
}

std::span<const char16_t* const> WatermarkSymbols() {
  return kSymbols;
}

QString TemplateSizeText(QSize surface) {
  return u"Template Size : %1 x %2 pixels"_s.arg(surface.width()).arg(surface.height());
}

}  // namespace zqm
