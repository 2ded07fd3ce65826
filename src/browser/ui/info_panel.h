// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabWidget>
#include <array>

#include "browser/photo_info.h"
#include "browser/window_state.h"

namespace zqm {

class PhotoPanel;
class ValueList;

/// The tabs at the right: the user's values, the file's properties, its metadata.
class InfoPanel : public QTabWidget {
  Q_OBJECT
 public:
  /// Takes `photoPanel` as its first page.
  explicit InfoPanel(PhotoPanel* photoPanel, QWidget* parent = nullptr);

  void ShowInfo(const PhotoInfo& info);

  InfoPage Page() const;
  void SetPage(InfoPage page);

 private:
  ValueList* properties_;
  QTabWidget* metadata_;
  std::array<ValueList*, kMetadataPageCount> pages_{};
};

}  // namespace zqm
