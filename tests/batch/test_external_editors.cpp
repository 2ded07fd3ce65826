// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/external_editors.h"
#include "tests/batch/batch_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Editors : public test::BatchTest {
 protected:
  CoreDatabase& Core() { return session_->Core(); }
  /// A program that writes down how it was called: each call a line, its arguments in brackets.
  QString Program(const char* name) {
    const QString path = Write(name,
                               "#!/bin/sh\n{ for a in \"$@\"; do printf '[%s]' \"$a\"; done; "
                               "printf '\\n'; } >> \"$0.log\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
  }
  static QString Log(const QString& program, int lines) {
    const QString log = program + u".log"_s;
    EXPECT_TRUE(test::Eventually(
        [&] { return FileExists(log) && test::Scratch::Read(log).count('\n') >= lines; }));
    return QString::fromUtf8(test::Scratch::Read(log));
  }
};

TEST_F(Editors, NamesAndPathsStandOnce) {
  EXPECT_TRUE(AddEditor(Core(), {u" Gimp "_s, u"/usr/bin/gimp"_s}));
  EXPECT_EQ(Core().Editors(), (std::vector<ExternalEditor>{{u"Gimp"_s, u"/usr/bin/gimp"_s}}));
  EXPECT_EQ(AddEditor(Core(), {u" "_s, u"/x"_s}).Reason(),
            u"Enter the name of the Photo Editor."_s);
  EXPECT_EQ(AddEditor(Core(), {u"gimp"_s, u"/usr/bin/gimp"_s}).Reason(),
            u"The Photo Editor that you are trying to add is already present in the list."_s);
  EXPECT_EQ(AddEditor(Core(), {u"gimp"_s, u"/opt/gimp"_s}).Reason(),
            u"The name you specified already exists in the list of photo editors. Enter a "
            u"different name."_s);
  EXPECT_TRUE(RemoveEditor(Core(), u"Gimp"_s));
  EXPECT_TRUE(Core().Editors().empty());
}

TEST_F(Editors, PathsGoAsArgumentsOfTheirOwn) {
  const ExternalEditor editor{u"Painter"_s, Program("my painter.sh")};
  const QString blanks = Write("a/two  blanks.jpg"), quotes = Write("a/it's \"$HOME\" `x`.jpg");
  EXPECT_EQ(*OpenInEditor(editor, {blanks, In("a/gone.jpg"), quotes}, true), 1);
  EXPECT_EQ(Log(editor.EditorPath, 1), u'[' + blanks + u"]["_s + quotes + u"]\n"_s);
  QFile::remove(editor.EditorPath + u".log"_s);
  EXPECT_EQ(*OpenInEditor(editor, {blanks, quotes}, false), 2);
  const QString log = Log(editor.EditorPath, 2);
  EXPECT_TRUE(log.contains(u'[' + blanks + u"]\n"_s));
  EXPECT_TRUE(log.contains(u'[' + quotes + u"]\n"_s));
}

TEST_F(Editors, WhatCantBeOpenedIsSaid) {
  const QString photo = Write("a/1.jpg"), program = Program("p.sh");
  EXPECT_EQ(OpenInEditor({}, {photo}, false).Reason(), u"Select a photo editor."_s);
  EXPECT_EQ(OpenInEditor({u"Gone"_s, In("gone")}, {photo}, false).Reason(),
            u"Cannot locate "_s + In("gone") + u'.');
  EXPECT_EQ(OpenInEditor({u"P"_s, program}, {In("gone.jpg")}, false).Reason(),
            QString::fromUtf16(editor_text::kUnusable));
  EXPECT_TRUE(CheckEditorProgram(program));
  EXPECT_FALSE(CheckEditorProgram(photo));
  EXPECT_FALSE(CheckEditorProgram(In("a")));
  // One that is no program passes in silence.
  QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner);
  EXPECT_EQ(*OpenInEditor({u"P"_s, program}, {photo}, true), 1);
}

TEST_F(Editors, InstalledOnesAreThoseThatOpenImages) {
  const QByteArray paint = Program("paint").toUtf8(), other = Program("other").toUtf8();
  const auto entry = [](const QByteArray& name, const QByteArray& exec, const QByteArray& more) {
    return "# a comment\n[Desktop Entry]\nType=Application\nName=" + name +
           "\nName[de]=Anders\nExec=" + exec +
           " %F\nCategories=Graphics;2DGraphics;\nMimeType=image/png;image/jpeg;\n" + more +
           "[Desktop Action new]\nName=New\nExec=/bin/false\n";
  };
  Write("own/paint.desktop", entry("Paint", paint, ""));
  Write("system/paint.desktop", entry("Hidden by the user's own", other, ""));
  Write("system/again.desktop", entry("The same program", paint, ""));
  Write("system/hidden.desktop", entry("Hidden", other, "NoDisplay=true\n"));
  Write("system/terminal.desktop", entry("Terminal", other, "Terminal=true\n"));
  Write("system/wrapped.desktop", entry("Wrapped", "/usr/bin/env " + other, ""));
  Write("system/gone.desktop", entry("Gone", "/nowhere/gone", ""));
  Write("system/text.desktop",
        entry("Writer", other, "").replace("image/png;image/jpeg", "text/plain"));
  Write("system/quoted.desktop", entry("Other", '"' + other + '"', ""));
  Write("system/noise.desktop", QByteArray("\0\xff[=\n", 5));
  EXPECT_EQ(InstalledEditors({In("own"), In("system"), In("none")}),
            (std::vector<ExternalEditor>{{u"Other"_s, QString::fromUtf8(other)},
                                         {u"Paint"_s, QString::fromUtf8(paint)}}));
}

}  // namespace
}  // namespace zqm
