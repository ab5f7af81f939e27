// A library of windows, as the library that loads it sees it: the ports to a user, and the windows' life.
//
// It is loaded when the first window is asked for, so that printing without windows needs none of it. One thread.
#pragma once

#include <cstddef>

#include "frame/ports.h"

namespace dorvo::frame {

class Windows : public Ports {
 public:
  // Handles what the user does until the last preview is closed; returns at once when none is open.
  virtual void run() = 0;
  // Handles what has come in so far and does not wait.
  virtual void turn() = 0;
  virtual std::size_t open() const = 0;
};

// The one function that such a library exports. The object lives as long as the process. nullptr: made for another
// `version` of ours. Fails with EngineState when there is no screen to open windows on.
using MakeWindows = Windows* (*)(const char* version);
inline constexpr const char* kMakeWindows = "dorvo_windows";
inline constexpr const char* kWindowLibrary = "libDorvoPreview.so";

}  // namespace dorvo::frame
