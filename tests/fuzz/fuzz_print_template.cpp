// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdlib>

#include "printing/print_template.h"

// A record that is taken is one that can be printed by, and it is written as the same.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  const auto record = zqm::DecodeTemplateRecord(
      QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  if (!record) return 0;
  const QSize sheet = record->sheet;
  if (sheet.isEmpty() || sheet.width() > zqm::kMostSheetSide ||
      sheet.height() > zqm::kMostSheetSide)
    std::abort();
  // Written with a comma on both sides, IDs may need more room than they had: those that are cut
  // off are gone, none becomes another one.
  const auto again = zqm::DecodeTemplateRecord(zqm::EncodeTemplateRecord({sheet, {}, record->ids}));
  if (!again || again->sheet != sheet || again->ids.size() > record->ids.size() ||
      !std::equal(again->ids.begin(), again->ids.end(), record->ids.begin()))
    std::abort();
  return 0;
}
