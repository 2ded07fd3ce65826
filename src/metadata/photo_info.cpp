// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/photo_info.h"

#include "shell/dates.h"
#include "shell/files.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::array<const char16_t*, kPropertyCount> kCaptions = {
    u"File name",
    u"File type",
    u"Location",
    u"Size",
    u"Width",
    u"Height",
    u"Horizontal resolution",
    u"Vertical resolution",
    u"Created",
    u"Modified",
    u"Accessed",
};

std::vector<const MetadataField*> FieldsOf(MetadataPage page) {
  switch (page) {
    case MetadataPage::Exif:
      return ExifFields();
    case MetadataPage::Gps:
      return GpsFields();
    case MetadataPage::Iptc:
      break;
  }
  return IptcFields();
}

QString& At(PhotoInfo& info, Property property) {
  return info.properties[static_cast<std::size_t>(property)];
}

void Fill(MetadataLines& lines, const std::vector<DecodedField>& decoded) {
  for (std::size_t i = 0; i < decoded.size(); ++i)
    lines[i].text = decoded[i].text;
}

QString WithUnit(const QString& number, const char16_t* unit) {
  return number.isEmpty() || number == u"0" ? QString() : number + QString::fromUtf16(unit);
}

/// What "JPEG Bitmap (JPG)" leaves open: colours of a palette, else bits of a pixel.
QString TypeText(const FileParameters& parameters) {
  const QString type = parameters.GetIOProperty(u"FILETYPESTR");
  const double colours = Val(parameters.GetIOProperty(u"COLORMAPCOUNT"));
  const double bits = Val(parameters.GetIOProperty(u"BITSPERSAMPLE")) *
                      Val(parameters.GetIOProperty(u"SAMPLESPERPIXEL"));
  if (parameters.GetIOProperty(u"FILETYPE") == u"0") return type;
  if (colours > 0) return type + u", %1 colours"_s.arg(colours);
  return bits > 0 ? type + u", %1 bits"_s.arg(bits) : type;
}

void FillTimes(const QString& path, PhotoInfo& info) {
  const FileTimes times = GetFileTimes(path);
  const auto shown = [](const QDateTime& time) {
    return time.isValid() ? ShortDateTime(time) : QString();
  };
  At(info, Property::Created) = shown(times.created);
  At(info, Property::Modified) = shown(times.modified);
  // Reading a read-only file may or may not count as access; what is known is said, not guessed.
  At(info, Property::Accessed) = ReadOnlyFile(path) ? u"-"_s : shown(times.accessed);
}

bool IsExifDate(Column column) {
  return column == Column::DateTimeOriginal || column == Column::DateTimeDigitized;
}

/// A stored text as the panel shows it.
QString ShownText(const PhotoRecordset& photos, Column column) {
  const QString text = photos.GetField(column);
  if (IsExifDate(column) && text.trimmed().contains(u' ')) return AnalyseDate(text.trimmed());
  return text;
}

}  // namespace

const char16_t* PropertyCaption(Property property) {
  return kCaptions[static_cast<std::size_t>(property)];
}

QString PhotoInfo::Line(MetadataPage page, QStringView caption) const {
  for (const MetadataLine& line : Page(page))
    if (QStringView(line.caption) == caption) return line.text;
  return QString();
}

PhotoInfo EmptyPhotoInfo() {
  PhotoInfo info;
  for (int page = 0; page < kMetadataPageCount; ++page)
    for (const MetadataField* field : FieldsOf(static_cast<MetadataPage>(page)))
      info.pages[static_cast<std::size_t>(page)].push_back({field->caption, QString()});
  return info;
}

PhotoInfo FilePhotoInfo(const QString& path, const PhotoFile& photo) {
  PhotoInfo info = EmptyPhotoInfo();
  const FileParameters& parameters = photo.parameters;
  At(info, Property::FileName) = GetFileName(path);
  At(info, Property::FileType) = TypeText(parameters);
  At(info, Property::Location) = GetParentFolderName(path);
  At(info, Property::Size) = SizeText(static_cast<double>(photo.bytes) / 1024);
  At(info, Property::Width) = WithUnit(parameters.GetIOProperty(u"WIDTH"), u" Pixels");
  At(info, Property::Height) = WithUnit(parameters.GetIOProperty(u"HEIGHT"), u" Pixels");
  At(info, Property::HorizontalResolution) = WithUnit(parameters.GetIOProperty(u"DPIX"), u" dpi");
  At(info, Property::VerticalResolution) = WithUnit(parameters.GetIOProperty(u"DPIY"), u" dpi");
  FillTimes(path, info);
  const DecodedExif exif = DecodeExif(parameters, DecodeFor::Panel);
  Fill(info.pages[0], exif.fields);
  info.plain = exif.plain;
  Fill(info.pages[1], DecodeGps(parameters));
  Fill(info.pages[2], DecodeIptc(parameters));
  return info;
}

PhotoInfo LoadInfoFromDatabase(const PhotoRecordset& photos) {
  PhotoInfo info = EmptyPhotoInfo();
  At(info, Property::FileName) = photos.GetField(Column::Filename);
  At(info, Property::FileType) = photos.GetField(Column::FileType);
  At(info, Property::Location) = photos.GetField(Column::ParentFolder);
  const QString size = photos.GetField(Column::Size);
  At(info, Property::Size) = size.isEmpty() ? size : SizeText(ToNumber(size).value_or(Val(size)));
  At(info, Property::Width) = WithUnit(photos.GetField(Column::ImageWidth), u" Pixels");
  At(info, Property::Height) = WithUnit(photos.GetField(Column::ImageHeight), u" Pixels");
  At(info, Property::HorizontalResolution) =
      WithUnit(photos.GetField(Column::HorizontalResolution), u" dpi");
  At(info, Property::VerticalResolution) =
      WithUnit(photos.GetField(Column::VerticalResolution), u" dpi");
  for (int page = 0; page < kMetadataPageCount; ++page) {
    const auto fields = FieldsOf(static_cast<MetadataPage>(page));
    for (std::size_t i = 0; i < fields.size(); ++i)
      if (fields[i]->column)
        info.pages[static_cast<std::size_t>(page)][i].text = ShownText(photos, *fields[i]->column);
  }
  // The page has its size too, which the catalogue keeps among the file's facts.
  for (MetadataLine& line : info.pages[0]) {
    if (QStringView(line.caption) == u"Width") line.text = info.Text(Property::Width);
    if (QStringView(line.caption) == u"Height") line.text = info.Text(Property::Height);
  }
  return info;
}

}  // namespace zqm
