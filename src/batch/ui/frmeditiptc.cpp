// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmeditiptc.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>

#include "batch/edit_metadata.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Consecutive fields.
struct Page {
  const char16_t* caption;
  int count;
};
constexpr Page kPages[] = {{u"Caption", 5}, {u"Categories and Credit", 8}, {u"Origin", 8}};

}  // namespace

const MetadataDialog::Names frmeditiptc::kNames = {"frmeditiptc", u"IPTC Editor", "TabStrip1",
                                                   metadata_text::kIptc};

frmeditiptc::frmeditiptc(BatchPlace place, QWidget* parent)
    : MetadataDialog(kNames, std::move(place), parent) {
  int index = 0;
  for (const Page& page : kPages) {
    QGridLayout* grid = AddPage(page.caption);
    for (const int end = index + page.count; index < end; ++index) {
      const IptcField& row = IptcDatasets()[static_cast<std::size_t>(index)];
      const bool urgency = row.dataset == kUrgencyDataset;
      QWidget* input = urgency ? static_cast<QWidget*>(MakeList(UrgencyItems())) : new QLineEdit;
      AddField(grid, index, row.field.caption, u"Check%1"_s.arg(index + 1), input, "txtiptc");
    }
  }
  Finish();
}

BatchResult frmeditiptc::Write(const BatchObserver& observer) {
  return ApplyIptc(TheCatalogue(), Photos(), Edit(), View(), observer);
}

}  // namespace zqm
