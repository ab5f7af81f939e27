// Class ids, interface ids and program ids of the public classes. Stable for ever; the type library states them too.
#pragma once

#include <string>
#include <string_view>

#include "automation/com.h"
#include "frame/launchers.h"

namespace dorvo::automation {

constexpr std::string_view kLibraryName = "DorvoFormDLL";

CLSID class_id(const frame::LauncherClass& row);
IID interface_id(const frame::LauncherClass& row);
GUID library_id();

// nullptr for an id or a program id ("DorvoFormDLL.clsForm1", in any capitals) that no class bears.
const frame::LauncherClass* class_of(const CLSID& id);
const frame::LauncherClass* class_of(std::string_view program_id);

// "{5B1C1002-...}" in capitals.
std::string text_of(const GUID& id);

}  // namespace dorvo::automation
