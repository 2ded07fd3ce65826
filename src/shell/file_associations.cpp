// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_associations.h"

#include <QDir>
#include <QStandardPaths>
#include <optional>

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char kEntry[] = "zolmira-qm.desktop";
constexpr char kDefaults[] = "[Default Applications]";
constexpr qint64 kMostBytes = qint64{1} << 20;

constexpr const char* kJpeg[] = {"image/jpeg"};
constexpr const char* kBmp[] = {"image/bmp"};
constexpr const char* kGif[] = {"image/gif"};
constexpr const char* kTiff[] = {"image/tiff"};
constexpr const char* kPng[] = {"image/png"};
constexpr const char* kJp2[] = {"image/jp2"};
constexpr const char* kJ2k[] = {"image/x-jp2-codestream"};
constexpr const char* kPcx[] = {"image/vnd.zbrush.pcx", "image/x-pcx"};
constexpr const char* kTga[] = {"image/x-tga"};
constexpr const char* kPsd[] = {"image/vnd.adobe.photoshop"};
constexpr const char* kCrw[] = {"image/x-canon-crw"};
constexpr const char* kCr2[] = {"image/x-canon-cr2"};
constexpr const char* kNef[] = {"image/x-nikon-nef"};
constexpr const char* kOrf[] = {"image/x-olympus-orf"};
constexpr const char* kRaf[] = {"image/x-fuji-raf"};
constexpr const char* kMrw[] = {"image/x-minolta-mrw"};
constexpr const char* kPef[] = {"image/x-pentax-pef"};
constexpr const char* kSrf[] = {"image/x-sony-srf"};

constexpr FileKind kKinds[] = {
    {u"JPEG, JPG, JPE", kJpeg},
    {u"BMP", kBmp},
    {u"GIF", kGif},
    {u"TIFF, TIF", kTiff},
    {u"PNG", kPng},
    {u"JP2", kJp2},
    {u"J2K", kJ2k},
    {u"PCX", kPcx},
    {u"TGA", kTga},
    {u"PSD", kPsd},
    {u"CRW (Canon)", kCrw},
    {u"CR2 (Canon)", kCr2},
    {u"NEF (Nikon)", kNef},
    {u"ORF (Olympus)", kOrf},
    {u"RAF (Fuji)", kRaf},
    {u"MRW (Minolta)", kMrw},
    {u"PEF (Pentax)", kPef},
    {u"SRF (Sony)", kSrf},
};

QString ListFile(const AssociationFolders& folders) {
  return folders.config + u"/mimeapps.list"_s;
}

/// The user's list as lines without their ends; foreign lines are never looked into.
class MimeApps {
 public:
  explicit MimeApps(const QByteArray& content) : lines_(content.split('\n')) {
    // A closing line end is no empty line.
    if (!lines_.isEmpty() && lines_.last().isEmpty()) lines_.removeLast();
  }

  QByteArray Content() const { return lines_.isEmpty() ? QByteArray() : lines_.join('\n') + '\n'; }

  QList<QByteArray> Programs(const QByteArray& type) const {
    const auto at = Find(type);
    if (!at) return {};
    const QByteArray value = lines_[*at].mid(lines_[*at].indexOf('=') + 1);
    QList<QByteArray> programs;
    for (const QByteArray& program : value.split(';'))
      if (!program.trimmed().isEmpty()) programs.append(program.trimmed());
    return programs;
  }

  void SetPrograms(const QByteArray& type, const QList<QByteArray>& programs) {
    const auto at = Find(type);
    if (programs.isEmpty()) {
      if (at) lines_.removeAt(*at);
      return;
    }
    const QByteArray line = type + '=' + programs.join(';') + ';';
    if (at)
      lines_[*at] = line;
    else
      lines_.insert(Section() + 1, line);
  }

 private:
  /// The line of the section's head, made when it is missing.
  qsizetype Section() {
    for (qsizetype i = 0; i < lines_.size(); ++i)
      if (lines_[i].trimmed() == kDefaults) return i;
    lines_.append(kDefaults);
    return lines_.size() - 1;
  }

