#include "automation/library.h"

#include "automation/report_list.h"
#include "layouts/layouts.h"

namespace dorvo::automation {
namespace {

struct Library {
  std::shared_ptr<Job> job = std::make_shared<Job>();
  std::vector<std::string> messages;
  std::string error;
};

Library& library() {
  static Library state;
  return state;
}

}  // namespace

void start_library() {
  static const bool started = [] {
    layouts::embed();
    frame::set_report_classes(report_list());
    frame::set_headless_ports(library().job);
    return true;
  }();
  static_cast<void>(started);
}

Job& job() {
  start_library();
  return *library().job;
}

void end_job() {
  library().messages = std::move(library().job->messages);
  *library().job = Job();
}

const std::vector<std::string>& last_messages() {
  return library().messages;
}

const std::string& last_error() {
  return library().error;
}

HRESULT fail(HRESULT code, std::string line) {
  library().error = std::move(line);
  return code;
}

}  // namespace dorvo::automation
