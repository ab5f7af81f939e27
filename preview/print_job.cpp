#include "preview/print_job.h"

#include <cups/cups.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "export/pdf_filter.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::preview {
namespace {

using value::Error;
using value::Failure;

constexpr int kA4Width = 11906;
constexpr int kA4Height = 16838;
constexpr int kNearly = 20;  // twips: papers are told in whole points

// The job's options as the server takes them.
class Options {
 public:
  ~Options() { cupsFreeOptions(count_, options_); }
  Options() = default;
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  void add(const char* name, const std::string& value) {
    count_ = cupsAddOption(name, value.c_str(), count_, &options_);
  }
  int count() const { return count_; }
  cups_option_t* data() const { return options_; }

 private:
  int count_ = 0;
  cups_option_t* options_ = nullptr;
};

std::string media_of(Paper paper) {
  const int width = std::min(paper.width, paper.height);
  const int height = std::max(paper.width, paper.height);
  if (std::abs(width - kA4Width) < kNearly && std::abs(height - kA4Height) < kNearly) return "A4";
  return "Custom." + value::number_text(width / 20.0) + "x" + value::number_text(height / 20.0);
}

void fill(Options& options, const PrintRequest& request) {
  const engine::Page& first = *request.pages.front();
  const bool own = request.paper.width == 0;
  options.add(CUPS_COPIES, std::to_string(request.copies));
  options.add(CUPS_PRINT_QUALITY, request.draft ? CUPS_PRINT_QUALITY_DRAFT : CUPS_PRINT_QUALITY_HIGH);
  options.add(CUPS_MEDIA, media_of(own ? Paper{first.width, first.height} : request.paper));
  options.add("print-scaling", own ? "none" : "fit");
}

// The pages as a PDF file with a name of its own, gone with the object.
class PrintFile {
 public:
  explicit PrintFile(const std::vector<engine::PagePtr>& pages) {
    folder_ = (std::filesystem::temp_directory_path() / "dorvo-print-XXXXXX").string();
    if (!mkdtemp(folder_.data()))
      throw Failure(Error::CannotWrite, "Cannot make a folder for the print job in \"" + folder_ + "\"");
    export_::PdfFilter filter;
    filter.FileName = path();
    filter.Version = 2;
    filter.begin();
    for (const engine::PagePtr& page : pages) filter.page(page);
    filter.end();
  }
  ~PrintFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  std::string path() const { return folder_ + "/pages.pdf"; }

 private:
  std::string folder_;
};

[[noreturn]] void refuse(const std::string& queue) {
  throw Failure(Error::CannotWrite, "Cannot print on \"" + queue + "\": " + cupsLastErrorString());
}

}  // namespace

std::vector<PrintQueue> print_queues() {
  cups_dest_t* dests = nullptr;
  const int count = cupsGetDests2(CUPS_HTTP_DEFAULT, &dests);
  std::vector<PrintQueue> queues;
  for (int i = 0; i < count; ++i) queues.push_back({dests[i].name, dests[i].is_default != 0});
  cupsFreeDests(count, dests);
  return queues;
}

int submit(const PrintRequest& request) {
  if (request.pages.empty()) throw Failure(Error::EngineState, "There are no pages to print");
  const PrintFile file(request.pages);
  Options options;
  fill(options, request);
  const int job = cupsPrintFile2(CUPS_HTTP_DEFAULT, request.queue.c_str(), file.path().c_str(), request.title.c_str(),
                                 options.count(), options.data());
  if (job == 0) refuse(request.queue);
  return job;
}

JobState job_state(const std::string& queue, int job) {
  cups_job_t* jobs = nullptr;
  const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, queue.c_str(), 0, CUPS_WHICHJOBS_ALL);
  JobState state = JobState::Done;  // the server forgets jobs that are long done
  for (int i = 0; i < count; ++i) {
    if (jobs[i].id != job) continue;
    switch (jobs[i].state) {
      case IPP_JSTATE_CANCELED:
        state = JobState::Cancelled;
        break;
      case IPP_JSTATE_ABORTED:
      case IPP_JSTATE_STOPPED:
        state = JobState::Failed;
        break;
      case IPP_JSTATE_COMPLETED:
        state = JobState::Done;
        break;
      case IPP_JSTATE_PROCESSING:
        state = JobState::Printing;
        break;
      default:
        state = JobState::Waiting;
    }
  }
  cupsFreeJobs(count, jobs);
  return state;
}

void cancel_job(const std::string& queue, int job) {
  if (cupsCancelJob2(CUPS_HTTP_DEFAULT, queue.c_str(), job, 0) > IPP_STATUS_OK_CONFLICTING) refuse(queue);
}

std::string job_message(const std::string& queue, int job, JobState state) {
  const std::string what = "Job " + std::to_string(job) + " on " + queue;
  if (state == JobState::Cancelled) return what + " was cancelled";
  if (state == JobState::Failed) return what + " failed: the printer or its queue has stopped";
  return {};
}

std::vector<std::size_t> page_range(const std::string& text, std::size_t count) {
  const auto wrong = [&]() -> Failure {
    return {Error::TypeMismatch,
            "Pages \"" + text + "\": expected numbers from 1 to " + std::to_string(count) + ", such as 1-3, 5"};
  };
  const auto number = [&](std::string_view part) {
    part = value::trim(part);
    std::size_t found = 0;
    const auto [end, problem] = std::from_chars(part.data(), part.data() + part.size(), found);
    if (problem != std::errc() || end != part.data() + part.size() || found < 1 || found > count) throw wrong();
    return found;
  };
  std::set<std::size_t> pages;
  for (std::string_view rest = text;;) {
    const std::size_t comma = rest.find(',');
    const std::string_view part = rest.substr(0, comma);
    const std::size_t dash = part.find('-');
    const std::size_t first = number(part.substr(0, dash));
    const std::size_t last = dash == std::string_view::npos ? first : number(part.substr(dash + 1));
    if (last < first) throw wrong();
    for (std::size_t page = first; page <= last; ++page) pages.insert(page - 1);
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 1);
  }
  return {pages.begin(), pages.end()};
}

}  // namespace dorvo::preview
