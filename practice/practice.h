// A sample practice: believable invented dealers of Maharashtra with several years of returns, in an embedded
// (SQLite) database of the tables that a host application keeps.
//
// Nothing in it is real. The same options give the same bytes: no clock, no locale, no machine name.
// The first dealers and returns are described cases, one for each state that the forms tell apart; they have the
// same keys whatever the options are. practice/README.md lists them.
#pragma once

#include <cstdint>
#include <string>

namespace dorvo::practice {

struct Options {
  int dealers = 12;        // invented dealers besides the described ones
  int years = 2;           // accounting years from 2005-2006 on; the described cases always have their two
  std::uint64_t seed = 1;  // of the invented names and figures; the described cases do not depend on it
};

// Writes the practice to `file`, which appears whole or not at all. An earlier sample there is replaced, no other file.
// Failure: CannotWrite with the file and the reason; Overflow for options out of their range.
void write_practice(const std::string& file, const Options& options);

// What each described dealer (CustomerID) and return (CMasterID) stands for, one line each.
std::string described_cases();

}  // namespace dorvo::practice
