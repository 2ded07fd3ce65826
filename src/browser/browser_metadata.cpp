// SPDX-License-Identifier: GPL-3.0-or-later
// What the browser does for the buttons below the pages of metadata.
#include "browser/browser.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {

QStringList Browser::PhotosForMetadata() {
  if (selected_.isEmpty() || Refused() || !keywords_.CheckUpdate()) return {};
  return selected_;
}

void Browser::RunOver(const BatchTexts& texts,
                      const std::function<BatchResult(const BatchObserver& observer)>& work) {
  const BatchResult result = [&] {
    const FolderHold hold(*this);
    BusyRun run(busy_, QString::fromUtf16(texts.wait));
    YieldToInterface();
    return work([&run](const BatchProgress& at) { run.Progress(at.done, at.total); });
  }();
  if (result.failures.Empty())
    MsgBox(QString::fromUtf16(texts.done), MessageKind::Information);
  else
    Q_EMIT FailuresFound(result.failures);
}

void Browser::ExportMetadata(MetadataKind kind) {
  const QStringList photos = PhotosForMetadata();
  if (photos.isEmpty()) return;
  const ExportTexts& texts = metadata_text::Of(kind);
  const QString folder =
      Pick({PickRequest::What::Folder, QString::fromUtf16(texts.pick), folder_, {}});
  if (folder.isEmpty()) return;
  RunOver(texts.run, [&](const BatchObserver& observer) {
    return zqm::ExportMetadata(catalogue_, photos, kind, folder, observer);
  });
}

void Browser::RemoveMetadata(MetadataBlock block) {
  const QStringList photos = PhotosForMetadata();
  if (photos.isEmpty()) return;
  const RemovalTexts& texts = metadata_text::Of(block);
  if (MsgBox(QString::fromUtf16(texts.question), MessageKind::Question, Buttons::YesNo) !=
      Answer::Yes)
    return;
  RunOver(texts.run, [&](const BatchObserver& observer) {
    return zqm::RemoveMetadata(catalogue_, photos, block, this, observer);
  });
}

}  // namespace zqm
