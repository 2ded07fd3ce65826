// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace zqm {

/// What stands in folders, letter case aside. Each folder is listed once a run; what the run itself
/// makes must be told. What others do meanwhile is seen where the spelling is the same.
class ExistingNames {
 public:
  /// The path of what stands under that name or one that differs only in letter case; "" when
  /// nothing does.
  QString Find(const QString& path);
  /// The run has put something there.
  void Add(const QString& path);

 private:
  using Names = QHash<QString, QStringList>;  // by the folded name
  Names& NamesIn(const QString& folder);
  QHash<QString, Names> folders_;
};

}  // namespace zqm
