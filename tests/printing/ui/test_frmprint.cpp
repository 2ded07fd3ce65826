// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPrinter>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "imaging/ui/picture_view.h"
#include "printing/page_plan.h"
#include "printing/standard_templates.h"
#include "printing/ui/frmname.h"
#include "printing/ui/frmprint.h"
#include "printing/ui/frmtemplate.h"
#include "printing/ui/sheet_picture.h"
#include "shell/messages.h"
#include "shell/ui/frmerror.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "tests/support/when_open.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class PrintWindow : public ::testing::Test {
 protected:
  PrintWindow() {
    folders_.DocumentsPath = folders_.AppDataPath = scratch_.Path();
    for (const StandardTemplate& standard : StandardTemplates())
      if (!SaveTemplate(folders_.PrintingTemplatesFolder(), standard.name, standard.layout))
        std::abort();
    messages_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons buttons) {
      told_.append(text);
      return buttons == Buttons::YesNo ? question_ : Answer::Ok;
    });
    picks_ = SetPickHandler([this](const PickRequest&) { return pdf_; });
    window_ = std::make_unique<frmprint>(QStringList(5, photo_), PictureSettings(), folders_);
    UsePaper(QPageLayout::Portrait);
  }
  ~PrintWindow() override {
    SetMessageHandler(messages_);
    SetPickHandler(picks_);
  }

  void UsePaper(QPageLayout::Orientation orientation) {
    window_->SetPrinterDialog([orientation](QPrinter& printer, QWidget*) {
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setPageSize(QPageSize(QPageSize::A4));
      printer.setPageOrientation(orientation);
      return true;
    });
    Click("Command2");
  }
  void Click(const char* name) {
    window_->findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
  }
  bool IsOn(const char* name) {
    return window_->findChild<QAbstractButton*>(QString::fromLatin1(name))->isEnabled();
  }
  void Select(const QString& name) {
    auto* list = window_->findChild<QListWidget*>(u"List1"_s);
    list->setCurrentItem(list->findItems(name, Qt::MatchExactly).value(0));
  }
  /// Waits for the list of failures; paints meanwhile.
  void CloseFailures(bool& listed) {
    if (auto* list = window_->findChild<frmerror*>()) {
      listed = true;
      list->accept();
    } else {
      QTimer::singleShot(10, window_.get(), [this, &listed] { CloseFailures(listed); });
    }
  }
  QString Caption() { return window_->findChild<QLabel*>(u"Label3"_s)->text(); }
  QString Told() { return told_.isEmpty() ? QString() : told_.takeLast(); }

  /// What the user does in the designer, which a button opens.
  void Design(const char* button, const std::function<void(frmtemplate&)>& body) {
    bool opened = false;
    const auto waiting = test::WhenOpen<frmtemplate>(*window_, [&](frmtemplate& designer) {
      opened = true;
      body(designer);
      designer.close();
    });
    Click(button);
    EXPECT_TRUE(opened);
  }
  QString Selected() {
    const auto items = window_->findChild<QListWidget*>(u"List1"_s)->selectedItems();
    return items.isEmpty() ? QString() : items.first()->text();
  }
  QString File(const QString& name) { return folders_.PrintingTemplatesFolder() + u'/' + name; }

  test::Scratch scratch_;
  SessionFolders folders_;
  test::Scratch out_;
  QString photo_ = out_.Write("photo.jpg", test::SampleJpeg(60, 40));
  QString pdf_ = out_.Path("out.pdf");
  QStringList told_;
  Answer question_ = Answer::Yes;
  MessageHandler messages_;
  PickHandler picks_;
  std::unique_ptr<frmprint> window_;
};

TEST_F(PrintWindow, PagesAreTurnedToTheirEnds) {
  Click("Command12");
  EXPECT_EQ(Told(),
            u"No printing template has been selected.\n"
            u"Select a template from the list and then click on the 'Apply' button.");
  EXPECT_FALSE(IsOn("Command6"));
  Select(u"2 photos A4"_s);
  EXPECT_EQ(Caption(), u"");
  Click("Command6");
  EXPECT_EQ(Caption(), u"Page 1 of 3");
  EXPECT_FALSE(IsOn("Command13") || IsOn("Command10"));
  Click("Command11");
  EXPECT_EQ(Caption(), u"Page 2 of 3");
  Click("Command14");
  EXPECT_EQ(Caption(), u"Page 3 of 3");
  EXPECT_FALSE(IsOn("Command11") || IsOn("Command14"));
  Click("Command10");
  EXPECT_EQ(Caption(), u"Page 2 of 3");
  Click("Command13");
  EXPECT_EQ(Caption(), u"Page 1 of 3");
  // Another template is another beginning.
  Select(u"4 photos A4"_s);
  EXPECT_EQ(Caption(), u"");
  Click("Command12");
  EXPECT_TRUE(Told().startsWith(u"No printing template"));
}

