// SPDX-License-Identifier: GPL-3.0-or-later
// The layers of a watermark and the panel that edits them: what the window that composes a template
// does to the objects on its surface.
#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <span>

#include "imaging/vector_objects.h"

namespace zqm {

/// The text panel, as it is typed and ticked. What a new text starts with.
struct TextPanel {
  QString text = QStringLiteral("Your Text Here");
  QString size = QStringLiteral("100");            ///< pixels, in the user's number format
  QString angle = QStringLiteral("0");             ///< degrees counter-clockwise, likewise
  QString fontName;                                ///< "" is the program's own
  QString colour = QStringLiteral("255,255,255");  ///< "r,g,b"
  bool bold = false, italic = false, underline = false, strikeout = false;
  int transparency = 255;  ///< 0 to 255 opaque

  bool operator==(const TextPanel&) const = default;
};

/// A part of the panel, by the word that `AlterText` takes.
namespace text_part {
inline constexpr char16_t kText[] = u"TEXT", kSize[] = u"SIZE", kAngle[] = u"ANGLE",
                          kFont[] = u"FONT", kColor[] = u"COLOR", kBold[] = u"BOLD",
                          kItalic[] = u"ITALIC", kUnderline[] = u"UNDERLINE",
                          kStrikeout[] = u"STRIKEOUT", kTransparency[] = u"TRANSPARENCY",
                          kAll[] = u"ALL";
}  // namespace text_part

/// Brings a part of the panel to the texts among `ids`; other objects stay. A size, angle or colour
/// that is none leaves what the text has, a text that is too long is cut.
void AlterText(VectorObjects& objects, std::span<const int> ids, const TextPanel& panel,
               QStringView what);

/// The panel for a text.
TextPanel GtTxtProp(const VectorObject& object);

/// For every object among `ids`, of whatever kind. 0 to 255.
void SetTransparency(VectorObjects& objects, std::span<const int> ids, int transparency);

/// New layers, each a little off the corner of those before, on top of the others; gives the ID.
/// They begin on the surface, where one is given.
int InsertNewText(VectorObjects& objects, const TextPanel& panel, QSize surface = {});
/// `size` in pixels of the surface.
int ImportNewImage(VectorObjects& objects, const ObjectPicture& picture, QSize size,
                   QSize surface = {});

/// What the selection lets the user do.
struct SelectionState {
  bool any = false;                 ///< something is selected: it has a transparency
  std::optional<TextPanel> text;    ///< one text alone: the panel is open, with this in it
  std::optional<int> transparency;  ///< one object alone: where the slider stands
};
SelectionState StateOf(const VectorObjects& objects, std::span<const int> ids);

/// Behind or before all others. `ids` in z-order; among themselves they keep it.
void SendToBack(VectorObjects& objects, std::span<const int> ids);
void BringToFront(VectorObjects& objects, std::span<const int> ids);
void RemoveLayers(VectorObjects& objects, std::span<const int> ids);

/// An object that was dragged near to an edge or the middle of the surface, put there. The lines
/// are where it was put to.
struct SnappedObject {
  VectorObject object;
  std::optional<double> x, y;  ///< pixels of the surface
};
/// `reach` in pixels of the surface. Each direction goes by itself.
SnappedObject SnapToSurface(const VectorObject& object, QSize surface, double reach);

/// What the symbol button offers to put into a text.
std::span<const char16_t* const> WatermarkSymbols();

/// "Template Size : 4000 x 3000 pixels".
QString TemplateSizeText(QSize surface);

namespace watermark_text {
inline constexpr char16_t kEmpty[] =
    u"The template must contain at least one text or image before it can be saved.";
inline constexpr char16_t kRemoving[] = u"Removing text/images. Please wait...";
inline constexpr char16_t kRemoveAll[] = u"Remove all text/images from the template?";
inline constexpr char16_t kSendingBack[] = u"Sending text/images to back. Please wait...";
inline constexpr char16_t kBringingFront[] = u"Bringing text/images to front. Please wait...";
}  // namespace watermark_text

}  // namespace zqm
