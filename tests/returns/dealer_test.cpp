// Who files, for which period and how: everything on the forms that is no figure.
#include <gtest/gtest.h>

#include <functional>

#include "filing.h"
#include "frame/settings.h"

namespace dorvo::returns {
namespace {

using value::Date;
using value::Null;

constexpr Date kLastBeforeTin = {2006, 3, 31, 0};
constexpr Date kFirstWithTin = {2006, 4, 1, 0};

struct Case {
  const char* what;
  std::function<void(Filing&)> enter;
  std::vector<std::pair<const char*, const char*>> boxes;
};

void expect(const std::vector<Case>& cases, const std::vector<std::string>& forms) {
  for (const Case& each : cases) {
    Filing filing;
    each.enter(filing);
    filing.open();
    for (const std::string& form : forms) {
      const auto report = print(form);
      for (const auto& [box, text] : each.boxes)
        EXPECT_EQ(seen(*report, box), text) << each.what << ", " << form << ", " << box;
    }
  }
}

void numbers(Filing& f) {
  f.dealer("VATNo", "27123456789V").dealer("BSTNo", "400012S1234").dealer("CSTNo", "400012C56");
}

TEST(Dealer, Numbers) {
  const FreshSettings fresh;
  expect({{"the new number hides the old one",
           [](Filing& f) { numbers(f); },
           {{"txtVATNo", "271234-5-6789V"},
            {"txtVATNo1", "271234-5-6789V"},
            {"txtVATNo2", "271234-5-6789V"},
            {"txtBSTNo", kHidden},
            {"txtBSTNo1", kHidden},
            {"txtBSTNo2", kHidden},
            {"txtCSTNo", "400012-C-56"},
            {"txtCSTNo1", "400012-C-56"},
            {"txtCSTNo2", "400012-C-56"}}},
          {"the old number alone",
           [](Filing& f) { f.dealer("BSTNo", "400012S1234"); },
           {{"txtBSTNo", "400012-S-1234"}, {"txtBSTNo2", "400012-S-1234"}, {"txtVATNo", ""}, {"txtCSTNo", ""}}},
          {"NULL numbers",
           [](Filing& f) { f.dealer("VATNo", Null{}).dealer("BSTNo", Null{}).dealer("TinVAT", Null{}); },
           {{"txtBSTNo", ""}, {"txtVATNo", ""}}},
          {"TINs do not count before 1 April 2006",
           [](Filing& f) {
             numbers(f);
             f.dealer("TinVAT", "27550000001V").dealer("TinCST", "27550000001C").period(kLastBeforeTin, kLastBeforeTin);
           },
           {{"txtVATNo", "271234-5-6789V"}, {"txtBSTNo", kHidden}, {"txtCSTNo", "400012-C-56"}}},
          {"TINs as they are stored, in all copies, from that day on",
           [](Filing& f) {
             numbers(f);
             f.dealer("TinVAT", "27550000001V").dealer("TinCST", "27550000001C").period(kFirstWithTin, kFirstWithTin);
           },
           {{"txtBSTNo", "27550000001V"},
            {"txtBSTNo1", "27550000001V"},
            {"txtBSTNo2", "27550000001V"},
            {"txtVATNo", kHidden},
            {"txtVATNo1", kHidden},
            {"txtVATNo2", kHidden},
            {"txtCSTNo", "27550000001C"},
            {"txtCSTNo1", "27550000001C"},
            {"txtCSTNo2", "27550000001C"}}},
          {"a TIN under the Central Act only",
           [](Filing& f) {
             f.dealer("BSTNo", "400012S1234").dealer("CSTNo", "x").dealer("TinCST", "27550000001C");
             f.period(kFirstWithTin, kFirstWithTin);
           },
           {{"txtBSTNo", "400012-S-1234"}, {"txtVATNo", ""}, {"txtCSTNo", "27550000001C"}}}},
         six_forms());
}

TEST(Dealer, NameAndAddress) {
  const FreshSettings fresh;
  const auto address = [](const char* what, std::vector<std::pair<const char*, value::Variant>> items,
                          const char* block) {
    return Case{what,
                [items](Filing& f) {
                  for (const auto& [column, held] : items) f.dealer(column, held);
                },
                {{"txtName", block}, {"txtName1", block}, {"txtName2", block}}};
  };
  expect({address("all of it",
                  {{"Address", "12, Fort"},
                   {"Address1", "Near Gate"},
                   {"Taluka", "Haveli"},
                   {"City", "Pune"},
                   {"District", "Pune"},
                   {"State", "Maharashtra"},
                   {"PinCode", "411001"}},
                  "ABC Traders\r\n12, Fort\r\nNear Gate\r\nHaveli,Pune,Pune,Maharashtra.\r\nPinCode - 411001"),
          address("no place", {{"Address", "12, Fort"}, {"Address1", Null{}}}, "ABC Traders\r\n12, Fort\r\n"),
          address("a PIN behind the district's comma", {{"District", "Pune"}, {"State", ""}, {"PinCode", "411001"}},
                  "ABC Traders\r\nPune,PinCode - 411001"),
          address("no name", {{"Name", Null{}}, {"City", "Pune"}}, "\r\nPune,")},
         {"Form201", "Form202132"});
}

TEST(Dealer, SignatureFileNumberAndNote) {
  const FreshSettings fresh;
  expect({{"as stored",
           [](Filing& f) {
             f.dealer("SignatureName", "A. B. Joshi").dealer("FileNo", "F-9").set("FormNote", "Nil stock");
           },
           {{"txtName4", "For  ABC Traders"},
            {"txtSignatureName", "A. B. Joshi"},
            {"txtSignature1", "Designation Proprietor"},
            {"txtFileNo", "F-9"},
            {"lblFileNo", "File No."},
            {"lblNote", "Note"},
            {"formNote", "Nil stock"},
            {"txtChargeNo1", "C-101"},
            {"txtChargeNo2", "C-101"}}},
          {"nothing to show",
           [](Filing& f) { f.dealer("SignatureID", 2).dealer("FileNo", Null{}).dealer("STOID", Null{}); },
           {{"txtSignature1", ""}, {"lblFileNo", kHidden}, {"lblNote", kHidden}, {"txtChargeNo1", ""}}},
          {"a NULL note", [](Filing& f) { f.set("FormNote", Null{}); }, {{"lblNote", kHidden}, {"formNote", ""}}}},
         six_forms());
}

TEST(Return, Kind) {
  const FreshSettings fresh;
  const auto kind = [](value::Variant type, const char* seen) {
    return Case{
        "kind", [type](Filing& f) { f.set("ReturnType", type); }, {{"txtreturntype", seen}, {"txtreturntype1", seen}}};
  };
  expect({kind("Original", kHidden), kind("Revised", "Revised"), kind("Fresh", "Fresh"), kind("revised", ""),
          kind(Null{}, "")},
         six_forms());
}

// Two forms never had their bank and cheque boxes of Part-I bound, and print the words of their layout.
TEST(Return, BankAndCheque) {
  const FreshSettings fresh;
  const auto paid = [](Filing& f) { f.set({{"VATBankID", 1}, {"VATChequeNo", "123456"}}); };
  expect({{"chalans",
           paid,
           {{"txtBankName1", "Dena Bank   Fort"},
            {"txtBankName2", "Dena Bank   Fort"},
            {"txtVATChequeNo1", "Ch.No.-123456"},
            {"txtVATChequeNo2", "Ch.No.-123456"}}},
          {"neither",
           [](Filing&) {},
           {{"txtBankName", ""}, {"txtBankName1", ""}, {"txtVATChequeNo", ""}, {"txtVATChequeNo2", ""}}}},
         six_forms());
  expect({{"Part-I, unbound", paid, {{"txtBankName", "BankName"}, {"txtVATChequeNo", "Ch.No.-VATChequeNo"}}}},
         {"Form201", "Form202"});
  expect({{"Part-I, bound", paid, {{"txtBankName", "Dena Bank   Fort"}, {"txtVATChequeNo", "Ch.No.-123456"}}}},
         {"Form203", "Form201132", "Form202132", "Form203132"});
}

TEST(Return, PeriodsOfTheCopies) {
  const FreshSettings fresh;
  const char* from = "01/04/2005";
  const char* to = "30/04/2005";
  const auto enter = [](Filing&) {};
  expect({{"monthly",
           enter,
           {{"txtFromDate", from},
            {"txtToDate", to},
            {"Field6", from},
            {"Field7", to},
            {"Field8", from},
            {"Field9", to},
            {"ChargeNo", "C-101"}}}},
         {"Form201"});
  expect({{"quarterly",
           enter,
           {{"Field6", from}, {"Field7", to}, {"Field8", from}, {"Field9", to}, {"txtChargeNo", "C-101"}}}},
         {"Form202"});
  expect({{"six-monthly",
           enter,
           {{"Field6", from}, {"Field7", to}, {"Field9", from}, {"Field8", to}, {"txtChargeNo", "C-101"}}}},
         {"Form203"});
  expect({{"twins", enter, {{"Field7", from}, {"Field8", to}, {"Field9", from}, {"Field10", to}}}},
         {"Form201132", "Form202132", "Form203132"});
}

struct Options {
  bool blank, date, city;
  const char* seen_date;
  const char* seen_city;
};

TEST(Return, FilingDateAndPlace) {
  const FreshSettings fresh;
  Filing filing;
  filing.dealer("City", "Pune").set("FillingDateVAT", Date{2005, 5, 20, 0}).open();
  const Options cases[] = {
      {false, false, false, kHidden, kHidden}, {false, true, false, "20/05/2005", kHidden},
      {false, false, true, kHidden, "Pune"},   {false, true, true, "20/05/2005", "Pune"},
      {true, true, true, kHidden, kHidden},
  };
  for (const Options& each : cases) {
    frame::basMain().BlankForm = each.blank;
    frame::basMain().ShowFilingDate = each.date;
    frame::basMain().ShowCity = each.city;
    for (const std::string& form : six_forms()) {
      const auto report = print(form);
      for (const auto* box : {"txtFillingDateVAT", "txtFillingDate1", "txtFillingDate2"})
        EXPECT_EQ(seen(*report, box), each.seen_date) << form << ", " << box;
      for (const auto* box : {"txtCity", "txtCity1", "txtCity2"})
        EXPECT_EQ(seen(*report, box), each.seen_city) << form << ", " << box;
    }
  }
}

}  // namespace
}  // namespace dorvo::returns
