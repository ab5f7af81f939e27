// From the SQL of the practice's server, in which the report texts are written, to the SQL of other databases.
//
// Works on tokens; texts in quotes are never touched. What is handled is what the reports and the texts of their hosts
// use: the schema `dbo`, `+` that joins texts, CONVERT(varchar, d, 103), N'...', an ORDER BY column qualified by a
// table though only the select list has it, the place of NULLs in an order, and a number that a word follows at once.
#pragma once

#include <string>
#include <string_view>

#include "data/driver.h"

namespace dorvo::data {

// `select` has passed check_one_select(). For TransactSql it comes back as it went in.
std::string translate(std::string_view select, Dialect dialect);

}  // namespace dorvo::data
