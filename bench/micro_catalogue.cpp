// SPDX-License-Identifier: GPL-3.0-or-later
#include <SQLiteCpp/SQLiteCpp.h>
#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <random>

#include "catalogue/catalogue.h"
#include "catalogue/statements.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr Column kSearched[] = {Column::Tags,
                                Column::Notes,
                                Column::KeywordsIptc,
                                Column::OtherCategories,
                                Column::ImageDescription,
                                Column::Comments,
                                Column::Caption};

// Words of a pseudo-random vocabulary; about one row in a hundred holds "sunset".
QString Words(std::mt19937& random, unsigned count) {
  QString words;
  for (unsigned i = 0; i < count; ++i) {
    words += random() % 600 == 0 ? u"Sunset"_s : u"w%1ord"_s.arg(random() % 5000);
    words += u' ';
  }
  return words;
}

/// A full catalogue with texts in all seven searched columns, each thumbnail as big as they are.
struct FullCatalogue {
  FullCatalogue() {
    std::mt19937 random(1);
    if (!CreateCatalogueFile(file)) std::abort();
    OpenProblem problem{};
    catalogue = Catalogue::Open(file, problem);
    PhotoRecordset& photos = catalogue->Photos();
    const QByteArray thumbnail(8001, 't');
    for (int i = 0; i < RowIndex::kMostRows; ++i) {
      if (!photos.BeginNewRow()) std::abort();
      photos.SetField(Column::Photo, PathOf(i));
      for (const Column column : kSearched)
        photos.SetField(column, Words(random, 6));
      for (int c = static_cast<int>(Column::CameraMake); c < static_cast<int>(Column::Writer); ++c)
        if (static_cast<Column>(c) != Column::Comments)
          photos.SetField(static_cast<Column>(c), u"value %1"_s.arg(random() % 100));
      photos.WriteThumbnail(thumbnail);
      if (!photos.CommitRow()) std::abort();
    }
  }

  static QString PathOf(int i) {
    return u"/photos/2007/some folder/IMG_%1.jpg"_s.arg(i, 6, 10, QChar(u'0'));
  }

  QTemporaryDir folder;
  QString file = folder.filePath(u"full.mdb"_s);
  std::unique_ptr<Catalogue> catalogue;
};

FullCatalogue& Full() {
  static FullCatalogue full;
  return full;
}

QString Search(QStringView joiner) {
  QStringList clauses;
  for (const Column column : kSearched) {
    const QString name = u"["_s + ColumnName(column) + u"]"_s;
    clauses.append(u"("_s + name + u" LIKE \"%sunset%\""_s + joiner.toString() + name +
                   u" LIKE \"%w7%\")"_s);
  }
  return u"Select * from qryphoto WHERE ("_s + clauses.join(u" OR "_s) + u")"_s;
}

const char16_t* const kJoiners[] = {u" AND ", u" OR "};

void BM_Search(benchmark::State& state) {
  const QString statement = Search(kJoiners[state.range(0)]);
  const Catalogue& catalogue = *Full().catalogue;
  qsizetype hits = 0;
  for (auto _ : state)
    hits = catalogue.Query(statement, Column::Photo).size();
  state.counters["hits"] = static_cast<double>(hits);
}
BENCHMARK(BM_Search)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The same rows and the same statement under the engine's own LIKE.
void BM_SearchByTheEngineAlone(benchmark::State& state) {
  SQLite::Database database(Full().file.toStdString(), SQLite::OPEN_READWRITE);
  database.exec("PRAGMA cache_size = -65536");
  const auto sql = TranslateStatement(Search(kJoiners[state.range(0)]), Column::Photo);
  size_t hits = 0;
  for (auto _ : state) {
    QStringList paths;
    SQLite::Statement statement(database, *sql);
    while (statement.executeStep())
      paths.append(QString::fromUtf8(statement.getColumn(0).getText()));
    hits = static_cast<size_t>(paths.size());
  }
  state.counters["hits"] = static_cast<double>(hits);
}
BENCHMARK(BM_SearchByTheEngineAlone)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_LocateRow(benchmark::State& state) {
  PhotoRecordset& photos = Full().catalogue->Photos();
  int i = 0;
  for (auto _ : state) {
    i = (i + 7919) % RowIndex::kMostRows;
    benchmark::DoNotOptimize(photos.LocateRow(FullCatalogue::PathOf(i)));
  }
}
BENCHMARK(BM_LocateRow);

void BM_LocateRowAndReadAField(benchmark::State& state) {
  PhotoRecordset& photos = Full().catalogue->Photos();
  int i = 0;
  for (auto _ : state) {
    i = (i + 7919) % RowIndex::kMostRows;
    photos.LocateRow(FullCatalogue::PathOf(i));
    benchmark::DoNotOptimize(photos.GetField(Column::Flag));
  }
}
BENCHMARK(BM_LocateRowAndReadAField);

void BM_OpenFull(benchmark::State& state) {
  for (auto _ : state) {
    OpenProblem problem{};
    benchmark::DoNotOptimize(Catalogue::Open(Full().file, problem));
  }
}
BENCHMARK(BM_OpenFull)->Unit(benchmark::kMillisecond);

void BM_Translate(benchmark::State& state) {
  const QString statement = Search(u" AND ");
  for (auto _ : state)
    benchmark::DoNotOptimize(TranslateStatement(statement, Column::Photo));
}
BENCHMARK(BM_Translate)->Unit(benchmark::kMicrosecond);

void BM_MoveRowsWithIntents(benchmark::State& state) {
  Catalogue& catalogue = *Full().catalogue;
  PhotoRecordset& photos = catalogue.Photos();
  const auto move = [&](const QString& from, const QString& to) {
    const auto intent = catalogue.RecordIntent({u"move"_s, from, to});
    if (!intent || !photos.LocateRow(from)) std::abort();
    photos.SetField(Column::Photo, to);
    if (!catalogue.FinishIntent(*intent)) std::abort();
  };
  for (auto _ : state) {
    for (int i = 0; i < 5000; ++i)
      move(FullCatalogue::PathOf(i), FullCatalogue::PathOf(i) + u'x');
    for (int i = 0; i < 5000; ++i)
      move(FullCatalogue::PathOf(i) + u'x', FullCatalogue::PathOf(i));
  }
}
BENCHMARK(BM_MoveRowsWithIntents)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_FlagTenThousandRows(benchmark::State& state) {
  PhotoRecordset& photos = Full().catalogue->Photos();
  for (auto _ : state) {
    for (int i = 0; i < 10000; ++i) {
      if (!photos.MoveTo(i)) std::abort();
      photos.SetField(Column::Flag, u"Flagged"_s);
    }
    if (!photos.MoveFirst()) std::abort();
  }
}
BENCHMARK(BM_FlagTenThousandRows)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace zqm

BENCHMARK_MAIN();
