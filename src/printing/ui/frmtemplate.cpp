// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/frmtemplate.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "imaging/template_files.h"
#include "imaging/ui/image_x.h"
#include "printing/design_pictures.h"
#include "printing/print_text.h"
#include "printing/ui/box_panel.h"
#include "printing/ui/colour_panel.h"
#include "printing/ui/frmname.h"
#include "printing/ui/paper_panel.h"
#include "printing/ui/sheet_surface.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize{1180, 760};
constexpr int kPanelWidth = 264;
constexpr int kPresetColumns = 3;

/// Where on its grid of 3 x 3 a preset lies.
int GridPlace(double share) {
  return static_cast<int>(share * (kPresetColumns - 1));
}

/// A column of controls beside the sheet; scrolls where the window is too low for it.
QWidget* Scrolling(QWidget* panel) {
  auto* scroll = new QScrollArea;
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidget(panel);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setFixedWidth(std::max(kPanelWidth, panel->minimumSizeHint().width() + look::kSpace12));
  return scroll;
}

}  // namespace

frmtemplate::frmtemplate(const SessionFolders& folders, QWidget* parent)
    : QDialog(parent),
      folder_(folders.PrintingTemplatesFolder()),
      pictures_(folders.StateFolder()),
      surface_(new SheetSurface),
      paper_(new PaperPanel),
      box_(new BoxPanel),
      colour_(new ColourPanel(pictures_)),
      count_(look::Hint(QString())),
      status_(look::Hint(QString())) {
  setObjectName(u"frmtemplate"_s);
  setWindowTitle(u"Printing Template Creator"_s);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  ComposeSurface();
  auto* panes = new QHBoxLayout;
  look::SetSpace(panes, 0, look::kSpace16);
  panes->addWidget(ComposePaper());
  panes->addWidget(surface_, 1);
  panes->addWidget(ComposeBoxes());
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addLayout(panes, 1);
  column->addLayout(ComposeFoot());
  Connect();
  ShowSheet();
  ShowState();
  resize(kUsualSize.boundedTo(screen()->availableGeometry().size() * 0.9));
}

void frmtemplate::ComposeSurface() {
  surface_->setObjectName(u"ImageX1"_s);
  surface_->setAccessibleName(tr("Sheet"));
  surface_->setMinimumSize(kPanelWidth, kPanelWidth);
}

QPushButton* frmtemplate::AddButton(const QString& caption, const char* name, Handler handler) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this,
          [this, name, handler] { Guarded("frmtemplate", name, [&] { (this->*handler)(); }); });
  return button;
}

QWidget* frmtemplate::ComposePaper() {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(paper_);
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Picture boxes")));
  count_->setObjectName(u"lblcount"_s);
  column->addWidget(count_);
  column->addWidget(AddButton(u"&Add Picture Box"_s, "Command2", &frmtemplate::Command2_Click));
  column->addWidget(colour_);
  removeAll_ = AddButton(u"Remove All Picture Bo&x"_s, "Command3", &frmtemplate::Command3_Click);
  column->addWidget(removeAll_);
  column->addStretch(1);
  return Scrolling(panel);
}

