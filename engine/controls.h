// The objects of a running report: controls and sections as its handlers see them.
//
// They are made from the stored layout when the report is loaded and go back to it at the start of every run.
// Owned by their section, sections by the report; references stay good as long as the report object lives.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "data/recordset.h"
#include "engine/layout.h"
#include "value/variant.h"

namespace dorvo::engine {

class ActiveReport;

class Control {
 public:
  explicit Control(const ControlLayout& layout) : layout_(&layout), visible_(layout.visible) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const ControlLayout& layout() const { return *layout_; }
  const std::string& Name() const { return layout_->name; }
  const std::string& Tag() const { return layout_->tag; }
  bool Visible() const { return visible_; }
  void Visible(bool visible) { visible_ = visible; }

  // Back to the stored layout, at run start.
  virtual void reset() { visible_ = layout_->visible; }

 private:
  const ControlLayout* layout_;
  bool visible_;
};

// A text box. Its text is the column that it is bound to, or what a handler writes.
class Field : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Field;
  explicit Field(const ControlLayout& layout) : Control(layout), text_(layout.text) {}
  const std::string& Text() const { return text_; }
  void Text(std::string text) { text_ = std::move(text); }
  void reset() override {
    Control::reset();
    text_ = layout().text;
  }

 private:
  std::string text_;
};

class Label : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Label;
  explicit Label(const ControlLayout& layout) : Control(layout), caption_(layout.text), design_(layout.text) {}
  const std::string& Caption() const { return caption_; }
  void Caption(std::string caption) { caption_ = std::move(caption); }
  // A caption written from outside a run; it stays for every later run of this report object.
  void DesignCaption(const std::string& caption) { design_ = caption_ = caption; }
  void reset() override {
    Control::reset();
    caption_ = design_;
  }

 private:
  std::string caption_;
  std::string design_;
};

class Line : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Line;
  using Control::Control;
};

class Shape : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Shape;
  using Control::Control;
};

// A break inside its section: what lies below it goes to the top of the next page. Disabled when not visible.
class PageBreak : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::PageBreak;
  using Control::Control;
  bool Enabled() const { return Visible(); }
  void Enabled(bool enabled) { Visible(enabled); }
};

// Holds a report that is run inside this one, in the width of this control; its section grows with it.
class SubReport : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::SubReport;
  using Control::Control;
  const std::shared_ptr<ActiveReport>& Report() const { return report_; }
  void Report(std::shared_ptr<ActiveReport> report) { report_ = std::move(report); }
  void reset() override {
    Control::reset();
    report_.reset();
  }

 private:
  std::shared_ptr<ActiveReport> report_;
};

// The source of the Detail rows, `recMaster` in every report.
class DataControl : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Data;
  using Control::Control;
  // Writing either closes the recordset.
  void ConnectionString(std::string text);
  const std::string& ConnectionString() const { return connection_string_; }
  void Source(std::string select);
  const std::string& Source() const { return source_; }
  // Opens the recordset, unless it is open or there is no query. The engine does so after ReportStart; a handler that
  // must know earlier whether there are rows does it itself. Fails as Connection::pooled() and Recordset::Open().
  void Open();
  void Close();  // closed already is no failure
  bool is_open() const { return recordset_.State() == data::State::Open; }
  // Opened by the engine; inside Detail_Format it stands on the row that is formatted.
  data::Recordset& Recordset() { return recordset_; }

 private:
  std::string connection_string_;
  std::string source_;
  data::Recordset recordset_;
};

class Section {
 public:
  explicit Section(const SectionLayout& layout);
  const SectionLayout& layout() const { return *layout_; }
  const std::string& Name() const { return layout_->name; }
  bool Visible() const { return visible_; }
  void Visible(bool visible) { visible_ = visible; }
  const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }
  // GroupHeader: this pass prints it again at the top of a continuation page; false when its group breaks.
  bool IsRepeat() const { return is_repeat_; }
  void set_repeat(bool repeat) { is_repeat_ = repeat; }
  void reset();

 private:
  const SectionLayout* layout_;
  std::vector<std::unique_ptr<Control>> controls_;
  bool visible_;
  bool is_repeat_ = false;
};

}  // namespace dorvo::engine
