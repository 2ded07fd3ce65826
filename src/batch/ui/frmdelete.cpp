// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmdelete.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "batch/delete_photos.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kWidth = 480;
constexpr int kLeastRows = 3, kMostRows = 8;
/// Nobody reads more names, and making rows takes time.
constexpr qsizetype kMostNames = 1000;

}  // namespace

frmdelete::frmdelete(BatchPlace place, const char16_t* question, QWidget* parent)
    : BatchDialog(std::move(place), u"Delete Photos"_s, "Label3", parent) {
  setObjectName(u"frmdelete"_s);
  setMinimumWidth(kWidth);
  auto* ask = new QLabel(QString::fromUtf16(question));
  ask->setObjectName(u"Label1"_s);
  ask->setWordWrap(true);
  auto* names = new QListWidget;
  names->setObjectName(u"List1"_s);
  names->setAccessibleName(tr("The photos"));
  names->setSelectionMode(QAbstractItemView::NoSelection);
  names->setUniformItemSizes(true);
  for (const QString& path : Photos().first(std::min(Photos().size(), kMostNames)))
    names->addItem(GetFileName(path));
  const auto rows = static_cast<int>(Photos().size());
  names->setMinimumHeight(look::ListHeight(std::min(rows, kLeastRows)));
  names->setMaximumHeight(look::ListHeight(std::min(rows, kMostRows)));
  auto* warning = new QLabel(QString::fromUtf16(delete_text::kForGood));
  warning->setObjectName(u"Label2"_s);
  warning->setProperty("role", u"warning"_s);
  warning->setWordWrap(true);
  Body()->addWidget(ask);
  Body()->addWidget(names, 1);
  Body()->addWidget(look::Hint(PhotoCount()));
  Body()->addWidget(warning);

  QPushButton* remove = AddButton(tr("&Remove"), "cmdremove");
  QPushButton* forGood = AddButton(tr("&Delete from Disk"), "cmddelete");
  connect(remove, &QPushButton::clicked, this,
          [this] { Guarded("frmdelete", "cmdremove_Click", [this] { cmdremove_Click(); }); });
  connect(forGood, &QPushButton::clicked, this,
          [this] { Guarded("frmdelete", "cmddelete_Click", [this] { cmddelete_Click(); }); });
  // Enter must not delete anything.
  for (QPushButton* button : {remove, forGood})
    button->setAutoDefault(false);
  CancelButton()->setDefault(true);
  CancelButton()->setFocus();
  // By itself a window takes two thirds of a small screen at most.
  resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

void frmdelete::cmddelete_Click() {
  Run(delete_text::kDelete, QString::fromUtf16(delete_text::kDelete.wait),
      [this](const BatchObserver& observer) {
        return DeletePhotos(TheCatalogue(), Photos(), View(), observer);
      });
}

void frmdelete::cmdremove_Click() {
  Run(delete_text::kRemove, QString::fromUtf16(delete_text::kRemove.wait),
      [this](const BatchObserver& observer) {
        return RemovePhotos(TheCatalogue(), Photos(), View(), observer);
      });
}

}  // namespace zqm
