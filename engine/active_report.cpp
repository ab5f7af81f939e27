#include "engine/active_report.h"

#include <algorithm>
#include <cmath>

#include "engine/page_flow.h"
#include "engine/plan.h"
#include "engine/run.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::engine {
namespace {

using value::Error;
using value::Failure;

// Upright sizes by the codes of printer drivers, twips.
struct Paper {
  int code;
  int width;
  int height;
};
constexpr Paper kPapers[] = {
    {1, 12240, 15840},         // Letter
    {5, 12240, 20160},         // Legal
    {8, 16838, 23811},         // A3
    {kPaperA4, 11906, 16838},  //
    {11, 8391, 11906},         // A5
};

Paper upright(const PageSettings& settings) {
  for (const Paper& paper : kPapers) {
    if (paper.code == settings.PaperSize) return paper;
  }
  return {settings.PaperSize, static_cast<int>(std::lround(settings.PaperWidth)),
          static_cast<int>(std::lround(settings.PaperHeight))};
}

constexpr const char* kToolCaptions[Toolbar::kStandardTools] = {
    "Table of Contents", "-",       "Print...", "-", "Copy",     "-",    "Find",        "-", "Single", "Multiple", "-",
    "Zoom Out",          "Zoom In", "Zoom",     "-", "Previous", "Next", "Page Number", "-", "Back",   "Forward"};

}  // namespace

int PageSettings::sheet_width() const {
  const Paper paper = upright(*this);
  return Orientation == engine::Orientation::Landscape ? paper.height : paper.width;
}

int PageSettings::sheet_height() const {
  const Paper paper = upright(*this);
  return Orientation == engine::Orientation::Landscape ? paper.width : paper.height;
}

Toolbar::Toolbar() {
  for (const char* caption : kToolCaptions) add(caption);
}

Tool& Toolbar::add(std::string caption) {
  Tools.push_back({std::move(caption), true, 0});
  return Tools.back();
}

std::size_t ActiveReport::NameHash::operator()(std::string_view name) const {
  return value::name_hash(name);
}

bool ActiveReport::SameName::operator()(std::string_view left, std::string_view right) const {
  return value::same_name(left, right);
}

ActiveReport::ActiveReport(std::string name, LayoutPtr layout) : name_(std::move(name)), layout_(std::move(layout)) {
  for (const SectionLayout& section : layout_->sections) {
    sections_.push_back(std::make_unique<Section>(section));
    for (const auto& control : sections_.back()->Controls()) {
      by_name_.emplace(control->Name(), control.get());
      if (auto* data = dynamic_cast<DataControl*>(control.get())) master_ = data;
    }
  }
  if (!master_) {
    master_layout_ = std::make_unique<ControlLayout>();
    master_layout_->kind = ControlKind::Data;
    master_layout_->name = "recMaster";
    own_master_ = std::make_unique<DataControl>(*master_layout_);
    master_ = own_master_.get();
    by_name_.emplace(master_->Name(), master_);
  }
  plan_ = std::make_unique<ReportPlan>(sections_);
}

ActiveReport::~ActiveReport() = default;

void ActiveReport::run() {
  Run run(*this);
  PageFlow pages(run);
  run.whole(pages);
  if (run.failure()) throw *run.failure();
}

Section& ActiveReport::Sections(std::string_view name) {
  for (const auto& section : sections_) {
    if (value::same_name(section->Name(), name)) return *section;
  }
  throw Failure(Error::ControlNotFound, name_ + ": the layout has no section " + std::string(name));
}

Control* ActiveReport::find_control(std::string_view name) const {
  const auto found = by_name_.find(name);
  return found == by_name_.end() ? nullptr : found->second;
}

Control& ActiveReport::control(std::string_view name) const {
  if (Control* found = find_control(name)) return *found;
  throw Failure(Error::ControlNotFound, name_ + ": the layout has no control " + std::string(name));
}

void ActiveReport::wrong_kind(std::string_view name) const {
  throw Failure(Error::ControlNotFound,
                name_ + ", " + std::string(name) + ": the control is of another kind in the layout");
}

void ActiveReport::on(std::string_view event, std::function<void()> handler) {
  handlers_.insert_or_assign(value::lower_name(event), std::move(handler));
}

}  // namespace dorvo::engine
