// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "catalogue/catalogue.h"
#include "catalogue/core_database.h"
#include "imaging/photo_reader.h"
#include "imaging/picture.h"
#include "session/home_lock.h"
#include "shell/result.h"
#include "shell/session_folders.h"

namespace zqm {

/// One run of the program: its folders, its settings, its one active catalogue. Passed to whoever
/// needs it; there is no other.
class Session {
 public:
  explicit Session(SessionFolders folders);
  ~Session();

  const SessionFolders& Folders() const { return folders_; }

  /// Makes sure that the working and scratch folders stand: all of them on the first run, what is
  /// missing later. A missing catalogue is not restored: that the user removed it is a valid state.
  Outcome PrepareFolders() const;

  /// The catalogues of the working folder, by name with their extension.
  QStringList CatalogueNames() const;

  /// Opens settings, categories, editors and photos, telling `status` each step's text before it
  /// begins, and warns of a catalogue over 1.5 GB. Without the home's lock it is open for reading
  /// only. Reasons are whole messages to the user.
  Outcome Activate(const QString& name,
                   const std::function<void(const QString& status)>& status = {});

  /// Opens the settings alone, for work that needs no catalogue. Reasons as above.
  Outcome OpenSettings();

  /// Takes the right to write in this home for the rest of the run. Reasons are those of
  /// `HomeLock`.
  Outcome LockHome();

  /// The active catalogue; `Activate` must have succeeded.
  Catalogue& ActiveCatalogue() { return *catalogue_; }
  bool HasActiveCatalogue() const { return catalogue_ != nullptr; }
  /// Nothing that belongs to the active catalogue may be used afterwards.
  void CloseCatalogue() { catalogue_.reset(); }
  CoreDatabase& Core() { return *core_; }
  const Settings& CurrentSettings() const { return settings_; }
  /// Writes the settings; on failure the current ones stay.
  Outcome ChangeSettings(const Settings& settings);

  /// How files are read for viewing and cataloguing under the current settings.
  ReadRequest ReadSettings() const;
  /// How whole pictures are loaded for work on them, and for `RAWFormatSettings`.
  PictureSettings WorkSettings() const;
  PictureSettings FormatSettings() const;

 private:
  CatalogueAccess Access() const;
  Outcome FirstRun() const;
  Outcome Repair() const;

  SessionFolders folders_;
  std::optional<HomeLock> lock_;
  std::unique_ptr<CoreDatabase> core_;
  std::unique_ptr<Catalogue> catalogue_;
  Settings settings_;
};

/// The words for the RAW decoder: `quality` "-e", "-h" or "f" (which gives none), `whiteBalance`
/// "-a" or "-w", joined by a blank.
QString RAWSettings(const QString& quality, const QString& whiteBalance);

/// The words for conversions into other formats, which have a quality of their own.
QString RAWFormatSettings(const Settings& settings);

/// Whether a catalogue file of this many bytes calls for a new one.
bool CatalogueTooLarge(qint64 bytes);

namespace session_text {
inline constexpr char16_t kNoCatalogue[] = u"Cannot locate any Zolmira QM compatible database in\n";
inline constexpr char16_t kSelectCatalogue[] = u"Select the database to be loaded.";
inline constexpr char16_t kDamaged[] =
    u"Zolmira QM was unable to load the database because it is corrupted or damaged.\n"
    u"Please run the 'Database Maintenance.exe' application found in Zolmira QM folder to repair "
    u"your database.\n"
    u"For more details please refer to the 'Getting Started with Zolmira QM' document.";
inline constexpr char16_t kLocked[] =
    u"The database is in use by another program. Close that program and try again.";
inline constexpr char16_t kTooLarge[] =
    u"The size of the current photo database is greater than 1.5GB.\n"
    u"It is recommended that you stop adding photos to this database and switch to a new one.";
}  // namespace session_text

}  // namespace zqm
