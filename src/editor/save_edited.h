// SPDX-License-Identifier: GPL-3.0-or-later
// The way of an edited picture back into its file or into another one, and what follows: the row,
// the browser.
#pragma once

#include <QString>

#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "imaging/photo_reader.h"
#include "imaging/picture.h"
#include "shell/result.h"

namespace zqm {

/// The file that is open in the editor.
struct EditedFile {
  QString path;
  QString stamp;           ///< the file as it was when it was last read or written here
  bool rewritten = false;  ///< with other pixels than it was loaded with

  /// To be taken before the file is loaded: what changes it meanwhile is noticed.
  static EditedFile Of(const QString& path);
};

/// Whether a photo can be opened in the editor, or what the user is told.
Outcome MayBeEdited(const QString& path);

/// Who follows a save.
struct SaveFollowers {
  Catalogue& catalogue;
  BrowserView* view;  ///< may be null
  ReadRequest read;   ///< for rows
};

/// What came of a save.
struct SaveResult {
  Outcome saved;     ///< the file; after a failure nothing has changed anywhere
  Outcome followed;  ///< the row; after a failure the catalogue's next opening tries again

  explicit operator bool() const { return saved && followed; }
  /// Both in words for the user.
  QString Reason() const;
};

/// Writes the picture over its file at the best quality, and reads row and thumbnail anew. A file
/// that has gone is made anew. Reasons: those of `Picture::SaveToFile`, "File was changed by
/// another program", or why the catalogue can't be written. `picture` itself stays as it is.
SaveResult SaveEdited(const SaveFollowers& followers, const Picture& picture, EditedFile& file);

/// Where a picture will be saved under a name that the user gave.
struct SaveTarget {
  QString path;         ///< of what stands there, letter case aside
  bool exists = false;  ///< it would be replaced: the user has to agree
};
SaveTarget FindSaveTarget(const QString& typed);
/// "PATH already exists.", and whether to replace it.
QString ReplaceQuestion(const QString& path);

/// Writes the picture, as it is edited, to the target. The row that a replaced file had goes when
/// the save has succeeded. `open` is the file in the editor, which may be the target. Reasons as
/// above, and those of a format that can't be written.
SaveResult SaveEditedAs(const SaveFollowers& followers, const Picture& picture,
                        const SaveTarget& target, EditedFile& open);

/// Whether a picture saved under this path loses its transparent parts.
bool NonAlphaExtension(const QString& path);

}  // namespace zqm
