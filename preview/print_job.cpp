#include "preview/print_job.h"

#include <cups/cups.h>
#include <cups/pwg.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "export/pdf_filter.h"
#include "value/failure.h"

namespace dorvo::preview {
namespace {

constexpr int kPatience = 3000;  // ms until the print service must answer
constexpr int kPdf13 = 2;        // the newest version that our PDF filter writes
constexpr int kPwgPerInch = 2540;
constexpr int kTwipsPerInch = 1440;

[[noreturn]] void fail(const std::string& what, const std::string& why) {
  throw value::Failure(value::Error::CannotWrite, what + ": " + why);
}

struct Close {
  void operator()(http_t* http) const { httpClose(http); }
  void operator()(ipp_t* answer) const { ippDelete(answer); }
  void operator()(cups_dest_t* dest) const { cupsFreeDests(1, dest); }
  void operator()(cups_dinfo_t* info) const { cupsFreeDestInfo(info); }
};
using Http = std::unique_ptr<http_t, Close>;
using Answer = std::unique_ptr<ipp_t, Close>;
using Dest = std::unique_ptr<cups_dest_t, Close>;
using DestInfo = std::unique_ptr<cups_dinfo_t, Close>;

int give_up(http_t*, void*) {
  return 0;
}

Http connected() {
  Http http(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, kPatience, nullptr));
  if (!http) fail("The print service at " + std::string(cupsServer()), "it does not answer");
  httpSetTimeout(http.get(), kPatience / 1000.0, give_up, nullptr);
  return http;
}

// Job options of the service's own kind.
class Options {
 public:
  explicit Options(const PrintOrder& order) {
    for (const auto& [name, value] : job_options(order))
      count_ = cupsAddOption(name.c_str(), value.c_str(), count_, &all_);
  }
  ~Options() { cupsFreeOptions(count_, all_); }
  Options(const Options&) = delete;
  Options& operator=(const Options&) = delete;
  int count() const { return count_; }
  cups_option_t* all() const { return all_; }

 private:
  int count_ = 0;
  cups_option_t* all_ = nullptr;
};

// A PDF file of the pages in a folder of its own, gone with this.
class SpoolFile {
 public:
  explicit SpoolFile(const std::vector<engine::PagePtr>& pages) {
    std::string name = (std::filesystem::temp_directory_path() / "dorvo-print-XXXXXX").string();
    if (!mkdtemp(name.data())) fail("\"" + name + "\"", "the folder cannot be made");
    folder_ = name;
    export_::PdfFilter filter;
    filter.FileName = path();
    filter.Version = kPdf13;
    filter.begin();
    for (const engine::PagePtr& page : pages) filter.page(page);
    filter.end();
  }
  ~SpoolFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  SpoolFile(const SpoolFile&) = delete;
  SpoolFile& operator=(const SpoolFile&) = delete;
  std::string path() const { return (folder_ / "pages.pdf").string(); }

 private:
  std::filesystem::path folder_;
};

int pwg(int twips) {
  return static_cast<int>(std::lround(1.0 * twips * kPwgPerInch / kTwipsPerInch));
}

std::string media_of(const PrintOrder& order) {
  const int width = pwg(order.paper_width), height = pwg(order.paper_height);
  const pwg_media_t* known = pwgMediaForSize(width, height);
  if (known && std::string_view(known->pwg).substr(0, 6) != "custom") return known->pwg;
  std::array<char, 128> name{};
  pwgFormatSizeName(name.data(), name.size(), "custom", nullptr, width, height, "mm");
  return name.data();
}

// One job while it is handed over.
class Delivery {
 public:
  Delivery(http_t* http, const PrintOrder& order) : http_(http), order_(order) {
    dest_.reset(cupsGetNamedDest(http, order.printer.c_str(), nullptr));
    if (!dest_) fail("Printer " + order.printer, "there is none of this name");
    info_.reset(cupsCopyDestInfo(http, dest_.get()));
    if (!info_) give_up();
  }

  int deliver(const std::string& file) {
    const Options options(order_);
    if (cupsCreateDestJob(http_, dest_.get(), info_.get(), &job_, order_.title.c_str(), options.count(),
                          options.all()) > IPP_STATUS_OK_EVENTS_COMPLETE)
      give_up();
    try {
      hand_over(file);
    } catch (const value::Failure&) {
      cupsCancelDestJob(http_, dest_.get(), job_);
      throw;
    }
    return job_;
  }

