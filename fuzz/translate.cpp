// Query texts of any bytes: the tokens joined are the text, and what passes the guard is still one SELECT after
// translation.
#include "data/translate.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "data/sql_text.h"
#include "value/failure.h"

namespace {

bool passes(std::string_view text) {
  try {
    dorvo::data::check_one_select(text);
    return true;
  } catch (const dorvo::value::Failure&) {
    return false;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using dorvo::data::Dialect;
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::string joined;
  for (const auto& token : dorvo::data::sql_tokens(text)) {
    if (token.text.empty()) abort();
    joined += token.text;
  }
  if (joined != text) abort();
  if (!passes(text)) return 0;
  for (const Dialect dialect : {Dialect::TransactSql, Dialect::Sqlite, Dialect::PostgreSql}) {
    if (!passes(dorvo::data::translate(text, dialect))) abort();
  }
  return 0;
}
