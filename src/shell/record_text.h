// SPDX-License-Identifier: GPL-3.0-or-later
// Records of fixed size, as the program's small files of settings hold them: texts of one byte a
// character (Latin-1), at the left of their field, padded with blanks.
#pragma once

#include <QByteArray>
#include <QString>

namespace zqm {

/// A text as a field of `size` bytes: cut or padded, "?" for what doesn't fit the alphabet.
QByteArray RecordField(const QString& text, int size);

/// The text of a field without blanks around it; "" where the record is too short for it.
QString RecordText(const QByteArray& record, int offset, int size);

/// A file of exactly `size` bytes; empty when it is missing, shorter, longer or can't be read.
QByteArray ReadRecordFile(const QString& path, int size);

}  // namespace zqm
