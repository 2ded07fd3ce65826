// SPDX-License-Identifier: GPL-3.0-or-later
// What printing says, odd spelling included.
#pragma once

namespace zqm::print_text {

// Templates
inline constexpr char16_t kNotLocated[] =
    u"Cannot locate the selected template in Zolmira QM printing templates folder.";
inline constexpr char16_t kNotLoaded[] =
    u"Some files for the selected template are missing or corrupted.\n"
    u"Cannot load the selected template.";
inline constexpr char16_t kCannotLocate[] =
    u"Cannot locate %1\nSome files for the selected template are missing or corrupted.";
inline constexpr char16_t kLoading[] = u"Loading template. Please wait...";
inline constexpr char16_t kNoBoxes[] =
    u"The template must contain at least one picture box before it can be saved.";
inline constexpr char16_t kOutsidePaper[] =
    u"One or more picture boxes are found outside or too close to the border of the paper.";

// Boxes
inline constexpr char16_t kRemoveAll[] = u"Remove all picture boxes from the template?";
inline constexpr char16_t kRemoving[] = u"Removing picture boxe(s). Please wait...";
inline constexpr char16_t kSendingBack[] = u"Sending picture boxe(s) to back. Please wait...";
inline constexpr char16_t kBringingFront[] = u"Bringing picture boxe(s) to front. Please wait...";
inline constexpr char16_t kAdjustingBoxes[] =
    u"Adjusting position of picture boxes. Please wait...";

// Paper
inline constexpr char16_t kAdjustingPaper[] = u"Adjusting paper size. Please wait...";
inline constexpr char16_t kInvalidWidth[] = u"Invalid paper width.";
inline constexpr char16_t kInvalidHeight[] = u"Invalid paper height.";
inline constexpr char16_t kNarrowMillimetres[] = u"Paper width should be at least %1 mm.";
inline constexpr char16_t kLowMillimetres[] = u"Paper height should be at least 127 mm.";
inline constexpr char16_t kNarrowInches[] = u"Paper width should be at least 3 inches.";
inline constexpr char16_t kLowInches[] = u"Paper width should be at least 5 inches.";

// Pages
inline constexpr char16_t kPageTooNarrow[] =
    u"The selected template was desiged to be used on a page having a minimum width of %1 inches "
    u"(%2 mode).\nThe current page width is only %3 inches. \n"
    u"Adjust your page width and apply the template again.";
inline constexpr char16_t kPageTooLow[] =
    u"The selected template was desiged to be used on a page having a minimum height of %1 inches "
    u"(%2 mode).\nThe current page height is only %3 inches. \n"
    u"Adjust your page height and apply the template again.";
inline constexpr char16_t kBadCopies[] =
    u"Number of copies to be printed should be a numeric value and equal to or greater than 1.";
inline constexpr char16_t kPreparing[] = u"Preparing to print images. Please wait...";
inline constexpr char16_t kPrinted[] = u"You have successfully printed your pictures.";

}  // namespace zqm::print_text
