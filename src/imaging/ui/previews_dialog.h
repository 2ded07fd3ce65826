// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QStringList>
#include <QStringView>
#include <memory>
#include <optional>

#include "imaging/picture_change.h"

class QWidget;

namespace zqm {

class ChangeDialog;

/// The pages of the effects, by the name that asks for them: "UserFilt", "BumpMap", "Lens", "Wave",
/// "Morph".
QStringList PreviewPages();

/// The dialog of an effect, not yet shown; none for a name that is no page's.
std::unique_ptr<ChangeDialog> MakePreviewsDialog(const QImage& picture, QStringView page,
                                                 QWidget* parent = nullptr);

/// Lets the user choose an effect's settings over a picture. None when cancelled, and where nothing
/// would change.
std::optional<PictureChange> PreviewsDialog(const QImage& picture, QStringView page,
                                            QWidget* parent = nullptr);

}  // namespace zqm
