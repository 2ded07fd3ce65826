// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/batch_run.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

namespace zqm::test {

/// What a run told whoever shows thumbnails: "- path", "path > path", "! path", "live".
class ToldView : public BrowserView {
 public:
  QStringList told;

  void MarkUncatalogued(const QString& path) override { told.append(QStringLiteral("! ") + path); }
  void RemovePhoto(const QString& path) override { told.append(QStringLiteral("- ") + path); }
  void RenamePhoto(const QString& path, const QString& newPath) override {
    told.append(path + QStringLiteral(" > ") + newPath);
  }
  void Live() override { told.append(QStringLiteral("live")); }
};

/// A home with photos that have rows, and two folders to carry them between.
class BatchTest : public HomeTest {
 protected:
  BatchTest() {
    QDir().mkpath(In("a"));
    QDir().mkpath(In("b"));
  }
  QString In(const char* name) const { return scratch_.Path(name); }
  QString Write(const char* name, const QByteArray& bytes = "not a picture") {
    return scratch_.Write(name, bytes);
  }
  /// A catalogued photo.
  QString Photo(const char* name) {
    const QString path = scratch_.Write(name, SampleJpeg(32, 24));
    CatalogueThem({path});
    return path;
  }
  void Note(const QString& path, const QString& notes) {
    ASSERT_TRUE(Photos().LocateRow(path));
    Photos().SetField(Column::Notes, notes);
    ASSERT_TRUE(Photos().MoveFirst());
  }
  Catalogue& TheCatalogue() { return session_->ActiveCatalogue(); }
  static QStringList ReasonsOf(const BatchResult& result) {
    QStringList reasons;
    for (const FailureRow& row : result.failures.rows)
      reasons.append(row.Reason);
    return reasons;
  }
  QStringList Names(const char* folder) const {
    return QDir(In(folder)).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
  }

  ToldView view_;
};

}  // namespace zqm::test
