// Opening a report as every host does: the shared settings, the launcher's properties, SHowForm.
#pragma once

#include "host/client.h"
#include "host/commands.h"

namespace dorvo::host {

class Launch {
 public:
  // Makes the objects and looks all names up; UsageError for what the library has not. `job` outlives this.
  explicit Launch(const PrintJob& job);
  // RunError as the library fails.
  void run() const;

 private:
  const Object& target(const Assignment& given) const { return given.is_setting ? settings_ : launcher_; }

  const PrintJob& job_;
  Object settings_;
  Object launcher_;
};

}  // namespace dorvo::host
