// The stored layouts of all reports, built into the library from the XML files beside this header.
#pragma once

namespace dorvo::layouts {

// Hands them to the layout store (engine/layout_store.h). May be called again.
void embed();

}  // namespace dorvo::layouts
