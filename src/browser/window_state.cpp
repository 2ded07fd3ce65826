// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/window_state.h"

#include <QByteArray>
#include <QFile>

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kRecordBytes = 3;
constexpr char kSingleRow[] = "TSi";
constexpr char kMultipleRows[] = "TMu";

QString ThumbnailsFile(const QString& folder) {
  return folder + u"/Thumbnails.dat"_s;
}
QString InterfaceFile(const QString& folder) {
  return folder + u"/MIS.dat"_s;
}

QByteArray ReadRecord(const QString& path) {
  QFile file(path);
  return file.open(QFile::ReadOnly) ? file.read(kRecordBytes) : QByteArray();
}

/// The digit at a place of the record, or 0 where there is none.
int Digit(const QByteArray& record, qsizetype at) {
  const char byte = at < record.size() ? record.at(at) : '\0';
  return byte >= '0' && byte <= '9' ? byte - '0' : 0;
}

}  // namespace

ThumbnailRows GetThumbnailViewSetting(const QString& folder) {
  const QByteArray record = ReadRecord(ThumbnailsFile(folder));
  if (record == kMultipleRows) return ThumbnailRows::Multiple;
  // Without the file the next start asks again; nothing is lost.
  if (record != kSingleRow) (void)SaveThumbnailViewSetting(folder, ThumbnailRows::Single);
  return ThumbnailRows::Single;
}

Outcome SaveThumbnailViewSetting(const QString& folder, ThumbnailRows rows) {
  return WriteFileAtomically(ThumbnailsFile(folder),
                             rows == ThumbnailRows::Single ? kSingleRow : kMultipleRows);
}

MainInterfaceState LoadMainInterfaceState(const QString& folder) {
  const QByteArray record = ReadRecord(InterfaceFile(folder));
  MainInterfaceState state;
  state.metadataShown = Digit(record, 0) != 2;
  if (const int page = Digit(record, 1); page >= 1 && page <= 6)
    state.page = static_cast<InfoPage>(page);
  state.advancedSearchShown = Digit(record, 2) == 1;
  return state;
}

Outcome SaveMainInterfaceState(const QString& folder, const MainInterfaceState& state) {
  QByteArray record;
  record += state.metadataShown ? '1' : '2';
  record += static_cast<char>('0' + static_cast<int>(state.page));
  record += state.advancedSearchShown ? '1' : '2';
  return WriteFileAtomically(InterfaceFile(folder), record);
}

}  // namespace zqm
