// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/text.h"

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <system_error>

#include "shell/locale_info.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kSingleDigits = 7;
constexpr int kDoubleDigits = 15;
// A double never has more than 309 digits before the point; the rest is room for the fraction.
constexpr int kLongestNumber = 400;

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}
bool IsBlank(QChar c) {
  return c == u' ' || c == u'\t';
}

/// A finite number as its significant decimal digits: 0.d1d2d3... times ten to the power `point`.
/// Zero has no digits.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;

  void Trim() {
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.empty()) *this = Decimal();
  }

  /// The digit that stands `place` places behind the point (1 the first), 0 outside the digits.
  char At(int place) const {
    const int index = point + place - 1;
    if (index < 0 || index >= static_cast<int>(digits.size())) return '0';
    return digits[static_cast<size_t>(index)];
  }
};

Decimal ToDecimal(double value, int significant) {
  Decimal decimal;
  if (!std::isfinite(value) || value == 0) return decimal;
  char buffer[64];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value),
                                 std::chars_format::scientific, significant - 1)
                       .ptr;
  const std::string_view text(buffer, static_cast<size_t>(end - buffer));
  const size_t exponentAt = text.find('e');
  const char* exponent = text.data() + exponentAt + 1;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end, decimal.point);
  ++decimal.point;
  decimal.negative = value < 0;
  for (const char c : text.substr(0, exponentAt)) {
    if (c != '.') decimal.digits += c;
  }
  decimal.Trim();
  return decimal;
}

enum class Tie { AwayFromZero, ToEven };

/// Keeps `decimals` places behind the point.
void RoundAt(Decimal& decimal, int decimals, Tie tie) {
  const int kept = decimal.point + decimals;
  if (kept >= static_cast<int>(decimal.digits.size())) return;
  if (kept < 0) {
    decimal = Decimal();
    return;
  }
  const auto keptDigits = static_cast<size_t>(kept);
  const char next = decimal.digits[keptDigits];
  // No trailing zeros are held, so more digits behind a 5 mean more than a half.
  const bool isTie = next == '5' && keptDigits + 1 == decimal.digits.size();
  const bool lastIsOdd = kept > 0 && (decimal.digits[keptDigits - 1] - '0') % 2 == 1;
  const bool up = isTie ? tie == Tie::AwayFromZero || lastIsOdd : next >= '5';
  decimal.digits.resize(keptDigits);
  if (up) {
    auto digit = decimal.digits.rbegin();
    while (digit != decimal.digits.rend() && *digit == '9')
      *digit++ = '0';
    if (digit != decimal.digits.rend()) {
      ++*digit;
    } else {
      decimal.digits.insert(decimal.digits.begin(), '1');
      ++decimal.point;
    }
  }
  decimal.Trim();
}

/// At least the given number of places before and behind the point; the separator only where
/// something follows it, or always.
QString Write(const Decimal& decimal, int leastWhole, int leastFraction, bool alwaysSeparator,
              const QString& separator) {
  QString text;
  if (decimal.negative) text += u'-';
  for (int place = 1 - std::max(decimal.point, leastWhole); place <= 0; ++place) {
    text += QLatin1Char(decimal.At(place));
  }
  const int fraction =
      std::max(static_cast<int>(decimal.digits.size()) - decimal.point, leastFraction);
  if (fraction > 0 || alwaysSeparator) text += separator;
  for (int place = 1; place <= fraction; ++place)
    text += QLatin1Char(decimal.At(place));
  return text;
}

QString Separator() {
  return GetUserLocaleInfo(LocaleInfo::DecimalSeparator);
}

QString Plain(const Decimal& decimal) {
  return Write(decimal, 1, 0, false, Separator());
}

QString FormatDecimal(Decimal decimal, QStringView mask) {
  const qsizetype point = mask.indexOf(u'.');
  const QStringView whole = point < 0 ? mask : mask.first(point);
  const QStringView fraction = point < 0 ? QStringView() : mask.sliced(point + 1);
  const qsizetype firstZero = whole.indexOf(u'0');
  const auto leastWhole = firstZero < 0 ? 0 : static_cast<int>(whole.size() - firstZero);
  const auto leastFraction = static_cast<int>(fraction.lastIndexOf(u'0') + 1);
  RoundAt(decimal, static_cast<int>(fraction.size()), Tie::AwayFromZero);
  return Write(decimal, leastWhole, leastFraction, point >= 0, Separator());
}

/// The length of the number that `text` begins with: digits with at most one `separator`.
qsizetype NumberLength(QStringView text, QChar separator) {
  qsizetype length = 0;
  qsizetype digits = 0;
  bool separated = false;
  for (; length < text.size(); ++length) {
    if (IsDigit(text[length])) {
      ++digits;
    } else if (text[length] == separator && !separated) {
      separated = true;
    } else {
      break;
    }
  }
  return digits > 0 ? length : 0;
}

