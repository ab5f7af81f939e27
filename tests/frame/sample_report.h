// Small reports for the frame's tests: one layout under many names, and ports that record what the frame asks of them.
#pragma once

#include <string>
#include <vector>

#include "engine/layout_store.h"
#include "frame/ports.h"
#include "frame/report.h"
#include "frame/slots.h"

namespace dorvo::frame {

// One text, label, line and shape that the sweeps handle; one of each that is tagged "DH"; one label and one box
// outside Detail; footer labels.
inline constexpr std::string_view kSampleXml = R"(
  <Style name="body" font="Arial" size="10"/>
  <Section kind="PageHeader" name="PageHeader" height="300">
    <Label name="lblHeading" style="body" left="0" top="0" width="4000" height="240" text="Register"/>
    <Field name="txtHead" style="body" left="5000" top="0" width="1000" height="240" text="head"/>
  </Section>
  <Section kind="Detail" name="Detail" height="12000">
    <Field name="txtName" column="Name" style="body" left="0" top="0" width="4000" height="240"/>
    <Field name="txtHidden" visible="false" style="body" left="0" top="300" width="4000" height="240" text="x"/>
    <Field name="txtKept" tag="DH" style="body" left="0" top="600" width="4000" height="240" text="kept"/>
    <Field name="txtLower" tag="dh" style="body" left="0" top="900" width="4000" height="240" text="lower"/>
    <Label name="lblCaption" style="body" left="5000" top="0" width="3000" height="240" text="Caption"/>
    <Label name="lblKept" tag="DH" style="body" left="5000" top="300" width="3000" height="240" text="Kept"/>
    <Line name="linRule" left="0" top="2000" x2="9000" y2="2000"/>
    <Shape name="shpBox" left="0" top="3000" width="9000" height="1000"/>
  </Section>
  <Section kind="PageFooter" name="PageFooter" height="300">
    <Label name="lbl" style="body" left="0" top="0" width="3000" height="240" text="Pelmar Computation"/>
    <Label name="lblName" style="body" left="3000" top="0" width="3000" height="240" text=""/>
    <Label name="lblpageno" style="body" left="6000" top="0" width="2000" height="240" text=""/>
  </Section>
</Layout>)";

class SampleReport : public Report {
 public:
  using Report::ActiveReport_ReportStart;
  using Report::add;
  using Report::number;
  using Report::put;
  using Report::Report;
  using Report::strict_number;
  using Report::text;

 protected:
  std::string query() const override {
    return "SELECT Name FROM Customer WHERE CustomerID=" + std::to_string(PropCMasterID());
  }
};

// Registers report classes of the sample layout, and layouts of their names.
template <const char*... Names>
void use_sample_reports() {
  static const std::vector<std::string> texts = {"<Layout name=\"" + std::string(Names) +
                                                 "\" version=\"1\" width=\"9000\">" + std::string(kSampleXml)...};
  static const std::vector<engine::EmbeddedLayout> layouts = [] {
    std::vector<engine::EmbeddedLayout> all;
    for (const char* name : {Names...}) all.push_back({name, texts[all.size()]});
    return all;
  }();
  engine::embed_layouts(layouts.data(), layouts.size());
  set_report_classes({{Names, [] { return std::unique_ptr<Report>(std::make_unique<SampleReport>(Names)); }}...});
}

// Records the reports that are shown instead of running them.
class RecordingPorts : public HeadlessPorts {
 public:
  void show(Report& report) override { shown.push_back(&report); }
  bool page_setup(engine::PageSettings& settings) override {
    ++page_setups;
    settings.LeftMargin = 999;
    return true;
  }
  void export_dialog(Report& report) override { exported.push_back(&report); }
  bool browse_folder(const std::string& title, const std::string& initial, std::string& folder) override {
    browsed.push_back(title + "|" + initial);
    if (chosen_folder.empty()) return false;
    folder = chosen_folder;
    return true;
  }
  void yield() override { ++yields; }

  std::vector<Report*> shown;
  std::vector<Report*> exported;
  std::vector<std::string> browsed;
  std::string chosen_folder;  // empty: Cancel
  int page_setups = 0;
  int yields = 0;
};

}  // namespace dorvo::frame
