// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// The texts of an edit by field, or which of the settings nobody could have typed. Of two for one
/// field the last counts.
template <class FindField, class Fields>
Result<std::map<int, QString>> ParseSettings(const QStringList& settings, FindField find,
                                             const Fields& fields) {
  std::map<int, QString> edit;
  for (const QString& setting : settings) {
    const qsizetype equals = setting.indexOf(u'=');
    const int index = equals < 0 ? -1 : find(QStringView(setting).first(equals));
    if (index < 0) return Failure{u"--set \"%1\": no such field"_s.arg(OnOneLine(setting))};
    const auto text =
        TypedText(fields[static_cast<std::size_t>(index)], setting.sliced(equals + 1));
    if (!text) return Failure{u"--set: "_s + OnOneLine(text.Reason())};
    edit[index] = *text;
  }
  return edit;
}

template <class Apply>
int RunEdit(const GlobalOptions& global, const BatchTexts& texts,
            const Result<std::map<int, QString>>& edit, Apply apply, const QStringList& files,
            const Console& console) {
  if (!edit) return console.Refuse(edit.Reason());
  return RunOver(
      global, true, texts, "Edited",
      [&](Catalogue& catalogue, const BatchObserver& observer) {
        return apply(catalogue, PhotosOf(files), *edit, nullptr, observer);
      },
      console);
}

}  // namespace

int RunExif(const GlobalOptions& global, const MetadataEdit& edit, const Console& console) {
  return RunEdit(global, metadata_text::kExif,
                 ParseSettings(edit.settings, FindExifField, ExifEditFields()), ApplyExif,
                 edit.files, console);
}

int RunIptc(const GlobalOptions& global, const MetadataEdit& edit, const Console& console) {
  return RunEdit(global, metadata_text::kIptc,
                 ParseSettings(edit.settings, FindIptcField, IptcDatasets()), ApplyIptc, edit.files,
                 console);
}

int RunExport(const GlobalOptions& global, const ExportFiles& options, const Console& console) {
  const QString folder = AbsolutePath(options.to);
  if (!FolderExists(folder)) return RefuseFolder(folder, console);
  return RunOver(
      global, false, metadata_text::Of(options.kind).run, "Exported",
      [&](Catalogue& catalogue, const BatchObserver& observer) {
        return ExportMetadata(catalogue, PhotosOf(options.files), options.kind, folder, observer);
      },
      console);
}

int RunStrip(const GlobalOptions& global, MetadataBlock block, const QStringList& files,
             const Console& console) {
  return RunOver(
      global, true, metadata_text::Of(block).run, "Stripped",
      [&](Catalogue& catalogue, const BatchObserver& observer) {
        return RemoveMetadata(catalogue, PhotosOf(files), block, nullptr, observer);
      },
      console);
}

}  // namespace zqm
