// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that edit metadata.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "batch/ui/frmeditiptc.h"
#include "batch/ui/frmexif.h"
#include "metadata/exif_editor.h"
#include "metadata/iptc_editor.h"
#include "tests/batch/batch_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class MetadataWindows : public test::BatchTest {
 protected:
  template <class Window>
  void Open(const QStringList& photos, const std::map<int, QString>& texts) {
    window_ = std::make_unique<Window>(BatchPlace{TheCatalogue(), &view_, photos});
    window_->Fill(texts);
    window_->show();
  }
  template <class Widget>
  Widget* Find(const QString& name) {
    auto* widget = window_->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
  }
  static int Exif(QStringView caption) { return FindExifField(caption); }
  QWidget* Input(QStringView caption) { return Find<QWidget>(u"exif(%1)"_s.arg(Exif(caption))); }
  void Tick(QStringView caption) { Find<QCheckBox>(u"chkexif(%1)"_s.arg(Exif(caption)))->click(); }
  void Apply() { Find<QPushButton>(u"cmdapply"_s)->click(); }

  const test::ScopedLocale english_{"en_US"};
  std::unique_ptr<MetadataDialog> window_;
};

TEST_F(MetadataWindows, OnlyCheckedExifFieldsAreWritten) {
  const QString path = Photo("a/1.jpg");
  Open<frmexif>({path}, {{Exif(u"Camera Make"), u"not checked"_s},
                         {Exif(u"Camera Model"), u"4K"_s},
                         {Exif(u"Lens Aperture"), u"4"_s},
                         {Exif(u"Metering Mode"), u"Spot"_s},
                         {Exif(u"Date/Time Original"), u"2007:03:25 02:30:00"_s}});
  EXPECT_EQ(window_->windowTitle(), u"EXIF Editor"_s);
  for (const char16_t* caption : {u"Camera Model", u"Lens Aperture", u"Flash Mode",
                                  u"Metering Mode", u"Date/Time Original", u"Sensing Method"}) {
    EXPECT_FALSE(Input(caption)->isEnabled());
    Tick(caption);
    EXPECT_TRUE(Input(caption)->isEnabled());
  }
  EXPECT_EQ(qobject_cast<QComboBox*>(Input(u"Flash Mode"))->currentIndex(), -1);
  auto* aperture = qobject_cast<QLineEdit*>(Input(u"Lens Aperture"));
  aperture->clear();
  QTest::keyClicks(aperture, u"2x,.8"_s);
  EXPECT_EQ(aperture->text(), u"2.8"_s);
  auto* sensing = qobject_cast<QComboBox*>(Input(u"Sensing Method"));
  sensing->setCurrentText(u"Color sequential area sensor"_s);
  EXPECT_EQ(sensing->currentIndex(), 4);
  Apply();
  EXPECT_EQ(messages_, QStringList{u"Writing EXIF to file(s) completed."_s});
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(Stored(path, Column::CameraMake), QString());
  EXPECT_EQ(Stored(path, Column::CameraModel), u"4K"_s);
  EXPECT_EQ(Stored(path, Column::LensAperture), u"F/2.8"_s);
  EXPECT_EQ(Stored(path, Column::MeteringMode), u"Spot"_s);
  EXPECT_EQ(Stored(path, Column::DateTimeOriginal), u"2007:03:25 02:30:00"_s);
  EXPECT_EQ(Stored(path, Column::SensingMethod), QString());
  EXPECT_EQ(view_.told, QStringList{u"live"_s});
}

TEST_F(MetadataWindows, TheTwoTimesShareTheirOptions) {
  const QString path = Photo("a/1.jpg");
  Open<frmexif>({path}, {{Exif(u"Shutter Speed"), u"1/250"_s}, {Exif(u"Exposure Time"), u"2"_s}});
  auto* slow = Find<QRadioButton>(u"Option1"_s);
  auto* fast = Find<QRadioButton>(u"Option2"_s);
  EXPECT_TRUE(fast->isChecked());
  EXPECT_FALSE(slow->isEnabled());
  Tick(u"Exposure Time");
  EXPECT_TRUE(slow->isEnabled());
  Tick(u"Shutter Speed");
  Tick(u"Exposure Time");
  EXPECT_TRUE(slow->isEnabled());
  auto* seconds = Input(u"Shutter Speed")->findChild<QLineEdit*>(u"slow"_s);
  auto* denominator = Input(u"Shutter Speed")->findChild<QLineEdit*>(u"fast"_s);
  EXPECT_EQ(denominator->text(), u"250"_s);
  EXPECT_FALSE(seconds->isEnabled());
  slow->click();
  EXPECT_TRUE(seconds->isEnabled());
  EXPECT_FALSE(denominator->isEnabled());
  QTest::keyClicks(seconds, u"0.5"_s);
  fast->click();
  QTest::keyClicks(denominator, u".0"_s);
  EXPECT_EQ(denominator->text(), u"2500"_s);
  Apply();
  EXPECT_EQ(Stored(path, Column::ShutterSpeed), u"1/2500 sec"_s);
  EXPECT_EQ(Stored(path, Column::ExposureTime), QString());
}

TEST_F(MetadataWindows, IptcTextsKeepTheirLines) {
  const QString path = Photo("a/1.jpg");
  const int urgency = FindIptcField(u"Urgency"), caption = FindIptcField(u"Caption");
  Open<frmeditiptc>({path}, {{caption, u"Föhn\nover Graz"_s},
                             {urgency, u"5 (normal urgency)"_s},
                             {FindIptcField(u"City"), u"Graz"_s}});
  EXPECT_EQ(window_->windowTitle(), u"IPTC Editor"_s);
  Find<QCheckBox>(u"Check%1"_s.arg(caption + 1))->click();
  Find<QCheckBox>(u"Check%1"_s.arg(urgency + 1))->click();
  Apply();
  EXPECT_EQ(messages_, QStringList{u"Writing IPTC to file(s) completed."_s});
  EXPECT_EQ(Stored(path, Column::Caption), u"Föhn\nover Graz"_s);
  EXPECT_EQ(Stored(path, Column::Urgency), u"5 (normal urgency)"_s);
  EXPECT_EQ(Stored(path, Column::City), QString());
}

}  // namespace
}  // namespace zqm
