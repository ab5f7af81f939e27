#include "returns/queries.h"

namespace dorvo::returns {

std::string return_query(std::int32_t key, WithBank bank) {
  const bool named = bank == WithBank::Yes;
  std::string query =
      "SELECT Customer.*, signature.Signature , Constitution.Constitution , CMaster.*, STO.ChargeNo, "
      "YearMaster.YearFrom , YearMaster.YearTo ";
  if (named) query += ", dbo.BAnk.BankName+'   ' + Branch as BankName ";
  query +=
      " FROM dbo.CMaster INNER JOIN dbo.Customer ON dbo.CMaster.CustomerCode = dbo.Customer.CustomerCode AND "
      "dbo.CMaster.YearID = dbo.Customer.YearID INNER JOIN dbo.YearMaster ON dbo.CMaster.YearID = "
      "dbo.YearMaster.YearID LEFT OUTER JOIN";
  if (named)
    query +=
        " dbo.BAnk ON dbo.CMaster.VATBankID = dbo.BAnk.ID AND dbo.CMaster.YearID = dbo.BAnk.YearID AND "
        "dbo.CMaster.CustomerCode = dbo.BAnk.CustomerCode LEFT OUTER Join";
  query +=
      " dbo.Constitution ON dbo.Customer.ConstitutionID = dbo.Constitution.ConstitutionID LEFT Outer Join "
      "dbo.signature ON dbo.Customer.SignatureID = dbo.signature.SignatureID  LEFT Outer Join dbo.STO ON "
      "dbo.Customer.STOID = dbo.STO.STOID where cmaster.cmasterid=";
  return query + std::to_string(key);
}

}  // namespace dorvo::returns
