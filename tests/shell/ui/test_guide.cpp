// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFile>
#include <QRegularExpression>
#include <QScrollBar>

#include "shell/ui/frmhelp.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

QStringList Found(const QString& text, const QString& pattern) {
  QStringList found;
  for (auto match = QRegularExpression(pattern).globalMatch(text); match.hasNext();)
    found.append(match.next().captured(1));
  return found;
}

TEST(Guide, EachLinkLeadsToItsHeadingAndEachPictureIsThere) {
  frmhelp window;
  window.show();
  auto* text = window.findChild<GuideText*>(u"guide"_s);
  ASSERT_NE(text, nullptr);
  QFile source(u":/guide/user-guide.md"_s);
  ASSERT_TRUE(source.open(QFile::ReadOnly));
  const QString guide = QString::fromUtf8(source.readAll());

  const QStringList links = Found(guide, u"\\]\\(#([^)]+)\\)"_s);
  EXPECT_GT(links.size(), 10);
  int last = 0;
  for (const QString& link : links) {
    EXPECT_TRUE(text->ShowHeading(link)) << qUtf8Printable(link);
    EXPECT_GE(text->verticalScrollBar()->value(), last) << "the list is in another order";
    last = text->verticalScrollBar()->value();
  }
  EXPECT_GT(last, 0);
  EXPECT_FALSE(text->ShowHeading(u"nowhere"_s));

  const QStringList pictures = Found(guide, u"!\\[[^]]*\\]\\(([^)]+)\\)"_s);
  EXPECT_GT(pictures.size(), 5);
  for (const QString& picture : pictures) {
    const QImage shown =
        text->document()
            ->resource(QTextDocument::ImageResource, text->source().resolved(QUrl(picture)))
            .value<QImage>();
    EXPECT_FALSE(shown.isNull()) << qUtf8Printable(picture);
    EXPECT_LE(shown.width(), text->viewport()->width() * shown.devicePixelRatio());
  }
}

}  // namespace
}  // namespace zqm
