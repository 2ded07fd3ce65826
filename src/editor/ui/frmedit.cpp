// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/frmedit.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

#include "editor/edit_text.h"
#include "editor/ui/crop_step.h"
#include "editor/ui/level_step.h"
#include "editor/ui/magic_wand_step.h"
#include "editor/ui/red_eye_step.h"
#include "editor/ui/resize_step.h"
#include "editor/ui/save_step.h"
#include "editor/ui/tool_strip.h"
#include "editor/ui/watermark_step.h"
#include "imaging/codec.h"
#include "imaging/file_filters.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize{1280, 800};
constexpr QSize kSmallestSize{900, 600};
constexpr int kStepsWidth = 260;
constexpr int kUndoLimit = 100;

/// A step of the workflow as its list shows it.
struct StepCaption {
  EditCommand command;
  const char16_t* text;
  const char* name;
};
constexpr EditCommand kSaveStep = EditCommand::Save;
constexpr StepCaption kSteps[] = {
    {EditCommand::Level, u"1. Level/Rotate", "Label1"},
    {EditCommand::Crop, u"2. Crop", "Label2"},
    {EditCommand::Resize, u"3. Resize", "Label9"},
    {EditCommand::RedEye, u"4. Red Eye Removal", "Label3"},
    {EditCommand::Sharpen, u"5. Sharpen / Noise", "Label4"},
    {EditCommand::Color, u"6. Color", "Label5"},
    {EditCommand::Saturation, u"7. Saturation", "Label6"},
    {EditCommand::Brightness, u"8. Brightness/Contrast", "Label7"},
    {EditCommand::Watermark, u"9. Watermark", "Label8"},
    {kSaveStep, u"10. Save", "Label10"},
};

/// The file itself, or a JPEG beside it where its format can't be written.
QString ProposedPath(const QString& path) {
  if (CodecForSaving(GetExtensionName(path).toLower()) != nullptr) return path;
  return PathIn(GetParentFolderName(path), GetBaseName(path) + u".jpg"_s);
}

QPushButton* CaptionButton(const char16_t* text, const char* name) {
  QPushButton* button = look::StepButton(QString::fromUtf16(text));
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

}  // namespace

/// While a file is written: nothing can be done, and closing waits.
class frmedit::Locked {
 public:
  explicit Locked(frmedit& window) : window_(window), focus_(window.focusWidget()) {
    window_.panels_[5]->setText(tr("Saving…"));
    window_.setEnabled(false);
    YieldToInterface();
  }
  ~Locked() {
    window_.panels_[5]->setText(u"Ready"_s);
    window_.setEnabled(true);
    if (focus_) focus_->setFocus();
  }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  frmedit& window_;
  QPointer<QWidget> focus_;
};

