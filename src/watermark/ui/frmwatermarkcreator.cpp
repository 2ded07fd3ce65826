// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/frmwatermarkcreator.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSlider>
#include <QVBoxLayout>
#include <utility>

#include "imaging/file_filters.h"
#include "imaging/template_files.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"
#include "shell/ui/wheel_guard.h"
#include "watermark/ui/frmwatername.h"
#include "watermark/ui/template_surface.h"
#include "watermark/ui/text_layer_panel.h"
#include "watermark/watermark_layers.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize{1180, 760};
constexpr int kPanelWidth = 300;
constexpr int kOpaque = 255;

struct ImportedImage {
  Outcome loaded;
  ObjectPicture picture;
  QSize size;
};

/// For any thread.
ImportedImage LoadImage(const QString& path, const PictureSettings& load) {
  Picture picture;
  picture.SetSettings(load);
  ImportedImage imported;
  imported.loaded = picture.LoadFromFile(path);
  if (!imported.loaded) return imported;
  imported.picture = picture.Image();
  imported.size = {picture.GetIOProperty(u"WIDTH").toInt(),
                   picture.GetIOProperty(u"HEIGHT").toInt()};
  if (imported.size.isEmpty()) imported.size = picture.Image().size();
  return imported;
}

}  // namespace

frmwatermarkcreator::frmwatermarkcreator(QString folder, const PictureSettings& load,
                                         const Picture& photo, QWidget* parent)
    : QDialog(parent),
      folder_(std::move(folder)),
      load_(load),
      surface_(new TemplateSurface),
      text_(new TextLayerPanel),
      transparency_(new QSlider(Qt::Horizontal)),
      transparencyText_(look::Hint(QString())),
      size_(look::Hint(QString())) {
  setObjectName(u"frmwatermarkcreator"_s);
  setWindowTitle(u"Watermark Template Creator"_s);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  surface_->setObjectName(u"ImageX1"_s);
  surface_->setAccessibleName(tr("Template"));
  surface_->setMinimumSize(2 * kPanelWidth, kPanelWidth);
  surface_->setToolTip(
      tr("Dragged layers snap to the edges and the middle; hold Ctrl to place them freely"));
  auto* panes = new QHBoxLayout;
  look::SetSpace(panes, 0, look::kSpace12);
  panes->addWidget(ComposePanel());
  panes->addWidget(surface_, 1);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addLayout(panes, 1);
  column->addLayout(ComposeFoot());

  connect(text_, &TextLayerPanel::Altered, this, [this](const QString& what) {
    Guarded("frmwatermarkcreator", "AlterText", [&] { Altered(what); });
  });
  // What is no number or color there has left the text as it was.
  connect(text_, &TextLayerPanel::FieldLeft, this,
          [this] { Guarded("frmwatermarkcreator", "GtTxtProp", [this] { ShowSelection(); }); });
  connect(transparency_, &QSlider::valueChanged, this, [this] {
    Guarded("frmwatermarkcreator", "Slider1_Change", [this] { Slider1_Change(); });
  });
  connect(surface_, &ImageX::OnSelectObject, this, [this] {
    Guarded("frmwatermarkcreator", "ImageX1_OnSelectObject", [this] { ImageX1_OnSelectObject(); });
  });
  // Sizing a text gives it another height.
  connect(surface_, &ImageX::OnObjectMoved, this, [this] {
    Guarded("frmwatermarkcreator", "ImageX1_OnObjectMoved", [this] {
      Remember(u"MOVE"_s);
      ShowSelection();
    });
  });
  // Each drag is a step, the arrow keys in a row are one.
  connect(surface_, &ImageX::OnMouseDown, this, [this] { history_.EndStep(); });
  connect(surface_, &ImageX::OnKeyPress, this, [this](int key) {
    if (key != Qt::Key_Delete) return;
    Guarded("frmwatermarkcreator", "Command4_Click", [this] { Command4_Click(); });
  });
  surface_->SetSettings(load_);
  surface_->Assign(photo);
  history_.Begin(surface_->Objects());
  SetWorking(false);
  ResetText();
  ShowSelection();
  const QSize room = screen()->availableGeometry().size();
  resize(kUsualSize.boundedTo(room * 0.9));
}

QPushButton* frmwatermarkcreator::AddButton(const QString& caption, const char* name,
                                            void (frmwatermarkcreator::*handler)()) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  const QByteArray procedure = QByteArray(name) + "_Click";
  connect(button, &QPushButton::clicked, this, [this, procedure, handler] {
    Guarded("frmwatermarkcreator", procedure.constData(), [&] { (this->*handler)(); });
  });
  return button;
}

