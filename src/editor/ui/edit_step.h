// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "imaging/ui/image_x.h"
#include "shell/error.h"

class QGridLayout;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace zqm {

/// What the mouse does on the picture, by the word that names it: "Level", "Crop", or the letter of
/// a selection tool; "" moves the picture.
namespace edit_tool {
inline constexpr char16_t kLevel[] = u"Level", kCrop[] = u"Crop", kWatermark[] = u"Watermark";
}

/// One step of the workflow: its panel, and what it does to the picture.
class EditStep : public QWidget {
  Q_OBJECT
 public:
  /// The step was called for; its panel is shown already.
  virtual void Enter() {}

 Q_SIGNALS:
  void ToolWanted(const QString& tool);
  /// One of the panel's buttons is about to work on the picture.
  void Acting();

 protected:
  /// `frame` is the panel's name.
  EditStep(const char* frame, const QString& title, const QString& hint, ImageX& picture);

  ImageX& Image() const { return picture_; }
  QVBoxLayout* Body() const { return body_; }
  /// Captions in one column, fields in the next.
  QGridLayout* AddGrid();
  /// Runs `work` guarded when it is clicked.
  QPushButton* AddButton(const QString& caption, const char* name,
                         const std::function<void()>& work, bool primary = false);
  /// Says why an operation failed.
  static void Tell(const Outcome& outcome);

  /// Enter presses the primary button.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  ImageX& picture_;
  QVBoxLayout* body_;
  QHBoxLayout* buttons_;
  QPushButton* primary_ = nullptr;
};

void AddField(QGridLayout* grid, const QString& caption, QWidget* field, QWidget* unit = nullptr);

}  // namespace zqm
