// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QStringView>
#include <span>

namespace zqm {

enum class MorphOperation {
  Erode,     // the darkest about a pixel: dark things grow
  Dilate,    // the lightest: light things grow
  Open,      // eroded, then dilated: small light things go
  Close,     // dilated, then eroded: small dark things go
  Gradient,  // dilated less eroded: outlines
  TopHat,    // what opening takes away: small light things alone
  BlackHat,  // what closing fills: small dark things alone
};

struct MorphOperationName {
  QStringView name;
  MorphOperation operation;
};
/// Every operation with the name that windows show.
std::span<const MorphOperationName> MorphOperationNames();

struct MorphSettings {
  MorphOperation operation = MorphOperation::Erode;
  int radius = 0;     ///< pixels of the full picture, 0 to 50; 0 changes nothing
  bool round = true;  ///< an eight-sided neighbourhood, or a square one
};

/// Each channel by itself. Pixels that are fully transparent don't count. `scale` as in PartView.
QImage Morph(const QImage& picture, const MorphSettings& settings, double scale = 1);

}  // namespace zqm
