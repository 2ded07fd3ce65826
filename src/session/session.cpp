// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/session.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>
#include <functional>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QLatin1StringView kCoreName("CORE.mdb");
constexpr QLatin1StringView kCatalogueName("Zolmira QM.mdb");
constexpr QLatin1StringView kTemplateFolders[] = {QLatin1StringView("printing_templates"),
                                                  QLatin1StringView("watermark_templates")};

// Nobody gives a folder this name by hand.
constexpr QLatin1StringView kBuildingPrefix(".zolmira-qm-building-c1a6e0d2-");

Outcome MakePath(const QString& path) {
  if (QDir().mkpath(path)) return {};
  return Failure{u"Cannot create the folder %1"_s.arg(path)};
}

Outcome Named(const QString& path, Outcome outcome) {
  if (outcome) return outcome;
  return Failure{path + u": "_s + outcome.Reason()};
}

/// Makes a folder under another name first and renames it when `fill` is through: a copy that
/// breaks off half way would look like something that the user changed, and would never be mended.
Outcome BuildFolder(const QString& target, const std::function<Outcome(const QString&)>& fill) {
  const QString parent = GetParentFolderName(target);
  QTemporaryDir building(parent + u'/' + kBuildingPrefix + u"XXXXXX"_s);
  if (!building.isValid()) return Failure{u"Cannot create the folder %1"_s.arg(target)};
  if (Outcome filled = fill(building.path()); !filled) return filled;
  QFile::setPermissions(building.path(), QFile::permissions(parent));
  if (!QDir().rename(building.path(), target))
    return Failure{u"Cannot create the folder %1"_s.arg(target)};
  building.setAutoRemove(false);
  SyncFolder(parent);
  return {};
}

/// What a killed start left under a name that only `BuildFolder` gives; those of a start that may
/// be under way are young.
void RemoveLeftovers(const QString& parent) {
  const QDateTime old = QDateTime::currentDateTime().addSecs(-600);
  const QDir folder(parent);
  for (const QFileInfo& entry : folder.entryInfoList({kBuildingPrefix + u"??????"_s},
                                                     QDir::Dirs | QDir::Hidden | QDir::NoSymLinks))
    if (entry.lastModified() < old) QDir(entry.filePath()).removeRecursively();
}

// Installed masters may be read-only; the user's copies are the user's.
void MakeWritable(const QString& path) {
  QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOwner | QFile::WriteOwner);
}

/// A missing master is a broken installation, and nothing that the user could mend here.
void RequireMaster(bool stands, const QString& path) {
  if (!stands)
    throw Error(error_number::kUnexpected, u"The installed master is missing: "_s + path);
}

Outcome CopyTemplates(const QString& masters, const QString& into, QLatin1StringView folder) {
  const QString master = masters + u'/' + folder;
  RequireMaster(FolderExists(master), master);
  return BuildFolder(into + u'/' + folder, [&](const QString& building) {
    const QDir::Filters files = QDir::Files | QDir::Hidden;
    // One by one, since an installation may be made of links: the user gets what they lead to.
    for (QDirIterator at(master, files, QDirIterator::Subdirectories); at.hasNext();) {
      const QString copy = building + at.next().mid(master.size());
      if (Outcome made = MakePath(GetParentFolderName(copy)); !made) return made;
      if (Outcome copied = CopyFile(at.filePath(), copy); !copied)
        return Named(into + u'/' + folder, std::move(copied));
      MakeWritable(copy);
    }
    return Outcome();
  });
}

Outcome CopyDatabase(const QString& masters, const QString& into, QLatin1StringView name) {
  const QString master = masters + u'/' + name;
  const QString copy = into + u'/' + name;
  RequireMaster(FileExists(master), master);
  // Side files that a kill left belong to the database that is gone, and would be read into this
  // one.
  for (const QLatin1StringView side : {"-wal"_L1, "-shm"_L1, "-journal"_L1})
    QFile::remove(copy + side);
  if (Outcome copied = CopyFile(master, copy); !copied) return Named(copy, std::move(copied));
  MakeWritable(copy);
  return {};
}

QString ProblemText(OpenProblem problem, const QString& path, const QString& reason) {
  switch (problem) {
    case OpenProblem::Missing:
      return QString::fromUtf16(session_text::kNoCatalogue) + GetParentFolderName(path);
    case OpenProblem::Locked:
      return QString::fromUtf16(session_text::kLocked);
    case OpenProblem::Unreadable:
      return path + u": "_s + reason;
    case OpenProblem::Damaged:
    case OpenProblem::None:
      break;
  }
  return QString::fromUtf16(session_text::kDamaged);
}

