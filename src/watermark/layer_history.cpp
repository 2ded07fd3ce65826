// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/layer_history.h"

#include <utility>

namespace zqm {
namespace {
constexpr std::size_t kMostSteps = 100;
}

void LayerHistory::Begin(const VectorObjects& layers) {
  now_ = layers;
  back_.clear();
  forth_.clear();
  word_.clear();
}

void LayerHistory::Changed(const VectorObjects& layers, const QString& word) {
  if (layers == now_) return;
  if (word.isEmpty() || word != word_) {
    back_.push_back(std::move(now_));
    if (back_.size() > kMostSteps) back_.erase(back_.begin());
  }
  forth_.clear();
  now_ = layers;
  word_ = word;
}

std::optional<VectorObjects> LayerHistory::Go(Steps& from, Steps& to) {
  if (from.empty()) return std::nullopt;
  to.push_back(std::exchange(now_, std::move(from.back())));
  from.pop_back();
  word_.clear();
  return now_;
}

}  // namespace zqm
