#include "practice/cases.h"

#include <string>

#include "value/text.h"

namespace dorvo::practice {
namespace {

constexpr std::string_view kTaxable = "SALESTAXABLE";
constexpr std::string_view kSpirit = "SALESMS";
constexpr std::string_view kCertificate = "SALESEC";
constexpr std::string_view kBought = "PURCHASERD";
constexpr std::string_view kBoughtSpirit = "PURCHASEMS";
constexpr std::string_view kBoughtCertificate = "PURCHASERDEC";

void add(Return& document, std::initializer_list<Row> lines) {
  document.lines.insert(document.lines.end(), lines.begin(), lines.end());
}

// What most of the described returns trade in, so that a form shows a full picture around the state it is for.
void trading(Return& document) {
  add(document, {sales_line(kTaxable, 4, 240000), sales_line(kTaxable, 12.5, 180000), sales_line(kTaxable, 1, 20000),
                 returned(sales_line(kTaxable, 12.5, 8000)), purchase_line(kBought, 4, 150000),
                 purchase_line(kBought, 12.5, 96000), returned(purchase_line(kBought, 4, 5000))});
  document.master.set("SalesUS5", 14500).set("PurchaseURD", 6200).set("PurchaseOMS", 31000);
}

void trading_at_a_loss(Return& document) {
  add(document, {sales_line(kTaxable, 12.5, 80000), purchase_line(kBought, 12.5, 200000)});
}

void everything(Return& document) {
  trading(document);
  add(document, {sales_line(kTaxable, 8, 36000), sales_line(kTaxable, 20, 15000), sales_line(kTaxable, 0, 9000),
                 purchase_line(kBought, 8, 21000), purchase_line(kBought, 1, 11000), purchase_line(kBought, 20, 6000),
                 purchase_line(kBought, 5, 4000), central_line("Form \"C\"", 4, 50000),
                 returned(central_line("Form \"C\"", 4, 2500))});
  Row reduced = purchase_line(kBought, 12.5, 40000);
  reduced.set("Restriction531", 1600);
  document.lines.push_back(reduced);
  document.master.set("SalesOMSBranch", 60000)
      .set("SalesTransit", 2500)
      .set("SalesUS3", 1200)
      .set("SalesLabour", 3400)
      .set("SalesNotLiable", 700)
      .set("DeemedTax", 90)
      .set("NetExcessTaxCollected", 125)
      .set("PurchaseImports", 75000)
      .set("PurchaseConsignment", 18000)
      .set("SetoffBF", 2400)
      .set("SetoffOpeningStock", 3150)
      .set("PurchaseValueRM", 42000)
      .set("PurchaseValueET", 18500)
      .set("SetoffPrevAdjusted", 350)
      .set("TDS", 500)
      .set("VATPaidEarlier", 1000)
      .set("FormNote", "Set off on opening stock as per statement filed on 15/06/2005.");
}

void rates_of_the_other_row(Return& document) {
  for (const double rate : {0.0, 5.0, 12.0, 12.49, 4.01}) add(document, {sales_line(kTaxable, rate, 10000)});
  for (const double rate : {0.0, 5.0, 12.0, 12.49}) add(document, {purchase_line(kBought, rate, 8000)});
}

void sold_and_returned(Return& document) {
  add(document, {sales_line(kTaxable, 12.5, 64000), returned(sales_line(kTaxable, 12.5, 64000)),
                 sales_line(kTaxable, 4, 100000), returned(sales_line(kTaxable, 20, 5000)),
                 purchase_line(kBought, 4, 20000), returned(purchase_line(kBought, 1, 3000))});
}

void kinds_of_line(Return& document) {
  trading(document);
  Row capitals = sales_line(kTaxable, 4, 6000);
  Row other = sales_line(kCertificate, 4, 7000);
  capitals.set("SubEntryType", "Return");
  other.set("SubEntryType", "ADJUST").set("PurchaseEc", 900);
  add(document, {capitals, other});
}

void contracts(Return& document) {
  document.master.set("SalesWC", 1200000)
      .set("SalesWCBalance14Percent", 300000)
      .set("SalesWCBalance1125Percent", 120000)
      .set("SalesWCBalance24Percent", 80000)
      .set("SalesWCBalance2125Percent", 64000)
      .set("SalesWCBalance3", 150000)
      .set("SalesWCGrossValue1", 600000)
      .set("SalesWCGrossValue2", 350000)
      .set("SalesWCGrossValue3", 250000)
      .set("SalesWCDescription1", "Civil work, Bhugaon site")
      .set("SalesWCDescription2", "Electrical fitting, Wakad")
      .set("SalesWCDescription3", "Painting under composition");
}

void contracts_and_lines(Return& document) {
  trading(document);
  contracts(document);
  document.master.set("SalesWCRecordType1", "Including Tax").set("TDS", 12000);
}

void contracts_alone(Return& document) {
  contracts(document);
  document.master.set("SalesWCRecordType1", "Including Tax").set("SalesWCRecordType2", "Including Tax");
}

void contracts_excluding_tax(Return& document) {
  contracts(document);
  document.master.set("SalesWCRecordType1", "Excluding Tax").set("SalesWCRecordType2", "Excluding Tax");
}

Row reduced_537(double rate, double net, double reduction) {
  Row line = purchase_line(kBought, rate, net);
  line.set("Restriction537", reduction);
  return line;
}

void carried_over_537(Return& document) {
  add(document, {sales_line(kTaxable, 12.5, 120000), reduced_537(12.5, 40000, 250), reduced_537(12.5, 24000, 125),
                 reduced_537(0, 6000, 50)});
}

void first_line_without_rate_537(Return& document) {
  add(document, {sales_line(kTaxable, 12.5, 120000), reduced_537(0, 6000, 50), reduced_537(12.5, 40000, 250)});
}

void all_reductions(Return& document) {
  add(document, {sales_line(kTaxable, 4, 500000), sales_line(kTaxable, 12.5, 300000)});
  Row first = purchase_line(kBought, 4, 250000);
  first.set("Restriction531", 10000);
  Row second = purchase_line(kBought, 12.5, 160000);
  second.set("Restriction532A", 1600)
      .set("PVForRestriction532A", 40000)
      .set("Restriction532B", 1200)
      .set("PVForRestriction532B", 30000)
      .set("Restriction533", 800)
      .set("PVForRestriction533", 20000);
  Row third = purchase_line(kBoughtCertificate, 12.5, 80000);
  third.set("Restriction534", 750).set("TotalPV534", 6000).set("Restriction537", 500);
  Row back = returned(purchase_line(kBought, 4, 10000));
  back.set("Restriction531", 400);
  add(document, {first, second, third, back});
  document.master.set("SetoffRestriction535", 275)
      .set("NetValue535", 5500)
      .set("AdHocSetoff", 130)
      .set("AdHocTypeID", 2);
}

void opening_stock(Return& document) {
  trading(document);
  document.master.set("SetoffOpeningStock", 6240).set("PurchaseValueRM", 96000).set("PurchaseValueET", 60000);
}

void to_central_tax(Return& document) {
  trading_at_a_loss(document);
  add(document, {central_line("Form \"C\"", 4, 150000)});
  document.master.set("SetoffCFCST", 500);
}

void from_central_tax(Return& document) {
  trading_at_a_loss(document);
  document.master.set("SetoffCFCST", -300);
}

void claimed_in_excess(Return& document) {
  trading(document);
  document.master.set("SetoffPrevAdjusted", 250);
}

void claimed_short(Return& document) {
  trading(document);
  document.master.set("SetoffPrevAdjusted", -250);
}

void excess_collected(Return& document) {
  trading(document);
  document.master.set("NetExcessTaxCollected", 100);
}

void less_collected(Return& document) {
  trading(document);
  document.master.set("NetExcessTaxCollected", -100);
}

void medicine(Return& document) {
  add(document, {sales_line(kTaxable, 4, 910000), purchase_line(kBought, 4, 420000)});
  document.master.set("MedicineGTOMRP", 910000)
      .set("MedicineTaxMRP", 36400)
      .set("MedicineGTOActual", 702500)
      .set("MedicineTaxActual", 28100);
}

void medicine_exempt(Return& document) {
  add(document, {sales_line(kTaxable, 4, 125000), purchase_line(kBought, 4, 98000)});
}

void refund(Return& document) {
  trading_at_a_loss(document);
  document.master.set("SetoffRefund", 9000);
}

void crores(Return& document) {
  add(document, {sales_line(kTaxable, 4, 4875312450), sales_line(kTaxable, 12.5, 1234567890.40),
                 sales_line(kTaxable, 20, 412000000), purchase_line(kBought, 4, 2150000000),
                 purchase_line(kBought, 12.5, 640000000)});
  document.master.set("SalesOMSBranch", 987654321.75).set("PurchaseImports", 125000000).set("VATPaidEarlier", 100000);
}

void paise_and_rupees(Return& document) {
  add(document, {sales_line(kTaxable, 4, 1234.56), sales_line(kTaxable, 12.5, 98.76), sales_line(kTaxable, 1, 0.5),
                 purchase_line(kBought, 4, 611.11)});
}

void hundred_rupees(Return& document) {
  add(document, {sales_line(kTaxable, 4, 2500)});
}

void deducted_at_source(Return& document) {
  trading(document);
  document.master.set("TDS", 100).set("VATPaidEarlier", 300);
}

void wholly_deducted_at_source(Return& document) {
  add(document, {sales_line(kTaxable, 4, 60000), purchase_line(kBought, 4, 60000)});
  document.master.set("TDS", 900);
}

void ten_line_note(Return& document) {
  trading(document);
  std::string note;
  for (int line = 1; line <= 10; ++line) {
    note += std::to_string(line) + ". Set off on invoice of supplier no. " + std::to_string(1100 + 7 * line) +
            " is taken in this month on receipt of the original tax invoice.\r\n";
  }
  document.master.set("FormNote", note.substr(0, note.size() - 2));
}

void no_bank(Return& document) {
  trading(document);
  document.master.set("VATBankID", value::Variant()).set("VATChequeNo", "");
}

void bank_without_branch(Return& document) {
  trading(document);
  document.master.set("VATBankID", 2);
}

void revised(Return& document) {
  trading(document);
  add(document, {sales_line(kTaxable, 4, 12500)});
  document.master.set("ReturnType", "Revised").set("RevisionNo", 1);
}

void fresh(Return& document) {
  trading(document);
  document.master.set("ReturnType", "Fresh");
}

void unknown_kind(Return& document) {
  trading(document);
  document.master.set("ReturnType", "revised");
}

void nothing(Return&) {}

void certificate_sales(Return& document) {
  Row sold = sales_line(kCertificate, 4, 200000);
  sold.set("PurchaseEc", 30000);
  Row back = returned(sales_line(kCertificate, 4, 20000));
  back.set("PurchaseEc", 2500);
  add(document, {sold, back, sales_line(kTaxable, 12.5, 40000), purchase_line(kBoughtCertificate, 4, 110000),
                 purchase_line(kBought, 4, 30000)});
  document.master.set("EODType", "Exemption")
      .set("EOD31", true)
      .set("ECNo", "SICOM/PSI/1993/0412")
      .set("RMSetoff", 4400)
      .set("RMSetoffPV", 110000)
      .set("ORMSetoff", 1200)
      .set("ORMSetoffPV", 30000)
      .set("TotalCeilingBST", 5000)
      .set("TotalCeilingAmount", 5000)
      .set("TotalOpeningCeiling", 1850000)
      .set("TotalClosingCeiling", 1845000);
  document.certificates = {1, 2};
}

void deferred(Return& document) {
  certificate_sales(document);
  document.master.set("EODType", "Defferal").set("VATDeferred", 5000);
  document.certificates = {1};
}

void motor_spirit(Return& document) {
  Row part = purchase_line(kBoughtSpirit, 20, 50000);
  part.set("Setoff", 2500);
  add(document, {sales_line(kSpirit, 20, 1500000), purchase_line(kBoughtSpirit, 20, 1200000), part});
}

void ineligible_purchases(Return& document) {
  Row part = purchase_line(kBought, 12.5, 32000);
  part.set("Setoff", 1000);
  Row untaxed = purchase_line(kBought, 0, 14000);
  add(document, {sales_line(kTaxable, 12.5, 90000), part, untaxed, purchase_line(kBought, 12.5, 40000)});
}

// Wrong on purpose.
void null_in_a_line(Return& document) {
  document.lines.front().set("NetSalesAmount", value::Variant());
}
void null_payment(Return& document) {
  document.master.set("VATWithReturn", value::Variant());
}
void null_opening_stock(Return& document) {
  document.master.set("SetoffOpeningStock", value::Variant());
}
void null_period(Return& document) {
  document.master.set("FromDate", value::Variant());
}
void null_deduction(Return& document) {
  document.master.set("SalesTransit", value::Variant());
}
void null_printed_only(Return& document) {
  document.master.set("SetoffCF", value::Variant()).set("PurchaseImports", value::Variant());
}
void null_texts(Return& document) {
  document.master.set("FormNote", value::Variant())
      .set("VATChequeNo", value::Variant())
      .set("ReturnType", value::Variant());
}
void null_adjustment(Return& document) {
  document.master.set("SetoffPrevAdjusted", value::Variant());
}
void no_such_year(Return& document) {
  document.master.set("YearID", 99);
}

constexpr DescribedReturn kReturns[] = {
    {1, 1, 2006, 3, 1, "Everything at once, last month before TINs: numbers formatted", everything},
    {2, 1, 2006, 4, 1, "Everything at once, first month of TINs: TINs as stored", everything},
    {3, 1, 2005, 4, 1, "Original return, cheque and bank, a usual month", trading},
    {4, 1, 2005, 4, 1, "The same month revised, revision 1", revised},
    {5, 1, 2005, 5, 1, "Fresh return", fresh},
    {6, 1, 2005, 6, 1, "Kind of return unknown (\"revised\" in small letters)", unknown_kind},
    {7, 1, 2005, 7, 1, "Empty return: no line, no figure", nothing},
    {8, 1, 2005, 8, 1, "Goods sold and returned in full; goods returned at rates without a sale", sold_and_returned},
    {9, 1, 2005, 9, 1, "Rates 0, 5, 12, 12.49, 4.01: all in the row \"Other\"", rates_of_the_other_row},
    {10, 1, 2005, 10, 1, "Line marked \"Return\" in small letters; certificate line marked \"ADJUST\"", kinds_of_line},
    {11, 13, 2005, 5, 1, "Works contracts beside lines; record 1 including tax; tax deducted at source",
     contracts_and_lines},
    {12, 13, 2005, 6, 1, "Works contracts alone, no line; records 1 and 2 including tax", contracts_alone},
    {13, 13, 2005, 7, 1, "Works contracts alone, no record including tax", contracts_excluding_tax},
    {14, 1, 2005, 11, 1, "Reduction under rule 53(7) on a line without rate after lines with one", carried_over_537},
    {15, 1, 2005, 12, 1, "Reduction under rule 53(7) on a first line without rate", first_line_without_rate_537},
    {16, 1, 2006, 1, 1, "Reductions under every sub-rule of rule 53, one on goods returned", all_reductions},
    {17, 1, 2006, 2, 1, "Set-off on opening stock", opening_stock},
    {18, 1, 2006, 5, 1, "Set-off transferred to the central sales tax", to_central_tax},
    {19, 1, 2006, 6, 1, "Transfer to the central sales tax below zero", from_central_tax},
    {20, 1, 2006, 7, 1, "Excess set-off claimed earlier", claimed_in_excess},
    {21, 1, 2006, 8, 1, "Set-off claimed short earlier", claimed_short},
    {22, 1, 2006, 9, 1, "Earlier adjustment NULL", trading, null_adjustment},
    {23, 1, 2006, 10, 1, "Excess tax collected", excess_collected},
    {24, 1, 2006, 11, 1, "Less tax collected", less_collected},
    {25, 11, 2006, 4, 1, "Note of a manufacturer of medicine", medicine},
    {26, 12, 2006, 4, 1, "Flag of medicine NULL: note shown", medicine_exempt},
    {27, 1, 2006, 12, 1, "Refund claimed, nothing paid with the return", refund},
    {28, 6, 2006, 4, 1, "Crores; long name and address", crores},
    {29, 1, 2007, 1, 1, "Rupees and paise", paise_and_rupees},
    {30, 1, 2007, 2, 1, "Exactly one hundred rupees paid", hundred_rupees},
    {31, 1, 2007, 3, 1, "Tax deducted at source 100, paid earlier 300", deducted_at_source},
    {32, 13, 2006, 4, 1, "Balance payable equal to the tax deducted at source", wholly_deducted_at_source},
    {33, 5, 2006, 4, 1, "Note of ten lines", ten_line_note},
    {34, 5, 2006, 5, 1, "No bank, no cheque", no_bank},
    {35, 5, 2006, 6, 1, "Bank whose branch is NULL", bank_without_branch},
    {36, 10, 2006, 4, 1, "Dealer without address, constitution, signature, office, signatory", trading},
    {37, 2, 2005, 4, 1, "Number of the earlier law only", trading},
    {38, 3, 2006, 4, 1, "After 1 April 2006 without TINs; a name in two scripts", trading},
    {39, 4, 2006, 4, 1, "TIN under the Central Act only", trading},
    {40, 7, 2006, 4, 1, "Name and address in Devanagari", trading},
    {41, 8, 2006, 4, 1, "Address lines only", trading},
    {42, 9, 2006, 4, 1, "PIN without State", trading},
    {43, 16, 2006, 4, 1, "No registration number of any kind", trading},
    {44, 15, 2006, 4, 1, "Certificate sales and their returns, exemption, two certificates", certificate_sales},
    {45, 15, 2006, 5, 1, "Deferral, one certificate", deferred},
    {46, 14, 2006, 4, 1, "Motor spirit, a purchase with part set-off", motor_spirit},
    {47, 1, 2005, 4, 3, "Quarterly return, everything at once", everything},
    {48, 1, 2006, 4, 6, "Six-monthly return, everything at once", everything},
    {49, 9, 2005, 5, 1, "Purchases without tax and with part set-off", ineligible_purchases},
    {50, 9, 2005, 6, 1, "NULL in columns that are only printed", trading, null_printed_only},
    {51, 9, 2005, 7, 1, "NULL note, cheque and kind of return", trading, null_texts},
    {52, 9, 2005, 8, 1, "Wrong: NULL in a line; the run ends", trading, null_in_a_line},
    {53, 9, 2005, 9, 1, "Wrong: NULL deduction; the run ends", trading, null_deduction},
    {54, 9, 2005, 10, 1, "Wrong: NULL payment; the run ends at the words", trading, null_payment},
    {55, 9, 2005, 11, 1, "Wrong: NULL set-off on opening stock; the run ends", trading, null_opening_stock},
    {56, 9, 2005, 12, 1, "Wrong: NULL period; the run ends at the TIN", trading, null_period},
    {57, 9, 2006, 1, 1, "Wrong: a year that does not exist; no page", trading, no_such_year},
};

constexpr std::string_view filing_type(int months) {
  return months == 1 ? "MONTHLY" : months == 3 ? "Quarterly" : "Six Monthly";
}

value::Date days_after(const value::Date& date, int days) {
  return value::date_of_serial(value::serial_of(date) + days);
}

}  // namespace

std::span<const DescribedReturn> described_returns() {
  return kReturns;
}

void set_head(Row& master, int id, int dealer, int from_year, int from_month, int months) {
  const int after = from_month + months;  // the month that follows the period, from 1 to 18
  const value::Date from{from_year, from_month, 1, 0};
  const value::Date next{from_year + (after - 1) / 12, (after - 1) % 12 + 1, 1, 0};
  const value::Date to = days_after(next, -1);
  const value::Date filed = days_after(to, 20);
  master.set("CMasterID", id)
      .set("CustomerCode", dealer)
      .set("YearID", from_month >= 4 ? from_year - 2004 : from_year - 2005)
      .set("MonthID", to.month)
      .set("FromDate", from)
      .set("ToDate", to)
      .set("FillingDate", filed)
      .set("FillingDateVAT", filed)
      .set("FillingDateCST", filed)
      .set("DueDate", days_after(to, 25))
      .set("ReturnType", "Original")
      .set("FillingType", filing_type(months))
      .set("ChallanType", "Treasury")
      .set("VATChequeNo", std::to_string(400000 + (id * 137) % 600000))
      .set("VATBankID", 1)
      .set("CSTBankID", 1);
}

Return described_return(const DescribedReturn& described) {
  Return document;
  set_head(document.master, described.id, described.dealer, described.from_year, described.from_month,
           described.months);
  described.enter(document);
  work_out(document);
  if (described.spoil != nullptr) described.spoil(document);
  return document;
}

}  // namespace dorvo::practice
