// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/session.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QLatin1StringView kCoreName("CORE.mdb");
constexpr QLatin1StringView kCatalogueName("Zolmira QM.mdb");
constexpr QLatin1StringView kTemplateFolders[] = {QLatin1StringView("printing_templates"),
                                                  QLatin1StringView("watermark_templates")};

Outcome MakePath(const QString& path) {
  if (QDir().mkpath(path)) return {};
  return Failure{u"Cannot create the folder %1"_s.arg(path)};
}

Outcome CopyTemplates(const QString& masters, const QString& into, QLatin1StringView folder) {
  return CopyFolder(masters + u'/' + folder, into + u'/' + folder);
}

Outcome CopyDatabase(const QString& masters, const QString& into, QLatin1StringView name) {
  return CopyFile(masters + u'/' + name, into + u'/' + name);
}

QString ProblemText(OpenProblem problem, const QString& path) {
  switch (problem) {
    case OpenProblem::Missing:
      return QString::fromUtf16(session_text::kNoCatalogue) + GetParentFolderName(path);
    case OpenProblem::Locked:
      return QString::fromUtf16(session_text::kLocked);
    case OpenProblem::Damaged:
    case OpenProblem::None:
      break;
  }
  return QString::fromUtf16(session_text::kDamaged);
}

}  // namespace

Session::Session(SessionFolders folders) : folders_(std::move(folders)) {}
Session::~Session() = default;

Outcome Session::PrepareFolders() const {
  const bool firstRun = !FolderExists(GetParentFolderName(folders_.WorkingFolder()));
  if (Outcome done = firstRun ? FirstRun() : Repair(); !done) return done;
  return MakePath(folders_.ScratchFolder());
}

// Built under another name first: a copy that breaks off half way would look like a catalogue that
// the user removed, and would never be mended.
Outcome Session::FirstRun() const {
  const QString makerFolder = GetParentFolderName(folders_.WorkingFolder());
  if (Outcome made = MakePath(folders_.DocumentsPath); !made) return made;
  QTemporaryDir building(folders_.DocumentsPath + u"/.zolmira-XXXXXX"_s);
  if (!building.isValid()) return Failure{u"Cannot create the folder %1"_s.arg(makerFolder)};
  const QString masters = folders_.MasterFolder();
  const QString working = building.filePath(GetFileName(folders_.WorkingFolder()));
  if (Outcome made = CreateFolder(working); !made) return made;
  for (const QLatin1StringView folder : kTemplateFolders)
    if (Outcome copied = CopyTemplates(masters, working, folder); !copied) return copied;
  for (const QLatin1StringView name : {kCatalogueName, kCoreName})
    if (Outcome copied = CopyDatabase(masters, working, name); !copied) return copied;
  QFile::setPermissions(building.path(), QFile::permissions(folders_.DocumentsPath));
  if (!QDir().rename(building.path(), makerFolder))
    return Failure{u"Cannot create the folder %1"_s.arg(makerFolder)};
  building.setAutoRemove(false);
  return {};
}

Outcome Session::Repair() const {
  const QString masters = folders_.MasterFolder();
  const QString working = folders_.WorkingFolder();
  if (Outcome made = MakePath(working); !made) return made;
  for (const QLatin1StringView folder : kTemplateFolders)
    if (!FolderExists(working + u'/' + folder))
      if (Outcome copied = CopyTemplates(masters, working, folder); !copied) return copied;
  if (FileExists(working + u'/' + kCoreName)) return {};
  return CopyDatabase(masters, working, kCoreName);
}

QStringList Session::CatalogueNames() const {
  return ListCatalogues(folders_.WorkingFolder());
}

Outcome Session::LockHome() {
  if (lock_) return {};
  HomeLock lock(GetParentFolderName(folders_.ScratchFolder()));
  if (Outcome taken = lock.Take(); !taken) return taken;
  lock_ = std::move(lock);
  return {};
}

Outcome Session::Activate(const QString& name,
                          const std::function<void(const QString& status)>& status) {
  const auto tell = [&status](const QString& text) {
    if (status) status(text);
  };
  const QString path = folders_.WorkingFolder() + u'/' + name;
  const QString corePath = folders_.WorkingFolder() + u'/' + kCoreName;
  OpenProblem problem = OpenProblem::None;

  tell(u"Loading Settings..."_s);
  core_ = CoreDatabase::Open(corePath, problem);
  if (!core_) return Failure{ProblemText(problem, corePath)};
  settings_ = core_->ReadSettings();
  tell(u"Loading Categories..."_s);
  std::unique_ptr<Catalogue> opened = Catalogue::Open(path, problem);
  if (!opened) return Failure{ProblemText(problem, path)};
  tell(u"Initializing Photo Editors..."_s);
  tell(u"Initializing Search Engine..."_s);
  catalogue_ = std::move(opened);
  if (CatalogueTooLarge(QFileInfo(path).size()))
    MsgBox(QString::fromUtf16(session_text::kTooLarge), MessageKind::Warning);
  return {};
}

ReadRequest Session::ReadSettings() const {
  ReadRequest request;
  request.colourManagement = settings_.CMS == u"true";
  request.raw = ParseRawOptions(RAWSettings(settings_.RAWView, settings_.RAWWhiteBalance));
  return request;
}

QString RAWSettings(const QString& quality, const QString& whiteBalance) {
  QStringList words;
  if (quality == u"-e" || quality == u"-h") words.append(quality);
  if (whiteBalance == u"-a" || whiteBalance == u"-w") words.append(whiteBalance);
  return words.join(u' ');
}

bool CatalogueTooLarge(qint64 bytes) {
  return static_cast<double>(bytes) / 1024 > 1'500'000;
}

}  // namespace zqm
