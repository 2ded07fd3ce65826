// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/categories.h"

#include "search/query_builder.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {

QStringList CategoryNames(const QString& stored) {
  return stored.split(u',', Qt::SkipEmptyParts);
}

QString CategoriesText(const QStringList& names) {
  return names.isEmpty() ? QString() : u',' + names.join(u',') + u',';
}

QString CategoryName(const QString& typed) {
  return WithoutPatternMarks(typed);
}

Result<QString> AddCategory(Catalogue& catalogue, const QString& typed) {
  const QString name = CategoryName(typed);
  if (name.trimmed().isEmpty()) return QString();
  if (const Outcome added = catalogue.AddCategory(name); !added) return Failure{added.Reason()};
  return QString::fromUtf16(category_text::kAdded).arg(name);
}

bool CategoryInUse(const Catalogue& catalogue, const QString& name) {
  // A quote inside is doubled, so that an odd name of old can be asked for too.
  const QString pattern = QString(name).replace(u'"', u"\"\""_s);
  return !catalogue
              .Query(u"Select Categories,ID,Photo from qryphoto WHERE [Categories] like \"%,"_s +
                         pattern + u",%\""_s,
                     Column::Photo)
              .isEmpty();
}

bool AskAndDeleteCategory(Catalogue& catalogue, const QString& name) {
  if (name.isEmpty()) return false;
  if (CategoryInUse(catalogue, name)) {
    MsgBox(QString::fromUtf16(category_text::kInUse), MessageKind::Information);
    return false;
  }
  const QString question = QString::fromUtf16(category_text::kDelete).arg(name);
  if (MsgBox(question, MessageKind::Question, Buttons::YesNo) != Answer::Yes) return false;
  const Outcome deleted = catalogue.DeleteCategory(name);
  if (!deleted) MsgBox(deleted.Reason(), MessageKind::Warning);
  return static_cast<bool>(deleted);
}

}  // namespace zqm
