// bench_register ROWS: a register of so many rows from its database to a PDF file, with its time, its size and the
// most memory that the process held.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/register.h"
#include "export/pdf_filter.h"

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

int main(int count, char** arguments) {
  using namespace dorvo;
  const int rows = count > 1 ? std::atoi(arguments[1]) : 100000;
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::string database = (folder / ("dorvo-register-" + std::to_string(rows) + ".db")).string();
  if (count <= 1 || std::string(arguments[count - 1]) == "make") {
    bench::make_register(database, rows);
    if (count > 1) return 0;
  }

  const auto start = std::chrono::steady_clock::now();
  export_::PdfFilter filter;
  filter.FileName = (folder / "dorvo-register.pdf").string();
  const auto report = bench::register_report("Provider=SQLite;Data Source=" + database);
  int pages = 0;
  filter.begin();
  report->sink([&](const engine::PagePtr& page) {
    filter.page(page);
    ++pages;
  });
  report->run();
  filter.end();
  const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  const double processor = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  const auto bytes = static_cast<double>(std::filesystem::file_size(filter.FileName));
  std::printf(
      "%7d rows %5d pages  wall %5.2f s  processor %5.2f s, %5.2f us a row  %6.2f MB, %4.2f KB a page  %5.1f MB peak\n",
      rows, pages, wall, processor, processor * 1e6 / rows, bytes / 1e6, bytes / 1024 / pages,
      static_cast<double>(usage.ru_maxrss) / 1024);
}
