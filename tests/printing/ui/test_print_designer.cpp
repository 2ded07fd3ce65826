// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <set>

#include "imaging/ui/image_x.h"
#include "printing/print_text.h"
#include "printing/ui/frmname.h"
#include "printing/ui/frmtemplate.h"
#include "shell/messages.h"
#include "tests/support/mnemonics.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"
#include "tests/support/when_open.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using Ids = std::vector<int>;

class PrintDesigner : public ::testing::Test {
 protected:
  PrintDesigner() {
    folders_.DocumentsPath = scratch_.Path("Documents");
    folders_.AppDataPath = scratch_.Path("AppData");
    QDir().mkpath(folders_.StateFolder());
    message_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons buttons) {
      told_.append(text);
      return buttons == Buttons::Ok ? Answer::Ok : answer_;
    });
    Open();
  }
  ~PrintDesigner() override { SetMessageHandler(message_); }

  void Open() {
    window_ = std::make_unique<frmtemplate>(folders_);
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  }
  QString Folder() const { return folders_.PrintingTemplatesFolder(); }
  template <class Widget>
  Widget* Find(const char* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  ImageX& Surface() { return *Find<ImageX>("ImageX1"); }
  const VectorObjects& Objects() { return Surface().Objects(); }
  QRectF Box(int id) { return Objects().Find(id)->Box(); }
  void Click(const char* name) {
    auto* button = Find<QAbstractButton>(name);
    EXPECT_TRUE(button->isEnabled()) << name;
    button->click();
  }
  void Enter(const char* field, const QString& text) { Find<QLineEdit>(field)->setText(text); }
  QString Text(const char* field) { return Find<QLineEdit>(field)->text(); }
  QString Label(const char* name) { return Find<QLabel>(name)->text(); }
  QStringList Fields() { return {Text("Text5"), Text("Text6"), Text("Text7"), Text("Text8")}; }
  int Add(const QRectF& place) {
    Click("Command2");
    const int id = Surface().SelectedObjects().front();
    VectorObject box = *Objects().Find(id);
    box.left = place.x();
    box.top = place.y();
    box.width = place.width();
    box.height = place.height();
    VectorObjects objects = Objects();
    objects.Replace(box);
    Surface().SetObjects(objects);
    Q_EMIT Surface().OnObjectMoved(id);
    return id;
  }
  void Select(const Ids& ids) {
    Surface().DeselectAllObjects();
    for (const int id : ids)
      Surface().SelectObject(id, true);
  }
  /// Under a name, as it is typed into the window that asks for it.
  void SaveAs(const QString& name) {
    const auto naming = test::WhenOpen<frmname>(*window_, [&](frmname& dialog) {
      dialog.findChild<QLineEdit*>(u"Text1"_s)->setText(name);
      dialog.findChild<QPushButton*>(u"Command1"_s)->click();
      if (dialog.isVisible()) dialog.reject();
    });
    Click("Command12");
  }
  QPoint At(QPointF pixel) { return Surface().FromBitmap(pixel).toPoint(); }
  static void Move(QWidget* view, QPoint at) {
    QMouseEvent event(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                      {});
    QCoreApplication::sendEvent(view, &event);
  }
  QStringList Told() { return std::exchange(told_, {}); }

  test::Scratch scratch_;
  SessionFolders folders_;
  std::unique_ptr<frmtemplate> window_;
  QStringList told_;
  Answer answer_ = Answer::No;
  MessageHandler message_;
};

