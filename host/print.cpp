#include <cstdio>

#include "automation/host_entry.h"
#include "host/client.h"
#include "host/commands.h"
#include "host/launch.h"

namespace dorvo::host {
namespace {

void set_outputs(const PrintJob& job) {
  for (const std::string& file : job.outputs) {
    if (automation::failed(DorvoAddOutput(file.c_str()))) throw UsageError(DorvoLastError());
  }
  for (const std::string& option : job.options) {
    if (automation::failed(DorvoOutputOption(option.c_str()))) throw UsageError(DorvoLastError());
  }
}

}  // namespace

int print(const PrintJob& job) {
  const Launch launch(job);
  set_outputs(job);

  std::string failure;
  try {
    launch.run();
  } catch (const RunError& error) {
    failure = error.what();
  }
  const std::string& opened = job.class_name.empty() ? job.report : job.class_name;
  DorvoOutcome outcome{};
  const bool is_ended =
      !automation::failed(DorvoEndJob(opened.c_str(), failure.empty() ? nullptr : failure.c_str(), &outcome));
  DorvoEachMessage([](void*, const char* text) { tell(text); }, nullptr);
  if (!is_ended) tell(DorvoLastError());
  if (outcome.failed || !failure.empty()) return kFailed;
  if (outcome.pages > 0) return kPrinted;
  tell("no page: " + opened + " has nothing to print for this key");
  return kNoPage;
}

}  // namespace dorvo::host
