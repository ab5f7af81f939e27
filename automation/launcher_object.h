// A launcher as an automation object: its members by name and number, its arguments from a host's VARIANTs.
#pragma once

#include <optional>

#include "automation/object.h"
#include "frame/launcher.h"

namespace dorvo::automation {

class LauncherObject final : public Object {
 public:
  explicit LauncherObject(frame::LauncherClass row) : launcher_(std::in_place, std::move(row)) {}

 protected:
  bool has_interface(const IID& iid) const override;
  DISPID find(std::string_view name) const override;
  bool has(DISPID id) const override;
  HRESULT call(DISPID id) override;
  HRESULT get(DISPID id, value::Variant& value) override;
  HRESULT put(DISPID id, const VARIANT& argument, WORD flags) override;
  void drop() override { launcher_.reset(); }

 private:
  HRESULT put_object(const frame::Member& member, const VARIANT& argument);
  HRESULT put_value(const frame::Member& member, const VARIANT& argument);

  std::optional<frame::Launcher> launcher_;
};

}  // namespace dorvo::automation
