// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include "imaging/template_files.h"
#include "imaging/ui/image_x.h"
#include "shell/messages.h"
#include "tests/support/mnemonics.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "watermark/ui/frmwatermarkcreator.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class TemplateCreator : public ::testing::Test {
 protected:
  TemplateCreator() {
    message_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons buttons) {
      messages_.append(text);
      return buttons == Buttons::Ok ? Answer::Ok : answer_;
    });
    pick_ = SetPickHandler([this](const PickRequest& request) {
      filters_ = request.filters;
      return picked_;
    });
    Open();
  }
  ~TemplateCreator() override {
    answer_ = Answer::No;
    SetMessageHandler(message_);
    SetPickHandler(pick_);
  }

  QString Folder() const { return scratch_.Path("templates"); }
  void Open(QSize size = {1000, 600}) {
    Picture photo;
    QImage plain(size, QImage::Format_RGB32);
    plain.fill(Qt::darkGray);
    photo.SetImage(plain);
    window_ = std::make_unique<frmwatermarkcreator>(Folder(), PictureSettings(), photo);
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf16(name));
    EXPECT_NE(widget, nullptr) << QString::fromUtf16(name).toStdString();
    return widget;
  }
  ImageX& Surface() { return *Find<ImageX>(u"ImageX1"); }
  const VectorObjects& Objects() { return Surface().Objects(); }
  void Click(const char16_t* button) {
    auto* found = Find<QPushButton>(button);
    EXPECT_TRUE(found->isEnabled()) << QString::fromUtf16(button).toStdString();
    found->click();
  }
  int NewText(const QString& text = u"Proof"_s) {
    Click(u"Command1");
    Find<QPlainTextEdit>(u"Text1")->setPlainText(text);
    return Surface().SelectedObjects().front();
  }
  int NewImage() {
    picked_ = scratch_.Path("logo.png");
    QImage logo(120, 80, QImage::Format_ARGB32);
    logo.fill(QColor(200, 30, 30, 128));
    EXPECT_TRUE(logo.save(picked_));
    Click(u"Command3");
    return Surface().SelectedObjects().front();
  }
  QString Key(int id, const char16_t* key) { return Objects().GetObjectProperty(id, key); }
  void Select(const std::vector<int>& ids) {
    Surface().DeselectAllObjects();
    for (const int id : ids)
      Surface().SelectObject(id, true);
  }
  /// Saves under a name, as the user does in the window that asks for it.
  void SaveAs(const QString& name, const char16_t* last = u"Command1") {
    QTimer::singleShot(0, window_.get(), [this, name, last] {
      auto* dialog = window_->findChild<QDialog*>(u"frmwatername"_s);
      ASSERT_NE(dialog, nullptr);
      dialog->findChild<QLineEdit*>(u"Text1"_s)->setText(name);
      dialog->findChild<QPushButton*>(u"Command1"_s)->click();
      if (QStringView(last) != u"Command1" || dialog->isVisible())
        dialog->findChild<QPushButton*>(u"cmdcancel"_s)->click();
    });
    Click(u"Command6");
  }
  VectorObjects Saved(const QString& name) {
    const auto file = LoadTemplate(TemplatePath(Folder(), name));
    EXPECT_TRUE(file) << file.Reason().toStdString();
    return file ? file->objects : VectorObjects();
  }
  QPoint At(QPointF pixel) { return Surface().FromBitmap(pixel).toPoint(); }
  void Drag(QPointF from, QPointF by, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* view = Surface().viewport();
    QTest::mousePress(view, Qt::LeftButton, {}, At(from));
    for (const double part : {0.5, 1.0})
      Move(view, At(from + by * part), modifiers);
    QTest::mouseRelease(view, Qt::LeftButton, modifiers, At(from + by));
  }
  static void Move(QWidget* view, QPoint at, Qt::KeyboardModifiers modifiers) {
    QMouseEvent event(QEvent::MouseMove, at, view->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                      modifiers);
    QCoreApplication::sendEvent(view, &event);
  }

  test::Scratch scratch_;
  std::unique_ptr<frmwatermarkcreator> window_;
  QStringList messages_, filters_;
  QString picked_;
  Answer answer_ = Answer::No;
  MessageHandler message_;
  PickHandler pick_;
};