/// The length of "e", an optional sign and digits at the start of `text`; 0 if it isn't whole.
qsizetype ExponentLength(QStringView text) {
  if (text.isEmpty() || text[0].toLower() != u'e') return 0;
  qsizetype length = 1;
  if (length < text.size() && (text[length] == u'+' || text[length] == u'-')) ++length;
  const qsizetype digitsAt = length;
  while (length < text.size() && IsDigit(text[length]))
    ++length;
  return length > digitsAt ? length : 0;
}

/// Reads "digits[.digits][e...]" without a sign; nothing when it is beyond a double's range.
std::optional<double> ReadAscii(QStringView text) {
  const QByteArray ascii = text.toLatin1();
  double value = 0;
  const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (error != std::errc() || end == ascii.data()) return std::nullopt;
  return value;
}

/// Cuts a sign off the front and tells whether it was a minus.
bool TakeSign(QStringView& text) {
  if (text.isEmpty() || (text[0] != u'+' && text[0] != u'-')) return false;
  const bool negative = text[0] == u'-';
  text = text.sliced(1);
  return negative;
}

}  // namespace

double Val(QStringView text) {
  while (!text.isEmpty() && IsBlank(text[0]))
    text = text.sliced(1);
  const bool negative = TakeSign(text);
  qsizetype length = NumberLength(text, u'.');
  if (length == 0) return 0;
  length += ExponentLength(text.sliced(length));
  const double value = ReadAscii(text.first(length)).value_or(0);
  return negative && value != 0 ? -value : value;
}

QString PlainText(float value) {
  return Plain(ToDecimal(static_cast<double>(value), kSingleDigits));
}
QString PlainText(double value) {
  return Plain(ToDecimal(value, kDoubleDigits));
}

QString Format(float value, QStringView mask) {
  return FormatDecimal(ToDecimal(static_cast<double>(value), kSingleDigits), mask);
}
QString Format(double value, QStringView mask) {
  return FormatDecimal(ToDecimal(value, kDoubleDigits), mask);
}

double Round(double value, int decimals) {
  if (!std::isfinite(value)) return value;
  char buffer[kLongestNumber];
  // The shortest way to an exact answer: this conversion rounds the binary value itself, half to
  // even, where scaling by a power of ten would round twice.
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                 std::clamp(decimals, 0, kDoubleDigits))
                       .ptr;
  double rounded = 0;
  std::from_chars(buffer, end, rounded);
  return rounded == 0 ? 0 : rounded;  // never "-0"
}

float RoundText(float value, int decimals) {
  if (!std::isfinite(value)) return value;
  Decimal decimal = ToDecimal(static_cast<double>(value), kSingleDigits);
  RoundAt(decimal, std::max(decimals, 0), Tie::ToEven);
  const std::string text = Write(decimal, 1, 0, false, QStringLiteral(".")).toStdString();
  float rounded = 0;
  std::from_chars(text.data(), text.data() + text.size(), rounded);
  return rounded;
}

std::optional<double> ToNumber(QStringView text) {
  text = text.trimmed();
  const bool negative = TakeSign(text);
  const QChar separator = Separator()[0];
  const qsizetype length = NumberLength(text, separator);
  if (length == 0 || length != text.size()) return std::nullopt;
  const auto value = ReadAscii(text.toString().replace(separator, u'.'));
  if (!value) return std::nullopt;
  return negative && *value != 0 ? -*value : *value;
}

bool IsNumeric(QStringView text) {
  return ToNumber(text).has_value();
}

std::optional<double> PositiveNumber(QStringView text) {
  const auto number = ToNumber(text);
  return number && *number > 0 ? number : std::nullopt;
}

QString SizeText(double kilobytes) {
  constexpr double kKilobytesInMegabyte = 1024;
  const bool large = kilobytes >= kKilobytesInMegabyte;
  const double value = large ? kilobytes / kKilobytesInMegabyte : kilobytes;
  return PlainText(Round(value, 2)) + (large ? u" MB"_s : u" KB"_s);
}

int CharCount(QStringView text, QChar character) {
  return static_cast<int>(text.count(character));
}

QByteArray ToLatin1(QStringView text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    bytes += unit <= 0xff ? static_cast<char>(unit) : '?';
    const bool pair =
        text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (pair) ++i;  // one character, one "?"
  }
  return bytes;
}

QString FromUtf8OrLatin1(QByteArrayView bytes) {
  while (!bytes.isEmpty() && bytes.back() == '\0')
    bytes.chop(1);
  return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8() ? QString::fromUtf8(bytes)
                                                                   : QString::fromLatin1(bytes);
}

}  // namespace zqm