QWidget* frmtemplate::ComposeBoxes() {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(box_);
  auto* aspect = new QCheckBox(u"Mai&ntain Aspect Ratio"_s);
  aspect->setObjectName(u"Check1"_s);
  aspect->setToolTip(tr("While a box is sized by the mouse"));
  connect(aspect, &QCheckBox::toggled, surface_, &ImageX::SetKeepObjectAspect);
  column->addWidget(aspect);
  remove_ = AddButton(u"Remove Pict&ure Box"_s, "Command4", &frmtemplate::Command4_Click);
  column->addWidget(remove_);
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Position")));
  column->addLayout(ComposePresets());
  column->addSpacing(look::kSpace8);
  column->addWidget(look::Heading(tr("Selection and order")));
  selectAll_ = AddButton(u"S&elect All"_s, "Command7", &frmtemplate::Command7_Click);
  deselectAll_ = AddButton(u"&Deselect All"_s, "Command8", &frmtemplate::Command8_Click);
  sendBack_ = AddButton(u"Send to &Back"_s, "Command5", &frmtemplate::Command5_Click);
  bringFront_ = AddButton(u"Bring to &Front"_s, "Command6", &frmtemplate::Command6_Click);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  int place = 0;
  for (QPushButton* button : {selectAll_, deselectAll_, sendBack_, bringFront_}) {
    look::MakeCompact(button);
    grid->addWidget(button, place / 2, place % 2);
    ++place;
  }
  column->addLayout(grid);
  column->addStretch(1);
  return Scrolling(panel);
}

QLayout* frmtemplate::ComposePresets() {
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace4);
  // In the order of reading, as the keyboard goes.
  std::vector<BoxPreset> presets(BoxPresets().begin(), BoxPresets().end());
  std::ranges::sort(presets, {}, [](const BoxPreset& preset) {
    return GridPlace(preset.down) * kPresetColumns + GridPlace(preset.across);
  });
  for (const BoxPreset& preset : presets) {
    auto* button = new QPushButton(QString::fromUtf16(preset.caption));
    button->setObjectName(QString::fromLatin1(preset.objectName));
    button->setAutoDefault(false);
    look::MakeCompact(button);
    connect(button, &QPushButton::clicked, this,
            [this, preset] { Guarded("frmtemplate", preset.objectName, [&] { MoveTo(preset); }); });
    grid->addWidget(button, GridPlace(preset.down), GridPlace(preset.across));
    presets_.push_back(button);
  }
  return grid;
}

QLayout* frmtemplate::ComposeFoot() {
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  status_->setObjectName(u"lblstatus"_s);
  status_->setTextFormat(Qt::PlainText);
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  foot->addWidget(status_, 1);
  auto* close = new QPushButton(tr("&Close"));
  close->setObjectName(u"cmdcancel"_s);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  foot->addWidget(close);
  foot->addWidget(AddButton(u"Sa&ve As"_s, "Command12", &frmtemplate::Command12_Click));
  save_ = AddButton(u"&Save"_s, "Command11", &frmtemplate::Command11_Click);
  look::MakePrimary(save_);
  // Enter belongs to the fields.
  save_->setDefault(false);
  save_->setAutoDefault(false);
  foot->addWidget(save_);
  return foot;
}

void frmtemplate::Connect() {
  const auto guarded = [this](const char* procedure, void (frmtemplate::*handler)()) {
    return [this, procedure, handler] {
      Guarded("frmtemplate", procedure, [&] { (this->*handler)(); });
    };
  };
  connect(surface_, &ImageX::OnSelectObject, this,
          guarded("ImageX1_OnSelectObject", &frmtemplate::ImageX1_OnSelectObject));
  // Also in the middle of a drag, which tells of itself only when it has ended.
  connect(surface_, &ImageX::OnObjectMoved, this, guarded("Track", &frmtemplate::Track));
  connect(surface_, &PictureView::OnMouseMove, this, guarded("Track", &frmtemplate::Track));
  connect(surface_, &PictureView::OnMouseUp, this, guarded("Track", &frmtemplate::Track));
  connect(surface_, &ImageX::OnKeyPress, this, [this](int key) {
    if (key != Qt::Key_Delete) return;
    Guarded("frmtemplate", "Command4_Click", [this] { Command4_Click(); });
  });
  connect(paper_, &PaperPanel::UnitChosen, this, &frmtemplate::Option_Click);
  connect(paper_, &PaperPanel::SetPaperAsked, this,
          guarded("Command1_Click", &frmtemplate::Command1_Click));
  connect(box_, &BoxPanel::Typed, this, &frmtemplate::Type);
  connect(box_, &BoxPanel::Left, this, [this] { box_->ShowBox(design_); });
}

