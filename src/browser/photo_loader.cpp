// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/photo_loader.h"

#include <QMetaObject>
#include <memory>

namespace zqm {

PhotoLoader::PhotoLoader() {
  // A second thread, so that a photo that is slow to read doesn't hold up the next one.
  pool_.setMaxThreadCount(2);
}

PhotoLoader::~PhotoLoader() {
  pool_.clear();
  pool_.waitForDone();
}

void PhotoLoader::Drop() {
  ++generation_;
  loading_ = false;
  pool_.clear();
}

void PhotoLoader::Load(const QString& path, const QSize& box, const ReadRequest& request) {
  Drop();
  loading_ = true;
  pool_.start([this, path, box, request, generation = generation_] {
    auto photo = std::make_shared<Result<ViewPhoto>>(ReadViewPhoto(path, box, request));
    QMetaObject::invokeMethod(this, [this, path, photo, generation] {
      if (generation != generation_) return;
      loading_ = false;
      Q_EMIT Loaded(path, *photo);
    });
  });
}

}  // namespace zqm
