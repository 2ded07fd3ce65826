// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QString>

namespace zqm::test {

/// Another program that holds the catalogue for writing as long as it lives.
class CatalogueHolder {
 public:
  explicit CatalogueHolder(const QString& path) {
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &database_), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  ~CatalogueHolder() { sqlite3_close(database_); }
  CatalogueHolder(const CatalogueHolder&) = delete;
  CatalogueHolder& operator=(const CatalogueHolder&) = delete;

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace zqm::test
