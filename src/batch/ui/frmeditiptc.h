// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/ui/metadata_dialog.h"

namespace zqm {

/// Writes IPTC fields into photos.
class frmeditiptc : public MetadataDialog {
  Q_OBJECT
 public:
  explicit frmeditiptc(BatchPlace place, QWidget* parent = nullptr);

 protected:
  BatchResult Write(const BatchObserver& observer) override;

 private:
  static const Names kNames;
};

}  // namespace zqm
