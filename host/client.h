// The host's side of the automation interface: objects by class name, members by name, values as text.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "automation/com.h"

namespace dorvo::host {

// The command line asks for what the library has not, or gives a value that a member cannot take.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The library could not do what it was asked for.
class RunError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One automation object, released when this goes.
class Object {
 public:
  // "clsForm1"; UsageError when there is no such class.
  static Object of_class(const std::string& name);
  // A launcher for a report class; UsageError when there is none.
  static Object of_report(const std::string& name);
  // RunError when the database cannot be opened.
  static Object of_connection(const std::string& connection_text);

  // UsageError when the object has no such member.
  automation::DISPID member(const std::string& name) const;

  // UsageError when the member is no property that takes text, or the text is no value for it; else RunError.
  void put(const std::string& name, const std::string& value) const;
  void put_reference(const std::string& name, const Object& object) const;
  void call(const std::string& name) const;

 private:
  struct Release {
    void operator()(automation::IDispatch* object) const { object->Release(); }
  };

  Object(std::string name, automation::IDispatch* object) : name_(std::move(name)), object_(object) {}

  std::string name_;
  std::unique_ptr<automation::IDispatch, Release> object_;
};

}  // namespace dorvo::host
