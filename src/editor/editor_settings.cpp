// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/editor_settings.h"

#include <algorithm>
#include <cmath>

#include "editor/crop_resize.h"
#include "editor/edit_text.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/record_text.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

QString MagicFile(const QString& folder) {
  return folder + u"/Magic.dat"_s;
}
QString ResizeFile(const QString& folder) {
  return folder + u"/RSZ.dat"_s;
}
QString WatermarkFile(const QString& folder) {
  return folder + u"/WTM.dat"_s;
}

// One text behind its length in two bytes, the lower one first.
constexpr int kMagicBytes = 4, kMagicLengthBytes = 2;
constexpr int kMagicTextBytes = kMagicBytes - kMagicLengthBytes;

/// A field of a record: where it begins and how many bytes it has.
struct Field {
  int offset, size;
};

constexpr int kResizeBytes = 30;
constexpr Field kDpi{0, 10}, kFilter{10, 10}, kKeepAspect{20, 10};

constexpr int kWatermarkBytes = 390;
constexpr Field kText{0, 250}, kSize{250, 5}, kAngle{255, 5}, kFont{260, 100}, kColour{360, 15},
    kBold{375, 3}, kUnderline{378, 3}, kItalic{381, 3}, kStrikeout{384, 3}, kTransparency{387, 3};

QString Read(const QByteArray& record, const Field& field) {
  return RecordText(record, field.offset, field.size);
}

void Write(QByteArray& record, const Field& field, const QString& text) {
  record.replace(field.offset, field.size, RecordField(text, field.size));
}

/// The text that a record of the wand holds; nothing for what is no such record. Programs that
/// write no more than they must leave out what follows the text.
std::optional<QString> MagicText(const QByteArray& record) {
  if (record.size() < kMagicLengthBytes || record.size() > kMagicBytes) return std::nullopt;
  const int length = static_cast<uchar>(record.at(0)) | static_cast<uchar>(record.at(1)) << 8;
  if (length > record.size() - kMagicLengthBytes) return std::nullopt;
  return QString::fromLatin1(record.mid(kMagicLengthBytes, length));
}

// Colours are stored as one decimal number, red lowest.

int ColourNumber(const QColor& colour) {
  return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

std::optional<QColor> ColourOf(const QString& number) {
  bool ok = false;
  const int value = number.toInt(&ok);
  if (!ok || value < 0 || value > 0xFFFFFF) return std::nullopt;
  return QColor(value & 0xFF, value >> 8 & 0xFF, value >> 16);
}

QString OrElse(const QString& text, const QString& otherwise) {
  return text.isEmpty() ? otherwise : text;
}

}  // namespace

MagicWandSettings LoadMagicWandSettings(const QString& folder) {
  const MagicWandSettings defaults{10, u"10"_s};
  const auto file = ReadWholeFile(MagicFile(folder), kMagicBytes);
  const auto text = file ? MagicText(*file) : std::nullopt;
  if (!text || text->isEmpty()) return defaults;
  const auto number = ToNumber(*text);
  if (!number) return {defaults.tolerance, std::nullopt};
  return {static_cast<int>(std::clamp(std::round(*number), 0.0, 255.0)), *text};
}

Outcome SaveMagicWandSettings(const QString& folder, const QString& typed) {
  if (!IsNumeric(typed)) return Failure{QString::fromUtf16(edit_text::kInvalidTolerance)};
  const QByteArray text = ToLatin1(typed);
  if (text.size() > kMagicTextBytes)
    throw Error(error_number::kRecordLength, u"Bad record length"_s);
  QByteArray record(kMagicBytes, '\0');
  record[0] = static_cast<char>(text.size());
  record.replace(kMagicLengthBytes, text.size(), text);
  return WriteFileAtomically(MagicFile(folder), record);
}

ResizePanel LoadResizeSettings(const QString& folder) {
  const QByteArray record = ReadRecordFile(ResizeFile(folder), kResizeBytes);
  ResizePanel panel;
  if (record.isEmpty()) return panel;
  if (const QString dpi = Read(record, kDpi); IsNumeric(dpi)) panel.dpi = dpi;
  if (const auto filter = ToNumber(Read(record, kFilter));
      filter && *filter >= 0 && *filter < kEditorFilterCount)
    panel.filter = static_cast<int>(*filter);
  panel.keepAspect = Read(record, kKeepAspect) != u"false";
  return panel;
}

Outcome SaveResizeSettings(const QString& folder, const ResizePanel& panel) {
  QByteArray record(kResizeBytes, ' ');
  const QString dpi = panel.dpi.trimmed();
  Write(record, kDpi, IsNumeric(dpi) ? dpi : ResizePanel().dpi);
  Write(record, kFilter, QString::number(panel.filter));
  Write(record, kKeepAspect, panel.keepAspect ? u"true"_s : u"false"_s);
  return WriteFileAtomically(ResizeFile(folder), record);
}

WatermarkPanel LoadWatermarkSettings(const QString& folder) {
  const QByteArray record = ReadRecordFile(WatermarkFile(folder), kWatermarkBytes);
  const WatermarkPanel defaults;
  if (record.isEmpty()) return defaults;
  const auto ticked = [&record](const Field& field) { return Read(record, field) == u"1"; };
  WatermarkPanel panel;
  panel.text = OrElse(Read(record, kText), defaults.text);
  panel.size = OrElse(Read(record, kSize), defaults.size);
  panel.angle = OrElse(Read(record, kAngle), defaults.angle);
  panel.fontName = Read(record, kFont);
  panel.colour = ColourOf(Read(record, kColour)).value_or(defaults.colour);
  panel.bold = ticked(kBold);
  panel.underline = ticked(kUnderline);
  panel.italic = ticked(kItalic);
  panel.strikeout = ticked(kStrikeout);
  bool ok = false;
  const int transparency = Read(record, kTransparency).toInt(&ok);
  if (ok && transparency >= 0 && transparency <= 255) panel.transparency = transparency;
  return panel;
}

Outcome SaveWatermarkSettings(const QString& folder, const WatermarkPanel& panel) {
  const WatermarkPanel defaults;
  const auto digit = [](bool ticked) { return ticked ? u"1"_s : u"0"_s; };
  QByteArray record(kWatermarkBytes, ' ');
  Write(record, kText, panel.text);
  Write(record, kSize, OrElse(panel.size, defaults.size));
  Write(record, kAngle, OrElse(panel.angle, defaults.angle));
  Write(record, kFont, panel.fontName);
  Write(record, kColour, QString::number(ColourNumber(panel.colour)));
  Write(record, kBold, digit(panel.bold));
  Write(record, kUnderline, digit(panel.underline));
  Write(record, kItalic, digit(panel.italic));
  Write(record, kStrikeout, digit(panel.strikeout));
  Write(record, kTransparency, QString::number(panel.transparency));
  return WriteFileAtomically(WatermarkFile(folder), record);
}

}  // namespace zqm