  std::optional<qsizetype> Find(const QByteArray& type) const {
    bool inside = false;
    for (qsizetype i = 0; i < lines_.size(); ++i) {
      const QByteArray line = lines_[i].trimmed();
      if (line.startsWith('[')) inside = line == kDefaults;
      const qsizetype sign = line.indexOf('=');
      if (inside && sign > 0 && line.left(sign).trimmed() == type) return i;
    }
    return std::nullopt;
  }

  QList<QByteArray> lines_;
};

Result<MimeApps> ReadList(const AssociationFolders& folders) {
  const QString path = ListFile(folders);
  if (!FileExists(path)) return MimeApps(QByteArray());
  const Result<QByteArray> content = ReadWholeFile(path, kMostBytes);
  if (!content) return Failure{content.Reason()};
  return MimeApps(*content);
}

bool IsOurs(const MimeApps& list, const FileKind& kind) {
  return std::ranges::all_of(kind.types, [&list](const char* type) {
    const QList<QByteArray> programs = list.Programs(type);
    return !programs.isEmpty() && programs.first() == kEntry;
  });
}

/// An argument of an Exec line: quoted, with what is special inside quotes escaped. The line is a
/// text itself, in which each backslash is doubled.
QByteArray ExecArgument(const QString& path) {
  QByteArray quoted = "\"";
  for (const char byte : path.toUtf8()) {
    if (byte == '"' || byte == '`' || byte == '$' || byte == '\\') quoted += "\\\\";
    if (byte == '%') quoted += '%';
    quoted += byte;
    if (byte == '\\') quoted += byte;
  }
  return quoted + '"';
}

Outcome WriteEntry(const AssociationFolders& folders, const QString& program) {
  const QString path = folders.applications + u'/' + QLatin1StringView(kEntry);
  if (FileExists(path)) return {};
  if (!QDir().mkpath(folders.applications))
    return Failure{folders.applications + u": cannot be made"_s};
  QByteArray types;
  for (const FileKind& kind : kKinds)
    for (const char* type : kind.types)
      types += QByteArray(type) + ';';
  return WriteFileAtomically(path,
                             "[Desktop Entry]\nType=Application\nName=Zolmira QM\n"
                             "GenericName=Photo Manager\nIcon=zolmira-qm\nTerminal=false\n"
                             "Categories=Graphics;Photography;Qt;\nExec=" +
                                 ExecArgument(program) + " %F\nMimeType=" + types + "\n");
}

}  // namespace

std::span<const FileKind> FileKinds() {
  return kKinds;
}

AssociationFolders UsersAssociationFolders() {
  return {QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
          QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation)};
}

AssociationFolders AssociationFoldersOf(const SessionFolders& session) {
  const QString users = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (session.AppDataPath == StripSlash(users)) return UsersAssociationFolders();
  return {session.AppDataPath + u"/config"_s, session.AppDataPath + u"/applications"_s};
}

bool IsAssociated(const AssociationFolders& folders, const FileKind& kind) {
  const Result<MimeApps> list = ReadList(folders);
  return list && IsOurs(*list, kind);
}

Outcome Associate(const AssociationFolders& folders, const std::vector<bool>& ticked,
                  const QString& program) {
  Result<MimeApps> list = ReadList(folders);
  if (!list) return Failure{ListFile(folders) + u": "_s + list.Reason()};
  const QByteArray before = list->Content();
  bool any = false;
  for (std::size_t i = 0; i < std::size(kKinds); ++i) {
    any = any || ticked[i];
    for (const char* type : kKinds[i].types) {
      // Whoever opened it before stands behind us, and comes back when we go.
      QList<QByteArray> programs = list->Programs(type);
      const bool ours = !programs.isEmpty() && programs.first() == kEntry;
      if (ours == ticked[i]) continue;
      programs.removeAll(kEntry);
      if (ticked[i]) programs.prepend(kEntry);
      list->SetPrograms(type, programs);
    }
  }
  if (any)
    if (Outcome written = WriteEntry(folders, program); !written) return written;
  if (list->Content() == before) return {};
  if (!QDir().mkpath(folders.config)) return Failure{folders.config + u": cannot be made"_s};
  return WriteFileAtomically(ListFile(folders), list->Content());
}

}  // namespace zqm