void frmtemplate::EditTemplate(const QString& name, const PrintTemplate& layout) {
  name_ = name;
  design_ = TemplateDesign(layout);
  saved_ = {layout.sheet, design_.Objects(), design_.Ids()};
  paper_->ShowPaper(design_.PaperSize());
  ShowSheet();
  ShowBoxes();
}

// Paper.

void frmtemplate::Command1_Click() {
  TakePaper();
}

bool frmtemplate::TakePaper() {
  const auto [width, height, exact] = paper_->AsTyped();
  if (const Outcome changed = design_.ChangePaper(width, height, exact); !changed) {
    MsgBox(changed.Reason(), MessageKind::Warning);
    return false;
  }
  SetWorking(true, QString::fromUtf16(print_text::kAdjustingPaper));
  ShowSheet();
  SetWorking(false);
  paper_->ShowCurrent(design_.PaperSize());
  return true;
}

void frmtemplate::Option_Click(Unit unit) {
  design_.SwitchUnit(unit);
  box_->SwitchUnit(design_);
}

// Boxes.

void frmtemplate::ChangeBoxes(const char16_t* caption, const Change& change) {
  Track();
  SetWorking(true, QString::fromUtf16(caption));
  change(design_);
  SetWorking(false);
  ShowBoxes();
}

void frmtemplate::Command2_Click() {
  Track();
  design_.Add(colour_->Colour());
  ShowBoxes();
  surface_->setFocus();
}

void frmtemplate::Command3_Click() {
  if (design_.Objects().IsEmpty() || MsgBox(QString::fromUtf16(print_text::kRemoveAll),
                                            MessageKind::Question, Buttons::YesNo) != Answer::Yes)
    return;
  design_.RemoveAll();
  ShowBoxes();
}

void frmtemplate::Command4_Click() {
  if (design_.Selected().empty()) return;
  ChangeBoxes(print_text::kRemoving, [](TemplateDesign& design) { design.Remove(); });
}

void frmtemplate::Command5_Click() {
  ChangeBoxes(print_text::kSendingBack, [](TemplateDesign& design) { design.SendToBack(); });
}

void frmtemplate::Command6_Click() {
  ChangeBoxes(print_text::kBringingFront, [](TemplateDesign& design) { design.BringToFront(); });
}

void frmtemplate::Command7_Click() {
  surface_->SelectAllObjects();
}

void frmtemplate::Command8_Click() {
  surface_->DeselectAllObjects();
}

void frmtemplate::MoveTo(const BoxPreset& preset) {
  if (design_.Selected().empty()) return;
  ChangeBoxes(print_text::kAdjustingBoxes, [&](TemplateDesign& design) { design.Move(preset); });
}

void frmtemplate::Type(TemplateDesign::Side side, const QString& text) {
  // The field that is typed into isn't written meanwhile.
  if (design_.Type(side, text)) surface_->SetObjects(design_.Objects());
}

void frmtemplate::ImageX1_OnSelectObject() {
  if (placing_) return;
  Track();
  design_.TakeSelection(surface_->SelectedObjects());
  ShowState();
}

void frmtemplate::Track() {
  if (surface_->Objects() == design_.Objects() || !design_.TakeObjects(surface_->Objects())) return;
  box_->ShowBox(design_);
}

// What is shown.

void frmtemplate::ShowSheet() {
  const QSize sheet = design_.PaperSize().Sheet();
  surface_->ShowImage(CanvasPicture(pictures_, sheet), sheet);
}

void frmtemplate::ShowBoxes() {
  {
    const QScopedValueRollback placing(placing_, true);
    surface_->SetObjects(design_.Objects());
    if (!std::ranges::is_permutation(surface_->SelectedObjects(), design_.Selected())) {
      surface_->DeselectAllObjects();
      for (const int id : design_.Selected())
        surface_->SelectObject(id, true);
    }
  }
  ShowState();
}

