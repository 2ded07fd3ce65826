// SPDX-License-Identifier: GPL-3.0-or-later
// The buttons below the main window's pages of metadata.
#include "batch/ui/frmeditiptc.h"
#include "batch/ui/frmexif.h"
#include "browser/ui/frmmain.h"
#include "metadata/exif_editor.h"
#include "metadata/iptc_editor.h"

namespace zqm {
namespace {

MetadataKind KindOf(MetadataPage page) {
  switch (page) {
    case MetadataPage::Exif:
      return MetadataKind::Exif;
    case MetadataPage::Iptc:
      return MetadataKind::Iptc;
    case MetadataPage::Gps:
      break;
  }
  return MetadataKind::Gps;
}

}  // namespace

void frmmain::RunMetadata(MetadataCommand command, MetadataPage page) {
  const bool exif = page == MetadataPage::Exif;
  switch (command) {
    case MetadataCommand::Edit:
      return exif ? EditExif() : EditIptc();
    case MetadataCommand::Export:
      return browser_.ExportMetadata(KindOf(page));
    case MetadataCommand::Remove:
      return browser_.RemoveMetadata(exif ? MetadataBlock::Exif : MetadataBlock::Iptc);
  }
}

/// While a photo is being read, the pages may still show the one before it.
PhotoInfo frmmain::InfoToEdit() const {
  return standIn_ ? EmptyPhotoInfo() : info_->Info();
}

void frmmain::EditExif() {
  const QStringList photos = browser_.PhotosForMetadata();
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmexif dialog({session_.ActiveCatalogue(), &browser_, photos}, this);
  const PhotoInfo info = InfoToEdit();
  dialog.Fill(GetExif(
      [&info](QStringView caption) { return info.Line(MetadataPage::Exif, caption); }, info.plain));
  dialog.exec();
}

void frmmain::EditIptc() {
  const QStringList photos = browser_.PhotosForMetadata();
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmeditiptc dialog({session_.ActiveCatalogue(), &browser_, photos}, this);
  const PhotoInfo info = InfoToEdit();
  IptcEdit texts;
  int index = 0;
  for (const MetadataLine& line : info.Page(MetadataPage::Iptc))
    texts[index++] = line.text;
  dialog.Fill(texts);
  dialog.exec();
}

}  // namespace zqm
