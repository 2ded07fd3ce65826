// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/console.h"

#include <QJsonArray>
#include <QJsonObject>
#include <cstdio>

#include "shell/platform.h"

namespace zqm {
namespace {

void Put(std::FILE* stream, const QByteArray& bytes) {
  std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

bool ProgressIsSeen() {
  static const bool terminal = platform::StandardErrorIsTerminal();
  return terminal;
}

}  // namespace

QString OnOneLine(const QString& text) {
  QString line;
  for (const QChar c : text) {
    if (c == u'\n')
      line += QStringLiteral("\\n");
    else if (c.category() == QChar::Other_Control)
      line += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QChar(u'0'));
    else
      line += c;
  }
  return line;
}

void Console::Line(const QString& text) const {
  Put(stdout, text.toUtf8() + '\n');
}
void Console::ErrorLine(const QString& text) const {
  Put(stderr, text.toUtf8() + '\n');
}

void Console::Document(const QJsonDocument& document) const {
  Put(stdout, document.toJson(QJsonDocument::Indented));
}

void Console::MessageDocument(const QString& message) const {
  if (json_) Document(QJsonDocument(QJsonObject{{QStringLiteral("Message"), message}}));
}

int Console::Refuse(const QString& message) const {
  ErrorLine(message);
  MessageDocument(message);
  return kExitUsage;
}

int Console::Done(const QString& message) const {
  if (!json_ && !message.isEmpty()) Line(message);
  MessageDocument(message);
  return kExitDone;
}

int Console::Fail(const QString& message) const {
  ErrorLine(message);
  MessageDocument(message);
  return kExitSomeFailed;
}

int Console::Report(int count, const char* word, const QString& message,
                    const FailureList& failures) const {
  if (json_) {
    QJsonArray rows;
    for (const FailureRow& row : failures.rows)
      rows.append(
          QJsonObject{{QStringLiteral("File"), row.File}, {QStringLiteral("Reason"), row.Reason}});
    Document(QJsonDocument(QJsonObject{{QString::fromLatin1(word), count},
                                       {QStringLiteral("Message"), message},
                                       {QStringLiteral("Failures"), rows}}));
  } else if (!message.isEmpty()) {
    if (failures.Empty())
      Line(message);
    else
      ErrorLine(message);
  }
  Failures(failures);
  return failures.Empty() ? kExitDone : kExitSomeFailed;
}

void Console::Failures(const FailureList& failures) const {
  for (const FailureRow& row : failures.rows)
    ErrorLine(OnOneLine(row.File) + QStringLiteral(": ") + OnOneLine(row.Reason));
}

void Console::Progress(const QString& text) const {
  if (!ProgressIsSeen()) return;
  // Back to the line's start, the text, and the rest of the line cleared.
  Put(stderr, '\r' + OnOneLine(text).left(100).toUtf8() + "\x1B[K");
  std::fflush(stderr);
}

void Console::ClearProgress() const {
  if (ProgressIsSeen()) Put(stderr, "\r\x1B[K");
}

int Console::Finish(int exitCode) const {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return exitCode;
  ErrorLine(QStringLiteral("The output could not be written."));
  return exitCode == kExitDone ? kExitSomeFailed : exitCode;
}

}  // namespace zqm
