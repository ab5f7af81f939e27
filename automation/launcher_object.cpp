#include "automation/launcher_object.h"

#include "automation/class_ids.h"
#include "automation/connection_object.h"
#include "automation/variants.h"

namespace dorvo::automation {
namespace {

using frame::Argument;
using frame::Member;

// What an argument that is VT_EMPTY is worth.
value::Variant zero_of(Argument argument) {
  switch (argument) {
    case Argument::Boolean:
    case Argument::VariantBoolean:
      return false;
    case Argument::Long:
      return 0;
    case Argument::Text:
    case Argument::VariantText:
      return "";
    case Argument::Variant:
    case Argument::Object:
      break;
  }
  return value::Null();
}

bool converts_itself(Argument argument) {
  return argument == Argument::VariantBoolean || argument == Argument::VariantText || argument == Argument::Variant;
}

}  // namespace

bool LauncherObject::has_interface(const IID& iid) const {
  return launcher_->row().number > 0 && iid == interface_id(launcher_->row());
}

DISPID LauncherObject::find(std::string_view name) const {
  const Member* member = launcher_->row().find(name);
  return member ? member->id : DISPID_UNKNOWN;
}

bool LauncherObject::has(DISPID id) const {
  return launcher_->row().find(id) != nullptr;
}

HRESULT LauncherObject::call(DISPID id) {
  if (!launcher_->row().find(id)->is_method()) return DISP_E_MEMBERNOTFOUND;
  launcher_->SHowForm();
  return S_OK;
}

HRESULT LauncherObject::get(DISPID id, value::Variant& value) {
  if (!launcher_->row().find(id)->is_readable()) return DISP_E_MEMBERNOTFOUND;
  value = launcher_->own();
  return S_OK;
}

HRESULT LauncherObject::put(DISPID id, const VARIANT& argument, WORD flags) {
  const Member& member = *launcher_->row().find(id);
  const bool by_reference = member.argument == Argument::Object;
  const WORD needed = by_reference ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT;
  if (member.is_method() || !(flags & needed)) return DISP_E_MEMBERNOTFOUND;
  return by_reference ? put_object(member, argument) : put_value(member, argument);
}

HRESULT LauncherObject::put_object(const Member& member, const VARIANT& argument) {
  IUnknown* object = nullptr;
  if (const HRESULT code = read_object(argument, &object); failed(code)) return code;
  std::shared_ptr<data::Connection> connection;
  if (object && !(connection = ConnectionObject::of(object))) return DISP_E_TYPEMISMATCH;
  launcher_->put(member, std::move(connection));
  return S_OK;
}

HRESULT LauncherObject::put_value(const Member& member, const VARIANT& argument) {
  value::Variant value;
  if (const HRESULT code = read_variant(argument, zero_of(member.argument), value); failed(code)) return code;
  try {
    launcher_->put(member, value);
  } catch (const value::Failure& failure) {
    if (converts_itself(member.argument)) throw;
    switch (failure.number()) {
      case value::Error::TypeMismatch:
      case value::Error::InvalidUseOfNull:
        return DISP_E_TYPEMISMATCH;
      case value::Error::Overflow:
        return DISP_E_OVERFLOW;
      default:
        throw;
    }
  }
  return S_OK;
}

}  // namespace dorvo::automation
