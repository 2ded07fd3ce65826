// SPDX-License-Identifier: GPL-3.0-or-later
// The list of categories, and what a photo's row holds of it.
#pragma once

#include <QString>
#include <QStringList>

#include "catalogue/catalogue.h"
#include "shell/result.h"

namespace zqm {

/// The names in a stored ",Family,Travel," and back. Names without text are left out.
QStringList CategoryNames(const QString& stored);
QString CategoriesText(const QStringList& names);

/// A typed name as the list takes it: without double quotes and brackets.
QString CategoryName(const QString& typed);

/// Adds a typed name to the list. The value is the message to the user, "" when nothing was typed
/// that could be added; a failure's reason is one too.
Result<QString> AddCategory(Catalogue& catalogue, const QString& typed);

/// Whether any photo's row has the category.
bool CategoryInUse(const Catalogue& catalogue, const QString& name);

/// Asks, and deletes a category that no photo has from the list. False when it stays: the user was
/// told why, or has thought better of it.
bool AskAndDeleteCategory(Catalogue& catalogue, const QString& name);

namespace category_text {
inline constexpr char16_t kInUse[] =
    u"Cannot delete the selected category since it has existing items assigned to it.";
inline constexpr char16_t kAdded[] = u"'%1' has been added to the list of categories.";
inline constexpr char16_t kDelete[] = u"Delete %1 from the list of categories?";
}  // namespace category_text

}  // namespace zqm
