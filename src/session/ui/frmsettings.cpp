// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/ui/frmsettings.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kListWidth = 160;
constexpr QSize kSmallest{640, 420};

/// A value of a settings column, as it is shown.
struct Choice {
  const char16_t* value;
  const char16_t* caption;
  const char* name;
};

constexpr Choice kStartups[] = {
    {u"Default", u"System Default (Fast)", "optdefault"},
    {u"LastOpened", u"Last opened", "optlast"},
    {u"Custom", u"Custom", "optcustom"},
};
constexpr Choice kQualities[] = {
    {u"-e", u"Embedded preview (fastest)", ""},
    {u"-h", u"Half size (faster)", ""},
    {u"f", u"Full size (best quality)", ""},
};
constexpr Choice kWhiteBalances[] = {
    {u"-a", u"Use automatic white balance.", "optautowb"},
    {u"-w", u"Use camera white balance.", "optcamerawb"},
};

template <std::size_t count>
int IndexOf(const Choice (&choices)[count], const QString& value, int otherwise) {
  for (std::size_t i = 0; i < count; ++i)
    if (value == QStringView(choices[i].value)) return static_cast<int>(i);
  return otherwise;
}

/// A value that the window doesn't know stays until the user chooses another.
template <std::size_t count>
void TakeChoice(const Choice (&choices)[count], int chosen, QString& value) {
  if (chosen >= 0) value = QString::fromUtf16(choices[chosen].value);
}

template <std::size_t count>
QButtonGroup* MakeRadios(const Choice (&choices)[count], QVBoxLayout* into) {
  auto* group = new QButtonGroup(into);
  for (std::size_t i = 0; i < count; ++i) {
    auto* button = new QRadioButton(QString::fromUtf16(choices[i].caption));
    button->setObjectName(QString::fromLatin1(choices[i].name));
    group->addButton(button, static_cast<int>(i));
    into->addWidget(button);
  }
  return group;
}

QComboBox* MakeQualities(const char16_t* name) {
  auto* combo = new QComboBox;
  combo->setObjectName(QString::fromUtf16(name));
  for (const Choice& quality : kQualities)
    combo->addItem(QString::fromUtf16(quality.caption));
  return combo;
}

QVBoxLayout* MakePage(QWidget* page, const QString& heading) {
  auto* column = new QVBoxLayout(page);
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(look::Heading(heading));
  return column;
}

}  // namespace

frmsettings::frmsettings(Session& session, QWidget* parent)
    : frmsettings(session, parent, AssociationFoldersOf(session.Folders())) {}

frmsettings::frmsettings(Session& session, QWidget* parent, AssociationFolders folders)
    : QDialog(parent),
      session_(session),
      folders_(std::move(folders)),
      pageList_(new QListWidget),
      pages_(new QStackedWidget) {
  setObjectName(u"frmsettings"_s);
  setWindowTitle(tr("Settings"));
  setMinimumSize(kSmallest);
  pageList_->setObjectName(u"lstsettings"_s);
  pageList_->setAccessibleName(tr("Pages"));
  pageList_->setFixedWidth(kListWidth);
  AddPage(u"Startup Folder"_s, StartupPage());
  AddPage(u"RAW Files"_s, RawPage());
  AddPage(u"CMS"_s, CmsPage());
  AddPage(u"File Associations"_s, AssociationsPage());
  connect(pageList_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);
  pageList_->setCurrentRow(0);

  auto* foot = new DialogFoot;
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  connect(foot->Ok(), &QPushButton::clicked, this,
          [this] { Guarded("frmsettings", "cmdok_Click", [this] { cmdok_Click(); }); });
  if (session_.Core().ReadOnly()) {
    foot->Ok()->setEnabled(false);
    foot->Ok()->setToolTip(tr("The settings file is read-only."));
  }

  auto* body = new QHBoxLayout;
  look::SetSpace(body, 0, look::kSpace16);
  body->addWidget(pageList_);
  body->addWidget(pages_, 1);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(body, 1);
  column->addLayout(foot);
  ShowSettings(session_.CurrentSettings());
}

void frmsettings::AddPage(const QString& caption, QWidget* page) {
  pageList_->addItem(caption);
  pages_->addWidget(page);
}

QWidget* frmsettings::StartupPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = MakePage(page, u"Startup Folder"_s);
  startup_ = MakeRadios(kStartups, column);
  customEdit_ = new QLineEdit;
  customEdit_->setObjectName(u"txtcustom"_s);
  customEdit_->setAccessibleName(tr("Custom start-up folder"));
  browseButton_ = new QPushButton(tr("Browse…"));
  browseButton_->setObjectName(u"cmdbrowse"_s);
  connect(browseButton_, &QPushButton::clicked, this, &frmsettings::Browse);
  connect(startup_, &QButtonGroup::idToggled, this, [this] {
    const bool custom = startup_->checkedId() == IndexOf(kStartups, u"Custom"_s, 0);
    customEdit_->setEnabled(custom);
    browseButton_->setEnabled(custom);
  });
  auto* path = new QHBoxLayout;
  path->setContentsMargins(look::kSpace24, 0, 0, 0);
  path->setSpacing(look::kSpace8);
  path->addWidget(customEdit_, 1);
  path->addWidget(browseButton_);
  column->addLayout(path);
  column->addStretch();
  return page;
}

