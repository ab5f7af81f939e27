// Who files, for which period and how: everything on the forms that is no figure.
#include <gtest/gtest.h>

#include "filing.h"
#include "frame/settings.h"

namespace dorvo::returns {
namespace {

TEST(Dealer, Numbers) {
  const std::string numbers = "VATNo=27123456789V; BSTNo=400012S1234; CSTNo=400012C56; ";
  const std::string tins = "TinVAT=27550000001V; TinCST=27550000001C; ";
  expect({
      {"the new number hides the old one", numbers,
       "txtVATNo=271234-5-6789V; txtVATNo1=271234-5-6789V; txtVATNo2=271234-5-6789V; txtBSTNo=(hidden); "
       "txtBSTNo1=(hidden); txtBSTNo2=(hidden); txtCSTNo=400012-C-56; txtCSTNo1=400012-C-56; txtCSTNo2=400012-C-56"},
      {"the old number alone", "BSTNo=400012S1234; VATNo=NULL",
       "txtBSTNo=400012-S-1234; txtBSTNo2=400012-S-1234; txtVATNo=; txtCSTNo="},
      {"TINs do not count before 1 April 2006", numbers + tins + "FromDate=2006-03-31",
       "txtVATNo=271234-5-6789V; txtBSTNo=(hidden); txtCSTNo=400012-C-56"},
      {"TINs as they are stored, in all copies, from that day on", numbers + tins + "FromDate=2006-04-01",
       "txtBSTNo=27550000001V; txtBSTNo1=27550000001V; txtBSTNo2=27550000001V; txtVATNo=(hidden); "
       "txtVATNo1=(hidden); txtVATNo2=(hidden); txtCSTNo=27550000001C; txtCSTNo1=27550000001C; "
       "txtCSTNo2=27550000001C"},
      {"a TIN under the Central Act only", "BSTNo=400012S1234; CSTNo=x; TinCST=27550000001C; FromDate=2006-04-01",
       "txtBSTNo=400012-S-1234; txtVATNo=; txtCSTNo=27550000001C"},
  });
}

TEST(Dealer, NameAndAddress) {
  expect({
      {"all of it",
       "Address=12, Fort; Address1=Near Gate; Taluka=Haveli; City=Pune; District=Poona; State=Maharashtra; "
       "PinCode=411001",
       "txtName2=ABC Traders\r\n12, Fort\r\nNear Gate\r\nHaveli,Pune,Poona,Maharashtra.\r\nPinCode - 411001"},
      {"no place", "Address=12, Fort; Address1=NULL", "txtName=ABC Traders\r\n12, Fort\r\n"},
      {"a PIN behind the district's comma", "District=Pune; PinCode=411001",
       "txtName1=ABC Traders\r\nPune,PinCode - 411001"},
      {"no name", "Name=NULL; City=Pune", "txtName=\r\nPune,"},
  });
}

TEST(Dealer, SignatureFileNumberAndNote) {
  expect({
      {"as stored", "SignatureName=A. B. Joshi; FileNo=F-9; FormNote=Nil stock",
       "txtName4=For  ABC Traders; txtSignatureName=A. B. Joshi; txtSignature1=Designation Proprietor; txtFileNo=F-9; "
       "lblFileNo=File No.; lblNote=Note; formNote=Nil stock; txtChargeNo1=C-101; txtChargeNo2=C-101"},
      {"nothing to show", "SignatureID=2; FileNo=NULL; STOID=NULL; FormNote=NULL",
       "txtSignature1=; lblFileNo=(hidden); lblNote=(hidden); formNote=; txtChargeNo1="},
      {"an empty note", "", "lblNote=(hidden)"},
  });
}

// Two forms never had their bank and cheque boxes of Part-I bound, and print the words of their layout.
TEST(Return, KindBankAndCheque) {
  const std::string paid = "VATBankID=1; VATChequeNo=AB1234";
  expect({
      {"original", "ReturnType=Original", "txtreturntype=(hidden); txtreturntype1=(hidden)"},
      {"revised", "ReturnType=Revised", "txtreturntype=Revised; txtreturntype1=Revised"},
      {"fresh", "ReturnType=Fresh", "txtreturntype=Fresh; txtreturntype1=Fresh"},
      {"exact in case", "ReturnType=revised", "txtreturntype=; txtreturntype1="},
      {"chalans", paid,
       "txtBankName1=Dena Bank   Fort; txtBankName2=Dena Bank   Fort; txtVATChequeNo1=Ch.No.-AB1234; "
       "txtVATChequeNo2=Ch.No.-AB1234"},
      {"neither", "", "txtBankName=; txtBankName1=; txtVATChequeNo=; txtVATChequeNo2="},
  });
  expect({{"Part-I, unbound", paid, "txtBankName=BankName; txtVATChequeNo=Ch.No.-VATChequeNo"}},
         {"Form201", "Form202"});
  expect({{"Part-I, bound", paid, "txtBankName=Dena Bank   Fort; txtVATChequeNo=Ch.No.-AB1234"}},
         {"Form203", "Form201132", "Form202132", "Form203132"});
}

struct Options {
  bool blank, date, city;
  const char* seen_date;
  const char* seen_city;
};

TEST(Return, FilingDateAndPlace) {
  const Filing filing("City=Pune; FillingDateVAT=2005-05-20");
  const Options cases[] = {
      {false, false, false, "(hidden)", "(hidden)"}, {false, true, false, "20/05/2005", "(hidden)"},
      {false, false, true, "(hidden)", "Pune"},      {false, true, true, "20/05/2005", "Pune"},
      {true, true, true, "(hidden)", "(hidden)"},
  };
  for (const Options& each : cases) {
    filing.open();
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
