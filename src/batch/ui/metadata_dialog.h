// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <span>

#include "batch/ui/batch_dialog.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QTabWidget;

namespace zqm {

/// Edits metadata of photos: tab pages with a check box and an input for each field. An input is
/// enabled while its box is checked; only those fields are written.
class MetadataDialog : public BatchDialog {
  Q_OBJECT
 public:
  /// What the inputs show at first; boxes stay unchecked.
  virtual void Fill(const std::map<int, QString>& texts);

 protected:
  struct Names {
    const char* window;
    const char16_t* caption;
    const char* tabs;
    const BatchTexts& texts;
  };
  MetadataDialog(const Names& names, BatchPlace place, QWidget* parent);

  QGridLayout* AddPage(const char16_t* caption);
  /// A row of a page. `index` is the field's, the input's object name is "`input`(index)".
  QCheckBox* AddField(QGridLayout* page, int index, const char16_t* caption, const QString& boxName,
                      QWidget* input, const char* inputName);
  static QComboBox* MakeList(const QStringList& items);

  virtual QString TypedText(int index) const;
  /// The texts of all checked fields.
  std::map<int, QString> Edit() const;
  /// Writes the edit; the window's Apply.
  virtual BatchResult Write(const BatchObserver& observer) = 0;
  /// After the last field.
  void Finish();

 private:
  struct Field {
    QCheckBox* box;
    QWidget* input;
  };
  void cmdapply_Click();

  const Names& names_;
  QTabWidget* tabs_;
  std::map<int, Field> fields_;
};

}  // namespace zqm
