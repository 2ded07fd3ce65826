// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QTimer>
#include <QTreeWidget>
#include <future>

namespace zqm {

/// The folders that photos of a catalogue are in, and those on the way to them, all unfolded. Which
/// of them no longer stand is found out beside the interface thread and marked when it is known.
class CatalogueTree : public QTreeWidget {
  Q_OBJECT
 public:
  explicit CatalogueTree(QWidget* parent = nullptr);

  /// The chosen folder stays chosen if it is among them.
  void SetFolders(const QStringList& folders);
  /// With a separator at its end; "" when none is chosen.
  QString CurrentFolder() const;

 Q_SIGNALS:
  /// The choice has changed, to none ("") too.
  void FolderClick(const QString& folder);

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  QTreeWidgetItem* AddNode(QTreeWidgetItem* parent, const QString& caption, const QString& path);
  void LookForMissing(const QStringList& paths);
  void MarkMissing(const QSet<QString>& missing);

  QTimer poll_;
  std::future<QSet<QString>> missing_;
};

}  // namespace zqm
