// Any text as a stored layout: it is read, or refused as a layout with the file's name in the message.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "engine/layout_reader.h"
#include "value/failure.h"

namespace {

// What a layout of the corpus may stand on, one step and itself again.
std::string base_of(std::string_view name) {
  if (name == "Small") {
    return R"(<Layout name="Small" version="1"><Section kind="Detail" name="Detail" height="600">
      <Field name="txtName" column="Name" left="0" top="0" width="2000" height="240"/></Section></Layout>)";
  }
  return R"(<Layout name="Ring" version="1" base="Ring"/>)";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view xml(reinterpret_cast<const char*>(data), size);
  try {
    dorvo::engine::read_layout(xml, "fuzz.xml", base_of);
  } catch (const dorvo::value::Failure& failure) {
    if (failure.number() != dorvo::value::Error::BadLayout) std::abort();
    if (failure.description().empty()) std::abort();
  }
  return 0;
}
