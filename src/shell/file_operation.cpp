// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_operation.h"

#include "shell/error.h"
#include "shell/file_steps.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

Outcome RunOne(CSHFileOp::Operation operation, const QString& from, const QString& to,
               bool includeDirectories) {
  switch (operation) {
    case CSHFileOp::Operation::Move:
      return steps::MoveOne(from, to);
    case CSHFileOp::Operation::Delete:
      return steps::DeleteOne(from);
    case CSHFileOp::Operation::Copy:
      break;
  }
  const bool folder = includeDirectories && FolderExists(from);
  return folder ? steps::CopyTree(StripSlash(from), StripSlash(to)) : steps::CopyOne(from, to);
}

}  // namespace

void CSHFileOp::AddSource(const QString& path) {
  sources_ += path;
}
void CSHFileOp::SetDestination(const QString& path) {
  destination_ = path;
}
void CSHFileOp::ClearSources() {
  sources_.clear();
}

Outcome CSHFileOp::Run(Operation operation) {
  if (sources_.isEmpty()) {
    throw Error(error_number::kFileOperation, u"No source files specified file operation"_s);
  }
  const QStringList sources = std::exchange(sources_, {});
  if (sources.size() == 1) return RunOne(operation, sources[0], destination_, IncludeDirectories);
  for (const QString& source : sources) {
    const QString target = StripSlash(destination_) + u'/' + GetFileName(StripSlash(source));
    const Outcome done = RunOne(operation, source, target, IncludeDirectories);
    if (!done) return Failure{source + ": "_L1 + done.Reason()};
  }
  return {};
}

}  // namespace zqm
