// The open connection that a host hands to `generalPrintClass.myConn`, as an automation object.
//
// Members: `State` (read: 1 open, 0 closed) and `Close`.
#pragma once

#include <memory>

#include "automation/object.h"
#include "data/connection.h"

namespace dorvo::automation {

class ConnectionObject final : public Object {
 public:
  explicit ConnectionObject(std::shared_ptr<data::Connection> connection);

  // The connection in a live object that this library made; empty for any other object.
  static std::shared_ptr<data::Connection> of(const IUnknown* object);

 protected:
  bool has_interface(const IID&) const override { return false; }
  DISPID find(std::string_view name) const override;
  bool has(DISPID id) const override;
  HRESULT call(DISPID id) override;
  HRESULT get(DISPID id, value::Variant& value) override;
  HRESULT put(DISPID, const VARIANT&, WORD) override { return DISP_E_MEMBERNOTFOUND; }
  void drop() override;

 private:
  std::shared_ptr<data::Connection> connection_;
};

}  // namespace dorvo::automation
