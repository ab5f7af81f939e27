// Boxes 5 to 20: what was entered, and what each of the six forms must print. Worked by hand.
#include <gtest/gtest.h>

#include <functional>

#include "filing.h"
#include "value/failure.h"

namespace dorvo::returns {
namespace {

using value::Null;

struct Case {
  const char* what;
  std::function<void(Filing&)> enter;
  std::vector<std::pair<const char*, const char*>> boxes;
};

void expect(const std::vector<Case>& cases) {
  const FreshSettings fresh;
  for (const Case& each : cases) {
    Filing filing;
    each.enter(filing);
    filing.open();
    for (const std::string& form : six_forms()) {
      const auto report = print(form);
      for (const auto& [box, text] : each.boxes)
        EXPECT_EQ(seen(*report, box), text) << each.what << ", " << form << ", " << box;
    }
  }
}

TEST(Box18, SalesByRate) {
  expect({
      {"each rate in its row, any other in Other",
       [](Filing& f) {
         f.sale(4, 100, 4).sale(12.50, 200, 25).sale(8, 300, 24).sale(1, 400, 4).sale(20, 500, 100);
         f.sale(5, 600, 30).sale(0, 700, 0).sale(12.49, 50, 6.2);
       },
       {{"txtNetSales4", "100"},
        {"txtTaxS4", "4"},
        {"txtNetSales12", "200"},
        {"txtTaxS12", "25"},
        {"txtNetSales8", "300"},
        {"txtTaxS8", "24"},
        {"txtNetSales1", "400"},
        {"txtTaxS1", "4"},
        {"txtNetSales20", "500"},
        {"txtTaxS20", "100"},
        {"txtNetSalesother", "1350"},
        {"txtTaxSother", "36.2"},
        {"txtNetSalestotal", "2850"},
        {"txtTaxStotal", "193.2"}}},
      {"goods returned in full",
       [](Filing& f) { f.sale(12.5, 1000.35, 125.04).sale(12.5, 1000.35, 125.04, "RETURN"); },
       {{"txtNetSales12", "NIL"}, {"txtTaxS12", "NIL"}, {"txtNetSalestotal", "NIL"}, {"txtTaxStotal", "NIL"}}},
      {"goods returned at a rate without sales",
       [](Filing& f) { f.sale(8, 100, 8, "RETURN").sale(4, 500, 20); },
       {{"txtNetSales8", "-100"}, {"txtTaxS8", "-8"}, {"txtNetSalestotal", "400"}, {"txtTaxStotal", "12"}}},
      {"the word RETURN is exact in case; any other kind adds",
       [](Filing& f) { f.sale(4, 100, 4).sale(4, 50, 2, "Return").sale(4, 7, 0.28, "").sale(4, 1, 0.04, "ADJUST"); },
       {{"txtNetSales4", "158"}, {"txtTaxS4", "6.32"}}},
      {"a NULL kind adds, a NULL rate is Other",
       [](Filing& f) { f.sale(4, 100, 4).spoil("SubEntryType", Null{}).sale(4, 50, 2).spoil("VATPercentage", Null{}); },
       {{"txtNetSales4", "100"}, {"txtNetSalesother", "50"}}},
      {"three classes of sales, not those between States",
       [](Filing& f) {
         for (const auto* entry : {"SALESTAXABLE", "SALESMS", "SALESEC", "SALESUS81", "PURCHASERD"})
           f.line(entry, "BASIC", 4, {{"NetSalesAmount", 100}, {"VATTaxAmount", 4}});
       },
       {{"txtNetSales4", "300"}, {"txtTaxS4", "12"}}},
      {"works contracts: two records at two rates, the third at 8 percent",
       [](Filing& f) {
         f.sale(4, 100, 4).set({{"SalesWCBalance14Percent", 10},
                                {"SalesWCBalance24Percent", 20},
                                {"SalesWCTax14Percent", 1},
                                {"SalesWCTax24Percent", 2},
                                {"SalesWCBalance1125Percent", 30},
                                {"SalesWCBalance2125Percent", 40},
                                {"SalesWCTax1125Percent", 5},
                                {"SalesWCTax2125Percent", 6},
                                {"SalesWCBalance3", 50},
                                {"SalesWCTax3", 7}});
       },
       {{"txtNetSales4", "130"},
        {"txtTaxS4", "7"},
        {"txtNetSales12", "70"},
        {"txtTaxS12", "11"},
        {"txtNetSales8", "50"},
        {"txtTaxS8", "7"},
        {"txtNetSalestotal", "250"},
        {"txtTaxStotal", "25"}}},
      {"excess tax collected joins the tax total",
       [](Filing& f) { f.sale(4, 100, 4).set("NetExcessTaxCollected", 100); },
       {{"txtTaxStotal", "104"},
        {"txtNetSalestotal", "100"},
        {"txtNetExcessTaxCollected", "100"},
        {"lblExcessSrNo", "vii"}}},
      {"less tax collected: no row and no part in the total",
       [](Filing& f) { f.sale(4, 100, 4).set("NetExcessTaxCollected", -100); },
       {{"txtTaxStotal", "4"},
        {"txtNetExcessTaxCollected", kHidden},
        {"lblExcess", kHidden},
        {"lblExcessSrNo", kHidden}}},
  });
}

TEST(Box19, Purchases) {
  expect({
      {"the sum of the five boxes, tax of registered dealers within, never the stored gross",
       [](Filing& f) {
         f.set({{"PurchaseImports", 1},
                {"PurchaseOMS", 2},
                {"PurchaseConsignment", 4},
                {"PurchaseRD", 8},
                {"PurchaseMS", 16},
                {"PurchaseRDTax", 32},
                {"PurchaseURD", 64},
                {"GrossPurchaseFilling", 999}});
       },
       {{"txtPurchaseImports", "1"},
        {"txtPurchaseOMS", "2"},
        {"txtPurchaseConsignment", "4"},
        {"txtPurchaseRD1", "56"},
        {"txtPurchaseURD", "64"},
        {"txtGrossPurchaseFilling", "127"}}},
      {"NULL where a box only prints",
       [](Filing& f) {
         f.set({{"PurchaseImports", Null{}}, {"PurchaseURD", 5}});
       },
       {{"txtPurchaseImports", "NIL"}, {"txtGrossPurchaseFilling", "5"}}},
      {"by rate: only lines whose whole tax is eligible",
       [](Filing& f) {
         f.purchase(12.5, 1000, 125, 125).purchase(12.5, 500, 62.5, 60).purchase(4, 300, 0, 0);
         f.purchase(4, 200, 8, 8).purchase(4, 50, 2, 2, "RETURN").purchase(5, 10, 0.5, 0.5);
         f.line("PURCHASERDEC", "BASIC", 8, {{"NetPurchaseAmount", 100}, {"VATTaxAmount", 8}, {"Setoff", 8}});
         f.line("PURCHASEMS", "BASIC", 20, {{"NetPurchaseAmount", 70}, {"VATTaxAmount", 14}, {"Setoff", 14}});
         f.line("PURCHASEMS", "BASIC", 1, {{"NetPurchaseAmount", 30}, {"VATTaxAmount", 0.3}, {"Setoff", 0.2}});
       },
       {{"txtNettrunpurch12", "1000"},
        {"txttaxp12", "125"},
        {"txtNettrunpurch4", "150"},
        {"txttaxp4", "6"},
        {"txtNettrunpurch8", "100"},
        {"txttaxp8", "8"},
        {"txtNettrunpurch20", "70"},
        {"txttaxp20", "14"},
        {"txtNettrunpurch1", "NIL"},
        {"txttaxp1", "NIL"},
        {"txtNettrunpurchother", "10"},
        {"txttaxpother", "0.5"},
        {"txtNettotal", "1330"},
        {"txttaxtotal", "153.5"},
        {"txtPurchaseRD", "1330"},
        {"txtPurchaseRDSetoff", "153.5"}}},
  });
}

TEST(Boxes5To10, Turnover) {
  expect({
      {"stored figures stand, zero is NIL",
       [](Filing& f) {
         f.set({{"GrossSales", 123456.5}, {"SalesOMSBranch", 1}, {"SalesUs8", 2}});
       },
       {{"txtGrossSales", "123456.5"}, {"txtSalesOMSBranch", "1"}, {"txtSalesUs8", "2"}, {"txtSalesUS5", "NIL"}}},
      {"box 9 and box 10 from their parts",
       [](Filing& f) {
         f.set({{"SalesTransit", 1},
                {"SalesUS3", 2},
                {"SalesLabour", 4},
                {"TaxCollected", 8},
                {"DeemedTax", 16},
                {"SalesNotLiable", 32},
                {"SalesWC", 64},
                {"SalesMS", 100},
                {"SalesTaxable", 200}});
       },
       {{"txtTaxCollectedSep", "127"}, {"txtBalsalesturn", "300"}}},
      {"certificate sales: goods returned add to boxes 9 and 10 and come off box 18, other kinds only count in box 18",
       [](Filing& f) {
         f.line("SALESEC", "BASIC", 4, {{"NetSalesAmount", 1000}, {"VATTaxAmount", 40}, {"PurchaseEc", 300}});
         f.line("SALESEC", "RETURN", 4, {{"NetSalesAmount", 200}, {"VATTaxAmount", 8}, {"PurchaseEc", 50}});
         f.line("SALESEC", "ADJUST", 4, {{"NetSalesAmount", 10}, {"VATTaxAmount", 1}, {"PurchaseEc", 5}});
       },
       {{"txtNetSales4", "810"}, {"txtTaxS4", "33"}, {"txtTaxCollectedSep", "350"}, {"txtBalsalesturn", "1200"}}},
      {"works contracts, tax apart",
       [](Filing& f) {
         f.set({{"SalesWC", 1000},
                {"SalesWCBalance1", 300},
                {"SalesWCBalance2", 200},
                {"SalesWCBalance3", 50},
                {"SalesWCTax1", 30},
                {"SalesWCTax2", 20},
                {"SalesWCRecordType1", "including tax"}});
       },
       {{"txtTaxCollectedSep", "450"}, {"txtBalsalesturn", "550"}}},
      {"works contracts, tax of record 1 within",
       [](Filing& f) {
         f.set({{"SalesWC", 1000},
                {"SalesWCBalance1", 300},
                {"SalesWCTax1", 30},
                {"SalesWCTax2", 20},
                {"SalesWCRecordType1", "Including Tax"}});
       },
       {{"txtTaxCollectedSep", "730"}, {"txtBalsalesturn", "270"}}},
      {"works contracts, tax of both records within",
       [](Filing& f) {
         f.set({{"SalesWC", 1000},
                {"SalesWCBalance1", 300},
                {"SalesWCBalance2", 200},
                {"SalesWCTax1", 30},
                {"SalesWCTax2", 20},
                {"SalesWCRecordType1", "Including Tax"},
                {"SalesWCRecordType2", "Including Tax"}});
       },
       {{"txtTaxCollectedSep", "550"}, {"txtBalsalesturn", "450"}}},
  });
}

TEST(Boxes11To17, PayableAndTransfer) {
  expect({
      {"box 15 takes the tax deducted at source only, box 16 adds what was paid earlier",
       [](Filing& f) {
         f.set({{"NetVAT", 1000}, {"TDS", 100}, {"VATPaidEarlier", 300}});
       },
       {{"txtNetVAT", "900"}, {"txtTDS", "400"}}},
      {"balance equal to the tax deducted at source",
       [](Filing& f) {
         f.set({{"NetVAT", 100.1}, {"TDS", 100.1}});
       },
       {{"txtNetVAT", "NIL"}, {"txtTDS", "100.1"}}},
      {"no transfer",
       [](Filing& f) {
         f.set({{"SetoffCF", 50}, {"SetoffClaimed", 1000}, {"VATMinusSetoff", 200}});
       },
       {{"txtSetoffCF", "50"},
        {"txtSetoffClaimed", "1000"},
        {"txtVATMinusSetoff", "200"},
        {"txtSetoffCFCST", kHidden},
        {"txtCFPlusCFCST", kHidden},
        {"lblSetoffCFCST", kHidden},
        {"lblSetoffCFCST1", kHidden},
        {"lblSetoffCFCST2", kHidden}}},
      {"set-off transferred to the central return; row 11 is unaffected",
       [](Filing& f) {
         f.set({{"SetoffCFCST", 500}, {"SetoffCF", 50}, {"SetoffClaimed", 1000}, {"VATMinusSetoff", 200}});
       },
       {{"txtCFPlusCFCST", "550"},
        {"txtSetoffCFCST", "500"},
        {"txtSetoffCF", "50"},
        {"txtSetoffClaimed", "1500"},
        {"txtVATMinusSetoff", "-300"},
        {"SetoffClaimed", "NIL"},
        {"lblSetoffCFCST1", "S/Off Adj."},
        {"lblSetoffCFCST", "- Tfd. to CST"},
        {"lblSetoffCFCST2", "C / F to Next Retn"}}},
      {"a transfer below zero counts, and its own boxes know no NIL",
       [](Filing& f) {
         f.set({{"SetoffCFCST", -50}, {"SetoffCF", 50}, {"SetoffClaimed", 1000}, {"VATMinusSetoff", 200}});
       },
       {{"txtCFPlusCFCST", "0"}, {"txtSetoffCFCST", "-50"}, {"txtSetoffClaimed", "950"}, {"txtVATMinusSetoff", "250"}}},
      {"paid with the return",
       [](Filing& f) { f.set("VATWithReturn", 12345.67); },
       {{"txtVATWithReturn", "12345.67"},
        {"txtVATWithReturn1", "12345.67"},
        {"txtVATWithReturn2", "12345.67"},
        {"txtVATWithReturn3", "12345.67"},
        {"txtVATWithReturn4", "12345.67"},
        {"txtVATWithReturn5", "12345.67"},
        {"txtwords", "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only"},
        {"txtwords1", "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only"},
        {"txtwords2", "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only"}}},
      {"nothing paid: the treasury's figures stay free, no words",
       [](Filing&) {},
       {{"txtVATWithReturn", "NIL"},
        {"txtVATWithReturn4", "NIL"},
        {"txtVATWithReturn5", "NIL"},
        {"txtVATWithReturn1", ""},
        {"txtVATWithReturn2", ""},
        {"txtVATWithReturn3", ""},
        {"txtwords", ""},
        {"txtwords1", ""},
        {"txtwords2", ""}}},
      {"a payment below zero has no words",
       [](Filing& f) { f.set("VATWithReturn", -5); },
       {{"txtVATWithReturn1", "-5"}, {"txtwords", ""}}},
  });
}

TEST(Box20, Reductions) {
  expect({
      {"every sub-rule of rule 53",
       [](Filing& f) {
         f.purchase(12.5, 1000, 125, 0);
         for (const auto& [column, amount] : Columns{{"Restriction531", 10},
                                                     {"Restriction532A", 1},
                                                     {"PVForRestriction532A", 100},
                                                     {"Restriction532B", 2},
                                                     {"PVForRestriction532B", 200},
                                                     {"Restriction533", 3},
                                                     {"PVForRestriction533", 300},
                                                     {"Restriction534", 4},
                                                     {"TotalPV534", 400},
                                                     {"Restriction537", 25}})  // 25 / 12.5 * 100 = 200
           f.spoil(column, amount);
         f.set({{"NetValue535", 7}, {"SetoffRestriction535", 8}, {"AdHocSetoff", 5}});
       },
       {{"PV53123", "1600"},
        {"Restriction53123", "16"},
        {"PV5345678", "607"},
        {"Restriction5345678", "37"},
        {"txtAdHocSetoff", "5"},
        {"TotalReductionPV", "2207"},
        {"TotalReduction", "58"},
        {"BalancePV", "-2207"},
        {"BalanceSetoff", "-58"},
        {"txtSetoffavail", "-2207"},
        {"SetoffClaimed", "-58"},
        {"Field32", "NIL"},
        {"Field30", "NIL"},
        {"Field31", "NIL"},
        {"Field33", "NIL"}}},
      {"without a reduction under rule 53(1) the purchase does not count",
       [](Filing& f) { f.purchase(4, 1000, 40, 40).spoil("Restriction534", 6); },
       {{"PV53123", "NIL"},
        {"Restriction53123", "NIL"},
        {"PV5345678", "NIL"},
        {"Restriction5345678", "6"},
        {"BalancePV", "1000"},
        {"BalanceSetoff", "34"}}},
      {"a line without a rate takes the rule 53(7) value of the line before",
       [](Filing& f) {
         f.purchase(12.5, 0, 0, 0).spoil("Restriction537", 25);  // 200
         f.purchase(12.5, 0, 0, 0).spoil("Restriction537", 50);  // 400
         f.purchase(0, 0, 0, 0).spoil("Restriction537", 50);     // 400 again
       },
       {{"PV5345678", "1000"}, {"Restriction5345678", "125"}}},
      {"a first line without a rate has the value 0",
       [](Filing& f) {
         f.purchase(0, 0, 0, 0).spoil("Restriction537", 50);
         f.purchase(4, 0, 0, 0).spoil("Restriction537", 8);  // 200
       },
       {{"PV5345678", "200"}, {"Restriction5345678", "58"}}},
      {"goods returned add like any other; motor spirit is not asked",
       [](Filing& f) {
         f.purchase(4, 100, 4, 0, "RETURN").spoil("Restriction531", 3);
         f.line("PURCHASERDEC", "BASIC", 4, {{"NetPurchaseAmount", 50}, {"Restriction531", 2}});
         f.line("PURCHASEMS", "BASIC", 4, {{"NetPurchaseAmount", 999}, {"Restriction531", 999}});
       },
       {{"PV53123", "150"}, {"Restriction53123", "5"}}},
  });
}

TEST(Box20, SetOff) {
  expect({
      {"no line: the sum of what was brought forward and opening stock",
       [](Filing& f) {
         f.set({{"SetoffBF", 1000}, {"SetoffOpeningStock", 75.5}, {"PurchaseValueRM", 900}, {"PurchaseValueET", 600}});
       },
       {{"txtPurchaseRD", "NIL"},
        {"txtPurchaseRDSetoff", "NIL"},
        {"PV53123", "NIL"},
        {"TotalReduction", "NIL"},
        {"txtAdHocSetoff", "NIL"},
        {"BalanceSetoff", "NIL"},
        {"txtSetoffBF", "1000"},
        {"txtSetoffOpeningStock", "75.5"},
        {"txtSetoffOpeningStockPV", "1500"},
        {"txtSetoffavail", "1500"},
        {"SetoffClaimed", "1075.5"}}},
      {"opening stock without set-off has no purchase value",
       [](Filing& f) {
         f.set({{"PurchaseValueRM", 900}, {"PurchaseValueET", 600}});
       },
       {{"txtSetoffOpeningStockPV", "NIL"}, {"txtSetoffOpeningStock", "NIL"}, {"txtSetoffavail", "NIL"}}},
      {"excess claimed earlier",
       [](Filing& f) {
         f.set({{"SetoffBF", 1000}, {"SetoffPrevAdjusted", 250}});
       },
       {{"txtSetoffPrevAdjustedPlus", "250"}, {"txtSetoffPrevAdjustedMinus", "NIL"}, {"SetoffClaimed", "750"}}},
      {"short claimed earlier: the figure keeps its minus, and being subtracted it adds",
       [](Filing& f) {
         f.set({{"SetoffBF", 1000}, {"SetoffPrevAdjusted", -250}});
       },
       {{"txtSetoffPrevAdjustedPlus", "NIL"}, {"txtSetoffPrevAdjustedMinus", "-250"}, {"SetoffClaimed", "1250"}}},
      {"no adjustment known",
       [](Filing& f) {
         f.set({{"SetoffBF", 1000}, {"SetoffPrevAdjusted", Null{}}});
       },
       {{"txtSetoffPrevAdjustedPlus", "NIL"}, {"txtSetoffPrevAdjustedMinus", "NIL"}, {"SetoffClaimed", "1000"}}},
      {"paise that cancel",
       [](Filing& f) {
         f.purchase(4, 1234567.85, 49382.71, 49382.71).spoil("Restriction531", 49360.03).set("AdHocSetoff", 22.68);
       },
       {{"BalancePV", "NIL"}, {"TotalReduction", "49382.71"}, {"BalanceSetoff", "NIL"}}},
      {"crores",
       [](Filing& f) { f.sale(12.5, 98765432109.85, 12345679013.73).sale(12.5, 0.1, 0.01); },
       {{"txtNetSales12", "98765432109.95"}, {"txtTaxS12", "12345679013.74"}, {"txtNetSalestotal", "98765432109.95"}}},
  });
}

TEST(MedicineNote, ShowsUnlessTheFlagIsZero) {
  for (const auto& [flag, title] :
       std::vector<std::pair<value::Variant, const char*>>{{false, kHidden},
                                                           {true, "Note for Medicine Mfr / Importer"},
                                                           {Null{}, "Note for Medicine Mfr / Importer"}}) {
    const bool shown = std::string(title) != kHidden;
    expect({{"medicine",
             [&](Filing& f) {
               f.dealer("Medicine", flag).set({{"MedicineGTOMRP", 10}, {"MedicineTaxActual", 20}});
             },
             {{"lblMedicine", title},
              {"lblMedicine1", shown ? "Sales shown @ Max Retail Price:" : kHidden},
              {"txtMedicineGTOMRP", shown ? "10" : kHidden},
              {"txtMedicineTaxMRP", shown ? "NIL" : kHidden},
              {"txtMedicineGTOActual", shown ? "NIL" : kHidden},
              {"txtMedicineTaxActual", shown ? "20" : kHidden}}}});
  }
}

struct Wrong {
  const char* what;
  std::function<void(Filing&)> enter;
  value::Error number;
  const char* place;   // what the message names besides the report
  const char* stands;  // a box filled before the failure ...
  const char* text;    // ... and its text
  const char* undone;  // a box that was not reached
};

TEST(Failures, NameReportAndPlaceAndWhatWasFilledStands) {
  const FreshSettings fresh;
  using value::Error;
  const Wrong cases[] = {
      {"no period", [](Filing& f) { f.period(Null{}, Null{}); }, Error::TypeMismatch, "txtFromDate", "txtName1",
       "ABC Traders\r\n", "txtTaxStotal"},
      {"NULL transfer",
       [](Filing& f) {
         f.set({{"SetoffCFCST", Null{}}, {"NetVAT", 9}});
       },
       Error::InvalidUseOfNull, "SetoffCFCST", "txtNetVAT", "9", "txtTaxStotal"},
      {"NULL carry-forward beside a transfer",
       [](Filing& f) {
         f.set({{"SetoffCFCST", 1}, {"SetoffCF", Null{}}});
       },
       Error::InvalidUseOfNull, "txtCFPlusCFCST", "txtName1", "ABC Traders\r\n", "txtTaxStotal"},
      {"NULL sale", [](Filing& f) { f.sale(4, 100, 4).sale(4, 0, 0).spoil("NetSalesAmount", Null{}); },
       Error::InvalidUseOfNull, "txtNetSales4", "txtTaxS4", "4", "txtTaxStotal"},
      {"NULL tax of goods returned", [](Filing& f) { f.sale(8, 100, 8, "RETURN").spoil("VATTaxAmount", Null{}); },
       Error::InvalidUseOfNull, "txtTaxS8", "txtNetSales8", "-100", "txtTaxStotal"},
      {"NULL contract balance", [](Filing& f) { f.set("SalesWCBalance2125Percent", Null{}); }, Error::InvalidUseOfNull,
       "txtNetSales12", "txtTaxS4", "0", "txtTaxStotal"},
      {"NULL excess", [](Filing& f) { f.set("NetExcessTaxCollected", Null{}); }, Error::InvalidUseOfNull,
       "NetExcessTaxCollected", "txttaxtotal", "0", "txtTaxCollectedSep"},
      {"NULL certificate deduction",
       [](Filing& f) {
         f.line("SALESEC", "BASIC", 4, {{"PurchaseEc", Null{}}});
       },
       Error::InvalidUseOfNull, "PurchaseEc", "txtTaxStotal", "0", "txtTaxCollectedSep"},
      {"NULL deduction", [](Filing& f) { f.set("SalesTransit", Null{}); }, Error::InvalidUseOfNull,
       "txtTaxCollectedSep", "txtTaxStotal", "0", "txtBalsalesturn"},
      {"NULL works contracts", [](Filing& f) { f.set("SalesWC", Null{}); }, Error::InvalidUseOfNull, "SalesWC",
       "txtTaxStotal", "0", "txtBalsalesturn"},
      {"NULL purchases", [](Filing& f) { f.set("PurchaseMS", Null{}); }, Error::InvalidUseOfNull, "txtPurchaseRD1",
       "txtBalsalesturn", "0", "TotalReduction"},
      {"NULL earlier payment",
       [](Filing& f) {
         f.set({{"VATPaidEarlier", Null{}}, {"TDS", 3}});
       },
       Error::InvalidUseOfNull, "txtTDS", "txtTDS", "3", "TotalReduction"},
      {"NULL reduction", [](Filing& f) { f.purchase(4, 0, 0, 0).spoil("Restriction531", Null{}); },
       Error::InvalidUseOfNull, "Restriction531", "txtGrossPurchaseFilling", "0", "TotalReduction"},
      {"NULL rule 53(7)", [](Filing& f) { f.purchase(0, 0, 0, 0).spoil("Restriction537", Null{}); },
       Error::InvalidUseOfNull, "Restriction5345678", "PV5345678", "0", "TotalReduction"},
      {"NULL opening stock", [](Filing& f) { f.set("SetoffOpeningStock", Null{}); }, Error::TypeMismatch,
       "txtSetoffOpeningStock", "BalanceSetoff", "0", "txtSetoffavail"},
      {"NULL payment", [](Filing& f) { f.set("VATWithReturn", Null{}); }, Error::TypeMismatch, "txtVATWithReturn1",
       "SetoffClaimed", "0", "txtwords"},
  };
  for (const Wrong& each : cases) {
    Filing filing;
    each.enter(filing);
    filing.open();
    for (const std::string form : {"Form201", "Form203132"}) {
      const auto report = make(form);
      try {
        report->run();
        ADD_FAILURE() << each.what << ": no failure";
      } catch (const value::Failure& failure) {
        EXPECT_EQ(failure.number(), each.number) << each.what << ": " << failure.description();
        EXPECT_NE(failure.description().find(form), std::string::npos) << failure.description();
        EXPECT_NE(failure.description().find(each.place), std::string::npos) << failure.description();
      }
      EXPECT_EQ(seen(*report, each.stands), each.text) << each.what;
      EXPECT_EQ(seen(*report, each.undone), "") << each.what;
    }
  }
}

}  // namespace
}  // namespace dorvo::returns
