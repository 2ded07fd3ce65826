// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/sample_photo.h"

#include <QImage>

#include "imaging/metadata_writer.h"
#include "imaging/thumbnail.h"

namespace zqm::test {

QByteArray SampleJpeg(int width, int height, Properties exif, IptcTexts iptc) {
  QImage picture(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      picture.setPixel(x, y, qRgb(255 * x / width, 255 * y / height, (x ^ y) & 0xFF));
  FileParameters parameters;
  for (const auto& [key, value] : exif)
    parameters.SetIOProperty(key, QString::fromUtf16(value));
  for (const auto& [dataset, text] : iptc)
    parameters.Iptc().Add(2, dataset, QString::fromUtf16(text));
  const QByteArray plain = EncodeJpeg(picture, 90);
  const Result<QByteArray> jpeg = WithMetadata(plain, parameters);
  return jpeg ? *jpeg : plain;
}

}  // namespace zqm::test
