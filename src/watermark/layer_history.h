// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "imaging/vector_objects.h"

namespace zqm {

/// The layers as they were before each change, to go back and forth. Pictures are shared between
/// the steps.
class LayerHistory {
 public:
  /// What there is to begin with; nothing leads back behind it.
  void Begin(const VectorObjects& layers);
  /// The layers after a change. Changes that follow each other with the same word ("" is none) are
  /// one step: a text that is typed, a slider that is drawn.
  void Changed(const VectorObjects& layers, const QString& word = {});
  /// The next change is a step of its own.
  void EndStep() { word_.clear(); }

  /// The layers to show; nothing at the end.
  std::optional<VectorObjects> Undo() { return Go(back_, forth_); }
  std::optional<VectorObjects> Redo() { return Go(forth_, back_); }
  bool CanUndo() const { return !back_.empty(); }
  bool CanRedo() const { return !forth_.empty(); }

 private:
  using Steps = std::vector<VectorObjects>;
  std::optional<VectorObjects> Go(Steps& from, Steps& to);

  VectorObjects now_;
  Steps back_, forth_;  // the nearest last
  QString word_;
};

}  // namespace zqm
