// What a host hands in, as the type that a member takes.
#pragma once

#include <cstdint>

#include "value/variant.h"

namespace dorvo::frame {

// Any number but 0 is True; text is "True" or "False" in any capitals, or a number. Fails with TypeMismatch on other
// text and with InvalidUseOfNull on NULL.
bool boolean_of(const value::Variant& value);

// True only for the Boolean True (as a number -1): a 1 is true in the ordinary sense and not this. Fails alike.
bool exactly_true(const value::Variant& value);

// A whole number of 32 bits; fractions are rounded, halves to the even neighbour. Fails with Overflow beside.
std::int32_t long_of(const value::Variant& value);

// Text as a box has it; NULL fails with InvalidUseOfNull.
std::string strict_text_of(const value::Variant& value);

}  // namespace dorvo::frame
