// Bytes packed as PDF's FlateDecode reads them (zlib's wrapping). The same bytes give the same result. One thread.
#pragma once

#include <string>
#include <string_view>

namespace dorvo::export_ {

std::string deflated(std::string_view bytes);

}  // namespace dorvo::export_