void frmtemplate::ShowState() {
  count_->setText(design_.CountCaption());
  box_->ShowBox(design_);
  const bool any = !design_.Objects().IsEmpty(), selected = !design_.Selected().empty();
  const auto enable = [](QPushButton* button, bool on, const QString& why) {
    button->setEnabled(on);
    button->setToolTip(on ? QString() : why);
  };
  const QString select = tr("Select a picture box first");
  for (QPushButton* button : {remove_, sendBack_, bringFront_, deselectAll_})
    enable(button, selected, select);
  for (QPushButton* button : presets_)
    enable(button, selected, select);
  for (QPushButton* button : {removeAll_, selectAll_})
    enable(button, any, tr("Add a picture box first"));
  enable(save_, !name_.isEmpty(), tr("A new template is saved under a name first"));
  SetWorking(false);
}

void frmtemplate::SetWorking(bool working, const QString& text) {
  working_ = working;
  const QString idle =
      design_.Objects().IsEmpty()
          ? tr("Add a picture box, drag it to its place and size it by its corners")
          : name_;
  status_->setText(working ? text : idle);
  if (working) status_->repaint();
}

void frmtemplate::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Save)) return QDialog::keyPressEvent(event);
  Guarded("frmtemplate", "Form_KeyDown", [this] { Save(); });
}

// Saving.

std::optional<PrintTemplate> frmtemplate::Checked() {
  Track();
  // A paper that was typed and not set is meant as well.
  if (!design_.Objects().IsEmpty() && !paper_->Shows(design_.PaperSize()) && !TakePaper())
    return std::nullopt;
  const auto layout = design_.Checked();
  if (layout) return *layout;
  MsgBox(layout.Reason(),
         design_.Objects().IsEmpty() ? MessageKind::Information : MessageKind::Warning);
  return std::nullopt;
}

bool frmtemplate::Save() {
  if (name_.isEmpty()) return SaveAs();
  SetWorking(true, QString::fromUtf16(template_text::kSaving));
  const auto layout = Checked();
  Outcome saved;
  if (layout) saved = RunAside([&] { return SaveTemplate(folder_, name_, *layout); });
  SetWorking(false);
  if (!layout) return false;
  if (!saved) {
    MsgBox(saved.Reason(), MessageKind::Warning);
    return false;
  }
  TakeSaved(name_, *layout);
  return true;
}

bool frmtemplate::SaveAs() {
  const auto layout = Checked();
  if (!layout) return false;
  frmname dialog(folder_, *layout, name_, this);
  dialog.exec();
  if (dialog.SavedName().isEmpty()) return false;
  TakeSaved(dialog.SavedName(), *layout);
  return true;
}

void frmtemplate::TakeSaved(const QString& name, const PrintTemplate& layout) {
  name_ = name;
  saved_ = layout;
  ShowState();
  Q_EMIT TemplateSaved(name_);
  MsgBox(QString::fromUtf16(template_text::kSaved), MessageKind::Information);
}

void frmtemplate::Command11_Click() {
  Save();
}

void frmtemplate::Command12_Click() {
  SaveAs();
}

void frmtemplate::reject() {
  if (working_) return;
  bool mayClose = true;
  Guarded("frmtemplate", "Form_Unload", [&] { mayClose = SettleChanges(); });
  if (mayClose) QDialog::reject();
}

bool frmtemplate::SettleChanges() {
  Track();
  const PrintTemplate now{design_.PaperSize().Sheet(), design_.Objects(), design_.Ids()};
  if (now.objects.IsEmpty() || now == saved_) return true;
  const Answer answer =
      MsgBox(tr("Save changes to the template?"), MessageKind::Question, Buttons::YesNoCancel);
  if (answer == Answer::No) return true;
  // What can't be saved isn't given up.
  return answer == Answer::Yes && Save();
}

}  // namespace zqm
