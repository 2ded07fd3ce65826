// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstring>
#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/transitions/moves.h"
#include "imaging/transitions/pixel_mix.h"

namespace zqm {
namespace {

/// `source` of `picture` at `at`, as far as that is on the screen.
void Lay(const QImage& picture, const QRect& source, const QPoint& at, int weight, QImage& out) {
  const QRect target = QRect(at, source.size()).intersected(out.rect());
  const QPoint begin = source.topLeft() + target.topLeft() - at;
  for (int y = 0; y < target.height(); ++y) {
    const QRgb* from = Row(picture, begin.y() + y) + begin.x();
    QRgb* to = Row(out, target.y() + y) + target.x();
    if (weight == 256)
      std::memcpy(to, from, static_cast<std::size_t>(target.width()) * sizeof(QRgb));
    else
      MixRow(to, from, target.width(), weight, to);
  }
}

cv::Mat Part(const cv::Mat& picture, const QRect& part) {
  return picture(cv::Rect(part.x(), part.y(), part.width(), part.height()));
}

void Stretch(const QImage& picture, const Piece& piece, QImage& out) {
  const cv::Mat source = Part(CvView(picture), piece.source);
  const cv::Size size(piece.target.width(), piece.target.height());
  try {
    if (piece.weight == 256) {
      cv::Mat target = Part(CvView(out), piece.target);
      cv::resize(source, target, size, 0, 0, cv::INTER_LINEAR);
      return;
    }
    QImage stretched(piece.target.size(), QImage::Format_RGB32);
    if (stretched.isNull()) return;
    cv::Mat target = CvView(stretched);
    cv::resize(source, target, size, 0, 0, cv::INTER_LINEAR);
    Lay(stretched, stretched.rect(), piece.target.topLeft(), piece.weight, out);
  } catch (const cv::Exception&) {
    // There is no memory for it: what lies beneath stays.
  }
}

}  // namespace

void DrawPieces(const std::vector<Piece>& pieces, const QImage& from, const QImage& to,
                QImage& out) {
  for (const Piece& piece : pieces) {
    if (piece.source.isEmpty() || piece.target.isEmpty()) continue;
    const QImage& picture = piece.ofNew ? to : from;
    if (piece.source.size() == piece.target.size())
      Lay(picture, piece.source, piece.target.topLeft(), piece.weight, out);
    else
      Stretch(picture, piece, out);
  }
}

}  // namespace zqm