TEST_F(TemplateCreator, WhatIsTypedAndTickedIsOnTheSurfaceAtOnce) {
  EXPECT_EQ(Find<QLabel>(u"Label1")->text(), u"Template Size : 1000 x 600 pixels"_s);
  EXPECT_FALSE(Find<QWidget>(u"Text1")->isEnabled());
  EXPECT_FALSE(Find<QPushButton>(u"Command5")->isEnabled());
  Click(u"Command1");
  const int id = Surface().SelectedObjects().front();
  EXPECT_EQ(Key(id, u"TEXT"), u"Your Text Here"_s);
  EXPECT_EQ(Key(id, u"FONTNAME"), Find<QComboBox>(u"Combo1")->itemText(0));
  QTest::keyClicks(Find<QPlainTextEdit>(u"Text1"), u"Graz"_s);
  EXPECT_EQ(Key(id, u"TEXT"), u"Graz"_s);
  Find<QLineEdit>(u"Text2")->setText(u"64"_s);
  Find<QLineEdit>(u"Text3")->setText(u"-15"_s);
  Find<QLineEdit>(u"Text4")->setText(u"10,20,30"_s);
  Find<QComboBox>(u"Combo1")->setCurrentIndex(Find<QComboBox>(u"Combo1")->count() - 1);
  for (const char16_t* box : {u"Check1", u"Check2", u"Check3", u"Check4"})
    Find<QCheckBox>(box)->click();
  Find<QSlider>(u"Slider1")->setValue(77);
  const std::pair<const char16_t*, QString> keys[] = {
      {u"FONTHEIGHT", u"64"_s},     {u"FONTANGLE", u"-15"_s},
      {u"PENCOLOR", u"10,20,30"_s}, {u"FONTBOLD", u"1"_s},
      {u"FONTITALIC", u"1"_s},      {u"FONTUNDERLINE", u"1"_s},
      {u"FONTSTRIKEOUT", u"1"_s},   {u"TRANSPARENCY", u"77"_s},
      {u"TEXTALIGN", u"2"_s},       {u"FONTNAME", Find<QComboBox>(u"Combo1")->currentText()}};
  for (const auto& [key, value] : keys)
    EXPECT_EQ(Key(id, key), value) << QString::fromUtf16(key).toStdString();
  EXPECT_EQ(Find<QLabel>(u"Text8")->text(), u"77"_s);
  // Cleared fields: no text is a text, no size is none.
  Find<QPlainTextEdit>(u"Text1")->clear();
  Find<QLineEdit>(u"Text2")->clear();
  EXPECT_EQ(Key(id, u"TEXT"), QString());
  EXPECT_EQ(Key(id, u"FONTHEIGHT"), u"64"_s);
  QTest::keyClick(Find<QLineEdit>(u"Text2"), Qt::Key_Return);
  EXPECT_EQ(Find<QLineEdit>(u"Text2")->text(), u"64"_s) << "what the text has, once it is left";
}

TEST_F(TemplateCreator, ThePanelFollowsTheSelectionAndAltersNothingByIt) {
  const int text = NewText(u"one"_s);
  Find<QSlider>(u"Slider1")->setValue(100);
  const int image = NewImage();
  EXPECT_EQ(filters_.isEmpty() ? QString() : filters_.first().left(21), u"All Supported Formats"_s);
  EXPECT_EQ(Key(image, u"WIDTH") + Key(image, u"HEIGHT"), u"12080"_s);
  EXPECT_FALSE(Find<QWidget>(u"Text1")->isEnabled());
  EXPECT_EQ(Find<QSlider>(u"Slider1")->value(), 255);
  const int other = NewText(u"two"_s);
  Surface().SetObjectProperty(other, u"FONTNAME", u"A Font That Nobody Has"_s);
  const VectorObjects before = Objects();
  Select({text});
  EXPECT_EQ(Find<QPlainTextEdit>(u"Text1")->toPlainText(), u"one"_s);
  EXPECT_EQ(Find<QSlider>(u"Slider1")->value(), 100);
  Select({other});
  EXPECT_EQ(Find<QComboBox>(u"Combo1")->currentText(), u"A Font That Nobody Has"_s);
  Surface().SelectObject(text, true);
  EXPECT_EQ(Find<QPlainTextEdit>(u"Text1")->toPlainText(), u"two"_s) << "of several the last";
  Select({text, image});
  EXPECT_FALSE(Find<QWidget>(u"Text2")->isEnabled());
  EXPECT_TRUE(Find<QSlider>(u"Slider1")->isEnabled());
  Select({});
  EXPECT_FALSE(Find<QSlider>(u"Slider1")->isEnabled());
  EXPECT_EQ(Objects(), before);
  Click(u"Command10");
  Find<QSlider>(u"Slider1")->setValue(50);
  for (const int id : Objects().Ids())
    EXPECT_EQ(Key(id, u"TRANSPARENCY"), u"50"_s);
  Click(u"Command11");
  EXPECT_TRUE(Surface().SelectedObjects().empty());
}

