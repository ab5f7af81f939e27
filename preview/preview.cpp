#include "preview/preview.h"

#include <QApplication>
#include <QEventLoop>
#include <cstdlib>

#include "preview/qt_ports.h"
#include "value/failure.h"

namespace dorvo::preview {
namespace {

std::shared_ptr<QtPorts>& registered() {
  static std::shared_ptr<QtPorts> ports;
  return ports;
}

// Without a screen the window system would end the process.
bool has_screen() {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return true;
  }
  return false;
}

void make_application() {
  if (!has_screen())
    throw value::Failure(value::Error::EngineState,
                         "There is no screen for a preview; expected DISPLAY or WAYLAND_DISPLAY in the environment");
  static int count = 1;
  static char name[] = "dorvoform";
  static char* arguments[] = {name, nullptr};
  // Lives until the process ends: at exit the window system may be gone before it.
  auto* application = new QApplication(count, arguments);
  application->setQuitOnLastWindowClosed(false);
}

}  // namespace

void start() {
  if (registered()) return;
  if (!QApplication::instance()) make_application();
  registered() = std::make_shared<QtPorts>();
  frame::register_ports(registered());
}

void run() {
  if (open_windows() == 0) return;
  QEventLoop loop;
  registered()->window_closed = [&loop] {
    if (open_windows() == 0) loop.quit();
  };
  loop.exec();
  registered()->window_closed = {};
}

void turn() {
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::size_t open_windows() {
  return registered() ? registered()->windows().size() : 0;
}

}  // namespace dorvo::preview
