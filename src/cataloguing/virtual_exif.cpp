// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/virtual_exif.h"

#include "metadata/decoding.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/text.h"

namespace zqm {
namespace {

void Take(const std::vector<DecodedField>& fields, MetadataRecord& record) {
  for (const DecodedField& decoded : fields) {
    if (decoded.field->column)
      record.Set(*decoded.field->column, decoded.text);
    else
      record.extras.emplace_back(QString::fromUtf16(decoded.field->caption), decoded.text);
  }
}

void ReadFileFacts(const PhotoFile& photo, const QString& path, MetadataRecord& record) {
  const FileParameters& parameters = photo.parameters;
  const auto resolution = [&parameters](QStringView key) {
    const QString dots = parameters.GetIOProperty(key);
    return dots == u"0" ? QString() : dots;
  };
  record.Set(Column::Filename, GetFileName(path));
  record.Set(Column::FileType, parameters.GetIOProperty(u"FILETYPESTR"));
  record.Set(Column::Size, PlainText(Round(static_cast<double>(photo.bytes) / 1024, 2)));
  record.Set(Column::ImageWidth, parameters.GetIOProperty(u"WIDTH"));
  record.Set(Column::ImageHeight, parameters.GetIOProperty(u"HEIGHT"));
  record.Set(Column::HorizontalResolution, resolution(u"DPIX"));
  record.Set(Column::VerticalResolution, resolution(u"DPIY"));
  record.Set(Column::ParentFolder, GetParentFolderName(path));
}

}  // namespace

void VirtualEXIF(const PhotoFile& photo, const QString& path, MetadataRecord& record) {
  Guarded("virtual_exif_module", "VirtualEXIF", [&] {
    record = MetadataRecord();
    ReadFileFacts(photo, path, record);
    Take(DecodeExif(photo.parameters, DecodeFor::Record).fields, record);
    Take(DecodeGps(photo.parameters), record);
  });
}

void ReadIPTC(const PhotoFile& photo, MetadataRecord& record) {
  Guarded("virtual_exif_module", "ReadIPTC", [&] { Take(DecodeIptc(photo.parameters), record); });
}

MetadataRecord ReadMetadataRecord(const PhotoFile& photo, const QString& path) {
  MetadataRecord record;
  VirtualEXIF(photo, path, record);
  ReadIPTC(photo, record);
  return record;
}

}  // namespace zqm
