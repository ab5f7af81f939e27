// The commands of the host program. Each returns the exit status.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace dorvo::host {

enum Status { kPrinted = 0, kFailed = 1, kUsage = 2, kNoPage = 3 };

// One NAME=VALUE of the command line.
struct Assignment {
  bool is_setting = false;  // of generalPrintClass, else of the launcher
  std::string name;
  std::string value;
};

struct PrintJob {
  std::string database;    // connection text
  std::string class_name;  // or
  std::string report;
  std::vector<Assignment> assignments;  // in the order given
  std::vector<std::string> outputs;
  std::vector<std::string> options;  // "FORMAT.Property=value"
  std::string layouts;
};

// UsageError for what the library has not; every other failure is told on stderr, or thrown as RunError.
int print(const PrintJob& job);

// Opens the report's preview and stays until the last window is closed.
int preview(const PrintJob& job);

int list_classes();
int list_reports();

struct DemoPractice {
  std::string file;
  int dealers = 0;
  int years = 0;
  std::uint64_t seed = 0;
};
int write_demo_database(const DemoPractice& demo);

// The tables that the reports read, as statements of a dialect by its name; UsageError for a dialect there is not.
int write_schema(const std::string& dialect);

// One line on stderr, whatever line ends the text has.
void tell(const std::string& text);

}  // namespace dorvo::host
