// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/picture.h"

#include "imaging/codecs/codecs.h"
#include "imaging/colour.h"
#include "imaging/jpeg_segments.h"
#include "imaging/metadata_writer.h"
#include "imaging/pages.h"
#include "imaging/save_options.h"
#include "imaging/thumbnail.h"
#include "imaging/tiff_editor.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr ExifTag kPixelWidth{ExifGroup::Photo, 0xA002}, kPixelHeight{ExifGroup::Photo, 0xA003};
constexpr QSize kExifThumbnailBox(160, 160);
/// Leaves room for the tags that are set.
constexpr qsizetype kMostExifBytes = 62 << 10;

bool IsGray(const QImage& image) {
  return image.format() == QImage::Format_Grayscale8 ||
         image.format() == QImage::Format_Grayscale16;
}

/// The block's own density, where it has one, says what the file's header will say.
void SetDensity(TiffEditor& editor, int tag, const QString& dotsPerInch) {
  constexpr ExifTag kUnit{ExifGroup::Image, 0x0128};
  constexpr std::uint16_t kRational = 5, kInch = 2;
  const std::uint32_t dots = dotsPerInch.toUInt();
  if (dots == 0 || !editor.Get({ExifGroup::Image, tag})) return;
  editor.Set({ExifGroup::Image, tag},
             {kRational, 1, editor.Long(dots).bytes + editor.Long(1).bytes});
  editor.Set(kUnit, editor.Short(kInch));
}

/// In the room of the old one if that makes a fair picture, so that the block doesn't grow.
void SetThumbnail(TiffEditor& editor, const QImage& image) {
  const QImage thumbnail = FitThumbnail(image, kExifThumbnailBox);
  QByteArray jpeg;
  for (const int quality : {85, 75, 65, 55, 45, 35}) {
    jpeg = EncodeJpeg(thumbnail, quality);
    if (jpeg.size() <= std::ssize(editor.Thumbnail())) break;
  }
  TiffEditor trial = editor;
  trial.SetThumbnail(jpeg);
  // An old one would show another picture.
  if (trial.Take().size() > kMostExifBytes)
    editor.DropFollowing();
  else
    editor.SetThumbnail(jpeg);
}

}  // namespace

LoadOptions Picture::Options(const QString& path) const {
  LoadOptions options;
  options.colourManagement = colourManagement_;
  options.raw = ParseRawOptions(GetIOProperty(u"RAW_ExtraParams"));
  options.extension = GetExtensionName(path).toLower();
  return options;
}

Outcome Picture::LoadFromFile(const QString& path) {
  LoadOptions options = Options(path);
  Clear();
  options.incomplete = &incomplete_;
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  const Result<QImage> image = source->codec->load(source->View(), options);
  if (!image) return Failure{image.Reason()};
  parameters_.ReplaceFile(
      FileParameters::Read(source->View(), *source->codec, source->facts, path));
  image_ = *image;
  source_ = path;
  codec_ = source->codec;
  loadedPixels_ = image_.cacheKey();
  KeepBlocks(*source);
  return {};
}

// What encoding the picture anew will need of the file.
void Picture::KeepBlocks(const SourceFile& source) {
  severalPages_ = zqm::HasSeveralPages(source.View(), *source.codec);
  const ExifStore& exif = parameters_.Exif();
  // A JPEG's block goes along as it stands: so do the offsets in its maker note.
  exif_ = source.codec == &kJpegCodec ? JpegExif(source.View()) : QByteArray();
  if (exif_.isEmpty()) exif_ = exif.EncodeForOtherFile();
  const bool converted =
      colourManagement_ && (source.codec == &kJpegCodec || source.codec == &kTiffCodec);
  profile_ = converted && !exif.Profile().isEmpty() ? SrgbProfile() : exif.Profile();
}

Outcome Picture::ReadParamsFromFile(const QString& path) {
  const LoadOptions options = Options(path);
  parameters_.ReplaceFile(FileParameters());
  source_.clear();
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  parameters_.ReplaceFile(
      FileParameters::Read(source->View(), *source->codec, source->facts, path));
  source_ = path;
  codec_ = source->codec;
  loadedPixels_ = image_.cacheKey();
  KeepBlocks(*source);
  return {};
}

