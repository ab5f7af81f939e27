// The binary shape that automation hosts know: GUID, BSTR, VARIANT, IUnknown, IClassFactory, IDispatch.
//
// Only what this library needs, in the layout of 64-bit hosts. Interfaces are tables of functions in the order given
// here; the object's first word points to its table. Strings are UTF-16. A BSTR comes from the C heap with its length
// in bytes in front, so that host and library may free each other's. Nothing here throws.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace dorvo::automation {

using HRESULT = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using UINT = std::uint32_t;
using WORD = std::uint16_t;
using LCID = std::uint32_t;
using DISPID = std::int32_t;
using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using OLECHAR = char16_t;
using BSTR = OLECHAR*;

constexpr HRESULT hresult(std::uint32_t code) {
  return static_cast<HRESULT>(code);
}

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = hresult(0x80004001);
constexpr HRESULT E_NOINTERFACE = hresult(0x80004002);
constexpr HRESULT E_POINTER = hresult(0x80004003);
constexpr HRESULT E_FAIL = hresult(0x80004005);
constexpr HRESULT E_OUTOFMEMORY = hresult(0x8007000E);
constexpr HRESULT E_INVALIDARG = hresult(0x80070057);
constexpr HRESULT CLASS_E_NOAGGREGATION = hresult(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = hresult(0x80040111);
constexpr HRESULT CO_E_CLASSSTRING = hresult(0x800401F3);
constexpr HRESULT CO_E_OBJNOTCONNECTED = hresult(0x800401FD);
constexpr HRESULT SELFREG_E_CLASS = hresult(0x80040201);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = hresult(0x80020001);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = hresult(0x80020003);
constexpr HRESULT DISP_E_PARAMNOTFOUND = hresult(0x80020004);
constexpr HRESULT DISP_E_TYPEMISMATCH = hresult(0x80020005);
constexpr HRESULT DISP_E_UNKNOWNNAME = hresult(0x80020006);
constexpr HRESULT DISP_E_NONAMEDARGS = hresult(0x80020007);
constexpr HRESULT DISP_E_BADVARTYPE = hresult(0x80020008);
constexpr HRESULT DISP_E_EXCEPTION = hresult(0x80020009);
constexpr HRESULT DISP_E_OVERFLOW = hresult(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = hresult(0x8002000B);
constexpr HRESULT DISP_E_BADPARAMCOUNT = hresult(0x8002000E);
constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = hresult(0x8002000F);

constexpr bool failed(HRESULT code) {
  return code < 0;
}

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
  friend bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;

constexpr GUID GUID_NULL{0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
constexpr GUID IID_IUnknown{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID IID_IClassFactory{0x00000001, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID IID_IDispatch{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

enum : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000
};

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum : WORD { DISPATCH_METHOD = 1, DISPATCH_PROPERTYGET = 2, DISPATCH_PROPERTYPUT = 4, DISPATCH_PROPERTYPUTREF = 8 };
constexpr DISPID DISPID_UNKNOWN = -1;
constexpr DISPID DISPID_PROPERTYPUT = -3;

struct IUnknown {
  virtual HRESULT QueryInterface(const IID& iid, void** object) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};

struct IClassFactory : IUnknown {
  virtual HRESULT CreateInstance(IUnknown* outer, const IID& iid, void** object) = 0;
  virtual HRESULT LockServer(std::int32_t lock) = 0;

 protected:
  ~IClassFactory() = default;
};

struct IDispatch;

struct VARIANT {
  VARTYPE vt;
  WORD reserved1;  // of a VT_DECIMAL: scale in the low byte, sign in the high one
  WORD reserved2;
  WORD reserved3;  // with reserved2: the high 32 bits of a VT_DECIMAL
  union {
    std::int8_t cVal;
    std::uint8_t bVal;
    std::int16_t iVal;
    std::uint16_t uiVal;
    std::int32_t lVal;
    std::uint32_t ulVal;
    std::int64_t llVal;
    std::uint64_t ullVal;
    float fltVal;
    double dblVal;
    double date;
    std::int64_t cyVal;  // ten thousandths
    VARIANT_BOOL boolVal;
    HRESULT scode;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    VARIANT* pvarVal;
    void* byref;
    void* widest[2];
  };
};
static_assert(sizeof(VARIANT) == 24);

struct DISPPARAMS {
  VARIANT* rgvarg;  // last argument first
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  std::uint32_t dwHelpContext;
  void* pvReserved;
  HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
  HRESULT scode;
};

struct ITypeInfo;

struct IDispatch : IUnknown {
  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) = 0;
  virtual HRESULT GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID lcid, DISPID* ids) = 0;
  virtual HRESULT Invoke(DISPID id, const IID& iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                         EXCEPINFO* exception, UINT* bad_argument) = 0;

 protected:
  ~IDispatch() = default;
};

// ---- strings ----

inline BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  const std::size_t bytes = std::size_t{length} * sizeof(OLECHAR);
  auto* block = static_cast<char*>(std::malloc(sizeof(std::uint64_t) + bytes + sizeof(OLECHAR)));
  if (!block) return nullptr;
  char* start = block + sizeof(std::uint64_t);
  const auto told = static_cast<std::uint32_t>(bytes);
  std::memcpy(start - sizeof told, &told, sizeof told);
  if (text) std::memcpy(start, text, bytes);
  std::memset(start + bytes, 0, sizeof(OLECHAR));
  return reinterpret_cast<BSTR>(start);
}

inline void SysFreeString(BSTR text) {
  if (text) std::free(reinterpret_cast<char*>(text) - sizeof(std::uint64_t));
}

// In characters; 0 for no string.
inline UINT SysStringLen(const OLECHAR* text) {
  if (!text) return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const char*>(text) - sizeof bytes, sizeof bytes);
  return bytes / static_cast<UINT>(sizeof(OLECHAR));
}

// UTF-16 to UTF-8 and back; half a surrogate pair or a wrong byte becomes U+FFFD.
std::string utf8(std::u16string_view text);
std::u16string utf16(std::string_view text);

inline BSTR bstr(std::string_view text) {
  const std::u16string wide = utf16(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

}  // namespace dorvo::automation
