// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/exif_editor.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

const QString kNone = u"(none)"_s;

const ExifField& Field(QStringView caption) {
  return ExifEditFields()[static_cast<std::size_t>(FindExifField(caption))];
}
QString Value(QStringView caption, const QString& typed) {
  return ExifValue(Field(caption), typed).value_or(kNone);
}
/// What the panel makes of a typed text once it is written.
QString Shown(const QString& caption, const QString& typed) {
  FileParameters parameters;
  const ExifField& field = Field(caption);
  parameters.SetIOProperty(field.key, *ExifValue(field, typed));
  for (const DecodedField& line : DecodeExif(parameters, DecodeFor::Panel).fields)
    if (caption.compare(QStringView(line.field->caption), Qt::CaseInsensitive) == 0)
      return line.text;
  return kNone;
}

TEST(ExifEditor, TypedTextsBecomeTheValuesOfTags) {
  struct Case {
    const char16_t *field, *typed, *value;
  };
  const test::ScopedLocale english("en_US");
  for (const auto& [field, typed, value] : std::initializer_list<Case>{
           {u"camera make", u" Zørki ", u" Zørki "},
           {u"Author", u"", u""},
           {u"Shutter Speed", u"1/250", u"7.965784"},
           {u"Shutter Speed", u"2", u"-1"},
           {u"Shutter Speed", u"0.5", u"1"},
           {u"Shutter Speed", u"1/0", u"(none)"},
           {u"Shutter Speed", u"1/", u"(none)"},
           {u"Shutter Speed", u"-2", u"(none)"},
           {u"Exposure Time", u"1/250", u"0.004"},
           {u"Exposure Time", u"1/3", u"0.3333333"},
           {u"Exposure Time", u"1/00", u"(none)"},
           {u"Exposure Time", u"2.50", u"2.50"},
           {u"Exposure Time", u"2,5", u"(none)"},
           {u"Lens Aperture", u"2.8", u"2.970936"},
           {u"Max Aperture Value", u"-1", u"(none)"},
           {u"Max Aperture Value", u"0.0", u"(none)"},
           {u"F-number", u"2.8", u"2.8"},
           {u"F-number", u"0", u"(none)"},
           {u"F-number", u"", u"(none)"},
           {u"F-number", u"1.2.3", u"(none)"},
           {u"F-number", u"1e3", u"(none)"},
           {u"Exposure Compensation", u"-0.67", u"-0.67"},
           {u"Exposure Compensation", u"+1", u"+1"},
           {u"Distance to Focus Point", u"Unknown", u"(none)"},
           {u"Sub-Second Time", u"007", u"007"},
           {u"Sub-Second Time", u"0", u"(none)"},
           {u"Flash Mode", u"Flash firedwith Red-eye reduction and Strobe return light detected",
            u"71"},
           {u"Scene Capture Type", u"Unknown", u"-697737471"},
           {u"Sensing Method", u"Color sequential area sensor", u"(none)"},
           {u"Color Space", u"Uncalibrated", u"65535"},
           {u"Orientation", u"", u"(none)"},
           {u"Date/Time Original", u"2007:02:03 04:05:06", u"2007:02:03 04:05:06"},
           {u"Date/Time Original", u"2/3/2007 4:05:06 PM", u"2007:02:03 16:05:06"},
           {u"Date/Time Digitized", u"2007:02:31 04:05:06", u"(none)"},
       })
    EXPECT_EQ(Value(field, QString::fromUtf16(typed)), QString::fromUtf16(value))
        << QString::fromUtf16(field).toStdString();
  const test::ScopedLocale german("de_DE");
  EXPECT_EQ(Value(u"F-number", u"2,8"_s), u"2.8"_s);
  EXPECT_EQ(Value(u"F-number", u"2.8"_s), kNone);
  EXPECT_EQ(Value(u"Lens Aperture", u"2,8"_s), u"2.970936"_s);
  EXPECT_EQ(Value(u"Exposure Time", u"1/8"_s), u"0.125"_s);
}

