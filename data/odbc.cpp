#include "data/odbc.h"

#include <algorithm>
#include <array>

#include "data/utf8.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::data {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "ODBC's wide characters are UTF-16 units");

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
  if (!succeeded(SQLAllocHandle(kind, parent, &handle_)))
    throw value::Failure(value::Error::CannotConnect, "Cannot connect: ODBC gives no handle");
}

std::shared_ptr<OdbcHandle> odbc_environment() {
  static std::shared_ptr<OdbcHandle> environment;
  if (!environment) {
    environment = std::make_shared<OdbcHandle>(static_cast<SQLSMALLINT>(SQL_HANDLE_ENV), nullptr);
    SQLSetEnvAttr(environment->get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  }
  return environment;
}

std::vector<std::string> installed_drivers(const OdbcHandle& environment) {
  std::vector<std::string> names;
  std::array<SQLCHAR, 256> name{}, attributes{};
  SQLSMALLINT length = 0, ignored = 0;
  for (SQLUSMALLINT step = SQL_FETCH_FIRST;
       succeeded(SQLDrivers(environment.get(), step, name.data(), static_cast<SQLSMALLINT>(name.size()), &length,
                            attributes.data(), static_cast<SQLSMALLINT>(attributes.size()), &ignored));
       step = SQL_FETCH_NEXT)
    names.emplace_back(reinterpret_cast<const char*>(name.data()));
  return names;
}

OdbcProblem problem_of(const OdbcHandle& handle) {
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 2048> text{};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  if (!succeeded(SQLGetDiagRecW(handle.kind(), handle.get(), 1, state.data(), &number, text.data(),
                                static_cast<SQLSMALLINT>(text.size()), &length)))
    return {"HY000", "the driver tells no reason"};
  const std::size_t units = std::min(static_cast<std::size_t>(length), text.size() - 1);
  const std::string whole = narrow(text.data(), units);
  std::string_view message = whole;
  while (!message.empty() && message.front() == '[' && message.find(']') != std::string_view::npos)
    message = value::trim(message.substr(message.find(']') + 1));
  return {narrow(state.data(), 5), std::string(message)};
}

WideText::WideText(std::string_view utf8) : units_(utf16_of(utf8)) {}

std::string narrow(const SQLWCHAR* text, std::size_t units) {
  std::string out;
  append_utf8(out, std::u16string_view(reinterpret_cast<const char16_t*>(text), units));
  return out;
}

}  // namespace dorvo::data
