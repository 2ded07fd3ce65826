// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <map>
#include <span>

namespace zqm {

/// What the user sees and the number that the save key takes for it.
struct SettingChoice {
  const char16_t* caption;
  const char16_t* number;
};

enum class SettingKind { Choice, Switch, Slider, Number };

/// A save option of one or more formats as the conversion's window offers it.
struct ConvertSetting {
  const char16_t* formats;  ///< names, joined by blanks
  const char16_t* caption;
  const char16_t* key;
  SettingKind kind;
  std::span<const SettingChoice> choices;  ///< of a choice, in order
  int standard;                            ///< place in `choices`, 0 or 1, or the number
  int most;                                ///< of a slider or number, from `least` on
  int least = 0;
};
std::span<const ConvertSetting> ConvertSettings();
bool Concerns(const ConvertSetting& setting, QStringView format);

/// The key's number as text for a control that stands at `value`: place, 0 or 1, or number.
QString KeyValue(const ConvertSetting& setting, int value);

}  // namespace zqm
