// The bands of a sub-report, one below the other in the frame that its parent gives it. Private to the engine.
#pragma once

#include "engine/band.h"

namespace dorvo::engine {

class StackFlow : public BandTarget {
 public:
  // Adds to `out`, a band of the parent, what stands in a frame at that place of it.
  StackFlow(Band& out, int left, int top) : out_(out), left_(left), top_(top) {}
  void begin() override {}
  void place(Band& band, int room_below) override;
  void end() override {}
  int height() const { return height_; }

 private:
  Band& out_;
  int left_;
  int top_;
  int height_ = 0;
};

}  // namespace dorvo::engine
