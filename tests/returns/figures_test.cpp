// Boxes 5 to 20: what was entered, and what the forms must print. Worked by hand.
#include <gtest/gtest.h>

#include "filing.h"
#include "value/failure.h"

namespace dorvo::returns {
namespace {

TEST(Box18, SalesByRate) {
  expect({
      {"each rate in its row, any other in Other",
       "sale 4 100 4; sale 12.5 200 25; sale 8 300 24; sale 1 400 4; sale 20 500 100; sale 5 600 30; sale 0 700 0; "
       "sale 12.49 50 6.2",
       "txtNetSales4=100; txtTaxS4=4; txtNetSales12=200; txtTaxS12=25; txtNetSales8=300; txtTaxS8=24; "
       "txtNetSales1=400; txtTaxS1=4; txtNetSales20=500; txtTaxS20=100; txtNetSalesother=1350; txtTaxSother=36.2; "
       "txtNetSalestotal=2850; txtTaxStotal=193.2"},
      {"goods returned in full", "sale 12.5 1000.35 125.04; sale 12.5 1000.35 125.04 RETURN",
       "txtNetSales12=NIL; txtTaxS12=NIL; txtNetSalestotal=NIL; txtTaxStotal=NIL"},
      {"goods returned at a rate without sales", "sale 8 100 8 RETURN; sale 4 500 20",
       "txtNetSales8=-100; txtTaxS8=-8; txtNetSalestotal=400; txtTaxStotal=12"},
      {"RETURN is exact in case, any other kind adds",
       "sale 4 100 4; sale 4 50 2 Return; sale 4 1 0.04 ADJUST; sale 4 7 0.28; also SubEntryType=NULL",
       "txtNetSales4=158; txtTaxS4=6.32"},
      {"a NULL rate", "sale NULL 50 2", "txtNetSalesother=50"},
      {"three classes of sales, not those between States",
       "sale 4 100 4; line SALESMS BASIC 4; also NetSalesAmount=10; line SALESEC BASIC 4; also NetSalesAmount=1; "
       "line SALESUS81 BASIC 4; also NetSalesAmount=1000",
       "txtNetSales4=111"},
      {"works contracts: two records at two rates, the third at 8 percent",
       "sale 4 100 4; SalesWCBalance14Percent=10; SalesWCBalance24Percent=20; SalesWCTax14Percent=1; "
       "SalesWCTax24Percent=2; SalesWCBalance1125Percent=30; SalesWCBalance2125Percent=40; SalesWCTax1125Percent=5; "
       "SalesWCTax2125Percent=6; SalesWCBalance3=50; SalesWCTax3=7",
       "txtNetSales4=130; txtTaxS4=7; txtNetSales12=70; txtTaxS12=11; txtNetSales8=50; txtTaxS8=7; "
       "txtNetSalestotal=250; txtTaxStotal=25"},
      {"excess tax collected joins the tax total", "sale 4 100 4; NetExcessTaxCollected=100",
       "txtTaxStotal=104; txtNetSalestotal=100; txtNetExcessTaxCollected=100; lblExcessSrNo=vii"},
      {"less tax collected: no row and no part in the total", "sale 4 100 4; NetExcessTaxCollected=-100",
       "txtTaxStotal=4; txtNetExcessTaxCollected=(hidden); lblExcess=(hidden); lblExcessSrNo=(hidden)"},
  });
}

TEST(Box19, Purchases) {
  expect({
      {"the sum of the five boxes, tax of registered dealers within, never the stored gross",
       "PurchaseImports=1; PurchaseOMS=2; PurchaseConsignment=4; PurchaseRD=8; PurchaseMS=16; PurchaseRDTax=32; "
       "PurchaseURD=64; GrossPurchaseFilling=999",
       "txtPurchaseRD1=56; txtGrossPurchaseFilling=127"},
      {"NULL where a box only prints", "PurchaseImports=NULL; PurchaseURD=5",
       "txtPurchaseImports=NIL; txtGrossPurchaseFilling=5"},
      {"by rate: only lines whose whole tax is eligible",
       "buy 12.5 1000 125 125; buy 12.5 500 62.5 60; buy 4 300 0 0; buy 4 200 8 8; buy 4 50 2 2 RETURN; "
       "buy 5 10 0.5 0.5; buy 8 100 8 8; also EntryType=PURCHASERDEC; buy 20 70 14 14; also EntryType=PURCHASEMS; "
       "buy 1 30 0.3 0.2; also EntryType=PURCHASEMS",
       "txtNettrunpurch12=1000; txttaxp12=125; txtNettrunpurch4=150; txttaxp4=6; txtNettrunpurch8=100; txttaxp8=8; "
       "txtNettrunpurch20=70; txttaxp20=14; txtNettrunpurch1=NIL; txttaxp1=NIL; txtNettrunpurchother=10; "
       "txttaxpother=0.5; txtNettotal=1330; txttaxtotal=153.5; txtPurchaseRD=1330; txtPurchaseRDSetoff=153.5"},
  });
}

TEST(Boxes5To10, Turnover) {
  expect({
      {"boxes 9 and 10 from their parts",
       "SalesTransit=1; SalesUS3=2; SalesLabour=4; TaxCollected=8; DeemedTax=16; SalesNotLiable=32; SalesWC=64; "
       "SalesMS=100; SalesTaxable=200",
       "txtTaxCollectedSep=127; txtBalsalesturn=300"},
      {"certificate sales: goods returned add to boxes 9 and 10 and come off box 18, other kinds count in box 18 only",
       "line SALESEC BASIC 4; also NetSalesAmount=1000; also VATTaxAmount=40; also PurchaseEc=300; "
       "line SALESEC RETURN 4; also NetSalesAmount=200; also VATTaxAmount=8; also PurchaseEc=50; "
       "line SALESEC ADJUST 4; also NetSalesAmount=10; also VATTaxAmount=1; also PurchaseEc=5",
       "txtNetSales4=810; txtTaxS4=33; txtTaxCollectedSep=350; txtBalsalesturn=1200"},
      {"works contracts, tax apart",
       "SalesWC=1000; SalesWCBalance1=300; SalesWCBalance2=200; SalesWCBalance3=50; SalesWCTax1=30; SalesWCTax2=20; "
       "SalesWCRecordType1=including tax",
       "txtTaxCollectedSep=450; txtBalsalesturn=550"},
      {"works contracts, tax of record 1 within",
       "SalesWC=1000; SalesWCBalance1=300; SalesWCTax1=30; SalesWCTax2=20; SalesWCRecordType1=Including Tax",
       "txtTaxCollectedSep=730; txtBalsalesturn=270"},
      {"works contracts, tax of both records within",
       "SalesWC=1000; SalesWCBalance1=300; SalesWCBalance2=200; SalesWCTax1=30; SalesWCTax2=20; "
       "SalesWCRecordType1=Including Tax; SalesWCRecordType2=Including Tax",
       "txtTaxCollectedSep=550; txtBalsalesturn=450"},
  });
}

TEST(Boxes11To17, PayableAndTransfer) {
  expect({
      {"box 15 takes the tax deducted at source only, box 16 adds what was paid earlier",
       "NetVAT=1000; TDS=100; VATPaidEarlier=300", "txtNetVAT=900; txtTDS=400"},
      {"balance equal to the tax deducted at source", "NetVAT=100.1; TDS=100.1", "txtNetVAT=NIL; txtTDS=100.1"},
      {"no transfer", "SetoffCF=50; SetoffClaimed=1000; VATMinusSetoff=200",
       "txtSetoffCF=50; txtSetoffClaimed=1000; txtVATMinusSetoff=200; txtSetoffCFCST=(hidden); "
       "txtCFPlusCFCST=(hidden); lblSetoffCFCST=(hidden); lblSetoffCFCST1=(hidden); lblSetoffCFCST2=(hidden)"},
      {"set-off transferred to the central return; row 11 is unaffected",
       "SetoffCFCST=500; SetoffCF=50; SetoffClaimed=1000; VATMinusSetoff=200",
       "txtCFPlusCFCST=550; txtSetoffCFCST=500; txtSetoffCF=50; txtSetoffClaimed=1500; txtVATMinusSetoff=-300; "
       "SetoffClaimed=NIL; lblSetoffCFCST1=S/Off Adj.; lblSetoffCFCST=- Tfd. to CST; "
       "lblSetoffCFCST2=C / F to Next Retn"},
      {"a transfer below zero counts, and its own boxes know no NIL",
       "SetoffCFCST=-50; SetoffCF=50; SetoffClaimed=1000; VATMinusSetoff=200",
       "txtCFPlusCFCST=0; txtSetoffCFCST=-50; txtSetoffClaimed=950; txtVATMinusSetoff=250"},
      {"paid with the return", "VATWithReturn=12345.67",
       "txtVATWithReturn=12345.67; txtVATWithReturn1=12345.67; txtVATWithReturn5=12345.67; "
       "txtwords=Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only; "
       "txtwords1=Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only; "
       "txtwords2=Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only"},
      {"nothing paid: the treasury's figures stay free, no words", "",
       "txtVATWithReturn=NIL; txtVATWithReturn4=NIL; txtVATWithReturn5=NIL; txtVATWithReturn1=; txtVATWithReturn2=; "
       "txtVATWithReturn3=; txtwords=; txtwords1=; txtwords2="},
      {"a payment below zero has no words", "VATWithReturn=-5", "txtVATWithReturn1=-5; txtwords="},
  });
}

TEST(Box20, Reductions) {
  expect({
      {"every sub-rule of rule 53; 25 at 12.5 percent are a value of 200",
       "buy 12.5 1000 125 0; also Restriction531=10; also Restriction532A=1; also PVForRestriction532A=100; "
       "also Restriction532B=2; also PVForRestriction532B=200; also Restriction533=3; also PVForRestriction533=300; "
       "also Restriction534=4; also TotalPV534=400; also Restriction537=25; NetValue535=7; SetoffRestriction535=8; "
       "AdHocSetoff=5",
       "PV53123=1600; Restriction53123=16; PV5345678=607; Restriction5345678=37; txtAdHocSetoff=5; "
       "TotalReductionPV=2207; TotalReduction=58; BalancePV=-2207; BalanceSetoff=-58; txtSetoffavail=-2207; "
       "SetoffClaimed=-58"},
      {"without a reduction under rule 53(1) the purchase does not count", "buy 4 1000 40 40; also Restriction534=6",
       "PV53123=NIL; Restriction53123=NIL; PV5345678=NIL; Restriction5345678=6; BalancePV=1000; BalanceSetoff=34"},
      {"a line without a rate takes the rule 53(7) value of the line before: 200 + 400 + 400",
       "buy 12.5 0 0 0; also Restriction537=25; buy 12.5 0 0 0; also Restriction537=50; buy 0 0 0 0; "
       "also Restriction537=50",
       "PV5345678=1000; Restriction5345678=125"},
      {"a first line without a rate has the value 0",
       "buy 0 0 0 0; also Restriction537=50; buy 4 0 0 0; also Restriction537=8",
       "PV5345678=200; Restriction5345678=58"},
      {"goods returned add like any other; motor spirit is not asked",
       "buy 4 100 4 0 RETURN; also Restriction531=3; buy 4 50 0 0; also EntryType=PURCHASERDEC; "
       "also Restriction531=2; buy 4 999 0 0; also EntryType=PURCHASEMS; also Restriction531=999",
       "PV53123=150; Restriction53123=5"},
  });
}

TEST(Box20, SetOff) {
  expect({
      {"no line: the sum of what was brought forward and opening stock",
       "SetoffBF=1000; SetoffOpeningStock=75.5; PurchaseValueRM=900; PurchaseValueET=600",
       "BalanceSetoff=NIL; txtSetoffBF=1000; txtSetoffOpeningStock=75.5; txtSetoffOpeningStockPV=1500; "
       "txtSetoffavail=1500; SetoffClaimed=1075.5"},
      {"opening stock without set-off has no purchase value", "PurchaseValueRM=900; PurchaseValueET=600",
       "txtSetoffOpeningStockPV=NIL; txtSetoffavail=NIL"},
      {"excess claimed earlier", "SetoffBF=1000; SetoffPrevAdjusted=250",
       "txtSetoffPrevAdjustedPlus=250; txtSetoffPrevAdjustedMinus=NIL; SetoffClaimed=750"},
      {"short claimed earlier: the figure keeps its minus, and being subtracted it adds",
       "SetoffBF=1000; SetoffPrevAdjusted=-250",
       "txtSetoffPrevAdjustedPlus=NIL; txtSetoffPrevAdjustedMinus=-250; SetoffClaimed=1250"},
      {"no adjustment known", "SetoffBF=1000; SetoffPrevAdjusted=NULL",
       "txtSetoffPrevAdjustedPlus=NIL; txtSetoffPrevAdjustedMinus=NIL; SetoffClaimed=1000"},
      {"paise that cancel", "buy 4 1234567.85 49382.71 49382.71; also Restriction531=49360.03; AdHocSetoff=22.68",
       "BalancePV=NIL; TotalReduction=49382.71; BalanceSetoff=NIL"},
      {"crores", "sale 12.5 98765432109.85 12345679013.73; sale 12.5 0.1 0.01",
       "txtNetSales12=98765432109.95; txtTaxS12=12345679013.74; txtNetSalestotal=98765432109.95"},
  });
}

TEST(MedicineNote, HidesOnlyWhereTheFlagIsZero) {
  const std::string shown =
      "lblMedicine=Note for Medicine Mfr / Importer; lblMedicine1=Sales shown @ Max Retail Price:; "
      "txtMedicineGTOMRP=10; txtMedicineTaxMRP=NIL; txtMedicineGTOActual=NIL; txtMedicineTaxActual=20";
  expect({{"zero", "Medicine=false; MedicineGTOMRP=10",
           "lblMedicine=(hidden); lblMedicine1=(hidden); lblMedicine2=(hidden); lblMedicine3=(hidden); "
           "lblMedicine4=(hidden); txtMedicineGTOMRP=(hidden); txtMedicineTaxActual=(hidden)"},
          {"set", "Medicine=true; MedicineGTOMRP=10; MedicineTaxActual=20", shown},
          {"NULL", "Medicine=NULL; MedicineGTOMRP=10; MedicineTaxActual=20", shown}});
}

struct Wrong {
  const char* entries;
  value::Error number;
  const char* place;   // what the message names besides the report
  const char* stands;  // a box filled before the failure, as it stands
  const char* undone;  // a box that was not reached
};

TEST(Failures, NameReportAndPlaceAndWhatWasFilledStands) {
  using enum value::Error;
  const Wrong cases[] = {
      {"FromDate=NULL", TypeMismatch, "txtFromDate", "txtCSTNo2=", "txtTaxStotal"},
      {"SetoffCFCST=NULL; NetVAT=9", InvalidUseOfNull, "SetoffCFCST", "txtNetVAT=9", "txtTaxStotal"},
      {"SetoffCFCST=1; SetoffCF=NULL", InvalidUseOfNull, "txtCFPlusCFCST", "txtNetVAT=0", "txtTaxStotal"},
      {"sale 4 100 4; sale 4 NULL 0", InvalidUseOfNull, "txtNetSales4", "txtTaxS4=4", "txtTaxStotal"},
      {"sale 8 100 NULL RETURN", InvalidUseOfNull, "txtTaxS8", "txtNetSales8=-100", "txtTaxStotal"},
      {"SalesWCBalance2125Percent=NULL", InvalidUseOfNull, "txtNetSales12", "txtTaxS4=0", "txtTaxStotal"},
      {"NetExcessTaxCollected=NULL", InvalidUseOfNull, "NetExcessTaxCollected", "txttaxtotal=0", "txtTaxCollectedSep"},
      {"line SALESEC BASIC 4; also PurchaseEc=NULL", InvalidUseOfNull, "PurchaseEc", "txtTaxStotal=0",
       "txtTaxCollectedSep"},
      {"SalesTransit=NULL", InvalidUseOfNull, "txtTaxCollectedSep", "txtTaxStotal=0", "txtBalsalesturn"},
      {"SalesWC=NULL", InvalidUseOfNull, "SalesWC", "txtTaxStotal=0", "txtBalsalesturn"},
      {"VATPaidEarlier=NULL; TDS=3", InvalidUseOfNull, "txtTDS", "txtTDS=3", "TotalReduction"},
      {"PurchaseMS=NULL", InvalidUseOfNull, "txtPurchaseRD1", "txtBalsalesturn=0", "TotalReduction"},
      {"buy 4 0 0 0; also Restriction531=NULL", InvalidUseOfNull, "Restriction531", "txtGrossPurchaseFilling=0",
       "TotalReduction"},
      {"buy 0 0 0 0; also Restriction537=NULL", InvalidUseOfNull, "Restriction5345678", "PV5345678=0",
       "TotalReduction"},
      {"SetoffOpeningStock=NULL", TypeMismatch, "txtSetoffOpeningStock", "BalanceSetoff=0", "txtSetoffavail"},
      {"VATWithReturn=NULL", TypeMismatch, "txtVATWithReturn1", "SetoffClaimed=0", "txtwords"},
  };
  for (const Wrong& each : cases) {
    Filing(each.entries).open();
    for (const std::string& form : plain_and_twin()) {
      const auto report = make(form);
      try {
        report->run();
        ADD_FAILURE() << each.entries << ": no failure";
      } catch (const value::Failure& failure) {
        EXPECT_EQ(failure.number(), each.number) << each.entries << ": " << failure.description();
        EXPECT_NE(failure.description().find(form + ", "), std::string::npos) << failure.description();
        EXPECT_NE(failure.description().find(each.place), std::string::npos) << failure.description();
      }
      const std::string stands = each.stands;
      const std::string box = stands.substr(0, stands.find('='));
      EXPECT_EQ(box + "=" + seen(*report, box), stands) << each.entries;
      EXPECT_EQ(seen(*report, each.undone), "") << each.entries;
    }
  }
}

}  // namespace
}  // namespace dorvo::returns
