// The library of windows, loaded when it is first asked for.
#pragma once

#include "frame/windows.h"

namespace dorvo::automation {

// Loads it and registers its ports, once. Fails with EngineState, telling what was looked for and why it did not do.
frame::Windows& load_windows();

// nullptr before load_windows() has gone through.
frame::Windows* loaded_windows();

}  // namespace dorvo::automation