frmedit::frmedit(Session& session, BrowserView* view, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      view_(view),
      actions_(new EditActions(this)),
      image1_(new ImageX),
      image2_(new ImageX),
      pages_(new QStackedWidget),
      noStep_(look::Hint(tr("Choose a step above, or a tool over the picture."))),
      tools_(new ToolStrip) {
  setObjectName(u"frmedit"_s);
  setWindowTitle(u"Zolmira QM - Photo Editor"_s);
  setWindowModality(Qt::ApplicationModal);
  setAttribute(Qt::WA_QuitOnClose, false);
  Compose();
  ConnectPicture();
  Form_Load();
}

frmedit::~frmedit() = default;

// Putting together.

void frmedit::Compose() {
  actions_->FillMenuBar(menuBar());
  connect(actions_, &EditActions::Triggered, this, [this](EditCommand command) {
    Guarded("frmedit", "Run", [this, command] { Run(command); });
  });
  for (QMenu* menu : menuBar()->findChildren<QMenu*>())
    connect(menu, &QMenu::aboutToShow, this, &frmedit::UpdateEnabled);
  auto* panes = new QSplitter(Qt::Horizontal);
  panes->setObjectName(u"panes"_s);
  panes->setHandleWidth(1);
  panes->setChildrenCollapsible(false);
  panes->addWidget(ComposeSteps());
  panes->addWidget(ComposeCentre());
  panes->setStretchFactor(1, 1);
  setCentralWidget(panes);
  ComposeStatusBar();
  resize(kUsualSize);
  setMinimumSize(kSmallestSize);
}

QWidget* frmedit::ComposeSteps() {
  auto* panel = new QWidget;
  panel->setObjectName(u"panel"_s);
  auto* column = new QVBoxLayout(panel);
  look::SetSpace(column, look::kSpace12, look::kSpace4);
  for (const StepCaption& step : kSteps) {
    QPushButton* caption = CaptionButton(step.text, step.name);
    caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(caption, &QPushButton::clicked, this, [this, &step] {
      const QByteArray handler = QByteArray(step.name) + "_Click";
      Guarded("frmedit", handler.constData(), [this, &step] { OpenStep(step.command); });
    });
    column->addWidget(caption);
    captions_[step.command] = caption;
  }
  auto* frames = new QWidget;
  frames->setObjectName(u"panel"_s);
  auto* place = new QVBoxLayout(frames);
  look::SetSpace(place, 0, 0);
  place->addWidget(noStep_);
  steps_ = {{EditCommand::Level, new LevelStep(*image1_)},
            {EditCommand::Crop, new CropStep(*image1_)},
            {EditCommand::Resize, resize_ = new ResizeStep(*image1_)},
            {EditCommand::RedEye, new RedEyeStep(*image1_)},
            {EditCommand::Watermark, watermark_ = new WatermarkStep(*image1_)},
            {EditCommand::MagicSettings,
             magic_ = new MagicWandStep(*image1_, session_.Folders().StateFolder())}};
  auto* save = new SaveStep(*image1_);
  steps_[kSaveStep] = save;
  connect(save, &SaveStep::SaveWanted, this, [this] { Command16_Click(); });
  connect(save, &SaveStep::SaveAsWanted, this, [this] { Command17_Click(); });
  for (const auto& [command, step] : steps_) {
    place->addWidget(step);
    step->hide();
    connect(step, &EditStep::ToolWanted, this, &frmedit::SetTool);
    connect(step, &EditStep::Acting, this, [this] { ShowPage(Page::Editing); });
    for (QComboBox* list : step->findChildren<QComboBox*>())
      list->installEventFilter(this);
  }
  place->addStretch(1);
  auto* scroll = new QScrollArea;
  scroll->setWidget(frames);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  column->addSpacing(look::kSpace16);
  column->addWidget(scroll, 1);
  panel->setMinimumWidth(kStepsWidth);
  panel->setMaximumWidth(2 * kStepsWidth);
  return panel;
}

QWidget* frmedit::ComposeCentre() {
  auto* centre = new QWidget;
  centre->setObjectName(u"panel"_s);
  auto* column = new QVBoxLayout(centre);
  look::SetSpace(column, 0, 0);
  auto* head = new QHBoxLayout;
  look::SetSpace(head, look::kSpace4, look::kSpace8);
  head->addWidget(tools_);
  head->addStretch(1);
  originalCaption_ = CaptionButton(u"Original Image", "Label11");
  editingCaption_ = CaptionButton(u"Editing Preview", "Label12");
  head->addWidget(originalCaption_);
  head->addWidget(editingCaption_);
  column->addLayout(head);
  image1_->setObjectName(u"ImageX1"_s);
  image1_->setAccessibleName(tr("Picture"));
  image2_->setObjectName(u"ImageX2"_s);
  image2_->setAccessibleName(tr("Original Image"));
  pages_->addWidget(image1_);
  pages_->addWidget(image2_);
  column->addWidget(pages_, 1);
  connect(originalCaption_, &QPushButton::clicked, this, [this] { ShowPage(Page::Original); });
  connect(editingCaption_, &QPushButton::clicked, this, [this] { ShowPage(Page::Editing); });
  connect(tools_, &ToolStrip::ToolClicked, this, [this](int index) {
    Guarded("frmedit", "imgtool_Click", [this, index] { imgtool_Click(index); });
  });
  connect(tools_, &ToolStrip::NavigateClicked, this,
          [this] { Guarded("frmedit", "Image13_Click", [this] { Image13_Click(); }); });
  return centre;
}

void frmedit::ComposeStatusBar() {
  // Zoom, size, file, position, depth, progress, type: as wide as they usually are.
  constexpr int kWidths[] = {90, 130, 0, 90, 130, 60, 0};
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(look::kSpace8, 0, look::kSpace8, 0);
  for (int i = 0; i < 7; ++i) {
    panels_[i] = new QLabel;
    panels_[i]->setObjectName(u"panel%1"_s.arg(i + 1));
    panels_[i]->setMinimumWidth(kWidths[i]);
    statusBar()->addWidget(panels_[i], i == 2 ? 1 : 0);
  }
}

void frmedit::ConnectPicture() {
  connect(image1_, &ImageX::OnImageChange, this, [this] { modified_ = true; });
  connect(image1_, &ImageX::OnFinishWork, this, [this] {
    image1_->ClearAllRedo();
    UpdateStatusBar();
    TellLostUndo();
  });
  connect(image1_, &ImageX::OnProgress, this, [this](int percent) {
    panels_[5]->setText(percent < 100 ? u"%1%"_s.arg(percent) : u"Ready"_s);
  });
  connect(image1_, &ImageX::OnSelectionChange, this, &frmedit::UpdateEnabled);
  for (ImageX* image : {image1_, image2_}) {
    connect(image, &ImageX::OnViewChange, this, &frmedit::ShowZoom);
    connect(image, &ImageX::OnMouseMove, this, &frmedit::ShowPosition);
    image->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(image, &QWidget::customContextMenuRequested, this, [this, image](const QPoint& at) {
      UpdateEnabled();
      QAction* clear = actions_->Get(EditCommand::ClearSelection);
      clear->setEnabled(image1_->HasSelection());
      QMenu menu(this);
      actions_->FillPictureMenu(&menu);
      menu.exec(image->mapToGlobal(at));
      clear->setEnabled(true);
    });
  }
}

void frmedit::Form_Load() {
  for (ImageX* image : {image1_, image2_}) {
    image->SetBackground(Qt::white);
    image->SetMouseInteract(u"SCROLL"_s, true);
    image->SetMouseInteract(u"MOUSEWHEELZOOM"_s, true);
    image->SetSettings(session_.WorkSettings());
  }
  image1_->SetScratchFolder(session_.Folders().ScratchFolder());
  image1_->SetUndoLimit(kUndoLimit);
  magic_->LoadMagicWandSettings();
  ShowPage(Page::Original);
  ShowPage(Page::Editing);
  const QString folder = session_.Folders().StateFolder();
  resize_->SetPanel(LoadResizeSettings(folder));
  watermark_->SetPanel(LoadWatermarkSettings(folder));
  UpdateEnabled();
}

void frmedit::PrepareToShow() {
  for (ImageX* image : {image1_, image2_})
    image->LockUpdate(false);
  Image13_Click();
  UpdateStatusBar();
  image1_->setFocus();
}

// Files.

Outcome frmedit::Load(const QString& path) {
  if (Outcome may = MayBeEdited(path); !may) return may;
  const EditedFile file = EditedFile::Of(path);
  // Apart from the control: what can't be loaded doesn't take the place of what is edited.
  Picture picture;
  picture.SetSettings(session_.WorkSettings());
  if (Outcome loaded = RunAside([&] { return picture.LoadFromFile(path); }); !loaded) return loaded;
  image1_->Assign(picture);
  image2_->Assign(picture);
  file_ = file;
  modified_ = false;
  return {};
}

Outcome frmedit::OpenPhoto(const QString& path) {
  for (ImageX* image : {image1_, image2_})
    image->LockUpdate(true);
  const Outcome loaded = Load(path);
  PrepareToShow();
  return loaded;
}

bool frmedit::SettleChanges() {
  if (!modified_) return true;
  const QString question = u"Save changes to  "_s + GetFileName(file_.path) + u'?';
  if (MsgBox(question, MessageKind::Question, Buttons::YesNoNeeded) == Answer::No) return true;
  // What can't be saved isn't given up.
  return Save();
}

void frmedit::mnu_open_Click() {
  if (!SettleChanges()) return;
  const QString path = Pick({PickRequest::What::OpenFile, tr("Open"),
                             GetParentFolderName(file_.path), OpenPictureFilters()});
  if (path.isEmpty()) return;
  const Outcome loaded = Load(path);
  Tell(loaded);
  if (!loaded) return;
  Image13_Click();
  ShowStep(EditCommand::Open);
  ShowPage(Page::Editing);
  UpdateStatusBar();
}

SaveFollowers frmedit::Followers() {
  return {session_.ActiveCatalogue(), view_, session_.ReadSettings()};
}

bool frmedit::Save() {
  if (file_.path.isEmpty()) return false;
  SaveResult result;
  {
    const Locked locked(*this);
    result = SaveEdited(Followers(), image1_->GetPicture(), file_);
  }
  if (!result) MsgBox(result.Reason(), MessageKind::Warning);
  return bool(result.saved);
}

void frmedit::Command16_Click() {
  Guarded("frmedit", "Command16_Click", [this] { Save(); });
}

void frmedit::Command17_Click() {
  Guarded("frmedit", "Command17_Click", [this] {
    if (file_.path.isEmpty()) return;
    const QString typed =
        Pick({PickRequest::What::SaveFile, QString::fromUtf16(edit_text::kSaveTitle),
              ProposedPath(file_.path), SavePictureFilters()});
    if (typed.isEmpty()) return;
    const SaveTarget target = FindSaveTarget(typed);
    if (target.exists &&
        MsgBox(ReplaceQuestion(target.path), MessageKind::Warning, Buttons::YesNo) == Answer::No) {
      setWindowTitle(u"Zolmira QM - Photo Editor"_s);
      return;
    }
    SaveResult result;
    {
      const Locked locked(*this);
      result = SaveEditedAs(Followers(), image1_->GetPicture(), target, file_);
    }
    if (result.saved) modified_ = false;
    if (!result) MsgBox(result.Reason(), MessageKind::Warning);
  });
}

void frmedit::closeEvent(QCloseEvent* event) {
  Guarded("frmedit", "Form_Unload", [&] {
    if (!isEnabled() || image1_->IsWorking() || !SettleChanges()) return event->ignore();
    SaveSettings();
    event->accept();
    Q_EMIT Closed();
  });
}

void frmedit::SaveSettings() {
  const QString folder = session_.Folders().StateFolder();
  Tell(SaveResizeSettings(folder, resize_->Panel()));
  Tell(SaveWatermarkSettings(folder, watermark_->Panel()));
}

void frmedit::Tell(const Outcome& outcome) {
  if (!outcome) MsgBox(outcome.Reason(), MessageKind::Warning);
}

/// A list is searched by typing letters, which are tools elsewhere.
bool frmedit::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && qobject_cast<QComboBox*>(watched) != nullptr) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (!(key->modifiers() & ~Qt::ShiftModifier) && !key->text().isEmpty()) event->accept();
  }
  return QMainWindow::eventFilter(watched, event);
}