QWidget* frmwatermarkcreator::ComposePanel() {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  look::SetSpace(column, 0, look::kSpace8);
  column->setContentsMargins(0, 0, look::kSpace12, 0);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(
      AddButton(u"Insert New &Text"_s, "Command1", &frmwatermarkcreator::Command1_Click), 0, 0);
  grid->addWidget(
      AddButton(u"Import New I&mage"_s, "Command3", &frmwatermarkcreator::Command3_Click), 0, 1);
  column->addLayout(grid);
  column->addSpacing(look::kSpace8);
  column->addWidget(text_);
  QLabel* caption = look::Caption(u"Image/Text Trans&parency"_s);
  caption->setAlignment(Qt::AlignLeft);
  caption->setBuddy(transparency_);
  column->addWidget(caption);
  transparency_->setObjectName(u"Slider1"_s);
  transparency_->setRange(0, kOpaque);
  transparencyText_->setObjectName(u"Text8"_s);
  transparencyText_->setMinimumWidth(look::kSpace24);
  transparencyText_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(transparency_, 1);
  row->addWidget(transparencyText_);
  column->addLayout(row);
  column->addSpacing(look::kSpace8);
  auto* arranging = new QGridLayout;
  look::SetSpace(arranging, 0, look::kSpace8);
  ComposeArranging(arranging);
  column->addLayout(arranging);
  column->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(panel);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setMinimumWidth(std::max(kPanelWidth, panel->minimumSizeHint().width()));
  scroll->setMaximumWidth(scroll->minimumWidth());
  KeepFromWheel(*panel);
  return scroll;
}

void frmwatermarkcreator::ComposeArranging(QGridLayout* grid) {
  using Window = frmwatermarkcreator;
  undo_ = AddButton(tr("Undo"), "cmdundo", &Window::Undo);
  undo_->setToolTip(tr("Take back the last change (Ctrl+Z)"));
  redo_ = AddButton(tr("Redo"), "cmdredo", &Window::Redo);
  redo_->setToolTip(tr("Make it again (Ctrl+Shift+Z)"));
  sendBack_ = AddButton(u"Se&nd to Back"_s, "Command7", &Window::Command7_Click);
  bringFront_ = AddButton(u"B&ring to Front"_s, "Command8", &Window::Command8_Click);
  selectAll_ = AddButton(u"Se&lect All"_s, "Command10", &Window::Command10_Click);
  deselectAll_ = AddButton(u"&Deselect All"_s, "Command11", &Window::Command11_Click);
  remove_ = AddButton(u"Remo&ve"_s, "Command4", &Window::Command4_Click);
  removeAll_ = AddButton(u"R&emove All"_s, "Command9", &Window::Command9_Click);
  QPushButton* const buttons[] = {undo_,      redo_,        sendBack_, bringFront_,
                                  selectAll_, deselectAll_, remove_,   removeAll_};
  int place = 0;
  for (QPushButton* button : buttons) {
    grid->addWidget(button, place / 2, place % 2);
    ++place;
  }
}

QLayout* frmwatermarkcreator::ComposeFoot() {
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  size_->setObjectName(u"Label1"_s);
  foot->addWidget(size_, 1);
  auto* close = new QPushButton(tr("&Close"));
  close->setObjectName(u"Command12"_s);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  foot->addWidget(close);
  foot->addWidget(AddButton(u"Save &As"_s, "Command6", &frmwatermarkcreator::Command6_Click));
  save_ = AddButton(u"&Save"_s, "Command5", &frmwatermarkcreator::Command5_Click);
  look::MakePrimary(save_);
  // Enter belongs to the fields.
  save_->setDefault(false);
  save_->setAutoDefault(false);
  foot->addWidget(save_);
  return foot;
}

void frmwatermarkcreator::EditTemplate(const QString& name, const VectorObjects& objects) {
  name_ = name;
  surface_->SetObjects(objects);
  saved_ = surface_->Objects();
  history_.Begin(saved_);
  ShowSelection();
}

// Layers.

void frmwatermarkcreator::ChangeLayers(const Change& change, const QString& word) {
  VectorObjects objects = surface_->Objects();
  change(objects, surface_->SelectedObjects());
  surface_->SetObjects(objects);
  Remember(word);
}

void frmwatermarkcreator::Remember(const QString& word) {
  history_.Changed(surface_->Objects(), word);
  undo_->setEnabled(history_.CanUndo());
  redo_->setEnabled(history_.CanRedo());
}

