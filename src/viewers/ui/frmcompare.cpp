// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/frmcompare.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSplitter>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <array>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/ui/elided_label.h"
#include "shell/ui/look.h"
#include "shell/ui/path_delegate.h"
#include "shell/window_settings.h"
#include "viewers/compare.h"
#include "viewers/ui/compare_pane.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize(1200, 760), kSmallestSize(640, 420);
constexpr int kDetailsHeight = 200, kCaptionWidth = 220;
constexpr int kNoticeMilliseconds = 2500;
constexpr QLatin1StringView kGeometryKey("compare/geometry"), kPartsKey("compare/parts"),
    kDetailsKey("compare/details"), kAllKey("compare/allValues"), kLinkedKey("compare/linked");

// Of the window's keys those that move within a table.
constexpr std::array kTableKeys = {Qt::Key_Up,   Qt::Key_Down,   Qt::Key_Left, Qt::Key_Right,
                                   Qt::Key_Home, Qt::Key_PageUp, Qt::Key_End,  Qt::Key_PageDown};

enum DetailColumn { CaptionColumn, LeftColumn, RightColumn, ColumnCount };

}  // namespace

frmcompare::frmcompare(Session& session, const QStringList& photos, QWidget* parent)
    : QDialog(parent),
      catalogue_(session.ActiveCatalogue()),
      actions_(new ViewerActions(ViewerKind::Compare, this)),
      panes_{new ComparePane(catalogue_, session.ReadSettings(), photos, 0),
             new ComparePane(catalogue_, session.ReadSettings(), photos, 1)},
      active_(panes_[Left]),
      sides_(new QSplitter(Qt::Horizontal)),
      parts_(new QSplitter(Qt::Vertical)),
      table_(new QTableWidget(0, ColumnCount)),
      said_(look::Hint(QString())),
      quiet_(new QTimer(this)) {
  setObjectName(u"frmcompare"_s);
  setWindowTitle(tr("Compare Photos"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  panes_[Left]->setObjectName(u"pane1"_s);
  panes_[Right]->setObjectName(u"pane2"_s);
  Compose();
  connect(actions_, &ViewerActions::Triggered, this, [this](ViewerCommand command) {
    Guarded("frmcompare", "Run", [this, command] { Run(command); });
  });
  quiet_->setSingleShot(true);
  quiet_->setInterval(kNoticeMilliseconds);
  connect(quiet_, &QTimer::timeout, said_, &QLabel::clear);
  ArrangeControls();
  SetActive(active_);
}

frmcompare::~frmcompare() = default;

void frmcompare::Compose() {
  for (QSplitter* splitter : {sides_, parts_}) {
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
  }
  for (ComparePane* pane : panes_)
    AddPane(pane);
  details_ = ComposeDetails();
  parts_->addWidget(sides_);
  parts_->addWidget(details_);
  parts_->setStretchFactor(0, 1);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace8, look::kSpace8);
  column->addLayout(ComposeBar());
  column->addWidget(parts_, 1);
  setMinimumSize(kSmallestSize);
}

void frmcompare::AddPane(ComparePane* pane) {
  sides_->addWidget(pane);
  sides_->setStretchFactor(sides_->count() - 1, 1);
  pane->View().setContextMenuPolicy(Qt::ActionsContextMenu);
  pane->View().addActions(actions_->Menu());
  connect(pane, &ComparePane::Activated, this, [this, pane] { SetActive(pane); });
  connect(pane, &ComparePane::StepWanted, this,
          [this](int step) { Guarded("frmcompare", "Step", [this, step] { Step(step); }); });
  connect(&pane->View(), &PictureView::OnViewChange, this, [this, pane] { Lead(*pane); });
  connect(pane, &ComparePane::ActualSizeWanted, this, [this] { samePercent_ = true; });
  connect(&pane->Viewer(), &PhotoViewer::FullSizeFailed, this, [this, pane](const QString& reason) {
    pane->ShowValues();
    Say(reason);
  });
  connect(&pane->Viewer(), &PhotoViewer::Changed, this,
          [this, pane] { Guarded("frmcompare", "ShowIn", [this, pane] { ShowIn(*pane); }); });
}

QToolButton* frmcompare::BarButton(ViewerCommand command) {
  QAction* action = actions_->Get(command);
  QToolButton* button = look::IconButton("", action->text().remove(u'&'));
  button->setDefaultAction(action);
  button->setFocusPolicy(Qt::NoFocus);
  action->setToolTip(u"%1 (%2)"_s.arg(action->text().remove(u'&'),
                                      action->shortcut().toString(QKeySequence::NativeText)));
  return button;
}

QLayout* frmcompare::ComposeBar() {
  actions_->Get(ViewerCommand::Upright)->setIconText(tr("Upright"));
  auto* bar = new QHBoxLayout;
  look::SetSpace(bar, 0, look::kSpace4);
  for (const ViewerCommand command :
       {ViewerCommand::Linked, ViewerCommand::Swap, ViewerCommand::ZoomIn, ViewerCommand::ZoomOut,
        ViewerCommand::Fit, ViewerCommand::ActualSize})
    bar->addWidget(BarButton(command));
  said_->setObjectName(u"lblnotice"_s);
  said_->setWordWrap(false);
  said_->setTextFormat(Qt::PlainText);
  bar->addSpacing(look::kSpace12);
  bar->addWidget(said_, 1);
  for (const ViewerCommand command :
       {ViewerCommand::Information, ViewerCommand::AllValues, ViewerCommand::Upright}) {
    auto* button = new QToolButton;
    button->setDefaultAction(actions_->Get(command));
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedHeight(look::kControlHeight);
    bar->addWidget(button);
  }
  return bar;
}

QWidget* frmcompare::ComposeDetails() {
  table_->setObjectName(u"lstdetails"_s);
  table_->setAccessibleName(tr("What the two photos' files say"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->installEventFilter(this);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(look::kRowHeight);
  QHeaderView* header = table_->horizontalHeader();
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setHighlightSections(false);
  header->resizeSection(CaptionColumn, kCaptionWidth);
  header->setSectionResizeMode(LeftColumn, QHeaderView::Stretch);
  header->setSectionResizeMode(RightColumn, QHeaderView::Stretch);
  table_->setItemDelegate(new PathDelegate(PathDelegate::Folders::Hidden, table_));
  return table_;
}

void frmcompare::ArrangeControls() {
  const QSize room = screen()->availableSize();
  resize(kUsualSize.boundedTo(room * 9 / 10));
  const QSettings settings = WindowSettings();
  restoreGeometry(settings.value(kGeometryKey).toByteArray());
  if (!isMaximized()) resize(size().boundedTo(room));  // the screen of the last time may be gone
  parts_->setSizes({kUsualSize.height() - kDetailsHeight, kDetailsHeight});
  parts_->restoreState(settings.value(kPartsKey).toByteArray());
  const auto check = [this](ViewerCommand command, bool on) {
    actions_->Get(command)->setChecked(on);
  };
  check(ViewerCommand::Linked, settings.value(kLinkedKey, true).toBool());
  check(ViewerCommand::AllValues, settings.value(kAllKey, false).toBool());
  check(ViewerCommand::Information, settings.value(kDetailsKey, true).toBool());
  check(ViewerCommand::Upright, ShownUpright());
  details_->setVisible(actions_->Get(ViewerCommand::Information)->isChecked());
  for (ComparePane* pane : panes_)
    pane->Viewer().SetUpright(ShownUpright());
}

void frmcompare::done(int result) {
  QSettings settings = WindowSettings();
  settings.setValue(kGeometryKey, saveGeometry());
  settings.setValue(kPartsKey, parts_->saveState());
  settings.setValue(kLinkedKey, actions_->Get(ViewerCommand::Linked)->isChecked());
  settings.setValue(kAllKey, actions_->Get(ViewerCommand::AllValues)->isChecked());
  settings.setValue(kDetailsKey, actions_->Get(ViewerCommand::Information)->isChecked());
  QDialog::done(result);
}

void frmcompare::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  for (ComparePane* pane : panes_)
    connect(windowHandle(), &QWindow::screenChanged, pane, &ComparePane::FitBox,
            Qt::UniqueConnection);
}

// Sides.

ComparePane& frmcompare::OtherThan(const ComparePane& pane) {
  return *panes_[&pane == panes_[Left] ? Right : Left];
}

void frmcompare::SetActive(ComparePane* pane) {
  active_ = pane;
  for (ComparePane* side : panes_)
    side->SetActive(side == pane);
}

void frmcompare::Lead(ComparePane& pane) {
  if (linking_ || !actions_->Get(ViewerCommand::Linked)->isChecked()) return;
  ComparePane& other = OtherThan(pane);
  if (!pane.View().HasImage() || !other.View().HasImage()) return;
  const QScopedValueRollback once(linking_, true);
  if (pane.View().IsFit()) samePercent_ = false;
  const double ratio = samePercent_ ? 1 : other.View().FitZoom() / pane.View().FitZoom();
  other.View().SetView(LinkedView(pane.View().View(), pane.Viewer().Shown().fullSize,
                                  other.Viewer().Shown().fullSize, ratio));
}

/// What comes to one side looks where the other one does.
void frmcompare::ShowIn(ComparePane& pane) {
  {
    const QScopedValueRollback once(linking_, true);
    pane.ShowPhoto();
  }
  Lead(OtherThan(pane));
  ShowDetails();
}

void frmcompare::Swap() {
  std::ranges::swap(panes_[Left], panes_[Right]);
  sides_->insertWidget(0, panes_[Left]);
  ShowDetails();
}

// Commands.

void frmcompare::Run(ViewerCommand command) {
  if (command == ViewerCommand::ActualSize) samePercent_ = true;
  if (ZoomBy(command, Active().View())) return;
  const bool checked = actions_->Get(command)->isChecked();
  switch (command) {
    case ViewerCommand::Next:
      return Step(1);
    case ViewerCommand::Previous:
      return Step(-1);
    case ViewerCommand::First:
      return GoTo(-1, 1, -1);
    case ViewerCommand::Last:
      return GoTo(Active().Viewer().Count(), -1, 1);
    case ViewerCommand::OtherSide:
      return SetActive(&OtherThan(Active()));
    case ViewerCommand::Details:
      return SwitchFocus();
    case ViewerCommand::Swap:
      return Swap();
    case ViewerCommand::Linked:
      Lead(Active());
      return Say(checked ? tr("Zoom and scroll are linked.")
                         : tr("Each side is zoomed and scrolled by itself."));
    case ViewerCommand::AllValues:
      return ShowDetails();
    case ViewerCommand::Information:
      details_->setVisible(checked);
      return;
    case ViewerCommand::Upright:
      RememberUpright(checked);
      for (ComparePane* pane : panes_) {
        pane->View().Fit();
        pane->Viewer().SetUpright(checked);
      }
      return;
    case ViewerCommand::Close:
      return reject();
    default:
      break;
  }
  const QString said = ChangeValue(command, catalogue_, Active().ShownPath());
  if (said.isNull()) return;
  for (ComparePane* pane : panes_)
    pane->ShowValues();
  Say(said);
}

void frmcompare::Step(int step) {
  GoTo(Active().Viewer().Position(), step, step);
}

/// Both sides never show the same photo.
void frmcompare::GoTo(int position, int step, int way) {
  PhotoViewer& viewer = Active().Viewer();
  const int next =
      StepAround(position, step, OtherThan(Active()).Viewer().Position(), viewer.Count());
  if (next != position && viewer.GoTo(next)) return;
  Say(way > 0 ? tr("There is no further photo.") : tr("There is no photo before this one."));
}

void frmcompare::Say(const QString& text) {
  said_->setText(text);
  quiet_->start();
}

void frmcompare::ShowDetails() {
  const ViewedPhoto &left = panes_[Left]->Viewer().Shown(),
                    &right = panes_[Right]->Viewer().Shown();
  if (left.position < 0 || right.position < 0) return;
  const bool all = actions_->Get(ViewerCommand::AllValues)->isChecked();
  std::vector<ComparedLine> lines = CompareInfo(left.info, right.info);
  if (!all) std::erase_if(lines, [](const ComparedLine& line) { return !line.Differs(); });
  table_->setHorizontalHeaderLabels(
      {all ? tr("All values") : tr("Differs"), GetFileName(left.path), GetFileName(right.path)});
  table_->setRowCount(static_cast<int>(lines.size()));
  for (int row = 0; row < table_->rowCount(); ++row)
    ShowLine(row, lines[static_cast<std::size_t>(row)]);
}

void frmcompare::SwitchFocus() {
  if (table_->hasFocus()) return Active().View().setFocus();
  if (!details_->isVisible()) return;
  if (table_->currentRow() < 0) table_->setCurrentCell(0, CaptionColumn);
  table_->setFocus();
}

bool frmcompare::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() == Qt::NoModifier &&
        std::ranges::find(kTableKeys, key->key()) != kTableKeys.end())
      event->accept();
  }
  return QDialog::eventFilter(watched, event);
}

/// What is equal steps back.
void frmcompare::ShowLine(int row, const ComparedLine& line) {
  const QString texts[] = {line.caption, line.left, line.right};
  for (const DetailColumn column : {CaptionColumn, LeftColumn, RightColumn}) {
    auto* cell = new QTableWidgetItem(texts[column].simplified());
    cell->setToolTip(PlainToolTip(texts[column]));
    const bool quiet = column == CaptionColumn || !line.Differs();
    cell->setForeground(QColor(quiet ? look::kQuiet : look::kText));
    table_->setItem(row, column, cell);
  }
}

}  // namespace zqm
