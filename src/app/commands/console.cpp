// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/console.h"

#include <unistd.h>

#include <cstdio>

namespace zqm {
namespace {

void Put(std::FILE* stream, const QByteArray& bytes) {
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

bool ProgressIsSeen() {
  static const bool terminal = isatty(fileno(stderr)) != 0;
  return terminal;
}

}  // namespace

void Console::Line(const QString& text) const {
  Put(stdout, text.toUtf8() + '\n');
}
void Console::ErrorLine(const QString& text) const {
  Put(stderr, text.toUtf8() + '\n');
}

void Console::Document(const QJsonDocument& document) const {
  Put(stdout, document.toJson(QJsonDocument::Indented));
}

void Console::Failures(const FailureList& failures) const {
  for (const FailureRow& row : failures.rows)
    ErrorLine(row.File + QStringLiteral(": ") + row.Reason);
}

void Console::Progress(const QString& text) const {
  if (!ProgressIsSeen()) return;
  // Back to the line's start, the text, and the rest of the line cleared.
  Put(stderr, '\r' + text.left(100).toUtf8() + "\x1B[K");
  std::fflush(stderr);
}

void Console::ClearProgress() const {
  if (ProgressIsSeen()) Put(stderr, "\r\x1B[K");
}

}  // namespace zqm
