// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/info_panel.h"

#include <QScrollArea>
#include <QTabBar>
#include <algorithm>

#include "browser/ui/photo_panel.h"
#include "browser/ui/value_list.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPhotoTab = 0, kPropertiesTab = 1, kMetadataTab = 2;

struct PageTab {
  MetadataPage page;
  InfoPage state;
  const char16_t* caption;
  const char* name;
};
constexpr PageTab kPageTabs[kMetadataPageCount] = {
    {MetadataPage::Exif, InfoPage::Exif, u"EXIF", "pageexif"},
    {MetadataPage::Gps, InfoPage::Gps, u"GPS", "pagegps"},
    {MetadataPage::Iptc, InfoPage::Iptc, u"IPTC", "pageiptc"},
};

ValueList::Lines LinesOf(const MetadataLines& page) {
  ValueList::Lines lines;
  for (const MetadataLine& line : page)
    lines.emplace_back(QString::fromUtf16(line.caption), line.text);
  return lines;
}

}  // namespace

InfoPanel::InfoPanel(PhotoPanel* photoPanel, QWidget* parent) : QTabWidget(parent) {
  setObjectName(u"cmdinfo"_s);
  setDocumentMode(true);
  auto* scroll = new QScrollArea;
  scroll->setWidget(photoPanel);
  scroll->setWidgetResizable(true);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  addTab(scroll, tr("Photo"));
  properties_ = new ValueList;
  properties_->setObjectName(u"pageproperties"_s);
  addTab(properties_, tr("Properties"));
  metadata_ = new QTabWidget;
  metadata_->setObjectName(u"lblmeta"_s);
  metadata_->setDocumentMode(true);
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    pages_[i] = new ValueList;
    pages_[i]->setObjectName(QString::fromLatin1(kPageTabs[i].name));
    metadata_->addTab(pages_[i], QString::fromUtf16(kPageTabs[i].caption));
  }
  addTab(metadata_, tr("Metadata"));
  ShowInfo(EmptyPhotoInfo());
}

void InfoPanel::ShowInfo(const PhotoInfo& info) {
  ValueList::Lines properties;
  for (int i = 0; i < kPropertyCount; ++i) {
    const auto property = static_cast<Property>(i);
    properties.emplace_back(QString::fromUtf16(PropertyCaption(property)), info.Text(property));
  }
  properties_->SetLines(properties);
  for (std::size_t i = 0; i < pages_.size(); ++i)
    pages_[i]->SetLines(LinesOf(info.Page(kPageTabs[i].page)));
}

InfoPage InfoPanel::Page() const {
  if (currentIndex() == kPhotoTab) return InfoPage::Photo;
  if (currentIndex() == kPropertiesTab) return InfoPage::Properties;
  return kPageTabs[std::max(metadata_->currentIndex(), 0)].state;
}

void InfoPanel::SetPage(InfoPage page) {
  if (page == InfoPage::Photo) return setCurrentIndex(kPhotoTab);
  if (page == InfoPage::Properties) return setCurrentIndex(kPropertiesTab);
  setCurrentIndex(kMetadataTab);
  for (int i = 0; i < kMetadataPageCount; ++i)
    if (kPageTabs[i].state == page) metadata_->setCurrentIndex(i);
}

}  // namespace zqm
