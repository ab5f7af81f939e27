#include "preview/screen.h"

#include <dlfcn.h>

#include <QApplication>
#include <cstdlib>
#include <memory>
#include <string>

#include "value/failure.h"

namespace dorvo::preview {
namespace {

using value::Error;
using value::Failure;

std::string variable(const char* name) {
  const char* text = std::getenv(name);
  return text ? text : "";
}

// Whether the X server that DISPLAY names answers. Without the library that asks, it is taken to.
bool x_answers() {
  const std::unique_ptr<void, int (*)(void*)> xcb(dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL),
                                                  [](void* library) { return library ? dlclose(library) : 0; });
  if (!xcb) return true;
  using Connect = void* (*)(const char*, int*);
  using HasError = int (*)(void*);
  using Disconnect = void (*)(void*);
  const auto connect = reinterpret_cast<Connect>(dlsym(xcb.get(), "xcb_connect"));
  const auto has_error = reinterpret_cast<HasError>(dlsym(xcb.get(), "xcb_connection_has_error"));
  const auto disconnect = reinterpret_cast<Disconnect>(dlsym(xcb.get(), "xcb_disconnect"));
  if (!connect || !has_error || !disconnect) return true;
  void* connection = connect(nullptr, nullptr);
  const bool answers = has_error(connection) == 0;
  disconnect(connection);
  return answers;
}

void need_screen() {
  if (!variable("QT_QPA_PLATFORM").empty() || !variable("WAYLAND_DISPLAY").empty()) return;
  const std::string display = variable("DISPLAY");
  if (display.empty()) throw Failure(Error::EngineState, "No window can be opened: DISPLAY is not set");
  if (!x_answers())
    throw Failure(Error::EngineState, "No window can be opened: display " + display + " does not answer");
}

}  // namespace

void need_application() {
  if (QCoreApplication* host = QCoreApplication::instance()) {
    if (dynamic_cast<QApplication*>(host)) return;
    throw Failure(Error::EngineState, "No window can be opened: the host's application object is no QApplication");
  }
  need_screen();
  static int count = 1;
  static char name[] = "dorvoform";
  static char* arguments[] = {name, nullptr};
  // Lives until the process ends: windows may be open until then.
  static QApplication* const kOurs = new QApplication(count, arguments);
  kOurs->setQuitOnLastWindowClosed(false);
}

}  // namespace dorvo::preview
