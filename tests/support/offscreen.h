// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

namespace zqm::test {

/// A screen of 1920 x 1080 that nobody sees; to be made before the application object.
class OffscreenScreen {
 public:
  OffscreenScreen() {
    QFile file(folder_.filePath(QStringLiteral("screen.json")));
    if (file.open(QFile::WriteOnly))
      file.write(R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false,
        "screens": [{"name": "test", "x": 0, "y": 0, "width": 1920, "height": 1080,
                     "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    file.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace zqm::test
