// SPDX-License-Identifier: GPL-3.0-or-later
// The sample photographs' motifs. Each draws one picture of the given size, always the same one.
#pragma once

#include "app/demo/canvas.h"

namespace zqm::demo {

QImage DrawSunsetHills(const QSize& size);
QImage DrawWinterPeaks(const QSize& size);
QImage DrawDunes(const QSize& size);
QImage DrawStormLake(const QSize& size);
QImage DrawFogLake(const QSize& size);
QImage DrawHarbour(const QSize& size);
QImage DrawNightTown(const QSize& size);
QImage DrawMilkyWay(const QSize& size);
QImage DrawBeechWood(const QSize& size);
QImage DrawLavender(const QSize& size);
QImage DrawMoonrise(const QSize& size);
QImage DrawRainyWindow(const QSize& size);
QImage DrawWaterfall(const QSize& size);
QImage DrawBeach(const QSize& size);

}  // namespace zqm::demo
