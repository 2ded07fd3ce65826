// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "browser/window_state.h"
#include "tests/support/scratch.h"

namespace zqm {
namespace {

TEST(WindowState, TheThumbnailRecordIsThreeBytes) {
  const test::Scratch folder;
  EXPECT_EQ(GetThumbnailViewSetting(folder.Path()), ThumbnailRows::Single);
  EXPECT_EQ(test::Scratch::Read(folder.Path("Thumbnails.dat")), "TSi");
  ASSERT_TRUE(SaveThumbnailViewSetting(folder.Path(), ThumbnailRows::Multiple));
  EXPECT_EQ(test::Scratch::Read(folder.Path("Thumbnails.dat")), "TMu");
  EXPECT_EQ(GetThumbnailViewSetting(folder.Path()), ThumbnailRows::Multiple);
  // Only the first three bytes carry a meaning.
  folder.Write("Thumbnails.dat", "TMu and what another version wrote");
  EXPECT_EQ(GetThumbnailViewSetting(folder.Path()), ThumbnailRows::Multiple);
  for (const char* foreign : {"", "T", "tmu", "TXx"}) {
    folder.Write("Thumbnails.dat", foreign);
    EXPECT_EQ(GetThumbnailViewSetting(folder.Path()), ThumbnailRows::Single) << foreign;
    EXPECT_EQ(test::Scratch::Read(folder.Path("Thumbnails.dat")), "TSi") << foreign;
  }
}

TEST(WindowState, TheInterfaceRecordReadsAsWritten) {
  const test::Scratch folder;
  EXPECT_EQ(LoadMainInterfaceState(folder.Path()), MainInterfaceState());
  ASSERT_TRUE(SaveMainInterfaceState(folder.Path(), {}));
  EXPECT_EQ(test::Scratch::Read(folder.Path("MIS.dat")), "112");
  const MainInterfaceState other{false, InfoPage::Gps, true};
  ASSERT_TRUE(SaveMainInterfaceState(folder.Path(), other));
  EXPECT_EQ(test::Scratch::Read(folder.Path("MIS.dat")), "261");
  EXPECT_EQ(LoadMainInterfaceState(folder.Path()), other);
}

TEST(WindowState, WhatIsNoDigitIsTheDefault) {
  struct Case {
    const char* record;
    MainInterfaceState state;
  };
  const Case cases[] = {
      {"", {}},
      {"2", {false, InfoPage::Photo, false}},
      {"1x1", {true, InfoPage::Photo, true}},
      {"x4x", {true, InfoPage::Exif, false}},
      {"990", {true, InfoPage::Photo, false}},
      {"3\0001\n", {true, InfoPage::Photo, false}},
  };
  const test::Scratch folder;
  for (const Case& each : cases) {
    folder.Write("MIS.dat", each.record);
    EXPECT_EQ(LoadMainInterfaceState(folder.Path()), each.state) << each.record;
  }
}

}  // namespace
}  // namespace zqm
