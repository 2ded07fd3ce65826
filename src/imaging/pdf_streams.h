// SPDX-License-Identifier: GPL-3.0-or-later
// The compressed streams of pictures in a PDF file, each as its filter decodes them. Rows are given
// without padding between them but for the bits that fill a row's last byte.
#pragma once

#include <QByteArray>
#include <QSize>

namespace zqm {

/// RunLengthDecode (PDF 32000-1, 7.4.5): runs of 2 to 128 equal bytes, literals of up to 128, then
/// the end mark 128.
QByteArray RunLengthEncoded(const QByteArray& data);

struct TiffRows {
  QSize size;         ///< pixels
  int samples = 1;    ///< a pixel: 1 or 3
  int bits = 8;       ///< a sample: 8, or 1 for bilevel rows
  QByteArray pixels;  ///< all rows
};

/// LZWDecode with the early change of code length, which both formats share. Empty on failure.
QByteArray LzwEncoded(const TiffRows& rows);

enum class FaxKind { Group3TwoDimensional, Group4 };

/// CCITTFaxDecode of bilevel rows in which 1 is black. Group 3 has an end-of-line mark before each
/// row and none at the end. Empty on failure.
QByteArray FaxEncoded(const TiffRows& rows, FaxKind kind);

}  // namespace zqm
