// A small generator of numbers that are the same on every machine (splitmix64), for invented names and figures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace dorvo::practice {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t mixed = (state_ += 0x9E3779B97F4A7C15u);
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  // A whole number from `low` to `high`, both included.
  int between(int low, int high) { return low + static_cast<int>(next() % static_cast<std::uint64_t>(high - low + 1)); }
  bool chance(int percent) { return between(1, 100) <= percent; }

  template <class List>
  const auto& pick(const List& list) {
    return *(std::begin(list) + static_cast<std::ptrdiff_t>(next() % std::size(list)));
  }

 private:
  std::uint64_t state_;
};

}  // namespace dorvo::practice