/// Opens a catalogue or the core database, or says why not in words for the user.
template <class File>
Result<std::unique_ptr<File>> OpenFile(const QString& path, CatalogueAccess access) {
  OpenProblem problem = OpenProblem::None;
  QString reason;
  std::unique_ptr<File> file = File::Open(path, problem, access, &reason);
  if (!file) return Failure{ProblemText(problem, path, reason)};
  return file;
}

}  // namespace

Session::Session(SessionFolders folders) : folders_(std::move(folders)) {}
Session::~Session() = default;

Outcome Session::PrepareFolders() const {
  const bool firstRun = !FolderExists(GetParentFolderName(folders_.WorkingFolder()));
  if (Outcome done = firstRun ? FirstRun() : Repair(); !done) return done;
  return MakePath(folders_.ScratchFolder());
}

Outcome Session::FirstRun() const {
  if (Outcome made = MakePath(folders_.DocumentsPath); !made) return made;
  const QString masters = folders_.MasterFolder();
  const QString makerFolder = GetParentFolderName(folders_.WorkingFolder());
  Outcome built = BuildFolder(makerFolder, [&](const QString& building) {
    const QString working = building + u'/' + GetFileName(folders_.WorkingFolder());
    if (Outcome made = CreateFolder(working); !made) return Named(working, std::move(made));
    for (const QLatin1StringView folder : kTemplateFolders)
      if (Outcome copied = CopyTemplates(masters, working, folder); !copied) return copied;
    for (const QLatin1StringView name : {kCatalogueName, kCoreName})
      if (Outcome copied = CopyDatabase(masters, working, name); !copied) return copied;
    return Outcome();
  });
  // Another start may have been first.
  return !built && FolderExists(makerFolder) ? Repair() : std::move(built);
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
  RemoveLeftovers(folders_.DocumentsPath);
  RemoveLeftovers(folders_.WorkingFolder());
  return {};
}

CatalogueAccess Session::Access() const {
  return lock_ ? CatalogueAccess::ReadWrite : CatalogueAccess::Reading;
}

Outcome Session::OpenSettings() {
  auto core = OpenFile<CoreDatabase>(folders_.WorkingFolder() + u'/' + kCoreName, Access());
  if (!core) return Failure{core.Reason()};
  core_ = std::move(*core);
  settings_ = core_->ReadSettings();
  return {};
}

Outcome Session::Activate(const QString& name,
                          const std::function<void(const QString& status)>& status) {
  const auto tell = [&status](const QString& text) {
    if (status) status(text);
  };
  const QString path = folders_.WorkingFolder() + u'/' + name;

  tell(u"Loading Settings..."_s);
  if (Outcome opened = OpenSettings(); !opened) return opened;
  // Categories and editors are read by whoever shows them; what takes time is the row index.
  tell(u"Loading Categories..."_s);
  tell(u"Initializing Photo Editors..."_s);
  tell(u"Initializing Search Engine..."_s);
  auto catalogue = OpenFile<Catalogue>(path, Access());
  if (!catalogue) return Failure{catalogue.Reason()};
  catalogue_ = std::move(*catalogue);
  if (CatalogueTooLarge(QFileInfo(path).size()))
    MsgBox(QString::fromUtf16(session_text::kTooLarge), MessageKind::Warning);
  return {};
}

Outcome Session::ChangeSettings(const Settings& settings) {
  Outcome written = core_->WriteSettings(settings);
  if (written) settings_ = settings;
  return written;
}

ReadRequest Session::ReadSettings() const {
  ReadRequest request;
  request.colourManagement = settings_.CMS == u"true";
  request.raw = ParseRawOptions(RAWSettings(settings_.RAWView, settings_.RAWWhiteBalance));
  return request;
}

PictureSettings Session::WorkSettings() const {
  return {RAWSettings(settings_.RAWView, settings_.RAWWhiteBalance), settings_.CMS == u"true"};
}

PictureSettings Session::FormatSettings() const {
  return {RAWFormatSettings(settings_), settings_.CMS == u"true"};
}

QString RAWFormatSettings(const Settings& settings) {
  return RAWSettings(settings.RAWBatch, settings.RAWWhiteBalance);
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
