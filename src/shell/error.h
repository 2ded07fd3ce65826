// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <exception>
#include <functional>
#include <source_location>
#include <string>

namespace zqm {

/// A fault of the program or a lost catalogue: ends the process by way of `Guarded`. Expected
/// failures are `Failure` values instead.
class Error : public std::exception {
 public:
  explicit Error(int number, QString description,
                 std::source_location where = std::source_location::current());

  int Number() const { return number_; }
  const QString& Description() const { return description_; }
  int Line() const { return line_; }
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  int number_;
  QString description_;
  int line_;
  std::string utf8_;
};

/// Numbers that the program's own errors carry.
namespace error_number {
inline constexpr int kSubscript = 9;           ///< subscript out of range
inline constexpr int kOverflow = 6;            ///< the row index is full
inline constexpr int kRecordLength = 59;       ///< a text doesn't fit its record
inline constexpr int kFileOperation = 32000;   ///< a misused `CSHFileOp`
inline constexpr int kDatabase = -2147467259;  ///< 0x80004005: a catalogue can't be read
inline constexpr int kUnexpected = 5;          ///< anything else
}  // namespace error_number

/// Shows the report of an unexpected failure: version, location "module -> procedure -> line",
/// description, and what the user is asked to send. The caller ends the process afterwards.
void CrashErrorMessage(const QString& line, const QString& procedure, const QString& module,
                       const QString& number, const QString& description);

/// Runs `body`; whatever it throws is reported by `CrashErrorMessage` and the process ends through
/// the exit handler (exit code 3). The only catch-all of the program.
void Guarded(const char* module, const char* procedure, const std::function<void()>& body);

/// How a guarded failure ends the process; the default is `std::_Exit(3)`. Tests set their own.
using ExitHandler = std::function<void(int code)>;
void SetExitHandler(ExitHandler handler);

}  // namespace zqm
