#include "engine/plan.h"

#include <algorithm>

#include "value/text.h"

namespace dorvo::engine {
namespace {

bool is_grower(const ControlPlan& plan) {
  return plan.sub_report || plan.control->layout().grow;
}

std::unique_ptr<SectionPlan> plan_of(Section& section) {
  auto plan = std::make_unique<SectionPlan>();
  plan->section = &section;
  plan->controls.reserve(section.Controls().size());
  for (const auto& control : section.Controls()) {
    ControlPlan& each = plan->controls.emplace_back();
    each.control = control.get();
    each.field = dynamic_cast<Field*>(control.get());
    each.label = dynamic_cast<Label*>(control.get());
    each.sub_report = dynamic_cast<SubReport*>(control.get());
    if (is_grower(each)) plan->growers.push_back(plan->controls.size() - 1);
    if (control->layout().kind == ControlKind::PageBreak) plan->breaks.push_back(control.get());
  }
  const auto top = [&](std::size_t index) { return plan->controls[index].control->layout().top; };
  std::stable_sort(plan->growers.begin(), plan->growers.end(), [&](auto a, auto b) { return top(a) < top(b); });
  std::stable_sort(plan->breaks.begin(), plan->breaks.end(),
                   [](auto* a, auto* b) { return a->layout().top < b->layout().top; });
  return plan;
}

}  // namespace

ReportPlan::ReportPlan(const std::vector<std::unique_ptr<Section>>& all) {
  for (const auto& section : all) {
    SectionPlan* plan = sections.emplace_back(plan_of(*section)).get();
    const SectionLayout& layout = section->layout();
    switch (layout.kind) {
      case SectionKind::ReportHeader:
        report_header = plan;
        break;
      case SectionKind::PageHeader:
        page_header = plan;
        break;
      case SectionKind::GroupHeader:
        groups.push_back({plan, nullptr, {}});
        break;
      case SectionKind::Detail:
        detail = plan;
        break;
      case SectionKind::GroupFooter:
        for (GroupPlan& group : groups) {
          if (value::same_name(group.header->section->Name(), layout.group)) group.footer = plan;
        }
        break;
      case SectionKind::PageFooter:
        page_footer = plan;
        break;
      case SectionKind::ReportFooter:
        report_footer = plan;
        break;
    }
  }
}

}  // namespace dorvo::engine
