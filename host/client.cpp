#include "host/client.h"

#include <cstring>

#include "automation/host_entry.h"

namespace dorvo::host {
namespace {

using namespace automation;

// Numbers of failures that say: the value is of the wrong kind.
constexpr HRESULT kFailureCodes = hresult(0x800A0000);
constexpr bool is_wrong_value(HRESULT code) {
  return code == (kFailureCodes | 6) || code == (kFailureCodes | 13) || code == (kFailureCodes | 94);
}

struct Answer {
  HRESULT code = S_OK;
  HRESULT number = S_OK;  // of the failure behind DISP_E_EXCEPTION
  std::string description;
};

std::string taken(BSTR text) {
  std::string out = utf8({text ? text : u"", SysStringLen(text)});
  SysFreeString(text);
  return out;
}

Answer invoke(IDispatch& object, DISPID id, WORD flags, VARIANT* argument) {
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS params{argument, argument ? &put : nullptr, argument ? 1u : 0u, argument ? 1u : 0u};
  EXCEPINFO exception{};
  Answer answer;
  answer.code = object.Invoke(id, GUID_NULL, 0, flags, &params, nullptr, &exception, nullptr);
  if (answer.code == DISP_E_EXCEPTION) {
    answer.number = exception.scode;
    answer.description = taken(exception.bstrDescription);
    taken(exception.bstrSource);
    taken(exception.bstrHelpFile);
  }
  return answer;
}

[[noreturn]] void fail(const std::string& what, const Answer& answer) {
  if (answer.code == DISP_E_EXCEPTION) throw RunError(answer.description);
  char code[16];
  std::snprintf(code, sizeof code, "0x%08X", static_cast<unsigned>(answer.code));
  throw RunError(what + " failed with " + code);
}

const char* expected(const std::string& type) {
  if (type == "Boolean") return "True or False";
  return type == "Long" ? "a whole number of 32 bits" : "another value";
}

std::string type_of(const std::string& member) {
  struct Search {
    const std::string& member;
    std::string type;
  } search{member, {}};
  DorvoEachMember(
      nullptr,
      [](void* context, const DorvoMember* told) {
        auto& looked_for = *static_cast<Search*>(context);
        if (strcasecmp(told->name, looked_for.member.c_str()) == 0) looked_for.type = told->type;
      },
      &search);
  return search.type;
}

}  // namespace

Object Object::of_class(const std::string& name) {
  CLSID clsid{};
  if (failed(DorvoClassID(("DorvoFormDLL." + name).c_str(), &clsid))) {
    throw UsageError("there is no class \"" + name + "\"; \"dorvoform classes\" lists them");
  }
  void* factory = nullptr;
  void* object = nullptr;
  if (failed(DllGetClassObject(clsid, IID_IClassFactory, &factory)) ||
      failed(static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, IID_IDispatch, &object))) {
    throw RunError("cannot create " + name + ": " + DorvoLastError());
  }
  static_cast<IClassFactory*>(factory)->Release();
  return {name, static_cast<IDispatch*>(object)};
}

Object Object::of_report(const std::string& name) {
  IDispatch* object = nullptr;
  if (failed(DorvoCreateReport(name.c_str(), &object))) {
    throw UsageError("there is no report class \"" + name + "\"; \"dorvoform reports\" lists them");
  }
  return {name, object};
}

Object Object::of_connection(const std::string& connection_text) {
  IDispatch* object = nullptr;
  if (failed(DorvoOpenConnection(connection_text.c_str(), &object))) throw RunError(DorvoLastError());
  return {"connection", object};
}

DISPID Object::member(const std::string& name) const {
  std::u16string wide = utf16(name);
  OLECHAR* names[] = {wide.data()};
  DISPID id = DISPID_UNKNOWN;
  if (failed(object_->GetIDsOfNames(GUID_NULL, names, 1, 0, &id))) {
    throw UsageError(name_ + " has no member \"" + name + "\"");
  }
  return id;
}

void Object::put(const std::string& name, const std::string& value) const {
  VARIANT argument{};
  argument.vt = VT_BSTR;
  argument.bstrVal = bstr(value);
  const Answer answer = invoke(*object_, member(name), DISPATCH_PROPERTYPUT, &argument);
  SysFreeString(argument.bstrVal);
  if (!failed(answer.code)) return;
  if (answer.code == DISP_E_MEMBERNOTFOUND) {
    throw UsageError("\"" + name + "\" of " + name_ + " is no property that takes a text");
  }
  if (answer.code == DISP_E_TYPEMISMATCH || answer.code == DISP_E_OVERFLOW || is_wrong_value(answer.number)) {
    throw UsageError(name + "=" + value + ": expected " + expected(type_of(name)));
  }
  fail(name_ + "." + name, answer);
}

void Object::put_reference(const std::string& name, const Object& object) const {
  VARIANT argument{};
  argument.vt = VT_DISPATCH;
  argument.pdispVal = object.object_.get();
  const Answer answer = invoke(*object_, member(name), DISPATCH_PROPERTYPUTREF, &argument);
  if (failed(answer.code)) fail(name_ + "." + name, answer);
}

void Object::call(const std::string& name) const {
  const Answer answer = invoke(*object_, member(name), DISPATCH_METHOD, nullptr);
  if (failed(answer.code)) fail(name_ + "." + name, answer);
}

}  // namespace dorvo::host
