#include "engine/run.h"

#include "engine/stack_flow.h"
#include "value/text.h"

namespace dorvo::engine {

using value::Error;
using value::Failure;

Run::Run(ActiveReport& report, const Run* parent) : report_(report), parent_(parent) {
  if (report_.running_) throw Failure(Error::EngineState, report_.Name() + ": the report is running already");
  report_.running_ = true;
}

Run::~Run() {
  report_.running_ = false;
}

void Run::whole(BandTarget& target) {
  restore_layout();
  start();
  if (!failure_) open_data();
  if (!failure_) all_rows(target);
  guard("ActiveReport_ReportEnd", [&] { report_.ActiveReport_ReportEnd(); });
  report_.recMaster().Close();
}

// The second run of a report object behaves as the first.
void Run::restore_layout() {
  report_.pages_.clear();
  report_.messages_.clear();
  report_.page_number_ = parent_ ? parent_->report_.page_number_ : 0;
  report_.printer_ = {};
  report_.page_settings_ = {};
  report_.toolbar_ = {};
  if (!parent_) report_.recMaster().Close();  // of a sub-report, the parent may have opened it on purpose
  for (const auto& section : report_.sections_) section->reset();
}

void Run::start() {
  resolve_handlers();
  guard("ActiveReport_ReportStart", [&] { report_.ActiveReport_ReportStart(); });
}

void Run::open_data() {
  guard("recMaster", [&] {
    report_.recMaster().Open();
    if (!report_.recMaster().is_open()) return;
    recordset_ = &report_.recMaster().Recordset();
    rows_ = recordset_->RecordCount();
    resolve_columns();
    resolve_totals();
  });
}

void Run::resolve_columns() {
  for (const auto& section : plan().sections) {
    for (ControlPlan& control : section->controls) {
      if (control.field) control.column = column_of(control.control->layout().column, control.control->Name());
    }
  }
  for (GroupPlan& group : plan().groups) {
    const SectionLayout& header = group.header->section->layout();
    group.column = column_of(header.key, header.name);
  }
}

std::optional<std::size_t> Run::column_of(std::string_view column, const std::string& what) {
  if (column.empty()) return {};
  const std::size_t found = recordset_->find_field(column);
  if (found != data::Recordset::npos) return found;
  throw Failure(Error::ItemNotFound,
                what + " needs the column " + std::string(column) + ", which the result of the query has not");
}

void Run::resolve_totals() {
  totals_.clear();
  const auto level_of = [&](std::string_view group) {
    int level = 0;
    while (!value::same_name(plan().groups[static_cast<std::size_t>(level)].header->section->Name(), group)) ++level;
    return level;
  };
  for (const auto& section : plan().sections) {
    for (ControlPlan& control : section->controls) {
      const ControlLayout& layout = control.control->layout();
      control.total.reset();
      if (layout.sum == Sum::None || !control.column) continue;
      control.total =
          totals_.request(*control.column, layout.sum == Sum::Report ? Totals::kReport : level_of(layout.group));
    }
  }
}

void Run::resolve_handlers() {
  for (const auto& section : plan().sections) {
    section->format = handler(section->section->Name() + "_Format");
    section->before_print = handler(section->section->Name() + "_BeforePrint");
  }
}

const Handler* Run::handler(const std::string& event) const {
  const auto found = report_.handlers_.find(value::lower_name(event));
  return found == report_.handlers_.end() || !found->second ? nullptr : &found->second;
}

void Run::raise(const Handler* handler, const SectionPlan& section, const char* event) {
  if (handler) guard(section.section->Name() + event, *handler);
}

// After a failure no handler runs any more.
template <class Call>
void Run::guard(const std::string& event, Call call) {
  if (failure_) return;
  const std::string place = report_.Name() + ", " + event;
  try {
    call();
  } catch (const Failure& failure) {
    // Many failures tell the report themselves: "Form1, txtName: ...".
    std::string what = failure.description();
    const std::string own = report_.Name() + ", ";
    if (what.starts_with(own)) return fail({failure.number(), place + ", " + what.substr(own.size())});
    const std::string name = report_.Name() + ": ";
    if (what.starts_with(name)) what.erase(0, name.size());
    fail({failure.number(), place + ": " + what});
  } catch (const std::exception& problem) {
    fail({Error::EngineState, place + ": " + problem.what()});
  }
}

void Run::fail(Failure failure) {
  if (!failure_) failure_ = std::move(failure);
}

void Run::take(const Run& child) {
  if (child.failure_) fail(*child.failure_);
}

void Run::all_rows(BandTarget& target) {
  // A sub-report without rows still shows its heads and totals; a report without rows has no page.
  if (!has_row() && !parent_) return;
  if (has_row()) row_ = 1;
  stand_on_row();
  target.begin();
  if (parent_ && has_row()) place(plan().report_header, target);
  if (!has_row()) {
    open_groups_from(0, target);
    close_groups_to(0, target);
  }
  std::size_t broken = 0;
  while (has_row() && !failure_) {
    open_groups_from(broken, target);
    one_row(target);
    broken = level_broken_by_next_row();
    close_groups_to(broken, target);
    if (row_ == rows_) break;
    ++row_;
    stand_on_row();
  }
  if (has_row()) place(plan().report_footer, target);
  target.end();
}

void Run::one_row(BandTarget& target) {
  place(plan().detail, target);
  land_row();
}

// A row counts where it landed.
void Run::land_row() {
  landed_ = row_;
  guard("recMaster", [&] { totals_.add_row([&](std::size_t column) { return recordset_->Fields(column); }); });
}

void Run::open_groups_from(std::size_t level, BandTarget& target) {
  totals_.open_groups(static_cast<int>(level));
  for (std::size_t i = level; i < plan().groups.size() && !failure_; ++i) {
    place(plan().groups[i].header, target, room_of_first_row(i));
    open_groups_ = i + 1;
  }
}

// What must fit below the header of a group, so that it does not stand alone at the end of a page: the headers inside
// it and one row.
int Run::room_of_first_row(std::size_t level) {
  if (!has_row()) return 0;
  const auto height = [](const SectionPlan& plan) {
    return plan.section->Visible() ? plan.section->layout().height : 0;
  };
  int room = height(*plan().detail);
  for (std::size_t i = level + 1; i < plan().groups.size(); ++i) room += height(*plan().groups[i].header);
  return room;
}

void Run::close_groups_to(std::size_t level, BandTarget& target) {
  while (open_groups_ > level && !failure_) {
    place(plan().groups[open_groups_ - 1].footer, target);
    --open_groups_;
  }
}

void Run::place(SectionPlan* section, BandTarget& target, int room_below) {
  if (!section || failure_) return;
  compose(*section, band_);
  if (band_.visible) target.place(band_, room_below);
}

std::size_t Run::level_broken_by_next_row() {
  if (row_ == rows_ || failure_) return 0;
  std::size_t level = 0;
  for (const std::size_t count = plan().groups.size(); level < count; ++level) {
    const auto& column = plan().groups[level].column;
    if (!column) continue;
    const value::Variant here = recordset_->Fields(*column);
    recordset_->AbsolutePosition(row_ + 1);
    const value::Variant next = recordset_->Fields(*column);
    recordset_->AbsolutePosition(row_);
    if (!(here == next)) break;
  }
  return level;
}

void Run::stand_on_row() {
  if (row_ > 0) recordset_->AbsolutePosition(row_);
}

void Run::stand_on_landed_row() {
  if (landed_ > 0) recordset_->AbsolutePosition(landed_);
}

bool Run::bind(SectionPlan& section) {
  for (ControlPlan& control : section.controls) {
    try {
      if (control.total) {
        control.field->Text(total_text(control, section));
      } else if (control.column) {
        control.field->Text(has_row() ? value::text_of(recordset_->Fields(*control.column)) : std::string());
      }
    } catch (const Failure& failure) {
      fail(failure.at(report_.Name() + ", recMaster, " + control.control->Name()));
      return false;
    }
  }
  return true;
}

// In the Detail section a total runs: it counts the row that is formatted.
std::string Run::total_text(const ControlPlan& control, const SectionPlan& section) {
  const bool running = section.section->layout().kind == SectionKind::Detail;
  return value::number_text(running ? totals_.value_with(*control.total, recordset_->Fields(*control.column))
                                    : totals_.value(*control.total));
}

}  // namespace dorvo::engine
