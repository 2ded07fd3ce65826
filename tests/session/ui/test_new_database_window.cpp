// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "session/ui/frmnewdb.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class NewDatabaseWindow : public test::HomeTest {
 protected:
  NewDatabaseWindow() {
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }
  void Create(const QString& name) {
    edit_->setText(name);
    QTest::keyClick(edit_, Qt::Key_Return);
  }

  frmnewdb window_{session_->Folders()};
  QLineEdit* edit_ = window_.findChild<QLineEdit*>(u"Text1"_s);
};

/// Watches what the window shows while the catalogue is made.
struct Watcher : QObject {
  frmnewdb& window;
  QStringList seen;
  explicit Watcher(frmnewdb& watched) : window(watched) {
    window.findChild<QPushButton*>(u"cmdok"_s)->installEventFilter(this);
  }
  bool eventFilter(QObject* button, QEvent* event) override {
    if (event->type() != QEvent::EnabledChange || static_cast<QWidget*>(button)->isEnabled())
      return false;
    QTimer::singleShot(0, this, [this] {
      seen.append(window.findChild<QLabel*>(u"Label3"_s)->text());
      EXPECT_FALSE(window.close());
    });
    return false;
  }
};

TEST_F(NewDatabaseWindow, MakesACatalogueAndCloses) {
  Watcher watcher(window_);
  Create(u"Jörg's"_s);
  EXPECT_EQ(watcher.seen, QStringList{u"Creating new database. Please wait..."_s});
  EXPECT_EQ(messages_, QStringList{u"The new database was successfully created.\nPlease restart "
                                   u"Zolmira QM to load your new database."_s});
  EXPECT_EQ(window_.result(), QDialog::Accepted);
  EXPECT_FALSE(window_.isVisible());
  EXPECT_EQ(session_->CatalogueNames(), (QStringList{u"Jörg's.mdb"_s, u"Zolmira QM.mdb"_s}));
  EXPECT_EQ(GetFileName(session_->ActiveCatalogue().Path()), u"Zolmira QM.mdb"_s);
}

TEST_F(NewDatabaseWindow, SaysWhatIsWrongWithAName) {
  const QStringList before = session_->CatalogueNames();
  const struct {
    const char16_t *name, *message;
  } refused[] = {
      {u"", u"Enter the name of the new database."},
      {u"a/b", u" File name cannot contain the following characters: \\ / : * ? \" < > |"},
      {u"zolmira qm",
       u"A database with the name you specified already exists. Specify a different name."},
  };
  for (const auto& [name, message] : refused) {
    Create(QString::fromUtf16(name));
    EXPECT_EQ(messages_.last(), QString::fromUtf16(message));
    EXPECT_EQ(edit_->text(), QString::fromUtf16(name));
  }
  // What the disk refuses is told as well.
  QFile::remove(session_->Folders().MasterFolder() + u"/Zolmira QM.mdb"_s);
  Create(u"Fine"_s);
  EXPECT_EQ(messages_.size(), 4);
  EXPECT_FALSE(messages_.last().isEmpty());
  EXPECT_EQ(session_->CatalogueNames(), before);
  EXPECT_TRUE(window_.isVisible() && edit_->isEnabled() && edit_->hasFocus());
  EXPECT_FALSE(window_.findChild<QLabel*>(u"Label3"_s)->text().contains(u"Creating"_s));
}

}  // namespace
}  // namespace zqm
