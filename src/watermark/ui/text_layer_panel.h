// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "watermark/watermark_layers.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zqm {

class SymbolPicker;

/// The fields of a text layer.
class TextLayerPanel : public QWidget {
  Q_OBJECT
 public:
  explicit TextLayerPanel(QWidget* parent = nullptr);

  /// Nothing is altered by this.
  void SetPanel(const TextPanel& panel);
  /// All but the transparency.
  TextPanel Panel() const;
  /// What a new text starts with.
  TextPanel NewText() const;

  void LockText();
  void UnlockText();
  /// To type the text in the place of the one that stands.
  void BeginTyping();

 Q_SIGNALS:
  /// The user has changed a part, by its word.
  void Altered(const QString& what);
  /// The user has left a field for a number or the color.
  void FieldLeft();

 private:
  void ComposeText(QGridLayout* grid);
  void ComposeLook(QGridLayout* grid);
  QCheckBox* AddBox(const QString& caption, const char* name, const char16_t* what);
  void Tell(const char16_t* what);
  void ShowFont(const QString& name);
  void ShowColour();
  void Label11_Click();

  QPlainTextEdit* text_;
  QPushButton* symbols_;
  SymbolPicker* picker_;
  QLineEdit *size_, *angle_, *colour_;
  QComboBox* font_;
  QPushButton* swatch_;
  QCheckBox *bold_, *italic_, *underline_, *strikeout_;
  bool filling_ = false;
};

}  // namespace zqm
