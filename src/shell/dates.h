// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringView>
#include <optional>

namespace zqm {

/// Which order of the numbers is tried first.
enum class DateOrder { Locale, DayFirst, MonthFirst };

/// Reads a date as the user would write it: the first order is tried, then day-month-year,
/// month-day-year, year-month-day; separators "/", "-", "."; month names, full or short, of the
/// user's locale; an optional time "H:MM[:SS]" with AM or PM. Two-digit years: 00 to 29 are 2000s,
/// 30 to 99 1900s. A four-digit first number is the year. Days that no calendar has are refused.
/// The value is wall-clock time without a zone, held as UTC so that no clock change moves it.
std::optional<QDateTime> ParseDate(QStringView text, DateOrder first = DateOrder::Locale);

/// Whether `ParseDate` reads it.
bool IsDate(QStringView text, DateOrder first = DateOrder::Locale);

/// The locale's short form with a four-digit year.
QString ShortDate(QDate date);

/// Short date, a blank, and the locale's time with seconds.
QString ShortDateTime(const QDateTime& time);

/// An EXIF date "YYYY:MM:DD HH:MM:SS" as the user's date and time. A date that no calendar has, as
/// "0000:00:00", gives "0000/00/00", a blank and the time part as it stands. Raises `Error`
/// (subscript out of range) on a text without a blank.
QString AnalyseDate(const QString& text);

}  // namespace zqm
