// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>

#include "imaging/tiff_editor.h"

/// Tags set and removed by the first bytes of the input in the block that the rest is: what comes
/// out can be read again and says what was set last.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  using namespace zqm;
  constexpr size_t kSteps = 4, kStepBytes = 3;
  if (size < kSteps * kStepBytes) return 0;
  const auto block =
      QByteArray::fromRawData(reinterpret_cast<const char*>(data) + kSteps * kStepBytes,
                              static_cast<qsizetype>(size - kSteps * kStepBytes));
  auto editor = TiffEditor::Open(QByteArray(block.constData(), block.size()));
  if (!editor) return 0;
  struct Step {
    ExifTag tag;
    std::optional<TagValue> value;
  };
  std::vector<Step> steps;
  for (size_t i = 0; i < kSteps; ++i) {
    const unsigned char* step = data + i * kStepBytes;
    // Above the tags that describe the layout, which aren't the editor's to set.
    const ExifTag tag{static_cast<ExifGroup>(step[0] % 3), 0x9c00 + step[1]};
    if (step[2] & 1) {
      editor->Remove(tag);
      steps.push_back({tag, {}});
    } else {
      const auto count = static_cast<std::uint32_t>(step[2]);
      const TagValue value{2, count + 1, QByteArray(static_cast<qsizetype>(count), 'x') + '\0'};
      editor->Set(tag, value);
      steps.push_back({tag, value});
    }
  }
  (void)editor->Thumbnail();
  const auto again = TiffEditor::Open(editor->Take());
  if (!again) std::abort();
  for (size_t i = 0; i < steps.size(); ++i) {
    const bool last = std::none_of(steps.begin() + static_cast<std::ptrdiff_t>(i) + 1, steps.end(),
                                   [&](const Step& later) { return later.tag == steps[i].tag; });
    if (last && again->Get(steps[i].tag) != steps[i].value) std::abort();
  }
  return 0;
}
