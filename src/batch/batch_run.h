// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "shell/failure_list.h"
#include "shell/result.h"

namespace zqm {

/// What a run over files says.
struct BatchTexts {
  const char16_t* wait;      ///< in the title, with the percentage
  const char16_t* failures;  ///< heading of the failure list
  const char16_t* done;      ///< when nothing failed
};

/// `done` of `total` files are through, `path` is the next one; "" at the end.
struct BatchProgress {
  int done = 0;
  int total = 0;
  QString path;

  /// Whole percent of what is through.
  int Percent() const { return total > 0 ? static_cast<int>(qint64{100} * done / total) : 100; }
};
/// Called for each file and at the end; it gives windows time to paint and takes no input.
using BatchObserver = std::function<void(const BatchProgress&)>;

/// What an operation does with one file; why it could not, in one row of the failure list each.
using FileStep = std::function<QStringList(qsizetype index, const QString& path)>;

/// For steps that fail for one reason at most.
QStringList Reasons(const Outcome& outcome);

struct BatchResult {
  int done = 0;  ///< files without a failure
  FailureList failures;
};

/// Runs `step` over the files in order. What fails is listed and the run goes on; nothing ends it.
BatchResult BatchRun(const QStringList& paths, const BatchTexts& texts, const FileStep& step,
                     const BatchObserver& observer);

}  // namespace zqm