TEST_F(PrintWindow, PaperThatIsTooSmallIsRefused) {
  Select(u"2 photos A4"_s);
  Click("Command6");
  ASSERT_EQ(Caption(), u"Page 1 of 3");
  UsePaper(QPageLayout::Landscape);
  const QString refused = Told();
  EXPECT_TRUE(refused.contains(u"minimum height of 11.49 inches (Landscape mode)"_s));
  EXPECT_EQ(Caption(), u"Page 1 of 3");
  Click("Command12");
  EXPECT_EQ(Told(), refused);
  EXPECT_FALSE(QFile::exists(pdf_));
  EXPECT_EQ(window_->findChild<QLabel*>(u"Label2"_s)->text().left(9), u"Landscape");
  // Also before it is applied, and then it isn't.
  Select(u"4 photos A4"_s);
  UsePaper(QPageLayout::Landscape);
  EXPECT_EQ(Told(), refused);
  Click("Command6");
  EXPECT_EQ(Told(), refused);
  EXPECT_EQ(Caption(), u"");
  UsePaper(QPageLayout::Portrait);
  Click("Command6");
  EXPECT_EQ(Caption(), u"Page 1 of 2");
  EXPECT_TRUE(told_.isEmpty());
}

TEST_F(PrintWindow, PrintsWhatIsAskedFor) {
  Select(u"2 photos A4"_s);
  Click("Command6");
  auto* copies = window_->findChild<QLineEdit*>(u"Text1"_s);
  for (const QString& text : {u"1.5"_s, u"0"_s, u"abc"_s}) {
    copies->setText(text);
    Click("Command12");
    EXPECT_TRUE(Told().startsWith(u"Number of copies to be printed"_s)) << text.toStdString();
  }
  EXPECT_FALSE(QFile::exists(pdf_));
  copies->setText(u"2"_s);
  Click("Command14");
  Click("Command12");
  EXPECT_EQ(Told(), u"You have successfully printed your pictures.");
  EXPECT_EQ(test::Scratch::Read(pdf_).count("/Type /Page\n"), 6);
  EXPECT_EQ(Caption(), u"Page 3 of 3");
  EXPECT_EQ(window_->findChild<QLabel*>(u"lbltarget"_s)->toolTip(), pdf_);
  // The next one asks for another file; called off, nothing is written.
  ASSERT_TRUE(QFile::remove(pdf_));
  pdf_.clear();
  Click("Command12");
  EXPECT_TRUE(told_.isEmpty());
  EXPECT_EQ(out_.Names(), QStringList(u"photo.jpg"_s));
}

TEST_F(PrintWindow, NoFileIsReplacedUnasked) {
  Select(u"2 photos A4"_s);
  Click("Command6");
  const QByteArray photo = test::Scratch::Read(photo_), pdf = "%PDF-1.4 as it was";
  const QString notes = out_.Write("notes.pdf", "my notes");
  out_.Write("out.pdf", pdf);
  const QString standing = std::exchange(pdf_, photo_);
  Click("Command12");
  pdf_ = notes;
  Click("Command12");
  EXPECT_EQ(std::exchange(told_, {}), (QStringList{photo_ + u" exists and is no PDF file."_s,
                                                   notes + u" exists and is no PDF file."_s}));
  EXPECT_EQ(test::Scratch::Read(photo_), photo);
  EXPECT_EQ(test::Scratch::Read(notes), "my notes");
  pdf_ = standing;
  question_ = Answer::No;
  Click("Command12");
  EXPECT_EQ(std::exchange(told_, {}),
            QStringList{pdf_ + u" already exists.\nDo you want to replace it?"_s});
  EXPECT_EQ(test::Scratch::Read(pdf_), pdf);
  question_ = Answer::Yes;
  Click("Command12");
  EXPECT_GT(test::Scratch::Read(pdf_).size(), 1000);
}

TEST_F(PrintWindow, EnterAppliesAndDoesNotPrint) {
  window_->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  Select(u"2 photos A4"_s);
  QTest::keyClick(window_->findChild<QListWidget*>(u"List1"_s), Qt::Key_Return);
  EXPECT_EQ(Caption(), u"Page 1 of 3");
  EXPECT_FALSE(QFile::exists(pdf_));
  EXPECT_TRUE(told_.isEmpty());
}

