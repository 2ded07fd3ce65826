// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>

#include "imaging/codec.h"

namespace zqm::test {

/// Facts and pixels of one input, in full and for a thumbnail. Pictures of many pixels are left to
/// the tests of their bounds: under the sanitizers each would take longer than a thousand others.
inline void FuzzCodec(const Codec& codec, ByteView file) {
  constexpr std::int64_t kMostFuzzedPixels = 1 << 17;
  LoadOptions options;
  options.extension = QLatin1String(codec.extensions[0]);
  if (!codec.sniff(file, options.extension)) return;
  (void)codec.sniff(file, {});
  const auto facts = codec.readFacts(file, options);
  if (!facts || std::int64_t{facts->width} * facts->height > kMostFuzzedPixels) return;
  const auto whole = codec.load(file, options);
  if (whole && whole->size() != QSize(facts->width, facts->height)) std::abort();
  options.box = QSize(20, 20);
  options.colourManagement = true;
  if (bool(codec.load(file, options)) != bool(whole)) std::abort();
}

}  // namespace zqm::test
