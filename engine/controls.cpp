#include "engine/controls.h"

#include "data/connection.h"

namespace dorvo::engine {
namespace {

std::unique_ptr<Control> make_control(const ControlLayout& layout) {
  switch (layout.kind) {
    case ControlKind::Label:
      return std::make_unique<Label>(layout);
    case ControlKind::Field:
      return std::make_unique<Field>(layout);
    case ControlKind::Line:
      return std::make_unique<Line>(layout);
    case ControlKind::Shape:
      return std::make_unique<Shape>(layout);
    case ControlKind::SubReport:
      return std::make_unique<SubReport>(layout);
    case ControlKind::PageBreak:
      return std::make_unique<PageBreak>(layout);
    case ControlKind::Data:
      return std::make_unique<DataControl>(layout);
  }
  return nullptr;
}

}  // namespace

void DataControl::ConnectionString(std::string text) {
  Close();
  connection_string_ = std::move(text);
}

void DataControl::Source(std::string select) {
  Close();
  source_ = std::move(select);
}

void DataControl::Open() {
  if (is_open() || source_.empty()) return;
  recordset_.Open(source_, data::Connection::pooled(connection_string_));
}

void DataControl::Close() {
  if (is_open()) recordset_.Close();
}

Section::Section(const SectionLayout& layout) : layout_(&layout), visible_(layout.visible) {
  controls_.reserve(layout.controls.size());
  for (const ControlLayout& control : layout.controls) controls_.push_back(make_control(control));
}

void Section::reset() {
  visible_ = layout_->visible;
  is_repeat_ = false;
  for (const auto& control : controls_) control->reset();
}

}  // namespace dorvo::engine
