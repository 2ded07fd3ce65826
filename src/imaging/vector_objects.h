// SPDX-License-Identifier: GPL-3.0-or-later
// Objects that lie over a picture: lines, boxes, pictures, texts. Positions and sizes are pixels of
// the picture that they lie over, y downwards, fractions allowed; they may reach beyond it.
#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>
#include <QStringView>
#include <QTransform>
#include <span>
#include <vector>

namespace zqm {

/// A picture with smaller versions of itself, each half the one before, so that it is painted small
/// without loss of detail. Palettes become true colour. Immutable; making one of a large picture
/// takes a while, on any thread.
class ObjectPicture {
 public:
  ObjectPicture() = default;
  ObjectPicture(const QImage& image);  // NOLINT(implicit)

  const QImage& Image() const { return image_; }
  /// The smallest version that is at least so large.
  const QImage& AtLeast(QSizeF size) const;
  bool operator==(const ObjectPicture& other) const { return image_ == other.image_; }

 private:
  QImage image_;
  std::vector<QImage> smaller_;
};

enum class ObjectKind { Line = 1, Rectangle = 2, Picture = 5, Text = 6 };
enum class PenStyle { Solid = 0, Dash = 1, Dot = 2, None = 5 };
enum class BrushStyle { Solid = 0, Clear = 1 };
enum class TextAlign { Left = 0, Right = 1, Centre = 2 };
enum class FontQuality { Default = 0, Smoothed = 5 };
enum class EndShape { None = 0, Arrow = 1 };

/// One object. Each member is reached by a key too (`SetObjectProperty`), named behind it; what a
/// kind has no use for is kept all the same.
struct VectorObject {
  int id = 0;
  ObjectKind kind = ObjectKind::Rectangle;  ///< KIND, given once
  QString text;                             ///< TEXT, lines parted by "\n"
  double left = 0;                          ///< LEFT; of a line its start
  double top = 0;                           ///< TOP; likewise
  double width = 100;                       ///< WIDTH; of a line from its start to its end, signed
  double height = 100;                      ///< HEIGHT; likewise
  QColor penColour{0, 0, 0};                ///< PENCOLOR "r,g,b"; the colour of a text
  PenStyle penStyle = PenStyle::Solid;      ///< PENSTYLE; a text has no pen but its colour
  double penWidth = 1;                      ///< PENWIDTH; the frame of a box lies inside it
  QColor brushColour{255, 255, 255};        ///< BRUSHCOLOR "r,g,b"
  BrushStyle brushStyle = BrushStyle::Clear;  ///< BRUSHSTYLE; of a text its background
  int transparency = 255;                     ///< TRANSPARENCY, 0 to 255 opaque
  QString fontName;                           ///< FONTNAME; "" is the program's own
  double fontHeight = 20;                     ///< FONTHEIGHT, pixels of the em square
  double fontAngle = 0;        ///< FONTANGLE, degrees counter-clockwise about the box's centre
  bool fontBold = false;       ///< FONTBOLD "0" or "1"
  bool fontItalic = false;     ///< FONTITALIC
  bool fontUnderline = false;  ///< FONTUNDERLINE
  bool fontStrikeout = false;  ///< FONTSTRIKEOUT
  FontQuality fontQuality = FontQuality::Default;  ///< FONTQUALITY; default: as the painter is set
  TextAlign textAlign = TextAlign::Left;           ///< TEXTALIGN
  bool textAutosize = true;            ///< TEXTAUTOSIZE: WIDTH and HEIGHT follow text and font
  bool textEditable = true;            ///< TEXTEDITABLE
  bool moveable = true;                ///< MOVEABLE
  bool sizeable = true;                ///< SIZEABLE
  bool selectable = true;              ///< SELECTABLE
  bool visible = true;                 ///< VISIBLE
  EndShape endShape = EndShape::None;  ///< ENDSHAPE of a line
  ObjectPicture picture;               ///< of a picture; has no key

  bool operator==(const VectorObject&) const = default;

