// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "printing/template_design.h"
#include "shell/session_folders.h"

class QLabel;
class QPushButton;

namespace zqm {

class BoxPanel;
class ColourPanel;
class ImageX;
class PaperPanel;

/// Lays out picture boxes on a sheet of paper and saves them as a template. The design is what
/// counts; the surface shows it and takes the mouse.
class frmtemplate : public QDialog {
  Q_OBJECT
 public:
  explicit frmtemplate(const SessionFolders& folders, QWidget* parent = nullptr);

  /// Begins with a template that stands.
  void EditTemplate(const QString& name, const PrintTemplate& layout);

  void reject() override;

 Q_SIGNALS:
  void TemplateSaved(const QString& name);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  using Handler = void (frmtemplate::*)();
  void ComposeSurface();
  QWidget* ComposePaper();
  QWidget* ComposeBoxes();
  QLayout* ComposePresets();
  QLayout* ComposeFoot();
  QPushButton* AddButton(const QString& caption, const char* name, Handler handler);
  void Connect();

  void Command1_Click();  // Set Paper
  void Command2_Click();  // Add
  void Command3_Click();  // Remove All
  void Command4_Click();  // Remove
  void Command5_Click();  // Send to Back
  void Command6_Click();  // Bring to Front
  void Command7_Click();  // Select All
  void Command8_Click();  // Deselect All
  void Command11_Click();
  void Command12_Click();
  void ImageX1_OnSelectObject();
  void Option_Click(Unit unit);
  void Type(TemplateDesign::Side side, const QString& text);
  void MoveTo(const BoxPreset& preset);

  /// Changes the design and shows it, with a caption meanwhile.
  using Change = std::function<void(TemplateDesign& design)>;
  void ChangeBoxes(const char16_t* caption, const Change& change);
  /// Takes what the mouse made of the boxes.
  void Track();
  void ShowSheet();
  void ShowBoxes();
  void ShowState();
  void SetWorking(bool working, const QString& text = {});

  /// The paper as it is typed; false after the user was told why it can't be.
  bool TakePaper();
  /// What can be saved, or nothing after the user was told why.
  std::optional<PrintTemplate> Checked();
  bool Save();
  bool SaveAs();
  void TakeSaved(const QString& name, const PrintTemplate& layout);
  /// Whether the window may close: asks when something isn't saved.
  bool SettleChanges();

  QString folder_, pictures_, name_;
  TemplateDesign design_;
  PrintTemplate saved_;
  ImageX* surface_;
  PaperPanel* paper_;
  BoxPanel* box_;
  ColourPanel* colour_;
  QLabel *count_, *status_;
  QPushButton *save_, *removeAll_, *remove_, *sendBack_, *bringFront_, *selectAll_, *deselectAll_;
  std::vector<QPushButton*> presets_;
  bool placing_ = false;  // the selection on the surface is the code's, not the user's
  bool working_ = false;
};

}  // namespace zqm
