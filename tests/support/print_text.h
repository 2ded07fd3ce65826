// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <ostream>

// Readable texts in the messages of failed tests; found by the test library through the namespace.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE
