// SPDX-License-Identifier: GPL-3.0-or-later
// How the windows look: the one palette, the one style sheet, the measures. No window sets a colour
// or a margin of its own.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;
class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;
class QToolButton;
class QWidget;

namespace zqm::look {

// Colours.
inline constexpr QRgb kGround = 0xff323232;      ///< viewers, thumbnail list
inline constexpr QRgb kPanel = 0xff2a2a2a;       ///< panels, dialogs
inline constexpr QRgb kRaised = 0xff3d3d3d;      ///< fields, buttons, headers
inline constexpr QRgb kLine = 0xff4a4a4a;        ///< between panels, round fields
inline constexpr QRgb kText = 0xffe8e8e8;        ///< values, labels
inline constexpr QRgb kQuiet = 0xffa8a8a8;       ///< captions, units, hints
inline constexpr QRgb kAccent = 0xff5aa9ff;      ///< selection, focus, the primary button
inline constexpr QRgb kCatalogued = 0xffb4fa19;  ///< the word "Cataloged"
inline constexpr QRgb kFlagged = 0xffc8c8c8;
inline constexpr QRgb kRejected = 0xffff0000;      ///< the frame of a rejected photo
inline constexpr QRgb kRejectedText = 0xffff8080;  ///< its caption
inline constexpr QRgb kPlain = 0xff464646;
inline constexpr QRgb kOnAccent = 0xff10151c;  ///< text on the accent
inline constexpr QRgb kSwitchOn = 0xff00ff00, kSwitchOff = 0xffff0000, kSwitchBlank = 0xffffffff;

// Measures in pixels; spaces are one of these and nothing in between.
inline constexpr int kSpace4 = 4, kSpace8 = 8, kSpace12 = 12, kSpace16 = 16, kSpace24 = 24;
inline constexpr int kControlHeight = 28;
inline constexpr int kRowHeight = 24;
inline constexpr int kRadius = 4;
inline constexpr int kIconSize = 16;
inline constexpr int kCaptionWidth = 150;  ///< of the right-aligned captions' column
inline constexpr int kFadeMilliseconds = 120;

/// Palette, style sheet, icon theme and font sizes for the whole program.
void Apply(QApplication& application);

/// An icon of the theme by its freedesktop name, empty when the theme isn't installed.
QIcon Icon(const char* name);

// What a widget is, for the style sheet.
QLabel* Heading(const QString& text, QWidget* parent = nullptr);
QLabel* Caption(const QString& text, QWidget* parent = nullptr);
QLabel* Hint(const QString& text, QWidget* parent = nullptr);
/// Plain text that lies over a picture and takes no mouse.
QLabel* Overlay(QWidget* parent);
/// The one button of a dialog that does what the dialog is for.
void MakePrimary(QPushButton* button);
/// A list or tree that fills a pane: without a frame.
void MakeBare(QWidget* view);
/// A button whose menu chooses what it reads.
void MakeChoice(QPushButton* button);
/// A button or field whose text must fit into a narrow panel.
void MakeCompact(QWidget* widget);
/// A slider whose numbers go both ways from the middle.
void MakeTwoSided(QWidget* slider);
/// A button of 28 x 28 with an icon and a tool tip, which is also its name for a screen reader.
QToolButton* IconButton(const char* icon, const QString& toolTip, QWidget* parent = nullptr);
/// A caption that is clicked and lit while it holds, as of a step or a view.
QPushButton* StepButton(const QString& caption, QWidget* parent = nullptr);
/// The height of a framed list that shows this many rows.
int ListHeight(int rows);
/// The same margins on all sides, the same space between.
void SetSpace(QLayout* layout, int margin, int space);

}  // namespace zqm::look
