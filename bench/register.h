// A synthetic register of nine columns: its table in an embedded database, its layout and its report.
#pragma once

#include <memory>
#include <string>

#include "engine/active_report.h"

namespace dorvo::bench {

// Makes a database file with the table "Register" of so many rows.
void make_register(const std::string& file, int rows);

inline constexpr const char* kRegisterQuery =
    "SELECT No, ReturnDate, Dealer, Tin, Sales, Tax, Paid, Due, Bank FROM Register ORDER BY No";

// A report over all rows of that table in the order of their keys.
std::unique_ptr<engine::ActiveReport> register_report(const std::string& connection_text);

}  // namespace dorvo::bench
