// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <map>
#include <memory>

#include "catalogue/catalogue.h"

namespace zqm::test {

using Fields = std::map<Column, QString>;

/// A fresh catalogue in a folder of its own.
class CatalogueTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreateCatalogueFile(file));
    Reopen();
  }

  void Reopen(CatalogueAccess access = CatalogueAccess::ReadWrite) {
    catalogue.reset();
    OpenProblem problem{};
    catalogue = Catalogue::Open(file, problem, access);
    ASSERT_EQ(problem, OpenProblem::None);
  }

  QString PathOf(const QString& name) const { return folder.filePath(name); }

  Outcome Add(const QString& path, const Fields& fields = {}, const QByteArray& thumbnail = {}) {
    PhotoRecordset& photos = catalogue->Photos();
    if (const Outcome begun = photos.BeginNewRow(); !begun) return begun;
    photos.SetField(Column::Photo, path);
    for (const auto& [column, text] : fields)
      photos.SetField(column, text);
    if (!thumbnail.isEmpty()) photos.WriteThumbnail(thumbnail);
    return photos.CommitRow();
  }

  QString FieldOf(const QString& path, Column column) {
    return catalogue->Photos().LocateRow(path) ? catalogue->Photos().GetField(column)
                                               : QStringLiteral("(no row)");
  }

  QTemporaryDir folder;
  QString file = folder.filePath(QStringLiteral("Photos.mdb"));
  std::unique_ptr<Catalogue> catalogue;
};

inline void Touch(const QString& path, const QByteArray& content = "x") {
  QFile made(path);
  ASSERT_TRUE(made.open(QIODevice::WriteOnly));
  made.write(content);
}

}  // namespace zqm::test
