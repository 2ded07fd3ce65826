// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/busy_label.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/message_boxes.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatience = 20'000;

class Messages : public ::testing::Test {
 protected:
  Messages() { UseMessageBoxes(); }
  ~Messages() override {
    SetMessageHandler({});
    SetPickHandler({});
    SetExitHandler({});
  }
  /// Looks at the message box when it is up, then presses a key in it.
  void WhenShown(Qt::Key key, std::function<void(const QMessageBox&)> look = {}) {
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this, key, look] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr || !box->isVisible()) return;
      watch_.disconnect();
      if (look) look(*box);
      QTest::keyClick(box, key);
    });
    watch_.start(10);
  }
  QTimer watch_;
};

TEST_F(Messages, AreShownAsTheyAreTold) {
  const struct {
    MessageKind kind;
    QMessageBox::Icon icon;
  } cases[] = {{MessageKind::Plain, QMessageBox::NoIcon},
               {MessageKind::Information, QMessageBox::Information},
               {MessageKind::Warning, QMessageBox::Warning},
               {MessageKind::Critical, QMessageBox::Critical},
               {MessageKind::Question, QMessageBox::Question}};
  for (const auto& c : cases) {
    WhenShown(Qt::Key_Return, [&c](const QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), u"Zolmira QM"_s);
      EXPECT_EQ(box.text(), u"<b>100 %1</b>\nof %2"_s);
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.icon(), c.icon);
    });
    EXPECT_EQ(MsgBox(u"<b>100 %1</b>\nof %2"_s, c.kind), Answer::Ok);
  }
}

TEST_F(Messages, EscapeChangesNothing) {
  const struct {
    Buttons buttons;
    Answer escaped;
  } cases[] = {
      {Buttons::Ok, Answer::Ok}, {Buttons::OkCancel, Answer::Cancel}, {Buttons::YesNo, Answer::No}};
  for (const auto& c : cases) {
    WhenShown(Qt::Key_Escape);
    EXPECT_EQ(MsgBox(u"Delete?"_s, MessageKind::Question, c.buttons), c.escaped);
  }
}

TEST_F(Messages, AFaultInAnEventHandlerIsReportedBeforeTheEnd) {
  int code = 0;
  SetExitHandler([&code](int given) { code = given; });
  QPushButton button;
  QObject::connect(&button, &QPushButton::clicked, &button, [] {
    Guarded("frmtest", "cmdtest_Click", [] { throw Error(error_number::kSubscript, u"Lost"_s); });
  });
  button.show();
  QString text;
  WhenShown(Qt::Key_Return, [&text](const QMessageBox& box) { text = box.text(); });
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(code, 3);
  EXPECT_TRUE(text.contains(u"frmtest -> cmdtest_Click -> ")) << text.toStdString();
  EXPECT_TRUE(text.contains(u"9: Lost"));
}

class Failures : public ::testing::Test {
 protected:
  void Show(std::vector<FailureRow> rows) {
    dialog_.SetFailures({u"These:"_s, std::move(rows)});
    dialog_.show();
    dialog_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog_));
    Table()->setFocus();
  }
  QTableView* Table() { return dialog_.findChild<QTableView*>(u"ListView1"_s); }
  QString Copied(Qt::Key key = Qt::Key_C) {
    QApplication::clipboard()->clear();
    QTest::keyClick(Table(), key, Qt::ControlModifier);
    return QApplication::clipboard()->text();
  }
  frmerror dialog_;
};

TEST_F(Failures, AreCopiedAsTheyAreSeen) {
  Show({{u"/b/z.jpg"_s, u"Gone"_s}, {u"/a/ä.jpg"_s, u"Broken"_s}, {u"/c/a.jpg"_s, u"Again"_s}});
  Table()->setCurrentIndex(QModelIndex());
  EXPECT_EQ(Copied(), QString());
  // Chosen from the end, copied from the top.
  for (const int row : {2, 0})
    Table()->selectionModel()->select(Table()->model()->index(row, 0),
                                      QItemSelectionModel::Select | QItemSelectionModel::Rows);
  for (const Qt::Key key : {Qt::Key_C, Qt::Key_Insert})
    EXPECT_EQ(Copied(key), u"/b/z.jpg\tGone\n/c/a.jpg\tAgain"_s);
}

TEST_F(Failures, OneFileIsOneLineOfTheCopy) {
  Show({{u"/a/two\nlines\"\t.jpg"_s, u"Gone"_s}});
  Table()->selectAll();
  EXPECT_EQ(Copied(), u"\"/a/two\nlines\"\"\t.jpg\"\tGone"_s);
}

class BusyCover : public ::testing::Test {
 protected:
  BusyCover() {
    panes_ = new QSplitter;
    panes_->addWidget(edit_ = new QLineEdit);
    panes_->addWidget(button_ = new QPushButton(u"Go"_s));
    window_.resize(600, 400);
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(new QLabel(u"Above"_s));
    column->addWidget(panes_, 1);
    label_ = new BusyLabel(busy_, panes_);
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
    QObject::connect(button_, &QPushButton::clicked, button_, [this] { ++clicks_; });
  }
  /// As the system would: to whatever lies on top.
  void ClickButton() {
    const QPoint at = button_->mapTo(&window_, button_->rect().center());
    QWidget* top = window_.childAt(at);
    ASSERT_NE(top, nullptr);
    QTest::mouseClick(top, Qt::LeftButton, {}, top->mapFrom(&window_, at));
  }
  bool StripIsShown() { return window_.findChild<QWidget*>(u"busystrip"_s)->isVisible(); }

  Busy busy_;
  QWidget window_;
  QSplitter* panes_;
  QLineEdit* edit_;
  QPushButton* button_;
  BusyLabel* label_;
  int clicks_ = 0;
};

TEST_F(BusyCover, KeepsTheUserOutWhileWorkIsUnderWay) {
  edit_->setFocus();
  const QRect before = button_->geometry();
  {
    BusyRun run(busy_, u"Loading Photos..."_s);
    EXPECT_EQ(panes_->count(), 2);
    EXPECT_EQ(button_->geometry(), before);
    ClickButton();
    QTest::keyClicks(edit_, u"typed"_s);
    EXPECT_EQ(label_->geometry(), panes_->geometry());
    window_.resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(label_->geometry(), panes_->geometry());
    EXPECT_FALSE(StripIsShown());
  }
  EXPECT_EQ(clicks_, 0);
  EXPECT_EQ(edit_->text(), QString());
  ClickButton();
  QTest::keyClicks(edit_, u"typed"_s);
  EXPECT_EQ(clicks_, 1);
  EXPECT_EQ(edit_->text(), u"typed"_s);
}

TEST_F(BusyCover, SaysWhatTakesLong) {
  std::optional<BusyRun> run(std::in_place, busy_, u"Loading Photos..."_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return StripIsShown(); }, kPatience));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        run->Progress(1, 4);
        return window_.findChild<QProgressBar*>()->value() == 25;
      },
      kPatience));
  run.reset();
  EXPECT_FALSE(label_->isVisible());
  // A run within a run: the cover stays until the outer one ends.
  BusyRun outer(busy_, u"Outer"_s);
  { BusyRun inner(busy_, u"Inner"_s); }
  EXPECT_TRUE(label_->isVisible());
  EXPECT_FALSE(StripIsShown());
  busy_.Refuse();
  EXPECT_TRUE(StripIsShown());
}

}  // namespace
}  // namespace zqm
