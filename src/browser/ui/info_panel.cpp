// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/info_panel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <algorithm>

#include "browser/ui/photo_panel.h"
#include "browser/ui/value_list.h"
#include "shell/ui/look.h"

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

struct PageButton {
  MetadataPage page;
  MetadataCommand command;
  const char16_t* caption;
  const char16_t* toolTip;
  const char* name;
};
constexpr PageButton kPageButtons[] = {
    {MetadataPage::Exif, MetadataCommand::Edit, u"Edit...",
     u"Write EXIF fields into the selected photos", "cmdexif(0)"},
    {MetadataPage::Exif, MetadataCommand::Export, u"Export...",
     u"Write a text file with the EXIF data of each selected photo", "cmdexif(1)"},
    {MetadataPage::Exif, MetadataCommand::Remove, u"Remove...",
     u"Remove all EXIF data from the selected photos", "cmdexif(2)"},
    {MetadataPage::Iptc, MetadataCommand::Edit, u"Edit...",
     u"Write IPTC fields into the selected photos", "cmdiptc(0)"},
    {MetadataPage::Iptc, MetadataCommand::Export, u"Export...",
     u"Write a text file with the IPTC data of each selected photo", "cmdiptc(1)"},
    {MetadataPage::Iptc, MetadataCommand::Remove, u"Remove...",
     u"Remove all IPTC data from the selected photos", "cmdiptc(2)"},
    {MetadataPage::Gps, MetadataCommand::Export, u"Export...",
     u"Write a text file with the GPS data of each selected photo", "cmdcreategps"},
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
  for (std::size_t i = 0; i < pages_.size(); ++i)
    metadata_->addTab(ComposePage(i), QString::fromUtf16(kPageTabs[i].caption));
  addTab(metadata_, tr("Metadata"));
  ShowInfo(EmptyPhotoInfo());
  SetSelected(0);
}

QWidget* InfoPanel::ComposePage(std::size_t page) {
  pages_[page] = new ValueList;
  pages_[page]->setObjectName(QString::fromLatin1(kPageTabs[page].name));
  auto* row = new QHBoxLayout;
  look::SetSpace(row, look::kSpace12, look::kSpace8);
  for (const PageButton& button : kPageButtons) {
    if (button.page != kPageTabs[page].page) continue;
    auto* push = new QPushButton(QString::fromUtf16(button.caption));
    push->setObjectName(QString::fromLatin1(button.name));
    push->setToolTip(QString::fromUtf16(button.toolTip));
    push->setAccessibleName(push->toolTip());
    look::MakeCompact(push);
    connect(push, &QPushButton::clicked, this,
            [this, &button] { Q_EMIT CommandWanted(button.command, button.page); });
    buttons_.push_back(push);
    row->addWidget(push);
  }
  row->addStretch();
  auto* widget = new QWidget;
  widget->setObjectName(u"panel"_s);
  auto* column = new QVBoxLayout(widget);
  look::SetSpace(column, 0, 0);
  column->addWidget(pages_[page], 1);
  column->addLayout(row);
  return widget;
}

void InfoPanel::SetSelected(int count) {
  for (QPushButton* button : buttons_)
    button->setEnabled(count > 0);
}

void InfoPanel::ShowInfo(const PhotoInfo& info) {
  shown_ = info;
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
