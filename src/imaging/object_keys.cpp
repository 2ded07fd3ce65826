// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/object_keys.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <variant>

#include "imaging/text_shape.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kFarthest = 1e6;  // pixels
constexpr double kWidestPen = 1000;
constexpr double kHighestFont = 1e5;

using Member =
    std::variant<double VectorObject::*, int VectorObject::*, bool VectorObject::*,
                 QString VectorObject::*, QColor VectorObject::*, PenStyle VectorObject::*,
                 BrushStyle VectorObject::*, TextAlign VectorObject::*, FontQuality VectorObject::*,
                 EndShape VectorObject::*>;

struct KeyRow {
  const char16_t* key;
  Member member;
  double least = 0, most = 0;  // of a number
  bool fits = false;           // a text that sizes itself follows
};

using Object = VectorObject;
constexpr char16_t kKind[] = u"KIND";
constexpr KeyRow kKeys[] = {
    {u"TEXT", &Object::text, 0, 0, true},
    {u"LEFT", &Object::left, -kFarthest, kFarthest},
    {u"TOP", &Object::top, -kFarthest, kFarthest},
    {u"WIDTH", &Object::width, -kFarthest, kFarthest, true},
    {u"HEIGHT", &Object::height, -kFarthest, kFarthest, true},
    {u"PENCOLOR", &Object::penColour},
    {u"PENSTYLE", &Object::penStyle},
    {u"PENWIDTH", &Object::penWidth, 0, kWidestPen},
    {u"BRUSHCOLOR", &Object::brushColour},
    {u"BRUSHSTYLE", &Object::brushStyle},
    {u"TRANSPARENCY", &Object::transparency, 0, 255},
    {u"FONTNAME", &Object::fontName, 0, 0, true},
    {u"FONTHEIGHT", &Object::fontHeight, 1, kHighestFont, true},
    {u"FONTANGLE", &Object::fontAngle, -kFarthest, kFarthest},
    {u"FONTBOLD", &Object::fontBold, 0, 1, true},
    {u"FONTITALIC", &Object::fontItalic, 0, 1, true},
    {u"FONTUNDERLINE", &Object::fontUnderline, 0, 1, true},
    {u"FONTSTRIKEOUT", &Object::fontStrikeout, 0, 1, true},
    {u"FONTQUALITY", &Object::fontQuality},
    {u"TEXTALIGN", &Object::textAlign},
    {u"TEXTAUTOSIZE", &Object::textAutosize, 0, 1, true},
    {u"TEXTEDITABLE", &Object::textEditable},
    {u"MOVEABLE", &Object::moveable},
    {u"SIZEABLE", &Object::sizeable},
    {u"SELECTABLE", &Object::selectable},
    {u"VISIBLE", &Object::visible},
    {u"ENDSHAPE", &Object::endShape},
};

constexpr auto kKeyNames = [] {
  std::array<const char16_t*, std::size(kKeys) + 1> names{kKind};
  std::ranges::transform(kKeys, names.begin() + 1, &KeyRow::key);
  return names;
}();

bool SameKey(QStringView a, const char16_t* b) {
  return a.compare(QStringView(b), Qt::CaseInsensitive) == 0;
}

const KeyRow* FindKey(QStringView key) {
  const auto* row =
      std::ranges::find_if(kKeys, [key](const KeyRow& each) { return SameKey(key, each.key); });
  return row == std::end(kKeys) ? nullptr : row;
}

// From text, each by the type of its member.

bool Read(const QString& text, const KeyRow& row, double& value) {
  bool ok = false;
  const double number = text.toDouble(&ok);
  if (!ok || !(number >= row.least && number <= row.most)) return false;
  value = number + 0.0;  // no minus in front of nothing
  return true;
}

bool Read(const QString& text, const KeyRow& row, int& value) {
  bool ok = false;
  const int number = text.toInt(&ok);
  if (!ok || number < row.least || number > row.most) return false;
  value = number;
  return true;
}

bool Read(const QString& text, const KeyRow&, bool& value) {
  if (text != u"0" && text != u"1") return false;
  value = text == u"1";
  return true;
}

bool Read(const QString& text, const KeyRow&, QString& value) {
  if (text.size() > kMostObjectText || !text.isValidUtf16()) return false;
  value = text;
  return true;
}

bool Read(const QString& text, const KeyRow&, QColor& value) {
  const QStringList parts = text.split(QChar(u','));
  if (parts.size() != 3) return false;
  std::array<int, 3> rgb{};
  for (std::size_t i = 0; i < rgb.size(); ++i) {
    bool ok = false;
    rgb[i] = parts.at(static_cast<qsizetype>(i)).trimmed().toInt(&ok);
    if (!ok || rgb[i] < 0 || rgb[i] > 255) return false;
  }
  value = QColor(rgb[0], rgb[1], rgb[2]);
  return true;
}

/// The numbers that an enumeration has.
template <class Word>
constexpr std::array<Word, 0> kWords{};
template <>
constexpr std::array kWords<PenStyle>{PenStyle::Solid, PenStyle::Dash, PenStyle::Dot,
                                      PenStyle::None};
template <>
constexpr std::array kWords<BrushStyle>{BrushStyle::Solid, BrushStyle::Clear};
template <>
constexpr std::array kWords<TextAlign>{TextAlign::Left, TextAlign::Right, TextAlign::Centre};
template <>
constexpr std::array kWords<FontQuality>{FontQuality::Default, FontQuality::Smoothed};
template <>
constexpr std::array kWords<EndShape>{EndShape::None, EndShape::Arrow};

template <class Word>
requires std::is_enum_v<Word>
bool Read(const QString& text, const KeyRow&, Word& value) {
  bool ok = false;
  const auto word = static_cast<Word>(text.toInt(&ok));
  if (!ok || std::ranges::find(kWords<Word>, word) == kWords<Word>.end()) return false;
  value = word;
  return true;
}

// To text.

QString Text(double value) {
  return QString::number(value, 'f', QLocale::FloatingPointShortest);
}
QString Text(int value) {
  return QString::number(value);
}
QString Text(bool value) {
  return value ? u"1"_s : u"0"_s;
}
QString Text(const QString& value) {
  return value;
}
QString Text(const QColor& value) {
  return u"%1,%2,%3"_s.arg(value.red()).arg(value.green()).arg(value.blue());
}
template <class Word>
requires std::is_enum_v<Word> QString Text(Word value) {
  return QString::number(static_cast<int>(value));
}

}  // namespace

std::span<const char16_t* const> ObjectKeys() {
  return kKeyNames;
}

QString ObjectProperty(const VectorObject& object, QStringView key) {
  if (SameKey(key, kKind)) return Text(object.kind);
  const KeyRow* row = FindKey(key);
  if (!row) return QString();
  return std::visit([&object](auto member) { return Text(object.*member); }, row->member);
}

bool SetKey(VectorObject& object, QStringView key, const QString& value) {
  if (SameKey(key, kKind)) return value == Text(object.kind);
  const KeyRow* row = FindKey(key);
  if (!row) return false;
  // Only a line runs to the left or upwards.
  const bool length =
      row->member == Member(&Object::width) || row->member == Member(&Object::height);
  if (length && object.kind != ObjectKind::Line && value.trimmed().startsWith(QChar(u'-')))
    return false;
  return std::visit([&](auto member) { return Read(value, *row, object.*member); }, row->member);
}

bool SetProperty(VectorObject& object, QStringView key, const QString& value) {
  if (!SetKey(object, key, value)) return false;
  if (const KeyRow* row = FindKey(key); row && row->fits) FitText(object);
  return true;
}

}  // namespace zqm
