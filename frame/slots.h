// The report classes and the one slot that each has in the process.
//
// A slot is empty at the start, is filled with a new report object by the first that asks for it, and is never emptied:
// all later launches work on the same object. The list of classes is handed in by the library at its start, so that
// the frame depends on no report. One thread.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/report.h"

namespace dorvo::frame {

struct ReportClass {
  std::string_view name;
  std::unique_ptr<Report> (*make)() = nullptr;  // none: not built in this version

  bool is_built() const { return make != nullptr; }
};

// A row's `make` for a report class whose constructor needs nothing.
template <class Kind>
std::unique_ptr<Report> make_report() {
  return std::make_unique<Kind>();
}

// Replaces the list and drops every report object.
void set_report_classes(std::vector<ReportClass> classes);
const std::vector<ReportClass>& report_classes();

// nullptr for a name that no report class bears.
const ReportClass* find_report_class(std::string_view name);

// The report object of a class, made at its first use. Fails with ReportNotBuilt, naming the report, and with what
// the report's constructor fails with; the slot then stays empty.
Report& report_slot(std::string_view name);

}  // namespace dorvo::frame
