// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/core_database.h"

#include <array>

#include "catalogue/database.h"

namespace zqm {
namespace {

constexpr std::array<SettingsField, 6> kSettingsFields{{
    {"StartupType", &Settings::StartupType},
    {"StartupFolder", &Settings::StartupFolder},
    {"RAWView", &Settings::RAWView},
    {"RAWBatch", &Settings::RAWBatch},
    {"RAWWhiteBalance", &Settings::RAWWhiteBalance},
    {"CMS", &Settings::CMS},
}};

}  // namespace

std::span<const SettingsField> SettingsFields() {
  return kSettingsFields;
}

CoreDatabase::CoreDatabase(std::unique_ptr<Database> database) : database_(std::move(database)) {}
CoreDatabase::~CoreDatabase() = default;

std::unique_ptr<CoreDatabase> CoreDatabase::Open(const QString& path, OpenProblem& problem,
                                                 CatalogueAccess access, QString* reason) {
  OpenFault fault;
  std::unique_ptr<CoreDatabase> core;
  if (auto database = Database::Open(path, Database::Kind::Core, access, fault)) {
    core.reset(new CoreDatabase(std::move(database)));
    // Both are small; a damaged page shows here and not in the middle of the work.
    fault = FaultOfReading([&] {
      (void)core->ReadSettings();
      (void)core->Editors();
    });
  }
  problem = fault.problem;
  if (reason) *reason = fault.reason;
  return problem == OpenProblem::None ? std::move(core) : nullptr;
}

bool CoreDatabase::ReadOnly() const {
  return database_->ReadOnly();
}

Settings CoreDatabase::ReadSettings() const {
  std::string sql = "SELECT ";
  for (const SettingsField& field : kSettingsFields)
    sql += std::string(&field == kSettingsFields.data() ? "" : ", ") + field.name;
  Settings settings;
  database_->Read(sql + " FROM qrysettings", {}, [&](const Row& row) {
    int column = 0;
    for (const SettingsField& field : kSettingsFields)
      settings.*field.member = row.Text(column++);
  });
  return settings;
}

Outcome CoreDatabase::WriteSettings(const Settings& settings) {
  std::string names, marks;
  std::vector<Value> values;
  for (const SettingsField& field : kSettingsFields) {
    names += std::string(", ") + field.name;
    marks += ", ?";
    values.emplace_back(settings.*field.member);
  }
  const auto written = database_->Write(
      "INSERT OR REPLACE INTO settings (ID" + names + ") VALUES (1" + marks + ")", values);
  if (!written) return Failure{written.Reason()};
  return {};
}

std::vector<ExternalEditor> CoreDatabase::Editors() const {
  std::vector<ExternalEditor> editors;
  database_->Read("SELECT EditorName, EditorPath FROM qryeditors", {}, [&](const Row& row) {
    editors.push_back({row.Text(0), row.Text(1)});
  });
  return editors;
}

Outcome CoreDatabase::WriteEditors(const std::vector<ExternalEditor>& editors) {
  if (const Outcome begun = database_->Begin(); !begun) return begun;
  Result<int> written = database_->Write("DELETE FROM editors");
  for (const ExternalEditor& editor : editors) {
    if (!written) break;
    const std::array<Value, 2> values{editor.EditorName, editor.EditorPath};
    written =
        database_->Write("INSERT INTO editors (EditorName, EditorPath) VALUES (?, ?)", values);
  }
  if (written) return database_->Commit();
  database_->Rollback();
  return Failure{written.Reason()};
}

Outcome CreateCoreFile(const QString& path) {
  return Database::Create(path, Database::Kind::Core);
}

}  // namespace zqm
