#include "automation/object.h"

#include <deque>
#include <memory>
#include <new>

#include "automation/class_ids.h"
#include "automation/variants.h"

namespace dorvo::automation {
namespace {

constexpr std::uint32_t kFailureCodes = 0x800A0000;  // a failure's number is added

void keep_shell(Object* object) {
  static std::deque<std::unique_ptr<Object>> shells;
  shells.emplace_back(object);
  if (shells.size() > kShells) shells.pop_front();
}

// The calls of one member hold the object: a host may release it from within.
class Hold {
 public:
  explicit Hold(IUnknown& object) : object_(object) { object_.AddRef(); }
  ~Hold() { object_.Release(); }
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;

 private:
  IUnknown& object_;
};

bool names_a_put(const DISPPARAMS& params) {
  return params.cNamedArgs == 1 && params.rgdispidNamedArgs && params.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
}

HRESULT check_arguments(const DISPPARAMS& params, bool is_put) {
  if (params.cArgs > 0 && !params.rgvarg) return E_INVALIDARG;
  if (params.cArgs != (is_put ? 1u : 0u)) return DISP_E_BADPARAMCOUNT;
  if (params.cNamedArgs > 0 && !(is_put && names_a_put(params))) return DISP_E_NONAMEDARGS;
  return S_OK;
}

}  // namespace

LONG& held() {
  static LONG count = 0;
  return count;
}

HRESULT exception_of(const value::Failure& failure, EXCEPINFO* exception) {
  if (exception) {
    *exception = {};
    exception->bstrSource = bstr(kLibraryName);
    exception->bstrDescription = bstr(failure.description());
    exception->scode = hresult(kFailureCodes | static_cast<std::uint32_t>(failure.number()));
  }
  return DISP_E_EXCEPTION;
}

Object::Object() {
  ++held();
}

HRESULT Object::QueryInterface(const IID& iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (references_ == 0) return CO_E_OBJNOTCONNECTED;
  if (iid != IID_IUnknown && iid != IID_IDispatch && !has_interface(iid)) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IDispatch*>(this);
  return S_OK;
}

ULONG Object::AddRef() {
  return references_ == 0 ? 0 : ++references_;
}

ULONG Object::Release() {
  if (references_ == 0 || --references_ > 0) return references_;
  --held();
  drop();
  keep_shell(this);
  return 0;
}

HRESULT Object::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return references_ == 0 ? CO_E_OBJNOTCONNECTED : S_OK;
}

HRESULT Object::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  return references_ == 0 ? CO_E_OBJNOTCONNECTED : DISP_E_BADINDEX;
}

HRESULT Object::GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID, DISPID* ids) {
  if (references_ == 0) return CO_E_OBJNOTCONNECTED;
  if (iid != GUID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0 || !names[0]) return E_INVALIDARG;
  ids[0] = find(utf8(names[0]));
  for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;  // no argument of ours has a name
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT Object::Invoke(DISPID id, const IID& iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                       EXCEPINFO* exception, UINT* bad_argument) {
  if (references_ == 0) return CO_E_OBJNOTCONNECTED;
  if (iid != GUID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!params) return E_INVALIDARG;
  const Hold hold(*this);
  try {
    return dispatch(id, flags, *params, result, bad_argument);
  } catch (const value::Failure& failure) {
    return exception_of(failure, exception);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    return exception_of({value::Error::EngineState, error.what()}, exception);
  }
}

HRESULT Object::dispatch(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result, UINT* bad_argument) {
  if (result) *result = {};
  if (!has(id)) return DISP_E_MEMBERNOTFOUND;
  const bool is_put = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
  if (const HRESULT code = check_arguments(params, is_put); failed(code)) return code;
  if (is_put) {
    const HRESULT code = put(id, params.rgvarg[0], flags);
    if (bad_argument && (code == DISP_E_TYPEMISMATCH || code == DISP_E_PARAMNOTOPTIONAL)) *bad_argument = 0;
    return code;
  }
  if (flags & DISPATCH_PROPERTYGET) {
    value::Variant value;
    const HRESULT code = get(id, value);
    if (code != DISP_E_MEMBERNOTFOUND || !(flags & DISPATCH_METHOD)) {
      if (!failed(code) && result) *result = write_variant(value);
      return code;
    }
  }
  return flags & DISPATCH_METHOD ? call(id) : DISP_E_MEMBERNOTFOUND;
}

}  // namespace dorvo::automation