TEST_F(TemplateCreator, LayersAreReorderedAndRemoved) {
  const int a = NewText(u"a"_s), b = NewText(u"b"_s), c = NewImage();
  Select({c});
  Click(u"Command7");
  EXPECT_EQ(Objects().Ids(), (std::vector{c, a, b}));
  Select({a});
  Click(u"Command8");
  EXPECT_EQ(Objects().Ids(), (std::vector{c, b, a}));
  Select({a, c});
  Surface().setFocus();
  QTest::keyClick(&Surface(), Qt::Key_Delete);
  EXPECT_EQ(Objects().Ids(), std::vector{b});
  EXPECT_FALSE(Find<QPushButton>(u"Command4")->isEnabled());
  NewText();
  answer_ = Answer::No;
  Click(u"Command9");
  EXPECT_EQ(messages_, QStringList{u"Remove all text/images from the template?"_s});
  EXPECT_EQ(Objects().Count(), 2);
  answer_ = Answer::Yes;
  Click(u"Command9");
  EXPECT_TRUE(Objects().IsEmpty());
  EXPECT_FALSE(Find<QSlider>(u"Slider1")->isEnabled());
  messages_.clear();
  Click(u"Command6");
  EXPECT_EQ(messages_, QStringList{u"The template must contain at least one text or image before "
                                   u"it can be saved."_s});
}

TEST_F(TemplateCreator, ChangesAreTakenBackAndMadeAgain) {
  const int text = NewText(u"ab"_s);
  Find<QLineEdit>(u"Text2")->setText(u"64"_s);
  const VectorObjects typed = Objects();
  Drag(Objects().Find(text)->Outline().boundingRect().center(), {130, 70});
  const VectorObjects moved = Objects();
  ASSERT_NE(moved, typed);
  Click(u"Command4");
  ASSERT_TRUE(Objects().IsEmpty());
  Surface().setFocus();
  QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Objects(), moved);
  Click(u"cmdundo");
  EXPECT_EQ(Objects(), typed);
  Click(u"cmdundo");
  EXPECT_EQ(Key(text, u"FONTHEIGHT") + Key(text, u"TEXT"), u"100ab"_s);
  Click(u"cmdundo");
  EXPECT_EQ(Key(text, u"TEXT"), u"Your Text Here"_s) << "each letter a step";
  for (int i = 0; i < 3; ++i)
    Click(u"cmdredo");
  EXPECT_EQ(Objects(), moved);
  NewImage();
  EXPECT_FALSE(Find<QPushButton>(u"cmdredo")->isEnabled());
}

TEST_F(TemplateCreator, ArrowKeysInARowAreOneStepAndADragIsAnother) {
  const int text = NewText();
  const VectorObjects before = Objects();
  Surface().setFocus();
  for (int i = 0; i < 120; ++i)
    QTest::keyClick(&Surface(), Qt::Key_Right);
  const VectorObjects shifted = Objects();
  Drag(shifted.Find(text)->Outline().boundingRect().center(), {90, 50});
  ASSERT_NE(Objects(), shifted);
  Click(u"cmdundo");
  EXPECT_EQ(Objects(), shifted);
  Click(u"cmdundo");
  EXPECT_EQ(Objects(), before);
}

