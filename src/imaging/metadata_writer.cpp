// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/metadata_writer.h"

#include <QtEndian>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/jpeg_segments.h"
#include "imaging/tiff_editor.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::uint16_t kExifResource = 0x0422, kXmpResource = 0x0424;
constexpr int kTagXmp = 700, kTagIptc = 33723, kTagResources = 34377;
constexpr std::uint16_t kByte = 1, kUndefined = 7;

Failure Unwritable() {
  return {u"Metadata cannot be written"_s};
}

bool ExifChanged(const FileParameters& parameters) {
  return parameters.Exif().ExifCleared() || !parameters.Exif().Changed().empty();
}

Result<QByteArray> RewriteJpeg(const QByteArray& file, const FileParameters& parameters) {
  if (!HasWholeSegments(Bytes(file))) return Unwritable();
  JpegChange change;
  if (ExifChanged(parameters)) change.exif = parameters.EditedExif(JpegExif(Bytes(file)));
  if (parameters.XmpChanged()) change.xmp = parameters.Exif().XmpPacket();
  if (parameters.IptcChanged())
    change.resources =
        WithIptcResource(Bytes(JpegResources(Bytes(file))), parameters.Iptc().ToBlock());
  return WithBlocks(Bytes(file), change);
}

void SetBytes(TiffEditor& editor, int tag, std::uint16_t type, const QByteArray& bytes) {
  const ExifTag where{ExifGroup::Image, tag};
  if (bytes.isEmpty())
    editor.Remove(where);
  else
    editor.Set(where, {type, static_cast<std::uint32_t>(bytes.size()), bytes});
}

/// What a TIFF file without EXIF keeps: the layout of its picture, the density, the orientation.
void RemoveExifFromTiff(TiffEditor& editor) {
  for (const int tag : editor.Tags(ExifGroup::Image))
    if (IsDescriptiveTag(tag)) editor.Remove({ExifGroup::Image, tag});
  editor.RemoveGroup(ExifGroup::Photo);
  editor.RemoveGroup(ExifGroup::Gps);
}

Result<QByteArray> RewriteTiff(const QByteArray& file, const FileParameters& parameters) {
  auto editor = TiffEditor::Open(file);
  if (!editor) return Unwritable();
  if (parameters.Exif().ExifCleared()) RemoveExifFromTiff(*editor);
  editor->Apply(parameters.Exif());
  if (parameters.XmpChanged()) SetBytes(*editor, kTagXmp, kByte, parameters.Exif().XmpPacket());
  if (parameters.IptcChanged()) {
    const QByteArray block = parameters.Iptc().ToBlock();
    SetBytes(*editor, kTagIptc, kUndefined, block);
    // Some writers keep the block twice.
    if (const auto resources = editor->Get({ExifGroup::Image, kTagResources}))
      if (!IptcFromResources(Bytes(resources->bytes)).isEmpty())
        SetBytes(*editor, kTagResources, kByte, WithIptcResource(Bytes(resources->bytes), block));
  }
  const QByteArray edited = editor->Take();
  if (edited.isEmpty()) return Failure{u"Metadata is too large"_s};
  return edited;
}

Result<QByteArray> RewritePsd(const QByteArray& file, const FileParameters& parameters) {
  // Header, colours, image resources, layers: each section but the first behind its length.
  constexpr std::uint64_t kHeaderBytes = 26;
  const ByteReader in(Bytes(file), true);
  const std::uint64_t lengthAt = kHeaderBytes + 4 + in.U32(kHeaderBytes);
  const std::uint64_t length = in.U32(lengthAt);
  const std::uint64_t end = lengthAt + 4 + length;
  if (end > static_cast<std::uint64_t>(file.size())) return Unwritable();
  QByteArray resources = ToByteArray(in.Part(lengthAt + 4, length));
  if (ExifChanged(parameters))
    resources = WithResource(
        Bytes(resources), kExifResource,
        parameters.EditedExif(ToByteArray(FindResource(Bytes(resources), kExifResource))));
  if (parameters.XmpChanged())
    resources = WithResource(Bytes(resources), kXmpResource, parameters.Exif().XmpPacket());
  if (parameters.IptcChanged())
    resources = WithIptcResource(Bytes(resources), parameters.Iptc().ToBlock());
  const auto bigLength = qToBigEndian(static_cast<quint32>(resources.size()));
  return file.left(static_cast<qsizetype>(lengthAt)) +
         QByteArray(reinterpret_cast<const char*>(&bigLength), 4) + resources +
         file.mid(static_cast<qsizetype>(end));
}

struct Writer {
  const Codec* codec;
  Result<QByteArray> (*rewrite)(const QByteArray& file, const FileParameters& parameters);
};
constexpr Writer kWriters[] = {
    {&kJpegCodec, RewriteJpeg}, {&kTiffCodec, RewriteTiff}, {&kPsdCodec, RewritePsd}};

const Writer* FindWriter(const Codec& codec) {
  const auto* found = std::ranges::find(kWriters, &codec, &Writer::codec);
  return found == std::end(kWriters) ? nullptr : found;
}

}  // namespace

bool CanRewriteMetadata(const Codec& codec) {
  return FindWriter(codec) != nullptr;
}

Result<QByteArray> RewriteMetadata(const QByteArray& file, const Codec& codec,
                                   const FileParameters& parameters) {
  const Writer* writer = FindWriter(codec);
  if (!writer) return Failure{QStringView(kReasonNotWritable).toString()};
  return writer->rewrite(file, parameters);
}

Result<QByteArray> WithMetadata(const QByteArray& jpeg, const FileParameters& parameters) {
  return RewriteJpeg(jpeg, parameters);
}

}  // namespace zqm
