#include "practice/schema.h"

#include <algorithm>
#include <array>

#include "value/text.h"

namespace dorvo::practice {
namespace {

// Columns of one type, their names parted by blanks.
struct Group {
  Type type;
  int size;
  std::string_view names;
};

struct Definition {
  std::string_view name;
  std::string_view key;
  std::vector<std::string_view> indexes;
  std::vector<Group> groups;
};

const std::vector<Definition>& definitions() {
  static const std::vector<Definition> all = {
      {"YearMaster",
       "YearID",
       {},
       {{Type::Key, 0, "YearID"}, {Type::Integer, 0, "YearFrom YearTo"}, {Type::Text, 20, "yearfromto"}}},
      {"Monthmaster", "MonthID", {}, {{Type::Key, 0, "MonthID"}, {Type::Text, 20, "Month"}}},
      {"Constitution", "ConstitutionID", {}, {{Type::Key, 0, "ConstitutionID"}, {Type::Text, 100, "Constitution"}}},
      {"signature", "SignatureID", {}, {{Type::Key, 0, "SignatureID"}, {Type::Text, 100, "Signature"}}},
      {"STO", "STOID", {}, {{Type::Key, 0, "STOID"}, {Type::Text, 50, "ChargeNo"}}},
      {"adhoctype", "adhoctypeid", {}, {{Type::Key, 0, "adhoctypeid"}, {Type::Text, 100, "adhocType"}}},
      {"BAnk",
       "ID, YearID, CustomerCode",
       {},
       {{Type::Key, 0, "ID YearID CustomerCode"}, {Type::Text, 100, "BankName Branch"}}},
      {"Customer",
       "CustomerID",
       {"CustomerCode, YearID"},
       {{Type::Key, 0, "CustomerID CustomerCode YearID"},
        {Type::Text, 250, "Name"},
        {Type::Text, 150, "Flatno Building Street Address Address1"},
        {Type::Text, 60, "Taluka City District State PinCode PhoneNo MobileNo Email GroupName FileNo"},
        {Type::Text, 40, "VATNo BSTNo CSTNo TinVAT TinCST"},
        {Type::Integer, 0, "ConstitutionID SignatureID"},
        {Type::Text, 150, "SignatureName"},
        {Type::Integer, 0, "STOID"},
        {Type::Text, 40, "ChallanType"},
        {Type::Flag, 0, "efiling EEnrolled Medicine"}}},
      {"CMaster",
       "CMasterID",
       {"CustomerCode, YearID"},
       {{Type::Key, 0, "CMasterID CustomerCode YearID"},
        {Type::Integer, 0, "MonthID"},
        {Type::Date, 0, "FromDate ToDate"},
        {Type::Integer, 0, "RevisionNo"},
        {Type::Text, 40, "ReturnType FillingType ChallanType"},
        {Type::Date, 0, "FillingDate FillingDateVAT FillingDateCST DueDate ExtendedDate"},
        {Type::Text, 40, "VATChequeNo CSTChequeNo"},
        {Type::Integer, 0, "VATBankID CSTBankID"},
        {Type::Text, 100, "VATBankName"},
        {Type::Text, 4000, "FormNote"},
        // Turnover of sales.
        {Type::Amount, 0,
         "GrossSales SalesOMSBranch SalesUs8 SalesUS5 SalesTransit SalesUS3 SalesLabour SalesNotLiable TaxCollected "
         "DeemedTax SalesMS SalesTaxable NetExcessTaxCollected "
         "MedicineGTOMRP MedicineGTOActual MedicineTaxMRP MedicineTaxActual"},
        // Works contracts.
        {Type::Amount, 0,
         "SalesWC SalesWCBalance1 SalesWCBalance2 SalesWCBalance3 SalesWCTax1 SalesWCTax2 SalesWCTax3"},
        {Type::Text, 40, "SalesWCRecordType1 SalesWCRecordType2"},
        {Type::Amount, 0,
         "SalesWCBalance14Percent SalesWCBalance24Percent SalesWCBalance1125Percent SalesWCBalance2125Percent "
         "SalesWCTax14Percent SalesWCTax24Percent SalesWCTax1125Percent SalesWCTax2125Percent "
         "SalesWCGrossValue1 SalesWCGrossValue2 SalesWCGrossValue3 "
         "SalesWCSubContractor1 SalesWCSubContractor2 SalesWCSubContractor3 "
         "SalesWCTaxCollected1 SalesWCTaxCollected2 SalesWCTaxCollected3 SalesWCAdhoc2 SalesWCSubBalance2 "
         "SalesWCLabour1 SalesWCPlanning1 SalesWCMachinery1 SalesWCConsumables1 SalesWCEstablishment1 "
         "SalesWCProfit1 SalesWCOther1"},
        {Type::Text, 150, "SalesWCDescription1 SalesWCDescription2 SalesWCDescription3"},
        // Purchases.
        {Type::Amount, 0,
         "PurchaseImports PurchaseOMS PurchaseConsignment PurchaseRD PurchaseMS PurchaseRDTax PurchaseURD "
         "GrossPurchaseFilling PurchaseTransit PurchaseUs3 PurchaseLabour GrossPurchase PurchaseRDSetoff"},
        // Set-off and payment.
        {Type::Amount, 0,
         "VATPlusExcess TaxableVAT SetoffClaimed VATMinusSetoff SetoffCF SetoffCFCST SetoffRefund SetoffBF "
         "SetoffOpeningStock PurchaseValueRM PurchaseValueET SetoffPrevAdjusted SetoffRestriction535 NetValue535 "
         "AdHocSetoff"},
        {Type::Integer, 0, "AdHocTypeID"},
        {Type::Amount, 0,
         "NetVAT TDS VATPaidEarlier VATWithReturn RetailerTax TotalVAT TotalCST TotalVATComposition "
         "SetoffETPayable SetoffETPayableWC VATPlusExcessWC VATInterestAmount VATInterestAmountA "
         "VATInterestAmountB VATBalforReturn"},
        // Central sales tax.
        {Type::Amount, 0,
         "CSTPlusExcess TaxableCST TaxIntCST CSTBalforReturn CSTPaidEarlier CSTWithReturn CSTPenalty "
         "CSTInterestAmount CSTInterestAmountA CSTInterestAmountB SalesOMSExport SalesOMSFreight SalesOMSHighSea "
         "SalesOMSInterState SalesOMSScheduleA SalesOMSTransit SAlesOMSFormH SalesUS82 SalesUS83 "
         "SalesUs81TaxCollected"},
        // Package scheme of incentives.
        {Type::Text, 20, "EODType"},
        {Type::Flag, 0, "EOD31"},
        {Type::Text, 40, "ECNo"},
        {Type::Amount, 0,
         "RMSetoff RMSetoffPV RMSetoffPVTAXPURPOSE ORMSetoffPVTaxPurpose ORMSetoff ORMSetoffPV OTHSetoff "
         "OTHSetoffPV SetoffRefundRM VATDeferred TotalCeilingBST TotalCeilingCST TotalCeilingAmount "
         "TotalOpeningCeiling TotalClosingCeiling"}}},
      {"CDetail",
       "",
       {"CMasterID"},
       {{Type::Key, 0, "CMasterID"},
        {Type::Text, 20, "EntryType SubEntryType"},
        {Type::Rate, 0, "VATPercentage CSTPercentage"},
        {Type::Amount, 0,
         "NetSalesAmount GrossSalesAmount NetPurchaseAmount VATTaxAmount CSTTaxAmount PurchaseEc Setoff "
         "Restriction531 Restriction532A Restriction532B Restriction533 PVForRestriction532A "
         "PVForRestriction532B PVForRestriction533 Restriction534 TotalPV534 Restriction537"},
        {Type::Text, 40, "Particular"},
        {Type::Flag, 0, "Exempted"}}},
      {"CustomerEC",
       "CustomerECID",
       {"CustomerCode"},
       {{Type::Key, 0, "CustomerECID CustomerCode"},
        {Type::Date, 0, "FromDate toDate"},
        {Type::Text, 60, "Scheme"},
        {Type::Amount, 0, "TotalCeilingOrg TotalCeiling"},
        {Type::Text, 60, "EleigibilityCertificateNo"},
        {Type::Date, 0, "EleigibilityCertificateNoDAte"},
        {Type::Rate, 0, "EODPercentage"}}},
      {"CmasterEC", "CustomerECID, cmasterid", {"cmasterid"}, {{Type::Key, 0, "CustomerECID cmasterid"}}},
      {"FormIIIB",
       "CmasterID",
       {},
       {{Type::Key, 0, "CmasterID"},
        {Type::Amount, 0,
         "SalesUS81 SalesOMSReturned SalesOMSNet SalesOMSTaxCollected SalesUs81Tax SalesUs81Exempt "
         "NetExcessCSTCollected CSTCashPaid"},
        {Type::Integer, 0, "CFormUsed EIFormUsed EIIFormUsed FFormUsed"},
        {Type::Amount, 0, "CFormValue EIFormValue EIIFormValue FFormValue"},
        {Type::Date, 0, "ECNoDAte"},
        {Type::Text, 60, "EleigibilityCertificateNo"},
        {Type::Amount, 0, "TotalCeiling"}}},
  };
  return all;
}

Table expand(const Definition& definition) {
  Table table{definition.name, definition.key, definition.indexes, {}};
  for (const Group& group : definition.groups) {
    for (std::size_t at = 0; at < group.names.size();) {
      const std::size_t end = std::min(group.names.find(' ', at), group.names.size());
      table.columns.push_back({group.names.substr(at, end - at), group.type, group.size});
      at = end + 1;
    }
  }
  return table;
}

constexpr std::size_t kDialects = 3;

// What a type is called in SQLite, Transact-SQL and PostgreSQL; a text's size follows in brackets.
std::string_view type_name(Type type, Dialect dialect) {
  struct Names {
    Type type;
    std::array<std::string_view, kDialects> names;
  };
  static constexpr Names kNames[] = {
      {Type::Key, {"INTEGER NOT NULL", "INT NOT NULL", "INTEGER NOT NULL"}},
      {Type::Integer, {"INTEGER", "INT", "INTEGER"}},
      {Type::Amount, {"DECIMAL(18,2)", "DECIMAL(18,2)", "NUMERIC(18,2)"}},
      {Type::Rate, {"DECIMAL(9,4)", "DECIMAL(9,4)", "NUMERIC(9,4)"}},
      {Type::Date, {"DATE", "DATETIME", "DATE"}},
      {Type::Flag, {"BIT", "BIT", "BOOLEAN"}},
      {Type::Text, {"VARCHAR", "NVARCHAR", "VARCHAR"}},
  };
  const auto* row = std::find_if(std::begin(kNames), std::end(kNames), [&](const Names& n) { return n.type == type; });
  return row->names[static_cast<std::size_t>(dialect)];
}

std::string column_text(const Column& column, Dialect dialect) {
  std::string text = "  " + std::string(column.name) + " " + std::string(type_name(column.type, dialect));
  if (column.type == Type::Text) text += "(" + std::to_string(column.size) + ")";
  return text;
}

std::string create_table(const Table& table, Dialect dialect) {
  const std::string schema = dialect == Dialect::Sqlite ? "" : "dbo.";
  const std::string name(table.name);
  std::string text = "CREATE TABLE " + schema + name + " (\n";
  for (const Column& column : table.columns) {
    text += column_text(column, dialect);
    if (&column != &table.columns.back() || !table.key.empty()) text += ",";
    text += "\n";
  }
  if (!table.key.empty()) text += "  PRIMARY KEY (" + std::string(table.key) + ")\n";
  text += ");\n";
  for (std::size_t i = 0; i < table.indexes.size(); ++i) {
    text += "CREATE INDEX ix_" + name + "_" + std::to_string(i + 1) + " ON " + schema + name + " (" +
            std::string(table.indexes[i]) + ");\n";
  }
  return text;
}

}  // namespace

std::span<const Table> tables() {
  static const std::vector<Table> all = [] {
    std::vector<Table> expanded;
    for (const Definition& definition : definitions()) expanded.push_back(expand(definition));
    return expanded;
  }();
  return all;
}

const Table* find_table(std::string_view name) {
  for (const Table& table : tables()) {
    if (value::same_name(table.name, name)) return &table;
  }
  return nullptr;
}

std::string ddl(Dialect dialect) {
  std::string text = dialect == Dialect::PostgreSql ? "CREATE SCHEMA IF NOT EXISTS dbo;\n" : "";
  for (const Table& table : tables()) text += create_table(table, dialect);
  return text;
}

}  // namespace dorvo::practice
