// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/catalogue_photo.h"

#include "cataloguing/virtual_exif.h"

namespace zqm {

void CopyRecord(const MetadataRecord& record, PhotoRecordset& photos) {
  for (const Column column : RecordColumns())
    photos.SetField(column, record.Text(column));
}

void UpdatefromForm3(const MetadataRecord& record, const QByteArray& thumbnail,
                     PhotoRecordset& photos) {
  CopyRecord(record, photos);
  photos.WriteThumbnail(thumbnail);
}

Outcome CataloguePhoto(const PhotoFile& photo, const QString& path, PhotoRecordset& photos,
                       const RowExtras& extras) {
  if (Outcome begun = photos.BeginNewRow(); !begun) return begun;
  UpdatefromForm3(ReadMetadataRecord(photo, path), photo.thumbnail, photos);
  photos.SetField(Column::Photo, path);
  photos.SetField(Column::Flag, QStringLiteral("Unflagged"));
  if (extras) extras(photos);
  return photos.CommitRow();
}

}  // namespace zqm
