// A launcher object: interprets its class's row of the table.
//
// It has no state of its own but a late key and `yrid`; all else goes straight to the shared settings or to the report
// object. One thread.
#pragma once

#include <cstdint>
#include <memory>

#include "data/connection.h"
#include "frame/launchers.h"
#include "value/variant.h"

namespace dorvo::frame {

class Launcher {
 public:
  explicit Launcher(LauncherClass row) : row_(std::move(row)) {}
  const LauncherClass& row() const { return row_; }

  // Writes a property of this class. The value is converted to the member's type: TypeMismatch, Overflow or
  // InvalidUseOfNull when it cannot be, and then nothing is written. A value for a report that is not built is dropped.
  void put(const Member& member, const value::Variant& value);
  void put(const Member& member, std::shared_ptr<data::Connection> connection);

  // The launcher's own value; NULL when it was never written.
  const value::Variant& own() const { return own_; }

  // Opens the report that `onethirty` selects now. Fails with ReportNotBuilt and as its run fails.
  void SHowForm();

 private:
  void forward(const Member& member, const value::Variant& value);

  LauncherClass row_;
  std::int32_t late_key_ = 0;
  value::Variant own_;
};

}  // namespace dorvo::frame
