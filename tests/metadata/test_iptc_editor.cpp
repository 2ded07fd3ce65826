// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/iptc_editor.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

TEST(IptcEditor, AnUrgencyIsWrittenAsItsDigitAlone) {
  const IptcField& urgency = IptcDatasets()[static_cast<std::size_t>(FindIptcField(u"urgency"))];
  const QStringList items = UrgencyItems();
  ASSERT_EQ(items.size(), 8);
  for (qsizetype i = 0; i < items.size(); ++i) {
    const QString digit = QString::number(i + 1);
    EXPECT_EQ(IptcValue(urgency, items.at(i)), digit);
    EXPECT_EQ(IptcValue(urgency, digit), digit);
  }
  EXPECT_EQ(items.first(), u"1 (most urgent)"_s);
  for (const QString& none : {QString(), u"0"_s, u"9"_s, u"1 (least urgent)"_s})
    EXPECT_EQ(IptcValue(urgency, none), QString()) << none.toStdString();
  const IptcField& city = IptcDatasets()[static_cast<std::size_t>(FindIptcField(u"City"))];
  EXPECT_EQ(city.dataset, 90);
  EXPECT_EQ(IptcValue(city, u" Graz,\nA "_s), u" Graz,\nA "_s);
  EXPECT_EQ(FindIptcField(u"Town"), -1);
}

}  // namespace
}  // namespace zqm
