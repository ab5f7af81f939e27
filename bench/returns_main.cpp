// bench_returns COUNT: Form201 for so many returns of a practice, each to a PDF file of its own, in one process. Tells
// the time a return and the memory at each tenth of the way.
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/practice_db.h"
#include "data/recordset.h"
#include "export/pdf_filter.h"
#include "frame/settings.h"
#include "returns/form_201.h"
#include "value/failure.h"

namespace {

using namespace dorvo;

// Resident now, not at its peak, so that memory given back shows.
double megabytes_now() {
  long pages = 0, resident = 0;
  std::FILE* file = std::fopen("/proc/self/statm", "r");
  if (file && std::fscanf(file, "%ld %ld", &pages, &resident) != 2) resident = 0;
  if (file) std::fclose(file);
  return static_cast<double>(resident) * 4096 / 1e6;
}

std::vector<std::int32_t> keys(std::size_t most) {
  std::vector<std::int32_t> found;
  std::shared_ptr<data::Recordset> rows;
  frame::OpenRecordset(rows, "SELECT CMasterID FROM CMaster ORDER BY CMasterID");
  for (; !rows->EOF_() && found.size() < most; rows->MoveNext())
    found.push_back(static_cast<std::int32_t>(value::number_of(rows->Fields("CMasterID"))));
  return found;
}

}  // namespace

int main(int count, char** arguments) {
  const int wanted = count > 1 ? std::atoi(arguments[1]) : 1000;
  bench::open_practice({wanted / 12 + 1, 2, 1});
  const auto folder = std::filesystem::temp_directory_path() / "dorvo-returns";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);

  returns::Form201 report;
  const std::vector<std::int32_t> returns = keys(static_cast<std::size_t>(wanted));
  std::size_t failed = 0;
  const std::clock_t start = std::clock();
  for (std::size_t i = 0; i < returns.size(); ++i) {
    export_::PdfFilter filter;
    filter.FileName = (folder / (std::to_string(returns[i]) + ".pdf")).string();
    report.PropCMasterID(returns[i]);
    filter.begin();
    report.sink([&](const engine::PagePtr& page) { filter.page(page); });
    try {
      report.run();
      filter.end();
    } catch (const value::Failure&) {
      ++failed;  // a return that the practice has spoilt on purpose
    }
    if ((i + 1) % (returns.size() / 10) == 0)
      std::printf("%5zu returns  %7.3f ms a return  %6.1f MB\n", i + 1,
                  static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC / static_cast<double>(i + 1),
                  megabytes_now());
  }
  std::printf("%zu files, %zu returns without one\n", returns.size() - failed, failed);
  std::filesystem::remove_all(folder);
}