void frmwatermarkcreator::Undo() {
  ShowLayers(history_.Undo());
}

void frmwatermarkcreator::Redo() {
  ShowLayers(history_.Redo());
}

void frmwatermarkcreator::ShowLayers(const std::optional<VectorObjects>& layers) {
  if (!layers) return;
  surface_->SetObjects(*layers);
  ShowSelection();
}

QSize frmwatermarkcreator::SurfaceSize() const {
  return {surface_->ImageWidth(), surface_->ImageHeight()};
}

int frmwatermarkcreator::AddLayer(const std::function<int(VectorObjects& objects)>& add) {
  adding_ = true;
  surface_->DeselectAllObjects();
  VectorObjects objects = surface_->Objects();
  const int id = add(objects);
  surface_->SetObjects(objects);
  surface_->SelectObject(id, true);
  adding_ = false;
  Remember();
  ShowSelection();
  return id;
}

void frmwatermarkcreator::Command1_Click() {
  AddLayer([this](VectorObjects& objects) {
    return InsertNewText(objects, text_->NewText(), SurfaceSize());
  });
  text_->BeginTyping();
}

void frmwatermarkcreator::Command3_Click() {
  const QString path =
      Pick({PickRequest::What::OpenFile, u"Import New Image"_s, QString(), OpenPictureFilters()});
  if (path.isEmpty()) return;
  SetWorking(true);
  const ImportedImage image = RunAside([&] { return LoadImage(path, load_); });
  SetWorking(false);
  if (!image.loaded) {
    MsgBox(image.loaded.Reason(), MessageKind::Warning);
    return;
  }
  VectorObjects layers = surface_->Objects();
  ImportNewImage(layers, image.picture, image.size, SurfaceSize());
  // Not only when hours of work are to be saved.
  if (const Outcome within = CheckObjectBounds(layers); !within) {
    MsgBox(within.Reason(), MessageKind::Warning);
    return;
  }
  AddLayer([&](VectorObjects& objects) {
    return ImportNewImage(objects, image.picture, image.size, SurfaceSize());
  });
  surface_->setFocus();
}

void frmwatermarkcreator::Command4_Click() {
  if (surface_->SelectedObjects().empty()) return;
  SetWorking(true, QString::fromUtf16(watermark_text::kRemoving));
  ChangeLayers([](VectorObjects& objects, const std::vector<int>& selected) {
    RemoveLayers(objects, selected);
  });
  SetWorking(false);
  ResetText();
  ShowSelection();
}

void frmwatermarkcreator::Command7_Click() {
  SetWorking(true, QString::fromUtf16(watermark_text::kSendingBack));
  ChangeLayers([](VectorObjects& objects, const std::vector<int>& selected) {
    SendToBack(objects, selected);
  });
  SetWorking(false);
}

void frmwatermarkcreator::Command8_Click() {
  SetWorking(true, QString::fromUtf16(watermark_text::kBringingFront));
  ChangeLayers([](VectorObjects& objects, const std::vector<int>& selected) {
    BringToFront(objects, selected);
  });
  SetWorking(false);
}

void frmwatermarkcreator::Command9_Click() {
  if (surface_->Objects().IsEmpty()) return;
  if (MsgBox(QString::fromUtf16(watermark_text::kRemoveAll), MessageKind::Question,
             Buttons::YesNo) != Answer::Yes)
    return;
  surface_->RemoveAllObjects();
  Remember();
  ResetText();
  ShowSelection();
}

void frmwatermarkcreator::Command10_Click() {
  surface_->SelectAllObjects();
}

void frmwatermarkcreator::Command11_Click() {
  surface_->DeselectAllObjects();
}

void frmwatermarkcreator::Altered(const QString& what) {
  if (filling_) return;
  ChangeLayers(
      [&](VectorObjects& objects, const std::vector<int>& selected) {
        AlterText(objects, selected, text_->Panel(), what);
      },
      what);
}

void frmwatermarkcreator::Slider1_Change() {
  transparencyText_->setText(QString::number(transparency_->value()));
  if (filling_) return;
  ChangeLayers(
      [&](VectorObjects& objects, const std::vector<int>& selected) {
        SetTransparency(objects, selected, transparency_->value());
      },
      QString::fromUtf16(text_part::kTransparency));
}

// What is shown.

void frmwatermarkcreator::ImageX1_OnSelectObject() {
  if (adding_) return;
  history_.EndStep();
  ShowSelection();
}

void frmwatermarkcreator::ResetText() {
  filling_ = true;
  text_->SetPanel(text_->NewText());
  ShowTransparency(kOpaque);
  filling_ = false;
}

