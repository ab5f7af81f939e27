// The preview: windows for reports in a process that has a screen.
//
// start() registers the windows as the ports of the frame; from then on a report that is shown opens a preview and the
// call returns. A host with a QApplication of its own keeps it, and its event loop drives the windows. A host without
// one gets one, and lets the windows live by run() or by calling turn() in its own loop. All on one thread, the one
// that called start().
#pragma once

#include <cstddef>

namespace dorvo::preview {

// Done once; later calls do nothing. Fails with EngineState when there is no screen to open windows on.
void start();

// Handles what the user does until the last preview is closed. Returns at once when none is open.
void run();

// Handles what has come in so far; does not wait.
void turn();

std::size_t open_windows();

}  // namespace dorvo::preview
