// Bytes packed as PDF's FlateDecode and PNG read them (zlib's wrapping). The same bytes give the same result. One
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace dorvo::export_ {

std::string deflated(std::string_view bytes);

// The checksum of PNG and zip files.
std::uint32_t checksum(std::string_view bytes);

}  // namespace dorvo::export_
