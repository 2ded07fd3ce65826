// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/photos_ahead.h"

#include <QMetaObject>

#include "viewers/upright.h"

namespace zqm {
namespace {

void SetUp(ViewPhoto& photo) {
  const int tag = OrientationTag(photo.file.parameters);
  const bool hadPixels = !photo.image.isNull();
  photo.image = Upright(photo.image, tag);
  if (hadPixels && photo.image.isNull()) photo.reason = QStringLiteral("Not enough memory");
  photo.fullSize = UprightSize(photo.fullSize, tag);
}

}  // namespace

PhotosAhead::PhotosAhead(const ReadRequest& request) : request_(request) {
  // A second thread, so that a photo that is slow to read doesn't hold up the next one.
  pool_.setMaxThreadCount(2);
}

PhotosAhead::~PhotosAhead() {
  entries_.clear();
  pool_.clear();
  pool_.waitForDone();
}

void PhotosAhead::SetBox(const QSize& box) {
  if (box == box_) return;
  box_ = box;
  entries_.clear();
}

void PhotosAhead::SetUpright(bool upright) {
  if (upright == upright_) return;
  upright_ = upright;
  entries_.clear();
}

void PhotosAhead::Want(const QStringList& paths) {
  std::erase_if(entries_, [&](const auto& entry) { return !paths.contains(entry.first); });
  int priority = static_cast<int>(paths.size());
  for (const QString& path : paths) {
    auto& entry = entries_[path];
    if (!entry) {
      entry = std::make_unique<Entry>();
      Start(path, *entry, priority);
    }
    --priority;
  }
}

const Result<ViewPhoto>* PhotosAhead::Get(const QString& path) const {
  const auto entry = entries_.find(path);
  return entry == entries_.end() || !entry->second->photo ? nullptr : &*entry->second->photo;
}

void PhotosAhead::Forget(const QString& path) {
  entries_.erase(path);
}

void PhotosAhead::Start(const QString& path, Entry& entry, int priority) {
  entry.wanted = std::make_shared<std::atomic<bool>>(true);
  const auto read = [this, path, box = box_, upright = upright_, request = request_,
                     wanted = entry.wanted] {
    if (!*wanted) return;
    auto photo = std::make_shared<Result<ViewPhoto>>(ReadViewPhoto(path, box, request));
    if (upright && *photo) SetUp(**photo);
    QMetaObject::invokeMethod(this, [this, path, photo, wanted] {
      if (!*wanted) return;  // forgotten meanwhile, perhaps asked for anew
      entries_.at(path)->photo = std::move(*photo);
      Q_EMIT Ready(path);
    });
  };
  pool_.start(read, priority);
}

}  // namespace zqm
