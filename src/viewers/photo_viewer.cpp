// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/photo_viewer.h"

#include <algorithm>
#include <chrono>

#include "shell/files.h"

namespace zqm {
namespace {

constexpr std::chrono::milliseconds kBoxRests(200);
constexpr int kThumbnailGrows = 3;

/// A stored thumbnail large enough to be recognised from a chair, but no larger than the box.
QImage Grown(const QImage& thumbnail, const QSize& box) {
  const QSize size = thumbnail.size().scaled(box.boundedTo(thumbnail.size() * kThumbnailGrows),
                                             Qt::KeepAspectRatio);
  if (thumbnail.isNull() || size.width() <= thumbnail.width()) return thumbnail;
  return thumbnail.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

PhotoViewer::PhotoViewer(Catalogue& catalogue, const ReadRequest& request, QStringList paths,
                         int position)
    : catalogue_(catalogue),
      paths_(std::move(paths)),
      position_(std::clamp(position, 0, std::max(0, Count() - 1))),
      ahead_(request),
      full_(request) {
  connect(&ahead_, &PhotosAhead::Ready, this, [this](const QString& path) {
    if (path == PathAt(position_)) Show(*ahead_.Get(path));
  });
  connect(&full_, &PhotosAhead::Ready, this, [this](const QString& path) {
    if (path == shown_.path) ShowFullSize();
  });
  rest_.setSingleShot(true);
  rest_.setInterval(kBoxRests);
  connect(&rest_, &QTimer::timeout, this, &PhotoViewer::TakeBox);
}

void PhotoViewer::SetBox(const QSize& box) {
  if (box.isEmpty()) return;
  nextBox_ = box;
  if (box == box_) return rest_.stop();
  // While an edge is dragged each step is another size; only the first photo is in a hurry.
  if (shown_.position < 0)
    TakeBox();
  else
    rest_.start();
}

void PhotoViewer::TakeBox() {
  rest_.stop();
  box_ = nextBox_;
  ahead_.SetBox(box_);
  Look();
}

void PhotoViewer::SetUpright(bool upright) {
  ahead_.SetUpright(upright);
  full_.SetUpright(upright);
  Look();
}

bool PhotoViewer::GoTo(int position) {
  position = std::clamp(position, 0, std::max(0, Count() - 1));
  if (position == position_) return false;
  backwards_ = position < position_;
  position_ = position;
  full_.Want({});
  Look();
  return true;
}

/// Has the photo at the position read, then the neighbours, those first that probably come next.
void PhotoViewer::Look() {
  if (box_.isEmpty() || paths_.isEmpty()) return;
  const int step = backwards_ ? -1 : 1;
  QStringList wanted;
  for (const int offset : {0, step, -step, 2 * step})
    if (const QString path = PathAt(position_ + offset); !path.isEmpty()) wanted.append(path);
  ahead_.Want(wanted);
  if (const auto* photo = ahead_.Get(wanted.first()))
    Show(*photo);
  else
    Q_EMIT Waiting();
}

void PhotoViewer::WantFullSize() {
  if (shown_.offline || shown_.image.isNull() || IsLoading()) return;
  full_.Want({shown_.path});
  ShowFullSize();
}

/// A photo that can't be read any more leaves what is shown.
void PhotoViewer::ShowFullSize() {
  const Result<ViewPhoto>* photo = full_.Get(shown_.path);
  if (photo == nullptr)
    Q_EMIT Waiting();
  else if (!*photo || (*photo)->image.isNull())
    Q_EMIT FullSizeFailed(*photo ? (*photo)->reason : photo->Reason());
  else
    Show(*photo);
}

void PhotoViewer::Show(const Result<ViewPhoto>& photo) {
  const QString path = PathAt(position_), before = shown_.path;
  const QSize sizeBefore = shown_.fullSize;
  shown_ = {path, position_, EmptyPhotoInfo()};
  if (photo) {
    shown_.info = FilePhotoInfo(path, photo->file);
    shown_.image = photo->image;
    shown_.fullSize = photo->fullSize;
    shown_.message = photo->reason;
  } else {
    shown_.message = photo.Reason();
    if (!FileExists(path)) ShowOffline();
  }
  shown_.again = path == before && shown_.fullSize == sizeBefore;
  Q_EMIT Changed();
}

void PhotoViewer::ShowOffline() {
  shown_.offline = true;
  PhotoRecordset& photos = catalogue_.Photos();
  if (!photos.LocateRow(shown_.path)) return;
  shown_.info = LoadInfoFromDatabase(photos);
  const Result<QByteArray> stored = photos.ReadThumbnail();
  if (!stored) return;
  shown_.image = Grown(QImage::fromData(*stored), box_);
  shown_.fullSize = shown_.image.size();
}

}  // namespace zqm
