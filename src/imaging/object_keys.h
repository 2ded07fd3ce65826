// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/vector_objects.h"

namespace zqm {

/// As `SetProperty`, but a text that sizes itself doesn't: for many keys after another, with
/// `FitText` behind them.
bool SetKey(VectorObject& object, QStringView key, const QString& value);

}  // namespace zqm
