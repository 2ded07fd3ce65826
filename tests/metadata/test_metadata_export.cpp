// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata_export.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Columns and captions as values, with a few real ones between.
ExportValues Names() {
  return {[](Column column) -> QString {
            if (column == Column::DateTimeOriginal) return u"2007:12:31 23:59:59"_s;
            if (column == Column::DateTimeDigitized) return u"2007"_s;
            if (column == Column::Altitude || column == Column::Caption) return QString();
            if (column == Column::City) return u"Graz"_s;
            return ColumnName(column);
          },
          [](QStringView caption) { return u'<' + caption.toString() + u'>'; }};
}

QString Text(MetadataKind kind, ExportSource source) {
  const test::ScopedLocale british("en_GB");
  return ExportText(kind, source, u"/p/Föhn.JPG"_s, Names());
}

constexpr char16_t kExifOfFile[] =
    uR"(Filename : /p/Föhn.JPG



Image Information

Camera Make                                 : Camera Make
Camera Model                                : Camera Model
Width                                       : Image Width
Height                                      : Image Height
Horizontal Resolution                       : Horizontal Resolution
Vertical Resolution                         : Vertical Resolution
Resolution Unit                             : <Resolution Unit>
Image Description                           : Image Description
User Comment                                : Comments
Author                                      : Author(EXIF)
Copyright                                   : Copyright(EXIF)
Creation Software                           : Creation Software
Date/Time Original                          : 31/12/2007 23:59:59
Date/Time Digitized                         : 2007
Sub-Second Time                             : Sub Second Time
Compressed BPP                              : Compressed BPP



Camera Settings

Shutter Speed                               : Shutter Speed
Exposure Time                               : Exposure Time
Lens Aperture                               : Lens Aperture
Max Aperture Value                          : Max Aperture Value
Focal Length                                : Focal Length
F-number                                    : F-number
Exposure Mode                               : Exposure Mode
Exposure Compensation                       : Exposure Compensation
ISO-Speed                                   : ISO-Speed
White Balance                               : White Balance
Metering Mode                               : Metering Mode
Exposure Program                            : Exposure Program



Miscellaneous

Scene Capture Type                          : Scene Capture Type
Orientation                                 : Orientation
Focal Plane X Resolution                    : Focal Plane X Resolution
Focal Plane Y Resolution                    : Focal Plane Y Resolution
Focal Plane Resolution Unit                 : <Focal Plane Resolution Unit>
Gain Control                                : Gain Control
Colorspace                                  : Colorspace
Light Source                                : Light Source
Flash Mode                                  : Flash Mode
Digital Zoom Ratio                          : Digital Zoom Ratio
Contrast                                    : Contrast
Saturation                                  : Saturation
Sharpness                                   : Sharpness
Brightness Value                            : Brightness Value
Distance to Subject                         : Distance to Subject
Distance to Focus Point                     : Distance to Focus Point
Sensing Method                              : Sensing Method
Focal Length Equivalent to 35mm Film Camera : 35mm Equivalent Focal Length
)";

TEST(MetadataExport, TheExifFileOfAPhotoThatStands) {
  EXPECT_EQ(Text(MetadataKind::Exif, ExportSource::File), QString::fromUtf16(kExifOfFile));
}

TEST(MetadataExport, TheExifFileOfARowDiffersInTheseLines) {
  QStringList expected = QString::fromUtf16(kExifOfFile).split(u'\n');
  expected.removeIf([](const QString& line) { return line.contains(u'<'); });
  const QStringList row = Text(MetadataKind::Exif, ExportSource::Row).split(u'\n');
  ASSERT_EQ(row.size(), expected.size());
  QStringList others;
  for (qsizetype i = 0; i < row.size(); ++i)
    if (row.at(i) != expected.at(i)) others.append(row.at(i));
  EXPECT_EQ(
      others,
      (QStringList{u"Width                                       : Image Width Pixels"_s,
                   u"Height                                      : Image Height Pixels"_s,
                   u"Horizontal Resolution                       : Horizontal Resolution dpi"_s,
                   u"Vertical Resolution                         : Vertical Resolution dpi"_s,
                   u"Comment                                     : Comments"_s,
                   u"Artist                                      : Author(EXIF)"_s}));
}

TEST(MetadataExport, TheIptcFile) {
  const QString file = Text(MetadataKind::Iptc, ExportSource::File);
  EXPECT_EQ(file, QString::fromUtf16(uR"(Filename : /p/Föhn.JPG



Caption

Caption                : )") +
                      uR"(
Writer                 : Writer
Headline               : Headline
Special Instructions   : Special Instructions



Keywords

Keywords               : Keywords(IPTC)



Categories

Urgency                : Urgency
Category               : Category
Other Categories       : Other Categories



Credit

Copyright              : Copyright(IPTC)
Author                 : Author(IPTC)
Author Title           : Author Title
Credit                 : Credit
Source                 : Source



Origin

Object Name            : Object Name
Date Created           : Date Created(IPTC)
Released Date          : Released Date
City                   : Graz
State                  : State
Country Code           : Country Code
Country Name           : Country Name
Job Identifier         : Job Identifier
)"_s);
  // A row's has one blank less in every line.
  EXPECT_EQ(Text(MetadataKind::Iptc, ExportSource::Row),
            QString(file).replace(u" : "_s, u": "_s).replace(u"Filename: "_s, u"Filename : "_s));
}

TEST(MetadataExport, TheGpsFile) {
  EXPECT_EQ(Text(MetadataKind::Gps, ExportSource::Row),
            u"Filename : /p/Föhn.JPG\n\n\n\n"
            "Latitude Reference     : Latitude Reference\n\n"
            "Latitude Degrees       : Latitude Degrees\n\n"
            "Latitude Minutes       : Latitude Minutes\n\n"
            "Latitude Seconds       : Latitude Seconds\n\n"
            "Longitude Reference    : Longitude Reference\n\n"
            "Longitude Degrees      : Longitude Degrees\n\n"
            "Longitude Minutes      : Longitude Minutes\n\n"
            "Longitude Seconds      : Longitude Seconds\n\n"
            "Altitude Reference     : Altitude Reference m\n\n"
            "Altitude               : \n\n"_s);
  const QStringList lines = Text(MetadataKind::Gps, ExportSource::File).split(u'\n');
  EXPECT_EQ(lines.size(), 4 + 2 * 38 + 1);
  EXPECT_EQ(lines.mid(4, 3),
            (QStringList{u"GPS Version ID                    : <GPS Version ID>"_s, QString(),
                         u"Latitude Reference                : Latitude Reference"_s}));
  EXPECT_TRUE(lines.contains(u"Altitude                          :  m"_s));
  EXPECT_TRUE(lines.contains(u"Time Stamp Second(UTC)            : <Time Stamp Second (UTC)>"_s));
  EXPECT_EQ(lines.mid(78), (QStringList{u"GPS Date Stamp                    : <GPS Date Stamp>"_s,
                                        QString(), QString()}));
}

TEST(MetadataExport, NamesOfTheFiles) {
  EXPECT_EQ(ExportFileName(MetadataKind::Exif, u"/a/IMG_0001.JPG"_s), u"EXIF-IMG_0001.JPG.txt"_s);
  EXPECT_EQ(ExportFileName(MetadataKind::Gps, u"/a/b"_s), u"GPS-b.txt"_s);
}

}  // namespace
}  // namespace zqm
