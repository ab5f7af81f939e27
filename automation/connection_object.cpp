#include "automation/connection_object.h"

#include <map>

#include "value/text.h"

namespace dorvo::automation {
namespace {

constexpr DISPID kState = 1;
constexpr DISPID kClose = 2;

// A host's object is known by its address alone: asking a stranger for an interface of ours proves nothing.
std::map<const IUnknown*, ConnectionObject*>& live() {
  static std::map<const IUnknown*, ConnectionObject*> objects;
  return objects;
}

}  // namespace

ConnectionObject::ConnectionObject(std::shared_ptr<data::Connection> connection) : connection_(std::move(connection)) {
  live().emplace(this, this);
}

void ConnectionObject::drop() {
  live().erase(this);
  connection_.reset();
}

std::shared_ptr<data::Connection> ConnectionObject::of(const IUnknown* object) {
  const auto found = live().find(object);
  return found == live().end() ? nullptr : found->second->connection_;
}

DISPID ConnectionObject::find(std::string_view name) const {
  if (value::same_name(name, "State")) return kState;
  return value::same_name(name, "Close") ? kClose : DISPID_UNKNOWN;
}

bool ConnectionObject::has(DISPID id) const {
  return id == kState || id == kClose;
}

HRESULT ConnectionObject::call(DISPID id) {
  if (id != kClose) return DISP_E_MEMBERNOTFOUND;
  connection_->Close();
  return S_OK;
}

HRESULT ConnectionObject::get(DISPID id, value::Variant& value) {
  if (id != kState) return DISP_E_MEMBERNOTFOUND;
  value = connection_->is_open() ? 1 : 0;
  return S_OK;
}

}  // namespace dorvo::automation