TEST_F(TemplateCreator, NewLayersBeginOnASmallPhoto) {
  for (const QSize size : {QSize(90, 70), QSize(30, 20)}) {
    Open(size);
    for (int i = 0; i < 5; ++i) {
      const VectorObject& layer = *Objects().Find(NewText());
      EXPECT_TRUE(QRectF(QPointF(), size).contains(QPointF(layer.left, layer.top)))
          << layer.left << ' ' << layer.top;
    }
    answer_ = Answer::No;
  }
}

TEST_F(TemplateCreator, ATemplateIsTheSameHoweverOftenItIsSavedAndEdited) {
  NewText(u"© Ünal's\nمرحبا"_s);
  Find<QLineEdit>(u"Text3")->setText(u"33.3"_s);
  NewImage();
  QStringList told;
  QObject::connect(window_.get(), &frmwatermarkcreator::TemplateSaved,
                   [&](const QString& name) { told.append(name); });
  SaveAs(u" Grüße, Max "_s);
  EXPECT_EQ(messages_, QStringList{u"The template has been saved."_s});
  EXPECT_EQ(Saved(u"Grüße, Max"_s), Objects());
  EXPECT_TRUE(Find<QPushButton>(u"Command5")->isEnabled());

  const VectorObjects first = Objects();
  Open({320, 200});
  window_->EditTemplate(u"Grüße, Max"_s, Saved(u"Grüße, Max"_s));
  EXPECT_EQ(Objects(), first);
  NewText(u"more"_s);
  Click(u"Command5");
  EXPECT_EQ(Saved(u"Grüße, Max"_s), Objects());
  EXPECT_EQ(Objects().Count(), 3);
  SaveAs(u"Other"_s);
  EXPECT_EQ(Saved(u"Other"_s), Objects());
  Find<QSlider>(u"Slider1")->setValue(9);
  Click(u"Command5");
  EXPECT_EQ(Saved(u"Other"_s), Objects());
  EXPECT_NE(Saved(u"Grüße, Max"_s), Objects());
  EXPECT_EQ(told, QStringList{u"Grüße, Max"_s});
}

TEST_F(TemplateCreator, NamesAreCheckedAndNothingIsOverwrittenUnasked) {
  NewText();
  const VectorObjects standing = Objects();
  SaveAs(u"Mine"_s);
  const QString forbidden =
      u"A filename cannot contain any of the following characters:\n\\ / : * ? \" < > |"_s;
  const QString exists =
      u"A template with the name you entered already exists.\nDo you want to overwrite it?"_s;
  NewText(u"second"_s);
  messages_.clear();
  for (const QString& name : {u"  "_s, u"a/b"_s, u"Mine"_s, u"mINE"_s})
    SaveAs(name);
  EXPECT_EQ(messages_, (QStringList{u"Invalid template name."_s, forbidden, exists, exists}));
  EXPECT_EQ(TemplatesName(Folder()), QStringList{u"Mine"_s});
  EXPECT_EQ(Saved(u"Mine"_s), standing);
  answer_ = Answer::Yes;
  SaveAs(u"mINE"_s);
  EXPECT_EQ(TemplatesName(Folder()), QStringList{u"Mine"_s});
  EXPECT_EQ(Saved(u"Mine"_s), Objects());
}

