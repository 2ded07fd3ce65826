// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/undo_tiles.h"

#include <zstd.h>

#include <QColorSpace>
#include <cstring>
#include <new>

#include "imaging/row_blocks.h"

namespace zqm {
namespace {

// Small enough that a spot of a large picture costs little, large enough to pack well.
constexpr int kTileBytes = 1024;  // of a row
constexpr int kTileRows = 128;
constexpr int kLevel = 1;  // the fastest; photos don't get much smaller by trying harder

struct FreeContext {
  void operator()(ZSTD_CCtx* context) const { ZSTD_freeCCtx(context); }
};

/// How a picture's rows are cut: by bytes, whatever a pixel is.
struct Grid {
  explicit Grid(const QSize& size, int depth)
      : rowBytes(static_cast<int>((qint64{size.width()} * depth + 7) / 8)),
        rows(size.height()),
        pixelBytes(std::max(1, depth / 8)),
        across((rowBytes + kTileBytes - 1) / kTileBytes),
        down((rows + kTileRows - 1) / kTileRows) {}

  int Count() const { return across * down; }
  int Left(int tile) const { return tile % across * kTileBytes; }
  int Top(int tile) const { return tile / across * kTileRows; }
  int Width(int tile) const { return std::min(kTileBytes, rowBytes - Left(tile)); }
  int Height(int tile) const { return std::min(kTileRows, rows - Top(tile)); }

  int rowBytes, rows, pixelBytes, across, down;
};

bool SameTile(const QImage& a, const QImage& b, const Grid& grid, int tile) {
  for (int y = grid.Top(tile); y < grid.Top(tile) + grid.Height(tile); ++y) {
    if (std::memcmp(a.constScanLine(y) + grid.Left(tile), b.constScanLine(y) + grid.Left(tile),
                    static_cast<std::size_t>(grid.Width(tile))) != 0)
      return false;
  }
  return true;
}

/// Each byte as the difference to the one above, the bytes of equal place in their pixels
/// together: what a packer finds little in as it stands becomes small numbers and runs.
void Smooth(const QImage& picture, const Grid& grid, int tile, uchar* out) {
  const int width = grid.Width(tile), pixel = grid.pixelBytes;
  for (int y = 0; y < grid.Height(tile); ++y) {
    const uchar* row = picture.constScanLine(grid.Top(tile) + y) + grid.Left(tile);
    const uchar* above =
        y > 0 ? picture.constScanLine(grid.Top(tile) + y - 1) + grid.Left(tile) : nullptr;
    for (int place = 0; place < pixel; ++place) {
      for (int x = place; x < width; x += pixel)
        *out++ = static_cast<uchar>(above ? row[x] - above[x] : row[x]);
    }
  }
}

void Unsmooth(const uchar* in, QImage& picture, uchar* bits, const Grid& grid, int tile) {
  const int width = grid.Width(tile), pixel = grid.pixelBytes;
  const qsizetype stride = picture.bytesPerLine();
  for (int y = 0; y < grid.Height(tile); ++y) {
    uchar* row = bits + (grid.Top(tile) + y) * stride + grid.Left(tile);
    const uchar* above = row - stride;
    for (int place = 0; place < pixel; ++place) {
      for (int x = place; x < width; x += pixel)
        row[x] = static_cast<uchar>(y > 0 ? *in++ + above[x] : *in++);
    }
  }
}

/// Buffers of a thread's run of tiles.
class Packer {
 public:
  QByteArray Pack(const QImage& picture, const Grid& grid, int tile) {
    if (!context_) return {};
    const auto size =
        static_cast<std::size_t>(grid.Width(tile)) * static_cast<std::size_t>(grid.Height(tile));
    Smooth(picture, grid, tile, plain_.data());
    const std::size_t length = ZSTD_compressCCtx(context_.get(), packed_.data(), packed_.size(),
                                                 plain_.data(), size, kLevel);
    if (ZSTD_isError(length)) return {};
    return {reinterpret_cast<const char*>(packed_.data()), static_cast<qsizetype>(length)};
  }

