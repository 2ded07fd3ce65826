// SPDX-License-Identifier: GPL-3.0-or-later
// The formats, each declared in the file of its name. A new one is one line here and one in the
// table of registry.cpp.
#pragma once

#include "imaging/codec.h"

namespace zqm {

extern const Codec kBmpCodec;
extern const Codec kGifCodec;
extern const Codec kJ2kCodec;
extern const Codec kJp2Codec;
extern const Codec kJpegCodec;
extern const Codec kPcxCodec;
extern const Codec kPngCodec;
extern const Codec kPsdCodec;
extern const Codec kRawCodec;
extern const Codec kTgaCodec;
extern const Codec kTiffCodec;

}  // namespace zqm
