// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/record_text.h"

#include "shell/files.h"
#include "shell/text.h"

namespace zqm {

QByteArray RecordField(const QString& text, int size) {
  return ToLatin1(text).leftJustified(size, ' ', true);
}

QString RecordText(const QByteArray& record, int offset, int size) {
  if (offset < 0 || offset + size > record.size()) return QString();
  return QString::fromLatin1(record.mid(offset, size)).trimmed();
}

QByteArray ReadRecordFile(const QString& path, int size) {
  const auto file = ReadWholeFile(path, size);
  return file && file->size() == size ? *file : QByteArray();
}

}  // namespace zqm
