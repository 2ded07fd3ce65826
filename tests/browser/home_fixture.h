// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "cataloguing/folder_import.h"
#include "session/session.h"
#include "shell/messages.h"
#include "tests/support/eventually.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

namespace zqm::test {

/// A home of its own with an active, empty catalogue, and a folder for photos. Messages are kept
/// instead of shown.
class HomeTest : public ::testing::Test {
 protected:
  HomeTest() {
    SessionFolders folders;
    folders.DocumentsPath = scratch_.Path("Documents");
    folders.AppDataPath = scratch_.Path("AppData");
    folders.CommonAppDataPath = scratch_.Path("installed");
    const QString masters = folders.MasterFolder();
    QDir().mkpath(masters);
    EXPECT_TRUE(CreateCatalogueFile(masters + QStringLiteral("/Zolmira QM.mdb")));
    EXPECT_TRUE(CreateCoreFile(masters + QStringLiteral("/CORE.mdb")));
    QDir().mkpath(scratch_.Path("photos"));
    QDir().mkpath(masters + QStringLiteral("/printing_templates"));
    QDir().mkpath(masters + QStringLiteral("/watermark_templates"));
    session_ = std::make_unique<Session>(folders);
    EXPECT_TRUE(session_->PrepareFolders());
    EXPECT_TRUE(session_->LockHome());
    EXPECT_TRUE(session_->Activate(QStringLiteral("Zolmira QM.mdb")));
    before_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons buttons) {
      messages_.append(text);
      return buttons == Buttons::Ok ? Answer::Ok : answer_;
    });
  }
  ~HomeTest() override { SetMessageHandler(before_); }

  QString PhotoPath(const QString& name) const {
    return scratch_.Path(QStringLiteral("photos/") + name);
  }
  QString AddPhoto(const QString& name, Properties exif = {}) {
    return scratch_.Write(QStringLiteral("photos/") + name, SampleJpeg(320, 200, exif));
  }
  PhotoRecordset& Photos() { return session_->ActiveCatalogue().Photos(); }
  void CatalogueThem(const QStringList& paths) {
    const ImportResult result =
        CatalogueFiles(paths, {}, ReadRequest(), session_->ActiveCatalogue(), nullptr, {});
    EXPECT_EQ(result.added, paths.size());
  }
  QString Stored(const QString& path, Column column) {
    return Photos().LocateRow(path) ? Photos().GetField(column) : QStringLiteral("(no row)");
  }

  Scratch scratch_;
  std::unique_ptr<Session> session_;
  QStringList messages_;
  Answer answer_ = Answer::No;

 private:
  MessageHandler before_;
};

}  // namespace zqm::test
