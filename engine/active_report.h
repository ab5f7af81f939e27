// A report object: the stored layout with its sections and controls, and the run that fills pages from rows.
//
// A class derived from ActiveReport names its layout and registers its event handlers by section name. Show() runs
// the report once and hands its finished pages to whoever took the viewer's place (see RunTarget). The second run
// of an object behaves as the first: the layout's state is restored at run start. One thread; handlers run to their
// end before the engine goes on.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/controls.h"
#include "engine/pages.h"

namespace dorvo::engine {

struct ReportPlan;

enum class Orientation : int { Portrait = 1, Landscape = 2 };
constexpr int kPaperA4 = 9;
constexpr int kPaperCustom = 256;
constexpr int kQualityDraft = -1;
constexpr int kQualityHigh = -4;

struct PageSettings {
  int PaperSize = kPaperA4;
  float PaperWidth = 11906;  // twips, of the sheet held upright
  float PaperHeight = 16838;
  float LeftMargin = 1440;
  float RightMargin = 1440;
  float TopMargin = 1440;
  float BottomMargin = 1440;
  engine::Orientation Orientation = Orientation::Portrait;

  // The sheet as it is read, twips: paper of a known size by that, custom paper by its lengths, turned when landscape.
  int sheet_width() const;
  int sheet_height() const;
};

struct Printer {
  int RenderMode = 0;
  int PrintQuality = kQualityHigh;
  int Option = 0;  // the further option of two statements; no effect on pages
};

struct Tool {
  std::string Caption;
  bool Enabled = true;
  int ID = 0;
};

// The preview's toolbar: 21 standard tools and what the report adds.
struct Toolbar {
  static constexpr std::size_t kStandardTools = 21;
  std::vector<Tool> Tools;
  Toolbar();
  Tool& add(std::string caption);
};

class ActiveReport {
 public:
  // `layout` is shared with the finished pages. `name` is the report class, as messages and dumps tell it.
  ActiveReport(std::string name, LayoutPtr layout);
  virtual ~ActiveReport();
  ActiveReport(const ActiveReport&) = delete;
  ActiveReport& operator=(const ActiveReport&) = delete;

  const std::string& Name() const { return name_; }
  const LayoutPtr& layout() const { return layout_; }

  // One whole run. A failure of the data control or of a handler ends it: the Failure is thrown with report, event
  // and control in its text, and the pages completed so far, with what was filled of the last, stand in Pages or have
  // gone to the sink. No rows: no pages. Fails with EngineState when this object is running already, or when page
  // header and footer leave no room on the sheet.
  // Virtual, so that windows in a library of their own run it in the library that made it.
  virtual void run();

  // Pages go here as they are completed instead of into Pages, so that a long list needs no memory for them.
  void sink(PageSink sink) { sink_ = std::move(sink); }

  const engine::Pages& Pages() const { return pages_; }
  // Trades them for other finished pages of this report: an earlier run's, which a window still shows.
  void swap_pages(engine::Pages& pages) { std::swap(pages_, pages); }
  // What the officer should know of the last run and no failure was: text cut at its box, by report, page and control.
  const std::vector<std::string>& Messages() const { return messages_; }

  int pageNumber() const { return page_number_; }
  engine::Printer& Printer() { return printer_; }
  engine::PageSettings& PageSettings() { return page_settings_; }
  engine::Toolbar& Toolbar() { return toolbar_; }

  // By name, without regard to case. Fails with ControlNotFound, naming report and control.
  Section& Sections(std::string_view name);
  const std::vector<std::unique_ptr<Section>>& Sections() const { return sections_; }
  Control& control(std::string_view name) const;
  Control* find_control(std::string_view name) const;  // nullptr when there is none
  template <class Kind>
  Kind& control_as(std::string_view name) const {
    Control& found = control(name);
    if (found.layout().kind != Kind::kKind) wrong_kind(name);
    return static_cast<Kind&>(found);  // its class follows from its kind
  }
  DataControl& recMaster() { return *master_; }

 protected:
  // Registers the handler of an event: "Detail_Format", "Detail_BeforePrint", "grpAnnexure_Format", ...
  // An event without a handler does nothing.
  void on(std::string_view event, std::function<void()> handler);

  virtual void ActiveReport_ReportStart() {}
  virtual void ActiveReport_ReportEnd() {}

 private:
  friend class Run;
  [[noreturn]] void wrong_kind(std::string_view name) const;

  std::string name_;
  LayoutPtr layout_;
  std::vector<std::unique_ptr<Section>> sections_;
  struct NameHash {
    std::size_t operator()(std::string_view name) const;
  };
  struct SameName {
    bool operator()(std::string_view left, std::string_view right) const;
  };
  std::unordered_map<std::string_view, Control*, NameHash, SameName> by_name_;  // names of the layout
  std::unique_ptr<ControlLayout> master_layout_;                                // when the layout has no data control
  std::unique_ptr<DataControl> own_master_;
  DataControl* master_ = nullptr;
  std::map<std::string, std::function<void()>, std::less<>> handlers_;  // lower case
  std::unique_ptr<ReportPlan> plan_;                                    // what the run loop keeps from run to run
  bool running_ = false;
  engine::Pages pages_;
  PageSink sink_;
  std::vector<std::string> messages_;
  int page_number_ = 0;
  engine::Printer printer_;
  engine::PageSettings page_settings_;
  engine::Toolbar toolbar_;
};

}  // namespace dorvo::engine
