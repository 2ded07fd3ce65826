// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/edit_metadata.h"

#include <algorithm>
#include <array>

#include "catalogue/reasons.h"
#include "cataloguing/catalogue_photo.h"
#include "cataloguing/replaced_photos.h"
#include "cataloguing/virtual_exif.h"
#include "imaging/picture.h"
#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kProgram[] = u"Zolmira QM";

/// What one kind of edit takes.
struct Editable {
  std::span<const char16_t* const> fileTypes;  ///< values of `FILETYPE`
  const char16_t* refusal;                     ///< of other formats
};
constexpr const char16_t* kTiffOrJpeg[] = {u"1", u"3"};
constexpr const char16_t* kTiffPsdOrJpeg[] = {u"1", u"24", u"3"};
constexpr Editable kExifEditable = {kTiffOrJpeg, metadata_text::kNotForExif};
constexpr Editable kIptcEditable = {kTiffPsdOrJpeg, metadata_text::kNotForIptc};

using Change = std::function<void(Picture& picture)>;

/// The file's part of an edit. Gives what the file then says.
Result<PhotoFile> ChangeFile(const QString& path, const Editable& editable, const Change& change) {
  Picture picture;
  const Outcome read = picture.ReadParamsFromFile(path);
  if (!read && read.Reason() != QStringView(kReasonNoImage)) return Failure{read.Reason()};
  const QString type = picture.GetIOProperty(u"FILETYPE");
  const bool takes = std::ranges::any_of(
      editable.fileTypes, [&type](const char16_t* taken) { return QStringView(taken) == type; });
  if (!read || !takes) return Failure{QString::fromUtf16(editable.refusal)};
  change(picture);
  if (const Outcome saved = picture.SaveToFile(path); !saved) return Failure{saved.Reason()};
  return ReadPhotoFile(path, ReadRequest());
}

Outcome WriteRow(PhotoRecordset& photos, const QString& path, const PhotoFile& photo) {
  if (!photos.LocateRow(path)) return photos.MoveFirst();
  CopyRecord(ReadMetadataRecord(photo, path), photos);
  return photos.CommitRow();
}

Outcome EditOne(Catalogue& catalogue, const QString& path, const Editable& editable,
                const Change& change) {
  const auto refuse = [](const char16_t* reason) { return Failure{QString::fromUtf16(reason)}; };
  if (!FileExists(path)) return refuse(kReasonMissing);
  if (ReadOnlyFile(path)) return refuse(metadata_text::kReadOnly);
  PhotoRecordset& photos = catalogue.Photos();
  const bool catalogued = photos.IsCatalogued(path);
  if (catalogued && catalogue.ReadOnly()) return refuse(kReasonDatabaseReadOnly);
  const auto intent = ReplaceIntent::Record(catalogue, path);
  if (!intent) return Failure{intent.Reason()};
  const auto changed = RunAside([&] { return ChangeFile(path, editable, change); });
  if (!changed) {
    intent->Drop();
    return Failure{changed.Reason()};
  }
  const Outcome followed = catalogued ? WriteRow(photos, path, *changed) : Outcome();
  return followed ? intent->Finish() : followed;
}

BatchResult EditAll(Catalogue& catalogue, const QStringList& paths, const BatchTexts& texts,
                    const Editable& editable, const Change& change, BrowserView* view,
                    const BatchObserver& observer) {
  BatchResult result = BatchRun(
      paths, texts,
      [&](qsizetype, const QString& path) {
        return Reasons(EditOne(catalogue, path, editable, change));
      },
      observer);
  if (view != nullptr) view->Live();
  return result;
}

/// What every edit does beside its fields.
void Stamp(Picture& picture) {
  picture.SetIOProperty(u"EXIF_Software", QString::fromUtf16(kProgram));
}

void WriteExif(const ExifEdit& edit, Picture& picture) {
  if (picture.GetIOProperty(u"EXIF_HASEXIF") == u"0")
    picture.SetIOProperty(u"EXIF_HASEXIF", u"1"_s);
  picture.SetIOProperty(u"XMP_Info", QString());
  const bool tiff = picture.GetIOProperty(u"FILETYPE") == u"1";
  for (const auto& [index, typed] : edit) {
    const ExifField& field = ExifEditFields()[static_cast<std::size_t>(index)];
    const char16_t* key = tiff && field.tiffKey != nullptr ? field.tiffKey : field.key;
    if (const auto value = ExifValue(field, typed)) picture.SetIOProperty(key, *value);
  }
  Stamp(picture);
}

/// The first item of the dataset becomes the text; its repeats follow it as before.
void ReplaceItem(Picture& picture, int dataset, const QString& text) {
  QStringList repeats;
  for (int at = picture.IPTC_Find(kIptcRecord, dataset); at >= 0;
       at = picture.IPTC_Find(kIptcRecord, dataset)) {
    repeats.append(picture.IPTC_Get(at));
    picture.IPTC_Remove(at);
  }
  picture.IPTC_Add(kIptcRecord, dataset, text);
  for (const QString& repeat : repeats.mid(1))
    picture.IPTC_Add(kIptcRecord, dataset, repeat);
}

