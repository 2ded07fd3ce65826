// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the master databases and template folders at build time: zqm_masters FOLDER.
#include <QDir>
#include <cstdio>

#include "catalogue/catalogue.h"
#include "catalogue/core_database.h"
#include "printing/standard_templates.h"

using namespace Qt::StringLiterals;

namespace {

bool Make(const QString& path, zqm::Outcome (*create)(const QString&)) {
  QFile::remove(path);
  const zqm::Outcome made = create(path);
  if (!made) std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(made.Reason()));
  return static_cast<bool>(made);
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
  const QString folder = QFile::decodeName(argv[1]);
  const bool made = QDir().mkpath(folder + u"/printing_templates"_s) &&
                    QDir().mkpath(folder + u"/watermark_templates"_s) &&
                    Make(folder + u"/Zolmira QM.mdb"_s, zqm::CreateCatalogueFile) &&
                    MakePrintTemplates(folder + u"/printing_templates"_s) &&
                    Make(folder + u"/CORE.mdb"_s, zqm::CreateCoreFile);
  return made ? 0 : 1;
}
