// SPDX-License-Identifier: GPL-3.0-or-later
// The two record files that keep the main window's look between runs. A missing, short or foreign
// file gives the defaults.
#pragma once

#include <QString>

#include "shell/result.h"

namespace zqm {

enum class ThumbnailRows { Single, Multiple };

/// "Thumbnails.dat" in `folder`: "TSi" or "TMu". Anything else is a single row, which is then
/// written.
ThumbnailRows GetThumbnailViewSetting(const QString& folder);
Outcome SaveThumbnailViewSetting(const QString& folder, ThumbnailRows rows);

/// Which page the information panel shows; the values are those of the record.
enum class InfoPage { Photo = 1, Properties = 2, Metadata = 3, Exif = 4, Iptc = 5, Gps = 6 };

/// "MIS.dat": three digits.
struct MainInterfaceState {
  bool metadataShown = true;         ///< "1", or "2" for hidden
  InfoPage page = InfoPage::Photo;   ///< "1" to "6"
  bool advancedSearchShown = false;  ///< "1", or "2" for off
  bool operator==(const MainInterfaceState&) const = default;
};

MainInterfaceState LoadMainInterfaceState(const QString& folder);
Outcome SaveMainInterfaceState(const QString& folder, const MainInterfaceState& state);

}  // namespace zqm
