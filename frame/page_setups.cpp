#include "frame/page_setups.h"

#include "value/text.h"

namespace dorvo::frame {
namespace {

using enum engine::Orientation;
using engine::kPaperCustom;

// The 132-column stationery: fifteen inches wide, twelve long.
ReportKind stationery(std::string_view report, int sides, int ends) {
  return {.report = report,
          .paper = kPaperCustom,
          .paper_width = 21600,
          .paper_height = 17280,
          .left = sides,
          .right = sides,
          .top = ends,
          .bottom = ends};
}

ReportKind without_sweeps(ReportKind kind) {
  kind.sweeps = false;
  return kind;
}

// A row says only where a report differs from A4 upright with margins 1152, 360, 720 and 720.
const std::vector<ReportKind> kReportKinds = {
    {.report = "Form1"},
    {.report = "Form2"},
    {.report = "Form3"},
    {.report = "Form4"},
    {.report = "Form5"},

    {.report = "Form201", .page_footer = true},
    {.report = "Form202", .page_footer = true},
    {.report = "Form203", .page_footer = true},
    {.report = "Form204", .page_footer = true},
    {.report = "Form205", .page_footer = true},
    {.report = "Form206", .page_footer = true},
    {.report = "Form207", .page_footer = true},
    {.report = "Form214", .page_footer = true},
    {.report = "Form209", .page_footer = true},
    {.report = "Form209E", .page_footer = true},
    {.report = "PTFormIII", .page_footer = true},
    {.report = "PTFormIIINew", .page_footer = true},
    {.report = "PTFormIIINew10", .page_footer = true},
    {.report = "PTRFormIII", .page_footer = true},
    {.report = "PTRFormIIInew", .top = 432, .page_footer = true},

    stationery("Form201132", 288, 288),
    stationery("Form202132", 288, 288),
    stationery("Form203132", 288, 288),
    stationery("Form204132", 288, 720),
    stationery("Form205132", 288, 720),
    stationery("Form206132", 288, 720),
    stationery("Form207132", 288, 720),
    stationery("Form214132", 288, 720),
    stationery("PTFormIII132", 288, 720),

    {.report = "CSTReturnIIIB", .left = 360, .right = 0, .top = 144, .bottom = 144, .sweeps = false},
    without_sweeps(stationery("CSTReturnIIIB132", 720, 720)),
    {.report = "Form208", .left = 1440, .right = 1440, .top = 1440, .bottom = 1440, .sweeps = false},
    {.report = "Form208132", .left = 1440, .right = 1440, .top = 1440, .bottom = 1440, .sweeps = false},
    {.report = "FormVIII", .left = 1440, .right = 1440, .top = 1296, .bottom = 1440, .orientation = Landscape},
    {.report = "Form210",
     .left = kNotWritten,
     .right = kNotWritten,
     .top = kNotWritten,
     .bottom = kNotWritten,
     .orientation = Landscape,
     .render_mode = false,
     .print_quality = false,
     .page_setup_dialog = false},

    {.report = "Bill", .paper = kPaperCustom, .paper_width = 12240, .paper_height = 7920},
    {.report = "Receipt", .paper = kPaperCustom, .paper_width = 12240, .paper_height = 7920},
    {.report = "BillRegister", .left = 720},
    {.report = "DealerBill", .left = 720},
    {.report = "SummerisedBill"},
    {.report = "DealerReceipt"},
    {.report = "ReceiptRegister"},

    {.report = "CompositionStatement",
     .left = 1440,
     .right = 720,
     .page_setup_dialog = false,
     .printer_option = true,
     .sweeps = false},
    {.report = "StatementShort",
     .left = 1440,
     .right = 720,
     .page_setup_dialog = false,
     .printer_option = true,
     .sweeps = false},
    {.report = "InterestMaster", .left = 720, .right = 720, .top = 1080, .page_setup_dialog = false, .sweeps = false},
    {.report = "AddressLabel",
     .left = kNotWritten,
     .right = kNotWritten,
     .top = kNotWritten,
     .bottom = kNotWritten,
     .orientation = Landscape,
     .print_quality = false,
     .sweeps = false},
    {.report = "DealerList",
     .left = kNotWritten,
     .right = kNotWritten,
     .top = kNotWritten,
     .bottom = kNotWritten,
     .print_quality = false,
     .sweeps = false},
    {.report = "Liability0910",
     .left = 720,
     .right = kNotWritten,
     .top = kNotWritten,
     .bottom = kNotWritten,
     .writes_orientation = false,
     .print_quality = false,
     .sweeps = false},

    {.report = "AuditDetailsRpt", .sub_report = true},
    {.report = "CSTReturnIIIBAnnexure", .sub_report = true},
};

}  // namespace

const std::vector<ReportKind>& report_kinds() {
  return kReportKinds;
}

const ReportKind* find_report_kind(std::string_view report) {
  for (const ReportKind& kind : kReportKinds) {
    if (value::same_name(kind.report, report)) return &kind;
  }
  return nullptr;
}

}  // namespace dorvo::frame
