// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zqm {

/// What cataloguing tells whoever shows thumbnails. Owned by this floor, implemented above it.
class BrowserView {
 public:
  virtual ~BrowserView() = default;

  /// A photo has just been catalogued: if its thumbnail is shown, it is marked "Cataloged" and
  /// repainted.
  virtual void MarkCatalogued(const QString& path) = 0;
};

}  // namespace zqm
