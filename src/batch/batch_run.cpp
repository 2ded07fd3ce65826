// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/batch_run.h"

namespace zqm {

QStringList Reasons(const Outcome& outcome) {
  return outcome ? QStringList() : QStringList{outcome.Reason()};
}

BatchResult BatchRun(const QStringList& paths, const BatchTexts& texts, const FileStep& step,
                     const BatchObserver& observer) {
  BatchResult result{0, {QString::fromUtf16(texts.failures), {}}};
  BatchProgress at{0, static_cast<int>(paths.size()), QString()};
  const auto tell = [&] {
    if (observer) observer(at);
  };
  for (const QString& path : paths) {
    at.path = path;
    tell();
    const QStringList reasons = step(at.done, path);
    for (const QString& reason : reasons)
      result.failures.Add(path, reason);
    if (reasons.isEmpty()) ++result.done;
    ++at.done;
  }
  at.path.clear();
  tell();
  return result;
}

}  // namespace zqm