TEST_F(PrintDesigner, PresetsLandToThePixel) {
  struct Case {
    const char* label;
    QPointF one, block;
  };
  // An A4 sheet of 826 x 1169; one box of 100 x 60, a block of 300 x 200.
  const Case cases[] = {
      {"Label44", {363, 554.5}, {263, 484.5}},
      {"Label45", {726, 0}, {526, 0}},
      {"Label46", {0, 0}, {0, 0}},
      {"Label47", {0, 1109}, {0, 969}},
      {"Label48", {726, 1109}, {526, 969}},
      {"Label49", {363, 0}, {263, 0}},
      {"Label50", {0, 554.5}, {0, 484.5}},
      {"Label51", {726, 554.5}, {526, 484.5}},
      {"Label52", {363, 1109}, {263, 969}},
  };
  const int one = Add({400, 300, 100, 60});
  const int a = Add({120, 250, 100, 60}), b = Add({20, 210, 60, 200}), c = Add({300, 330, 20, 20});
  for (const Case& each : cases) {
    Select({one});
    Click(each.label);
    EXPECT_TRUE(Box(one) == QRectF(each.one, QSizeF(100, 60))) << each.label;
    EXPECT_EQ(Text("Text7"), MeasureOfPixels(each.one.x()).Text(Unit::Millimetres));
    Select({a, b, c});
    Click(each.label);
    const QPointF moved = each.block - QPointF(20, 210);
    EXPECT_TRUE(Box(a) == QRectF(120, 250, 100, 60).translated(moved)) << each.label;
    EXPECT_TRUE(Box(b) == QRectF(20, 210, 60, 200).translated(moved)) << each.label;
    EXPECT_TRUE(Box(c) == QRectF(300, 330, 20, 20).translated(moved)) << each.label;
  }
  Select({});
  EXPECT_FALSE(Find<QPushButton>("Label44")->isEnabled());
}

TEST_F(PrintDesigner, SwitchingTheUnitNeverDrifts) {
  EXPECT_EQ(Label("lblpaper"), u"Current paper size : 210 x 297 mm");
  Enter("Text1", u"101.337"_s);
  Enter("Text2", u"200"_s);
  Add({33.337, 10, 77.7, 100});
  Enter("Text6", u"33.337"_s);
  const VectorObjects before = Objects();
  for (int i = 0; i < 100; ++i) {
    Click("Option2");
    Click("Option1");
  }
  EXPECT_EQ(Objects(), before);
  EXPECT_EQ(Text("Text1") + u' ' + Text("Text2"), u"101.34 200"_s);
  EXPECT_EQ(Fields(), (QStringList{u"19.74"_s, u"33.34"_s, u"8.47"_s, u"2.54"_s}));
  Click("Option2");
  EXPECT_EQ(Text("Text1") + u' ' + Text("Text2"), u"3.99 7.87"_s);
  EXPECT_EQ(Fields(), (QStringList{u"0.78"_s, u"1.31"_s, u"0.33"_s, u"0.1"_s}));
  EXPECT_EQ(Label("lblleastwidth"), u"Minimum Width  = 3 inches");
  EXPECT_EQ(Label("lblleastheight"), u"Minimum Height = 5 inches");
  EXPECT_EQ(Label("Text9"), u"inches");
  // What is no number stays as it is.
  Enter("Text2", QString());
  Enter("Text8", u"top"_s);
  Click("Option1");
  EXPECT_EQ(Text("Text2") + Text("Text8"), u"top"_s);
}

TEST_F(PrintDesigner, TypedMeasuresMoveTheBoxAndShownOnesDont) {
  EXPECT_FALSE(Find<QLineEdit>("Text5")->isEnabled());
  const int a = Add({33.337, 10.01, 77.777, 100}), b = Add({50, 60, 70, 80});
  const VectorObjects before = Objects();
  Select({a});
  EXPECT_EQ(Label("Label13"), QString::number(a));
  Select({b, a});
  EXPECT_EQ(Label("Label13"), QString::number(b));  // selected first
  Click("Command7");
  Click("Command8");
  EXPECT_EQ(Fields().join(QString()), u""_s);
  EXPECT_EQ(Label("Label13"), u"");
  EXPECT_EQ(Objects(), before);
  Select({b});
  for (const QString& passedOver : {u""_s, u"0"_s, u"wide"_s, u"-"_s})
    for (const char* field : {"Text5", "Text6", "Text7", "Text8"})
      Enter(field, passedOver);
  EXPECT_EQ(Objects(), before);
  QTest::keyClick(Find<QLineEdit>("Text5"), Qt::Key_Return);
  EXPECT_EQ(Fields(), (QStringList{u"17.78"_s, u"20.32"_s, u"12.7"_s, u"15.24"_s}));
  Enter("Text5", u"50.8"_s);
  Enter("Text6", u"25.4"_s);
  Click("Option2");
  Enter("Text7", u"1.5"_s);
  Enter("Text8", u"-0.25"_s);
  EXPECT_TRUE(Box(b) == QRectF(150, -25, 200, 100));
  EXPECT_TRUE(Box(a) == before.Find(a)->Box());
}

