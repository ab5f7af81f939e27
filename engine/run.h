// One run of one report: its events, its rows, its groups and totals, and the failure that ended it.
//
// The order of events is decided here; what becomes of the bands is the target's affair. Private to the engine.
#pragma once

#include <optional>

#include "engine/active_report.h"
#include "engine/band.h"
#include "engine/plan.h"
#include "engine/totals.h"
#include "value/failure.h"

namespace dorvo::engine {

class Run {
 public:
  // `parent`: the run whose sub-report this one is. Fails with EngineState when the report is running already.
  explicit Run(ActiveReport& report, const Run* parent = nullptr);
  ~Run();
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // From ReportStart to ReportEnd. A failure of data or handlers is kept in failure().
  void whole(BandTarget& target);

  // Formats a section on the row where the report stands and lays it out.
  void compose(SectionPlan& section, Band& band);

  const std::optional<value::Failure>& failure() const { return failure_; }
  void fail(value::Failure failure);
  // The failure of a sub-report is the failure of its parent.
  void take(const Run& child);

  ActiveReport& report() { return report_; }
  ReportPlan& plan() { return *report_.plan_; }
  engine::Pages& pages() { return report_.pages_; }
  const PageSink& sink() const { return report_.sink_; }
  std::vector<std::string>& messages() { return report_.messages_; }
  void page_number(int number) { report_.page_number_ = number; }
  // Groups whose header has been placed and whose footer has not, from the outermost.
  std::size_t open_groups() const { return open_groups_; }
  // Sections of the page's end speak of the last row that landed on the page, not of the one that waits.
  void stand_on_landed_row();
  void stand_on_row();

 private:
  void restore_layout();
  void start();
  void open_data();
  void resolve_columns();
  std::optional<std::size_t> column_of(std::string_view column, const std::string& what);
  void resolve_totals();
  void resolve_handlers();
  const Handler* handler(const std::string& event) const;
  void raise(const Handler* handler, const SectionPlan& section, const char* event);
  template <class Call>
  void guard(const std::string& event, Call call);

  void all_rows(BandTarget& target);
  void one_row(BandTarget& target);
  void open_groups_from(std::size_t level, BandTarget& target);
  int room_of_first_row(std::size_t level);
  void close_groups_to(std::size_t level, BandTarget& target);
  void land_row();
  void place(SectionPlan* section, BandTarget& target, int room_below = 0);
  // The outermost group that the next row breaks; the number of groups when none.
  std::size_t level_broken_by_next_row();

  bool has_row() const { return rows_ > 0; }
  // False when a column has no text, which is a failure of the run.
  bool bind(SectionPlan& section);
  std::string total_text(const ControlPlan& control, const SectionPlan& section);

  ActiveReport& report_;
  const Run* parent_;
  data::Recordset* recordset_ = nullptr;  // none: no query
  std::int64_t rows_ = 0;
  std::int64_t row_ = 0;     // 1-based, where the report stands
  std::int64_t landed_ = 0;  // rows placed on pages so far
  std::size_t open_groups_ = 0;
  Totals totals_;
  std::optional<value::Failure> failure_;
  Band band_;
};

}  // namespace dorvo::engine
