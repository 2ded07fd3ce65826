// SPDX-License-Identifier: GPL-3.0-or-later
// The real window program on a real X server that nobody sees.
#include <QDirIterator>
#include <QProcess>
#include <QStandardPaths>
#include <csignal>

#include "shell/files.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatience = 60'000;

class WindowProgram : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char16_t* tool : {u"Xvfb", u"xdotool"})
      if (QStandardPaths::findExecutable(QString::fromUtf16(tool)).isEmpty())
        GTEST_SKIP() << "without " << QString::fromUtf16(tool).toStdString();
    QDir().mkpath(scratch_.Path("outside"));
    QDir().mkpath(scratch_.Path("runtime"));
    QFile::setPermissions(scratch_.Path("runtime"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  ~WindowProgram() override {
    for (const auto& process : started_) {
      process->kill();
      process->waitForFinished();
    }
    server_.terminate();
    server_.waitForFinished();
  }

  bool StartServer(const QString& screen = u"1280x800x24"_s) {
    // By itself the server begins anew when its last client leaves, and turns others away
    // meanwhile.
    server_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-noreset"_s, u"-screen"_s, u"0"_s, screen,
                              u"-nolisten"_s, u"tcp"_s});
    while (!server_.canReadLine())
      if (!server_.waitForReadyRead(kPatience)) return false;
    display_ = u':' + QString::fromLatin1(server_.readLine().trimmed());
    return true;
  }
  QProcessEnvironment Environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char16_t* name : {u"XDG_CONFIG_HOME", u"XDG_DATA_HOME", u"WAYLAND_DISPLAY"})
      environment.remove(QString::fromUtf16(name));
    environment.insert(u"DISPLAY"_s, display_);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"HOME"_s, scratch_.Path("outside"));
    environment.insert(u"XDG_RUNTIME_DIR"_s, scratch_.Path("runtime"));
    environment.insert(u"XDG_CACHE_HOME"_s, scratch_.Path("cache"));
    // The X platform's own libraries keep a little at the end; what the program leaks shows in the
    // cases that run it within the test.
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
    return environment;
  }
  QProcess& Start(const QString& program, const QStringList& arguments) {
    QProcess& process = *started_.emplace_back(std::make_unique<QProcess>());
    process.setProcessEnvironment(Environment());
    process.start(program, arguments);
    return process;
  }
  QProcess& StartWindow(const QStringList& paths = {}) {
    return Start(QStringLiteral(ZOLMIRA_BINARY), QStringList{u"--home"_s, Home()} + paths);
  }
  static int ExitCode(QProcess& process) {
    return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit
               ? process.exitCode()
               : -1;
  }
  QString Home() const { return scratch_.Path("home"); }

  /// The visible windows of this title that are as wide, by their numbers.
  QStringList Windows(int width) {
    QProcess& search =
        Start(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Zolmira QM$"_s});
    search.waitForFinished(kPatience);
    QStringList found;
    for (const QByteArray& id : search.readAllStandardOutput().split('\n')) {
      if (id.isEmpty()) continue;
      QProcess& ask =
          Start(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, QString::fromLatin1(id)});
      ask.waitForFinished(kPatience);
      for (const QByteArray& line : ask.readAllStandardOutput().split('\n'))
        if (line.startsWith("WIDTH=") && line.mid(6).toInt() >= width)
          found.append(QString::fromLatin1(id));
    }
    return found;
  }
  bool Appears(int width = kMainWidth) {
    return QTest::qWaitFor([&] { return !Windows(width).isEmpty(); }, kPatience);
  }
  /// Its exit code after a key that ends it. A window that is just coming up may miss a key, so it
  /// comes again.
  int EndBy(const QString& key, QProcess& program, int width = kMainWidth) {
    const bool ended = QTest::qWaitFor(
        [&] {
          if (program.state() == QProcess::NotRunning) return true;
          const QStringList windows = Windows(width);
          if (!windows.isEmpty())
            ExitCode(Start(u"xdotool"_s, {u"windowfocus"_s, windows.last(), u"key"_s, key}));
          return false;
        },
        kPatience);
    return ended && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
  }
  QStringList Outside() const {
    QStringList files;
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (QDirIterator at(scratch_.Path("outside"), all, QDirIterator::Subdirectories);
         at.hasNext();)
      files.append(at.next());
    return files;
  }

  static constexpr int kMainWidth = 800;
  test::Scratch scratch_;
  QProcess server_;
  QString display_;
  std::vector<std::unique_ptr<QProcess>> started_;
};

TEST_F(WindowProgram, OneWindowAHomeAndNothingOutsideOfIt) {
  ASSERT_TRUE(StartServer());
  const QString photo = scratch_.Write("photos/a.jpg", test::SampleJpeg(64, 48));
  QProcess& first = StartWindow();
  ASSERT_TRUE(Appears());
  QProcess& second = StartWindow({photo});
  EXPECT_EQ(ExitCode(second), 0);
  EXPECT_EQ(Windows(kMainWidth).size(), 1);

  QProcess& writer = Start(QStringLiteral(ZQM_BINARY), {u"--home"_s, Home(), u"catalog"_s, photo});
  EXPECT_EQ(ExitCode(writer), 2);
  EXPECT_EQ(writer.readAllStandardError(), "Zolmira QM is running. Close it first.\n");

  EXPECT_EQ(EndBy(u"ctrl+q"_s, first), 0);
  EXPECT_TRUE(FileExists(Home() + u"/AppData/Zolmira/QM/MIS.dat"_s));
  EXPECT_TRUE(FileExists(Home() + u"/AppData/config/Zolmira/QM.conf"_s));
  EXPECT_EQ(Outside(), QStringList());
}

