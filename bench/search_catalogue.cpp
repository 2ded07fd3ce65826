// SPDX-License-Identifier: GPL-3.0-or-later
// Searches of a full catalogue beside the engine's own LIKE over the same rows, as milliseconds and
// ratios: `search_catalogue FOLDER`. The rows are made from the metadata of the folder's photos,
// the user's texts from a vocabulary.
#include <SQLiteCpp/SQLiteCpp.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "catalogue/statements.h"
#include "cataloguing/catalogue_photo.h"
#include "cataloguing/decode_ahead.h"
#include "cataloguing/folder_import.h"
#include "cataloguing/virtual_exif.h"
#include "search/filter_lists.h"
#include "search/query_builder.h"
#include "shell/locale_info.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

constexpr int kRuns = 11;

double Milliseconds(const std::function<void()>& run) {
  QElapsedTimer clock;
  clock.start();
  run();
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

/// The shortest of several runs, in milliseconds.
double Best(const std::function<void()>& run) {
  double best = 1e9;
  for (int i = 0; i < kRuns; ++i)
    best = std::min(best, Milliseconds(run));
  return best;
}

/// The same for two, run in turns, so that a busy moment of the machine falls on both.
std::pair<double, double> BestOfBoth(const std::function<void()>& first,
                                     const std::function<void()>& second) {
  std::pair<double, double> best(1e9, 1e9);
  for (int i = 0; i < kRuns; ++i) {
    best.first = std::min(best.first, Milliseconds(first));
    best.second = std::min(best.second, Milliseconds(second));
  }
  return best;
}

std::vector<MetadataRecord> RecordsOf(const QString& folder) {
  FailureList unread;
  const QStringList paths = ScanFolder(folder, true, unread);
  DecodeAhead ahead(paths, ReadRequest(), [](const QString&) { return true; });
  std::vector<MetadataRecord> records;
  for (qsizetype i = 0; i < paths.size(); ++i)
    if (const auto photo = ahead.Take(i, [] {}))
      records.push_back(ReadMetadataRecord(*photo, paths.at(i)));
  return records;
}

/// About one text in a hundred holds "sunset".
QString Words(std::mt19937& random) {
  QString words;
  for (int i = 0; i < 6; ++i)
    words += random() % 600 == 0 ? u"Sunset "_s : u"w%1ord "_s.arg(random() % 5000);
  return words;
}

void Fill(Catalogue& catalogue, const std::vector<MetadataRecord>& records) {
  std::mt19937 random(1);
  PhotoRecordset& photos = catalogue.Photos();
  const QByteArray thumbnail(8001, 't');
  for (int i = 0; i < RowIndex::kMostRows; ++i) {
    if (!photos.BeginNewRow()) std::abort();
    UpdatefromForm3(records[static_cast<std::size_t>(i) % records.size()], thumbnail, photos);
    photos.SetField(Column::Photo, u"/photos/%1/IMG_%2.jpg"_s.arg(i % 97).arg(i));
    for (const Column column : {Column::Notes, Column::Tags, Column::Comments, Column::Caption,
                                Column::ImageDescription, Column::KeywordsIptc})
      photos.SetField(column, Words(random));
    photos.SetField(Column::Rating, QString::number(1 + random() % 5));
    photos.SetField(Column::Date, QDate(2000, 1, 1).addDays(random() % 9000).toString(Qt::ISODate));
    if (!photos.CommitRow()) std::abort();
  }
}

void CompareSearches(const Catalogue& catalogue) {
  SQLite::Database engine(catalogue.Path().toStdString(), SQLite::OPEN_READONLY);
  engine.exec("PRAGMA cache_size = -65536");
  SearchCriteria filter;
  filter.advancedSearch = true;
  filter.advancedClause = FilterClause(Column::CameraMake, {u"Canon"_s, u"SONY"_s});
  SearchCriteria dates;
  dates.dateFrom = u"1/1/2007"_s;
  dates.dateTo = u"12/31/2007"_s;
  const std::pair<const char*, SearchCriteria> searches[] = {
      {"two words in seven columns, all of them", {u"sunset, w7"_s}},
      {"two words in seven columns, any of them", {u"sunset, w7"_s, WordMode::AnyOfTheseWords}},
      {"one filter, two values", filter},
      {"a range of dates", dates},
  };
  for (const auto& [name, criteria] : searches) {
    const QString statement = BuildSQL(criteria)->Text();
    const auto sql = TranslateStatement(statement, Column::Photo);
    qsizetype hits = 0;
    const auto search = [&] { hits = catalogue.Query(statement, Column::Photo).size(); };
    const auto engineSearch = [&] {
      QStringList paths;
      SQLite::Statement query(engine, *sql);
      while (query.executeStep())
        paths.append(QString::fromUtf8(query.getColumn(0).getText()));
    };
    // The engine alone lacks our collation, so only patterns can be put to it.
    const bool patterns = sql->find("COLLATE") == std::string::npos;
    const auto [ours, theirs] =
        patterns ? BestOfBoth(search, engineSearch) : std::pair(Best(search), 0.0);
    std::printf("%-44s %8.1f ms, %lld hits (bar: under 80 ms)\n", name, ours,
                static_cast<long long>(hits));
    if (patterns)
      std::printf(
          "%s / the engine's own LIKE  %.1f ms against %.1f ms, ratio %.2f (bar: at most 1.5)\n",
          name, ours, theirs, ours / theirs);
  }
}

void MeasureValues(const Catalogue& catalogue) {
  double slowest = 0;
  Column which{};
  for (const ColumnInfo& info : Columns()) {
    if (!HasValueList(info.column)) continue;
    const double took = Best([&] { Populate(catalogue, info.column); });
    if (took > slowest) which = info.column;
    slowest = std::max(slowest, took);
  }
  std::printf("%-44s %8.1f ms (%s)\n", "values of the slowest column", slowest,
              qUtf8Printable(ColumnName(which)));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  UseSystemLocale();
  const auto records = RecordsOf(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
  if (records.empty()) {
    std::fputs("no photos in the folder\n", stderr);
    return 2;
  }
  const QTemporaryDir scratch;
  const QString file = scratch.filePath(u"full.mdb"_s);
  if (!CreateCatalogueFile(file)) return 1;
  OpenProblem problem{};
  auto catalogue = Catalogue::Open(file, problem);
  Fill(*catalogue, records);
  std::printf("%d rows from the metadata of %zu photos, best of %d\n", catalogue->Photos().Count(),
              records.size(), kRuns);
  CompareSearches(*catalogue);
  MeasureValues(*catalogue);
  catalogue.reset();
  std::printf("%-44s %8.1f ms\n", "opening with the row index",
              Best([&] { catalogue = Catalogue::Open(file, problem); }));
  return 0;
}