void frmwatermarkcreator::ShowTransparency(int transparency) {
  transparency_->setValue(transparency);
  transparencyText_->setText(QString::number(transparency));
}

void frmwatermarkcreator::ShowSelection() {
  const SelectionState state = StateOf(surface_->Objects(), surface_->SelectedObjects());
  filling_ = true;
  // One picture; of several layers, or none, the panel says what it said.
  if (state.transparency && !state.text) text_->SetPanel(text_->NewText());
  if (state.text) text_->SetPanel(*state.text);
  state.text ? text_->UnlockText() : text_->LockText();
  if (state.transparency) ShowTransparency(*state.transparency);
  filling_ = false;
  undo_->setEnabled(history_.CanUndo());
  redo_->setEnabled(history_.CanRedo());
  transparency_->setEnabled(state.any);
  save_->setEnabled(!name_.isEmpty());
  save_->setToolTip(name_.isEmpty() ? tr("A new template is saved under a name first")
                                    : tr("Save \"%1\" (Ctrl+S)").arg(name_));
  for (QPushButton* button : {sendBack_, bringFront_, deselectAll_, remove_})
    button->setEnabled(state.any);
  for (QPushButton* button : {selectAll_, removeAll_})
    button->setEnabled(!surface_->Objects().IsEmpty());
}

void frmwatermarkcreator::SetWorking(bool working, const QString& text) {
  working_ = working;
  size_->setText(working ? text : TemplateSizeText(SurfaceSize()));
  if (working) size_->repaint();
}

void frmwatermarkcreator::keyPressEvent(QKeyEvent* event) {
  const struct {
    QKeySequence::StandardKey key;
    std::function<void()> act;
  } commands[] = {{QKeySequence::Save, [this] { Save(); }},
                  {QKeySequence::SelectAll, [this] { Command10_Click(); }},
                  {QKeySequence::Undo, [this] { Undo(); }},
                  {QKeySequence::Redo, [this] { Redo(); }}};
  for (const auto& [key, act] : commands)
    if (event->matches(key)) return Guarded("frmwatermarkcreator", "Form_KeyDown", act);
  QDialog::keyPressEvent(event);
}

// Saving.

bool frmwatermarkcreator::HasLayers() {
  if (!surface_->Objects().IsEmpty()) return true;
  MsgBox(QString::fromUtf16(watermark_text::kEmpty), MessageKind::Information);
  return false;
}

bool frmwatermarkcreator::Save() {
  if (!HasLayers()) return false;
  if (name_.isEmpty()) return SaveAs();
  const VectorObjects objects = surface_->Objects();
  SetWorking(true, QString::fromUtf16(template_text::kSaving));
  const Outcome saved = SaveTemplate(TemplatePath(folder_, name_), objects, SurfaceSize());
  SetWorking(false);
  if (!saved) {
    MsgBox(saved.Reason(), MessageKind::Warning);
    return false;
  }
  saved_ = objects;
  Q_EMIT TemplateSaved(name_);
  MsgBox(QString::fromUtf16(template_text::kSaved), MessageKind::Information);
  return true;
}

bool frmwatermarkcreator::SaveAs() {
  if (!HasLayers()) return false;
  const VectorObjects objects = surface_->Objects();
  frmwatername dialog(folder_, objects, SurfaceSize(), name_, this);
  dialog.exec();
  if (dialog.SavedName().isEmpty()) return false;
  name_ = dialog.SavedName();
  saved_ = objects;
  ShowSelection();
  Q_EMIT TemplateSaved(name_);
  MsgBox(QString::fromUtf16(template_text::kSaved), MessageKind::Information);
  return true;
}

void frmwatermarkcreator::Command5_Click() {
  Save();
}

void frmwatermarkcreator::Command6_Click() {
  SaveAs();
}

void frmwatermarkcreator::reject() {
  if (working_) return;
  bool mayClose = true;
  Guarded("frmwatermarkcreator", "Form_Unload", [&] { mayClose = SettleChanges(); });
  if (mayClose) QDialog::reject();
}

bool frmwatermarkcreator::SettleChanges() {
  const VectorObjects& objects = surface_->Objects();
  if (objects.IsEmpty() || objects == saved_) return true;
  const Answer answer =
      MsgBox(tr("Save changes to the template?"), MessageKind::Question, Buttons::YesNoCancel);
  if (answer == Answer::No) return true;
  // What can't be saved isn't given up.
  return answer == Answer::Yes && Save();
}

}  // namespace zqm
