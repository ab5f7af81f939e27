// The queries that the VAT returns share. Each ends where the key of the return is joined on in decimal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dorvo::returns {

enum class WithBank { No, Yes };

// The main query: one row of a return with its dealer, office and bank. Returns that name no bank leave it out.
std::string return_query(std::int32_t key, WithBank bank = WithBank::Yes);

// Lines of the return, opened on `myConn`. None is sorted: only the rule 53(7) value depends on the order of lines.
inline constexpr std::string_view kSalesLines =
    "select * from cdetail where (entrytype='SALESTAXABLE' or entrytype='SALESMS' or entrytype='SALESEC') and "
    "cmasterid=";
inline constexpr std::string_view kEligiblePurchaseLines =
    "select * from cdetail where (entrytype='PURCHASERD' or EntryType='PURCHASERDEC' or entrytype='PURCHASEMS') and "
    "setoff=vattaxamount and vattaxamount<>0 and cmasterid=";
inline constexpr std::string_view kCertificateSalesLines =
    "select * from CDetail where EntryType='SALESEC' and cmasterid=";
inline constexpr std::string_view kReductionLines =
    "select * from CDetail where (EntryType='PURCHASERD' or EntryType='PURCHASERDEC') and cmasterid=";

}  // namespace dorvo::returns
