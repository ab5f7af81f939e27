#include "data/connection_text.h"
#include "data/driver.h"

namespace dorvo::data {

std::unique_ptr<Session> open_odbc(const ConnectionText&) {
  throw value::Failure(value::Error::CannotConnect, "Cannot connect: this build reads SQLite databases only");
}

}  // namespace dorvo::data
