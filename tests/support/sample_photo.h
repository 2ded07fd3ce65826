// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <initializer_list>
#include <utility>

namespace zqm::test {

using Properties = std::initializer_list<std::pair<const char16_t*, const char16_t*>>;
using IptcTexts = std::initializer_list<std::pair<int, const char16_t*>>;

/// A drawn JPEG whose EXIF holds the given keys and whose IPTC holds the given datasets of
/// record 2.
QByteArray SampleJpeg(int width, int height, Properties exif = {}, IptcTexts iptc = {});

}  // namespace zqm::test
