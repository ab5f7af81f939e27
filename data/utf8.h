// Text of a database as UTF-8, whatever bytes it delivered.
#pragma once

#include <string>
#include <string_view>

namespace dorvo::data {

// Appends `text` to `out`; bytes that are no UTF-8 become U+FFFD, so that nobody behind this meets broken text.
void append_utf8(std::string& out, std::string_view text);

// Appends UTF-16 code units; a surrogate without its partner becomes U+FFFD.
void append_utf8(std::string& out, std::u16string_view text);

std::u16string utf16_of(std::string_view utf8);

}  // namespace dorvo::data