void WriteIptc(const IptcEdit& edit, Picture& picture) {
  picture.SetIOProperty(u"XMP_Info", QString());
  for (const auto& [index, typed] : edit) {
    const IptcField& field = IptcDatasets()[static_cast<std::size_t>(index)];
    ReplaceItem(picture, field.dataset, IptcValue(field, typed));
  }
  Stamp(picture);
}

void RemoveBlock(MetadataBlock block, Picture& picture) {
  picture.SetIOProperty(u"XMP_Info", QString());
  if (block == MetadataBlock::Iptc) return picture.RemoveIptc();
  picture.SetIOProperty(u"EXIF_ImageDescription", QString());
  picture.SetIOProperty(u"TIFF_IMAGEDESCRIPTION", QString());
  picture.RemoveExif();
}

// Export.

ExportValues ValuesOf(const MetadataRecord& record) {
  return {[&record](Column column) { return record.Text(column); },
          [&record](QStringView caption) {
            const auto found = std::ranges::find_if(
                record.extras, [caption](const auto& extra) { return extra.first == caption; });
            return found == record.extras.end() ? QString() : found->second;
          }};
}

Result<QString> TextOf(Catalogue& catalogue, const QString& path, MetadataKind kind) {
  if (FileExists(path)) {
    const auto photo = RunAside([&path] { return ReadPhotoFile(path, ReadRequest()); });
    if (!photo) return Failure{photo.Reason()};
    const MetadataRecord record = ReadMetadataRecord(*photo, path);
    return ExportText(kind, ExportSource::File, path, ValuesOf(record));
  }
  PhotoRecordset& photos = catalogue.Photos();
  if (!photos.LocateRow(path)) return Failure{QString::fromUtf16(kReasonMissing)};
  return ExportText(kind, ExportSource::Row, path,
                    {[&photos](Column column) { return photos.GetField(column); },
                     [](QStringView) { return QString(); }});
}

Outcome ExportOne(Catalogue& catalogue, const QString& path, MetadataKind kind,
                  const QString& folder) {
  const auto text = TextOf(catalogue, path, kind);
  if (!text) return Failure{text.Reason()};
  const QString target = PathIn(folder, ExportFileName(kind, path));
  return RunAside([&] { return WriteFileAtomically(target, text->toUtf8()); });
}

}  // namespace

BatchResult ApplyExif(Catalogue& catalogue, const QStringList& paths, const ExifEdit& edit,
                      BrowserView* view, const BatchObserver& observer) {
  return EditAll(
      catalogue, paths, metadata_text::kExif, kExifEditable,
      [&edit](Picture& picture) { WriteExif(edit, picture); }, view, observer);
}

BatchResult ApplyIptc(Catalogue& catalogue, const QStringList& paths, const IptcEdit& edit,
                      BrowserView* view, const BatchObserver& observer) {
  return EditAll(
      catalogue, paths, metadata_text::kIptc, kIptcEditable,
      [&edit](Picture& picture) { WriteIptc(edit, picture); }, view, observer);
}

BatchResult RemoveMetadata(Catalogue& catalogue, const QStringList& paths, MetadataBlock block,
                           BrowserView* view, const BatchObserver& observer) {
  return EditAll(
      catalogue, paths, metadata_text::Of(block).run, kIptcEditable,
      [block](Picture& picture) { RemoveBlock(block, picture); }, view, observer);
}

BatchResult ExportMetadata(Catalogue& catalogue, const QStringList& paths, MetadataKind kind,
                           const QString& folder, const BatchObserver& observer) {
  return BatchRun(
      paths, metadata_text::Of(kind).run,
      [&](qsizetype, const QString& path) {
        return Reasons(ExportOne(catalogue, path, kind, folder));
      },
      observer);
}

namespace metadata_text {

const ExportTexts& Of(MetadataKind kind) {
  static constexpr std::array<ExportTexts, 3> kExports = {{
      {{u"Creating EXIF files. Please wait...",
        u"The EXIF file(s) of the following photos could not be created:",
        u"The EXIF file(s) have been created in the specified folder."},
       u"Create EXIF File(s) in..."},
      {{u"Creating IPTC files. Please wait...",
        u"The IPTC file(s) of the following photos could not be created:",
        u"The IPTC file(s) have been created in the specified folder."},
       u"Create IPTC File(s) in..."},
      {{u"Creating GPS files. Please wait...",
        u"The GPS file(s) of the following photos could not be created:",
        u"The GPS file(s) have been created in the specified folder."},
       u"Create GPS File(s) in..."},
  }};
  return kExports[static_cast<std::size_t>(kind)];
}

const RemovalTexts& Of(MetadataBlock block) {
  static constexpr std::array<RemovalTexts, 2> kRemovals = {{
      {{u"Removing EXIF data from the selected file(s). Please wait...",
        u"The EXIF data of the following files could not be removed:",
        u"EXIF data has been removed from the selected file(s)."},
       u"Remove all EXIF data from the selected file(s)?\n"
       u"Note: This will also remove any GPS information found in the selected photo(s).\n"
       u"Do you wish to continue?"},
      {{u"Removing IPTC data from the selected file(s). Please wait...",
        u"The IPTC data of the following files could not be removed:",
        u"IPTC data has been removed from the selected file(s)."},
       u"Remove all IPTC data from the selected file(s)?\n"
       u"Do you wish to continue?"},
  }};
  return kRemovals[static_cast<std::size_t>(block)];
}

}  // namespace metadata_text

}  // namespace zqm
