// What ends a run: a number and one line of description.
//
// Every failure of the library is thrown as a Failure. The numbers are the ones hosts of this kind of
// library have always seen, so that a host's own error table keeps working.
#pragma once

#include <stdexcept>
#include <string>

namespace dorvo::value {

enum class Error : int {
  Overflow = 6,
  DivisionByZero = 11,
  TypeMismatch = 13,
  PathAccess = 75,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  InvalidPropertyValue = 380,
  PropertyNotFound = 438,
  ReportNotBuilt = 445,
  // Layout store and run loop.
  BadLayout = 5001,
  ControlNotFound = 5002,
  EngineState = 5003,
  // Data library.
  ItemNotFound = 3265,
  ObjectClosed = 3704,
  NotOneSelect = 3705,
  BadConnectionText = 3706,
  CannotConnect = 3709,
  QueryFailed = 3710,
  QueryTimeout = 3711,
  // Filters.
  CannotWrite = 3004,
};

class Failure : public std::runtime_error {
 public:
  Failure(Error number, const std::string& description) : std::runtime_error(description), number_(number) {}

  Error number() const { return number_; }
  std::string description() const { return what(); }

  // The same failure with the place where it happened in front: "Form201, Detail_Format: ...".
  Failure at(const std::string& place) const { return {number_, place + ": " + what()}; }

 private:
  Error number_;
};

}  // namespace dorvo::value
