// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/frmhelp.h"

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QImage>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QVBoxLayout>

#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

/// What lies in a static library isn't there by itself; outside of any namespace, as the macro wants.
static void InitGuide() {
  Q_INIT_RESOURCE(guide);
}

namespace zqm {
namespace {

constexpr QSize kUsualSize{840, 760};
constexpr int kPictureWidth = 720;

/// As writers of links in such texts expect it: "Moving, renaming and deleting" is
/// "moving-renaming-and-deleting".
QString LinkOf(const QString& heading) {
  QString link;
  for (const QChar c : heading.toLower()) {
    if (c.isLetterOrNumber() || c == u'-') link.append(c);
    if (c == u' ') link.append(u'-');
  }
  return link;
}

}  // namespace

GuideText::GuideText(const QUrl& source, QWidget* parent) : QTextBrowser(parent) {
  setOpenLinks(false);
  document()->setDocumentMargin(look::kSpace24);
  setSource(source, QTextDocument::MarkdownResource);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    if (!ShowHeading(link.fragment()) && !link.isRelative()) QDesktopServices::openUrl(link);
  });
}

bool GuideText::ShowHeading(const QString& link) {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0 || LinkOf(block.text()) != link) continue;
    const QRectF place = document()->documentLayout()->blockBoundingRect(block);
    verticalScrollBar()->setValue(qRound(place.top()) - look::kSpace8);
    return true;
  }
  return false;
}

QVariant GuideText::loadResource(int type, const QUrl& name) {
  const QVariant loaded = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource) return loaded;
  QImage picture = loaded.value<QImage>();
  if (picture.isNull()) picture.loadFromData(loaded.toByteArray());
  const int width = qRound(kPictureWidth * devicePixelRatioF());
  if (picture.width() > width) picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
  picture.setDevicePixelRatio(devicePixelRatioF());
  return picture;
}

frmhelp::frmhelp(QWidget* parent) : QDialog(parent) {
  InitGuide();
  setObjectName(u"frmhelp"_s);
  setWindowTitle(tr("Zolmira QM Guide"));
  auto* text = new GuideText(QUrl(u"qrc:/guide/user-guide.md"_s));
  text->setObjectName(u"guide"_s);
  text->setAccessibleName(windowTitle());
  look::MakeBare(text);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, 0);
  column->addWidget(text);
  resize(kUsualSize.boundedTo(screen()->availableGeometry().size() * 0.9));
}

}  // namespace zqm
