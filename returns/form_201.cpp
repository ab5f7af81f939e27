#include "returns/form_201.h"

#include "frame/settings.h"
#include "returns/queries.h"
#include "value/text.h"

namespace dorvo::returns {
namespace {

using value::Variant;

constexpr std::string_view kNil = "NIL";

// The numbers of the chalan copies run crosswise: a number in a name does not say which copy the box belongs to.
constexpr std::string_view kNames[] = {"txtName", "txtName1", "txtName2"};
constexpr std::string_view kCheques[] = {"txtVATChequeNo", "txtVATChequeNo1", "txtVATChequeNo2"};
constexpr std::string_view kBanks[] = {"txtBankName", "txtBankName1", "txtBankName2"};
constexpr std::string_view kOldNumbers[] = {"txtBSTNo", "txtBSTNo1", "txtBSTNo2"};
constexpr std::string_view kVatNumbers[] = {"txtVATNo", "txtVATNo1", "txtVATNo2"};
constexpr std::string_view kCstNumbers[] = {"txtCSTNo", "txtCSTNo1", "txtCSTNo2"};
constexpr std::string_view kKinds[] = {"txtreturntype", "txtreturntype1"};
constexpr std::string_view kDates[] = {"txtFillingDate1", "txtFillingDate2", "txtFillingDateVAT"};
constexpr std::string_view kPlaces[] = {"txtCity1", "txtCity2", "txtCity"};

constexpr frame::RegistrationBoxes kRegistration = {.old = kOldNumbers, .vat = kVatNumbers, .cst = kCstNumbers};

constexpr frame::WordBoxes kWords[] = {
    {"txtVATWithReturn1", "txtwords"},
    {"txtVATWithReturn2", "txtwords1"},
    {"txtVATWithReturn3", "txtwords2"},
};

constexpr std::string_view kTransfer[] = {"lblSetoffCFCST", "lblSetoffCFCST1", "lblSetoffCFCST2", "txtSetoffCFCST",
                                          "txtCFPlusCFCST"};
constexpr std::string_view kMedicine[] = {"lblMedicine",       "lblMedicine1",         "lblMedicine2",
                                          "lblMedicine3",      "lblMedicine4",         "txtMedicineGTOMRP",
                                          "txtMedicineTaxMRP", "txtMedicineGTOActual", "txtMedicineTaxActual"};
constexpr std::string_view kExcess[] = {"lblExcess", "lblExcessSrNo", "txtNetExcessTaxCollected"};

// Boxes that read "NIL" at zero, by part of the form.
constexpr std::string_view kNilBoxes[] = {
    // Boxes 5 to 17
    "txtGrossSales", "txtSalesOMSBranch", "txtSalesUs8", "txtSalesUS5", "txtTaxCollectedSep", "txtBalsalesturn",
    "txtVATPlusExcess", "txtSetoffClaimed", "txtVATMinusSetoff", "txtSetoffCF", "txtSetoffRefund", "txtNetVAT",
    "txtTDS", "txtVATWithReturn",
    // Medicine note
    "txtMedicineGTOMRP", "txtMedicineTaxMRP", "txtMedicineGTOActual", "txtMedicineTaxActual",
    // Box 18
    "txtNetSales4", "txtNetSales12", "txtNetSales8", "txtNetSales1", "txtNetSales20", "txtNetSalesother",
    "txtNetSalestotal", "txtTaxS4", "txtTaxS12", "txtTaxS8", "txtTaxS1", "txtTaxS20", "txtTaxSother",
    "txtNetExcessTaxCollected", "txtTaxStotal",
    // Box 19
    "txtPurchaseImports", "txtPurchaseOMS", "txtPurchaseConsignment", "txtPurchaseRD1", "txtPurchaseURD",
    "txtGrossPurchaseFilling", "txtNettrunpurch4", "txtNettrunpurch12", "txtNettrunpurch8", "txtNettrunpurch1",
    "txtNettrunpurch20", "txtNettrunpurchother", "txtNettotal", "txttaxp4", "txttaxp12", "txttaxp8", "txttaxp1",
    "txttaxp20", "txttaxpother", "txttaxtotal",
    // Box 20
    "txtPurchaseRD", "txtPurchaseRDSetoff", "PV53123", "Restriction53123", "PV5345678", "Restriction5345678",
    "txtAdHocSetoff", "TotalReductionPV", "TotalReduction", "BalancePV", "BalanceSetoff", "txtSetoffBF",
    "txtSetoffOpeningStockPV", "txtSetoffOpeningStock", "txtSetoffavail", "SetoffClaimed",
    // "Tax Rs" of the chalans
    "txtVATWithReturn4", "txtVATWithReturn5"};

// The treasury writes its figures by hand where nothing was paid.
constexpr std::string_view kEmptiedBoxes[] = {"txtVATWithReturn1", "txtVATWithReturn2", "txtVATWithReturn3"};

}  // namespace

std::string VatReturn::query() const {
  return return_query(PropCMasterID());
}

// The order decides figures: box 15 takes the tax deducted at source before box 16 adds what was paid earlier, and the
// zeros are replaced after the last sum.
void VatReturn::Detail_Format() {
  name_and_address(kNames);
  cheque();
  registration_numbers(kRegistration);

  balance_payable();
  set_off_to_cst();
  medicine_note();
  sales_by_rate();
  works_contracts();
  purchases_by_rate();
  excess_row();
  const CertificateSales certificate = certificate_sales();
  deductions(certificate);
  balance_turnover(certificate);
  already_paid();
  all_purchases();

  reductions();
  total_reduction();
  net_set_off();
  opening_stock();
  earlier_returns();
  total_set_off();
  amounts_in_words(kWords);

  signature();
  bank();
  note();
  kind_of_return(kKinds);
  filing_date_and_place(kDates, kPlaces);
  zeros();
  footer();
  file_number();
}

void VatReturn::cheque() {
  prefix_or_empty(kCheques, "VATChequeNo", "Ch.No.-");
}

void VatReturn::signature() {
  put("txtName4", "For  " + text("txtName4"));
  put("txtSignature1", master("Signature").is_null() ? std::string() : "Designation " + text("txtSignature1"));
}

void VatReturn::bank() {
  if (master("BankName").is_null()) put_all(kBanks, "");
}

void VatReturn::note() {
  show("lblNote", !value::is_empty(master("FormNote")));
}

void VatReturn::balance_payable() {
  put("txtNetVAT", amount("txtNetVAT") - amount("txtTDS"));
}

// Boxes 12 to 14. A negative transfer counts as one.
void VatReturn::set_off_to_cst() {
  const bool transferred = master_number("SetoffCFCST") != 0;
  if (transferred) {
    const Variant transfer = master("SetoffCFCST");
    put("txtCFPlusCFCST", master("SetoffCF") + transfer);
    put("txtSetoffClaimed", master("SetoffClaimed") + transfer);
    put("txtVATMinusSetoff", master("VATMinusSetoff") - transfer);
  }
  show_all(kTransfer, transferred);
}

// Not zero shows the note on a blank form and on stationery too; so does NULL.
void VatReturn::medicine_note() {
  show_all(kMedicine, !value::equals(master("Medicine"), 0));
}

void VatReturn::sales_by_rate() {
  lines_by_rate(kSalesLines, kSalesRates, "NetSalesAmount");
}

// Box 18 goes on: the first two contract records are split over 4 and 12.5 percent, the third is all at 8.
void VatReturn::works_contracts() {
  add("txtNetSales4", master("SalesWCBalance14Percent") + master("SalesWCBalance24Percent"));
  add("txtTaxS4", master("SalesWCTax14Percent") + master("SalesWCTax24Percent"));
  add("txtNetSales12", master("SalesWCBalance1125Percent") + master("SalesWCBalance2125Percent"));
  add("txtTaxS12", master("SalesWCTax1125Percent") + master("SalesWCTax2125Percent"));
  add("txtNetSales8", master("SalesWCBalance3"));
  add("txtTaxS8", master("SalesWCTax3"));
  add("txtTaxSother", 0);  // empty becomes 0

  put("txtNetSalestotal", total(kSalesRates, &RateRow::net));
  put("txtTaxStotal", total(kSalesRates, &RateRow::tax));
  if (number("txtNetExcessTaxCollected") > 0) add("txtTaxStotal", amount("txtNetExcessTaxCollected"));
}

void VatReturn::purchases_by_rate() {
  lines_by_rate(kEligiblePurchaseLines, kPurchaseRates, "NetPurchaseAmount");
  put("txtNettotal", total(kPurchaseRates, &RateRow::net));
  put("txttaxtotal", total(kPurchaseRates, &RateRow::tax));
}

// Row vii of box 18; less tax collected hides it on every form, whatever its caption says.
void VatReturn::excess_row() {
  show_all(kExcess, master_number("NetExcessTaxCollected") > 0);
}

// Goods returned under a certificate add here, although they come off their rate in box 18.
VatReturn::CertificateSales VatReturn::certificate_sales() {
  CertificateSales sum;
  each_line(kCertificateSalesLines, [&] {
    if (!line_is("BASIC") && !line_is("RETURN")) return;
    sum.deduction += line_number("PurchaseEc");
    sum.turnover += line_number("NetSalesAmount");
  });
  return sum;
}

// Box 9
void VatReturn::deductions(const CertificateSales& certificate) {
  constexpr std::string_view kBox = "txtTaxCollectedSep";
  put(kBox, master("SalesTransit") + master("SalesUS3") + master("SalesLabour") + master("TaxCollected") +
                master("DeemedTax") + certificate.deduction + master("SalesNotLiable") + master_number("SalesWC") -
                (master("SalesWCBalance1") + master("SalesWCBalance2") + master("SalesWCBalance3")));
  add(kBox, included_tax("SalesWCRecordType1", "SalesWCTax1"));
  add(kBox, included_tax("SalesWCRecordType2", "SalesWCTax2"));
}

// Box 10, built from its own parts; nothing checks it against boxes 5 to 9.
void VatReturn::balance_turnover(const CertificateSales& certificate) {
  constexpr std::string_view kBox = "txtBalsalesturn";
  put(kBox, master("SalesWCBalance1") + master("SalesWCBalance2") + master("SalesWCBalance3") + master("SalesMS") +
                master("SalesTaxable") + certificate.turnover);
  put(kBox, amount(kBox) - included_tax("SalesWCRecordType1", "SalesWCTax1"));
  put(kBox, amount(kBox) - included_tax("SalesWCRecordType2", "SalesWCTax2"));
}

// Box 16
void VatReturn::already_paid() {
  put("txtTDS", master("TDS") + master("VATPaidEarlier"));
}

// Box 19, first table. Purchases from registered dealers print with their tax; the total is that of the boxes.
void VatReturn::all_purchases() {
  put("txtPurchaseRD1", master("PurchaseRD") + master("PurchaseMS") + master("PurchaseRDTax"));
  put("txtGrossPurchaseFilling", amount("txtPurchaseImports") + amount("txtPurchaseOMS") +
                                     amount("txtPurchaseConsignment") + amount("txtPurchaseRD1") +
                                     amount("txtPurchaseURD"));
}

// Rows 2 and 3 of box 20. The purchase value of rule 53(7) follows from reduction and rate; a line without a rate takes
// the value of the line before it.
void VatReturn::reductions() {
  double value537 = 0;
  each_line(kReductionLines, [&] {
    if (line_number("Restriction531") != 0) {
      add("PV53123", line("NetPurchaseAmount"));
      add("Restriction53123", line("Restriction531"));
    }
    add("PV53123", line("PVForRestriction532A") + line("PVForRestriction532B") + line("PVForRestriction533"));
    add("Restriction53123", line("Restriction532A") + line("Restriction532B") + line("Restriction533"));
    if (const double rate = line_number("VATPercentage"); rate > 0)
      value537 = line_number("Restriction537") / rate * 100;
    add("PV5345678", line("TotalPV534") + value537);
    add("Restriction5345678", line("Restriction534") + line("Restriction537"));
  });
  add("PV5345678", master("NetValue535"));
  add("Restriction5345678", master("SetoffRestriction535"));
}

// Rows 4 and 5
void VatReturn::total_reduction() {
  put("TotalReductionPV", amount("PV53123") + amount("PV5345678"));
  put("txtAdHocSetoff", master("AdHocSetoff"));
  put("TotalReduction", amount("Restriction53123") + amount("Restriction5345678") + amount("txtAdHocSetoff"));
}

// Rows 1 and 6; row 1 repeats the totals of box 19.
void VatReturn::net_set_off() {
  put("txtPurchaseRD", number("txtNettotal"));
  put("txtPurchaseRDSetoff", number("txttaxtotal"));
  put("BalancePV", amount("txtPurchaseRD") - amount("TotalReductionPV"));
  put("BalanceSetoff", amount("txtPurchaseRDSetoff") - amount("TotalReduction"));
}

// Row 10, and the purchase value of row 11
void VatReturn::opening_stock() {
  const bool claimed = strict_number("txtSetoffOpeningStock") > 0;
  put("txtSetoffOpeningStockPV", claimed ? master("PurchaseValueRM") + master("PurchaseValueET") : 0);
  put("txtSetoffavail", amount("BalancePV") + amount("txtSetoffOpeningStockPV"));
}

// Rows 7 and 8: one figure, told apart by its sign, which row 8 prints too.
void VatReturn::earlier_returns() {
  const Variant adjusted = master("SetoffPrevAdjusted");
  put("txtSetoffPrevAdjustedPlus", value::above(adjusted, 0) ? adjusted : kNil);
  put("txtSetoffPrevAdjustedMinus", value::below(adjusted, 0) ? adjusted : kNil);
}

// Row 11. Both adjustments are subtracted, and row 8, being negative, adds.
void VatReturn::total_set_off() {
  put("SetoffClaimed", amount("BalanceSetoff") + amount("txtSetoffBF") + amount("txtSetoffOpeningStock") -
                           amount("txtSetoffPrevAdjustedMinus") - amount("txtSetoffPrevAdjustedPlus"));
}

void VatReturn::zeros() {
  replace_zeros(kNilBoxes);
  replace_zeros(kEmptiedBoxes, "");
}

// The twins carry their footer in Detail; the others have a page footer for it.
void VatReturn::footer() {
  if (!frame::find_report_kind(Name())->page_footer) show_user_name();
}

template <class Step>
void VatReturn::each_line(std::string_view query, Step step) {
  frame::OpenRecordset(rs, std::string(query) + std::to_string(PropCMasterID()));
  for (auto left = rs->RecordCount(); left > 0; --left, rs->MoveNext()) step();
}

double VatReturn::line_number(std::string_view column) const {
  const Variant held = line(column);
  if (held.is_null())
    throw value::Failure(value::Error::InvalidUseOfNull,
                         Name() + ", column " + std::string(column) + " of a line: invalid use of Null");
  return value::Val(held);
}

bool VatReturn::line_is(std::string_view sub_entry_type) const {
  return value::equals(line("SubEntryType"), sub_entry_type);
}

void VatReturn::lines_by_rate(std::string_view query, RateTable table, std::string_view net_column) {
  each_line(query, [&] {
    const RateRow& row = rate_row(table, line("VATPercentage"));
    if (line_is("RETURN")) {
      put(row.net, amount(row.net) - line(net_column));
      put(row.tax, amount(row.tax) - line("VATTaxAmount"));
    } else {
      add(row.net, line(net_column));
      add(row.tax, line("VATTaxAmount"));
    }
  });
}

Variant VatReturn::total(RateTable table, std::string_view RateRow::*box) const {
  Variant sum = 0;
  for (const RateRow& row : table) sum += amount(row.*box);
  return sum;
}

Variant VatReturn::included_tax(std::string_view record_type, std::string_view tax) {
  return value::equals(master(record_type), "Including Tax") ? master(tax) : 0;
}

}  // namespace dorvo::returns
