// The six forms as papers: same figures, three products from one layout, pages, footers and golden pages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>

#include "filing.h"
#include "frame/settings.h"

namespace dorvo::returns {
namespace {

using engine::ControlKind;
using Names = std::set<std::string>;

// A dealer and a return with something in every box.
const Filing& full() {
  static const Filing filing(
      "Address=12, Fort; Address1=Near Gate; City=Pune; State=Maharashtra; PinCode=411001; VATNo=27123456789V; "
      "BSTNo=400012S1234; CSTNo=400012C56; TinVAT=27550000001V; TinCST=27550000001C; SignatureName=A. B. Joshi; "
      "FileNo=F-9; Medicine=true; "
      "FromDate=2006-04-01; ToDate=2006-04-30; ReturnType=Revised; FillingDateVAT=2006-05-20; VATBankID=1; "
      "VATChequeNo=123456; FormNote=Stock statement filed on 1 May 2005.; "
      "GrossSales=500000; SalesOMSBranch=20000; SalesUs8=30000; SalesUS5=40000; TaxCollected=12345.67; "
      "SalesLabour=1000; SalesTaxable=240000; SalesMS=5000; VATPlusExcess=30000; SetoffClaimed=9000; "
      "VATMinusSetoff=21000; SetoffCF=700; SetoffCFCST=300; SetoffRefund=150; NetVAT=20000; TDS=500; "
      "VATPaidEarlier=250; VATWithReturn=19250.5; NetExcessTaxCollected=60; "
      "SalesWC=10000; SalesWCBalance1=6000; SalesWCBalance2=1000; SalesWCBalance3=500; SalesWCTax1=240; "
      "SalesWCRecordType1=Including Tax; SalesWCBalance14Percent=2000; SalesWCTax14Percent=80; "
      "SalesWCBalance2125Percent=1000; SalesWCTax2125Percent=125; SalesWCTax3=40; "
      "PurchaseImports=100; PurchaseOMS=200; PurchaseConsignment=300; PurchaseRD=100000; PurchaseMS=1000; "
      "PurchaseRDTax=8000; PurchaseURD=400; SetoffBF=650; SetoffOpeningStock=75; PurchaseValueRM=900; "
      "PurchaseValueET=600; SetoffPrevAdjusted=-25; AdHocSetoff=12; NetValue535=70; SetoffRestriction535=8; "
      "MedicineGTOMRP=110; MedicineTaxMRP=4.4; MedicineGTOActual=100; MedicineTaxActual=4; "
      "sale 4 100000 4000; sale 12.5 120000.4 15000.05; sale 8 10000 800; sale 1 5000 50; sale 20 3000 600; "
      "sale 5 2000 100; sale 4 1000 40 RETURN; "
      "buy 4 50000 2000 2000; buy 12.5 40000 5000 5000; buy 8 3000 240 240; buy 1 2000 20 20; buy 20 1000 200 200; "
      "buy 5 600 30 30; buy 4 500 20 20 RETURN; buy 12.5 800 100 40; also Restriction531=32; also Restriction537=25");
  return filing;
}

std::string paper(const frame::Report& report);

TEST(Forms, ASecondRunIsAsTheFirst) {
  full().open();
  const auto report = print("Form201");
  const std::string once = paper(*report);
  report->run();
  EXPECT_EQ(paper(*report), once);
  EXPECT_EQ(report->Pages().Count(), 3u);
}

TEST(Forms, NoReturnNoPage) {
  full().open();
  const auto report = make("Form201");
  report->PropCMasterID(4711);
  report->run();
  EXPECT_EQ(report->Pages().Count(), 0u);
}

Names controls(const frame::Report& report, std::initializer_list<ControlKind> kinds,
               const std::function<bool(const engine::Control&)>& wanted) {
  Names names;
  for (const auto& control : report.Sections().front()->Controls()) {
    const bool of_kind = std::ranges::find(kinds, control->layout().kind) != kinds.end();
    if (of_kind && wanted(*control)) names.insert(control->Name());
  }
  return names;
}

bool visible(const engine::Control& control) {
  return control.Visible();
}

TEST(Forms, EveryFigureOfAnEmptyReturnIsNil) {
  Filing("Medicine=true").open();
  const auto report = print("Form201");
  const auto other = [](const engine::Control& control) {
    return static_cast<const engine::Field&>(control).Text() != "NIL";
  };
  EXPECT_EQ(controls(*report, {ControlKind::Field}, other), (Names{"ChargeNo",
                                                                   "Field6",
                                                                   "Field7",
                                                                   "Field8",
                                                                   "Field9",
                                                                   "formNote",
                                                                   "txtBSTNo",
                                                                   "txtBSTNo1",
                                                                   "txtBSTNo2",
                                                                   "txtBankName",
                                                                   "txtBankName1",
                                                                   "txtBankName2",
                                                                   "txtCFPlusCFCST",
                                                                   "txtCSTNo",
                                                                   "txtCSTNo1",
                                                                   "txtCSTNo2",
                                                                   "txtChargeNo1",
                                                                   "txtChargeNo2",
                                                                   "txtCity",
                                                                   "txtCity1",
                                                                   "txtCity2",
                                                                   "txtFileNo",
                                                                   "txtFillingDate1",
                                                                   "txtFillingDate2",
                                                                   "txtFillingDateVAT",
                                                                   "txtFromDate",
                                                                   "txtName",
                                                                   "txtName1",
                                                                   "txtName2",
                                                                   "txtName4",
                                                                   "txtSetoffCFCST",
                                                                   "txtSignature1",
                                                                   "txtSignatureName",
                                                                   "txtToDate",
                                                                   "txtVATChequeNo",
                                                                   "txtVATChequeNo1",
                                                                   "txtVATChequeNo2",
                                                                   "txtVATNo",
                                                                   "txtVATNo1",
                                                                   "txtVATNo2",
                                                                   "txtVATWithReturn1",
                                                                   "txtVATWithReturn2",
                                                                   "txtVATWithReturn3",
                                                                   "txtreturntype",
                                                                   "txtreturntype1",
                                                                   "txtwords",
                                                                   "txtwords1",
                                                                   "txtwords2"}));
}

// Steps of the forms show again what the sweeps had hidden.
TEST(Forms, BlankFormsAndStationeryKeepWhatComesBack) {
  for (const std::string& form : six_forms()) {
    full().open();
    frame::basMain().BlankForm = true;
    EXPECT_EQ(
        controls(*print(form), {ControlKind::Field}, visible),
        (Names{"txtBSTNo", "txtBSTNo1", "txtBSTNo2", "txtSetoffCFCST", "txtCFPlusCFCST", "txtNetExcessTaxCollected",
               "txtMedicineGTOMRP", "txtMedicineTaxMRP", "txtMedicineGTOActual", "txtMedicineTaxActual"}))
        << form;
    frame::basMain().BlankForm = false;
    frame::basMain().preprinted = true;
    EXPECT_EQ(controls(*print(form), {ControlKind::Label, ControlKind::Line, ControlKind::Shape}, visible),
              (Names{"lblMedicine", "lblMedicine1", "lblMedicine2", "lblMedicine3", "lblMedicine4", "lblExcess",
                     "lblExcessSrNo", "lblNote", "lblSetoffCFCST", "lblSetoffCFCST1", "lblSetoffCFCST2"}))
        << form;
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

// The figures of a paper without the names and places of their boxes; those of one digit may be page numbers.
std::multiset<std::string> figures(const std::string& paper) {
  std::multiset<std::string> texts;
  std::istringstream lines(paper);
  for (std::string line; std::getline(lines, line);) {
    const std::string text = line.substr(std::min(line.find("): ") + 3, line.size()));
    if (!text.empty() && text.find_first_not_of("-.0123456789") == std::string::npos && text.size() > 1)
      texts.insert(text);
  }
  return texts;
}

// DORVO_GOLDEN=write in the environment writes the files anew, to be read against the rules before they are kept.
TEST(Forms, GoldenPagesWithTheSameFigures) {
  std::multiset<std::string> first;
  for (const std::string& form : six_forms()) {
    full().open();
    frame::basMain().ShowFilingDate = frame::basMain().ShowCity = frame::basMain().ShowFooter = true;
    frame::basMain().UserName = "Joshi & Co.";
    const auto report = print(form);
    const std::string file = DORVO_SOURCE_DIR "/tests/golden/" + form + ".txt";
    EXPECT_TRUE(report->Messages().empty()) << report->Messages().front();
    const char* mode = std::getenv("DORVO_GOLDEN");
    if (mode && std::string(mode) == "write") std::ofstream(file) << paper(*report);
    std::ifstream in(file);
    EXPECT_EQ(paper(*report), std::string(std::istreambuf_iterator<char>(in), {})) << form;
    if (first.empty()) first = figures(paper(*report));
    EXPECT_EQ(figures(paper(*report)), first) << form;
  }
  EXPECT_EQ(first.size(), 76u);  // 19 of Part-I, 1 of its treasury block, 52 of the second page, 4 of the chalans
}

}  // namespace
}  // namespace dorvo::returns
