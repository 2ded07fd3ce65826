// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/look.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolButton>

/// The linker leaves out resources of a library that nobody names.
static void NameResources() {
  Q_INIT_RESOURCE(look);
}

namespace zqm::look {
namespace {

/// Words in "@" are the palette's names.
constexpr char kSheet[] = R"(
* { font-size: 10pt; }
QWidget { color: @text; }
QMainWindow, QDialog, QMessageBox, QMenuBar, QStatusBar, QWidget#panel { background: @panel; }
QToolTip { background: @raised; color: @text; border: 1px solid @line; padding: 4px; }

QLabel[role="heading"] { font-size: 11pt; font-weight: 500; }
QLabel[role="caption"] { font-size: 9pt; color: @quiet; }
QLabel[role="hint"] { font-size: 9pt; color: @quiet; }
QLabel[role="overlay"] { background: rgba(42, 42, 42, 85%); border-radius: 4px; padding: 8px 12px; }
QLabel[role="warning"] { color: @rejectedtext; }
QLabel:disabled, QLabel[role="caption"]:disabled { color: #707070; }

QLineEdit, QPlainTextEdit, QTextEdit, QSpinBox, QDateTimeEdit, QComboBox {
  background: @raised; border: 1px solid @line; border-radius: 4px;
  selection-background-color: @accent; selection-color: @onaccent; }
QLineEdit, QSpinBox, QDateTimeEdit, QComboBox { min-height: 26px; max-height: 26px;
  padding: 0 8px; }
QPlainTextEdit, QTextEdit { padding: 4px; }
QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus, QSpinBox:focus,
QDateTimeEdit:focus, QComboBox:focus, QListView:focus, QTreeView:focus, QTableView:focus {
  border: 2px solid @accent; }
QLineEdit:focus, QSpinBox:focus, QDateTimeEdit:focus, QComboBox:focus { min-height: 24px;
  max-height: 24px; padding: 0 7px; }
QPlainTextEdit:focus, QTextEdit:focus { padding: 3px; }
QLineEdit:disabled, QPlainTextEdit:disabled, QTextEdit:disabled, QComboBox:disabled,
QSpinBox:disabled, QDateTimeEdit:disabled { background: @panel; color: #808080; }
QLineEdit[role="value"] { background: transparent; border: none; padding: 0; min-height: 22px;
  max-height: 22px; }
QComboBox QAbstractItemView { background: @raised; border: 1px solid @line;
  selection-background-color: @accent; selection-color: @onaccent; }
QLineEdit[role="compact"] { padding: 0 0 0 4px; }
QLineEdit[role="compact"]:focus { padding: 0 0 0 3px; }
QComboBox::drop-down, QDateTimeEdit::drop-down { border: none; width: 24px; }
QComboBox::down-arrow, QDateTimeEdit::down-arrow { image: url(":/look/branch-open.svg");
  width: 12px; height: 12px; }

QPushButton { background: @raised; border: 1px solid @line; border-radius: 4px;
  min-height: 26px; max-height: 26px; padding: 0 16px; }
QPushButton:hover { background: #474747; }
QPushButton:pressed { background: #353535; }
QPushButton:focus { border: 2px solid @accent; min-height: 24px; max-height: 24px;
  padding: 0 15px; }
QPushButton:disabled { background: @panel; color: #808080; }
QPushButton[role="primary"] { background: @accent; border-color: @accent; color: @onaccent; }
QPushButton[role="primary"]:hover { background: #74b7ff; }
QPushButton[role="primary"]:pressed { background: #4a96e8; }
QPushButton[role="primary"]:focus { border: 2px solid @text; }
QPushButton[role="primary"]:disabled { background: @raised; border-color: @line; color: #808080; }
QPushButton[role="choice"] { text-align: left; padding: 0 8px;
  background: @raised url(":/look/branch-open.svg") no-repeat right center;
  background-origin: content; }
QPushButton[role="choice"]:focus { padding: 0 7px; }
QPushButton[role="compact"] { padding: 0 4px; font-size: 9pt; }
QPushButton[role="compact"]:focus { padding: 0 3px; }
QToolButton { border: 1px solid transparent; border-radius: 4px; padding: 0; background: transparent; }
QToolButton[role="icon"] { min-width: 26px; max-width: 26px; min-height: 26px; max-height: 26px; }
QToolButton:hover { background: @raised; }
QToolButton:checked { background: @raised; border-color: @line; }
QToolButton:focus { border: 2px solid @accent; }
QToolButton[role="icon"]:focus { min-width: 24px; max-width: 24px; min-height: 24px;
  max-height: 24px; }

QPushButton[role="step"] { min-height: 22px; max-height: 22px; padding: 0 8px; text-align: left;
  background: transparent; border-color: transparent; }
QPushButton[role="step"]:hover { background: @raised; }
QPushButton[role="step"]:checked { color: @accent; font-style: italic; }
QPushButton[role="step"]:focus { border: 2px solid @accent; padding: 0 7px; min-height: 20px;
  max-height: 20px; }

QCheckBox, QRadioButton { spacing: 8px; min-height: 24px; }
QCheckBox::indicator, QListView::indicator, QTreeView::indicator { width: 14px; height: 14px;
  background: @raised; border: 1px solid #808080; border-radius: 3px; }
QCheckBox::indicator:hover, QListView::indicator:hover, QTreeView::indicator:hover {
  border-color: @text; }
QCheckBox::indicator:checked, QListView::indicator:checked, QTreeView::indicator:checked {
  background: @accent; border-color: @accent; image: url(":/look/tick.svg"); }
QRadioButton::indicator { width: 14px; height: 14px; background: @raised;
  border: 1px solid #808080; border-radius: 8px; }
QRadioButton::indicator:hover { border-color: @text; }
QRadioButton::indicator:checked { border-color: @accent; background: qradialgradient(cx: 0.5,
  cy: 0.5, radius: 0.5, fx: 0.5, fy: 0.5, stop: 0 @accent, stop: 0.5 @accent, stop: 0.6 @raised,
  stop: 1 @raised); }
QRadioButton::indicator:disabled { background: @panel; border-color: @line; }
QRadioButton::indicator:focus { border: 1px solid @accent; }
QCheckBox::indicator:focus { border: 1px solid @accent; }
QCheckBox:disabled, QRadioButton:disabled { color: #808080; }
QCheckBox::indicator:disabled, QListView::indicator:disabled, QTreeView::indicator:disabled {
  background: @panel; border-color: @line; }
QListView, QTreeView, QTableView { background: @panel; border: 1px solid @line; border-radius: 4px;
  outline: none; alternate-background-color: #2e2e2e; }
QListView, QTreeView { padding: 4px; }
QListView:focus, QTreeView:focus { padding: 3px; }
QListView[role="bare"], QTreeView[role="bare"], QTextEdit[role="bare"],
QTextEdit[role="bare"]:focus { border: none; border-radius: 0; padding: 0; }
QTableView::item { padding: 0 8px; }
QListView[role="thumbnails"] { background: @ground; border: none; border-radius: 0; padding: 0; }
QListView[role="bare"]:focus, QTreeView[role="bare"]:focus, QListView[role="thumbnails"]:focus {
  border: none; padding: 0; }
QWidget#busystrip { background: @raised; border: 1px solid @line; border-radius: 4px; }
QListView::item, QTreeView::item { min-height: 24px; }
QListView::item:hover, QTreeView::item:hover { background: #343434; }
QListView::item:selected, QTreeView::item:selected, QTableView::item:selected {
  background: #35506d; color: @text; }
QTreeView::branch { background: transparent; }
QTreeView::branch:has-children:closed { image: url(":/look/branch-closed.svg"); }
QTreeView::branch:has-children:open { image: url(":/look/branch-open.svg"); }
QTreeView::branch:selected { background: #35506d; }
QHeaderView::section { background: @raised; color: @quiet; border: none;
  border-right: 1px solid @line; padding: 4px 8px; font-size: 9pt; }

QMenuBar { border-bottom: 1px solid @line; spacing: 0; }
QMenuBar::item { padding: 4px 8px; background: transparent; border-radius: 4px; }
QMenuBar::item:selected { background: @raised; }
QMenu { background: @panel; border: 1px solid @line; padding: 4px; }
QMenu::item { padding: 4px 24px 4px 24px; border-radius: 4px; min-height: 20px; }
QMenu::item:selected { background: @accent; color: @onaccent; }
QMenu::item:disabled { color: #808080; }
QMenu::separator { height: 1px; background: @line; margin: 4px 8px; }
QMenu::icon { padding-left: 4px; }

QTabBar { background: transparent; qproperty-drawBase: 0; }
QTabBar::tab { background: transparent; color: @quiet; padding: 4px 12px; min-height: 24px;
  border: none; border-bottom: 2px solid transparent; }
QTabBar::tab:hover { color: @text; }
QTabBar::tab:selected { color: @text; border-bottom: 2px solid @accent; }
QTabBar::tab:focus { border-bottom: 2px solid @text; }
QTabWidget::pane { border: none; border-top: 1px solid @line; }

QSplitter::handle { background: @line; }
QSplitter::handle:horizontal { width: 1px; }
QSplitter::handle:vertical { height: 1px; }
QSplitter::handle:hover { background: @accent; }

QStatusBar { border-top: 1px solid @line; min-height: 27px; }
QStatusBar::item { border: none; }

QProgressBar { background: @raised; border: none; border-radius: 2px; min-height: 4px;
  max-height: 4px; }
QProgressBar::chunk { background: @accent; border-radius: 2px; }

QScrollBar { background: transparent; border: none; }
QScrollBar:vertical { width: 10px; }
QScrollBar:horizontal { height: 10px; }
QScrollBar::handle { background: #5a5a5a; border-radius: 3px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: #707070; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QAbstractScrollArea::corner { background: transparent; }
QScrollArea { background: transparent; border: none; }

QSlider::groove:horizontal { height: 4px; background: @raised; border-radius: 2px; }
QSlider::sub-page:horizontal { background: @accent; border-radius: 2px; }
QSlider[role="twosided"]::sub-page:horizontal { background: @raised; }
QSlider::handle:horizontal { width: 14px; margin: -5px 0; border-radius: 7px; background: @text; }
QSlider::sub-page:horizontal:disabled { background: @line; }
QSlider::handle:horizontal:disabled { background: #808080; }
QSlider:focus { border: none; }
QSlider::handle:horizontal:focus { background: @accent; }

QGroupBox { border: none; margin-top: 24px; font-size: 11pt; font-weight: 500; }
QGroupBox::title { subcontrol-origin: margin; left: 0; }
QFrame[frameShape="4"], QFrame[frameShape="5"] { color: @line; }
)";

struct Token {
  const char* name;
  QRgb colour;
};
// Longer names before those that they begin with.
constexpr Token kTokens[] = {
    {"@rejectedtext", kRejectedText},
    {"@onaccent", kOnAccent},
    {"@ground", kGround},
    {"@panel", kPanel},
    {"@raised", kRaised},
    {"@line", kLine},
    {"@text", kText},
    {"@quiet", kQuiet},
    {"@accent", kAccent},
};

QString Sheet() {
  QString sheet = QString::fromLatin1(kSheet);
  for (const Token& token : kTokens)
    sheet.replace(QLatin1StringView(token.name), QColor(token.colour).name());
  return sheet;
}

/// The row that the keyboard is on has a thin line round it; the style's own mark looks like half a
/// selection.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override {
    // A click selects, on every desktop: what is activated opens windows.
    if (hint == SH_ItemView_ActivateItemOnSingleClick) return 0;
    return QProxyStyle::styleHint(hint, option, widget, answer);
  }

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_FrameFocusRect || qobject_cast<const QAbstractItemView*>(widget) == nullptr)
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    painter->save();
    painter->setPen(QColor(kAccent));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
  }
};

QPalette DarkPalette() {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, QRgb colour) {
    palette.setColor(role, QColor(colour));
  };
  set(QPalette::Window, kPanel);
  set(QPalette::WindowText, kText);
  set(QPalette::Base, kPanel);
  set(QPalette::AlternateBase, kRaised);
  set(QPalette::Text, kText);
  set(QPalette::PlaceholderText, kQuiet);
  set(QPalette::Button, kRaised);
  set(QPalette::ButtonText, kText);
  set(QPalette::BrightText, kText);
  set(QPalette::ToolTipBase, kRaised);
  set(QPalette::ToolTipText, kText);
  set(QPalette::Highlight, kAccent);
  set(QPalette::HighlightedText, kOnAccent);
  set(QPalette::Link, kAccent);
  set(QPalette::Light, kLine);
  set(QPalette::Mid, kLine);
  set(QPalette::Dark, kGround);
  const QColor dimmed(0x80, 0x80, 0x80);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, dimmed);
  return palette;
}

template <class Widget>
Widget* WithRole(Widget* widget, const char* role) {
  widget->setProperty("role", QString::fromLatin1(role));
  return widget;
}

}  // namespace

void Apply(QApplication& application) {
  NameResources();
  // A desktop that the toolkit doesn't know names no folders of icons.
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() +
                             QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                       QStringLiteral("icons"),
                                                       QStandardPaths::LocateDirectory));
  QIcon::setThemeName(QStringLiteral("breeze-dark"));
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  application.setStyle(new Style);
  application.setPalette(DarkPalette());
  application.setStyleSheet(Sheet());
}

QIcon Icon(const char* name) {
  return QIcon::fromTheme(QString::fromLatin1(name));
}

QLabel* Heading(const QString& text, QWidget* parent) {
  return WithRole(new QLabel(text, parent), "heading");
}

QLabel* Caption(const QString& text, QWidget* parent) {
  QLabel* label = WithRole(new QLabel(text, parent), "caption");
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

QLabel* Hint(const QString& text, QWidget* parent) {
  QLabel* label = WithRole(new QLabel(text, parent), "hint");
  label->setWordWrap(true);
  return label;
}

QLabel* Overlay(QWidget* parent) {
  QLabel* label = WithRole(new QLabel(parent), "overlay");
  label->setTextFormat(Qt::PlainText);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->hide();
  return label;
}

void MakePrimary(QPushButton* button) {
  WithRole(button, "primary")->setDefault(true);
}

void MakeBare(QWidget* view) {
  WithRole(view, "bare");
}

void MakeChoice(QPushButton* button) {
  WithRole(button, "choice");
}

void MakeCompact(QWidget* widget) {
  WithRole(widget, "compact");
}

void MakeTwoSided(QWidget* slider) {
  WithRole(slider, "twosided");
}

QToolButton* IconButton(const char* icon, const QString& toolTip, QWidget* parent) {
  auto* button = WithRole(new QToolButton(parent), "icon");
  button->setIcon(Icon(icon));
  button->setIconSize({kIconSize, kIconSize});
  button->setToolTip(toolTip);
  button->setAccessibleName(toolTip);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

QPushButton* StepButton(const QString& caption, QWidget* parent) {
  auto* button = WithRole(new QPushButton(caption, parent), "step");
  button->setCheckable(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

int ListHeight(int rows) {
  constexpr int kFrame = 1;
  return rows * kRowHeight + 2 * (kSpace4 + kFrame);
}

void SetSpace(QLayout* layout, int margin, int space) {
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(space);
}

}  // namespace zqm::look
