// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/watermark_text.h"

#include <utility>

#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

QString Key(double number) {
  return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

/// From what is typed to a key's value.
QString Key(const QString& typed) {
  const auto number = ToNumber(typed);
  return number ? Key(*number) : QString();
}

QString Key(bool on) {
  return on ? u"1"_s : u"0"_s;
}

}  // namespace

int PreviewWatermark(VectorObjects& objects, const WatermarkPanel& panel, QPointF corner) {
  objects.RemoveAllObjects();
  const int id = objects.Add(ObjectKind::Text);
  const auto set = [&](QStringView key, const QString& value) {
    return objects.SetObjectProperty(id, key, value);
  };
  const WatermarkPanel defaults;
  const std::pair<const char16_t*, QString> keys[] = {
      {u"TEXT", panel.text},
      {u"TEXTALIGN", u"2"_s},
      {u"FONTNAME", panel.fontName},
      {u"PENCOLOR",
       u"%1,%2,%3"_s.arg(panel.colour.red()).arg(panel.colour.green()).arg(panel.colour.blue())},
      {u"FONTBOLD", Key(panel.bold)},
      {u"FONTITALIC", Key(panel.italic)},
      {u"FONTUNDERLINE", Key(panel.underline)},
      {u"FONTSTRIKEOUT", Key(panel.strikeout)},
      {u"TRANSPARENCY", QString::number(panel.transparency)},
      {u"PENSTYLE", u"5"_s},
      {u"TEXTEDITABLE", u"0"_s},
      {u"MOVEABLE", u"1"_s},
      {u"SIZEABLE", u"0"_s},
      {u"TEXTAUTOSIZE", u"1"_s},
      {u"FONTQUALITY", u"0"_s},
      {u"LEFT", Key(corner.x())},
      {u"TOP", Key(corner.y())},
  };
  for (const auto& [key, value] : keys)
    set(key, value);
  if (!set(u"FONTHEIGHT", Key(panel.size))) set(u"FONTHEIGHT", defaults.size);
  if (!set(u"FONTANGLE", Key(panel.angle))) set(u"FONTANGLE", defaults.angle);
  return id;
}

}  // namespace zqm
