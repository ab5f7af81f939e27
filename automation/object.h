// What all automation objects of the library share: counting, names, checks of a call, failures to error codes.
//
// A released object stays behind as an empty shell for a while (the last kShells of them), so that a host that uses it
// after its release gets CO_E_OBJNOTCONNECTED. One thread, that of the host.
#pragma once

#include "automation/com.h"
#include "value/failure.h"
#include "value/variant.h"

namespace dorvo::automation {

// Objects and locks that hosts hold; the library may be unloaded when there are none.
LONG& held();

constexpr std::size_t kShells = 256;

// A failure of the library as a host gets it: DISP_E_EXCEPTION with number and description in `exception`.
HRESULT exception_of(const value::Failure& failure, EXCEPINFO* exception);

class Object : public IDispatch {
 public:
  Object();
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  HRESULT QueryInterface(const IID& iid, void** object) final;
  ULONG AddRef() final;
  ULONG Release() final;
  HRESULT GetTypeInfoCount(UINT* count) final;
  HRESULT GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) final;
  HRESULT GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID lcid, DISPID* ids) final;
  HRESULT Invoke(DISPID id, const IID& iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* bad_argument) final;

  virtual ~Object() = default;  // behind the interface in the table of functions, where no host looks

 protected:
  // The object's own interface beside IUnknown and IDispatch.
  virtual bool has_interface(const IID& iid) const = 0;
  virtual DISPID find(std::string_view name) const = 0;  // DISPID_UNKNOWN when there is none
  virtual bool has(DISPID id) const = 0;

  // The three ways to use a member. DISP_E_MEMBERNOTFOUND when the member cannot be used so. They may throw a Failure.
  virtual HRESULT call(DISPID id) = 0;
  virtual HRESULT get(DISPID id, value::Variant& value) = 0;
  // `flags` tell by value, by reference, or either.
  virtual HRESULT put(DISPID id, const VARIANT& argument, WORD flags) = 0;

  virtual void drop() = 0;  // lets go of what the object holds, at its last release

 private:
  HRESULT dispatch(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result, UINT* bad_argument);

  ULONG references_ = 1;
};

}  // namespace dorvo::automation
