// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/run_progress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

#include "shell/busy.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kYieldMilliseconds = 30;

}  // namespace

RunProgress::RunProgress(const char* textName, QWidget* parent)
    : QWidget(parent), text_(new QLabel), count_(new QLabel), bar_(new QProgressBar) {
  setObjectName(u"Frame1"_s);
  text_->setObjectName(QString::fromLatin1(textName));
  text_->setTextFormat(Qt::PlainText);
  text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  count_->setObjectName(u"lblcount"_s);
  bar_->setObjectName(u"ProgressBar1"_s);
  bar_->setTextVisible(false);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, look::kSpace4);
  auto* words = new QHBoxLayout;
  look::SetSpace(words, 0, look::kSpace16);
  words->addWidget(text_, 1);
  words->addWidget(count_);
  column->addLayout(words);
  column->addWidget(bar_);
  hide();
}

void RunProgress::Begin(const QString& text) {
  text_->setText(text);
  count_->clear();
  bar_->setRange(0, 0);
  show();
  sinceYield_.start();
  YieldToInterface();
}

bool RunProgress::Show(int done, int total, const QString& text) {
  if (sinceYield_.elapsed() < kYieldMilliseconds && done > 0 && done < total) return false;
  bar_->setRange(0, total);
  bar_->setValue(done);
  count_->setText(tr("%1 of %2").arg(done).arg(total));
  if (!text.isEmpty())
    text_->setText(text_->fontMetrics().elidedText(text, Qt::ElideMiddle, text_->width()));
  YieldToInterface();
  sinceYield_.restart();
  return true;
}

void RunProgress::End() {
  hide();
  text_->clear();
}

}  // namespace zqm
