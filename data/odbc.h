// ODBC handles with an owner, and what a call that failed has to say. Private to the ODBC driver.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dorvo::data {

// A handle of ODBC, freed with its owner.
class OdbcHandle {
 public:
  // Fails with CannotConnect when ODBC makes none.
  OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
  OdbcHandle(const OdbcHandle&) = delete;
  OdbcHandle& operator=(const OdbcHandle&) = delete;
  ~OdbcHandle() { SQLFreeHandle(kind_, handle_); }
  SQLHANDLE get() const { return handle_; }
  SQLSMALLINT kind() const { return kind_; }

 private:
  SQLSMALLINT kind_;
  SQLHANDLE handle_ = nullptr;
};

// The environment of the process; it lives as long as somebody holds it.
std::shared_ptr<OdbcHandle> odbc_environment();

// Names of the drivers that ODBC knows.
std::vector<std::string> installed_drivers(const OdbcHandle& environment);

// The first record of what went wrong with a handle: five characters of state, and a message without the names of
// the components in front.
struct OdbcProblem {
  std::string state;
  std::string message;
  bool is(std::string_view state_class) const { return state.substr(0, state_class.size()) == state_class; }
};
OdbcProblem problem_of(const OdbcHandle& handle);

inline bool succeeded(SQLRETURN result) {
  return result == SQL_SUCCESS || result == SQL_SUCCESS_WITH_INFO;
}

// A text as ODBC's wide calls take it; valid as long as this object.
class WideText {
 public:
  explicit WideText(std::string_view utf8);
  SQLWCHAR* data() { return reinterpret_cast<SQLWCHAR*>(units_.data()); }
  SQLINTEGER size() const { return static_cast<SQLINTEGER>(units_.size()); }

 private:
  std::u16string units_;
};

// `units` code units of ODBC's as UTF-8.
std::string narrow(const SQLWCHAR* text, std::size_t units);

}  // namespace dorvo::data
