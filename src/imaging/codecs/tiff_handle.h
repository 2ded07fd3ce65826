// SPDX-License-Identifier: GPL-3.0-or-later
// What reading and writing TIFF share: handlers of their own for each open file, so that threads
// share none, and the library's first complaint kept.
#pragma once

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <memory>

namespace zqm {

/// The library's first complaint about a file.
struct TiffComplaint {
  char message[200] = {};
};

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

struct FreeTiffOptions {
  void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};
using TiffOptions = std::unique_ptr<TIFFOpenOptions, FreeTiffOptions>;

/// Options under which complaints go to `complaint`, which outlives the file, and warnings nowhere.
inline TiffOptions MakeTiffOptions(TiffComplaint& complaint) {
  TiffOptions options(TIFFOpenOptionsAlloc());
  TIFFOpenOptionsSetErrorHandlerExtR(
      options.get(),
      [](TIFF*, void* user, const char*, const char* format, va_list arguments) {
        auto* first = static_cast<TiffComplaint*>(user);
        if (first->message[0] == 0)
          std::vsnprintf(first->message, sizeof first->message, format, arguments);
        return 1;
      },
      &complaint);
  TIFFOpenOptionsSetWarningHandlerExtR(
      options.get(), [](TIFF*, void*, const char*, const char*, va_list) { return 1; }, nullptr);
  return options;
}

/// Memory needs no closing.
inline int CloseNothing(thandle_t) {
  return 0;
}

}  // namespace zqm