void Picture::Clear() {
  image_ = QImage();
  parameters_.ReplaceFile(FileParameters());
  source_.clear();
  codec_ = nullptr;
  severalPages_ = false;
  incomplete_ = false;
  exif_.clear();
  profile_.clear();
}

Outcome Picture::SaveMetadata(const QString& path) const {
  const Result<QByteArray> file = ReadWholeFile(path);
  if (!file) return Failure{file.Reason()};
  if (SniffCodec(Bytes(*file), GetExtensionName(path).toLower()) != codec_)
    return Failure{QString::fromUtf16(kReasonChangedByOther)};
  const Result<QByteArray> changed = RewriteMetadata(*file, *codec_, parameters_);
  if (!changed) return Failure{changed.Reason()};
  return *changed == *file ? Outcome() : WriteFileAtomically(path, *changed);
}

void Picture::PrepareSave() {
  auto editor = exif_.isEmpty() ? std::nullopt : TiffEditor::Open(exif_);
  if (!editor || image_.isNull()) return;
  SetDensity(*editor, 0x011A, GetIOProperty(u"DPIX"));
  SetDensity(*editor, 0x011B, GetIOProperty(u"DPIY"));
  for (const auto& [tag, number] :
       {std::pair{kPixelWidth, image_.width()}, std::pair{kPixelHeight, image_.height()}})
    if (!editor->Tags(ExifGroup::Photo).empty())
      editor->Set(tag, editor->Long(static_cast<std::uint32_t>(number)));
  if (!editor->Thumbnail().empty()) SetThumbnail(*editor, image_);
  exif_ = editor->Take();
}

FileBlocks Picture::Blocks() const {
  FileBlocks blocks;
  if (!parameters_.Exif().ExifCleared() || !parameters_.Exif().Changed().empty())
    blocks.exif = parameters_.EditedExif(exif_);
  if (parameters_.Iptc().Count() > 0) blocks.iptc = parameters_.Iptc().ToBlock();
  blocks.xmp = parameters_.Exif().XmpPacket();
  const bool fits = IsGray(image_) ? DescribesGray(Bytes(profile_)) : DescribesRgb(Bytes(profile_));
  if (fits) blocks.profile = profile_;
  blocks.dpiX = GetIOProperty(u"DPIX").toDouble();
  blocks.dpiY = GetIOProperty(u"DPIY").toDouble();
  return blocks;
}

Result<QByteArray> Picture::Encode(const Codec* codec) {
  if (!codec || !codec->save) return Failure{QString::fromUtf16(kReasonNotWritable)};
  if (image_.isNull()) return Failure{u"There is no picture to save"_s};
  PrepareSave();
  return codec->save(image_, ReadSaveOptions(parameters_), Blocks());
}

Result<QByteArray> Picture::EncodeAs(const QString& extension) {
  return Encode(CodecForSaving(extension));
}

Outcome Picture::MayBeWrittenOver() const {
  if (severalPages_) return Failure{QString::fromUtf16(kReasonSeveralPages)};
  if (incomplete_) return Failure{QString::fromUtf16(kReasonIncomplete)};
  if (!codec_ || !codec_->save) return Failure{QString::fromUtf16(kReasonNotWritable)};
  return {};
}

Result<QByteArray> Picture::EncodeOver() {
  if (const Outcome may = MayBeWrittenOver(); !may) return Failure{may.Reason()};
  return Encode(codec_);
}

Outcome Picture::SaveToFile(const QString& path) {
  const bool overSource = codec_ && platform::SameFile(path, source_);
  if (overSource && ReadOnlyFile(path)) return Failure{QString::fromUtf16(kReasonPermission)};
  if (overSource && PixelsUntouched() && CanRewriteMetadata(*codec_)) return SaveMetadata(path);
  const Result<QByteArray> file =
      overSource ? EncodeOver() : EncodeAs(GetExtensionName(path).toLower());
  if (!file) return Failure{file.Reason()};
  Outcome written = WriteFileAtomically(path, *file);
  if (written && overSource) loadedPixels_ = image_.cacheKey();
  return written;
}

}  // namespace zqm
