// The application object behind all windows, and whether there is a screen at all.
#pragma once

namespace dorvo::preview {

// Takes the host's application object, or makes one. Fails with EngineState when there is no screen, or when the
// host's object cannot carry windows: the toolkit itself would end the process instead.
void need_application();

}  // namespace dorvo::preview
