// SPDX-License-Identifier: GPL-3.0-or-later
// The words for coded values. They are what catalogues store and searches compare, so spelling,
// capitals and blanks stay as they are for good.
#pragma once

#include <QString>
#include <QStringView>
#include <span>

namespace zqm {

struct CodedWord {
  int value;
  const char16_t* word;
};

struct ValueTable {
  std::span<const CodedWord> words;
  /// For values without a word; nullptr leaves the number's text.
  const char16_t* other = nullptr;

  /// The word for a number's text. An empty text stays empty.
  QString Translate(const QString& number) const;
};

namespace tables {
extern const ValueTable kUnit;
extern const ValueTable kExposureMode;
extern const ValueTable kWhiteBalance;
extern const ValueTable kMeteringMode;
extern const ValueTable kExposureProgram;
extern const ValueTable kSceneCapture;
extern const ValueTable kOrientation;
extern const ValueTable kGainControl;
extern const ValueTable kColorspace;
extern const ValueTable kContrastOrSharpness;
extern const ValueTable kSaturation;
extern const ValueTable kSubjectRange;
extern const ValueTable kSensingMethod;
extern const ValueTable kLightSource;
extern const ValueTable kFlash;
}  // namespace tables

struct LetterWord {
  const char16_t* letter;
  const char16_t* word;
};

/// References and states that files write as a letter or digit; a text without a word stands.
struct LetterTable {
  std::span<const LetterWord> words;
  QString Translate(const QString& text) const;
};

namespace tables {
extern const LetterTable kLatitude;
extern const LetterTable kLongitude;
extern const LetterTable kDestinationLatitude;
extern const LetterTable kDestinationLongitude;
extern const LetterTable kGpsStatus;
extern const LetterTable kMeasureMode;
extern const LetterTable kSpeed;
extern const LetterTable kDirection;
extern const LetterTable kDistance;
extern const LetterTable kUrgency;
}  // namespace tables

}  // namespace zqm
