// SPDX-License-Identifier: GPL-3.0-or-later
// Put before every source of a fuzz build: clang before 16 doesn't get the class of the same name
// from its C++ library.
#pragma once

#include <version>

#if defined(__clang__) && !defined(__cpp_lib_source_location)
namespace std {
class source_location {
 public:
  static constexpr source_location current(unsigned line = __builtin_LINE()) {
    source_location here;
    here.line_ = line;
    return here;
  }
  constexpr unsigned line() const { return line_; }

 private:
  unsigned line_ = 0;
};
}  // namespace std
#endif
