#include "automation/class_factory.h"

#include <map>
#include <new>

#include "automation/launcher_object.h"

namespace dorvo::automation {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const frame::LauncherClass& row) : row_(row) {}

  HRESULT QueryInterface(const IID& iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }

  HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    auto* launcher = new (std::nothrow) LauncherObject(row_);
    if (!launcher) return E_OUTOFMEMORY;
    const HRESULT code = launcher->QueryInterface(iid, object);
    launcher->Release();
    return code;
  }

  HRESULT LockServer(std::int32_t lock) override {
    if (lock) {
      ++held();
    } else if (held() > 0) {
      --held();
    }
    return S_OK;
  }

 private:
  const frame::LauncherClass& row_;
};

}  // namespace

IClassFactory& class_factory(const frame::LauncherClass& row) {
  static std::map<int, ClassFactory> factories;
  return factories.try_emplace(row.number, row).first->second;
}

}  // namespace dorvo::automation
