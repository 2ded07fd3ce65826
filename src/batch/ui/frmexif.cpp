// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmexif.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <algorithm>

#include "batch/edit_metadata.h"
#include "shell/locale_info.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Takes the keys that its filter lets pass.
class FilteredEdit : public QLineEdit {
 public:
  explicit FilteredEdit(KeyFilter filter) : filter_(filter) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const QString typed = event->text();
    const QChar separator = GetUserLocaleInfo(LocaleInfo::DecimalSeparator).front();
    if (typed.size() == 1 && typed.front().isPrint() &&
        !KeyPasses(filter_, typed.front(), separator))
      return event->accept();
    QLineEdit::keyPressEvent(event);
  }

 private:
  KeyFilter filter_;
};

struct Page {
  const char16_t* caption;
  std::vector<int> fields;
};

/// In the order of the camera's work.
const std::vector<Page>& Pages() {
  static const std::vector<Page> pages = {
      {u"Description", {0, 1, 2, 3, 4, 5, 18, 19, 20}},
      {u"Exposure", {6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}},
      {u"Scene", {21, 22, 23, 24, 25, 26, 27, 28, 29, 30}},
      {u"Sensor", {31, 32, 33, 34, 35, 36, 37}},
  };
  return pages;
}

}  // namespace

/// Seconds of a slow shutter and, beside it, the denominator of a fast one.
class ShutterInput : public QWidget {
 public:
  explicit ShutterInput(const ExifField& field)
      : seconds_(new FilteredEdit(KeyFilterOf(field))),
        denominator_(new FilteredEdit(KeyFilterOf(field, true))) {
    auto* row = new QHBoxLayout(this);
    look::SetSpace(row, 0, look::kSpace8);
    row->addWidget(seconds_, 1);
    row->addWidget(look::Caption(u"sec"_s));
    row->addSpacing(look::kSpace16);
    row->addWidget(look::Caption(u"1/"_s));
    row->addWidget(denominator_, 1);
    row->addWidget(look::Caption(u"sec"_s));
    const QString caption = QString::fromUtf16(field.caption);
    seconds_->setAccessibleName(caption + u", seconds"_s);
    seconds_->setObjectName(u"slow"_s);
    denominator_->setAccessibleName(caption + u", one over"_s);
    denominator_->setObjectName(u"fast"_s);
    Choose(false);
  }
  void Choose(bool fast) {
    seconds_->setEnabled(!fast);
    denominator_->setEnabled(fast);
  }
  QString Text() const {
    return denominator_->isEnabledTo(this) ? FastShutter(denominator_->text()) : seconds_->text();
  }
  void SetText(const QString& text) {
    const bool fast = IsFast(text);
    denominator_->setText(fast ? FastDenominator(text) : QString());
    seconds_->setText(fast ? QString() : text);
  }

 private:
  QLineEdit* seconds_;
  QLineEdit* denominator_;
};

const MetadataDialog::Names frmexif::kNames = {"frmexif", u"EXIF Editor", "TabStrip2",
                                               metadata_text::kExif};

frmexif::frmexif(BatchPlace place, QWidget* parent)
    : MetadataDialog(kNames, std::move(place), parent),
      slow_(new QRadioButton(u"Slow Shutter Speed"_s)),
      fast_(new QRadioButton(u"Fast Shutter Speed"_s)) {
  for (const Page& page : Pages()) {
    QGridLayout* grid = AddPage(page.caption);
    for (const int index : page.fields) {
      const ExifField& field = ExifEditFields()[static_cast<std::size_t>(index)];
      if (field.kind == ExifKind::Shutter) AddOptions(grid);
      QCheckBox* box = AddField(grid, index, field.caption, u"chkexif(%1)"_s.arg(index),
                                MakeInput(index), "exif");
      if (!times_.contains(index)) continue;
      timeBoxes_[index] = box;
      connect(box, &QCheckBox::toggled, this, &frmexif::chkexif_Click);
    }
  }
  chkexif_Click();
  Finish();
}

QWidget* frmexif::MakeInput(int index) {
  const ExifField& field = ExifEditFields()[static_cast<std::size_t>(index)];
  switch (field.kind) {
    case ExifKind::Shutter:
    case ExifKind::Exposure:
      return times_[index] = new ShutterInput(field);
    case ExifKind::List:
      return MakeList(ListItems(field));
    case ExifKind::Date: {
      auto* time = new QDateTimeEdit;
      time->setTimeSpec(Qt::UTC);
      const QDateTime now = QDateTime::currentDateTime();
      time->setDateTime(QDateTime(now.date(), now.time(), Qt::UTC));
      time->setDisplayFormat(u"yyyy-MM-dd HH:mm:ss"_s);
      time->setCalendarPopup(true);
      return time;
    }
    default:
      return new FilteredEdit(KeyFilterOf(field));
  }
}

void frmexif::AddOptions(QGridLayout* page) {
  slow_->setObjectName(u"Option1"_s);
  fast_->setObjectName(u"Option2"_s);
  slow_->setChecked(true);
  connect(fast_, &QRadioButton::toggled, this, &frmexif::Option_Click);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace16);
  row->addWidget(slow_);
  row->addWidget(fast_);
  row->addStretch();
  page->addLayout(row, page->rowCount(), 1);
}

/// The two times share their options.
void frmexif::chkexif_Click() {
  const bool any =
      std::ranges::any_of(timeBoxes_, [](const auto& entry) { return entry.second->isChecked(); });
  slow_->setEnabled(any);
  fast_->setEnabled(any);
}

void frmexif::Option_Click() {
  for (const auto& [index, input] : times_)
    input->Choose(fast_->isChecked());
}

void frmexif::Fill(const std::map<int, QString>& texts) {
  MetadataDialog::Fill(texts);
  for (const auto& [index, input] : times_) {
    const auto text = texts.find(index);
    if (text == texts.end()) continue;
    input->SetText(text->second);
    if (IsFast(text->second)) fast_->setChecked(true);
  }
}

QString frmexif::TypedText(int index) const {
  const auto time = times_.find(index);
  return time == times_.end() ? MetadataDialog::TypedText(index) : time->second->Text();
}

BatchResult frmexif::Write(const BatchObserver& observer) {
  return ApplyExif(TheCatalogue(), Photos(), Edit(), View(), observer);
}

}  // namespace zqm
