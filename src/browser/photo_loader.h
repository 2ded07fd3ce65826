// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>

#include "imaging/view_reader.h"
#include "shell/result.h"

namespace zqm {

/// Reads the selected photo beside the interface thread. Only the photo asked for last arrives;
/// whatever was asked for before is dropped.
class PhotoLoader : public QObject {
  Q_OBJECT
 public:
  PhotoLoader();
  ~PhotoLoader() override;

  /// `box` in device pixels; empty for the full size.
  void Load(const QString& path, const QSize& box, const ReadRequest& request);
  void Drop();
  bool IsLoading() const { return loading_; }

 Q_SIGNALS:
  void Loaded(const QString& path, const zqm::Result<zqm::ViewPhoto>& photo);

 private:
  QThreadPool pool_;
  quint64 generation_ = 0;
  bool loading_ = false;
};

}  // namespace zqm