TEST_F(PrintDesigner, ACommaIsTheSeparatorWhereItIs) {
  const test::ScopedLocale austria("de_AT");
  Open();
  const int id = Add({10, 10, 100, 100});
  Enter("Text5", u"50,8"_s);
  EXPECT_EQ(Box(id).width(), 200);
  Enter("Text5", u"25.4"_s);
  EXPECT_EQ(Box(id).width(), 200);
  EXPECT_EQ(Label("lblleastwidth"), u"Minimum Width  = 76,2 mm");
  auto* width = Find<QLineEdit>("Text1");
  width->clear();
  QTest::keyClicks(width, u"-7a6.,1,9"_s);
  EXPECT_EQ(width->text(), u"76,19");
  Click("Command1");
  EXPECT_EQ(Told(), QStringList{u"Paper width should be at least 76,2 mm."_s});
  Enter("Text1", u"76,2"_s);
  Enter("Text2", u"127,5"_s);
  Click("Command1");
  EXPECT_EQ(Told(), QStringList());
  EXPECT_EQ(Label("lblpaper"), u"Current paper size : 76,2 x 127,5 mm");
}

TEST_F(PrintDesigner, PaperThatCantBeIsRefusedInOrder) {
  struct Case {
    const char* unit;
    QString width, height;
    const char16_t* told;
  };
  const Case cases[] = {
      {"Option1", {}, {}, print_text::kInvalidWidth},
      {"Option1", u"0"_s, u"50"_s, print_text::kInvalidWidth},
      {"Option1", u"."_s, u"50"_s, print_text::kInvalidWidth},
      {"Option1", u"50"_s, u"0"_s, print_text::kInvalidHeight},
      {"Option1", u"76.1"_s, u"126"_s, u"Paper width should be at least 76.2 mm."},
      {"Option1", u"76.2"_s, u"126.9"_s, u"Paper height should be at least 127 mm."},
      {"Option2", u"2.9"_s, u"4"_s, u"Paper width should be at least 3 inches."},
      {"Option2", u"3"_s, u"4.9"_s, u"Paper width should be at least 5 inches."},
  };
  Add({10, 10, 100, 100});
  const VectorObjects before = Objects();
  for (const Case& each : cases) {
    Click(each.unit);
    Enter("Text1", each.width);
    Enter("Text2", each.height);
    Click("Command1");
    EXPECT_EQ(Told(), QStringList{QString::fromUtf16(each.told)}) << &each - cases;
  }
  EXPECT_EQ(Label("lblpaper"), u"Current paper size : 210 x 297 mm");
  Enter("Text2", u"5"_s);
  QTest::keyClick(Find<QLineEdit>("Text2"), Qt::Key_Return);
  EXPECT_EQ(Label("lblpaper"), u"Current paper size : 3 x 5 in.");
  EXPECT_EQ(Surface().Zoom(), 100);  // as small a sheet isn't made smaller
  EXPECT_EQ(Objects(), before);
  Click("Label48");
  EXPECT_TRUE(Box(1) == QRectF(200, 400, 100, 100));
}

TEST_F(PrintDesigner, ASheetKeepsItsPixelsUnlessAnotherIsTyped) {
  Click("Option2");
  EXPECT_EQ(Text("Text1") + u' ' + Text("Text2"), u"8.27 11.69"_s);
  Click("Command1");
  Add({10, 10, 100, 100});
  SaveAs(u"Mine"_s);
  const auto sheet = [&] { return LoadTemplate(Folder(), u"Mine"_s)->sheet; };
  EXPECT_TRUE(sheet() == QSize(826, 1169));
  Open();
  window_->EditTemplate(u"Mine"_s, *LoadTemplate(Folder(), u"Mine"_s));
  Click("Command1");
  Click("Command11");
  EXPECT_TRUE(sheet() == QSize(826, 1169));
  // A paper that was typed is set by saving, or refused there.
  Told();
  Enter("Text1", u"50"_s);
  Click("Command11");
  EXPECT_EQ(Told(), QStringList{u"Paper width should be at least 76.2 mm."_s});
  EXPECT_TRUE(sheet() == QSize(826, 1169));
  Enter("Text1", u"150.0"_s);
  Click("Command11");
  EXPECT_EQ(Told(), QStringList{u"The template has been saved."_s});
  EXPECT_TRUE(sheet() == QSize(590, 1169));
}

