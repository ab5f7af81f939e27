// The standard tools of the preview, by their places in engine::Toolbar. Places that are missing are gaps.
#pragma once

#include <cstddef>

namespace dorvo::preview {

enum StandardTool : std::size_t {
  kContents = 0,
  kPrint = 2,
  kCopy = 4,
  kFind = 6,
  kSingle = 8,
  kMultiple = 9,
  kZoomOut = 11,
  kZoomIn = 12,
  kZoom = 13,
  kPrevious = 15,
  kNext = 16,
  kPageNumber = 17,
  kBack = 19,
  kForward = 20,
};

}  // namespace dorvo::preview
