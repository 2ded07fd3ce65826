// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "browser/keyword_fields.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QLayout;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace zqm {

class RatingStars;

/// The user's own values of the selected photos: rating, flag, notes, author, date, tags,
/// categories. What is typed here is saved by `KeywordFields`.
class PhotoPanel : public QWidget {
  Q_OBJECT
 public:
  explicit PhotoPanel(KeywordFields& keywords, QWidget* parent = nullptr);

  /// The categories to tick, in their order.
  void SetCategories(const QStringList& names);
  /// `why` stands as a hint above the fields while they can't be edited.
  void SetEditable(bool editable, const QString& why);

  void SetRating(int rating);
  void SetFlag(const QString& flag);

 Q_SIGNALS:
  void AddCategoryWanted();
  void DeleteCategoryWanted(const QString& name);
  void RebuildWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* MakeHeader();
  QLayout* MakeCategoryButtons();
  void UpdateDeleteButton();
  void ConnectText(QLineEdit* edit, KeywordField field);
  void WatchKeys(QWidget* editor, KeywordField field);
  void ShowFlag(const QString& flag);
  void ShowNotes(const QString& text);
  void ShowDate(const QString& text);
  /// The ticks of what a photo's row has.
  void Categories(const QString& stored);
  void List3_ItemCheck();
  void PickDate();

  KeywordFields& keywords_;
  QLabel* hint_;
  RatingStars* stars_;
  std::array<QToolButton*, 3> flags_{};
  QPlainTextEdit* notesEdit_;
  QLineEdit* authorEdit_;
  QLineEdit* dateEdit_;
  QToolButton* calendarButton_;
  QLineEdit* tagsEdit_;
  QListWidget* categoryList_;
  QPushButton* deleteButton_;
  QPushButton* rebuildButton_;
  QList<QWidget*> editors_;
  bool categoriesEditable_ = false;
};

}  // namespace zqm