TEST_F(PrintDesigner, OnlyWhatLiesOnThePaperIsSaved) {
  EXPECT_FALSE(Find<QPushButton>("Command11")->isEnabled());
  Click("Command12");
  EXPECT_EQ(Told(), QStringList{QString::fromUtf16(print_text::kNoBoxes)});
  Add({10, 10, 100, 100});
  Enter("Text5", u"100"_s);
  for (const QString& left : {u"110.06"_s, u"-0.02"_s}) {
    Enter("Text7", left);
    Click("Command12");
    EXPECT_EQ(Told(), QStringList{QString::fromUtf16(print_text::kOutsidePaper)})
        << left.toStdString();
  }
  Enter("Text7", u"110.04"_s);
  SaveAs(u"edge"_s);
  EXPECT_EQ(Told(), QStringList{u"The template has been saved."_s});
}

TEST_F(PrintDesigner, ATemplateIsTheSameHoweverOftenItIsSavedAndEdited) {
  QStringList names;
  const auto listen = [&] {
    QObject::connect(window_.get(), &frmtemplate::TemplateSaved,
                     [&](const QString& name) { names.append(name); });
  };
  listen();
  for (int i = 0; i < 4; ++i)
    Add({10.0 + i, 20, 100, 77.7});
  Select({2});
  Click("Command4");
  Select({4});
  Click("Command5");
  EXPECT_EQ(Label("lblcount"), u"No of picture box : 3");
  SaveAs(u" Grüße 10 x 15 "_s);
  const QString objects = TemplateObjectsFile(Folder(), u"Grüße 10 x 15"_s);
  const QString record = TemplateRecordFile(Folder(), u"Grüße 10 x 15"_s);
  const QByteArray saved = test::Scratch::Read(objects);
  const QByteArray head("\x3A\x03\0\0\x91\x04\0\0", 8);
  EXPECT_EQ(test::Scratch::Read(record), head + QByteArray(",1,,3,,4,").leftJustified(1000, ' '));

  const auto loaded = LoadTemplate(Folder(), u"Grüße 10 x 15"_s);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->objects, Objects());
  Open();
  listen();
  window_->EditTemplate(u"Grüße 10 x 15"_s, *loaded);
  EXPECT_EQ(Objects(), loaded->objects);
  EXPECT_EQ(Label("lblpaper"), u"Current paper size : 209.8 x 296.93 mm");
  Click("Command11");
  EXPECT_EQ(test::Scratch::Read(objects), saved);
  EXPECT_EQ(test::Scratch::Read(record), head + QByteArray(",1,,3,,4,").leftJustified(1000, ' '));
  Add({5, 5, 50, 50});
  SaveAs(u"other"_s);
  EXPECT_EQ(test::Scratch::Read(objects), saved);
  EXPECT_EQ(LoadTemplate(Folder(), u"other"_s)->ids, (Ids{1, 3, 4, 5}));
  EXPECT_EQ(names, (QStringList{u"Grüße 10 x 15"_s, u"Grüße 10 x 15"_s, u"other"_s}));
}

TEST_F(PrintDesigner, NamesAreCheckedAndNothingIsOverwrittenUnasked) {
  Add({10, 10, 100, 100});
  SaveAs(u"Mine"_s);
  const QByteArray standing = test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s));
  const QString notes = scratch_.Write("Documents/Zolmira/QM/printing_templates/notes.txt", "x");
  Add({300, 10, 100, 100});
  Told();
  const QString exists =
      u"A template with the name you entered already exists.\nDo you want to overwrite it?"_s;
  for (const QString& name : {u"  "_s, u"a:b"_s, u"Mine"_s, u"mINE"_s, u"notes"_s})
    SaveAs(name);
  EXPECT_EQ(Told(), (QStringList{u"Invalid template name."_s,
                                 u"A filename cannot contain any of the following characters:\n"
                                 u"\\ / : * ? \" < > |"_s,
                                 exists, exists, exists}));
  EXPECT_EQ(test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s)), standing);
  EXPECT_EQ(test::Scratch::Read(notes), "x");
  answer_ = Answer::Yes;
  SaveAs(u"mINE"_s);
  EXPECT_EQ(LoadTemplate(Folder(), u"Mine"_s)->objects, Objects());
  EXPECT_FALSE(QFile::exists(TemplateObjectsFile(Folder(), u"mINE"_s)));
}

