// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/error.h"

#include <QStringList>
#include <cstdio>
#include <cstdlib>

#include "shell/file_info.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

ExitHandler& CurrentExitHandler() {
  static ExitHandler handler;
  return handler;
}

void EndProcess() {
  constexpr int kUnexpectedExit = 3;
  if (const ExitHandler handler = CurrentExitHandler()) {
    handler(kUnexpectedExit);
    return;
  }
  std::fflush(nullptr);
  std::_Exit(kUnexpectedExit);
}

void Report(const char* module, const char* procedure, int line, int number,
            const QString& description) {
  CrashErrorMessage(QString::number(line), QString::fromUtf8(procedure), QString::fromUtf8(module),
                    QString::number(number), description);
  EndProcess();
}

}  // namespace

Error::Error(int number, QString description, std::source_location where)
    : number_(number),
      description_(std::move(description)),
      line_(static_cast<int>(where.line())),
      utf8_(description_.toStdString()) {}

void CrashErrorMessage(const QString& line, const QString& procedure, const QString& module,
                       const QString& number, const QString& description) {
  const QString location = QStringList{module, procedure, line}.join(" -> "_L1);
  const QStringList lines = {
      u"Oops....Zolmira QM encountered an error an needs to close."_s,
      u"The following error message was returned:"_s,
      u"%1: %2\n%3: %4"_s.arg(ProgramVersion(), location, number, description),
      u"Please send this message to the Zolmira QM issue page together with the answers to these "
      "questions:"_s,
      u"1. What were you doing when the error occured?\n"
      "2. Your Windows version (XP, Vista or Win 7).\n"
      "3. If possible please provide a screenshot of the error."_s,
      u"Thank You!"_s,
  };
  MsgBox(lines.join("\n\n"_L1), MessageKind::Critical);
}

void Guarded(const char* module, const char* procedure, const std::function<void()>& body) {
  try {
    body();
  } catch (const Error& error) {
    Report(module, procedure, error.Line(), error.Number(), error.Description());
  } catch (const std::exception& error) {
    Report(module, procedure, 0, error_number::kUnexpected, QString::fromUtf8(error.what()));
  } catch (...) {
    Report(module, procedure, 0, error_number::kUnexpected, u"Unknown error"_s);
  }
}

void SetExitHandler(ExitHandler handler) {
  CurrentExitHandler() = std::move(handler);
}

}  // namespace zqm
