// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "browser/window_state.h"

class QLabel;
class QPushButton;
class QSlider;

namespace zqm {

class ImageMultiX;
class MainActions;
class ThumbnailList;

/// The thumbnails under a line with their number, their order and their size.
class ThumbnailPanel : public QWidget {
  Q_OBJECT
 public:
  ThumbnailPanel(ThumbnailList& list, const MainActions& actions, QWidget* parent = nullptr);

  ImageMultiX& View() { return *view_; }
  void SetCounter(const QString& text);
  void SetRows(ThumbnailRows rows);
  int ThumbnailSize() const;
  void SetThumbnailSize(int pixels);

  /// What an empty list says, and whether it offers to import folders.
  void SetEmptyState(const QString& text, bool offerImport);

 Q_SIGNALS:
  void ImportWanted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void PlaceImportButton();

  QLabel* counter_;
  QSlider* size_;
  ImageMultiX* view_;
  QPushButton* importButton_;
};

}  // namespace zqm
