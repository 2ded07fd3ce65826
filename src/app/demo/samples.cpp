// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/samples.h"

#include "app/demo/scenes.h"

namespace zqm::demo {

const std::vector<Sample>& Samples() {
  static const std::vector<Sample> samples = {
      {u"Sunset over the hills.jpg", {3600, 2400}, DrawSunsetHills, {}, {}, {}},
      {u"Winter morning below the Dachstein.jpg", {4000, 3000}, DrawWinterPeaks, {}, {}, {}},
      {u"Dunes at first light.jpg", {3000, 2000}, DrawDunes, {}, {}, {}},
  };
  return samples;
}

FileParameters ParametersOf(const Sample& sample) {
  FileParameters parameters;
  for (const ExifText& item : sample.exif)
    parameters.SetIOProperty(item.key, QString::fromUtf16(item.value));
  for (const IptcText& item : sample.iptc)
    parameters.Iptc().Add(2, item.dataset, QString::fromUtf16(item.text));
  return parameters;
}

}  // namespace zqm::demo