TEST_F(PrintDesigner, WhatCantBeWrittenIsSaidAndKept) {
  // A file stands where the folder would be.
  const QString way = scratch_.Write("Documents/Zolmira/QM/printing_templates", "in the way");
  Add({10, 10, 100, 100});
  SaveAs(u"Mine"_s);
  ASSERT_EQ(told_.size(), 1);
  EXPECT_TRUE(Told().first().startsWith(u"Mine.iev: "_s));
  EXPECT_FALSE(Find<QPushButton>("Command11")->isEnabled());
  ASSERT_TRUE(QFile::remove(way));
  SaveAs(u"Mine"_s);
  const QByteArray standing = test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s));
  // No record can be written where a folder stands.
  const QString record = TemplateRecordFile(Folder(), u"Mine"_s);
  ASSERT_TRUE(QFile::remove(record) && QDir().mkpath(record));
  Add({300, 10, 100, 100});
  Told();
  Click("Command11");
  ASSERT_EQ(told_.size(), 1);
  EXPECT_TRUE(Told().first().startsWith(u"Mine.txt: "_s));
  EXPECT_EQ(test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s)), standing);
  EXPECT_EQ(Objects().Count(), 2);
  answer_ = Answer::Yes;
  window_->close();
  EXPECT_TRUE(window_->isVisible());
  ASSERT_TRUE(QDir().rmdir(record));
  window_->close();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(LoadTemplate(Folder(), u"Mine"_s)->ids.size(), 2u);
}

TEST_F(PrintDesigner, AFullDiskKeepsTheOldTemplateAndTheWork) {
  ASSERT_TRUE(QDir().mkpath(Folder()));
  const test::SmallDisk disk(Folder());
  if (!disk.IsMounted()) GTEST_SKIP() << "no file system can be mounted here";
  Add({10, 10, 100, 100});
  SaveAs(u"Mine"_s);
  const QByteArray standing = test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s));
  QFile filler(Folder() + u"/filler"_s);
  ASSERT_TRUE(filler.open(QFile::WriteOnly | QFile::Unbuffered));
  while (filler.write(QByteArray(4096, 'f')) == 4096) {
  }
  Add({300, 10, 100, 100});
  Told();
  Click("Command11");
  EXPECT_EQ(Told().join(u'\n').left(9), u"Mine.iev:");
  EXPECT_EQ(test::Scratch::Read(TemplateObjectsFile(Folder(), u"Mine"_s)), standing);
  EXPECT_TRUE(LoadTemplate(Folder(), u"Mine"_s));
  ASSERT_TRUE(filler.remove());
  Click("Command11");
  EXPECT_EQ(LoadTemplate(Folder(), u"Mine"_s)->ids.size(), 2u);
}

TEST_F(PrintDesigner, ClosingAsksOnlyForWhatWouldBeLost) {
  window_->close();
  Open();
  Add({10, 10, 100, 100});
  SaveAs(u"Mine"_s);
  Told();
  window_->close();
  EXPECT_EQ(Told(), QStringList());
  Open();
  window_->EditTemplate(u"Mine"_s, *LoadTemplate(Folder(), u"Mine"_s));
  Enter("Text1", u"150"_s);
  Click("Command1");
  answer_ = Answer::No;
  window_->close();
  EXPECT_EQ(Told(), QStringList{u"Save changes to the template?"_s});
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(LoadTemplate(Folder(), u"Mine"_s)->sheet.width(), 826);
}

