// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>

#include "imaging/codecs/embedded_blocks.h"
#include "imaging/iptc_list.h"

/// An item added to a list of items is there after the list has been written and read again, in a
/// list of image resources too.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  using namespace zqm;
  constexpr int kRecord = 2, kCity = 90;
  const ByteView bytes{data, size};
  IptcList list = IptcList::Parse(bytes);
  while (list.Find(kRecord, kCity) >= 0)
    list.Remove(list.Find(kRecord, kCity));
  list.Add(kRecord, kCity, QStringLiteral("Graz"));
  const QByteArray block = list.ToBlock();
  const IptcList again = IptcList::Parse(Bytes(block));
  const int at = again.Find(kRecord, kCity);
  if (at < 0 || again.Get(at) != QStringLiteral("Graz")) std::abort();
  (void)WithIptcResource(bytes, block);
  std::uint64_t offset = 0;
  for (int directory = 0; directory < 8; ++directory) {
    const auto read = ReadTiffDirectory(bytes, offset);
    if (!read || read->next == 0) break;
    for (const TiffEntry& entry : read->entries)
      (void)read->Value(entry.tag);
    offset = read->next;
  }
  return 0;
}
