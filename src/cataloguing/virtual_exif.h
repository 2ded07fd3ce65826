// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "cataloguing/metadata_record.h"
#include "imaging/photo_reader.h"

namespace zqm {

/// File facts, EXIF and GPS of a photo as the catalogue stores them. Everything else in the record
/// is emptied. `path` is the photo's own; nothing is read from disk.
void VirtualEXIF(const PhotoFile& photo, const QString& path, MetadataRecord& record);

/// Adds the IPTC columns.
void ReadIPTC(const PhotoFile& photo, MetadataRecord& record);

/// Both: the whole record of one photo.
MetadataRecord ReadMetadataRecord(const PhotoFile& photo, const QString& path);

}  // namespace zqm
