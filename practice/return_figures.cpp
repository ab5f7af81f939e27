#include "practice/return_figures.h"

#include <algorithm>
#include <string>

namespace dorvo::practice {
namespace {

using value::equals;

// Entry classes of lines.
using Classes = std::vector<std::string_view>;
const Classes kSales = {"SALESTAXABLE", "SALESMS", "SALESEC"};
const Classes kPurchases = {"PURCHASERD", "PURCHASERDEC", "PURCHASEMS"};

bool is_return(const Row& line) {
  return equals(line.at("SubEntryType"), "RETURN");
}
bool has_known_kind(const Row& line) {
  return is_return(line) || equals(line.at("SubEntryType"), "BASIC");
}
double sign(const Row& line) {
  return is_return(line) ? -1 : 1;
}
bool of_class(const Row& line, const Classes& entries) {
  return std::any_of(entries.begin(), entries.end(),
                     [&](std::string_view entry) { return equals(line.at("EntryType"), entry); });
}

template <class Amount>
double total(const Return& document, const Classes& entries, Amount amount) {
  double sum = 0;
  for (const Row& line : document.lines) {
    if (of_class(line, entries)) sum += amount(line);
  }
  return paise(sum);
}

double signed_total(const Return& document, const Classes& entries, std::string_view column) {
  return total(document, entries, [&](const Row& line) { return sign(line) * line.number(column); });
}

double sum(const Row& row, std::initializer_list<std::string_view> columns) {
  double result = 0;
  for (const std::string_view column : columns) result += row.number(column);
  return paise(result);
}

bool including_tax(const Row& master, int record) {
  return equals(master.at("SalesWCRecordType" + std::to_string(record)), "Including Tax");
}

// The tax of a contract record at its rates; the balance of a record whose value includes the tax holds it too.
void work_out_contracts(Row& master) {
  for (int record = 1; record <= 2; ++record) {
    const std::string number = std::to_string(record);
    const double at4 = master.number("SalesWCBalance" + number + "4Percent");
    const double at12 = master.number("SalesWCBalance" + number + "125Percent");
    const double tax4 = paise(at4 * 4 / 100);
    const double tax12 = paise(at12 * 12.5 / 100);
    const double tax = paise(tax4 + tax12);
    master.set("SalesWCTax" + number + "4Percent", tax4)
        .set("SalesWCTax" + number + "125Percent", tax12)
        .set("SalesWCTax" + number, tax)
        .set("SalesWCBalance" + number, paise(at4 + at12 + (including_tax(master, record) ? tax : 0)));
  }
  master.set("SalesWCTax3", paise(master.number("SalesWCBalance3") * 8 / 100));
}

double included_contract_tax(const Row& master) {
  double tax = 0;
  for (int record = 1; record <= 2; ++record) {
    if (including_tax(master, record)) tax += master.number("SalesWCTax" + std::to_string(record));
  }
  return tax;
}

// Gross turnover is what its deductions and the balance come to, as boxes 5 to 10 of the forms show it.
void work_out_sales(Return& document) {
  Row& master = document.master;
  const double contract_tax = sum(master, {"SalesWCTax1", "SalesWCTax2", "SalesWCTax3"});
  const double included = included_contract_tax(master);
  const double line_tax = signed_total(document, kSales, "VATTaxAmount");
  const double excess = std::max(0.0, master.number("NetExcessTaxCollected"));
  master.set("SalesTaxable", signed_total(document, {"SALESTAXABLE"}, "NetSalesAmount"))
      .set("SalesMS", signed_total(document, {"SALESMS"}, "NetSalesAmount"))
      .set("TaxCollected", paise(line_tax + contract_tax - included + excess))
      .set("TaxableVAT", paise(line_tax + contract_tax))
      .set("VATPlusExcess", paise(line_tax + contract_tax + excess))
      .set("VATPlusExcessWC", contract_tax)
      .set("SalesUs8",
           paise(signed_total(document, {"SALESUS81"}, "GrossSalesAmount") + sum(master, {"SalesUS82", "SalesUS83"})));

  const auto certified = [](std::string_view column) {
    return [column](const Row& line) { return has_known_kind(line) ? line.number(column) : 0; };
  };
  const double balances = sum(master, {"SalesWCBalance1", "SalesWCBalance2", "SalesWCBalance3"});
  const double deductions = sum(master, {"SalesTransit", "SalesUS3", "SalesLabour", "TaxCollected", "DeemedTax",
                                         "SalesNotLiable", "SalesWC"}) +
                            total(document, {"SALESEC"}, certified("PurchaseEc")) - balances + included;
  const double balance = balances + sum(master, {"SalesMS", "SalesTaxable"}) +
                         total(document, {"SALESEC"}, certified("NetSalesAmount")) - included;
  master.set("GrossSales", paise(sum(master, {"SalesOMSBranch", "SalesUs8", "SalesUS5"}) + deductions + balance));
}

void work_out_purchases(Return& document) {
  Row& master = document.master;
  master.set("PurchaseRD", signed_total(document, {"PURCHASERD", "PURCHASERDEC"}, "NetPurchaseAmount"))
      .set("PurchaseMS", signed_total(document, {"PURCHASEMS"}, "NetPurchaseAmount"))
      .set("PurchaseRDTax", signed_total(document, kPurchases, "VATTaxAmount"))
      .set("PurchaseRDSetoff", signed_total(document, kPurchases, "Setoff"));
  const double gross = sum(master, {"PurchaseImports", "PurchaseOMS", "PurchaseConsignment", "PurchaseRD", "PurchaseMS",
                                    "PurchaseRDTax", "PurchaseURD"});
  master.set("GrossPurchaseFilling", gross)
      .set("GrossPurchase", paise(gross + sum(master, {"PurchaseTransit", "PurchaseUs3", "PurchaseLabour"})));
}

// What is reduced under the sub-rules of rule 53, goods returned or not.
double reductions(const Return& document) {
  return total(document, {"PURCHASERD", "PURCHASERDEC"}, [](const Row& line) {
    return sum(line, {"Restriction531", "Restriction532A", "Restriction532B", "Restriction533", "Restriction534",
                      "Restriction537"});
  });
}

double eligible_tax(const Return& document) {
  return total(document, kPurchases, [](const Row& line) {
    return line.number("Setoff") == line.number("VATTaxAmount") ? sign(line) * line.number("VATTaxAmount") : 0;
  });
}

void work_out_payment(Return& document) {
  Row& master = document.master;
  const double available =
      paise(eligible_tax(document) - reductions(document) + sum(master, {"SetoffBF", "SetoffOpeningStock"}) -
            sum(master, {"SetoffRestriction535", "AdHocSetoff", "SetoffPrevAdjusted"}));
  const double balance = paise(master.number("VATPlusExcess") - available);
  const double excess = std::max(0.0, -balance);
  const double payable = std::max(0.0, balance);
  const double to_central = std::min(master.number("SetoffCFCST"), excess);
  const double refund = std::min(master.number("SetoffRefund"), excess - to_central);
  // The forms take the tax deducted at source off NetVAT before they print the balance payable.
  master.set("SetoffCFCST", to_central)
      .set("SetoffRefund", refund)
      .set("SetoffClaimed", paise(available - to_central))
      .set("VATMinusSetoff", paise(balance + to_central))
      .set("SetoffCF", paise(excess - to_central - refund))
      .set("NetVAT", paise(payable + master.number("TDS")))
      .set("VATBalforReturn", paise(payable - sum(master, {"TDS", "VATPaidEarlier"})))
      .set("VATWithReturn", std::max(0.0, master.number("VATBalforReturn")))
      .set("TotalVAT", payable);
}

void work_out_central(Return& document) {
  Row& master = document.master;
  const double tax = signed_total(document, {"SALESUS81"}, "CSTTaxAmount");
  const double due = paise(tax - sum(master, {"CSTPaidEarlier", "SetoffCFCST"}));
  master.set("CSTPlusExcess", tax)
      .set("SalesUs81TaxCollected", tax)
      .set("TaxableCST", due)
      .set("TaxIntCST", paise(due + sum(master, {"CSTPenalty", "CSTInterestAmount"})))
      .set("CSTBalforReturn", master.number("TaxIntCST"))
      .set("CSTWithReturn", std::max(0.0, master.number("TaxIntCST")))
      .set("TotalCST", tax);
}

}  // namespace

Row sales_line(std::string_view entry, double rate, double net) {
  const double tax = paise(net * rate / 100);
  Row line("CDetail");
  line.set("EntryType", entry)
      .set("SubEntryType", "BASIC")
      .set("VATPercentage", rate)
      .set("NetSalesAmount", net)
      .set("GrossSalesAmount", paise(net + tax))
      .set("VATTaxAmount", tax);
  return line;
}

Row purchase_line(std::string_view entry, double rate, double net) {
  const double tax = paise(net * rate / 100);
  Row line("CDetail");
  line.set("EntryType", entry)
      .set("SubEntryType", "BASIC")
      .set("VATPercentage", rate)
      .set("NetPurchaseAmount", net)
      .set("VATTaxAmount", tax)
      .set("Setoff", tax);
  return line;
}

Row central_line(std::string_view form, double rate, double net) {
  const double tax = paise(net * rate / 100);
  Row line("CDetail");
  line.set("EntryType", "SALESUS81")
      .set("SubEntryType", "BASIC")
      .set("CSTPercentage", rate)
      .set("NetSalesAmount", net)
      .set("GrossSalesAmount", paise(net + tax))
      .set("CSTTaxAmount", tax)
      .set("Particular", form);
  return line;
}

Row returned(Row line) {
  line.set("SubEntryType", "RETURN");
  return line;
}

void work_out(Return& document) {
  work_out_contracts(document.master);
  work_out_sales(document);
  work_out_purchases(document);
  work_out_payment(document);
  work_out_central(document);
}

Row form_3b(const Return& document) {
  const Row& master = document.master;
  const double interstate = signed_total(document, {"SALESUS81"}, "GrossSalesAmount");
  const double tax = master.number("CSTPlusExcess");
  Row row("FormIIIB");
  row.set("CmasterID", master.at("CMasterID"))
      .set("SalesUS81", interstate)
      .set("SalesOMSReturned",
           total(document, {"SALESUS81"},
                 [](const Row& line) { return is_return(line) ? line.number("GrossSalesAmount") : 0; }))
      .set("SalesOMSNet", interstate)
      .set("SalesOMSTaxCollected", tax)
      .set("SalesUs81Tax", tax);
  return row;
}

}  // namespace dorvo::practice
