// The six forms as papers: same figures, three products from one layout, pages, footers and golden pages.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "filing.h"
#include "frame/settings.h"
#include "value/text.h"

namespace dorvo::returns {
namespace {

using engine::ControlKind;

// A dealer and a return with something in every box.
Filing full() {
  Filing f;
  f.dealer("Address", "12, Fort").dealer("Address1", "Near Gate").dealer("City", "Pune").dealer("PinCode", "411001");
  f.dealer("VATNo", "27123456789V").dealer("BSTNo", "400012S1234").dealer("CSTNo", "400012C56").dealer("FileNo", "F-9");
  f.dealer("TinVAT", "27550000001V").dealer("TinCST", "27550000001C").dealer("SignatureName", "A. B. Joshi");
  f.dealer("Medicine", true).dealer("State", "Maharashtra");
  f.period(value::Date{2006, 4, 1, 0}, value::Date{2006, 4, 30, 0});
  f.set({{"ReturnType", "Revised"},
         {"FillingDateVAT", value::Date{2006, 5, 20, 0}},
         {"VATBankID", 1},
         {"VATChequeNo", "123456"},
         {"FormNote", "Stock statement filed on 1 May 2005."}});
  f.set({{"GrossSales", 500000},
         {"SalesOMSBranch", 20000},
         {"SalesUs8", 30000},
         {"SalesUS5", 40000},
         {"TaxCollected", 12345.67},
         {"SalesLabour", 1000},
         {"SalesTaxable", 240000},
         {"SalesMS", 5000},
         {"VATPlusExcess", 30000},
         {"SetoffClaimed", 9000},
         {"VATMinusSetoff", 21000},
         {"SetoffCF", 700},
         {"SetoffCFCST", 300},
         {"SetoffRefund", 150},
         {"NetVAT", 20000},
         {"TDS", 500},
         {"VATPaidEarlier", 250},
         {"VATWithReturn", 19250.5},
         {"NetExcessTaxCollected", 60}});
  f.set({{"SalesWC", 10000},
         {"SalesWCBalance1", 6000},
         {"SalesWCBalance2", 1000},
         {"SalesWCBalance3", 500},
         {"SalesWCTax1", 240},
         {"SalesWCRecordType1", "Including Tax"},
         {"SalesWCBalance14Percent", 2000},
         {"SalesWCTax14Percent", 80},
         {"SalesWCBalance2125Percent", 1000},
         {"SalesWCTax2125Percent", 125},
         {"SalesWCTax3", 40}});
  f.set({{"PurchaseImports", 100},
         {"PurchaseOMS", 200},
         {"PurchaseConsignment", 300},
         {"PurchaseRD", 100000},
         {"PurchaseMS", 1000},
         {"PurchaseRDTax", 8000},
         {"PurchaseURD", 400}});
  f.set({{"SetoffBF", 650},
         {"SetoffOpeningStock", 75},
         {"PurchaseValueRM", 900},
         {"PurchaseValueET", 600},
         {"SetoffPrevAdjusted", -25},
         {"AdHocSetoff", 12},
         {"NetValue535", 70},
         {"SetoffRestriction535", 8}});
  f.set({{"MedicineGTOMRP", 110}, {"MedicineTaxMRP", 4.4}, {"MedicineGTOActual", 100}, {"MedicineTaxActual", 4}});
  f.sale(4, 100000, 4000).sale(12.5, 120000.4, 15000.05).sale(8, 10000, 800).sale(1, 5000, 50).sale(20, 3000, 600);
  f.sale(5, 2000, 100).sale(4, 1000, 40, "RETURN");
  f.purchase(4, 50000, 2000, 2000).purchase(12.5, 40000, 5000, 5000).purchase(8, 3000, 240, 240);
  f.purchase(1, 2000, 20, 20).purchase(20, 1000, 200, 200).purchase(5, 600, 30, 30);
  f.purchase(4, 500, 20, 20, "RETURN");
  f.purchase(12.5, 800, 100, 40).spoil("Restriction531", 32).spoil("Restriction537", 25);
  return f;
}

// Boxes that one form calls otherwise than Form201; empty when there is no such box.
std::string other_name(const std::string& form, const std::string& box) {
  if (box == "ChargeNo") return form == "Form201132" ? "ChargeNo" : form == "Form201" ? "ChargeNo" : "txtChargeNo";
  return box.rfind("Field", 0) == 0 && box.size() == 6 ? "" : box;  // periods of the copies
}

TEST(Forms, PrintIdenticalFigures) {
  const FreshSettings fresh;
  Filing filing = full();
  filing.open();
  const auto first = print("Form201");
  for (const std::string& form : six_forms()) {
    const auto report = print(form);
    int compared = 0;
    for (const auto& control : first->Sections("Detail").Controls()) {
      if (control->layout().kind != ControlKind::Field) continue;
      const std::string name = other_name(form, control->Name());
      if (name.empty() || name == "txtBankName" || name == "txtVATChequeNo") continue;
      EXPECT_EQ(seen(*report, name), seen(*first, control->Name())) << form << ", " << name;
      ++compared;
    }
    EXPECT_EQ(compared, 119) << form;
  }
}

TEST(Forms, SecondRunIsAsTheFirst) {
  const FreshSettings fresh;
  Filing filing = full();
  filing.open();
  const auto report = print("Form201");
  const std::string once = seen(*report, "txtTaxStotal") + " " + seen(*report, "txtVATChequeNo1");
  report->run();
  EXPECT_EQ(seen(*report, "txtTaxStotal") + " " + seen(*report, "txtVATChequeNo1"), once);
  EXPECT_EQ(report->Pages().Count(), 3u);
}

TEST(Forms, NoReturnNoPage) {
  const FreshSettings fresh;
  Filing filing;
  filing.open();
  const auto report = make("Form201");
  report->PropCMasterID(4711);
  report->run();
  EXPECT_EQ(report->Pages().Count(), 0u);
}

// Boxes that may print something else than "NIL" on a return without any figure.
const std::set<std::string> kNoFigures = {"txtVATNo",
                                          "txtVATNo1",
                                          "txtVATNo2",
                                          "txtBSTNo",
                                          "txtBSTNo1",
                                          "txtBSTNo2",
                                          "txtCSTNo",
                                          "txtCSTNo1",
                                          "txtCSTNo2",
                                          "txtName",
                                          "txtName1",
                                          "txtName2",
                                          "txtName4",
                                          "txtFromDate",
                                          "txtToDate",
                                          "Field6",
                                          "Field7",
                                          "Field8",
                                          "Field9",
                                          "ChargeNo",
                                          "txtChargeNo1",
                                          "txtChargeNo2",
                                          "txtreturntype",
                                          "txtreturntype1",
                                          "txtBankName",
                                          "txtBankName1",
                                          "txtBankName2",
                                          "txtVATChequeNo",
                                          "txtVATChequeNo1",
                                          "txtVATChequeNo2",
                                          "txtFillingDateVAT",
                                          "txtFillingDate1",
                                          "txtFillingDate2",
                                          "txtCity",
                                          "txtCity1",
                                          "txtCity2",
                                          "txtSignatureName",
                                          "txtSignature1",
                                          "txtFileNo",
                                          "formNote",
                                          "txtwords",
                                          "txtwords1",
                                          "txtwords2",
                                          "txtVATWithReturn1",
                                          "txtVATWithReturn2",
                                          "txtVATWithReturn3",
                                          "txtSetoffCFCST",
                                          "txtCFPlusCFCST"};

TEST(Forms, EveryFigureOfAnEmptyReturnIsNil) {
  const FreshSettings fresh;
  Filing filing;
  filing.dealer("Medicine", true).open();
  const auto report = print("Form201");
  int figures = 0;
  for (const auto& control : report->Sections("Detail").Controls()) {
    if (control->layout().kind != ControlKind::Field || kNoFigures.contains(control->Name())) continue;
    EXPECT_EQ(report->control_as<engine::Field>(control->Name()).Text(), "NIL") << control->Name();
    ++figures;
  }
  EXPECT_EQ(figures, 77);  // 71 that are replaced, 4 fixed ones, rows 7 and 8 of box 20
}

std::set<std::string> visible(const frame::Report& report, std::initializer_list<ControlKind> kinds) {
  std::set<std::string> names;
  for (const auto& control : report.Sections().front()->Controls()) {
    const bool wanted = std::ranges::find(kinds, control->layout().kind) != kinds.end();
    if (wanted && control->Visible()) names.insert(control->Name());
  }
  return names;
}

TEST(Forms, BlankFormKeepsWhatItsStepsBringBack) {
  const FreshSettings fresh;
  Filing filing = full();
  filing.open();
  frame::basMain().BlankForm = true;
  for (const std::string& form : six_forms()) {
    EXPECT_EQ(visible(*print(form), {ControlKind::Field}),
              (std::set<std::string>{"txtBSTNo", "txtBSTNo1", "txtBSTNo2", "txtSetoffCFCST", "txtCFPlusCFCST",
                                     "txtNetExcessTaxCollected", "txtMedicineGTOMRP", "txtMedicineTaxMRP",
                                     "txtMedicineGTOActual", "txtMedicineTaxActual"}))
        << form;
  }
}

TEST(Forms, StationeryKeepsTheLabelsItsStepsBringBack) {
  const FreshSettings fresh;
  Filing filing = full();
  filing.open();
  frame::basMain().preprinted = true;
  const std::set<std::string> labels = {"lblMedicine",    "lblMedicine1",    "lblMedicine2",   "lblMedicine3",
                                        "lblMedicine4",   "lblExcess",       "lblExcessSrNo",  "lblNote",
                                        "lblSetoffCFCST", "lblSetoffCFCST1", "lblSetoffCFCST2"};
  for (const std::string& form : six_forms()) {
    const auto report = print(form);
    EXPECT_EQ(visible(*report, {ControlKind::Label, ControlKind::Line, ControlKind::Shape}), labels) << form;
  }
}

TEST(Forms, FooterNamesTheUserWhereAsked) {
  const FreshSettings fresh;
  Filing filing;
  filing.open();
  frame::basMain().UserName = "Joshi & Co.";
  for (const bool asked : {false, true}) {
    frame::basMain().ShowFooter = asked;
    for (const std::string form : {"Form201", "Form203", "Form202132"}) {
      const auto report = print(form);
      std::string names;
      for (const engine::PagePtr& page : report->Pages()) {
        for (const engine::PageItem& item : page->items)
          if (item.name() == "lblName") names += std::to_string(page->number) + ":" + std::string(item.string()) + " ";
      }
      EXPECT_EQ(names, asked ? "1:Joshi & Co. " : "") << form;
    }
  }
}

// What stands on paper, one line a text: page, control, place, text.
std::string paper(const frame::Report& report) {
  std::ostringstream out;
  for (const engine::PagePtr& page : report.Pages()) {
    out << "page " << page->number << " " << page->width << " x " << page->height << "\n";
    for (const engine::PageItem& item : page->items) {
      if (item.kind() != ControlKind::Field && item.fixed) continue;
      std::string text(item.string());
      std::erase(text, '\r');
      std::ranges::replace(text, '\n', '|');
      if (!text.empty()) out << "  " << item.name() << " (" << item.left << ", " << item.top << "): " << text << "\n";
    }
  }
  return out.str();
}

// DORVO_GOLDEN=write in the environment writes the files anew, to be read against the rules before they are kept.
TEST(Forms, GoldenPages) {
  const FreshSettings fresh;
  Filing filing = full();
  filing.open();
  frame::basMain().ShowFilingDate = frame::basMain().ShowCity = frame::basMain().ShowFooter = true;
  frame::basMain().UserName = "Joshi & Co.";
  for (const std::string& form : six_forms()) {
    const std::string file = DORVO_SOURCE_DIR "/tests/golden/" + form + ".txt";
    const auto report = print(form);
    EXPECT_TRUE(report->Messages().empty()) << report->Messages().front();
    if (const char* mode = std::getenv("DORVO_GOLDEN"); mode && std::string(mode) == "write")
      std::ofstream(file) << paper(*report);
    std::ifstream in(file);
    const std::string golden((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(paper(*report), golden) << form;
  }
}

}  // namespace
}  // namespace dorvo::returns
