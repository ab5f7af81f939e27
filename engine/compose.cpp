// Formatting a section: its boxes take their columns, its handlers run, its texts are fitted, it grows.
#include <algorithm>

#include "engine/run.h"
#include "engine/stack_flow.h"

namespace dorvo::engine {
namespace {

// Where what lies below a grown box goes.
class Growth {
 public:
  // What the layout has at `bottom` or below it moves `by` further down at least.
  void add(int bottom, int by) {
    if (by > 0) steps_.push_back({bottom, by});
  }
  int moved(int y) const {
    int by = 0;
    for (const Step& step : steps_) {
      if (y >= step.bottom) by = std::max(by, step.by);
    }
    return y + by;
  }

 private:
  struct Step {
    int bottom;
    int by;
  };
  std::vector<Step> steps_;
};

void fit(ControlPlan& control) {
  const std::string& text = control.label ? control.label->Caption() : control.field->Text();
  if (control.text && *control.text == text) return;
  control.fitted = fit_text(text, control.control->layout());
  control.text = held_text(text, control.fitted.shaped);
}

class Composer {
 public:
  Composer(Run& run, SectionPlan& plan, Band& band)
      : run_(run), plan_(plan), layout_(plan.section->layout()), band_(band) {}

  void lay_out() {
    band_.visible = true;
    band_.items.reserve(plan_.controls.size());
    for (const std::size_t index : plan_.growers) grow(plan_.controls[index]);
    band_.height = growth_.moved(layout_.height);
    add_segments();
    for (ControlPlan& control : plan_.controls) {
      if (control.control->Visible()) add(control);
    }
  }

 private:
  void grow(ControlPlan& control) {
    if (!control.control->Visible()) return;
    const ControlLayout& box = control.control->layout();
    const int top = growth_.moved(box.top);
    int height = box.height;
    if (control.sub_report) {
      height = std::max(height, run_sub_report(*control.sub_report, box.left, top));
    } else {
      fit(control);
      height = control.fitted.height;
    }
    const int bottom = box.top + box.height;
    growth_.add(bottom, top + height - bottom);
  }

  // The room that its bands take.
  int run_sub_report(const SubReport& frame, int left, int top) {
    if (!frame.Report() || run_.failure()) return 0;
    StackFlow bands(band_, left, top);
    try {
      Run child(*frame.Report(), &run_);
      child.whole(bands);
      run_.take(child);
    } catch (const value::Failure& failure) {
      run_.fail(failure);
    }
    band_.layouts.push_back(frame.Report()->layout());
    return bands.height();
  }

  void add_segments() {
    int from = 0;
    for (const Control* page_break : plan_.breaks) {
      if (!page_break->Visible()) continue;
      const int to = std::clamp(growth_.moved(page_break->layout().top), from, band_.height);
      add_segment(from, to);
      from = to;
    }
    add_segment(from, band_.height);
  }

  // Hidden controls count: on preprinted stationery each page keeps its number.
  void add_segment(int from, int to) {
    const bool last = to == band_.height;
    const auto inside = [&](const ControlPlan& control) {
      const ControlKind kind = control.control->layout().kind;
      const int top = growth_.moved(control.control->layout().top);
      return kind != ControlKind::PageBreak && kind != ControlKind::Data && top >= from && (top < to || last);
    };
    const bool room = from == 0 && to > 0;
    band_.segments.push_back({from, to, room || std::any_of(plan_.controls.begin(), plan_.controls.end(), inside)});
  }

  void add(ControlPlan& control) {
    switch (control.control->layout().kind) {
      case ControlKind::Label:
      case ControlKind::Field:
        return add_text(control);
      case ControlKind::Line:
      case ControlKind::Shape:
        return add_rule(control.control->layout());
      case ControlKind::SubReport:
      case ControlKind::PageBreak:
      case ControlKind::Data:
        return;
    }
  }

  PageItem& add_item(const ControlLayout& box) {
    PageItem& item = band_.items.emplace_back();
    item.control = &box;
    item.section = &layout_;
    item.left = box.left;
    item.top = growth_.moved(box.top);
    item.width = box.width;
    return item;
  }

  void add_text(ControlPlan& control) {
    fit(control);
    const ControlLayout& box = control.control->layout();
    PageItem& item = add_item(box);
    item.height = control.fitted.height;
    item.text = control.text;
    item.shaped = control.fitted.shaped;
    item.half_points = control.fitted.half_points;
    item.clipped = control.fitted.clipped;
    item.fixed = control.label && control.label->Caption() == box.text;
  }

  // Rules beside a grown box grow with it.
  void add_rule(const ControlLayout& rule) {
    PageItem& item = add_item(rule);
    item.height = growth_.moved(rule.top + rule.height) - item.top;
    item.fixed = true;
  }

  Run& run_;
  SectionPlan& plan_;
  const SectionLayout& layout_;
  Band& band_;
  Growth growth_;
};

}  // namespace

void Run::compose(SectionPlan& section, Band& band) {
  band.start(section.section->layout());
  if (!bind(section)) return;  // boxes behind the one that failed hold the row before
  raise(section.format, section, "_Format");
  raise(section.before_print, section, "_BeforePrint");
  if (section.section->Visible()) Composer(*this, section, band).lay_out();
}

}  // namespace dorvo::engine
