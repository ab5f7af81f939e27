// A host of the tests: objects by class name, calls by name, VARIANTs of every kind.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "automation/com.h"
#include "automation/host_entry.h"

namespace dorvo::automation {

// A VARIANT that frees its string.
struct Value : VARIANT {
  Value() : VARIANT{} {}
  Value(Value&& other) noexcept : VARIANT(other) { other.vt = VT_EMPTY; }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  ~Value() {
    if (vt == VT_BSTR) SysFreeString(bstrVal);
  }
};

inline Value of_kind(VARTYPE kind) {
  Value value;
  value.vt = kind;
  return value;
}
inline Value text(std::string_view utf8_text) {
  Value value = of_kind(VT_BSTR);
  value.bstrVal = bstr(utf8_text);
  return value;
}
inline Value boolean(VARIANT_BOOL flag) {
  Value value = of_kind(VT_BOOL);
  value.boolVal = flag;
  return value;
}
inline Value whole(std::int32_t number) {
  Value value = of_kind(VT_I4);
  value.lVal = number;
  return value;
}
inline Value reference(VARTYPE kind, void* to) {
  Value value = of_kind(static_cast<VARTYPE>(kind | VT_BYREF));
  value.byref = to;
  return value;
}
inline Value object(IDispatch* dispatch) {
  Value value = of_kind(VT_DISPATCH);
  value.pdispVal = dispatch;
  return value;
}

// What an Invoke came to.
struct Answer {
  HRESULT code = S_OK;
  HRESULT scode = S_OK;
  std::string source;
  std::string description;
  Value result;
};

class Caller {
 public:
  explicit Caller(const std::string& class_name) {
    CLSID clsid{};
    EXPECT_EQ(DorvoClassID(("DorvoFormDLL." + class_name).c_str(), &clsid), S_OK);
    void* factory = nullptr;
    EXPECT_EQ(DllGetClassObject(clsid, IID_IClassFactory, &factory), S_OK);
    void* created = nullptr;
    EXPECT_EQ(static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, IID_IDispatch, &created), S_OK);
    object_ = static_cast<IDispatch*>(created);
  }
  explicit Caller(IDispatch* object) : object_(object) {}
  Caller(const Caller&) = delete;
  Caller& operator=(const Caller&) = delete;
  ~Caller() { object_->Release(); }

  IDispatch& operator*() const { return *object_; }
  IDispatch* operator->() const { return object_; }

  DISPID id(const std::string& name) const {
    std::u16string wide = utf16(name);
    OLECHAR* names[] = {wide.data()};
    DISPID found = DISPID_UNKNOWN;
    object_->GetIDsOfNames(GUID_NULL, names, 1, 0, &found);
    return found;
  }

  Answer invoke(DISPID member, WORD flags, VARIANT* arguments, UINT count) const {
    DISPID named = DISPID_PROPERTYPUT;
    const bool is_put = flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPPARAMS params{arguments, is_put ? &named : nullptr, count, is_put && count ? 1u : 0u};
    EXCEPINFO exception{};
    Answer answer;
    answer.code = object_->Invoke(member, GUID_NULL, 0, flags, &params, &answer.result, &exception, nullptr);
    answer.scode = exception.scode;
    answer.source = taken(exception.bstrSource);
    answer.description = taken(exception.bstrDescription);
    return answer;
  }
  Answer put(const std::string& name, const VARIANT& value) const {
    VARIANT argument = value;
    return invoke(id(name), DISPATCH_PROPERTYPUT, &argument, 1);
  }
  Answer put_reference(const std::string& name, const VARIANT& value) const {
    VARIANT argument = value;
    return invoke(id(name), DISPATCH_PROPERTYPUTREF, &argument, 1);
  }
  Answer get(const std::string& name) const { return invoke(id(name), DISPATCH_PROPERTYGET, nullptr, 0); }
  Answer call(const std::string& name) const { return invoke(id(name), DISPATCH_METHOD, nullptr, 0); }

 private:
  static std::string taken(BSTR text) {
    std::string out = utf8({text ? text : u"", SysStringLen(text)});
    SysFreeString(text);
    return out;
  }

  IDispatch* object_ = nullptr;
};

}  // namespace dorvo::automation
