// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>

#include "catalogue/like_pattern.h"
#include "catalogue/row_index.h"
#include "shell/error.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// Against a plain list, through thousands of random changes.
TEST(RowIndex, KeepsPositionsLikeAPlainList) {
  std::mt19937 random(7);
  RowIndex index;
  std::vector<RowIndex::Entry> plain;
  qint64 nextId = 1;
  for (int step = 0; step < 3000; ++step) {
    const size_t at = plain.empty() ? 0 : random() % plain.size();
    const unsigned what = random() % 10;
    if (plain.empty() || what < 5) {
      plain.push_back({nextId++, u"/none/%1.jpg"_s.arg(step)});
      index.Append(plain.back().id, plain.back().path);
    } else if (what < 8) {
      index.Remove(plain[at].id);
      plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
    } else {
      plain[at].path = u"/none/changed %1.jpg"_s.arg(step);
      index.ChangePath(plain[at].id, plain[at].path);
    }
    ASSERT_EQ(index.Count(), static_cast<int>(plain.size()));
    if (plain.empty()) continue;
    const size_t probe = random() % plain.size();
    ASSERT_EQ(index.PositionOf(plain[probe].id), static_cast<int>(probe));
    ASSERT_EQ(index.At(static_cast<int>(probe)).id, plain[probe].id);
    ASSERT_EQ(index.Find(plain[probe].path.toUpper()), plain[probe].id);
  }
  QStringList paths;
  for (const auto& entry : plain)
    paths.append(entry.path);
  EXPECT_EQ(index.Paths(), paths);
}

TEST(RowIndex, LetterCaseFindsARowOnlyIfItsFileIsGoneOrTheSame) {
  QTemporaryDir folder;
  const QString stored = folder.filePath(u"Äpfel.jpg"_s), asked = folder.filePath(u"äPFEL.JPG"_s);
  RowIndex index;
  index.Append(5, stored);
  EXPECT_EQ(index.Find(asked), 5);  // the stored file is gone
  test::Touch(stored);
  EXPECT_EQ(index.Find(asked), std::nullopt);
  ASSERT_TRUE(QFile::link(stored, asked));
  EXPECT_EQ(index.Find(asked), 5);  // one file under two names
  QFile::remove(asked);
  test::Touch(asked, "another photo");
  EXPECT_EQ(index.Find(asked), std::nullopt);
  index.Append(6, asked);
  EXPECT_EQ(index.Find(asked), 6);
  EXPECT_EQ(index.Find(stored), 5);
}

TEST(RowIndex, OverflowsBehindTheLastPosition) {
  RowIndex index;
  for (int i = 0; i < RowIndex::kMostRows; ++i)
    index.Append(i + 1, QString::number(i));
  EXPECT_TRUE(index.Full());
  try {
    index.Append(40000, u"one more"_s);
    FAIL() << "accepted";
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), error_number::kOverflow);
  }
  EXPECT_THROW(index.At(RowIndex::kMostRows), Error);
}

}  // namespace
}  // namespace zqm
