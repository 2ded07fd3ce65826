// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "tests/support/scratch.h"

namespace zqm::test {

struct Ran {
  int exitCode = -1;
  QString out;
  QString err;
};

/// The real program in a process of its own, under a fixed locale.
inline void PrepareZqm(QProcess& process, const QStringList& arguments) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  process.setProcessEnvironment(environment);
  process.setProgram(QStringLiteral(ZQM_BINARY));
  process.setArguments(arguments);
}

inline Ran RunZqm(const QStringList& arguments) {
  QProcess process;
  PrepareZqm(process, arguments);
  process.start();
  if (!process.waitForFinished(60'000)) return {};
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
          QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

/// Runs `zqm` over a home of its own.
class HomeProcessTest : public ::testing::Test {
 protected:
  Ran Run(const QStringList& arguments) {
    return RunZqm(QStringList{QStringLiteral("--home"), scratch_.Path("home")} + arguments);
  }
  Scratch scratch_;
};

}  // namespace zqm::test
