// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/iptc_editor.h"

#include <algorithm>

#include "metadata/value_tables.h"

using namespace Qt::StringLiterals;

namespace zqm {

int FindIptcField(QStringView caption) {
  const std::span<const IptcField> fields = IptcDatasets();
  const auto found = std::ranges::find_if(fields, [caption](const IptcField& row) {
    return caption.compare(QStringView(row.field.caption), Qt::CaseInsensitive) == 0;
  });
  return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

QStringList UrgencyItems() {
  constexpr int kLeastUrgent = 8;
  QStringList items;
  for (int urgency = 1; urgency <= kLeastUrgent; ++urgency)
    items.append(tables::kUrgency.Translate(QString::number(urgency)));
  return items;
}

int FindUrgency(const QString& text) {
  return static_cast<int>(UrgencyItems().indexOf(tables::kUrgency.Translate(text)));
}

QString IptcValue(const IptcField& field, const QString& typed) {
  if (field.dataset != kUrgencyDataset) return typed;
  const int item = FindUrgency(typed);
  return item < 0 ? QString() : QString::number(item + 1);
}

Result<QString> TypedText(const IptcField& field, const QString& text) {
  if (field.dataset != kUrgencyDataset || text.isEmpty()) return text;
  const int item = FindUrgency(text);
  if (item >= 0) return UrgencyItems().at(item);
  return Failure{QString::fromUtf16(field.field.caption) + u": one of \""_s +
                 UrgencyItems().join(u"\", \""_s) + u"\""_s};
}

}  // namespace zqm
