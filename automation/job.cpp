#include "automation/job.h"

#include <algorithm>
#include <optional>

#include "frame/report.h"

namespace dorvo::automation {
namespace {

// The Failure that the action ends with; none when it runs through.
template <class Action>
std::optional<value::Failure> failure_of(Action action) {
  try {
    action();
    return std::nullopt;
  } catch (const value::Failure& failure) {
    return failure;
  }
}

}  // namespace

void Job::add_output(const std::string& file) {
  if (!export_::format_of_file(file)) {
    std::string kinds;
    for (const export_::FormatRow& row : export_::formats()) kinds += " ." + std::string(row.extensions.front());
    throw value::Failure(value::Error::TypeMismatch, "\"" + file + "\" is no kind of file that is known:" + kinds);
  }
  if (std::ranges::find(files_, file) != files_.end()) {
    throw value::Failure(value::Error::TypeMismatch, "\"" + file + "\" is named twice");
  }
  files_.push_back(file);
}

void Job::add_option(const std::string& option) {
  options_.push_back(export_::parse_option(option));
}

void Job::show(frame::Report& report) {
  has_shown_ = true;
  // A host that shows one report after another and ends no job would keep the lines of all of them.
  messages.clear();
  failed_ = false;
  std::optional<value::Failure> failure = failure_of([&] {
    begin(report.Name(), false);
    run(report);
    end_files();
  });
  if (failure) fail(failure->description());
  if (const auto unwritten = failure_of([&] { end_dumps(); })) {
    // A dump that could not take a page cannot be ended either, and has told it.
    if (!failure || unwritten->description() != failure->description()) fail(unwritten->description());
    if (!failure) failure = unwritten;
  }
  outputs_.clear();
  if (failure) throw *failure;
}

void Job::run(frame::Report& report) {
  report.sink([this](const engine::PagePtr& page) {
    ++pages_;
    for (const Output& output : outputs_) output.filter->page(page);
  });
  const auto failure = failure_of([&] { report.run(); });
  report.sink({});
  note(report.Messages());
  if (failure) throw *failure;
}

void Job::show_nothing(const std::string& report, const std::string& failure) {
  if (!failure.empty()) fail(failure);
  begin(report, true);
  end_dumps();
  outputs_.clear();
}

void Job::begin(const std::string& report, bool dumps_only) {
  outputs_.clear();
  pages_ = 0;
  // Page dumps first, so that they can tell why another file could not be begun.
  for (const bool dumps : {true, false}) {
    for (const std::string& file : files_) {
      Output output{export_::make_filter(*export_::format_of_file(file), file, options_), nullptr};
      output.dump = dynamic_cast<export_::PageDump*>(output.filter.get());
      if ((output.dump != nullptr) != dumps || (dumps_only && !dumps)) continue;
      if (output.dump) output.dump->Report = report;
      output.filter->begin();
      outputs_.push_back(std::move(output));
    }
  }
}

void Job::end_files() {
  for (const Output& output : outputs_) {
    if (output.dump || pages_ == 0) continue;
    output.filter->end();
    note(output.filter->Messages());
  }
}

void Job::end_dumps() {
  for (const Output& output : outputs_) {
    if (!output.dump) continue;
    output.dump->RunMessages = messages;
    output.dump->end();
  }
}

void Job::note(const std::vector<std::string>& lines) {
  messages.insert(messages.end(), lines.begin(), lines.end());
}

void Job::fail(const std::string& line) {
  failed_ = true;
  messages.push_back(line);
}

}  // namespace dorvo::automation
