// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/iptc_list.h"

#include <algorithm>

#include "shell/text.h"

namespace zqm {
namespace {

constexpr std::uint8_t kMarker = 0x1C;
constexpr int kEnvelopeRecord = 1;
constexpr int kApplicationRecord = 2;
constexpr int kCodedCharacterSet = 90;
constexpr char kUtf8Escape[] = "\x1B%G";

/// Datasets of record 2 that hold numbers or pictures.
bool IsBinary(const IptcItem& item) {
  if (item.record != kApplicationRecord) return true;
  return item.dataset == 0 || item.dataset == 125 || (item.dataset >= 200 && item.dataset <= 202);
}

struct Length {
  std::size_t headerBytes = 0;
  std::size_t contentBytes = 0;
};

std::optional<Length> ReadLength(ByteView at) {
  if (at.size() < 2) return std::nullopt;
  const std::size_t first = static_cast<std::size_t>(at[0]) << 8 | at[1];
  if ((first & 0x8000) == 0) return Length{2, first};
  const std::size_t count = first & 0x7FFF;
  if (count > 4 || at.size() < 2 + count) return std::nullopt;
  std::size_t content = 0;
  for (std::size_t i = 0; i < count; ++i)
    content = content << 8 | at[2 + i];
  return Length{2 + count, content};
}

}  // namespace

IptcList IptcList::Parse(ByteView block) {
  IptcList list;
  std::size_t at = 0;
  while (at + 5 <= block.size()) {
    if (block[at] != kMarker) {
      ++at;
      continue;
    }
    const int record = block[at + 1];
    const int dataset = block[at + 2];
    const auto length = ReadLength(block.subspan(at + 3));
    if (!length || length->contentBytes > block.size() - at - 3 - length->headerBytes) {
      ++at;
      continue;
    }
    const std::size_t content = at + 3 + length->headerBytes;
    list.items_.push_back({record, dataset,
                           QByteArray(reinterpret_cast<const char*>(block.data() + content),
                                      static_cast<qsizetype>(length->contentBytes))});
    at = content + length->contentBytes;
  }
  return list;
}

QByteArray IptcList::ToBlock() const {
  QByteArray block;
  for (const IptcItem& item : items_) {
    block.append(static_cast<char>(kMarker));
    block.append(static_cast<char>(item.record));
    block.append(static_cast<char>(item.dataset));
    const qsizetype size = item.bytes.size();
    if (size < 0x8000) {
      block.append(static_cast<char>(size >> 8)).append(static_cast<char>(size & 0xFF));
    } else {
      block.append('\x80').append('\x04');
      for (const int shift : {24, 16, 8, 0})
        block.append(static_cast<char>(size >> shift & 0xFF));
    }
    block.append(item.bytes);
  }
  return block;
}

int IptcList::Find(int record, int dataset) const {
  const auto found = std::ranges::find_if(items_, [=](const IptcItem& item) {
    return item.record == record && item.dataset == dataset;
  });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

QString IptcList::Get(int index) const {
  if (index < 0 || index >= Count()) return QString();
  const QByteArray& bytes = items_[static_cast<std::size_t>(index)].bytes;
  if (CodedCharset() == Charset::Latin1) return QString::fromLatin1(bytes);
  // Many writers set no marker and write UTF-8; some set it and write Latin-1.
  return FromUtf8OrLatin1(bytes);
}

void IptcList::Remove(int index) {
  if (index < 0 || index >= Count()) return;
  items_.erase(items_.begin() + index);
}

void IptcList::Add(int record, int dataset, const QString& text) {
  BecomeUtf8();
  items_.push_back({record, dataset, text.toUtf8()});
}

IptcList::Charset IptcList::CodedCharset() const {
  const int index = Find(kEnvelopeRecord, kCodedCharacterSet);
  if (index < 0) return Charset::Unknown;
  const QByteArray& escape = items_[static_cast<std::size_t>(index)].bytes;
  if (escape == kUtf8Escape) return Charset::Utf8;
  // ISO 8859-1 as right-hand set, in the two forms that ISO 2022 has for it.
  if (escape.contains("\x1B.A") || escape.contains("\x1B-A")) return Charset::Latin1;
  return Charset::Unknown;
}

void IptcList::BecomeUtf8() {
  if (CodedCharset() == Charset::Utf8) return;
  for (int i = 0; i < Count(); ++i) {
    IptcItem& item = items_[static_cast<std::size_t>(i)];
    if (!IsBinary(item)) item.bytes = Get(i).toUtf8();
  }
  Remove(Find(kEnvelopeRecord, kCodedCharacterSet));
  items_.insert(items_.begin(), {kEnvelopeRecord, kCodedCharacterSet, QByteArray(kUtf8Escape)});
}

}  // namespace zqm
