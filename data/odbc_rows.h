// Reads the result of an ODBC statement whole.
//
// Columns of bounded width are bound to arrays and fetched in blocks. From the first column of unknown width on,
// columns are read piece by piece, row by row. Decimals travel as text, so that no digit is lost.
#pragma once

#include <memory>

#include "data/driver.h"
#include "data/odbc.h"
#include "data/table.h"

namespace dorvo::data {

// A call on the statement failed; problem_of(statement) tells why.
struct OdbcReadFailed {};

// `statement` has been executed. With `bind` false nothing is bound, however narrow it says it is. Throws
// OdbcReadFailed. Returns nothing when a bound value was wider than its column is declared: the statement must be
// executed again and read without binding.
std::unique_ptr<Table> read_rows(const OdbcHandle& statement, Dialect dialect, bool bind);

}  // namespace dorvo::data
