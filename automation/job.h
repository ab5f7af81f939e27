// One job of a host without a window: the files that the reports it shows are written to, and what became of it.
//
// Takes the viewer's place. Pages go to the filters as they are completed, and nothing else keeps them. A file appears
// whole or not at all: a run that fails or has no pages leaves none but page dumps.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "export/options.h"
#include "export/page_dump.h"
#include "frame/ports.h"

namespace dorvo::automation {

class Job : public frame::HeadlessPorts {
 public:
  // Fails with TypeMismatch: no such kind, a file named twice.
  void add_output(const std::string& file);
  // "PDF.Version=0"; fails as parse_option() does.
  void add_option(const std::string& option);

  void show(frame::Report& report) override;

  // Writes page dumps with no pages, for a job that showed no report; `failure` may be empty.
  void show_nothing(const std::string& report, const std::string& failure);

  bool has_shown() const { return has_shown_; }
  bool failed() const { return failed_; }
  std::uint64_t pages() const { return pages_; }

 private:
  struct Output {
    std::unique_ptr<export_::Filter> filter;
    export_::PageDump* dump = nullptr;  // the filter, when it is a page dump
  };

  void begin(const std::string& report, bool dumps_only);
  void run(frame::Report& report);
  void end_files();
  void end_dumps();
  void note(const std::vector<std::string>& lines);
  void fail(const std::string& line);

  std::vector<std::string> files_;
  std::vector<export_::Option> options_;
  std::vector<Output> outputs_;
  std::uint64_t pages_ = 0;
  bool has_shown_ = false;
  bool failed_ = false;
};

}  // namespace dorvo::automation
