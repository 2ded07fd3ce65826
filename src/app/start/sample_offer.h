// SPDX-License-Identifier: GPL-3.0-or-later
// Sample photos for whoever starts with nothing in the catalogue.
#pragma once

#include <QString>

#include "app/demo/samples.h"
#include "session/session.h"

class QWidget;

namespace zqm {

/// Whether to offer them: the catalogue is empty and the user has not been asked yet.
bool SamplesAreDue(Session& session);

/// "Zolmira QM Samples" among the user's pictures, those of `home` when it isn't "".
QString SamplesFolder(const QString& home);

/// Asks, once for all times. Draws what isn't there yet, with its progress shown and a way out, and
/// gives the folder; "" when there is nothing to browse.
QString OfferSamples(const QString& folder, QWidget* parent,
                     const std::vector<demo::Sample>& samples = demo::Samples());

}  // namespace zqm
