// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz_codec.h"
#include "imaging/codecs/codecs.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  zqm::test::FuzzCodec(zqm::kPsdCodec, {data, size});
  return 0;
}
