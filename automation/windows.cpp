#include "automation/windows.h"

#include <dlfcn.h>

#include "automation/library.h"

namespace dorvo::automation {
namespace {

frame::Windows* loaded = nullptr;

[[noreturn]] void fail(const std::string& why) {
  throw value::Failure(value::Error::EngineState, std::string("No window can be opened: ") + why);
}

frame::MakeWindows maker() {
  // Never unloaded: windows and finished pages may live as long as the process.
  void* library = dlopen(frame::kWindowLibrary, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) fail(dlerror());
  void* entry = dlsym(library, frame::kMakeWindows);
  if (!entry) fail(std::string(frame::kWindowLibrary) + " has no " + frame::kMakeWindows);
  return reinterpret_cast<frame::MakeWindows>(entry);
}

}  // namespace

frame::Windows& load_windows() {
  if (loaded) return *loaded;
  start_library();
  frame::Windows* made = maker()(DORVO_VERSION);
  if (!made) fail(std::string(frame::kWindowLibrary) + " is of another version, " + DORVO_VERSION + " was expected");
  frame::register_ports(std::shared_ptr<frame::Ports>(made, [](frame::Ports*) {}));  // it is the process's
  loaded = made;
  return *loaded;
}

frame::Windows* loaded_windows() {
  return loaded;
}

}  // namespace dorvo::automation
