// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the master databases and template folders at build time: zqm_masters FOLDER.
#include <QDir>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>

#include "app/masters/watermark_masters.h"
#include "catalogue/catalogue.h"
#include "catalogue/core_database.h"
#include "imaging/template_files.h"
#include "printing/standard_templates.h"

using namespace Qt::StringLiterals;

namespace {

bool Tell(const QString& path, const zqm::Outcome& made) {
  if (!made) std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(made.Reason()));
  return static_cast<bool>(made);
}

bool Make(const QString& path, zqm::Outcome (*create)(const QString&)) {
  QFile::remove(path);
  return Tell(path, create(path));
}

bool MakeWatermarks(const QString& folder) {
  return std::ranges::all_of(zqm::WatermarkMasters(), [&](const zqm::MasterTemplate& each) {
    const QString path = zqm::TemplatePath(folder, each.name);
    return Tell(path, zqm::SaveTemplate(path, each.objects, zqm::kMasterSurface));
  });
}

bool MakePrintTemplates(const QString& folder) {
  for (const zqm::StandardTemplate& standard : zqm::StandardTemplates()) {
    const zqm::Outcome made = zqm::SaveTemplate(folder, standard.name, standard.layout);
    if (made) continue;
    std::fprintf(stderr, "%s: %s\n", qPrintable(standard.name), qPrintable(made.Reason()));
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: zqm_masters FOLDER\n");
    return 2;
  }
  // Texts are measured, without a display.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QString folder = QFile::decodeName(argv[1]);
  const bool made = QDir().mkpath(folder + u"/printing_templates"_s) &&
                    QDir().mkpath(folder + u"/watermark_templates"_s) &&
                    MakeWatermarks(folder + u"/watermark_templates"_s) &&
                    Make(folder + u"/Zolmira QM.mdb"_s, zqm::CreateCatalogueFile) &&
                    MakePrintTemplates(folder + u"/printing_templates"_s) &&
                    Make(folder + u"/CORE.mdb"_s, zqm::CreateCoreFile);
  return made ? 0 : 1;
}
