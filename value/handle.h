// The owner of an object of a C library, which gives it back with that library's own function.
#pragma once

#include <memory>

namespace dorvo::value {

template <auto Release>
struct Releaser {
  template <class Type>
  void operator()(Type* held) const {
    Release(held);
  }
};

template <class Type, auto Release>
using Handle = std::unique_ptr<Type, Releaser<Release>>;

}  // namespace dorvo::value
