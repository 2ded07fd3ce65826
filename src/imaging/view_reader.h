// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include "imaging/photo_reader.h"

namespace zqm {

/// A photo as a viewer shows it.
struct ViewPhoto {
  PhotoFile file;  ///< length and parameters; no thumbnail
  QImage image;    ///< fitted into the box that was asked for; null without pixels
  QSize fullSize;  ///< pixels
  QString reason;  ///< why there are no pixels
};

/// Reads a file once: its parameters and its picture, decoded no larger than needed and fitted into
/// `box` (device pixels; empty for the full size), never enlarged. Facts without pixels are a
/// success with a `reason`. Pure and thread-safe; reasons of failure are those of `ReadPhotoFile`.
Result<ViewPhoto> ReadViewPhoto(const QString& path, const QSize& box, const ReadRequest& request);

/// Only the picture, fitted into `box` (device pixels) on an opaque ground.
Result<QImage> ReadThumbnailPicture(const QString& path, const QSize& box,
                                    const ReadRequest& request);

}  // namespace zqm
