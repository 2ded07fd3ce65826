// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "batch/convert_photos.h"
#include "batch/convert_settings.h"
#include "batch/photo_commands.h"
#include "batch/resize_photos.h"
#include "batch/rotate_photos.h"
#include "imaging/save_options.h"
#include "imaging/template_files.h"
#include "imaging/text_shape.h"
#include "session/session.h"
#include "shell/files.h"
#include "watermark/stamp_photos.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using PictureWork = std::function<PictureResult(Session& session, const PictureRun& run)>;

int RunPictureWork(const GlobalOptions& global, const BatchTexts& texts, const char* word,
                   const PictureWork& work, const Console& console) {
  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  Session& session = *opened.session;
  const BatchObserver observer = [&](const BatchProgress& at) {
    console.Progress(QString::fromUtf16(texts.wait) + u" %1%"_s.arg(at.Percent()));
  };
  PictureResult result = work(session, {session.ActiveCatalogue(), nullptr, observer, {}});
  console.ClearProgress();
  for (const FailureRow& row : result.unwritten.rows)
    result.failures.Add(row.File, u"could not be written: "_s + row.Reason);
  return console.Report(result.done, word,
                        QString::fromUtf16(result.failures.Empty() ? texts.done : texts.failures),
                        result.failures);
}

/// "KEY=VALUE" each. The first one that is none is told.
Result<std::map<QString, QString>> SaveKeys(const QStringList& options) {
  std::map<QString, QString> keys;
  for (const QString& option : options) {
    const qsizetype at = option.indexOf(u'=');
    const QString key = option.left(at).trimmed().toUpper();
    bool isNumber = false;
    const QString value = option.mid(at + 1).trimmed();
    value.toDouble(&isNumber);
    if (at < 0 || !IsSaveKey(key) || !isNumber)
      return Failure{u"--option: "_s + option + u" is no save key with its number"_s};
    keys.insert_or_assign(key, value);
  }
  return keys;
}

/// Or why none of the files will do.
Result<QStringList> Usable(int command, const QStringList& files) {
  return PreparePhotos(*FindPhotoCommand(command), PhotosOf(files), {});
}

/// The objects of a template that has any.
Result<VectorObjects> TemplateObjects(const GlobalOptions& global, const QString& name) {
  const Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared) return Failure{prepared.Reason()};
  if (const Outcome valid = CheckTemplateName(name); !valid) return Failure{valid.Reason()};
  const QString folder = session.Folders().WatermarkTemplatesFolder();
  QString standing = FindTemplate(folder, name);
  if (standing.isEmpty() && name.endsWith(u".iev"_s, Qt::CaseInsensitive))
    standing = FindTemplate(folder, name.chopped(4));
  const auto file = LoadTemplate(TemplatePath(folder, standing.isEmpty() ? name : standing));
  if (!file) return Failure{file.Reason()};
  if (file->objects.IsEmpty()) return Failure{u"The template is empty: "_s + name};
  return file->objects;
}

ExistingFiles Existing(bool overwrite) {
  return overwrite ? ExistingFiles::Overwrite : ExistingFiles::Skip;
}

}  // namespace

int RunConvert(const GlobalOptions& global, const ConvertFiles& files, const Console& console) {
  ConvertOptions options;
  options.format = FindConvertFormat(files.format);
  options.besideSource = !files.output.to;
  options.folder = files.output.to ? AbsolutePath(*files.output.to) : QString();
  if (const Outcome valid = CheckConvert(options); !valid) return console.Refuse(valid.Reason());
  if (!options.besideSource && !FolderExists(options.folder))
    return RefuseFolder(options.folder, console);
  const auto keys = SaveKeys(files.options);
  if (!keys) return console.Refuse(keys.Reason());
  for (const ConvertSetting& setting : ConvertSettings())
    if (Concerns(setting, options.format->name))
      options.saveKeys[QString::fromUtf16(setting.key)] = KeyValue(setting, setting.standard);
  for (const auto& [key, number] : *keys)
    options.saveKeys[key] = number;
  options.output.existing = Existing(files.output.overwrite);
  options.output.catalogue = files.output.catalogue;
  if (const auto usable = Usable(kConvertCommand, files.output.files); !usable)
    return console.Fail(usable.Reason());
  return RunPictureWork(
      global, convert_text::kConvert, "Converted",
      [&](Session& session, const PictureRun& run) {
        options.load = session.FormatSettings();
        options.output.read = session.ReadSettings();
        return ConvertPhotos(run, PhotosOf(files.output.files), options);
      },
      console);
}

int RunResize(const GlobalOptions& global, const ResizeFiles& files, const Console& console) {
  ResizeOptions options = files.options;
  options.inPlace = !files.output.to;
  options.folder = files.output.to ? AbsolutePath(*files.output.to) : QString();
  if (const Outcome valid = CheckResize(options); !valid) return console.Refuse(valid.Reason());
  if (!options.inPlace && !FolderExists(options.folder))
    return RefuseFolder(options.folder, console);
  options.output.existing = Existing(files.output.overwrite);
  options.output.catalogue = files.output.catalogue;
  if (const auto usable = Usable(kResizeCommand, files.output.files); !usable)
    return console.Fail(usable.Reason());
  return RunPictureWork(
      global, resize_text::kResize, "Resized",
      [&](Session& session, const PictureRun& run) {
        options.load = session.WorkSettings();
        options.output.read = session.ReadSettings();
        return ResizePhotos(run, PhotosOf(files.output.files), options);
      },
      console);
}

int RunRotate(const GlobalOptions& global, const Turn& turn, const QStringList& files,
              const Console& console) {
  const BatchTexts texts{turn.waitText, rotate_text::kFailures, u""};
  return RunPictureWork(
      global, texts, "Rotated",
      [&](Session& session, const PictureRun& run) {
        return RotatePhotos(run, PhotosOf(files), turn, session.WorkSettings());
      },
      console);
}

int RunWatermark(const GlobalOptions& global, const QString& name, const QStringList& files,
                 const Console& console) {
  const auto objects = TemplateObjects(global, name);
  if (!objects) return console.Refuse(objects.Reason());
  if (const auto usable = Usable(kWatermarkCommand, files); !usable)
    return console.Fail(usable.Reason());
  if (const QStringList missing = MissingFonts(*objects); !missing.isEmpty())
    console.ErrorLine(u"This machine lacks the font "_s + OnOneLine(missing.join(u", ")) +
                      u": another one stands in for it."_s);
  return RunPictureWork(
      global, stamp_text::kStamp, "Watermarked",
      [&](Session& session, const PictureRun& run) {
        return StampPhotos(run, PhotosOf(files), *objects, session.WorkSettings());
      },
      console);
}

}  // namespace zqm
