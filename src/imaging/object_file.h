// SPDX-License-Identifier: GPL-3.0-or-later
// Files of objects (".iev"): UTF-8 JSON with the size of the surface that they were drawn on and,
// in z-order, each object's ID, its keys and its picture as a PNG.
#pragma once

#include <QByteArray>
#include <QSize>

#include "imaging/vector_objects.h"
#include "shell/result.h"

namespace zqm {

struct ObjectFile {
  VectorObjects objects;
  QSize surfaceSize;  ///< pixels
};

/// Whole or not at all. Reasons: those of `WriteFileAtomically`, and for pictures that are too
/// large together.
Outcome SaveObjects(const QString& path, const VectorObjects& objects, QSize surfaceSize);
/// Reasons: those of `ReadWholeFile`, and what isn't such a file or goes beyond its bounds. IDs and
/// z-order come back as they were; texts that size themselves do so by the fonts that are here.
Result<ObjectFile> LoadObjects(const QString& path);

/// Whether a file can hold so many objects, pictures and texts. What compresses badly may still be
/// too large for it.
Outcome CheckObjectBounds(const VectorObjects& objects);

/// The file's content, and back.
Result<QByteArray> EncodeObjects(const VectorObjects& objects, QSize surfaceSize);
Result<ObjectFile> DecodeObjects(const QByteArray& json);

}  // namespace zqm
