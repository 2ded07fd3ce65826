// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/viewer_actions.h"

#include <QKeySequence>
#include <QWidget>
#include <optional>

#include "shell/messages.h"
#include "shell/ui/commands.h"
#include "shell/window_settings.h"
#include "viewers/photo_values.h"
#include "viewers/photo_viewer.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kZoomStep = 1.25;
constexpr QLatin1StringView kUprightKey("viewers/upright");

enum Trait : unsigned {
  kFull = 1,
  kCompare = 2,
  kBoth = kFull | kCompare,
  kCheckable = 4,
  kSeparatorBefore = 8,
};

struct Row {
  ViewerCommand command;
  const char16_t* text;
  const char16_t* keys;  ///< the first one is shown
  const char* icon;
  const char* name;
  unsigned traits;
};

// Where the main window has the command too, its keys are among these.
constexpr Row kRows[] = {
    {ViewerCommand::Next, u"&Next Photo", u"Right; PgDown; Down; Space", "go-next", "mnunext",
     kBoth},
    {ViewerCommand::Previous, u"&Previous Photo", u"Left; PgUp; Up; Backspace", "go-previous",
     "mnuprevious", kBoth},
    {ViewerCommand::First, u"&First Photo", u"Home", "go-first", "mnufirst", kBoth},
    {ViewerCommand::Last, u"&Last Photo", u"End", "go-last", "mnulast", kBoth},
    {ViewerCommand::OtherSide, u"Other &Side", u"Tab; Shift+Tab", "", "mnuotherside",
     kCompare | kSeparatorBefore},
    {ViewerCommand::Details, u"To the &Details and Back", u"F6", "", "mnudetails", kCompare},
    {ViewerCommand::Swap, u"S&wap Sides", u"S", "swap-panels", "mnuswap", kCompare},
    {ViewerCommand::Linked, u"Lin&ked Zoom and Scroll", u"L", "link", "mnulinked",
     kCompare | kCheckable},
    {ViewerCommand::ZoomIn, u"Zoom &In", u"+; =; Ctrl++", "zoom-in", "mnuzoomin",
     kBoth | kSeparatorBefore},
    {ViewerCommand::ZoomOut, u"Zoom &Out", u"-; Ctrl+-", "zoom-out", "mnuzoomout", kBoth},
    {ViewerCommand::Fit, u"Fi&t to Window", u"0; Ctrl+0", "zoom-fit-best", "mnuzoomfit", kBoth},
    {ViewerCommand::ActualSize, u"&Actual Size", u"1; Ctrl+Shift+0", "zoom-original", "mnuzoomfull",
     kBoth},
    {ViewerCommand::Upright, u"&Upright by the Camera's Orientation", u"O", "", "mnuupright",
     kBoth | kCheckable | kSeparatorBefore},
    {ViewerCommand::Information, u"Infor&mation", u"I", "", "mnuinformation", kBoth | kCheckable},
    {ViewerCommand::AllValues, u"Equal &Values Too", u"A", "", "mnuallvalues",
     kCompare | kCheckable},
    {ViewerCommand::Rate1, u"&1 Star", u"Ctrl+1", "", "mnurate1", kBoth | kSeparatorBefore},
    {ViewerCommand::Rate2, u"&2 Stars", u"Ctrl+2", "", "mnurate2", kBoth},
    {ViewerCommand::Rate3, u"&3 Stars", u"Ctrl+3", "", "mnurate3", kBoth},
    {ViewerCommand::Rate4, u"&4 Stars", u"Ctrl+4", "", "mnurate4", kBoth},
    {ViewerCommand::Rate5, u"&5 Stars", u"Ctrl+5", "", "mnurate5", kBoth},
    {ViewerCommand::Flag, u"Fla&gged", u"Ctrl+Shift+P; P", "flag", "mnuflag",
     kBoth | kSeparatorBefore},
    {ViewerCommand::Unflag, u"Unflagge&d", u"Ctrl+Shift+U; U", "edit-clear", "mnuunflag", kBoth},
    {ViewerCommand::Reject, u"Re&jected", u"Ctrl+Shift+X; X", "edit-delete-remove", "mnureject",
     kBoth},
    {ViewerCommand::Close, u"&End Full Screen", u"Esc; F11; Return; Enter", "", "mnuclose",
     kFull | kSeparatorBefore},
    {ViewerCommand::Close, u"&Close", u"Esc", "", "mnuclose", kCompare | kSeparatorBefore},
};

