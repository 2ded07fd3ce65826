// SPDX-License-Identifier: GPL-3.0-or-later
// The IPTC editor without its window. Its fields are the lines of the IPTC page (`IptcDatasets`).
#pragma once

#include <QString>
#include <QStringList>
#include <map>

#include "metadata/decoding.h"
#include "shell/result.h"

namespace zqm {

/// The index of a caption, letter case aside, or -1.
int FindIptcField(QStringView caption);

/// Texts by the field's index; what isn't in it isn't touched, an empty text leaves one empty item.
using IptcEdit = std::map<int, QString>;

/// "1 (most urgent)", "2", …, "8 (least urgent)".
QStringList UrgencyItems();
/// The place of an item, or of its digit alone, in the list; -1 for any other text.
int FindUrgency(const QString& text);

/// What is written for a text: the text itself, of an urgency its digit, "" when it is none.
QString IptcValue(const IptcField& field, const QString& typed);
/// A text from elsewhere as the field's input holds it, or why nobody could have picked it.
Result<QString> TypedText(const IptcField& field, const QString& text);

}  // namespace zqm
