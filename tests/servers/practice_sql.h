// The sample practice as SQL for a server.
#pragma once

#include <string>

namespace dorvo::data {

// The tables in PostgreSQL's dialect and every row of the practice in an embedded database file, as one script.
std::string postgres_script(const std::string& practice_file);

}  // namespace dorvo::data
