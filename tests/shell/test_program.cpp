// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <new>

#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/messages.h"
#include "shell/session_folders.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct Reported {
  QString text;
  MessageKind kind = MessageKind::Plain;
  int exitCode = 0;
};

Reported RunGuarded(const std::function<void()>& body) {
  Reported reported;
  const auto before = SetMessageHandler([&](const QString& text, MessageKind kind, Buttons) {
    reported.text = text;
    reported.kind = kind;
    return Answer::Ok;
  });
  SetExitHandler([&](int code) { reported.exitCode = code; });
  Guarded("frmcatalog", "cmdimport_Click", body);
  SetExitHandler({});
  SetMessageHandler(before);
  return reported;
}

TEST(Guarded, ReportsAndEndsTheProcess) {
  const int line = __LINE__ + 1;
  const Reported own = RunGuarded([] { throw Error(9, u"Subscript out of range"_s); });
  EXPECT_EQ(own.exitCode, 3);
  EXPECT_EQ(own.kind, MessageKind::Critical);
  const QString location = u"frmcatalog -> cmdimport_Click -> %1"_s.arg(line);
  qsizetype at = -1;  // each part, in this order
  for (const QString& part :
       {u"Oops....Zolmira QM encountered an error an needs to close."_s,
        u"The following error message was returned:"_s, ProgramVersion(), location,
        u"Subscript out of range"_s, u"1. What were you doing when the error occured?"_s,
        u"2. Your Windows version (XP, Vista or Win 7)."_s,
        u"3. If possible please provide a screenshot of the error."_s, u"Thank You!"_s}) {
    const qsizetype next = own.text.indexOf(part, at + 1);
    EXPECT_GT(next, at) << part.toStdString();
    at = next;
  }
  EXPECT_EQ(RunGuarded([] { throw std::bad_alloc(); }).exitCode, 3);
  EXPECT_EQ(RunGuarded([] { throw 5; }).exitCode, 3);
  EXPECT_EQ(RunGuarded([] {}).exitCode, 0);
}

TEST(Guarded, EndsWithCodeThreeByItself) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(Guarded("m", "p", [] { throw Error(5, u"100 %1 gone"_s); }),
              ::testing::ExitedWithCode(3), "100 %1 gone");
}

TEST(Messages, WithoutAHandlerTheAnswerChangesNothing) {
  const auto before = SetMessageHandler({});
  const auto beforePick = SetPickHandler({});
  testing::internal::CaptureStderr();
  EXPECT_EQ(MsgBox(u"Löschen?"_s, MessageKind::Question, Buttons::YesNo), Answer::No);
  EXPECT_EQ(MsgBox(u"Go on?"_s, MessageKind::Question, Buttons::OkCancel), Answer::Cancel);
  EXPECT_EQ(MsgBox(u"Done."_s), Answer::Ok);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Löschen?\nGo on?\nDone.\n");
  EXPECT_EQ(Pick({}), QString());
  SetMessageHandler(before);
  SetPickHandler(beforePick);
}

TEST(SessionFolders, AHomeHoldsAllButTheMasters) {
  const SessionFolders own = ResolveSessionFolders({});
  const SessionFolders folders = ResolveSessionFolders(u"/h/./x/"_s);
  EXPECT_EQ(folders.WorkingFolder(), u"/h/x/Documents/Zolmira/QM");
  EXPECT_EQ(folders.PrintingTemplatesFolder(), u"/h/x/Documents/Zolmira/QM/printing_templates");
  EXPECT_EQ(folders.WatermarkTemplatesFolder(), u"/h/x/Documents/Zolmira/QM/watermark_templates");
  EXPECT_EQ(folders.ScratchFolder(), u"/h/x/AppData/Zolmira/QM/Temp");
  EXPECT_EQ(folders.DesktopPath, u"/h/x/Desktop");
  EXPECT_EQ(folders.MasterFolder(), own.MasterFolder());
  EXPECT_EQ(ResolveSessionFolders(u"/"_s).DesktopPath, u"/Desktop");
  for (const QString& path : {own.DocumentsPath, own.AppDataPath, own.CommonAppDataPath,
                              own.DesktopPath, own.ProgramFilesPath}) {
    EXPECT_TRUE(path.startsWith(u'/') && !path.endsWith(u'/')) << path.toStdString();
  }
}

TEST(FileInfo, KnowsTheRunningProgramOnly) {
  FileInfo info(QCoreApplication::applicationFilePath());
  EXPECT_TRUE(info.Available);
  EXPECT_EQ(info.ProductVersion, ProgramVersion());
  info.SetFullPathName(u"/bin/sh"_s);
  EXPECT_FALSE(info.Available);
  EXPECT_EQ(info.ProductVersion, QString());
  EXPECT_EQ(info.FullPathName, u"/bin/sh");
}

}  // namespace
}  // namespace zqm
