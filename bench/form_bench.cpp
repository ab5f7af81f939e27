// Warm runs of a form from query to PDF in memory, with the stages apart, beside two yardsticks: the same finished
// pages given straight to our PDF writer, and drawn straight on a Cairo PDF surface.
#include <benchmark/benchmark.h>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "bench/cairo_yardstick.h"
#include "bench/practice_db.h"
#include "composition/intimation.h"
#include "export/pdf_writer.h"
#include "returns/form_201.h"

namespace dorvo::bench {
namespace {

// Of the processor, so that what else the machine does is not in it.
double micros_now() {
  timespec now = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

// A report that tells how long its handlers took.
template <class Base>
class Timed : public Base {
 public:
  using Base::Base;
  double handlers = 0;  // microseconds since it was last set to 0

 protected:
  void Detail_Format() override {
    const double start = micros_now();
    Base::Detail_Format();
    handlers += micros_now() - start;
  }
};

struct TimedForm1 : Timed<composition::Intimation> {
  TimedForm1() : Timed<composition::Intimation>("Form1") {}
};
struct TimedForm201 : Timed<returns::VatReturn> {
  TimedForm201() : Timed<returns::VatReturn>("Form201") {}
};

std::string pdf_of(const std::vector<engine::PagePtr>& pages) {
  std::string out;
  export_::PdfWriter writer([&](std::string_view bytes) { out += bytes; });
  for (const engine::PagePtr& page : pages) writer.page(*page);
  writer.end();
  return out;
}

template <class Form>
Form& form() {
  static const bool kOpen = (open_practice({}), true);
  static_cast<void>(kOpen);
  static Form report;
  report.PropCMasterID(1);
  return report;
}

template <class Form>
std::vector<engine::PagePtr> finished_pages() {
  Form& report = form<Form>();
  std::vector<engine::PagePtr> pages;
  report.sink([&](const engine::PagePtr& page) { pages.push_back(page); });
  report.run();
  report.sink({});
  return pages;
}

// Everything: the run with its pages going to the writer as they are completed.
template <class Form>
void whole(benchmark::State& state) {
  Form& report = form<Form>();
  std::size_t bytes = 0, pages = 0;
  report.handlers = 0;
  double writing = 0;
  for (auto _ : state) {
    bytes = pages = 0;
    export_::PdfWriter writer([&](std::string_view part) { bytes += part.size(); });
    report.sink([&](const engine::PagePtr& page) {
      const double start = micros_now();
      writer.page(*page);
      writing += micros_now() - start;
      ++pages;
    });
    report.run();
    const double start = micros_now();
    writer.end();
    writing += micros_now() - start;
  }
  report.sink({});
  const auto runs = benchmark::Counter::kAvgIterations;
  state.counters["handlers_us"] = benchmark::Counter(report.handlers, runs);
  state.counters["pdf_us"] = benchmark::Counter(writing, runs);
  state.counters["bytes"] = static_cast<double>(bytes);
  state.counters["pages"] = static_cast<double>(pages);
}

// The main query alone, its rows read.
template <class Form>
void query(benchmark::State& state) {
  Form& report = form<Form>();
  report.run();
  for (auto _ : state) {
    report.recMaster().Open();
    benchmark::DoNotOptimize(report.recMaster().Recordset().RecordCount());
    report.recMaster().Close();
  }
}

// The run without the PDF: query, handlers, shaping and layout.
template <class Form>
void pages_only(benchmark::State& state) {
  Form& report = form<Form>();
  report.handlers = 0;
  report.sink([](const engine::PagePtr& page) { benchmark::DoNotOptimize(page.get()); });
  for (auto _ : state) report.run();
  report.sink({});
  state.counters["handlers_us"] = benchmark::Counter(report.handlers, benchmark::Counter::kAvgIterations);
}

template <class Form>
void yardstick_writer(benchmark::State& state) {
  const auto pages = finished_pages<Form>();
  std::size_t bytes = 0;
  for (auto _ : state) bytes = pdf_of(pages).size();
  state.counters["bytes"] = static_cast<double>(bytes);
}

template <class Form>
void yardstick_cairo(benchmark::State& state) {
  const auto pages = finished_pages<Form>();
  std::size_t bytes = 0;
  for (auto _ : state) bytes = cairo_pdf(pages).size();
  state.counters["bytes"] = static_cast<double>(bytes);
}

#define DORVO_BENCH_FORM(Form)                                                                      \
  BENCHMARK_TEMPLATE(whole, Timed##Form)->Name(#Form "/whole")->Unit(benchmark::kMicrosecond);      \
  BENCHMARK_TEMPLATE(query, Timed##Form)->Name(#Form "/query")->Unit(benchmark::kMicrosecond);      \
  BENCHMARK_TEMPLATE(pages_only, Timed##Form)->Name(#Form "/pages")->Unit(benchmark::kMicrosecond); \
  BENCHMARK_TEMPLATE(yardstick_writer, Timed##Form)                                                 \
      ->Name(#Form "/yardstick our writer")                                                         \
      ->Unit(benchmark::kMicrosecond);                                                              \
  BENCHMARK_TEMPLATE(yardstick_cairo, Timed##Form)->Name(#Form "/yardstick Cairo")->Unit(benchmark::kMicrosecond)

DORVO_BENCH_FORM(Form1);
DORVO_BENCH_FORM(Form201);

}  // namespace
}  // namespace dorvo::bench
