// The yardstick that draws a page's items straight on a Cairo PDF surface, as a program without a writer of its own
// would. Used by the benchmarks only.
#pragma once

#include <vector>

#include "engine/pages.h"

namespace dorvo::bench {

// The PDF of the pages, in memory. Faces are loaded at their first use and kept.
std::vector<unsigned char> cairo_pdf(const std::vector<engine::PagePtr>& pages);

}  // namespace dorvo::bench
