#include "host/launch.h"

#include "automation/host_entry.h"

namespace dorvo::host {
namespace {

Object launcher_of(const PrintJob& job) {
  DorvoLayoutsFrom(job.layouts.c_str());
  return job.class_name.empty() ? Object::of_report(job.report) : Object::of_class(job.class_name);
}

}  // namespace

Launch::Launch(const PrintJob& job)
    : job_(job), settings_(Object::of_class("generalPrintClass")), launcher_(launcher_of(job)) {
  for (const Assignment& given : job.assignments) target(given).member(given.name);
}

void Launch::run() const {
  const Object connection = Object::of_connection(job_.database);
  settings_.put("ConnectionString", job_.database);
  settings_.put_reference("myConn", connection);
  for (const Assignment& given : job_.assignments) target(given).put(given.name, given.value);
  launcher_.call("SHowForm");
}

}  // namespace dorvo::host
