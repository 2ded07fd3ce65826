// SPDX-License-Identifier: GPL-3.0-or-later
// Photos whose file is another one under the same path: their rows follow.
#pragma once

#include <QString>

#include "catalogue/catalogue.h"
#include "imaging/photo_reader.h"
#include "shell/result.h"

namespace zqm {

/// Reads a photo anew into its row, thumbnail included; flag and the user's columns stay. Nothing
/// happens without a row. Reasons: the file can't be read, or the row can't be written.
Outcome FollowPicture(Catalogue& catalogue, const QString& path, const ReadRequest& read);

/// Does so for the photos that a killed run changed before it came to their rows. One whose file is
/// gone or can't be read any more keeps its row.
void FollowReplaced(Catalogue& catalogue, const ReadRequest& read);

/// Stands in the catalogue while the file of a row is changed in its place, so that the row follows
/// whatever happens between.
class ReplaceIntent {
 public:
  /// Before the file is touched. Nothing is recorded for a path without a row. Reasons: why the
  /// catalogue can't be written.
  static Result<ReplaceIntent> Record(Catalogue& catalogue, const QString& path);
  /// The row has followed. Left out after a row that couldn't be written, the next opening of the
  /// catalogue tries again.
  Outcome Finish() const { return id_ == 0 ? Outcome() : catalogue_->FinishIntent(id_); }
  /// The change failed: nothing is to follow, unless the file is another one after all.
  void Drop() const;

 private:
  ReplaceIntent(Catalogue& catalogue, qint64 id, const QString& path, const QString& stamp)
      : catalogue_(&catalogue), id_(id), path_(path), stamp_(stamp) {}

  Catalogue* catalogue_;
  qint64 id_;  // 0 for none
  QString path_, stamp_;
};

}  // namespace zqm
