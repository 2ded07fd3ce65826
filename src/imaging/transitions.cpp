// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions.h"

namespace zqm {
namespace {

/// Draws one frame by whatever effect it is called with.
struct DrawFrame {
  quint32 seed;
  const std::optional<RevealMap>& map;
  const QImage& from;
  const QImage& to;
  double progress;
  QImage& out;

  void operator()(const Cut&) const { out = to; }
  void operator()(const Fade& fade) const { DrawFade(fade, from, to, progress, out); }
  void operator()(const Reveal&) const { map->Draw(from, to, progress, out); }
  void operator()(const Move& move) const {
    DrawPieces(PiecesAt(move, out.size(), progress, seed), from, to, out);
  }
  void operator()(const Unroll& unroll) const { DrawUnroll(unroll, from, to, progress, out); }
  void operator()(const TurningShape& shape) const {
    DrawTurningShape(shape, from, to, progress, out);
  }
};

bool Fits(const QImage& picture, const QSize& screen) {
  return picture.size() == screen && picture.format() == QImage::Format_RGB32;
}

}  // namespace

const Transition& TransitionAt(int number) {
  const auto all = Transitions();
  const bool known = number >= 0 && static_cast<std::size_t>(number) < all.size();
  return all[known ? static_cast<std::size_t>(number) : 0];
}

TransitionFrames::TransitionFrames(const Transition& transition, const QSize& screen)
    : transition_(transition), screen_(screen) {
  const auto* reveal = std::get_if<Reveal>(&transition.effect);
  if (reveal && !screen.isEmpty())
    map_.emplace(*reveal, screen, static_cast<quint32>(transition.number));
}

void TransitionFrames::Draw(const QImage& from, const QImage& to, double progress,
                            QImage& out) const {
  const bool drawn = !screen_.isEmpty() && Fits(from, screen_) && Fits(to, screen_);
  if (drawn && progress <= 0) {
    out = from;
    return;
  }
  // Written so that a progress that is no number ends the transition.
  if (!drawn || !(progress < 1)) {
    out = to;
    return;
  }
  if (!Fits(out, screen_) || !out.isDetached()) out = QImage(screen_, QImage::Format_RGB32);
  if (out.isNull()) return;
  std::visit(DrawFrame{static_cast<quint32>(transition_.number), map_, from, to, progress, out},
             transition_.effect);
}

void Blend(const Transition& transition, const QImage& from, const QImage& to, double progress,
           QImage& out) {
  TransitionFrames(transition, to.size()).Draw(from, to, progress, out);
}

}  // namespace zqm
