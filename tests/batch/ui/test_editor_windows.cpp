// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "batch/ui/frmconfigure.h"
#include "batch/ui/frmexternaleditor.h"
#include "tests/batch/batch_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class EditorWindows : public test::BatchTest {
 protected:
  EditorWindows()
      : before_(SetPickHandler([this](const PickRequest& request) {
          asked_ = request.title;
          return picked_;
        })) {}
  ~EditorWindows() override { SetPickHandler(before_); }

  static void Click(QWidget& window, const char16_t* button) {
    QTest::mouseClick(window.findChild<QPushButton*>(QString::fromUtf16(button)), Qt::LeftButton);
  }
  /// Adds what is picked, under another name if one is given.
  void Add(frmconfigure& window, const QString& program, const QString& name = QString()) {
    picked_ = program;
    QTimer::singleShot(0, &window, [name] {
      auto* confirm = qobject_cast<frmconfirmeditor*>(QApplication::activeModalWidget());
      if (confirm == nullptr) return;
      if (!name.isEmpty()) confirm->findChild<QLineEdit*>(u"Text1"_s)->setText(name);
      Click(*confirm, u"cmdok");
      if (confirm->isVisible()) confirm->reject();
    });
    Click(window, u"cmdadd");
  }
  QString Program(const char* name) {
    const QString path = Write(name, "#!/bin/sh\nprintf '%s\\n' \"$@\" >> \"$0.log\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
    return path;
  }
  std::vector<ExternalEditor> Editors() { return session_->Core().Editors(); }

  QString picked_, asked_;

 private:
  PickHandler before_;
};

TEST_F(EditorWindows, EditorsAreAddedAndRemovedAndCancelUndoes) {
  const QString paint = Program("paint.sh"), text = Write("notes.txt");
  {
    frmconfigure window(session_->Core());
    window.show();
    Add(window, text);
    EXPECT_EQ(messages_.size(), 1);
    Add(window, paint);
    EXPECT_EQ(asked_, u"Select Photo Editor"_s);
    EXPECT_EQ(Editors(), (std::vector<ExternalEditor>{{u"paint.sh"_s, paint}}));
    Add(window, paint, u"again"_s);
    EXPECT_EQ(messages_.last(),
              u"The Photo Editor that you are trying to add is already present in the list."_s);
    Click(window, u"cmdok");
  }
  frmconfigure window(session_->Core());
  window.show();
  Add(window, Program("other.sh"), u"Other"_s);
  auto* list = window.findChild<QListWidget*>(u"List1"_s);
  ASSERT_EQ(list->count(), 2);
  EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdremove"_s)->isEnabled());
  list->setCurrentRow(0);
  Click(window, u"cmdremove");
  EXPECT_EQ(messages_.last(), u"Delete paint.sh from the list of Photo Editors?"_s);
  EXPECT_EQ(Editors().size(), 2U);
  answer_ = Answer::Yes;
  Click(window, u"cmdremove");
  EXPECT_EQ(Editors().size(), 1U);
  Click(window, u"cmdcancel");
  EXPECT_EQ(Editors(), (std::vector<ExternalEditor>{{u"paint.sh"_s, paint}}));
}

TEST_F(EditorWindows, PhotosOpenInTheChosenOne) {
  const QString paint = Program("paint.sh"), a = Photo("a/1.jpg"), b = Photo("a/2.jpg");
  ASSERT_TRUE(session_->Core().WriteEditors({{u"Gone"_s, In("gone")}, {u"Paint"_s, paint}}));
  frmexternaleditor window(session_->Core(), {a, b});
  window.show();
  auto* list = window.findChild<QListWidget*>(u"List1"_s);
  Click(window, u"cmdok");
  EXPECT_EQ(messages_.last(), u"Select a photo editor."_s);
  list->setCurrentRow(0);
  Click(window, u"cmdok");
  EXPECT_EQ(messages_.last(), u"Cannot locate "_s + In("gone") + u'.');
  list->setCurrentRow(1);
  window.findChild<QCheckBox*>(u"Check1"_s)->setChecked(true);
  Click(window, u"cmdok");
  EXPECT_FALSE(window.isVisible());
  const QString log = paint + u".log"_s;
  EXPECT_TRUE(test::Eventually([&] {
    return FileExists(log) && test::Scratch::Read(log) == (a + u'\n' + b + u'\n').toUtf8();
  }));
}

}  // namespace
}  // namespace zqm
