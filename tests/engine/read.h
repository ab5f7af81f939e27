// Layouts of the tests: XML text to a layout.
#pragma once

#include <map>
#include <string>

#include "engine/layout_reader.h"
#include "value/failure.h"

namespace dorvo::tests {

// Bases by name.
using Bases = std::map<std::string, std::string, std::less<>>;

inline engine::LayoutPtr read(const std::string& xml, const Bases& bases = {}) {
  return engine::read_layout(xml, "Test.xml", [&](std::string_view name) {
    const auto found = bases.find(name);
    if (found != bases.end()) return found->second;
    throw value::Failure(value::Error::BadLayout, "no layout " + std::string(name));
  });
}

// The message of the failure, empty when it reads.
inline std::string problem_of(const std::string& xml, const Bases& bases = {}) {
  try {
    read(xml, bases);
    return {};
  } catch (const value::Failure& failure) {
    return failure.number() == value::Error::BadLayout ? failure.description() : "another failure";
  }
}

}  // namespace dorvo::tests
