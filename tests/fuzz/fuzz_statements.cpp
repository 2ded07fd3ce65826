// SPDX-License-Identifier: GPL-3.0-or-later
#include <QTemporaryDir>
#include <cstdlib>

#include "catalogue/catalogue.h"
#include "catalogue/like_pattern.h"
#include "catalogue/statements.h"

namespace {

// What the translator lets through the engine must take: an error from here ends the run.
class Target {
 public:
  Target() {
    const QString file = folder_.filePath(QStringLiteral("fuzz.mdb"));
    zqm::OpenProblem problem{};
    if (!zqm::CreateCatalogueFile(file)) std::abort();
    catalogue_ = zqm::Catalogue::Open(file, problem);
    if (!catalogue_) std::abort();
  }
  void Run(const QString& statement) const {
    (void)catalogue_->Query(statement, zqm::Column::Photo);
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<zqm::Catalogue> catalogue_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  static const Target target;
  const QString text = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
  for (const QString& statement : {text, QStringLiteral("Select * from qryphoto WHERE ") + text}) {
    if (zqm::TranslateStatement(statement, zqm::Column::Photo)) target.Run(statement);
  }

  // Both ways to match must agree.
  const qsizetype split = text.indexOf(QChar(u'\n'));
  if (split < 0 || text.size() > 2000) return 0;
  const zqm::LikePattern pattern(QStringView(text).left(split));
  const QString subject = text.mid(split + 1);
  if (pattern.Matches(subject) != pattern.MatchesUtf8(subject.toStdString())) std::abort();
  return 0;
}
