// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>
#include <cstdlib>

#include "imaging/object_file.h"
#include "imaging/object_painter.h"

namespace {

// Texts are laid out with fonts, which need an application.
void StartApplication() {
  static int argc = 1;
  static char name[] = "fuzz_objects";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const QGuiApplication application(argc, argv);
}

}  // namespace

// What is read must be writable, read back as the same, and painted without harm.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  StartApplication();
  const auto file = zqm::DecodeObjects(
      QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  if (!file) return 0;
  const auto again = zqm::EncodeObjects(file->objects, file->surfaceSize);
  if (!again) std::abort();
  const auto same = zqm::DecodeObjects(*again);
  if (!same || !(same->objects == file->objects)) std::abort();
  QImage surface(64, 48, QImage::Format_RGB32);
  surface.fill(Qt::white);
  if (zqm::Merged(surface, file->objects).size() != surface.size()) std::abort();
  return 0;
}
