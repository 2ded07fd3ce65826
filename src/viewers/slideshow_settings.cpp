// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/slideshow_settings.h"

#include <QtEndian>
#include <bit>
#include <cmath>

#include "imaging/transitions.h"
#include "shell/files.h"
#include "shell/record_text.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// The number in two bytes, then the seconds in four, lowest first.
constexpr int kRecordBytes = 6, kSecondsOffset = 2;

constexpr double kShortest = 5, kLongest = 60;  // seconds; both are allowed

QString RecordFile(const QString& folder) {
  return folder + u"/STRN.dat"_s;
}

}  // namespace

SlideshowSettings LoadTransition(const QString& folder) {
  SlideshowSettings settings;
  const QByteArray record = ReadRecordFile(RecordFile(folder), kRecordBytes);
  if (record.isEmpty()) return settings;
  settings.transition = TransitionAt(qFromLittleEndian<qint16>(record.constData())).number;
  const auto seconds =
      std::bit_cast<float>(qFromLittleEndian<quint32>(record.constData() + kSecondsOffset));
  if (std::isfinite(seconds) && seconds > 0) settings.duration = PlainText(seconds);
  return settings;
}

Outcome SaveTransition(const QString& folder, int transition, double seconds) {
  QByteArray record(kRecordBytes, '\0');
  qToLittleEndian(static_cast<qint16>(transition), record.data());
  qToLittleEndian(std::bit_cast<quint32>(static_cast<float>(seconds)),
                  record.data() + kSecondsOffset);
  return WriteFileAtomically(RecordFile(folder), record);
}

Result<std::chrono::milliseconds> SlideInterval(const QString& typed) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  if (typed.isEmpty()) return refuse(slideshow_text::kNoDuration);
  const auto seconds = ToNumber(typed);
  if (!seconds) return refuse(slideshow_text::kInvalidDuration);
  if (*seconds < kShortest) return refuse(slideshow_text::kTooShort);
  if (*seconds > kLongest) return refuse(slideshow_text::kTooLong);
  return std::chrono::milliseconds(std::llround(*seconds * 1000));
}

}  // namespace zqm