TEST(ExifEditor, WhatIsTypedComesBackThroughThePanel) {
  const test::ScopedLocale english("en_US");
  EXPECT_EQ(Shown(u"Shutter Speed"_s, u"1/250"_s), u"1/250 sec"_s);
  EXPECT_EQ(Shown(u"Shutter Speed"_s, u"1/8000"_s), u"1/8000 sec"_s);
  EXPECT_EQ(Shown(u"Shutter Speed"_s, u"2"_s), u"2 sec"_s);
  EXPECT_EQ(Shown(u"Exposure Time"_s, u"1/3"_s), u"1/3 sec"_s);
  for (const QString& number : {u"1.4"_s, u"2.8"_s, u"5.6"_s, u"22"_s})
    EXPECT_EQ(Shown(u"Lens Aperture"_s, number), u"F/"_s + number);
  EXPECT_EQ(Shown(u"Exposure Compensation"_s, u"-0.67"_s), u"-0.67 Ev"_s);
  EXPECT_EQ(Shown(u"Scene Capture Type"_s, u"Unknown"_s), u"Unknown"_s);
  // The choices of every list, in the panel's own words.
  for (const ExifField& field : ExifEditFields()) {
    const QString caption = QString::fromUtf16(field.caption);
    if (caption == u"Color Space") continue;
    for (const CodedWord& word : field.list) {
      const QString item = QString::fromUtf16(word.word);
      if (ExifValue(field, item.trimmed())) {
        EXPECT_EQ(Shown(caption, item).left(3).toLower(), item.left(3).toLower())
            << item.toStdString();
      }
    }
  }
}

TEST(ExifEditor, PanelsFillTheFieldsAndOtherWordsLeaveListsOpen) {
  const test::ScopedLocale english("en_US");
  FileParameters parameters;
  for (const auto& [key, value] :
       std::initializer_list<std::pair<const char16_t*, const char16_t*>>{
           {u"EXIF_Make", u"Zorki"},
           {u"EXIF_ShutterSpeedValue", u"7.965784"},
           {u"EXIF_ExposureTime", u"2"},
           {u"EXIF_FocalLength", u"50"},
           {u"EXIF_ISOSpeedRatings0", u"400"},
           {u"EXIF_ExposureProgram", u"7"},
           {u"EXIF_MeteringMode", u"3"},
           {u"EXIF_LightSource", u"255"},
           {u"EXIF_Flash", u"5"},
           {u"EXIF_Saturation", u"1"},
           {u"EXIF_SensingMethod", u"5"},
           {u"EXIF_ColorSpace", u"1"},
           {u"EXIF_DateTimeOriginal", u"2007:02:03 16:05:06"},
           {u"EXIF_DateTimeDigitized", u"0000:00:00 00:00:00"}})
    parameters.SetIOProperty(key, QString::fromUtf16(value));
  const DecodedExif decoded = DecodeExif(parameters, DecodeFor::Panel);
  const ExifEdit filled = GetExif(
      [&decoded](QStringView caption) {
        for (const DecodedField& line : decoded.fields)
          if (QStringView(line.field->caption) == caption) return line.text;
        return QString();
      },
      decoded.plain);
  const auto text = [&filled](QStringView caption) {
    const auto found = filled.find(FindExifField(caption));
    return found == filled.end() ? kNone : found->second;
  };
  EXPECT_EQ(text(u"Camera Make"), u"Zorki"_s);
  EXPECT_EQ(text(u"Shutter Speed"), u"1/250"_s);
  EXPECT_EQ(text(u"Exposure Time"), u"2"_s);
  EXPECT_EQ(text(u"Focal Length"), u"50"_s);
  EXPECT_EQ(text(u"ISO-Speed"), u"400"_s);
  EXPECT_EQ(text(u"Distance to Focus Point"), u"Unknown"_s);
  EXPECT_EQ(text(u"Metering Mode"), u"Spot"_s);
  EXPECT_EQ(text(u"Saturation"), u"Low saturation"_s);
  EXPECT_EQ(text(u"Sensing Method"), u"Color sequential area sensor"_s);
  EXPECT_EQ(text(u"Color Space"), u"sRGB"_s);
  EXPECT_EQ(text(u"Date/Time Original"), u"2007:02:03 16:05:06"_s);
  for (const char16_t* open :
       {u"Exposure Program", u"Light Source", u"Flash Mode", u"Date/Time Digitized"})
    EXPECT_EQ(text(open), kNone) << QString::fromUtf16(open).toStdString();
}