TEST_F(PrintDesigner, TheMouseAndKeysMoveSizeAndRemove) {
  const int a = Add({100, 100, 200, 100}), b = Add({500, 100, 100, 100});
  QWidget* view = Surface().viewport();
  QTest::mousePress(view, Qt::LeftButton, {}, At({200, 150}));
  Move(view, At({200, 600}));
  // Told in the middle of the drag.
  EXPECT_EQ(Label("Label13"), QString::number(a));
  EXPECT_NEAR(Box(a).top(), 550, 2);
  EXPECT_EQ(Text("Text8"), MeasureOfPixels(Box(a).top()).Text(Unit::Millimetres));
  QTest::mouseRelease(view, Qt::LeftButton, {}, At({200, 600}));
  Surface().setFocus();
  const double top = Box(a).top();
  QTest::keyClick(&Surface(), Qt::Key_Down);
  EXPECT_EQ(Box(a).top(), top + 1);
  EXPECT_EQ(Text("Text8"), MeasureOfPixels(top + 1).Text(Unit::Millimetres));
  Click("Check1");
  QTest::mousePress(view, Qt::LeftButton, {}, At(Box(a).bottomRight()));
  Move(view, At(Box(a).bottomRight() + QPointF(100, 10)));
  QTest::mouseRelease(view, Qt::LeftButton, {}, At(Box(a).bottomRight() + QPointF(100, 10)));
  EXPECT_GT(Box(a).width(), 280);
  EXPECT_NEAR(Box(a).width() / Box(a).height(), 2, 0.01);
  QTest::keyClick(&Surface(), Qt::Key_Delete);
  EXPECT_EQ(Objects().Ids(), Ids{b});
  EXPECT_EQ(Label("lblcount"), u"No of picture box : 1");
  Click("Command3");
  EXPECT_EQ(Told(), QStringList{QString::fromUtf16(print_text::kRemoveAll)});
  EXPECT_EQ(Objects().Count(), 1);
  answer_ = Answer::Yes;
  Click("Command3");
  EXPECT_TRUE(Objects().IsEmpty());
  EXPECT_EQ(Label("lblcount"), u"No of picture box : 0");
}

TEST_F(PrintDesigner, BoxesTakeTheColourThatIsPickedFromThePalette) {
  auto* palette = Find<PictureView>("ImageX2");
  QWidget* view = palette->viewport();
  EXPECT_EQ(Label("Text17"), u"255,202,16");
  Move(view, view->rect().center());
  EXPECT_EQ(Label("Text17"), u"255,202,16");  // not pressed
  const QImage colours(scratch_.Path("AppData/Zolmira/QM/Palette.png"));
  ASSERT_FALSE(colours.isNull());
  const auto text = [&](int x, int y) {
    const QColor colour = colours.pixelColor(x, y);
    return u"%1,%2,%3"_s.arg(colour.red()).arg(colour.green()).arg(colour.blue());
  };
  QTest::mousePress(view, Qt::LeftButton, {}, palette->FromBitmap({300, 100}).toPoint());
  EXPECT_EQ(Label("Text17"), text(300, 100));
  Move(view, {9999, 9999});
  EXPECT_EQ(Label("Text17"), text(colours.width() - 1, colours.height() - 1));
  QTest::mouseRelease(view, Qt::LeftButton, {}, {5, 5});
  Click("Command2");
  EXPECT_EQ(Objects().GetObjectProperty(1, u"BRUSHCOLOR"), Label("Text17"));
}

TEST_F(PrintDesigner, BoxesOfOneColourDontRunIntoOneAnother) {
  Add({100, 100, 200, 200});
  Add({200, 100, 300, 200});
  Select({});
  const QImage seen = Surface().viewport()->grab().toImage();
  const auto colours = [&](double from, double to) {
    std::set<QRgb> found;
    for (int x = At({from, 250}).x(); x <= At({to, 250}).x(); ++x)
      found.insert(seen.pixel(x, At({from, 250}).y()));
    return found.size();
  };
  EXPECT_EQ(colours(320, 340), 1u);
  EXPECT_GT(colours(190, 210), 1u);
}

TEST_F(PrintDesigner, NoLetterLeadsToTwoPlaces) {
  QStringList letters = test::Mnemonics(*window_);
  EXPECT_GT(letters.size(), 15);
  EXPECT_EQ(letters.removeDuplicates(), 0) << letters.join(u' ').toStdString();
}

}  // namespace
}  // namespace zqm
