#include "automation/host_entry.h"
#include "host/commands.h"
#include "host/launch.h"

namespace dorvo::host {

int preview(const PrintJob& job) {
  const Launch launch(job);
  if (automation::failed(DorvoPreviewStart())) throw RunError(DorvoLastError());
  std::string failure;
  try {
    launch.run();
  } catch (const RunError& error) {
    tell(failure = error.what());
  }
  // A failed run shows what was filled so far, and the user reads it before this ends.
  if (automation::failed(DorvoPreviewRun())) throw RunError(DorvoLastError());
  return failure.empty() ? kPrinted : kFailed;
}

}  // namespace dorvo::host
