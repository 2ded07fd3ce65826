// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "catalogue/photo_recordset.h"
#include "cataloguing/metadata_record.h"
#include "imaging/photo_reader.h"
#include "shell/result.h"

namespace zqm {

/// Copies the record to the current row; the thumbnail stays too. As below otherwise.
void CopyRecord(const MetadataRecord& record, PhotoRecordset& photos);

/// Copies the record and the thumbnail to the current row. `Photo`, `Flag` and the user's columns
/// stay as they are. Commits nothing.
void UpdatefromForm3(const MetadataRecord& record, const QByteArray& thumbnail,
                     PhotoRecordset& photos);

/// What a caller adds to the new row before it is written.
using RowExtras = std::function<void(PhotoRecordset& photos)>;

/// One file's way into the catalogue: a new row with its metadata and thumbnail, `Flag`
/// "Unflagged", and the caller's extras, written as one. On failure there is no row.
Outcome CataloguePhoto(const PhotoFile& photo, const QString& path, PhotoRecordset& photos,
                       const RowExtras& extras = {});

}  // namespace zqm
