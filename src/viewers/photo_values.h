// SPDX-License-Identifier: GPL-3.0-or-later
// The user's values that viewers show and change: rating and flag.
#pragma once

#include <QString>

#include "catalogue/catalogue.h"
#include "cataloguing/user_fields.h"
#include "shell/result.h"

namespace zqm {

struct PhotoValues {
  bool catalogued = false;
  int rating = 0;  ///< 1 to 5; 0 without one
  QString flag;    ///< "Flagged", "Rejected", "Unflagged" or ""
};

/// What the photo's row has. The cursor stays where it is.
PhotoValues ValuesOf(const Catalogue& catalogue, const QString& path);

/// Writes one value to the photo's row, in a transaction of its own.
Outcome SetValue(Catalogue& catalogue, const QString& path, const KeywordValue& value);

/// "★★★☆☆"; "" for none.
QString RatingText(int rating);

/// "★★★☆☆  Flagged", or "Not catalogued"; "" for a row without either value.
QString ValuesText(const PhotoValues& values);

}  // namespace zqm
