#include "frame/report.h"

#include <algorithm>

#include "engine/layout_store.h"
#include "frame/ports.h"

namespace dorvo::frame {
namespace {

constexpr std::size_t kExportTool = engine::Toolbar::kStandardTools;
constexpr int kExportToolID = 1;
constexpr std::string_view kKeepsOut = "DH";  // the tag that keeps a control out of both sweeps

const ReportKind& kind_of(std::string_view report) {
  static const ReportKind standard;
  const ReportKind* kind = find_report_kind(report);
  return kind ? *kind : standard;
}

void write_if_told(float& margin, int twips) {
  if (twips != kNotWritten) margin = static_cast<float>(twips);
}

void apply(const ReportKind& kind, engine::PageSettings& page) {
  page.PaperSize = kind.paper;
  if (kind.paper == engine::kPaperCustom) {
    page.PaperWidth = static_cast<float>(kind.paper_width);
    page.PaperHeight = static_cast<float>(kind.paper_height);
  }
  write_if_told(page.LeftMargin, kind.left);
  write_if_told(page.RightMargin, kind.right);
  write_if_told(page.TopMargin, kind.top);
  write_if_told(page.BottomMargin, kind.bottom);
  if (kind.writes_orientation) page.Orientation = kind.orientation;
}

// Shows or hides the controls of the handled kinds; both directions are meant.
void sweep(const engine::Section& detail, std::initializer_list<engine::ControlKind> kinds, bool flag) {
  for (const auto& control : detail.Controls()) {
    const bool handled = std::ranges::find(kinds, control->layout().kind) != kinds.end();
    if (handled && control->Tag() != kKeepsOut) control->Visible(!flag);
  }
}

}  // namespace

Report::Report(std::string name) : ActiveReport(name, engine::stored_layout(name)), kind_(&kind_of(name)) {
  on("Detail_Format", [this] { Detail_Format(); });
  if (kind_->page_footer) on("PageFooter_Format", [this] { PageFooter_Format(); });
}

void Report::property(std::string_view name, value::Variant value) {
  properties_.insert_or_assign(value::lower_name(name), std::move(value));
}

value::Variant Report::property(std::string_view name) const {
  const auto found = properties_.find(value::lower_name(name));
  return found == properties_.end() ? value::Variant() : found->second;
}

void Report::Show() {
  ports().show(*this);
}

void Report::ShowExportDialog() {
  if (Pages().Count() > 0) ports().export_dialog(*this);
}

void Report::ActiveReport_ToolbarClick(const engine::Tool& tool) {
  if (tool.ID == kExportToolID) ShowExportDialog();
}

void Report::heading(const std::string& caption) {
  control_as<engine::Label>("lblHeading").DesignCaption(caption);
}

void Report::ActiveReport_ReportStart() {
  if (!kind_->sub_report) {
    data::Connection::begin_run(basMain().ConnectionString, basMain().myConn.get());
    set_printer();
    set_page();
    set_toolbar();
    if (kind_->sweeps) {
      HideDataFields(basMain().BlankForm);
      HideFormArt(basMain().preprinted);
    }
    recMaster().ConnectionString(basMain().ConnectionString);
    recMaster().Source(query());
  }
  convert = convert::CNumConvert();
}

void Report::set_printer() {
  if (kind_->render_mode) Printer().RenderMode = 1;
  if (kind_->print_quality)
    Printer().PrintQuality = basMain().PrintQuality ? engine::kQualityDraft : engine::kQualityHigh;
  if (kind_->printer_option) Printer().Option = 1;
}

void Report::set_page() {
  if (kind_->page_setup_dialog && basMain().ShowPageSetup) {
    ports().page_setup(PageSettings());
  } else {
    apply(*kind_, PageSettings());
  }
}

void Report::set_toolbar() {
  Toolbar() = engine::Toolbar();  // a second run starts from the standard tools again
  Toolbar().Tools[0].Enabled = false;
  Toolbar().add("E&xport Report");
  Toolbar().Tools[kExportTool].ID = kExportToolID;
}

void Report::HideDataFields(bool flag) {
  sweep(Sections("Detail"), {engine::ControlKind::Field}, flag);
}

void Report::HideFormArt(bool flag) {
  using enum engine::ControlKind;
  sweep(Sections("Detail"), {Label, Line, Shape}, flag);
}

void Report::PageFooter_Format() {
  if (pageNumber() == 1) {
    show_user_name();
  } else {
    show("lblName", false);
    show("lbl", false);
  }
  caption("lblpageno", std::to_string(pageNumber()));
}

void Report::show_user_name() {
  show("lblName", basMain().ShowFooter);
  if (basMain().ShowFooter) caption("lblName", basMain().UserName);
}

std::string Report::text(std::string_view box) const {
  return control_as<engine::Field>(box).Text();
}

double Report::number(std::string_view box) const {
  return value::Val(text(box));
}

double Report::strict_number(std::string_view box) const {
  try {
    return value::strict_number(text(box));
  } catch (const value::Failure& failure) {
    throw failure.at(Name() + ", " + std::string(box));
  }
}

void Report::put(std::string_view box, const value::Variant& v) {
  if (v.is_null()) {
    throw value::Failure(value::Error::InvalidUseOfNull, Name() + ", " + std::string(box) + ": invalid use of Null");
  }
  control_as<engine::Field>(box).Text(value::text_of(v));
}

void Report::add(std::string_view box, const value::Variant& v) {
  put(box, value::Variant(number(box)) + v);
}

void Report::show(std::string_view name, bool visible) {
  control(name).Visible(visible);
}

void Report::caption(std::string_view label, std::string text) {
  control_as<engine::Label>(label).Caption(std::move(text));
}

value::Variant Report::master(std::string_view column) {
  try {
    return recMaster().Recordset().Fields(column);
  } catch (const value::Failure& failure) {
    throw failure.at(Name() + ", recMaster");
  }
}

}  // namespace dorvo::frame
