// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers and texts. Numbers that come from files always have "."; numbers shown to the user have
// the separator of the user's locale. Nothing else in the program converts between the two.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace zqm {

/// The longest numeric prefix, locale-blind: "1.69x" is 1.69, "1,69" is 1, "abc" is 0. Leading
/// blanks are skipped; sign, fraction with "." and a decimal exponent are read.
double Val(QStringView text);

/// Plain text of a 32-bit number: seven significant digits, the locale's separator, no trailing
/// zeros, "0" before a separator, never an exponent. NaN and infinities give "0".
QString PlainText(float value);

/// The same with fifteen significant digits, for GPS numbers and sizes.
QString PlainText(double value);

/// Masks of "#" and "0" with one "." that stands for the locale's separator, such as "######.##".
/// Rounds half away from zero on the decimal text of the number (seven digits for a float, fifteen
/// for a double). A mask of "#" after the point leaves a lone separator on whole numbers: "5.".
/// Values below one lose their leading zero under "#" as in ".5".
QString Format(float value, QStringView mask);
QString Format(double value, QStringView mask);

/// Half to even, on the value. `decimals` 0 to 15.
double Round(double value, int decimals);

/// Half to even, on the plain decimal text of a 32-bit number, so that 2.345 is a true tie.
float RoundText(float value, int decimals);

/// The number in a text of the user's locale (its separator, an optional sign, blanks around it; no
/// exponent, hexadecimal, currency or group separators), or nothing.
std::optional<double> ToNumber(QStringView text);
bool IsNumeric(QStringView text);
/// The same where it is above 0.
std::optional<double> PositiveNumber(QStringView text);

/// A file's length: KB below 1,024 KB, else MB, two decimals at most.
QString SizeText(double kilobytes);

/// How often `character` stands in `text`.
int CharCount(QStringView text, QChar character);

/// Latin-1 bytes, "?" for what doesn't fit.
QByteArray ToLatin1(QStringView text);

/// UTF-8 if the bytes are valid UTF-8, else Latin-1. Trailing NULs are cut.
QString FromUtf8OrLatin1(QByteArrayView bytes);

}  // namespace zqm
