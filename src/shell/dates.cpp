// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/dates.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>

#include "shell/error.h"
#include "shell/locale_info.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// Nothing that a user or a camera writes comes near; longer texts aren't worth the patterns.
constexpr qsizetype kLongestDate = 80;
constexpr int kFirstYear = 100;

/// The order of the three numbers, by the letters of a date format.
using Order = std::array<char16_t, 3>;
constexpr Order kDayFirst{u'd', u'M', u'y'};
constexpr Order kMonthFirst{u'M', u'd', u'y'};
constexpr Order kYearFirst{u'y', u'M', u'd'};

QString Unquoted(QString format) {
  static const QRegularExpression words(u"'[^']*'"_s);
  return format.remove(words);
}

/// European digits for those of any script, as numbers have them everywhere in the program.
QString EuropeanDigits(const QString& text) {
  QString result;
  for (const char32_t character : text.toUcs4()) {
    const int digit = QChar::category(character) == QChar::Number_DecimalDigit
                          ? QChar::digitValue(character)
                          : -1;
    result += digit < 0 ? QString::fromUcs4(&character, 1) : QString::number(digit);
  }
  return result;
}

/// Short form, the year always in four digits.
QString DateFormat(const QLocale& locale) {
  static const QRegularExpression years(u"y+"_s);
  QStringList parts = locale.dateFormat(QLocale::ShortFormat).split(u'\'');
  for (qsizetype i = 0; i < parts.size(); i += 2)
    parts[i].replace(years, u"yyyy"_s);
  return parts.join(u'\'');
}

/// How a locale writes a time of day; its words beside the numbers are left out, but for those of
/// the two halves of the day.
struct TimeForm {
  bool halves = false;
  bool halfFirst = false;
  bool twoDigits = false;
  QChar separator = u':';
};

TimeForm TimeFormOf(const QLocale& locale) {
  static const QRegularExpression hours(u"([hH]+)([:.]?)"_s);
  const QString format = Unquoted(locale.timeFormat(QLocale::LongFormat));
  const auto hour = hours.match(format);
  const qsizetype half = format.indexOf(u'a', 0, Qt::CaseInsensitive);
  TimeForm form;
  form.halves = half >= 0 && locale.amText() != locale.pmText();
  form.halfFirst = half < hour.capturedStart();
  form.twoDigits = hour.capturedLength(1) > 1;
  if (hour.capturedLength(2) > 0) form.separator = hour.capturedView(2)[0];
  return form;
}

QString TimeText(QTime time, const QLocale& locale) {
  const TimeForm form = TimeFormOf(locale);
  const int hour = form.halves ? (time.hour() + 11) % 12 + 1 : time.hour();
  const QString numbers = QString::number(hour).rightJustified(form.twoDigits ? 2 : 1, u'0') +
                          form.separator + time.toString(u"mm") + form.separator +
                          time.toString(u"ss");
  if (!form.halves) return numbers;
  const QString half = time.hour() < 12 ? locale.amText() : locale.pmText();
  return form.halfFirst ? half + u' ' + numbers : numbers + u' ' + half;
}

Order LocaleOrder(const QLocale& locale) {
  Order order = kDayFirst;
  const QString format = Unquoted(locale.dateFormat(QLocale::ShortFormat));
  std::ranges::sort(order, {}, [&](char16_t letter) { return format.indexOf(QChar(letter)); });
  return order;
}

std::optional<int> Year(const QString& digits) {
  const int number = digits.toInt();
  if (digits.size() <= 2) return number < 30 ? 2000 + number : 1900 + number;
  if (digits.size() == 4 && number >= kFirstYear) return number;
  return std::nullopt;
}

std::optional<QDate> MakeDate(const QString& year, int month, const QString& day) {
  const auto fullYear = Year(year);
  if (!fullYear || day.size() > 2) return std::nullopt;
  const QDate date(*fullYear, month, day.toInt());
  return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QDate> FromNumbers(const std::array<QString, 3>& numbers, const Order& order) {
  std::array<QString, 3> part;  // day, month, year
  for (size_t i = 0; i < order.size(); ++i) {
    part[order[i] == u'd' ? 0 : order[i] == u'M' ? 1 : 2] = numbers[i];
  }
  return MakeDate(part[2], part[1].size() > 2 ? 0 : part[1].toInt(), part[0]);
}

std::optional<QDate> ParseNumbers(const QString& text, const Order& first) {
  static const QRegularExpression pattern(
      uR"(^(\d{1,4}) ?([/.-]) ?(\d{1,2})(?: ?\2 ?| (?=\d{4}))(\d{1,4}) ?\.?$)"_s);
  const auto match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const std::array numbers{match.captured(1), match.captured(3), match.captured(4)};
  if (numbers[0].size() > 2) return FromNumbers(numbers, kYearFirst);
  for (const Order& order : {first, kDayFirst, kMonthFirst, kYearFirst}) {
    if (auto date = FromNumbers(numbers, order)) return date;
  }
  return std::nullopt;
}

QString FoldName(QString name) {
  if (name.endsWith(u'.')) name.chop(1);
  return name.toCaseFolded();
}

/// 1 to 12, or 0.
int MonthNumber(const QLocale& locale, const QString& name) {
  const QString wanted = FoldName(name);
  for (int month = 1; month <= 12; ++month) {
    for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
      if (FoldName(locale.monthName(month, format)) == wanted) return month;
      if (FoldName(locale.standaloneMonthName(month, format)) == wanted) return month;
    }
  }
  return 0;
}

