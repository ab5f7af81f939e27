// What libDorvoPreview.so exports.
#include <cstring>

#include "preview/qt_windows.h"

extern "C" __attribute__((visibility("default"))) dorvo::frame::Windows* dorvo_windows(const char* version) {
  if (std::strcmp(version, DORVO_VERSION) != 0) return nullptr;
  static const std::shared_ptr<dorvo::preview::QtWindows> windows = dorvo::preview::start();
  return windows.get();
}
