// Connection texts as ODBC takes them.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "data/connection_text.h"

namespace dorvo::data {

// The text for SQLDriverConnect. An ODBC style text comes back as it went in; an ADO style one is turned into that of
// the best driver among `installed` (names as ODBC lists them): Microsoft's newest for a SQL Server, else FreeTDS;
// PostgreSQL's Unicode driver, else its other one. Fails with CannotConnect when none of them is there.
std::string odbc_text(const ConnectionText& text, const std::vector<std::string>& installed);

// How long a login and a query may take. The text may say it ("Connect Timeout=5;General Timeout=120").
struct TimeLimits {
  std::chrono::seconds login{15};
  std::chrono::seconds query{60};
};
// Fails with BadConnectionText for a limit that is no whole number above 0.
TimeLimits time_limits(const ConnectionText& text);

}  // namespace dorvo::data
