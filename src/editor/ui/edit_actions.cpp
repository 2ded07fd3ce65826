// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/edit_actions.h"

#include <QMenu>
#include <QMenuBar>

#include "shell/ui/commands.h"

namespace zqm {
namespace {

struct Row {
  EditCommand command;
  const char16_t* menu;
  const char16_t* submenu;  // null: in the menu itself
  CommandText text;
  bool separatorBefore = false;
};

constexpr char16_t kFile[] = u"&File", kEdit[] = u"&Edit", kSelection[] = u"&Selection Tool",
                   kColors[] = u"&Colors", kEffects[] = u"Effec&ts", kView[] = u"&View",
                   kHelp[] = u"&Help", kRotate[] = u"Rotat&e";

constexpr Row kRows[] = {
    {EditCommand::Open,
     kFile,
     nullptr,
     {u"&Open…", u"Ctrl+O", "document-open", "mnu_open", u"Edit another photo"}},
    {EditCommand::Save,
     kFile,
     nullptr,
     {u"&Save", u"Ctrl+S", "document-save", "mnu_save", u"Write over the open file"}},
    {EditCommand::SaveAs,
     kFile,
     nullptr,
     {u"Save &As…", u"Ctrl+Shift+S", "document-save-as", "mnu_save_as", u"Write to another file"}},
    {EditCommand::QuickPrint,
     kFile,
     nullptr,
     {u"&Quick Print…", u"Ctrl+P", "document-print", "mnu_quick_print",
      u"Print the picture as large as the paper"},
     true},
    {EditCommand::Minimize,
     kFile,
     nullptr,
     {u"&Minimize", u"Ctrl+M", "", "mnu_minimize", u"Put the window out of the way"},
     true},
    {EditCommand::Exit,
     kFile,
     nullptr,
     {u"E&xit", u"Ctrl+Q", "application-exit", "mnu_exit", u"Close the editor"}},
    {EditCommand::Undo, kEdit, nullptr, {u"&Undo", u"Ctrl+Z", "edit-undo", "mnu_undo", u""}},
    {EditCommand::UndoAll,
     kEdit,
     nullptr,
     {u"Undo &All", u"Ctrl+Alt+Z", "edit-undo", "mnu_undo_all", u"Back to the oldest state"}},
    {EditCommand::Redo, kEdit, nullptr, {u"Re&do", u"Ctrl+Shift+Z", "edit-redo", "mnu_redo", u""}},
    {EditCommand::Level,
     kEdit,
     nullptr,
     {u"&Level", u"Ctrl+1", "", "mnu_level", u"Turn by a line that should be level or upright"},
     true},
    {EditCommand::Rotate180,
     kEdit,
     kRotate,
     {u"&180", u"Ctrl+Alt+Down", "", "mnu_rotate_180", u""}},
    {EditCommand::RotateClockwise,
     kEdit,
     kRotate,
     {u"&Clockwise", u"Ctrl+Alt+Right", "object-rotate-right", "mnu_rotate_cw", u""}},
    {EditCommand::RotateCounterClockwise,
     kEdit,
     kRotate,
     {u"C&ounter Clockwise", u"Ctrl+Alt+Left", "object-rotate-left", "mnu_rotate_ccw", u""}},
    {EditCommand::CustomRotation,
     kEdit,
     kRotate,
     {u"Custom &Rotation", u"Ctrl+Alt+Up", "", "mnu_custom_rotation", u"By any angle"}},
    {EditCommand::FlipHorizontal,
     kEdit,
     nullptr,
     {u"Flip &Horizontal", u"Ctrl+Alt+H", "object-flip-horizontal", "mnu_flip_horizontal", u""}},
    {EditCommand::FlipVertical,
     kEdit,
     nullptr,
     {u"Flip &Vertical", u"Ctrl+Alt+V", "object-flip-vertical", "mnu_flip_vertical", u""}},
    {EditCommand::Crop,
     kEdit,
     nullptr,
     {u"&Crop", u"Ctrl+2", "transform-crop", "mnu_crop", u""},
     true},
    {EditCommand::Resize,
     kEdit,
     nullptr,
     {u"Resize &Image", u"Ctrl+3", "transform-scale", "mnu_resize_img", u""}},
    {EditCommand::RedEye,
     kEdit,
     nullptr,
     {u"Red E&ye Removal", u"Ctrl+4", "redeyes", "mnu_red_eye", u""}},
    {EditCommand::Sharpen, kEdit, nullptr, {u"&Sharpen/Noise", u"Ctrl+5", "", "mnu_sharpen", u""}},
    {EditCommand::Color,
     kEdit,
     nullptr,
     {u"C&olor (Color Cast/Temperature/Tint)", u"Ctrl+6", "", "mnu_color", u""}},
    {EditCommand::Saturation,
     kEdit,
     nullptr,
     {u"Sa&turation", u"Ctrl+7", "", "mnu_saturation", u""}},
    {EditCommand::Brightness,
     kEdit,
     nullptr,
     {u"&Brightness/Contrast", u"Ctrl+8", "", "mnu_bright_cont", u""}},
    {EditCommand::Watermark,
     kEdit,
     nullptr,
     {u"Apply &Watermark", u"Ctrl+9", "", "mnu_watermark", u""}},
    {EditCommand::MagicWand,
     kSelection,
     nullptr,
     {u"&Magic Wand", u"W", "", "mnu_magic_wand", u"Select an area of like colour"}},
    {EditCommand::Rectangle,
     kSelection,
     nullptr,
     {u"&Rectangular Selection", u"R", "", "mnu_rectangle", u""}},
    {EditCommand::Ellipse, kSelection, nullptr, {u"&Ellipse", u"E", "", "mnu_circle", u""}},
    {EditCommand::Polygon,
     kSelection,
     nullptr,
     {u"&Polygon", u"P", "", "mnu_polygon", u"Corner by corner; a double click closes it"}},
    {EditCommand::Lasso, kSelection, nullptr, {u"&Lasso", u"L", "", "mnu_lasso", u"Draw freely"}},
    {EditCommand::Navigate,
     kSelection,
     nullptr,
     {u"&Navigate/Zoom", u"H", "", "mnu_navigate", u"Move the picture with the mouse"},
     true},
    {EditCommand::MagicSettings,
     kSelection,
     nullptr,
     {u"Magic Wand &Settings", u"Shift+W", "", "mnu_magic_settings", u"How alike colours must be"}},
    {EditCommand::ClearSelection,
     kSelection,
     nullptr,
     {u"&Clear Selection", u"Ctrl+D", "edit-select-none", "mnu_clear_sel", u""}},
    {EditCommand::Grey, kColors, nullptr, {u"&Grey Scale", u"", "", "mnu_grey", u""}},
    {EditCommand::BlackWhite, kColors, nullptr, {u"&Black And White", u"", "", "mnu_bw", u""}},
    {EditCommand::Colors16, kColors, nullptr, {u"&16 Colors", u"", "", "mnu_16_colors", u""}},
    {EditCommand::Colors256Threshold,
     kColors,
     nullptr,
     {u"256 Color &Threshold", u"", "", "mnu_256_threshold", u""}},
    {EditCommand::Colors256Ordered,
     kColors,
     nullptr,
     {u"256 Color &Ordered", u"", "", "mnu_256_ordered", u""}},
    {EditCommand::UserFilter,
     kEffects,
     nullptr,
     {u"&User Filter", u"", "", "mnu_user_filter", u""}},
    {EditCommand::BumpMap, kEffects, nullptr, {u"&Bump Map", u"", "", "mnu_bump_map", u""}},
    {EditCommand::Lens, kEffects, nullptr, {u"&Lens", u"", "", "mnu_lens", u""}},
    {EditCommand::Wave, kEffects, nullptr, {u"&Wave", u"", "", "mnu_wave", u""}},
    {EditCommand::Morph, kEffects, nullptr, {u"&Morphing Filters", u"", "", "mnu_morph", u""}},
    {EditCommand::Sepia, kEffects, nullptr, {u"&Sepia", u"", "", "mnu_sepia", u""}},
    {EditCommand::ActualSize,
     kView,
     nullptr,
     {u"&Actual Size", u"Ctrl+Shift+0", "zoom-original", "mnu_actual_size", u""}},
    {EditCommand::AutoFit,
     kView,
     nullptr,
     {u"Auto &Fit", u"Ctrl+0", "zoom-fit-best", "mnu_auto_fit", u""}},
    {EditCommand::OriginalImage,
     kView,
     nullptr,
     {u"&Original Image", u"F7", "", "mnu_original", u"As it is in the file"},
     true},
    {EditCommand::EditingPreview,
     kView,
     nullptr,
     {u"Editing &Preview", u"F8", "", "mnu_preview", u"As it is now"}},
    {EditCommand::Workflow,
     kHelp,
     nullptr,
     {u"Editing &Workflow", u"F1", "help-contents", "mnu_workflow", u"What the steps do"}},
    {EditCommand::About,
     kHelp,
     nullptr,
     {u"&About Zolmira QM", u"Shift+F1", "help-about", "mnu_about", u"Version and licence"}},
};

constexpr EditCommand kPictureCommands[] = {EditCommand::Undo, EditCommand::UndoAll,
                                            EditCommand::Redo};
constexpr EditCommand kSelectionCommands[] = {EditCommand::ClearSelection};
constexpr EditCommand kViewCommands[] = {EditCommand::Navigate, EditCommand::ActualSize,
                                         EditCommand::AutoFit};

}  // namespace

EditActions::EditActions(QWidget* window) : QObject(window) {
  for (const Row& row : kRows) {
    QAction* action = AddCommand(window, this, row.text);
    connect(action, &QAction::triggered, this,
            [this, command = row.command] { Q_EMIT Triggered(command); });
    actions_[row.command] = action;
  }
}

void EditActions::FillMenuBar(QMenuBar* bar) const {
  QMenu* menu = nullptr;
  QMenu* submenu = nullptr;
  QStringView title;
  for (const Row& row : kRows) {
    if (title != QStringView(row.menu)) {
      title = row.menu;
      menu = bar->addMenu(title.toString());
      menu->setToolTipsVisible(true);
    }
    if (row.separatorBefore) menu->addSeparator();
    if (row.submenu == nullptr)
      submenu = nullptr;
    else if (submenu == nullptr)
      submenu = menu->addMenu(QString::fromUtf16(row.submenu));
    (submenu != nullptr ? submenu : menu)->addAction(Get(row.command));
  }
}

void EditActions::FillPictureMenu(QMenu* menu) const {
  for (const EditCommand command : kPictureCommands)
    menu->addAction(Get(command));
  menu->addSeparator();
  for (const EditCommand command : kSelectionCommands)
    menu->addAction(Get(command));
  menu->addSeparator();
  for (const EditCommand command : kViewCommands)
    menu->addAction(Get(command));
}

}  // namespace zqm
