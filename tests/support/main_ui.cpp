// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

#include "../support/offscreen.h"
#include "shell/ui/look.h"

int main(int argc, char** argv) {
  const zqm::test::OffscreenScreen screen;
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  zqm::look::Apply(application);
  return RUN_ALL_TESTS();
}