std::optional<KeywordValue> ValueOf(ViewerCommand command) {
  switch (command) {
    case ViewerCommand::Rate1:
    case ViewerCommand::Rate2:
    case ViewerCommand::Rate3:
    case ViewerCommand::Rate4:
    case ViewerCommand::Rate5: {
      const int rating = static_cast<int>(command) - static_cast<int>(ViewerCommand::Rate1) + 1;
      return KeywordValue{KeywordField::Rating, QString::number(rating)};
    }
    case ViewerCommand::Flag:
      return KeywordValue{KeywordField::Flag, u"Flagged"_s};
    case ViewerCommand::Unflag:
      return KeywordValue{KeywordField::Flag, u"Unflagged"_s};
    case ViewerCommand::Reject:
      return KeywordValue{KeywordField::Flag, u"Rejected"_s};
    default:
      return std::nullopt;
  }
}

QString SaidOf(const KeywordValue& value) {
  return value.field == KeywordField::Flag ? value.stored : RatingText(value.stored.toInt());
}

}  // namespace

ViewerActions::ViewerActions(ViewerKind kind, QWidget* window) : QObject(window) {
  const unsigned own = kind == ViewerKind::Full ? kFull : kCompare;
  for (const Row& row : kRows) {
    if ((row.traits & own) == 0) continue;
    QAction* action = AddCommand(window, this, {row.text, u"", row.icon, row.name, u""});
    action->setShortcuts(QKeySequence::listFromString(QString::fromUtf16(row.keys)));
    action->setCheckable((row.traits & kCheckable) != 0);
    connect(action, &QAction::triggered, this,
            [this, command = row.command] { Q_EMIT Triggered(command); });
    if ((row.traits & kSeparatorBefore) != 0) {
      auto* line = new QAction(this);
      line->setSeparator(true);
      menu_.append(line);
    }
    actions_[row.command] = action;
    menu_.append(action);
  }
}

QAction* ViewerActions::Get(ViewerCommand command) const {
  const auto found = actions_.find(command);
  return found == actions_.end() ? nullptr : found->second;
}

void ShowOn(PictureView& view, const ViewedPhoto& photo, const QString& message,
            PictureView::KeepView keep) {
  view.SetMessage(photo.image.isNull() ? message : QString());
  view.ShowImage(photo.image, photo.fullSize,
                 photo.again ? PictureView::KeepView::SamePhoto : keep);
}

bool ZoomBy(ViewerCommand command, PictureView& view) {
  switch (command) {
    case ViewerCommand::ZoomIn:
      view.SetZoom(view.Zoom() * kZoomStep);
      return true;
    case ViewerCommand::ZoomOut:
      view.SetZoom(view.Zoom() / kZoomStep);
      return true;
    case ViewerCommand::Fit:
      view.Fit();
      return true;
    case ViewerCommand::ActualSize:
      view.SetZoom(100);
      return true;
    default:
      return false;
  }
}

QString ChangeValue(ViewerCommand command, Catalogue& catalogue, const QString& path) {
  const std::optional<KeywordValue> value = ValueOf(command);
  if (!value || path.isEmpty()) return {};
  if (const QString why = WhyNotEditable(catalogue, {path}); !why.isEmpty()) return why;
  if (const Outcome set = SetValue(catalogue, path, *value); !set) {
    MsgBox(u"The changes could not be saved: "_s + set.Reason(), MessageKind::Warning);
    return u""_s;
  }
  return SaidOf(*value);
}

bool ShownUpright() {
  return WindowSettings().value(kUprightKey, false).toBool();
}

void RememberUpright(bool upright) {
  WindowSettings().setValue(kUprightKey, upright);
}

}  // namespace zqm
