// Connection texts of any bytes: parsed, or refused by a failure that quotes no value.
#include "data/connection_text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "value/failure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using dorvo::data::ConnectionText;
  try {
    const ConnectionText text = ConnectionText::parse({reinterpret_cast<const char*>(data), size});
    const std::string password = text.password();
    if (password.size() > 3 && dorvo::data::without_password("x" + password + "y", password).find(password) == 1)
      abort();
  } catch (const dorvo::value::Failure& failure) {
    if (failure.number() != dorvo::value::Error::BadConnectionText) abort();
    if (failure.description().find("geheim") != std::string::npos) abort();
  }
  return 0;
}
