// Totals worked by hand from the lines and figures given.
#include "practice/return_figures.h"

#include <gtest/gtest.h>

using namespace dorvo::practice;

namespace {

struct Expected {
  const char* column;
  double amount;
};

void expect(const Return& document, std::initializer_list<Expected> expected) {
  for (const Expected& e : expected) EXPECT_DOUBLE_EQ(document.master.number(e.column), e.amount) << e.column;
}

// Sales 1,00,000 at 4 % and 80,000 at 12.5 % with 8,000 of it returned; purchases 50,000 at 12.5 %.
Return small() {
  Return document;
  document.lines = {sales_line("SALESTAXABLE", 4, 100000), sales_line("SALESTAXABLE", 12.5, 80000),
                    returned(sales_line("SALESTAXABLE", 12.5, 8000)), purchase_line("PURCHASERD", 12.5, 50000)};
  return document;
}

TEST(ReturnFigures, SalesPurchasesAndPayment) {
  Return document = small();
  document.master.set("SalesUS5", 500).set("SalesOMSBranch", 2000).set("PurchaseURD", 300);
  work_out(document);
  // Tax 4,000 + 9,000; gross turnover 172,000 + 13,000 tax + 500 + 2,000; set-off 6,250.
  expect(document, {{"SalesTaxable", 172000},
                    {"TaxCollected", 13000},
                    {"GrossSales", 187500},
                    {"VATPlusExcess", 13000},
                    {"PurchaseRD", 50000},
                    {"PurchaseRDTax", 6250},
                    {"GrossPurchaseFilling", 56550},
                    {"SetoffClaimed", 6250},
                    {"VATMinusSetoff", 6750},
                    {"NetVAT", 6750},
                    {"VATWithReturn", 6750},
                    {"SetoffCF", 0}});
}

TEST(ReturnFigures, DeductedAtSourceAndPaidEarlierComeOffThePayment) {
  Return document = small();
  document.master.set("TDS", 100).set("VATPaidEarlier", 300);
  work_out(document);
  expect(document, {{"NetVAT", 6850}, {"VATWithReturn", 6350}});
}

TEST(ReturnFigures, ExcessCollectedIsPayableAndLessCollectedIsNot) {
  for (const auto& [excess, payable] : {std::pair{100.0, 13100.0}, {-100.0, 13000.0}}) {
    Return document = small();
    document.master.set("NetExcessTaxCollected", excess);
    work_out(document);
    EXPECT_DOUBLE_EQ(document.master.number("VATPlusExcess"), payable);
  }
}

// Set-off 25,000 against tax 4,000: 21,000 over.
TEST(ReturnFigures, ExcessSetoffIsCarriedRefundedOrTransferred) {
  const struct {
    double refund, to_central;
    double claimed, balance, carried;
  } cases[] = {
      {0, 0, 25000, -21000, 21000},    {9000, 0, 25000, -21000, 12000}, {0, 500, 24500, -20500, 20500},
      {0, -300, 25300, -21300, 21300}, {90000, 500, 24500, -20500, 0},
  };
  for (const auto& c : cases) {
    Return document;
    document.lines = {sales_line("SALESTAXABLE", 4, 100000), purchase_line("PURCHASERD", 12.5, 200000)};
    document.master.set("SetoffRefund", c.refund).set("SetoffCFCST", c.to_central);
    work_out(document);
    expect(document, {{"SetoffClaimed", c.claimed}, {"VATMinusSetoff", c.balance}, {"SetoffCF", c.carried}});
    expect(document, {{"NetVAT", 0}, {"VATWithReturn", 0}});
  }
}

TEST(ReturnFigures, SetoffTakesReductionsAdjustmentsAndOpeningStock) {
  Return document = small();
  document.lines.back().set("Restriction531", 400).set("Restriction537", 50);
  document.lines.push_back(purchase_line("PURCHASERD", 4, 10000));
  document.lines.back().set("Setoff", 100);  // not eligible in full: no set-off on the form
  document.master.set("SetoffRestriction535", 20)
      .set("AdHocSetoff", 30)
      .set("SetoffPrevAdjusted", -250)
      .set("SetoffBF", 1000)
      .set("SetoffOpeningStock", 2000);
  work_out(document);
  // 6,250 - 400 - 50 - 20 - 30 + 250 + 1,000 + 2,000
  expect(document, {{"SetoffClaimed", 9000}, {"PurchaseRDSetoff", 6350}});
}

// Record 1 holds 1,00,000 at 4 % and 40,000 at 12.5 %, tax 4,000 + 5,000; record 3 holds 10,000 at 8 %.
TEST(ReturnFigures, ContractsWithTaxInsideTheValue) {
  for (const bool including : {true, false}) {
    Return document;
    document.master.set("SalesWC", 200000)
        .set("SalesWCBalance14Percent", 100000)
        .set("SalesWCBalance1125Percent", 40000)
        .set("SalesWCBalance3", 10000)
        .set("SalesWCRecordType1", including ? "Including Tax" : "Excluding Tax");
    work_out(document);
    expect(document, {{"SalesWCTax1", 9000},
                      {"SalesWCTax3", 800},
                      {"VATPlusExcess", 9800},
                      {"SalesWCBalance1", including ? 149000.0 : 140000.0},
                      {"TaxCollected", including ? 800.0 : 9800.0},
                      // the receipts, and the tax that is not inside them
                      {"GrossSales", including ? 200800.0 : 209800.0}});
  }
}

TEST(ReturnFigures, CentralSales) {
  Return document;
  document.lines = {central_line("Form \"C\"", 4, 50000), returned(central_line("Form \"C\"", 4, 5000))};
  document.master.set("CMasterID", 7);
  work_out(document);
  expect(document, {{"SalesUs8", 46800}, {"GrossSales", 46800}, {"CSTPlusExcess", 1800}, {"CSTWithReturn", 1800}});
  EXPECT_DOUBLE_EQ(form_3b(document).number("SalesOMSReturned"), 5200);
}

}  // namespace