  /// WIDTH by HEIGHT at LEFT, TOP, not turned; of a line around its ends, without its pen.
  QRectF Box() const;
  /// The same turned by FONTANGLE where it is a text; of a line its two ends.
  QPolygonF Outline() const;
  /// Around everything that is painted.
  QRectF Bounds() const;
  /// From the flat box to how it lies over the picture.
  QTransform Turning() const;
  /// Of the head of a line that has one, pixels.
  double ArrowLength() const;
};

/// In characters; a longer TEXT, or one that isn't sound UTF-16, isn't taken.
inline constexpr int kMostObjectText = 10000;

/// Where an object is taken to size it. A line has its start (`TopLeft`) and end (`BottomRight`).
enum class Handle { None, TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };

/// The handles of an object, whether it may be sized or not, and where they are.
std::span<const Handle> HandlesOf(const VectorObject& object);
QPointF HandlePoint(const VectorObject& object, Handle handle);

/// The object as it was when the mouse took it, dragged: as a whole by a distance, or a handle to
/// where the mouse is. The opposite corner or side stays, no side gets below one pixel. With
/// `keepAspect` the other side follows. A text that sizes itself gets another FONTHEIGHT, whole
/// pixels. Whether it may be moved or sized is the caller's question.
VectorObject Moved(VectorObject object, QPointF by);
VectorObject Sized(const VectorObject& object, Handle handle, QPointF to, bool keepAspect);

/// A key's value as text, "" for an unknown key; numbers with ".", keys ignore case.
QString ObjectProperty(const VectorObject& object, QStringView key);
/// False, and nothing changes, for an unknown key or a value that it doesn't take. KIND takes what
/// it is only.
bool SetProperty(VectorObject& object, QStringView key, const QString& value);
/// All keys, KIND first.
std::span<const char16_t* const> ObjectKeys();

/// The objects of one picture. A value; copies share pictures. IDs are positive and never given
/// again within one list and its copies.
class VectorObjects {
 public:
  /// Adds an object on top of the others and gives its ID.
  int Add(ObjectKind kind);
  int AddLine(QPointF from, QPointF to);
  /// With the ID that it has: for lists that were stored. False when that isn't free.
  bool Insert(const VectorObject& object);

  /// In z-order, lowest first.
  std::vector<int> Ids() const;
  const std::vector<VectorObject>& All() const { return objects_; }
  int Count() const { return static_cast<int>(objects_.size()); }
  bool IsEmpty() const { return objects_.empty(); }
  bool Contains(int id) const { return Find(id) != nullptr; }
  /// Null for an unknown ID; valid until the list changes.
  const VectorObject* Find(int id) const;

  /// As `SetProperty` and `ObjectProperty`; false and "" for an unknown ID.
  bool SetObjectProperty(int id, QStringView key, const QString& value);
  QString GetObjectProperty(int id, QStringView key) const;
  /// For every object of the list.
  bool SetAllObjects(QStringView key, const QString& value);
  void SetPicture(int id, const ObjectPicture& picture);
  QImage PictureOf(int id) const;
  /// Takes the place of the object with its ID, for what a drag made of it. False when there is
  /// none.
  bool Replace(const VectorObject& object);

  void Remove(int id);
  void RemoveAllObjects() { objects_.clear(); }
  void SendToBack(int id);
  void BringToFront(int id);

  /// A null rectangle for an unknown ID.
  QRectF BoundsOf(int id) const;
  /// The topmost object at a place that is visible and selectable, or -1. A box counts within its
  /// sides too; `tolerance` in picture pixels.
  int HitTest(QPointF pixel, double tolerance) const;
  /// The handle near a place, `None` where there is none or the object can't be sized.
  Handle HitHandle(int id, QPointF pixel, double tolerance) const;

  bool operator==(const VectorObjects& other) const { return objects_ == other.objects_; }

 private:
  std::vector<VectorObject>::iterator At(int id);
  std::vector<VectorObject> objects_;
  int lastId_ = 0;
};

}  // namespace zqm
