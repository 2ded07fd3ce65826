// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/batch_dialog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/messages.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"

using namespace Qt::StringLiterals;

namespace zqm {

BatchDialog::BatchDialog(BatchPlace place, const QString& caption, const char* labelName,
                         QWidget* parent)
    : QDialog(parent),
      place_(std::move(place)),
      caption_(caption),
      controls_(new QWidget),
      body_(new QVBoxLayout(controls_)),
      progress_(new RunProgress(labelName)),
      foot_(new QHBoxLayout),
      cancelButton_(new QPushButton(tr("Cancel"))) {
  setWindowTitle(caption_);
  cancelButton_->setObjectName(u"cmdcancel"_s);
  connect(cancelButton_, &QPushButton::clicked, this, &BatchDialog::reject);
  look::SetSpace(body_, 0, look::kSpace12);
  look::SetSpace(foot_, 0, look::kSpace8);
  foot_->addStretch();
  foot_->addWidget(cancelButton_);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addWidget(controls_, 1);
  column->addWidget(progress_);
  column->addLayout(foot_);
}

void BatchDialog::AddBelow(QWidget* widget) {
  static_cast<QVBoxLayout*>(layout())->insertWidget(1, widget, 1);
}

QString BatchDialog::PhotoCount() const {
  const auto count = static_cast<int>(place_.photos.size());
  return count == 1 ? tr("1 photo") : tr("%1 photos").arg(QLocale().toString(count));
}

QPushButton* BatchDialog::AddButton(const QString& caption, const char* name) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  foot_->addWidget(button);
  return button;
}

void BatchDialog::Run(const BatchTexts& texts, const QString& label, const Work& work,
                      const LabelOf& labelOf) {
  if (running_) return;
  SetRunning(true);
  progress_->Begin(label);
  const Result<BatchResult> result = work([&](const BatchProgress& at) {
    const QString text = labelOf && !at.path.isEmpty() ? labelOf(at) : QString();
    if (progress_->Show(at.done, at.total, text))
      setWindowTitle(QString::fromUtf16(texts.wait) + u" %1%"_s.arg(at.Percent()));
  });
  // What the user clicked and typed meanwhile was for locked controls.
  QCoreApplication::processEvents();
  SetRunning(false);
  progress_->End();
  if (!result)
    MsgBox(result.Reason(), MessageKind::Warning);
  else if (result->failures.Empty())
    MsgBox(QString::fromUtf16(texts.done), MessageKind::Information);
  else
    ShowFailures(result->failures, this);
  setWindowTitle(caption_);
  if (result) accept();
}

void BatchDialog::SetRunning(bool running) {
  running_ = running;
  controls_->setEnabled(!running);
  RunShown(running);
  for (int i = 0; i < foot_->count(); ++i)
    if (QWidget* button = foot_->itemAt(i)->widget()) button->setEnabled(!running);
}

void BatchDialog::reject() {
  if (!running_) QDialog::reject();
}

void BatchDialog::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
