// The sample practice, made once and opened for the reports as a host would.
#pragma once

#include <string>

#include "practice/practice.h"

namespace dorvo::bench {

// Sets ConnectionString and myConn of the shared settings; the file stands in the folder for temporary files.
void open_practice(const practice::Options& options);

}  // namespace dorvo::bench
