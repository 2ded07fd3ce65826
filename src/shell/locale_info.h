// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>
#include <QString>

namespace zqm {

/// The user's locale: what `UseSystemLocale` chose, or what a test set by `QLocale::setDefault`.
/// Thread-safe for reading.
QLocale UserLocale();

/// Makes the system's locale the user's; "C" and "POSIX" count as en_US. Once, at program start.
void UseSystemLocale();

/// Number of the user's locale query: the values are those that callers have always passed.
enum class LocaleInfo { CountryCode = 5, DecimalSeparator = 14 };

/// The decimal separator ("." or ","), or the international dialling code of the country ("30" for
/// Greece; "" where it isn't known).
QString GetUserLocaleInfo(LocaleInfo type);

}  // namespace zqm