// What is shown.

void frmedit::UpdateStatusBar() {
  ShowZoom();
  panels_[1]->setText(u"%1px X %2px"_s.arg(image1_->ImageWidth()).arg(image1_->ImageHeight()));
  panels_[2]->setText(GetFileName(file_.path));
  panels_[4]->setText(u"Bits Per Sample:  "_s + image1_->GetIOProperty(u"BITSPERSAMPLE"));
  panels_[5]->setText(u"Ready"_s);
  panels_[6]->setText(u"File Type:  "_s + image1_->GetIOProperty(u"FILETYPESTR"));
  UpdateEnabled();
}

/// Once, when the way back to the beginning is cut.
void frmedit::TellLostUndo() {
  const int lost = image1_->History().Lost();
  if (lost > 0 && lostUndo_ == 0)
    MsgBox(u"Undo cannot go back to the beginning any more: "_s + image1_->History().LostReason(),
           MessageKind::Warning);
  lostUndo_ = lost;
}

void frmedit::ShowZoom() {
  const ImageX* shown = pages_->currentIndex() == 0 ? image1_ : image2_;
  panels_[0]->setText(u"Zoom :  %1%"_s.arg(qRound(shown->Zoom())));
}

void frmedit::ShowPosition(const QPointF& pixel) {
  const ImageX* shown = pages_->currentIndex() == 0 ? image1_ : image2_;
  const int x = std::clamp(static_cast<int>(pixel.x()), 0, shown->ImageWidth());
  const int y = std::clamp(static_cast<int>(pixel.y()), 0, shown->ImageHeight());
  panels_[3]->setText(u"%1,%2"_s.arg(x).arg(y));
}

void frmedit::UpdateEnabled() {
  const bool undoes = image1_->UndoCount() > 0;
  actions_->Get(EditCommand::Undo)->setEnabled(undoes);
  actions_->Get(EditCommand::UndoAll)->setEnabled(undoes);
  actions_->Get(EditCommand::Redo)->setEnabled(image1_->RedoCount() > 0);
}

void frmedit::ShowPage(Page page) {
  const bool original = page == Page::Original;
  pages_->setCurrentWidget(original ? image2_ : image1_);
  originalCaption_->setChecked(original);
  editingCaption_->setChecked(!original);
  ShowZoom();
}

}  // namespace zqm
