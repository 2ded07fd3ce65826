// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_operation.h"

#include <QDir>
#include <QFileInfo>

#include "shell/error.h"
#include "shell/file_steps.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// The path, or the first of "name (2).ext", "name (3).ext" and so on that is free.
QString FreePath(const QString& path, bool folder) {
  const QDir parent(QFileInfo(path).path());
  const QStringList taken =
      parent.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  const QString extension = folder ? QString() : GetExtensionName(path);
  const qsizetype cut = extension.isEmpty() ? 0 : extension.size() + 1;
  QString free = path;
  for (int number = 2; taken.contains(GetFileName(free), Qt::CaseInsensitive); ++number)
    free = path.chopped(cut) + u" (%1)"_s.arg(number) + path.last(cut);
  return free;
}

}  // namespace

Outcome CSHFileOp::RunOne(Operation operation, const QString& source, const QString& target) const {
  if (operation == Operation::Delete) return steps::DeleteOne(source);
  const bool folder = FolderExists(source);
  const QString to = RenameOnCollision ? FreePath(StripSlash(target), folder) : target;
  if (operation == Operation::Move) return steps::MoveOne(source, to);
  return folder && IncludeDirectories ? steps::CopyTree(StripSlash(source), StripSlash(to))
                                      : steps::CopyOne(source, to);
}

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
  if (sources.size() == 1) return RunOne(operation, sources[0], destination_);
  for (const QString& source : sources) {
    const QString target = StripSlash(destination_) + u'/' + GetFileName(StripSlash(source));
    const Outcome done = RunOne(operation, source, target);
    if (!done) return Failure{source + ": "_L1 + done.Reason()};
  }
  return {};
}

}  // namespace zqm
