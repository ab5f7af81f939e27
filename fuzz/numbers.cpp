// Any text as a number and as a date: no crash, and what is read and written is read again as the same.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "value/failure.h"
#include "value/text.h"

using namespace dorvo::value;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

// Fifteen digits are written, so a number is read back to that precision.
void round_trip(double number) {
  if (!std::isfinite(number)) return;
  const double again = Val(number_text(number));
  require(std::abs(again - number) <= std::abs(number) * 1e-14);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    round_trip(Val(text));
    require(strict_number(text) == Val(text));
  } catch (const Failure&) {
  }
  try {
    const Date date = parse_date(text);
    require(parse_date(date_text(date)) == Date{date.year, date.month, date.day, 0});
  } catch (const Failure&) {
  }
  return 0;
}