QWidget* frmsettings::RawPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = MakePage(page, u"RAW Files"_s);
  rawView_ = MakeQualities(u"cmbrawview");
  rawBatch_ = MakeQualities(u"cmbrawbatch");
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  const auto add = [grid](int row, const char16_t* caption, QComboBox* combo) {
    auto* label = new QLabel(QString::fromUtf16(caption));
    label->setBuddy(combo);
    grid->addWidget(label, row, 0);
    grid->addWidget(combo, row, 1);
  };
  add(0, u"Preview RAW files in : ", rawView_);
  add(1, u"Batch convert RAW files in : ", rawBatch_);
  grid->setColumnStretch(2, 1);
  column->addLayout(grid);
  column->addSpacing(look::kSpace16);
  column->addWidget(look::Heading(u"White Balance Setting"_s));
  whiteBalance_ = MakeRadios(kWhiteBalances, column);
  column->addStretch();
  return page;
}

QWidget* frmsettings::CmsPage() {
  auto* page = new QWidget;
  QVBoxLayout* column = MakePage(page, u"CMS"_s);
  cms_ = new QCheckBox(u"Enable CMS (Color Management System)."_s);
  cms_->setObjectName(u"chkcms"_s);
  column->addWidget(cms_);
  column->addWidget(look::Hint(u"1. Enabling CMS will slow down loading of images."_s));
  column->addWidget(look::Hint(
      u"2. CMS works only with JPEG and TIFF files that have an embedded ICC profile."_s));
  column->addStretch();
  return page;
}

QWidget* frmsettings::AssociationsPage() {
  constexpr int kColumns = 3;
  auto* page = new QWidget;
  QVBoxLayout* column = MakePage(page, u"File Associations"_s);
  column->addWidget(look::Hint(tr("Files of the ticked kinds open with Zolmira QM.")));
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  const auto kinds = FileKinds();
  const int rows = (static_cast<int>(kinds.size()) + kColumns - 1) / kColumns;
  for (int i = 0; i < static_cast<int>(kinds.size()); ++i) {
    const FileKind& kind = kinds[static_cast<std::size_t>(i)];
    auto* box = new QCheckBox(QString::fromUtf16(kind.caption));
    box->setChecked(IsAssociated(folders_, kind));
    grid->addWidget(box, i % rows, i / rows);
    kinds_.push_back(box);
    kindsBefore_.push_back(box->isChecked());
  }
  column->addLayout(grid);
  column->addStretch();
  return page;
}

void frmsettings::ShowSettings(const Settings& settings) {
  const int startup = IndexOf(kStartups, settings.StartupType, -1);
  if (startup >= 0) startup_->button(startup)->setChecked(true);
  const bool custom = settings.StartupType == u"Custom";
  customEdit_->setText(custom ? settings.StartupFolder : QString());
  customEdit_->setEnabled(custom);
  browseButton_->setEnabled(custom);
  rawView_->setCurrentIndex(IndexOf(kQualities, settings.RAWView, -1));
  rawBatch_->setCurrentIndex(IndexOf(kQualities, settings.RAWBatch, -1));
  if (const int balance = IndexOf(kWhiteBalances, settings.RAWWhiteBalance, -1); balance >= 0)
    whiteBalance_->button(balance)->setChecked(true);
  cms_->setChecked(settings.CMS == u"true");
}

Settings frmsettings::Chosen() const {
  Settings settings = session_.CurrentSettings();
  TakeChoice(kStartups, startup_->checkedId(), settings.StartupType);
  // Under the other types the column is the program's own memory.
  if (settings.StartupType == u"Custom") settings.StartupFolder = customEdit_->text().trimmed();
  TakeChoice(kQualities, rawView_->currentIndex(), settings.RAWView);
  TakeChoice(kQualities, rawBatch_->currentIndex(), settings.RAWBatch);
  TakeChoice(kWhiteBalances, whiteBalance_->checkedId(), settings.RAWWhiteBalance);
  settings.CMS = cms_->isChecked() ? u"true"_s : u"false"_s;
  return settings;
}

void frmsettings::Browse() {
  const QString folder =
      Pick({PickRequest::What::Folder, u"Select custom startup folder"_s, customEdit_->text(), {}});
  if (!folder.isEmpty()) customEdit_->setText(folder);
}

void frmsettings::cmdok_Click() {
  const Settings settings = Chosen();
  if (settings.StartupType == u"Custom" && settings.StartupFolder.isEmpty()) {
    MsgBox(u"No startup folder has been specified!"_s, MessageKind::Warning);
    pageList_->setCurrentRow(0);
    customEdit_->setFocus();
    return;
  }
  if (const Outcome changed = session_.ChangeSettings(settings); !changed) {
    MsgBox(u"The settings could not be saved: "_s + changed.Reason(), MessageKind::Warning);
    return;
  }
  std::vector<bool> ticked;
  for (const QCheckBox* box : kinds_)
    ticked.push_back(box->isChecked());
  if (ticked != kindsBefore_)
    if (const Outcome done = Associate(folders_, ticked, QCoreApplication::applicationFilePath());
        !done)
      MsgBox(u"The file associations could not be saved: "_s + done.Reason(), MessageKind::Warning);
  accept();
}

}  // namespace zqm
