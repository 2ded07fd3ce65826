// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/ui/catalogue_tree.h"

#include <QCollator>
#include <QHash>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>
#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <unordered_map>
#include <vector>

#include "cataloguing/reconnect.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/locale_info.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPathRole = Qt::UserRole + 1;
constexpr int kPollMilliseconds = 30;

QStringList PartsOf(const QString& folder) {
  QStringList parts = folder.split(u'/', Qt::SkipEmptyParts);
  if (folder.startsWith(u'/')) parts.prepend(u"/"_s);
  return parts;
}

/// Orders names as the disk's tree does.
class NameOrder {
 public:
  NameOrder() : collator_(UserLocale()) {
    collator_.setNumericMode(true);
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
  }
  bool operator()(const QString& a, const QString& b) {
    if (a == b) return false;
    const int order = KeyOf(a).compare(KeyOf(b));
    return order != 0 ? order < 0 : a < b;
  }

 private:
  /// A name is compared many times, and comparing keys costs next to nothing.
  const QCollatorSortKey& KeyOf(const QString& name) {
    auto at = keys_.find(name);
    if (at == keys_.end()) at = keys_.emplace(name, collator_.sortKey(name)).first;
    return at->second;
  }
  QCollator collator_;
  std::unordered_map<QString, QCollatorSortKey> keys_;
};

/// Each folder's parts, in the order in which a tree shows them.
std::vector<QStringList> SortedParts(const QStringList& folders) {
  std::vector<QStringList> paths;
  for (const QString& folder : folders)
    paths.push_back(PartsOf(folder));
  NameOrder before;
  std::ranges::sort(paths, [&before](const QStringList& a, const QStringList& b) {
    return std::ranges::lexicographical_compare(a, b, std::ref(before));
  });
  return paths;
}

/// Those of the folders that don't stand; `paths` has a folder before those in it.
QSet<QString> MissingOf(const QStringList& paths) {
  QSet<QString> missing;
  for (const QString& path : paths) {
    const QString parent = WithSeparator(GetParentFolderName(StripSlash(path)));
    if (missing.contains(parent) || !FolderExists(path)) missing.insert(path);
  }
  return missing;
}

}  // namespace

CatalogueTree::CatalogueTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setIndentation(look::kSpace16);
  setIconSize({look::kIconSize, look::kIconSize});
  poll_.setInterval(kPollMilliseconds);
  connect(&poll_, &QTimer::timeout, this, [this] {
    Guarded("CatalogueTree", "Poll", [this] {
      if (missing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
      poll_.stop();
      MarkMissing(missing_.get());
    });
  });
  connect(this, &QTreeWidget::itemSelectionChanged, this,
          [this] { Q_EMIT FolderClick(CurrentFolder()); });
}

QString CatalogueTree::CurrentFolder() const {
  const QList<QTreeWidgetItem*> chosen = selectedItems();
  return chosen.isEmpty() ? QString() : chosen.first()->data(0, kPathRole).toString();
}

void CatalogueTree::SetFolders(const QStringList& folders) {
  const QString chosen = CurrentFolder();
  QStringList paths;
  {
    const QSignalBlocker quiet(this);
    clear();
    QHash<QString, QTreeWidgetItem*> nodes;
    for (const QStringList& parts : SortedParts(folders)) {
      QTreeWidgetItem* parent = invisibleRootItem();
      QString path;
      for (const QString& part : parts) {
        path = WithSeparator(path + part);
        QTreeWidgetItem*& node = nodes[path];
        if (node == nullptr) {
          node = AddNode(parent, part, path);
          paths.append(path);
        }
        parent = node;
      }
    }
    expandAll();
    if (QTreeWidgetItem* again = nodes.value(chosen)) setCurrentItem(again);
  }
  if (CurrentFolder() != chosen) Q_EMIT FolderClick(CurrentFolder());
  LookForMissing(paths);
}

void CatalogueTree::focusInEvent(QFocusEvent* event) {
  const bool hadCurrent = currentIndex().isValid();
  QTreeWidget::focusInEvent(event);
  // The view has made the first row current, which looks like a choice.
  if (!hadCurrent) selectionModel()->clearCurrentIndex();
}

QTreeWidgetItem* CatalogueTree::AddNode(QTreeWidgetItem* parent, const QString& caption,
                                        const QString& path) {
  static const QIcon folder = look::Icon("folder");
  auto* node = new QTreeWidgetItem(parent, {caption});
  node->setIcon(0, folder);
  node->setData(0, kPathRole, path);
  node->setToolTip(0, path);
  return node;
}

void CatalogueTree::LookForMissing(const QStringList& paths) {
  std::packaged_task<QSet<QString>()> task([paths] { return MissingOf(paths); });
  missing_ = task.get_future();
  // A network that has gone away may keep it for minutes: on a thread that nobody waits for.
  std::thread(std::move(task)).detach();
  poll_.start();
}

void CatalogueTree::MarkMissing(const QSet<QString>& missing) {
  const QIcon broken = look::Icon("remove-link");
  QTreeWidgetItem* first = nullptr;
  for (QTreeWidgetItemIterator at(this); *at != nullptr; ++at) {
    QTreeWidgetItem* node = *at;
    const QString path = node->data(0, kPathRole).toString();
    if (!missing.contains(path)) continue;
    if (first == nullptr) first = node;
    node->setIcon(0, broken);
    node->setForeground(0, QColor(look::kQuiet));
    node->setToolTip(0, path + u'\n' + tr("This folder is not there any more"));
    node->setData(0, Qt::AccessibleTextRole, tr("%1, not there any more").arg(node->text(0)));
  }
  // Most likely what the user is looking for.
  if (first != nullptr && selectedItems().isEmpty()) scrollToItem(first);
}

}  // namespace zqm
