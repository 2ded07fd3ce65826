// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "imaging/codec.h"

namespace zqm {

/// One dataset of an IPTC-IIM block, bytes as they stand in the file.
struct IptcItem {
  int record = 0;
  int dataset = 0;
  QByteArray bytes;
  bool operator==(const IptcItem&) const = default;
};

/// The IPTC items of one file in their order, repeats kept. Source of the format: IPTC-NAA
/// Information Interchange Model, version 4.2 (tag marker 0x1C, record, dataset, length; an
/// extended length has its high bit set and gives the number of length bytes).
class IptcList {
 public:
  /// Reads what is whole: rubbish between items is skipped, a cut last item is dropped.
  static IptcList Parse(ByteView block);

  /// The block, items in order, each length in its shortest form.
  QByteArray ToBlock() const;

  int Count() const { return static_cast<int>(items_.size()); }
  const std::vector<IptcItem>& Items() const { return items_; }

  /// Index of the first item of that record and dataset, or -1.
  int Find(int record, int dataset) const;
  /// An item's text by the block's coded character set (1:90); "" for an index out of range, so
  /// that the -1 of a failed search can be passed on.
  QString Get(int index) const;
  void Remove(int index);
  /// Appends a text item. From then on the block is UTF-8: the marker is set and all other text
  /// items are transcoded.
  void Add(int record, int dataset, const QString& text);

 private:
  enum class Charset { Unknown, Utf8, Latin1 };
  Charset CodedCharset() const;
  void BecomeUtf8();

  std::vector<IptcItem> items_;
};

}  // namespace zqm
