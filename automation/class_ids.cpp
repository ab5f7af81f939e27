#include "automation/class_ids.h"

#include <cstdio>

#include "value/text.h"

namespace dorvo::automation {
namespace {

// A class's number in the table of launchers is added to the first word.
constexpr std::uint32_t kLibrary = 0xD88C0001;
constexpr std::uint32_t kClasses = 0xD88C1000;
constexpr std::uint32_t kInterfaces = 0xD88C2000;

constexpr GUID guid(std::uint32_t first) {
  return {first, 0x4309, 0x4789, {0x81, 0x3E, 0x4D, 0x23, 0xC4, 0xE8, 0xA8, 0x1C}};
}

}  // namespace

CLSID class_id(const frame::LauncherClass& row) {
  return guid(kClasses + static_cast<std::uint32_t>(row.number));
}

IID interface_id(const frame::LauncherClass& row) {
  return guid(kInterfaces + static_cast<std::uint32_t>(row.number));
}

GUID library_id() {
  return guid(kLibrary);
}

const frame::LauncherClass* class_of(const CLSID& id) {
  for (const frame::LauncherClass& row : frame::launcher_classes()) {
    if (class_id(row) == id) return &row;
  }
  return nullptr;
}

const frame::LauncherClass* class_of(std::string_view program_id) {
  const std::size_t point = program_id.find('.');
  if (point == std::string_view::npos || !value::same_name(program_id.substr(0, point), kLibraryName)) return nullptr;
  return frame::find_launcher_class(program_id.substr(point + 1));
}

std::string text_of(const GUID& id) {
  char text[39];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.Data1, unsigned{id.Data2},
                unsigned{id.Data3}, id.Data4[0], id.Data4[1], id.Data4[2], id.Data4[3], id.Data4[4], id.Data4[5],
                id.Data4[6], id.Data4[7]);
  return text;
}

}  // namespace dorvo::automation
