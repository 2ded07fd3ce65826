// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonDocument>
#include <QString>

#include "shell/failure_list.h"

namespace zqm {

/// How a command ended, as the process's exit code.
enum ExitCode { kExitDone = 0, kExitSomeFailed = 1, kExitUsage = 2, kExitUnexpected = 3 };

/// A value from a file as it can stand in a line of a terminal: control characters as escapes.
QString OnOneLine(const QString& text);

/// Standard output and standard error of a command.
class Console {
 public:
  explicit Console(bool json) : json_(json) {}

  /// Whether the command's result is one JSON document instead of lines.
  bool Json() const { return json_; }

  void Line(const QString& text) const;
  void Document(const QJsonDocument& document) const;
  void ErrorLine(const QString& text) const;
  /// A message that ends the command before anything was done; also as a document where one is
  /// expected. Returns `kExitUsage`.
  int Refuse(const QString& message) const;
  /// The closing message of a command that did what it should. Returns `kExitDone`.
  int Done(const QString& message) const;
  /// Why a command could not be carried out, though it was asked for rightly. Returns
  /// `kExitSomeFailed`.
  int Fail(const QString& message) const;
  /// How a run over files ended: `count` files under the document's key `word`, a message ("" for
  /// none) and the failures. Returns the exit code.
  int Report(int count, const char* word, const QString& message,
             const FailureList& failures) const;
  /// "FILE: REASON", a line each, on standard error.
  void Failures(const FailureList& failures) const;
  /// A line that the next one overwrites; only where standard error is a terminal.
  void Progress(const QString& text) const;
  void ClearProgress() const;

  /// `exitCode`, or, when standard output could not take all that was printed, that this failed.
  int Finish(int exitCode) const;

 private:
  void MessageDocument(const QString& message) const;

  bool json_;
};

}  // namespace zqm