 private:
  [[noreturn]] void give_up() const { fail("Printer " + order_.printer, cupsLastErrorString()); }

  void hand_over(const std::string& file) {
    if (cupsStartDestDocument(http_, dest_.get(), info_.get(), job_, order_.title.c_str(), CUPS_FORMAT_PDF, 0, nullptr,
                              1) != HTTP_STATUS_CONTINUE)
      give_up();
    std::ifstream in(file, std::ios::binary);
    std::array<char, 65536> part{};
    while (in.read(part.data(), part.size()) || in.gcount() > 0) {
      if (cupsWriteRequestData(http_, part.data(), static_cast<std::size_t>(in.gcount())) != HTTP_STATUS_CONTINUE)
        give_up();
    }
    if (cupsFinishDestDocument(http_, dest_.get(), info_.get()) > IPP_STATUS_OK_EVENTS_COMPLETE) give_up();
  }

  http_t* http_;
  const PrintOrder& order_;
  Dest dest_;
  DestInfo info_;
  int job_ = 0;
};

JobState state_of(int code) {
  switch (code) {
    case IPP_JSTATE_PROCESSING:
      return JobState::Printing;
    case IPP_JSTATE_COMPLETED:
      return JobState::Done;
    case IPP_JSTATE_CANCELED:
      return JobState::Cancelled;
    case IPP_JSTATE_ABORTED:
      return JobState::Failed;
    default:
      return JobState::Waiting;
  }
}

std::string text_of(ipp_t* answer, const char* attribute, ipp_tag_t kind) {
  ipp_attribute_t* found = ippFindAttribute(answer, attribute, kind);
  const char* text = found ? ippGetString(found, 0, nullptr) : nullptr;
  return text && std::string_view(text) != "none" ? text : "";
}

}  // namespace

std::vector<PrinterName> printers() {
  const Http http = connected();
  cups_dest_t* all = nullptr;
  const int count = cupsGetDests2(http.get(), &all);
  std::vector<PrinterName> found;
  for (const cups_dest_t* dest = all; dest < all + count; ++dest) {
    if (dest->instance) continue;
    const char* description = cupsGetOption("printer-info", dest->num_options, dest->options);
    found.push_back({dest->name, description ? description : "", dest->is_default != 0});
  }
  cupsFreeDests(count, all);
  return found;
}

std::vector<std::pair<std::string, std::string>> job_options(const PrintOrder& order) {
  return {
      {CUPS_COPIES, std::to_string(order.copies)},
      {"multiple-document-handling", "separate-documents-collated-copies"},
      {CUPS_PRINT_QUALITY, order.is_draft ? CUPS_PRINT_QUALITY_DRAFT : CUPS_PRINT_QUALITY_HIGH},
      {CUPS_MEDIA, media_of(order)},
      {"print-scaling", "none"},  // the boxes must meet those of the stationery
  };
}

int send(const PrintOrder& order, const std::vector<engine::PagePtr>& pages) {
  const SpoolFile file(pages);
  const Http http = connected();
  return Delivery(http.get(), order).deliver(file.path());
}

JobStatus job_status(int job) {
  const Http http = connected();
  ipp_t* request = ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES);
  const std::string uri = "ipp://localhost/jobs/" + std::to_string(job);
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr, uri.c_str());
  ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
  const Answer answer(cupsDoRequest(http.get(), request, "/"));
  ipp_attribute_t* state = answer ? ippFindAttribute(answer.get(), "job-state", IPP_TAG_ENUM) : nullptr;
  if (!state) fail("Print job " + std::to_string(job), cupsLastErrorString());
  JobStatus status{state_of(ippGetInteger(state, 0)), text_of(answer.get(), "job-printer-state-message", IPP_TAG_TEXT)};
  if (status.reason.empty()) status.reason = text_of(answer.get(), "job-state-reasons", IPP_TAG_KEYWORD);
  return status;
}

void cancel_job(const std::string& printer, int job) {
  const Http http = connected();
  if (cupsCancelJob2(http.get(), printer.c_str(), job, 0) > IPP_STATUS_OK_EVENTS_COMPLETE)
    fail("Print job " + std::to_string(job), cupsLastErrorString());
}

}  // namespace dorvo::preview
