// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <map>

#include "cataloguing/browser_view.h"
#include "editor/save_edited.h"
#include "editor/ui/edit_actions.h"
#include "imaging/picture_change.h"
#include "session/session.h"

class QLabel;
class QPushButton;
class QVBoxLayout;
class QStackedWidget;

namespace zqm {

class EditStep;
class ImageX;
class MagicWandStep;
class ResizeStep;
class ToolStrip;
class WatermarkStep;

/// The photo editor: one picture, edited step by step, and saved so that catalogue and browser
/// follow.
class frmedit : public QMainWindow {
  Q_OBJECT
 public:
  /// `view` may be null.
  frmedit(Session& session, BrowserView* view, QWidget* parent = nullptr);
  ~frmedit() override;

  /// Loads the photo to edit. Reasons are messages to the user; nothing is open then.
  Outcome OpenPhoto(const QString& path);
  const QString& CurrentPath() const { return file_.path; }
  bool Modified() const { return modified_; }

 Q_SIGNALS:
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Page { Editing, Original };
  class Locked;

  void Compose();
  QWidget* ComposeSteps();
  QWidget* ComposeCentre();
  void ComposeStatusBar();
  void ConnectPicture();
  void Form_Load();

  // Commands.
  void Run(EditCommand command);
  void OpenStep(EditCommand command);
  void LeaveStep();
  void OpenDialog(EditCommand command);
  void ShowStep(EditCommand command);
  void imgtool_Click(int index);
  void Image13_Click();
  void SetTool(const QString& tool);
  void ClearSelection();
  void Undo();
  void UndoAll();
  void Redo();
  void Turn(double degrees);
  void Effect(const char16_t* page);
  void ShowPage(Page page);
  void mnu_open_Click();
  void Command16_Click();
  void Command17_Click();
  void ShowWorkflow();

  Outcome Load(const QString& path);
  bool Save();
  /// Whether the picture may be given up: asked when it is modified.
  bool SettleChanges();
  SaveFollowers Followers();
  void PrepareToShow();
  void SaveSettings();
  void Tell(const Outcome& outcome);

  void UpdateStatusBar();
  void TellLostUndo();
  void ShowZoom();
  void ShowPosition(const QPointF& pixel);
  void UpdateEnabled();

  Session& session_;
  BrowserView* view_;
  EditActions* actions_;
  ImageX *image1_, *image2_;  // what is edited, and the original
  QStackedWidget* pages_;
  QWidget* noStep_;  // in the place of a panel
  QPushButton *originalCaption_, *editingCaption_;
  std::map<EditCommand, QPushButton*> captions_;  // of the steps
  std::map<EditCommand, EditStep*> steps_;        // those with a panel
  ResizeStep* resize_;
  WatermarkStep* watermark_;
  MagicWandStep* magic_;
  ToolStrip* tools_;
  QLabel* panels_[7];
  QString tool_;
  EditedFile file_;
  bool modified_ = false;
  int lostUndo_ = 0;
};

}  // namespace zqm
