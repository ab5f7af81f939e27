#include <cstdio>

#include "automation/host_entry.h"
#include "host/client.h"
#include "host/commands.h"

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

// As every host does: the shared settings, the launcher's properties, SHowForm.
void launch(const PrintJob& job, const Object& settings, const Object& launcher) {
  const Object connection = Object::of_connection(job.database);
  settings.put("ConnectionString", job.database);
  settings.put_reference("myConn", connection);
  for (const Assignment& given : job.assignments) (given.is_setting ? settings : launcher).put(given.name, given.value);
  launcher.call("SHowForm");
}

}  // namespace

int print(const PrintJob& job) {
  DorvoLayoutsFrom(job.layouts.c_str());
  const Object settings = Object::of_class("generalPrintClass");
  const Object launcher = job.class_name.empty() ? Object::of_report(job.report) : Object::of_class(job.class_name);
  for (const Assignment& given : job.assignments) (given.is_setting ? settings : launcher).member(given.name);
  set_outputs(job);

  std::string failure;
  try {
    launch(job, settings, launcher);
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
  return outcome.pages == 0 ? kNoPage : kPrinted;
}

}  // namespace dorvo::host