 private:
  std::unique_ptr<ZSTD_CCtx, FreeContext> context_{ZSTD_createCCtx()};
  std::vector<uchar> plain_ = std::vector<uchar>(kTileBytes * kTileRows);
  std::vector<uchar> packed_ = std::vector<uchar>(ZSTD_compressBound(kTileBytes * kTileRows));
};

bool UnpackTile(const UndoTile& tile, const Grid& grid, int index, QImage& picture, uchar* bits) {
  const auto size =
      static_cast<std::size_t>(grid.Width(index)) * static_cast<std::size_t>(grid.Height(index));
  const QByteArray packed = tile.Bytes();
  std::vector<uchar> plain(size);
  const std::size_t got = ZSTD_decompress(plain.data(), size, packed.constData(),
                                          static_cast<std::size_t>(packed.size()));
  if (got != size) return false;
  Unsmooth(plain.data(), picture, bits, grid, index);
  return true;
}

/// Runs `work(tile)` for all tiles; false when one of them says so or has no memory.
bool ForTiles(const Grid& grid, const std::function<bool(int, int)>& work) {
  std::atomic<bool> good = true;
  ForRowBlocks(grid.Count(), std::int64_t{kTileBytes} * kTileRows, [&](int begin, int end) {
    try {
      if (good && !work(begin, end)) good = false;
    } catch (const std::bad_alloc&) {
      good = false;
    }
  });
  return good;
}

}  // namespace

std::shared_ptr<ScratchFile> ScratchFile::Create(const QString& folder, QString& reason) {
  auto file = std::make_shared<ScratchFile>();
  QDir().mkpath(folder);
  file->file_.setFileTemplate(QDir(folder).filePath(QStringLiteral("undo-XXXXXX")));
  // Its name is never asked for: where the system can, it then has none.
  if (file->file_.open()) return file;
  reason = file->file_.errorString();
  return nullptr;
}

Result<qint64> ScratchFile::Append(const QByteArray& bytes) {
  const QMutexLocker lock(&mutex_);
  const qint64 at = end_;
  if (!file_.seek(at) || file_.write(bytes) != bytes.size() || !file_.flush())
    return Failure{file_.errorString()};
  end_ += bytes.size();
  return at;
}

QByteArray ScratchFile::Read(qint64 at, qint64 size) {
  const QMutexLocker lock(&mutex_);
  if (!file_.seek(at)) return {};
  const QByteArray bytes = file_.read(size);
  return bytes.size() == size ? bytes : QByteArray();
}

UndoTile::UndoTile(QByteArray bytes, std::shared_ptr<TileLedger> ledger)
    : bytes_(std::move(bytes)), size_(bytes_.size()), ledger_(std::move(ledger)) {
  ledger_->memory += size_;
}

UndoTile::~UndoTile() {
  (file_ ? ledger_->disk : ledger_->memory) -= size_;
}

QByteArray UndoTile::Bytes() const {
  return file_ ? file_->Read(at_, size_) : bytes_;
}

Outcome UndoTile::MoveTo(const std::shared_ptr<ScratchFile>& file) {
  const Result<qint64> at = file->Append(bytes_);
  if (!at) return Failure{at.Reason()};
  at_ = *at;
  file_ = file;
  bytes_.clear();
  ledger_->memory -= size_;
  ledger_->disk += size_;
  return {};
}

std::optional<TiledPicture> PackPicture(const QImage& picture, const QImage& beside,
                                        const TiledPicture& besideTiles,
                                        const std::shared_ptr<TileLedger>& ledger) {
  if (picture.isNull()) return std::nullopt;
  const Grid grid(picture.size(), picture.depth());
  TiledPicture packed{picture.copy(0, 0, 1, 1), picture.size(), {}};
  packed.tiles.resize(static_cast<std::size_t>(grid.Count()));
  const bool comparable = beside.size() == picture.size() && beside.format() == picture.format() &&
                          besideTiles.tiles.size() == packed.tiles.size();
  const bool good = ForTiles(grid, [&](int begin, int end) {
    Packer packer;
    for (int tile = begin; tile < end; ++tile) {
      const auto at = static_cast<std::size_t>(tile);
      if (comparable && SameTile(picture, beside, grid, tile)) {
        packed.tiles[at] = besideTiles.tiles[at];
        continue;
      }
      QByteArray bytes = packer.Pack(picture, grid, tile);
      if (bytes.isEmpty()) return false;
      packed.tiles[at] = std::make_shared<UndoTile>(std::move(bytes), ledger);
    }
    return true;
  });
  return good ? std::optional(std::move(packed)) : std::nullopt;
}

QImage UnpackPicture(const TiledPicture& packed) {
  const QImage& facts = packed.facts;
  QImage picture(packed.size, facts.format());
  uchar* bits = picture.bits();
  if (picture.isNull() || !bits) return {};
  const Grid grid(packed.size, facts.depth());
  const bool good = ForTiles(grid, [&](int begin, int end) {
    for (int tile = begin; tile < end; ++tile) {
      if (!UnpackTile(*packed.tiles[static_cast<std::size_t>(tile)], grid, tile, picture, bits))
        return false;
    }
    return true;
  });
  if (!good) return {};
  picture.setColorTable(facts.colorTable());
  picture.setDotsPerMeterX(facts.dotsPerMeterX());
  picture.setDotsPerMeterY(facts.dotsPerMeterY());
  picture.setDevicePixelRatio(facts.devicePixelRatio());
  picture.setOffset(facts.offset());
  picture.setColorSpace(facts.colorSpace());
  for (const QString& key : facts.textKeys())
    picture.setText(key, facts.text(key));
  return picture;
}

}  // namespace zqm
