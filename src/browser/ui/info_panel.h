// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabWidget>
#include <array>

#include "browser/window_state.h"
#include "metadata/photo_info.h"

class QPushButton;

namespace zqm {

class PhotoPanel;
class ValueList;

/// What the buttons of a metadata page do with the selected photos.
enum class MetadataCommand { Edit, Export, Remove };

/// The tabs at the right: the user's values, the file's properties, its metadata.
class InfoPanel : public QTabWidget {
  Q_OBJECT
 public:
  /// Takes `photoPanel` as its first page.
  explicit InfoPanel(PhotoPanel* photoPanel, QWidget* parent = nullptr);

  void ShowInfo(const PhotoInfo& info);
  /// What is shown.
  const PhotoInfo& Info() const { return shown_; }
  /// The metadata buttons need a selection.
  void SetSelected(int count);

  InfoPage Page() const;
  void SetPage(InfoPage page);

 Q_SIGNALS:
  void CommandWanted(zqm::MetadataCommand command, zqm::MetadataPage page);

 private:
  QWidget* ComposePage(std::size_t page);

  PhotoInfo shown_;
  std::vector<QPushButton*> buttons_;
  ValueList* properties_;
  QTabWidget* metadata_;
  std::array<ValueList*, kMetadataPageCount> pages_{};
};

}  // namespace zqm
