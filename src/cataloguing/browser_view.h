// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zqm {

/// What work on photos tells whoever shows thumbnails: owned by this floor, implemented above it.
/// Who has no use for a call leaves it.
class BrowserView {
 public:
  virtual ~BrowserView() = default;

  /// A photo has just been catalogued: if its thumbnail is shown, it is marked "Cataloged" and
  /// repainted.
  virtual void MarkCatalogued(const QString&) {}
  /// A photo has no row any more, but its file stands: its thumbnail loses the mark.
  virtual void MarkUncatalogued(const QString&) {}
  /// A photo is gone from where it was: its thumbnail goes, from the selection too.
  virtual void RemovePhoto(const QString&) {}
  /// The same photo under another path.
  virtual void RenamePhoto(const QString& /*path*/, const QString& /*newPath*/) {}
  /// A photo's picture is another one: its thumbnails are made anew.
  virtual void ShowChanged(const QString& /*path*/) {}
  /// A photo was written, over one that stood there or new, and is catalogued now or not.
  virtual void ShowWritten(const QString& /*path*/, bool /*catalogued*/) {}
  /// What the user should read without being asked: for the status line.
  virtual void Say(const QString& /*line*/) {}
  /// A run over files is through: what is shown of the selection is read again.
  virtual void Live() {}
};

}  // namespace zqm
