// The class object of each public class. They live as long as the library; references to them are not counted, locks
// are.
#pragma once

#include "automation/com.h"
#include "frame/launchers.h"

namespace dorvo::automation {

IClassFactory& class_factory(const frame::LauncherClass& row);

}  // namespace dorvo::automation