TEST(ExifEditor, DatesLoseWhatEasternLocalesPut) {
  const test::ScopedLocale english("en_US");
  const QDateTime afternoon(QDate(2007, 2, 3), QTime(16, 5, 6), Qt::UTC);
  EXPECT_EQ(PanelDate(u"2/3/2007 ã. 4:05:06 µµ"_s), afternoon);
  EXPECT_EQ(PanelDate(u"2/3/2007 4:05:06 ðµ"_s), afternoon.addSecs(-12 * 3600));
  for (const QString& none : {QString(), u"0000/00/00 00:00:00"_s, u"yesterday"_s})
    EXPECT_FALSE(PanelDate(none)) << none.toStdString();
}

TEST(ExifEditor, KeysThatAFieldRefuses) {
  struct Case {
    const char16_t* field;
    bool denominator;
    const char16_t* passes;
  };
  const QString keys = u"0a.,+-:/é\b"_s;
  for (const auto& [field, denominator, passes] : std::initializer_list<Case>{
           {u"Camera Make", false, u"0a.,+-:/é\b"},
           {u"F-number", false, u"0,\b"},
           {u"Exposure Compensation", false, u"0,+-\b"},
           {u"Shutter Speed", false, u"0,\b"},
           {u"Exposure Time", true, u"0\b"},
           {u"Flash Mode", false, u"é\b"},
       }) {
    QString passed;
    for (const QChar key : keys)
      if (KeyPasses(KeyFilterOf(Field(field), denominator), key, u',')) passed += key;
    EXPECT_EQ(passed, QString::fromUtf16(passes)) << QString::fromUtf16(field).toStdString();
  }
}

TEST(ExifEditor, OnlyWhatCouldBeTypedOrPickedIsTaken) {
  const test::ScopedLocale english("en_US");
  for (const auto& [field, typed] : std::initializer_list<std::pair<const char16_t*, QString>>{
           {u"F-number", u"2.8"_s},
           {u"F-number", u"0"_s},
           {u"Author", u"anything"_s},
           {u"Shutter Speed", u"1/250"_s},
           {u"Flash Mode", u"no flash"_s},
           {u"Sensing Method", u"Color sequential area sensor"_s},
           {u"Date/Time Original", u"2007:02:03 04:05:06"_s}})
    EXPECT_TRUE(TypedText(Field(field), typed)) << typed.toStdString();
  for (const auto& [field, typed] : std::initializer_list<std::pair<const char16_t*, QString>>{
           {u"F-number", u"2,8"_s},
           {u"Shutter Speed", u"1/x"_s},
           {u"Flash Mode", u"Maybe"_s},
           {u"Flash Mode", QString()},
           {u"Date/Time Original", u"2007:02:31 04:05:06"_s}})
    EXPECT_FALSE(TypedText(Field(field), typed)) << typed.toStdString();
  EXPECT_EQ(*TypedText(Field(u"Flash Mode"), u"no flash"_s), u"No Flash"_s);
  EXPECT_EQ(FindExifField(u"Color"), -1);
  EXPECT_EQ(ExifEditFields().size(), 38U);
}

}  // namespace
}  // namespace zqm
