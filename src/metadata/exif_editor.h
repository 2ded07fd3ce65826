// SPDX-License-Identifier: GPL-3.0-or-later
// The EXIF editor without its window: the fields, what may be typed into them, how panels fill them
// and which value of a tag a typed text is. The inverse of decoding.h.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <span>

#include "metadata/decoding.h"
#include "metadata/value_tables.h"
#include "shell/result.h"

namespace zqm {

enum class ExifKind {
  Text,       ///< written as it stands, also empty
  Number,     ///< as typed; nothing for an empty text, "0" or what is no number
  Signed,     ///< likewise, with a sign
  SubSecond,  ///< a number whose digits count: "007"
  Aperture,   ///< an F-number, written as its APEX value
  Shutter,    ///< seconds or "1/n", written as APEX value
  Exposure,   ///< seconds or "1/n", written as seconds
  List,       ///< one of `list`
  Date,
};

struct ExifField {
  const char16_t* caption;  ///< of the check box
  const char16_t* key;
  ExifKind kind;
  std::span<const CodedWord> list = {};
  const char16_t* panel = nullptr;    ///< the panel's line, where its caption is another one
  std::optional<Plain> plain = {};    ///< fills the field instead of the panel's text
  const char16_t* tiffKey = nullptr;  ///< the key in TIFF files, where it is another one
};

/// The 38 fields; their index is the check box's.
std::span<const ExifField> ExifEditFields();
/// The index of a caption, letter case aside, or -1.
int FindExifField(QStringView caption);

/// Typed texts by the field's index; what isn't in it isn't touched. Numbers are in the form of the
/// user's locale, the two times "2" (slow) or "1/250" (fast), dates "YYYY:MM:DD HH:MM:SS" or as the
/// user writes them.
using ExifEdit = std::map<int, QString>;

/// What a list offers, in its order.
QStringList ListItems(const ExifField& field);
/// The place of a text in the list, letter case aside, or -1.
int FindListItem(const ExifField& field, const QString& text);

/// The value for the field's key; nothing when the text means that none is written.
std::optional<QString> ExifValue(const ExifField& field, const QString& typed);
/// A text from elsewhere as the field's input holds it, list items in the list's spelling; or why
/// nobody could have typed or picked it.
Result<QString> TypedText(const ExifField& field, const QString& text);

/// Every "," as ".".
QString ConvertedNumber(const QString& text);

/// "1/250" is a fast shutter of the denominator "250".
bool IsFast(const QString& typed);
QString FastShutter(const QString& denominator);
QString FastDenominator(const QString& typed);

/// "YYYY:MM:DD HH:MM:SS".
QString ExifDateText(const QDateTime& time);
/// The time of such a text; nothing where it isn't one.
std::optional<QDateTime> ExifDate(const QString& text);
/// A panel's date as a time, whatever an eastern locale has put for the halves of the day; nothing
/// for what is no date.
std::optional<QDateTime> PanelDate(const QString& text);

/// What the editor shows of the photo on view: texts by field, lists by their items' spelling. What
/// fits no list item, and a date that is none, is left out. `line` gives the panel's text of a
/// caption.
ExifEdit GetExif(const std::function<QString(QStringView caption)>& line,
                 const std::array<QString, kPlainCount>& plain);

/// What a key typed into a field may be, backspace aside.
enum class KeyFilter { Anything, Number, SignedNumber, Digits, Nothing };
/// The filter of a field's input; `denominator` is the box of a fast shutter.
KeyFilter KeyFilterOf(const ExifField& field, bool denominator = false);
/// `separator` is the decimal separator of the user's locale. Keys of 128 and above pass `Nothing`,
/// which keeps lists from being typed into.
bool KeyPasses(KeyFilter filter, QChar typed, QChar separator);

}  // namespace zqm
