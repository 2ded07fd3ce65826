// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "imaging/picture.h"
#include "imaging/vector_objects.h"
#include "watermark/layer_history.h"

class QGridLayout;
class QLabel;
class QPushButton;
class QSlider;

namespace zqm {

class TemplateSurface;
class TextLayerPanel;

/// Composes a watermark of texts and pictures over a photo and saves it as a template.
class frmwatermarkcreator : public QDialog {
  Q_OBJECT
 public:
  /// `folder` is where templates are kept; `photo` is what the template is drawn on.
  frmwatermarkcreator(QString folder, const PictureSettings& load, const Picture& photo,
                      QWidget* parent = nullptr);

  /// Begins with a template that stands.
  void EditTemplate(const QString& name, const VectorObjects& objects);

  void reject() override;

 Q_SIGNALS:
  void TemplateSaved(const QString& name);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* ComposePanel();
  void ComposeArranging(QGridLayout* grid);
  QLayout* ComposeFoot();
  QPushButton* AddButton(const QString& caption, const char* name,
                         void (frmwatermarkcreator::*handler)());

  void Command1_Click();
  void Command3_Click();
  void Command4_Click();
  void Command5_Click();
  void Command6_Click();
  void Command7_Click();
  void Command8_Click();
  void Command9_Click();
  void Command10_Click();
  void Command11_Click();
  void ImageX1_OnSelectObject();
  void Altered(const QString& what);
  void Slider1_Change();

  /// Changes a copy of the layers and puts it in the place of those on the surface.
  using Change = std::function<void(VectorObjects& objects, const std::vector<int>& selected)>;
  /// `word` as for the history.
  void ChangeLayers(const Change& change, const QString& word = {});
  int AddLayer(const std::function<int(VectorObjects& objects)>& add);
  void Undo();
  void Redo();
  void ShowLayers(const std::optional<VectorObjects>& layers);
  /// What is shown has changed by the user.
  void Remember(const QString& word = {});
  bool Save();
  bool SaveAs();
  bool HasLayers();
  /// Whether the window may close: asks when something isn't saved.
  bool SettleChanges();
  void ShowSelection();
  void ResetText();
  QSize SurfaceSize() const;
  void ShowTransparency(int transparency);
  void SetWorking(bool working, const QString& text = {});

  QString folder_, name_;
  PictureSettings load_;
  TemplateSurface* surface_;
  TextLayerPanel* text_;
  QSlider* transparency_;
  QLabel *transparencyText_, *size_;
  QPushButton *undo_, *redo_, *save_, *sendBack_, *bringFront_, *remove_, *removeAll_, *selectAll_,
      *deselectAll_;
  VectorObjects saved_;
  LayerHistory history_;
  bool adding_ = false;   // a layer is being placed: its selection isn't the user's
  bool filling_ = false;  // the panel follows the selection
  bool working_ = false;
};

}  // namespace zqm
