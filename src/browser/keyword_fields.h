// SPDX-License-Identifier: GPL-3.0-or-later
// The seven values that a user gives to photos, and how an edit finds its way into the catalogue
// without a save button.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>

#include "cataloguing/user_fields.h"
#include "shell/busy.h"

namespace zqm {

/// One value of the photo panel: its text as the user sees it, the text as last read or saved, and
/// the wait between the two. Typing delays the save; two ticks after the last key it falls due.
class AutoSave : public QObject {
  Q_OBJECT
 public:
  AutoSave(KeywordField field, QObject* parent);

  KeywordField Field() const { return field_; }
  const QString& Text() const { return text_; }
  const QString& Saved() const { return saved_; }
  /// Whether the user's text still waits to be saved.
  bool Unsaved() const { return text_ != saved_; }

  /// Another photo's value, or none: nothing is pending any more.
  void Load(const QString& text);
  /// The user changed the text; the wait begins anew.
  void Edit(const QString& text);
  /// A key goes down in the field: the wait stops until it is up again.
  void KeyDown();
  void KeyUp();
  void MarkSaved(const QString& text) { saved_ = text; }

  /// How long a tick of the wait is; a second unless told.
  static void SetTickMilliseconds(int milliseconds);

 Q_SIGNALS:
  /// The panel is to show this value.
  void Loaded(const QString& text);
  /// The wait is over.
  void Due();

 private:
  void Wait();
  void Tick();

  KeywordField field_;
  QString text_;
  QString saved_;
  QTimer counter_;
  int ticks_ = 0;
};

/// The seven values together with what saves them: all selected photos, in one transaction a value.
class KeywordFields : public QObject {
  Q_OBJECT
 public:
  /// `selected` gives the paths that an edit is for.
  KeywordFields(Catalogue& catalogue, Busy& busy, std::function<QStringList()> selected);
  ~KeywordFields() override;

  AutoSave& Field(KeywordField field);

  /// The values of the current row.
  void LoadRow();
  void ResetKeywords();

  /// The words of the values whose writing is under way. While there are any, closing and
  /// cataloguing are refused.
  const QStringList& Queue() const { return queue_; }

  /// Saves at once whatever waits. False when a value could not be written: the user was told, and
  /// the text still waits.
  bool CheckUpdate();

 Q_SIGNALS:
  /// A value was written to all catalogued photos among these.
  void Saved(KeywordField field, const QStringList& paths);

 private:
  bool Save(AutoSave& field);
  Outcome Assign(KeywordField field, const QString& stored, const QStringList& paths);
  void SaveWhenDue(AutoSave& field);

  Catalogue& catalogue_;
  Busy& busy_;
  std::function<QStringList()> selected_;
  std::array<std::unique_ptr<AutoSave>, kKeywordFieldCount> fields_;
  QStringList queue_;
};

}  // namespace zqm
