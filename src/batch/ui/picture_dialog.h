// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/picture_work.h"
#include "batch/ui/batch_dialog.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;

namespace zqm {

class DestinationRow;

/// A dialog whose run writes pictures: where they go, what is done with those that stand, whether
/// they are catalogued; the picture in work in the place of the options while it runs.
class PictureDialog : public BatchDialog {
  Q_OBJECT
 protected:
  /// What the two options of the place and the others say.
  struct Captions {
    const char16_t* own;  ///< the photos' own place
    const char16_t* folder;
    const char16_t* existing;
    const char16_t* catalogue;
    const char* folderField;   ///< object name
    const char16_t* progress;  ///< above the picture in work
  };
  PictureDialog(BatchPlace place, const QString& caption, const char* labelName,
                const Captions& captions, ReadRequest read, QWidget* parent);

  /// Rows with the place, in a grid of captions and values.
  void AddPlace(QGridLayout* grid);
  bool InOwnPlace() const;
  QString Folder() const;
  OutputOptions Output() const;
  /// The own place leaves nothing to choose: the rest is disabled then.
  void SetOwnPlaceOverwrites() { ownPlaceOverwrites_ = true; }

  using PictureWork = std::function<PictureResult(const PictureRun& run)>;
  void RunPictures(const BatchTexts& texts, const QString& label, const PictureWork& work,
                   const LabelOf& labelOf = {});

  void UpdatePlace();
  void RunShown(bool running) override;

 private:
  Captions captions_;
  ReadRequest read_;
  bool ownPlaceOverwrites_ = false;
  QButtonGroup* place_;
  DestinationRow* folder_;
  QLabel* existingCaption_;
  QComboBox* existing_;
  QCheckBox* catalogue_;
  QWidget* previewPane_;
  QLabel* preview_;
};

}  // namespace zqm
