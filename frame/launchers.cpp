#include "frame/launchers.h"

#include "value/text.h"

namespace dorvo::frame {
namespace {

using enum Argument;
using enum Effect;
using S = Settings;

// ---- members ----

constexpr Member kLaunch[] = {{1, "SHowForm", Variant, Launch}};

constexpr Member kShowPageSetup{2, "ShowPageSetup", Boolean, Option, &S::ShowPageSetup};
constexpr Member kBlankForm{3, "BlankForm", Boolean, Option, &S::BlankForm};
constexpr Member kPreprinted{4, "preprinted", Boolean, Option, &S::preprinted};
constexpr Member kShowFilingDate{5, "ShowFilingDate", Boolean, Option, &S::ShowFilingDate};
constexpr Member kShowCity{6, "ShowCity", Boolean, Option, &S::ShowCity};

constexpr Member kFive[] = {kShowPageSetup, kBlankForm, kPreprinted, kShowFilingDate, kShowCity};
constexpr Member kThree[] = {kShowPageSetup, kBlankForm, kPreprinted};
constexpr Member kDateAndCity[] = {kShowFilingDate, kShowCity};
constexpr Member kPageSetup[] = {kShowPageSetup};
constexpr Member kOneThirty[] = {{7, "onethirty", Boolean, Option, &S::onethirty}};
constexpr Member kOne[] = {{8, "one", Boolean, Option, &S::one}};
constexpr Member kConnection[] = {{9, "ConnectionString", VariantText, Setting, nullptr, &S::ConnectionString}};

constexpr Member kKey[] = {{10, "PropCMasterID", Long, Key}};
constexpr Member kLateKey[] = {{10, "PropCMasterID", Long, LateKey}};
constexpr Member kBillIDs[] = {{11, "PropBillMasterIDs", Text, Data}};
constexpr Member kReceiptIDs[] = {{12, "PropReceiptMasterIDs", Text, Data}};
constexpr Member kSortBy[] = {{13, "PropSortBy", Text, Data}};
constexpr Member kCustomerIDs[] = {{14, "PropCustomerIDList", Text, Data}};
constexpr Member kFilling[] = {{15, "PropmCFillingTYpe", Text, Data}};
constexpr Member kCustomerName[] = {{16, "PropCustomerName", Text, Data}};
constexpr Member kYear[] = {{17, "PropYearID", Text, Data}};
constexpr Member kLabelFlags[] = {{18, "ShowBorder", VariantBoolean, Data},
                                  {19, "ShowFileNo", VariantBoolean, Data},
                                  {20, "ShowGroupName", VariantBoolean, Data}};
constexpr Member kHeading[] = {{21, "PropHeading", Text, Heading}};
constexpr Member kYrid[] = {{22, "yrid", Variant, Own}, {23, "Prop_yrid", Variant, OwnAlias}};

// For the report of the two classes that open nothing, when it is opened without a launcher.
constexpr Member kInterest[] = {
    {24, "PropCustomerCode", Long, Data}, {25, "PropStatementTYpe", Text, Data}, {26, "PropInterestTYpe", Text, Data}};

constexpr Member kGeneral[] = {{9, "ConnectionString", Text, Setting, nullptr, &S::ConnectionString},
                               {27, "PrintQuality", Boolean, Exact, &S::PrintQuality},
                               {28, "myConn", Object, Connection},
                               kShowFilingDate,
                               kShowCity,
                               {29, "ShowFooter", Boolean, Exact, &S::ShowFooter},
                               {30, "UserName", Text, Setting, nullptr, &S::UserName},
                               {31, "AppPath", Text, Setting, nullptr, &S::AppPath}};

// These two classes accept everything and keep nothing.
constexpr Member kInertMaster[] = {{17, "PropYearID", Long, Nothing},
                                   {24, "PropCustomerCode", Long, Nothing},
                                   {25, "PropStatementTYpe", Text, Nothing},
                                   {26, "PropInterestTYpe", Text, Nothing},
                                   {2, "ShowPageSetup", Boolean, Nothing}};
constexpr Member kInertMasterVat[] = {
    {10, "PropCMasterID", Long, Nothing},     {17, "PropYearID", Long, Nothing},
    {24, "PropCustomerCode", Long, Nothing},  {15, "PropmCFillingTYpe", Text, Nothing},
    {25, "PropStatementTYpe", Text, Nothing}, {2, "ShowPageSetup", Boolean, Nothing}};

// ---- classes ----

const std::vector<LauncherClass>& table() {
  // clang-format off
  static const std::vector<LauncherClass> classes = {
    {1,  "generalPrintClass", "", "", {kGeneral}},

    {2,  "clsForm201", "Form201", "Form201132", {kKey, kFive, kOneThirty, kLaunch}},
    {3,  "clsForm202", "Form202", "Form202132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {4,  "clsForm203", "Form203", "Form203132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {5,  "clsForm204", "Form204", "Form204132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {6,  "clsForm205", "Form205", "Form205132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {7,  "clsForm206", "Form206", "Form206132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {8,  "clsForm207", "Form207", "Form207132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {9,  "clsForm214", "Form214", "Form214132", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {10, "clsForm208", "Form208", "", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {11, "clsForm209", "Form209", "", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {12, "clsForm209E", "Form209E", "", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {13, "clsForm210", "Form210", "", {kKey, kConnection, kFive, kOneThirty, kLaunch}},
    {14, "clsCSTReturnIIIB", "CSTReturnIIIB", "CSTReturnIIIB132",
         {kKey, kPageSetup, kDateAndCity, kOneThirty, kLaunch}},

    {15, "clsForm1", "Form1", "", {kKey, kConnection, kFive, kLaunch}},
    {16, "clsForm2", "Form2", "", {kKey, kFive, kLaunch}},
    {17, "clsForm3", "Form3", "", {kKey, kFive, kLaunch}},
    {18, "clsForm4", "Form4", "", {kKey, kFive, kLaunch}},
    {19, "clsForm5", "Form5", "", {kKey, kFive, kLaunch}},

    {20, "clsFormVIII", "FormVIII", "", {kKey, kYrid, kConnection, kFive, kLaunch}},
    {21, "clsPTRFormIII", "PTRFormIIInew", "", {kLateKey, kConnection, kFive, kOneThirty, kLaunch}},

    {22, "clsBill", "Bill", "", {kBillIDs, kSortBy, kKey, kThree, kOne, kLaunch}},
    {23, "clsReceipt", "Receipt", "", {kReceiptIDs, kSortBy, kKey, kThree, kLaunch}},
    {24, "clsBillRegister", "BillRegister", "", {kKey, kBillIDs, kSortBy, kHeading, kThree, kLaunch}},
    {25, "clsReceiptRegiser", "ReceiptRegister", "", {kHeading, kReceiptIDs, kSortBy, kKey, kThree, kLaunch}},
    {26, "clsSumBill", "SummerisedBill", "", {kKey, kThree, kLaunch}},
    {27, "clsDealerBill", "DealerBill", "", {kKey, kBillIDs, kSortBy, kHeading, kThree, kLaunch}},
    {28, "clsDealerReceipt", "DealerReceipt", "", {kReceiptIDs, kSortBy, kKey, kHeading, kThree, kLaunch}},

    {29, "clscompositionst", "CompositionStatement", "", {kKey, kFilling, kPageSetup, kLaunch}},
    {30, "clsStatmentShort", "StatementShort", "", {kKey, kFilling, kPageSetup, kLaunch}},
    {31, "clsLiability0910", "Liability0910", "", {kCustomerName, kYear, kLaunch}},
    {32, "clsdealerlist", "DealerList", "", {kLaunch}},
    {33, "clsAddressLabel", "AddressLabel", "", {kCustomerIDs, kLabelFlags, kConnection, kLaunch}},

    {34, "clsInterestMaster", "", "", {kInertMaster, kLaunch}},
    {35, "clsInterestMasterVat", "", "", {kInertMasterVat, kLaunch}},
  };
  // clang-format on
  return classes;
}

template <class Is>
const Member* find_member(const LauncherClass& row, Is is) {
  for (const auto& group : row.members) {
    for (const Member& member : group) {
      if (is(member)) return &member;
    }
  }
  return nullptr;
}

}  // namespace

const Member* LauncherClass::find(std::string_view member) const {
  return find_member(*this, [&](const Member& m) { return value::same_name(m.name, member); });
}

const Member* LauncherClass::find(int id) const {
  return find_member(*this, [&](const Member& m) { return m.id == id; });
}

const std::vector<LauncherClass>& launcher_classes() {
  return table();
}

const LauncherClass* find_launcher_class(std::string_view name) {
  for (const LauncherClass& row : table()) {
    if (value::same_name(row.name, name)) return &row;
  }
  return nullptr;
}

LauncherClass direct_launcher(std::string_view report) {
  return {0,
          report,
          report,
          "",
          {kKey, kConnection, kFive, kOneThirty, kBillIDs, kReceiptIDs, kSortBy, kCustomerIDs, kFilling, kCustomerName,
           kYear, kLabelFlags, kHeading, kInterest, kLaunch}};
}

}  // namespace dorvo::frame