TEST_F(TemplateCreator, DragsSnapUnlessCtrlIsHeldAndKeysNever) {
  const int id = NewImage();
  const VectorObject* image = Objects().Find(id);
  const QPointF middle = image->Box().center();
  const double reach = 4 * 100 / Surface().Zoom();
  Drag(middle, QPointF(-image->left + reach, -image->top - reach));
  EXPECT_EQ(Key(id, u"LEFT") + u","_s + Key(id, u"TOP"), u"0,0"_s);
  Drag({60, 40}, {reach * 1.5, reach * 1.5}, Qt::ControlModifier);
  const double left = Objects().Find(id)->left;
  EXPECT_GT(left, 0);
  Surface().setFocus();
  QTest::keyClick(&Surface(), Qt::Key_Right);
  EXPECT_EQ(Objects().Find(id)->left, left + 1);

  // Broken off, it lies where it lay, near the edge.
  const QPointF centre = Objects().Find(id)->Box().center();
  QWidget* view = Surface().viewport();
  QTest::mousePress(view, Qt::LeftButton, {}, At(centre));
  Move(view, At(centre + QPointF(200, 100)), {});
  EXPECT_NE(Objects().Find(id)->left, left + 1);
  QTest::keyClick(&Surface(), Qt::Key_Escape);
  EXPECT_EQ(Objects().Find(id)->left, left + 1);
  QTest::mouseRelease(view, Qt::LeftButton, {}, At(centre));

  // Sized by its corner: the aspect stays.
  Drag(Objects().Find(id)->Box().bottomRight(), {120, 10});
  const VectorObject* sized = Objects().Find(id);
  EXPECT_GT(sized->width, 130);
  EXPECT_NEAR(sized->width / sized->height, 1.5, 0.01);
}

TEST_F(TemplateCreator, ATextThatIsSizedTellsItsSize) {
  const int id = NewText(u"Wide text"_s);
  Drag(Objects().Find(id)->Box().bottomRight(), {150, 60});
  EXPECT_GT(Objects().Find(id)->fontHeight, 105);
  EXPECT_EQ(Find<QLineEdit>(u"Text2")->text(), Key(id, u"FONTHEIGHT"));
}

TEST_F(TemplateCreator, SymbolsGoWhereTheCursorIs) {
  const int id = NewText(u"ab"_s);
  auto* text = Find<QPlainTextEdit>(u"Text1");
  text->moveCursor(QTextCursor::Start);
  text->moveCursor(QTextCursor::Right);
  Click(u"Command2");
  auto* symbols = Find<QListWidget>(u"lstsym");
  ASSERT_TRUE(symbols->isVisible());
  QTest::keyClick(symbols, Qt::Key_Return);
  EXPECT_FALSE(symbols->isVisible());
  EXPECT_EQ(Key(id, u"TEXT"), u"a©b"_s);
  Click(u"Command2");
  QTest::mouseClick(symbols->viewport(), Qt::LeftButton, {},
                    symbols->visualItemRect(symbols->item(3)).center());
  EXPECT_EQ(Key(id, u"TEXT"), u"a©"_s + symbols->item(3)->text() + u'b');
}

TEST_F(TemplateCreator, WhatCantBeReadOrWrittenIsSaid) {
  picked_ = scratch_.Write("words.png", "no picture");
  Click(u"Command3");
  EXPECT_EQ(messages_.size(), 1);
  EXPECT_TRUE(Objects().IsEmpty());
  // A file stands where the folder would be.
  scratch_.Write("templates", "in the way");
  NewText();
  messages_.clear();
  SaveAs(u"Mine"_s);
  ASSERT_EQ(messages_.size(), 1);
  EXPECT_TRUE(messages_.first().startsWith(u"Mine.iev: "_s)) << messages_.first().toStdString();
  EXPECT_FALSE(Find<QPushButton>(u"Command5")->isEnabled());
}

TEST_F(TemplateCreator, NoLetterLeadsToTwoPlaces) {
  QStringList letters = test::Mnemonics(*window_);
  EXPECT_GT(letters.size(), 15);
  EXPECT_EQ(letters.removeDuplicates(), 0) << letters.join(u' ').toStdString();
}

TEST_F(TemplateCreator, ClosingAsksForWhatIsNotSaved) {
  window_->close();
  EXPECT_TRUE(messages_.isEmpty());
  Open();
  window_->EditTemplate(u"Mine"_s, {});
  NewText();
  answer_ = Answer::Cancel;
  window_->close();
  EXPECT_TRUE(window_->isVisible());
  messages_.clear();
  answer_ = Answer::Yes;
  window_->close();
  EXPECT_EQ(messages_,
            (QStringList{u"Save changes to the template?"_s, u"The template has been saved."_s}));
  EXPECT_EQ(Saved(u"Mine"_s).Count(), 1);
  EXPECT_FALSE(window_->isVisible());
}

}  // namespace
}  // namespace zqm
