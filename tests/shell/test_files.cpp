// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "shell/error.h"
#include "shell/file_operation.h"
#include "shell/files.h"
#include "shell/platform.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;
using zqm::test::Scratch;

namespace zqm {
namespace {

const QString kMissing = QString::fromUtf16(kReasonMissing);
const QString kDenied = QString::fromUtf16(kReasonPermission);

void Link(const QString& to, const QString& name) {
  ASSERT_EQ(symlink(to.toUtf8().constData(), name.toUtf8().constData()), 0);
}

TEST(Files, PartsOfPaths) {
  struct Case {
    QString path, name, parent, base, extension;
  };
  // clang-format off
  const Case cases[] = {
      {u"/a/b.jpg"_s, u"b.jpg"_s, u"/a"_s, u"b"_s, u"jpg"_s},
      {u"/b.jpg"_s, u"b.jpg"_s, u"/"_s, u"b"_s, u"jpg"_s}, {u"b"_s, u"b"_s, u""_s, u"b"_s, u""_s},
      {u"/a.b/c"_s, u"c"_s, u"/a.b"_s, u"c"_s, u""_s},
      {u"/a/.hidden"_s, u".hidden"_s, u"/a"_s, u""_s, u"hidden"_s},
      {u"/a/b.tar.GZ"_s, u"b.tar.GZ"_s, u"/a"_s, u"b.tar"_s, u"GZ"_s},
      {u"/a/b."_s, u"b."_s, u"/a"_s, u"b"_s, u""_s}, {u""_s, u""_s, u""_s, u""_s, u""_s}};
  // clang-format on
  for (const Case& c : cases) {
    EXPECT_EQ(GetFileName(c.path), c.name);
    EXPECT_EQ(GetParentFolderName(c.path), c.parent);
    EXPECT_EQ(GetBaseName(c.path), c.base);
    EXPECT_EQ(GetExtensionName(c.path), c.extension);
  }
  for (const auto& [path, stripped] : {std::pair(u"/a/"_s, u"/a"_s),
                                       {u"/"_s, u"/"_s},
                                       {u"//"_s, u"/"_s},
                                       {u""_s, u""_s},
                                       {u"a"_s, u"a"_s}}) {
    EXPECT_EQ(StripSlash(path), stripped);
  }
}

TEST(Files, AbsolutePathsAreClean) {
  const QString here = QDir::currentPath();
  const std::pair<QString, QString> cases[] = {
      {u"/a/./b/../c/"_s, u"/a/c"_s}, {u"/../a"_s, u"/a"_s},       {u"/.."_s, u"/"_s},
      {u"/../../a"_s, u"/a"_s},       {u"/..a"_s, u"/..a"_s},      {u""_s, u""_s},
      {u"b"_s, here + u"/b"_s},       {u":/b"_s, here + u"/:/b"_s}};
  for (const auto& [path, clean] : cases)
    EXPECT_EQ(AbsolutePath(path), clean);
}

TEST(Files, NamesWithRefusedCharacters) {
  for (const QChar c : u"\\/:*?\"<>|"_s)
    EXPECT_FALSE(CheckIfValidFN(u"a"_s + c)) << c.toLatin1();
  EXPECT_TRUE(CheckIfValidFN(u"Jänner's 100% [1]; €.jpg"_s));
}

TEST(Files, TellsFilesFromTheRest) {
  const Scratch scratch;
  const QString file = scratch.Write("file", "x");
  Link(file, scratch.Path("link"));
  Link(scratch.Path("none"), scratch.Path("dangling"));
  ASSERT_EQ(mkfifo(scratch.Path("pipe").toUtf8().constData(), 0600), 0);
  ASSERT_TRUE(CreateFolder(scratch.Path("folder")));
  struct Case {
    const char* name;
    bool file, folder;
  };
  for (const Case& c : {Case{"file", true, false},
                        {"link", true, false},
                        {"dangling", false, false},
                        {"pipe", false, false},
                        {"folder", false, true},
                        {"none", false, false}}) {
    const QString path = scratch.Path(c.name);
    EXPECT_EQ(FileExists(path), c.file) << c.name;
    EXPECT_EQ(FolderExists(path), c.folder) << c.name;
    // Nothing but a file is read, and no pipe is waited for.
    const auto content = ReadWholeFile(path);
    EXPECT_EQ(static_cast<bool>(content), c.file) << c.name;
    EXPECT_EQ(content.Reason(), c.file ? QString() : kMissing) << c.name;
    const Outcome copied = CopyFile(path, scratch.Path("copy"));
    EXPECT_EQ(static_cast<bool>(copied), c.file) << c.name;
  }
  EXPECT_EQ(ReadWholeFile(u"/dev/zero"_s).Reason(), kMissing);
  EXPECT_FALSE(CreateFolder(scratch.Path("folder")));
  EXPECT_FALSE(CreateFolder(scratch.Path("no/parent")));
}

TEST(Files, ReadsUpToALimit) {
  const Scratch scratch;
  const QString path = scratch.Write("a", QByteArray("a\0b", 3));
  EXPECT_EQ(*ReadWholeFile(path, 3), QByteArray("a\0b", 3));
  EXPECT_FALSE(ReadWholeFile(path, 2));  // never a part that looks like the whole
  EXPECT_EQ(*ReadWholeFile(scratch.Write("empty", {})), QByteArray());
  QFile sparse(scratch.Write("big.jpg", {}));
  ASSERT_TRUE(sparse.resize(qint64{2} << 30));
  EXPECT_EQ(ReadWholeFile(sparse.fileName()).Reason(), u"File is too large"_s);
#ifndef __SANITIZE_ADDRESS__  // which ends the process over such a size
  if (!sparse.resize(qint64{1} << 43)) GTEST_SKIP() << "no file system for files beyond any memory";
  EXPECT_EQ(ReadWholeFile(sparse.fileName(), qint64{1} << 44).Reason(), ReasonForErrno(ENOMEM));
#endif
}

TEST(Files, WritesWholeFilesUnderAnyName) {
  const Scratch scratch;
  for (const QString& name : {u"Jänner.jpg"_s, u"two\nlines.jpg"_s, u"it's \"q\" $(x).jpg"_s,
                              u" "_s, QString(255, u'n')}) {
    const QString path = scratch.Path(name);
    ASSERT_TRUE(WriteFileAtomically(path, "old")) << name.toStdString();
    ASSERT_TRUE(WriteFileAtomically(path, QByteArray("new\0.", 5)));
    EXPECT_EQ(Scratch::Read(path), QByteArray("new\0.", 5));
    ASSERT_TRUE(CopyFile(path, scratch.Path("copy")));
    EXPECT_EQ(Scratch::Read(scratch.Path("copy")), QByteArray("new\0.", 5));
    EXPECT_TRUE(DeleteFile(path));
  }
  EXPECT_EQ(scratch.Names(), QStringList{u"copy"_s});
}

TEST(Files, ReplacingKeepsModeAndLinks) {
  const Scratch scratch;
  const QString file = scratch.Write("real/file", "old");
  ASSERT_EQ(chmod(file.toUtf8().constData(), 0640), 0);
  Link(u"real/file"_s, scratch.Path("relative"));
  Link(scratch.Path("relative"), scratch.Path("chain"));
  ASSERT_TRUE(WriteFileAtomically(scratch.Path("chain"), "new"));
  EXPECT_EQ(Scratch::Read(file), "new");
  EXPECT_TRUE(QFileInfo(scratch.Path("chain")).isSymLink());
  struct stat info {};
  ASSERT_EQ(stat(file.toUtf8().constData(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, mode_t{0640});

  Link(scratch.Path("made"), scratch.Path("dangling"));
  ASSERT_TRUE(WriteFileAtomically(scratch.Path("dangling"), "x"));
  EXPECT_EQ(Scratch::Read(scratch.Path("made")), "x");
  Link(scratch.Path("loop"), scratch.Path("loop"));
  EXPECT_FALSE(WriteFileAtomically(scratch.Path("loop"), "x"));
  EXPECT_FALSE(WriteFileAtomically(scratch.Path("real"), "x"));
  EXPECT_FALSE(WriteFileAtomically(scratch.Path("no/folder"), "x"));
}

TEST(Files, ReadOnlyTargetsStay) {
  const Scratch scratch;
  const QString source = scratch.Write("source", "new");
  const QString target = scratch.Write("target", "old");
  ASSERT_EQ(chmod(target.toUtf8().constData(), 0444), 0);
  EXPECT_TRUE(ReadOnlyFile(target));
  EXPECT_FALSE(ReadOnlyFile(source));
  EXPECT_FALSE(ReadOnlyFile(scratch.Path("none")));
  EXPECT_EQ(WriteFileAtomically(target, "new").Reason(), kDenied);
  EXPECT_EQ(CopyFile(source, target).Reason(), kDenied);
  EXPECT_EQ(Scratch::Read(target), "old");
  EXPECT_EQ(scratch.Names(), QStringList({u"source"_s, u"target"_s}));
}

TEST(Files, CopyTakesModeAndTimesAlong) {
  const Scratch scratch;
  const QString source = scratch.Write("source", QByteArray(1'000'000, 's'));
  const QDateTime taken(QDate(2007, 12, 31), QTime(23, 59, 59));
  QFile file(source);
  ASSERT_TRUE(file.open(QFile::ReadWrite) && file.setFileTime(taken, QFile::FileModificationTime));
  file.close();
  ASSERT_EQ(chmod(source.toUtf8().constData(), 0440), 0);
  const QString copy = scratch.Write("copy", "old");
  ASSERT_TRUE(CopyFile(source, copy));
  EXPECT_EQ(Scratch::Read(copy), QByteArray(1'000'000, 's'));
  EXPECT_EQ(GetFileTimes(copy).modified, taken);
  EXPECT_TRUE(ReadOnlyFile(copy));
  EXPECT_TRUE(CopyFile(copy, copy));
  EXPECT_EQ(Scratch::Read(copy).size(), 1'000'000);
}

TEST(Files, MoveNeverReplaces) {
  const Scratch scratch;
  const Scratch elsewhere(u"/dev/shm"_s);  // as a rule another file system
  const Scratch& other = elsewhere.IsValid() ? elsewhere : scratch;
  for (const QString& to : {scratch.Path("to"), other.Path("beyond")}) {
    const QString from = scratch.Write("from", "new");
    QFile(to).open(QFile::WriteOnly | QFile::NewOnly);
    EXPECT_FALSE(MoveFile(from, to));
    EXPECT_EQ(Scratch::Read(from), "new");
    EXPECT_EQ(Scratch::Read(to), "");
    ASSERT_TRUE(DeleteFile(to));
    ASSERT_TRUE(MoveFile(from, to)) << MoveFile(from, to).Reason().toStdString();
    EXPECT_EQ(Scratch::Read(to), "new");
    EXPECT_FALSE(FileExists(from));
    EXPECT_EQ(MoveFile(from, scratch.Path("x")).Reason(), kMissing);
    // A link goes by itself and never replaces either.
    const QString moved = to + u" link"_s;
    Link(to, from);
    Link(u"none"_s, moved);
    EXPECT_FALSE(MoveFile(from, moved));
    ASSERT_TRUE(DeleteFile(moved));
    ASSERT_TRUE(MoveFile(from, moved));
    EXPECT_EQ(QFileInfo(moved).symLinkTarget(), to);
    EXPECT_FALSE(QFileInfo(from).isSymLink());
    ASSERT_TRUE(DeleteFile(moved));
  }
  EXPECT_EQ(scratch.Names(), QStringList{u"to"_s});
  // Names that differ only in case, and are two entries of one file.
  const QString upper = scratch.Write("Photo.jpg", "kept");
  const QString lower = scratch.Path("photo.jpg");
  Link(upper, lower);
  EXPECT_FALSE(MoveFile(lower, upper));
  EXPECT_EQ(Scratch::Read(upper), "kept");
}

TEST(Files, AFullDiskLeavesEverythingAsItWas) {
  const Scratch small;
  const test::SmallDisk disk(small.Path());
  if (!disk.IsMounted()) GTEST_SKIP() << "may not mount a small disk";
  const Scratch outside;
  const QByteArray big(2'000'000, 'b');
  const QString source = outside.Write("source", big);
  const QString target = small.Write("target", "old");
  EXPECT_FALSE(WriteFileAtomically(target, big));
  EXPECT_FALSE(CopyFile(source, target));
  EXPECT_FALSE(CopyFile(source, small.Path("fresh")));
  EXPECT_FALSE(MoveFile(source, small.Path("fresh")));
  EXPECT_EQ(Scratch::Read(target), "old");
  EXPECT_EQ(Scratch::Read(source), big);
  EXPECT_EQ(small.Names(), QStringList{u"target"_s});
}

TEST(Files, CopiesFolders) {
  const Scratch scratch;
  scratch.Write("from/a/b.txt", "b");
  scratch.Write("from/.hidden", "h");
  Link(u".."_s, scratch.Path("from/a/up"));  // followed, it would never end
  ASSERT_TRUE(CopyFolder(scratch.Path("from"), scratch.Path("to/")));
  EXPECT_EQ(Scratch::Read(scratch.Path("to/a/b.txt")), "b");
  EXPECT_EQ(Scratch::Read(scratch.Path("to/.hidden")), "h");
  EXPECT_TRUE(QFileInfo(scratch.Path("to/a/up")).isSymLink());
  EXPECT_FALSE(CopyFolder(scratch.Path("from"), scratch.Path("from/a/inside")));
  EXPECT_FALSE(FolderExists(scratch.Path("from/a/inside")));
  EXPECT_EQ(CopyFolder(scratch.Path("none"), scratch.Path("x")).Reason(), kMissing);
}

TEST(Files, DeleteTakesFilesAndLinksOnly) {
  const Scratch scratch;
  const QString file = scratch.Write("folder/file", "x");
  Link(file, scratch.Path("link"));
  EXPECT_TRUE(DeleteFile(scratch.Path("link")));
  EXPECT_TRUE(FileExists(file));
  EXPECT_FALSE(DeleteFile(scratch.Path("folder")));
  EXPECT_TRUE(DeleteFile(file));
  EXPECT_EQ(DeleteFile(file).Reason(), kMissing);
}

TEST(FileOperation, RunsAListIntoAFolder) {
  const Scratch scratch;
  scratch.Write("into/x", "");
  CSHFileOp shell;
  shell.AddSource(scratch.Write("a", "a"));
  shell.AddSource(scratch.Path("none"));
  shell.AddSource(scratch.Write("b", "b"));
  shell.SetDestination(scratch.Path("into/"));
  EXPECT_EQ(shell.Run(CSHFileOp::Operation::Move).Reason(),
            scratch.Path("none") + u": "_s + kMissing);
  EXPECT_EQ(Scratch::Read(scratch.Path("into/a")), "a");
  EXPECT_TRUE(FileExists(scratch.Path("b")));
  EXPECT_THROW((void)shell.Run(CSHFileOp::Operation::Move), Error);  // the list is used up
}

TEST(FileOperation, RenamesOnCollision) {
  const Scratch scratch;
  for (const char* name : {"a.tar.gz", "into/A.TAR.GZ", "into/a.tar (2).gz", "v1.0/x", "into/v1.0"})
    scratch.Write(name, name);
  CSHFileOp shell;
  shell.RenameOnCollision = true;
  for (const char* name : {"a.tar.gz", "v1.0"})
    shell.AddSource(scratch.Path(name));
  shell.SetDestination(scratch.Path("into"));
  ASSERT_TRUE(shell.Run(CSHFileOp::Operation::Copy));
  EXPECT_EQ(Scratch::Read(scratch.Path("into/A.TAR.GZ")), "into/A.TAR.GZ");
  EXPECT_EQ(Scratch::Read(scratch.Path("into/a.tar (3).gz")), "a.tar.gz");
  EXPECT_EQ(Scratch::Read(scratch.Path("into/v1.0 (2)/x")), "v1.0/x");
  shell.AddSource(scratch.Path("a.tar.gz"));
  shell.SetDestination(scratch.Path("into/new.gz"));
  ASSERT_TRUE(shell.Run(CSHFileOp::Operation::Move));
  EXPECT_EQ(Scratch::Read(scratch.Path("into/new.gz")), "a.tar.gz");
}

TEST(FileLock, HoldsOneFileAndLeaksNoDescriptor) {
  const Scratch scratch;
  const auto descriptors = [] { return QDir(u"/proc/self/fd"_s).count(); };
  platform::FileLock lock, other;
  ASSERT_EQ(lock.Take(scratch.Path("a")), 0);
  const auto before = descriptors();
  EXPECT_EQ(lock.Take(scratch.Path("a")), EWOULDBLOCK);
  EXPECT_EQ(other.Take(scratch.Path("a")), EWOULDBLOCK) << "the first lock is still held";
  EXPECT_EQ(lock.Take(scratch.Path("no/folder")), ENOENT);
  EXPECT_EQ(lock.Take(scratch.Path("b")), 0);
  EXPECT_EQ(descriptors(), before);
  EXPECT_EQ(other.Take(scratch.Path("a")), 0);
}

}  // namespace
}  // namespace zqm
