// bench_formats: time, bytes and memory of every filter, for a form of three pages and for a register of 2,000 pages.
// Each filter runs in a process of its own, so that the memory is its own.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "export/html_filter.h"
#include "export/page_dump.h"
#include "export/pdf_filter.h"
#include "export/png_filter.h"
#include "export/rtf_filter.h"
#include "export/text_filter.h"
#include "export/tiff_filter.h"
#include "export/xls_filter.h"
#include "tests/export/sample_pages.h"

namespace dorvo::bench {
namespace {

using FilterPtr = std::unique_ptr<export_::Filter>;

template <class Kind>
FilterPtr made(const std::string& file) {
  auto filter = std::make_unique<Kind>();
  filter->FileName = file;
  return filter;
}

FilterPtr html(const std::string& folder, int version) {
  auto filter = std::make_unique<export_::HtmlFilter>();
  filter->FileNamePrefix = "out";
  filter->HTMLOutputPath = filter->ImagesOutputPath = folder;
  filter->HTMLVersion = version;
  return filter;
}

struct Format {
  const char* name;
  FilterPtr (*make)(const std::string& folder);
  int register_pages;  // fewer where pages are for looking at, a file each
};
constexpr Format kFormats[] = {
    {"pdf", [](const std::string& folder) { return made<export_::PdfFilter>(folder + "/out.pdf"); }, 2000},
    {"tif", [](const std::string& folder) { return made<export_::TiffFilter>(folder + "/out.tif"); }, 2000},
    {"rtf", [](const std::string& folder) { return made<export_::RtfFilter>(folder + "/out.rtf"); }, 2000},
    {"html3", [](const std::string& folder) { return html(folder, 0); }, 2000},
    {"html", [](const std::string& folder) { return html(folder, 1); }, 2000},
    {"xls", [](const std::string& folder) { return made<export_::XlsFilter>(folder + "/out.xls"); }, 2000},
    {"txt", [](const std::string& folder) { return made<export_::TextFilter>(folder + "/out.txt"); }, 2000},
    {"json", [](const std::string& folder) { return made<export_::PageDump>(folder + "/out.json"); }, 2000},
    {"png", [](const std::string& folder) { return made<export_::PngFilter>(folder + "/out.png"); }, 20},
};

double peak_megabytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

std::size_t bytes_in(const std::filesystem::path& folder) {
  std::size_t bytes = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) bytes += entry.file_size();
  return bytes;
}

// Writes `pages` pages and prints a line of figures. The time is the processor's, of the filter alone.
void measure(const Format& format, const char* sample, int pages,
             const std::function<engine::PagePtr(int number)>& page) {
  const auto folder = std::filesystem::temp_directory_path() / ("dorvo-formats-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const FilterPtr filter = format.make(folder.string());
  double milliseconds = 0;
  const auto timed = [&](auto&& call) {
    const std::clock_t start = std::clock();
    call();
    milliseconds += static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
  };
  timed([&] { filter->begin(); });
  double early = 0;
  for (int number = 1; number <= pages; ++number) {
    const engine::PagePtr next = page(number);
    timed([&] { filter->page(next); });
    if (number == pages / 10) early = peak_megabytes();
  }
  timed([&] { filter->end(); });
  std::printf("%-5s %-9s %5d pages  %8.3f ms a page  %8.2f KB a page  %7.1f MB at a tenth  %7.1f MB at the end\n",
              format.name, sample, pages, milliseconds / pages, static_cast<double>(bytes_in(folder)) / 1024 / pages,
              early, peak_megabytes());
  std::fflush(stdout);
  std::filesystem::remove_all(folder);
}

void in_own_process(const std::function<void()>& call) {
  const pid_t child = fork();
  if (child == 0) {
    call();
    std::_Exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) std::printf("failed\n");
}

}  // namespace
}  // namespace dorvo::bench

int main() {
  using namespace dorvo::bench;
  using namespace dorvo::test;
  for (const Format& format : kFormats) {
    in_own_process([&] {
      // The first form warms the caches up; the figures are of a form in a process that has printed one.
      for (const char* sample : {"(cold)", "form"})
        measure(format, sample, 3, [](int number) { return form_page(number); });
    });
    in_own_process([&] {
      int row = 0;
      measure(format, "register", format.register_pages, [&](int number) { return register_page(number, row); });
    });
  }
}
