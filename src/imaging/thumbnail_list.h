// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QStringList>
#include <functional>
#include <vector>

#include "imaging/photo_reader.h"
#include "imaging/thumbnail_loader.h"

namespace zqm {

/// How a thumbnail is marked by whoever owns the list.
struct ThumbnailLook {
  QString topText;
  QRgb topColour = 0;
  bool bold = false;
  bool underline = false;
  QRgb frame = 0;
  QRgb caption = 0;
};

/// The thumbnails of a list of photo files: paths, marks, and pictures that are read beside the
/// interface thread, nearest to the view first. Pictures far from the view are let go when they are
/// more than about 96 MB, and read again when they come near.
class ThumbnailList : public QAbstractListModel {
  Q_OBJECT
 public:
  enum Role { PathRole = Qt::UserRole, LookRole, PictureRole, StateRole, OfflineRole };
  enum class State { Waiting, Loaded, Broken };
  Q_ENUM(State)

  ThumbnailList();
  ~ThumbnailList() override;

  int ImageCount() const { return static_cast<int>(items_.size()); }
  void Clear();
  int AppendImage(const QString& path);
  void AppendImages(const QStringList& paths);
  /// Many at once reset the model: selections are lost then.
  void DeleteImages(const QStringList& paths);
  QString ImageFileName(int row) const;
  void SetImageFileName(int row, const QString& path);
  QStringList FileNames() const;
  /// -1 for a path that isn't in the list.
  int IndexOf(const QString& path) const;

  /// Reads the thumbnail anew; the old one stays until then.
  void UpdateImage(int row);

  void SetLook(int row, const ThumbnailLook& look);
  const ThumbnailLook& Look(int row) const;
  /// One for each photo, in order.
  void SetLooks(const std::vector<ThumbnailLook>& looks);

  /// The file is away: its stored thumbnail is shown instead.
  void SetOffline(int row, bool offline);
  bool IsOffline(int row) const;
  /// Gives the stored JPEG of a photo whose file is away, or nothing. Called on the interface
  /// thread, for photos near the view only.
  void SetStoredThumbnails(std::function<QByteArray(const QString& path)> stored);

  /// A permutation of the rows: what was at `order[i]` comes to i. Selections follow.
  void Reorder(const std::vector<int>& order);

  /// How files are read from now on.
  void SetReadRequest(const ReadRequest& request);
  /// Device pixels; larger ones are read anew when they come near the view.
  void SetThumbnailBox(const QSize& box);
  /// What the view shows, first to last row.
  void SetVisible(int first, int last);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  struct Item {
    QString path;
    quint64 key = 0;  // another one for every reading that was asked for
    ThumbnailLook look;
    QImage picture;
    State state = State::Waiting;
    QSize box;  // for which the picture was read
    bool offline = false;
    bool reading = false;
  };

  const Item& At(int row) const { return items_[static_cast<std::size_t>(row)]; }
  Item& At(int row) { return items_[static_cast<std::size_t>(row)]; }
  bool Wanted(const Item& item) const;
  int NextWanted() const;
  void Load();
  void Begin(int row);
  void Take(quint64 key, const QImage& picture);
  void LetGo();
  void Forget(Item& item);
  void Changed(int row, const QList<int>& roles);
  void DeleteAtOnce(const QSet<QString>& gone);
  void Reindex() const;
  int Distance(int row) const;
  int Reach() const;

  std::vector<Item> items_;
  ThumbnailLoader loader_;
  std::function<QByteArray(const QString&)> stored_;
  ReadRequest request_;
  QSize box_{200, 200};
  int first_ = 0;
  int last_ = -1;
  qint64 bytes_ = 0;
  quint64 lastKey_ = 0;
  mutable bool indexed_ = false;
  mutable QHash<QString, int> rowOfPath_;
  mutable QHash<quint64, int> rowOfKey_;
};

}  // namespace zqm