TEST_F(PrintWindow, CopiesComeFromTheArrowsAndThePrintersDialog) {
  auto* copies = window_->findChild<QLineEdit*>(u"Text1"_s);
  copies->setText(u"7"_s);
  window_->SetPrinterDialog([](QPrinter& printer, QWidget*) {
    EXPECT_EQ(printer.copyCount(), 7);
    printer.setCopyCount(3);
    return true;
  });
  Click("Command2");
  EXPECT_EQ(copies->text(), u"3");
  // What the dialog can't show stays.
  copies->setText(u"5000"_s);
  window_->SetPrinterDialog([](QPrinter&, QWidget*) { return true; });
  Click("Command2");
  EXPECT_EQ(copies->text(), u"5000");
}

TEST_F(PrintWindow, PhotosThatHaveGoneLeaveTheFile) {
  Select(u"2 photos A4"_s);
  Click("Command6");
  ASSERT_TRUE(QFile::remove(photo_));
  // The preview says so in the empty box.
  const QImage sheet = SheetPicture({300, 200}, std::array{QRectF(50, 50, 200, 100)}, {photo_},
                                    kSheetDpi, PictureSettings());
  int ink = 0;
  for (int x = 60; x < 240; ++x)
    for (int y = 60; y < 140; ++y)
      ink += qGray(sheet.pixel(x, y)) < 160 ? 1 : 0;
  EXPECT_GT(ink, 100);
  bool listed = false;
  QTimer::singleShot(0, window_.get(), [&] { CloseFailures(listed); });
  Click("Command12");
  EXPECT_TRUE(listed);
  EXPECT_FALSE(QFile::exists(pdf_));
}

TEST_F(PrintWindow, TemplatesThatGoAreNoLongerListed) {
  Select(u"2 photos A4"_s);
  ASSERT_TRUE(QFile::remove(File(u"2 photos A4.txt"_s)));
  Click("Command6");
  EXPECT_TRUE(Told().startsWith(u"Cannot locate the selected template"_s));
  Click("Command4");
  EXPECT_EQ(Told(), u"The selected template has been deleted.");
  EXPECT_EQ(Told(), u"Delete the selected template?");
  EXPECT_FALSE(QFile::exists(File(u"2 photos A4.iev"_s)));
  const auto* list = window_->findChild<QListWidget*>(u"List1"_s);
  EXPECT_TRUE(list->findItems(u"2 photos A4"_s, Qt::MatchExactly).isEmpty());
}

TEST_F(PrintWindow, DesignedTemplatesAreListedAndSelected) {
  UsePaper(QPageLayout::Landscape);
  const QString paper = window_->findChild<QLabel*>(u"Label2"_s)->text();
  const auto button = [](QWidget& window, const char16_t* name) {
    return window.findChild<QAbstractButton*>(QString::fromUtf16(name));
  };
  Design("Command3", [&](frmtemplate& designer) {
    button(designer, u"Command2")->click();
    const auto naming = test::WhenOpen<frmname>(designer, [&](frmname& name) {
      name.findChild<QLineEdit*>(u"Text1"_s)->setText(u"A new one"_s);
      button(name, u"Command1")->click();
    });
    button(designer, u"Command12")->click();
    EXPECT_EQ(Selected(), u"A new one");
  });
  EXPECT_TRUE(IsOn("Command4") && IsOn("Command6"));
  EXPECT_EQ(window_->findChild<QLabel*>(u"Label2"_s)->text(), paper);
  Select(u"9 photos A4"_s);
  Design("Command5", [&](frmtemplate& designer) {
    EXPECT_EQ(designer.findChild<QLabel*>(u"lblcount"_s)->text(), u"No of picture box : 9");
    button(designer, u"Command2")->click();
    button(designer, u"Command11")->click();
  });
  EXPECT_EQ(Selected(), u"9 photos A4");
  EXPECT_EQ(LoadTemplate(folders_.PrintingTemplatesFolder(), u"9 photos A4"_s)->ids.size(), 10u);
  const auto* list = window_->findChild<QListWidget*>(u"List1"_s);
  EXPECT_EQ(list->findItems(u"9 photos A4"_s, Qt::MatchExactly).size(), 1);
}

TEST_F(PrintWindow, HalfATemplateIsNotEdited) {
  const QString record = File(u"2 photos A4.txt"_s);
  const QByteArray bytes = test::Scratch::Read(record);
  ASSERT_TRUE(QFile::remove(record));
  Select(u"2 photos A4"_s);
  told_.clear();
  Click("Command5");
  EXPECT_EQ(Told(), u"Cannot locate "_s + record +
                        u"\nSome files for the selected template are missing or corrupted."_s);
  QFile file(record);
  ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes.chopped(1)) > 0);
  file.close();
  Click("Command5");
  EXPECT_TRUE(Told().startsWith(u"Some files for the selected template"_s));
  EXPECT_EQ(window_->findChild<frmtemplate*>(), nullptr);
}

}  // namespace
}  // namespace zqm
