// SPDX-License-Identifier: GPL-3.0-or-later
// One way to paint objects, for screen, picture and page.
#pragma once

#include <QImage>
#include <QPainter>

#include "imaging/vector_objects.h"

namespace zqm {

/// Paints the visible objects in z-order. The painter's coordinates are picture pixels: the caller
/// scales it. Texts are painted as outlines, so that they look the same at every scale; no line is
/// thinner than one pixel of the device. The painter comes back as it was.
void PaintObjects(QPainter& painter, const VectorObjects& objects);
void PaintObject(QPainter& painter, const VectorObject& object);

/// The picture with its visible objects in it. Pixels outside their bounds stay exactly as they
/// were; 16 bits stay 16, gray stays gray unless an object has colour, palettes become true colour.
/// Null when there is no memory for it. Painted in place when nobody else holds the picture.
/// Thread-safe.
QImage Merged(QImage picture, const VectorObjects& objects);

}  // namespace zqm
