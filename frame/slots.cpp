#include "frame/slots.h"

#include <map>

namespace dorvo::frame {
namespace {

struct Slots {
  std::vector<ReportClass> classes;
  std::map<std::string, std::unique_ptr<Report>, std::less<>> reports;  // lower case names
};

Slots& slots() {
  static Slots all;
  return all;
}

}  // namespace

void set_report_classes(std::vector<ReportClass> classes) {
  slots().reports.clear();
  slots().classes = std::move(classes);
}

const std::vector<ReportClass>& report_classes() {
  return slots().classes;
}

const ReportClass* find_report_class(std::string_view name) {
  for (const ReportClass& row : slots().classes) {
    if (value::same_name(row.name, name)) return &row;
  }
  return nullptr;
}

Report& report_slot(std::string_view name) {
  const ReportClass* row = find_report_class(name);
  if (!row || !row->is_built()) {
    throw value::Failure(value::Error::ReportNotBuilt,
                         "The report " + std::string(name) + " is not built in this version of the library");
  }
  std::unique_ptr<Report>& slot = slots().reports[value::lower_name(name)];
  if (!slot) slot = row->make();
  return *slot;
}

}  // namespace dorvo::frame