TEST_F(WindowProgram, AKilledOneIsNoObstacle) {
  ASSERT_TRUE(StartServer());
  QProcess& first = StartWindow();
  ASSERT_TRUE(Appears());
  first.kill();
  ASSERT_TRUE(first.waitForFinished(kPatience));
  // The server clears its window away after it.
  ASSERT_TRUE(QTest::qWaitFor([&] { return Windows(kMainWidth).isEmpty(); }, kPatience));
  QProcess& second = StartWindow();
  ASSERT_TRUE(Appears());
  EXPECT_EQ(EndBy(u"ctrl+q"_s, second), 0);
}

TEST_F(WindowProgram, ARestartedOneTakesOverFromTheOneThatIsEnding) {
  ASSERT_TRUE(StartServer());
  QProcess& old = StartWindow();
  ASSERT_TRUE(Appears());
  const QString marker = scratch_.Write("home/AppData/Zolmira/QM/Temp/Optimize.txt", QByteArray());
  QProcess& restarted = StartWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !FileExists(marker); }, kPatience));
  EXPECT_EQ(old.state(), QProcess::Running);
  old.terminate();
  ASSERT_TRUE(old.waitForFinished(kPatience));
  ASSERT_TRUE(Appears());
  EXPECT_EQ(restarted.state(), QProcess::Running);
}

TEST_F(WindowProgram, OptimizingStartsItAgainOnTheSameCatalogue) {
  ASSERT_TRUE(StartServer());
  const QString photo = scratch_.Write("photos/a.jpg", test::SampleJpeg(64, 48));
  QProcess& writer = Start(QStringLiteral(ZQM_BINARY), {u"--home"_s, Home(), u"catalog"_s, photo});
  ASSERT_EQ(ExitCode(writer), 0);
  QProcess& old = StartWindow();
  ASSERT_TRUE(Appears());
  const QStringList before = Windows(kMainWidth);
  // The command, then its report.
  constexpr int kMessageWidth = 200;
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        const QStringList windows = Windows(kMessageWidth);
        if (windows.size() > before.size()) return true;
        ExitCode(
            Start(u"xdotool"_s, {u"windowfocus"_s, before.last(), u"key"_s, u"ctrl+shift+o"_s}));
        return false;
      },
      kPatience));
  EXPECT_EQ(EndBy(u"Return"_s, old, kMessageWidth), 0);
  ASSERT_TRUE(Appears());
  EXPECT_FALSE(FileExists(Home() + u"/AppData/Zolmira/QM/Temp/Optimize.txt"_s));
  EXPECT_FALSE(FileExists(Home() + u"/AppData/Zolmira/QM/Temp/temp.mdb"_s));
  EXPECT_EQ(ExitCode(Start(u"xdotool"_s,
                           {u"windowfocus"_s, Windows(kMainWidth).last(), u"key"_s, u"ctrl+q"_s})),
            0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Windows(kMainWidth).isEmpty(); }, kPatience));
  QProcess& reader = Start(QStringLiteral(ZQM_BINARY), {u"--home"_s, Home(), u"row"_s, photo});
  EXPECT_EQ(ExitCode(reader), 0);
}

TEST_F(WindowProgram, ASmallScreenIsRefusedBeforeAnythingIsMade) {
  ASSERT_TRUE(StartServer(u"1024x767x24"_s));
  QProcess& program = StartWindow();
  constexpr int kMessageWidth = 200;
  ASSERT_TRUE(Appears(kMessageWidth));
  EXPECT_EQ(EndBy(u"Return"_s, program, kMessageWidth), 0);
  EXPECT_FALSE(FolderExists(Home()));
}

TEST_F(WindowProgram, WrongArgumentsAndAMissingDisplayAreSaid) {
  const auto run = [this](const QStringList& arguments) {
    QProcess& process = *started_.emplace_back(std::make_unique<QProcess>());
    QProcessEnvironment environment = Environment();
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZOLMIRA_BINARY), arguments);
    const int exitCode = ExitCode(process);
    return std::pair(exitCode, !process.readAllStandardError().isEmpty());
  };
  EXPECT_EQ(run({}), std::pair(2, true));
  EXPECT_EQ(run({u"--home"_s, u""_s}), std::pair(2, true));
  EXPECT_EQ(run({u"--unknown"_s}), std::pair(2, true));
  EXPECT_EQ(run({u"--version"_s}), std::pair(0, false));
  EXPECT_FALSE(FolderExists(scratch_.Path("outside/Documents")));
}

}  // namespace
}  // namespace zqm
