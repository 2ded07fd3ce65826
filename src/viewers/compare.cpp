// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/compare.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Said among the file's properties too.
constexpr QStringView kSaidBefore[] = {u"Width", u"Height"};

QString Caption(MetadataPage page, const char16_t* caption) {
  const QString text = QString::fromUtf16(caption);
  if (page == MetadataPage::Gps && !text.startsWith(u"GPS ")) return u"GPS "_s + text;
  return page == MetadataPage::Iptc ? u"IPTC "_s + text : text;
}

}  // namespace

std::vector<ComparedLine> CompareInfo(const PhotoInfo& left, const PhotoInfo& right) {
  std::vector<ComparedLine> lines;
  const auto add = [&lines](const QString& caption, const QString& one, const QString& other) {
    if (!one.isEmpty() || !other.isEmpty()) lines.push_back({caption, one, other});
  };
  for (int i = 0; i < kPropertyCount; ++i) {
    const auto property = static_cast<Property>(i);
    add(QString::fromUtf16(PropertyCaption(property)), left.Text(property), right.Text(property));
  }
  for (int i = 0; i < kMetadataPageCount; ++i) {
    const auto page = static_cast<MetadataPage>(i);
    const MetadataLines &one = left.Page(page), &other = right.Page(page);
    for (std::size_t line = 0; line < one.size(); ++line)
      if (std::ranges::find(kSaidBefore, QStringView(one[line].caption)) == std::end(kSaidBefore))
        add(Caption(page, one[line].caption), one[line].text, other[line].text);
  }
  return lines;
}

int StepAround(int position, int step, int taken, int count) {
  int next = position + step;
  if (next == taken) next += step;
  return next >= 0 && next < count ? next : position;
}

}  // namespace zqm