/// "31 December 2007", "December 31, 2007", "31-Dec-07", "2007 December 31".
std::optional<QDate> ParseNamedMonth(const QString& text, const QLocale& locale) {
  static const QRegularExpression separators(uR"([ /,.-]+)"_s);
  static const QRegularExpression number(uR"(^\d{1,4}$)"_s);
  const QStringList parts = text.split(separators, Qt::SkipEmptyParts);
  if (parts.size() != 3) return std::nullopt;
  QStringList numbers;
  int month = 0;
  for (const QString& part : parts) {
    if (number.match(part).hasMatch()) {
      numbers += part;
    } else {
      month = MonthNumber(locale, part);
    }
  }
  if (numbers.size() != 2 || month == 0) return std::nullopt;
  if (auto date = MakeDate(numbers[1], month, numbers[0])) return date;
  return MakeDate(numbers[0], month, numbers[1]);
}

QString FoldHalf(const QString& text) {
  return text.simplified().toCaseFolded();
}

std::optional<QTime> ParseTime(const QString& text, const QLocale& locale) {
  static const QRegularExpression pattern(
      uR"(^(\D*?) ?(\d{1,2})([:.])(\d{2})(?:\3(\d{2}))? ?(\D*)$)"_s);
  const auto match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  int hour = match.captured(2).toInt();
  const QString half = (match.captured(1) + match.captured(6)).toCaseFolded();
  if (!half.isEmpty()) {
    const bool am = half == "am"_L1 || half == FoldHalf(locale.amText());
    const bool pm = half == "pm"_L1 || half == FoldHalf(locale.pmText());
    if (am == pm || hour < 1 || hour > 12) return std::nullopt;
    hour = hour % 12 + (am ? 0 : 12);
  }
  const QTime time(hour, match.captured(4).toInt(), match.captured(5).toInt());
  return time.isValid() ? std::optional(time) : std::nullopt;
}

/// The text without what says nothing: marks of the writing direction, doubled blanks and the words
/// of the locale's own short form.
QString Plain(QStringView text, const QLocale& locale) {
  static const QRegularExpression marks(u"[\\x{200e}\\x{200f}\\x{061c}]"_s);
  static const QRegularExpression words(u"'([^']+)'|((?:(?![dMy])\\p{L})+\\.?)"_s);
  QString plain = EuropeanDigits(text.toString()).remove(marks).simplified();
  auto word = words.globalMatch(locale.dateFormat(QLocale::ShortFormat));
  while (word.hasNext()) {
    const auto match = word.next();
    const QString escaped = QRegularExpression::escape(match.captured(1) + match.captured(2));
    plain.remove(QRegularExpression(u"(?<!\\p{L})"_s + escaped + u"(?!\\p{L})"_s));
  }
  return plain.simplified();
}

}  // namespace

std::optional<QDateTime> ParseDate(QStringView text, DateOrder first) {
  if (text.size() > kLongestDate) return std::nullopt;
  const QLocale locale = UserLocale();
  const Order order = first == DateOrder::DayFirst     ? kDayFirst
                      : first == DateOrder::MonthFirst ? kMonthFirst
                                                       : LocaleOrder(locale);
  const auto parseDay = [&](const QString& part) {
    const auto date = ParseNumbers(part, order);
    return date ? date : ParseNamedMonth(part, locale);
  };
  const QString plain = Plain(text, locale);
  // Held as UTC, so that no clock change of the user's zone moves a wall-clock time.
  if (const auto date = parseDay(plain)) return QDateTime(*date, QTime(0, 0), Qt::UTC);
  for (qsizetype blank = plain.indexOf(u' '); blank > 0; blank = plain.indexOf(u' ', blank + 1)) {
    const auto time = ParseTime(plain.sliced(blank + 1), locale);
    if (!time) continue;
    QString left = plain.first(blank);
    if (left.endsWith(u',')) left.chop(1);
    if (const auto date = parseDay(left)) return QDateTime(*date, *time, Qt::UTC);
  }
  return std::nullopt;
}

bool IsDate(QStringView text, DateOrder first) {
  return ParseDate(text, first).has_value();
}

QString ShortDate(QDate date) {
  const QLocale locale = UserLocale();
  return EuropeanDigits(locale.toString(date, DateFormat(locale)));
}

QString ShortDateTime(const QDateTime& time) {
  return ShortDate(time.date()) + u' ' + TimeText(time.time(), UserLocale());
}

QString AnalyseDate(const QString& text) {
  const QStringList parts = text.split(u' ');
  if (parts.size() < 2) throw Error(error_number::kSubscript, u"Subscript out of range"_s);
  const QString& time = parts[1];
  const QString date = QString(parts[0]).replace(u':', u'/');
  const auto day = ParseDate(date);
  if (!day) return u"0000/00/00 "_s + time;
  if (const auto whole = ParseDate(date + u' ' + time); whole && !time.isEmpty()) {
    return ShortDateTime(*whole);
  }
  // A good day with a broken time keeps what the file says.
  return (ShortDate(day->date()) + u' ' + time).trimmed();
}

}  // namespace zqm
