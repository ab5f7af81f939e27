// The four functions of an automation server.
#include <dlfcn.h>

#include <climits>
#include <cstdlib>

#include "automation/class_factory.h"
#include "automation/class_ids.h"
#include "automation/host_entry.h"
#include "automation/library.h"
#include "automation/object.h"
#include "automation/registration.h"

namespace dorvo::automation {
namespace {

// The file that this code was loaded from.
std::string library_file() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&DllCanUnloadNow), &info) == 0 || !info.dli_fname) return {};
  char path[PATH_MAX];
  return realpath(info.dli_fname, path) ? path : info.dli_fname;
}

HRESULT registered(void (*action)(const std::string&)) {
  return guarded(SELFREG_E_CLASS, [&] { action(library_file()); });
}

}  // namespace
}  // namespace dorvo::automation

using namespace dorvo::automation;

HRESULT DllGetClassObject(const CLSID& clsid, const IID& iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (const HRESULT code = guarded(E_FAIL, start_library); failed(code)) return code;
  const dorvo::frame::LauncherClass* row = class_of(clsid);
  return row ? class_factory(*row).QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT DllCanUnloadNow() {
  return held() == 0 ? S_OK : S_FALSE;
}

HRESULT DllRegisterServer() {
  return registered(register_classes);
}

HRESULT DllUnregisterServer() {
  return registered(unregister_classes);
}
