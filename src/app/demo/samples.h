// SPDX-License-Identifier: GPL-3.0-or-later
// The sample photographs: what they are called, how they are drawn, what they say about themselves.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "imaging/file_parameters.h"

namespace zqm::demo {

/// Where a photo was taken: degrees, north and east positive, and metres above the sea. The
/// direction is that of the view, degrees from north.
struct Position {
  double latitude = 0, longitude = 0, altitude = 0, direction = 0;
};

struct ExifText {
  const char16_t* key;
  const char16_t* value;
};
struct IptcText {
  int dataset;  ///< of record 2
  const char16_t* text;
};

struct Sample {
  const char16_t* name;
  QSize size;
  QImage (*draw)(const QSize& size);
  std::vector<ExifText> exif;
  std::optional<Position> position;
  std::vector<IptcText> iptc;
};

const std::vector<Sample>& Samples();

/// The sample's own metadata; without any it has neither block.
FileParameters ParametersOf(const Sample& sample);

}  // namespace zqm::demo
