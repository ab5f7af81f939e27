// What the run loop looks up once: which box is bound to which column, which section closes which group, which handler
// hears which event; and the last text of every box with its shape, which most passes find unchanged.
//
// Made with the report object and kept with it, so that the fixed wording of a form is shaped once. Private to the
// engine.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/controls.h"
#include "engine/fit.h"

namespace dorvo::engine {

struct ControlPlan {
  engine::Control* control = nullptr;
  engine::Field* field = nullptr;           // when it is one
  engine::Label* label = nullptr;           // when it is one
  engine::SubReport* sub_report = nullptr;  // when it is one
  std::optional<std::size_t> column;        // of the open recordset
  std::optional<std::size_t> total;
  std::shared_ptr<const std::string> text;  // the last one laid out
  FittedText fitted;
};

using Handler = std::function<void()>;

struct SectionPlan {
  engine::Section* section = nullptr;
  std::vector<ControlPlan> controls;
  std::vector<std::size_t> growers;    // boxes that grow and sub-reports, from the top
  std::vector<const Control*> breaks;  // page breaks, from the top
  const Handler* format = nullptr;     // of the running report
  const Handler* before_print = nullptr;
};

struct GroupPlan {
  SectionPlan* header = nullptr;
  SectionPlan* footer = nullptr;      // may be none
  std::optional<std::size_t> column;  // of the key; none: the group never breaks
};

struct ReportPlan {
  std::vector<std::unique_ptr<SectionPlan>> sections;
  std::vector<GroupPlan> groups;  // outer to inner
  SectionPlan* report_header = nullptr;
  SectionPlan* page_header = nullptr;
  SectionPlan* detail = nullptr;  // every layout has one
  SectionPlan* page_footer = nullptr;
  SectionPlan* report_footer = nullptr;

  explicit ReportPlan(const std::vector<std::unique_ptr<engine::Section>>& all);
};

}  // namespace dorvo::engine
