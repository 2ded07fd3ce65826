// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QPointer>
#include <QStringList>

#include "imaging/thumbnail_list.h"
#include "imaging/vector_objects.h"
#include "session/session.h"
#include "shell/failure_list.h"

class QLabel;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace zqm {

class FailureTable;
class ImageMultiX;
class ImageX;
class RunProgress;
class frmwatermarkcreator;

/// Stamps a watermark template on photos, shows it on any of them first, and keeps the list of
/// templates.
class frmwatermarkimages : public QDialog {
  Q_OBJECT
 public:
  /// The session must have an active catalogue.
  frmwatermarkimages(Session& session, const QStringList& photos, QWidget* parent = nullptr);
  ~frmwatermarkimages() override;

  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* ComposePhotos();
  QWidget* ComposeTemplates();
  QLayout* ComposeFoot();
  QPushButton* AddButton(const QString& caption, const char* name,
                         void (frmwatermarkimages::*handler)());
  void Form_Load();

  void ImageMultiX1_OnImageSelect();
  void List1_Click();
  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void Command4_Click();
  void Command5_Click();

  /// Loads the objects of the template that is selected; tells why it can't.
  bool LoadSelected(VectorObjects& objects);
  void ShowCreator(const std::function<void(frmwatermarkcreator& creator)>& prepare);
  void TemplateSaved(const QString& name);
  void ShowTemplates(const QString& selected);
  void ShowApplied();
  void ShowEnd(const FailureList& failures);
  QString SelectedTemplate() const;
  QString StatusText() const;
  void SetLocked(bool locked, const QString& text = {});
  void UpdateEnabled();

  Session& session_;
  QString folder_;
  QStringList photos_;
  VectorObjects applied_;
  QString appliedName_;
  ThumbnailList thumbnails_;
  ImageMultiX* thumbnailView_;
  ImageX* preview_;
  QStackedWidget* pages_;
  QLabel* failuresHeading_;
  FailureTable* failures_;
  QListWidget* templates_;
  QLabel* status_;
  RunProgress* progress_;
  QWidget* panes_;
  QPushButton *create_, *remove_, *edit_, *apply_, *stamp_, *cancel_;
  QPointer<QWidget> focus_;
  bool locked_ = false;
  bool shown_ = false;
};

}  // namespace zqm
