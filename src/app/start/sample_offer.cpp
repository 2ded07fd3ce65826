// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/sample_offer.h"

#include <QCoreApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "app/demo/draw_samples.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/window_settings.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QLatin1StringView kAskedKey("samples/offered");
constexpr int kDialogWidth = 380;

QString Tr(const char* text) {
  return QCoreApplication::translate("OfferSamples", text);
}

/// How far the drawing is. Closing it in whatever way ends the drawing.
class DrawingDialog : public QDialog {
 public:
  explicit DrawingDialog(QWidget* parent)
      : QDialog(parent), name_(look::Hint(QString())), bar_(new QProgressBar) {
    setObjectName(u"frmsamples"_s);
    setWindowTitle(QString::fromUtf16(kMessageTitle));
    setModal(true);
    setMinimumWidth(kDialogWidth);
    bar_->setTextVisible(false);
    bar_->setAccessibleName(Tr("Progress"));
    auto* cancel = new QPushButton(Tr("Cancel"));
    cancel->setObjectName(u"cmdcancel"_s);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* foot = new QHBoxLayout;
    look::SetSpace(foot, 0, look::kSpace8);
    foot->addWidget(name_, 1);
    foot->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    look::SetSpace(column, look::kSpace16, look::kSpace12);
    column->addWidget(new QLabel(Tr("Drawing sample photos…")));
    column->addWidget(bar_);
    column->addLayout(foot);
  }

  /// Whether to go on.
  bool Show(const demo::DrawProgress& progress) {
    bar_->setMaximum(progress.total);
    bar_->setValue(progress.done);
    name_->setText(GetBaseName(progress.path));
    QCoreApplication::processEvents();
    return isVisible();
  }

 private:
  QLabel* name_;
  QProgressBar* bar_;
};

}  // namespace

bool SamplesAreDue(Session& session) {
  return session.ActiveCatalogue().Photos().Count() == 0 &&
         !WindowSettings().value(kAskedKey).toBool();
}

QString SamplesFolder(const QString& home) {
  const QString pictures = home.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)
                               : home + u"/Pictures"_s;
  return pictures + u"/Zolmira QM Samples"_s;
}

QString OfferSamples(const QString& folder, QWidget* parent,
                     const std::vector<demo::Sample>& samples) {
  WindowSettings().setValue(kAskedKey, true);
  const QString question =
      Tr("Draw a few sample photos to try Zolmira QM with?\n\nThey will be put into:\n%1")
          .arg(folder);
  if (MsgBox(question, MessageKind::Question, Buttons::YesNo) != Answer::Yes) return QString();

  std::vector<demo::Sample> missing = samples;
  std::erase_if(missing, [&folder](const demo::Sample& sample) {
    return FileExists(folder + u'/' + QString::fromUtf16(sample.name));
  });
  DrawingDialog dialog(parent);
  dialog.show();
  const demo::DrawnSamples drawn = demo::DrawSamples(
      missing, folder,
      [&dialog](const demo::DrawProgress& progress) { return dialog.Show(progress); });
  dialog.hide();
  if (!drawn.failures.Empty()) ShowFailures(drawn.failures, parent);
  const bool anything = !drawn.paths.isEmpty() || missing.size() < samples.size();
  return anything ? folder : QString();
}

}  // namespace zqm
