// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>
#include <span>
#include <vector>

#include "catalogue/open_problem.h"
#include "shell/result.h"

namespace zqm {

class Database;

/// The one row of `qrysettings`, fields named as its columns.
struct Settings {
  QString StartupType = QStringLiteral("Default");  ///< "Default", "LastOpened", "Custom"
  QString StartupFolder;
  QString RAWView = QStringLiteral("-e");          ///< "-e", "-h", "f"
  QString RAWBatch = QStringLiteral("f");          ///< "-e", "-h", "f"
  QString RAWWhiteBalance = QStringLiteral("-w");  ///< "-a", "-w"
  QString CMS = QStringLiteral("true");            ///< "true", "false"
  bool operator==(const Settings&) const = default;
};

struct SettingsField {
  const char* name;  ///< as the column is called
  QString Settings::*member;
};

/// All columns of the settings row.
std::span<const SettingsField> SettingsFields();

/// A row of `qryeditors`.
struct ExternalEditor {
  QString EditorName;
  QString EditorPath;
  bool operator==(const ExternalEditor&) const = default;
};

/// CORE.mdb: what all catalogues of a home share.
class CoreDatabase {
 public:
  /// Opens and checks, settings and editors included. `access` and `reason` as of a catalogue.
  static std::unique_ptr<CoreDatabase> Open(const QString& path, OpenProblem& problem,
                                            CatalogueAccess access = CatalogueAccess::ReadWrite,
                                            QString* reason = nullptr);
  ~CoreDatabase();

  bool ReadOnly() const;

  Settings ReadSettings() const;
  Outcome WriteSettings(const Settings& settings);
  std::vector<ExternalEditor> Editors() const;
  Outcome WriteEditors(const std::vector<ExternalEditor>& editors);

 private:
  explicit CoreDatabase(std::unique_ptr<Database> database);
  std::unique_ptr<Database> database_;
};

/// A core database with the default settings, as the master is made at build time.
Outcome CreateCoreFile(const QString& path);

}  // namespace zqm
