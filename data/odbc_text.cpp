#include "data/odbc_text.h"

#include <algorithm>
#include <array>

#include "value/failure.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;
using value::same_name;
using Keys = ConnectionText::Keys;

constexpr Keys kServer = {"Data Source", "Server", "Address", "Addr", "Network Address"};
constexpr Keys kLoginTime = {"Connect Timeout", "Connection Timeout"};
constexpr Keys kQueryTime = {"General Timeout", "Command Timeout", "Query Timeout"};

// What an ADO property is called by a driver; an empty name: the driver has no such thing.
struct Property {
  Keys ado;
  std::string_view microsoft, freetds, postgres;
};
constexpr std::array<Property, 8> kProperties = {{
    {{"Initial Catalog", "Database", "Location"}, "Database", "Database", "Database"},
    {{"User ID", "UID", "User"}, "UID", "UID", "UID"},
    {{"Password", "PWD"}, "PWD", "PWD", "PWD"},
    {{"Application Name", "App"}, "APP", "APP", ""},
    {{"Workstation ID", "WSID"}, "WSID", "WSID", ""},
    {{"Current Language", "Language"}, "Language", "Language", ""},
    {{"Application Intent", "ApplicationIntent"}, "ApplicationIntent", "ApplicationIntent", ""},
    {{"SSL Mode", "SSLmode"}, "", "", "SSLmode"},
}};
// Those that say yes or no, in one of several words.
constexpr std::array<Property, 3> kSwitches = {{
    {{"Integrated Security", "Trusted_Connection"}, "Trusted_Connection", "Trusted_Connection", ""},
    {{"Use Encryption for Data", "Encrypt"}, "Encrypt", "", ""},
    {{"Trust Server Certificate", "TrustServerCertificate"}, "TrustServerCertificate", "", ""},
}};

bool is_yes(std::string_view value) {
  return same_name(value, "yes") || same_name(value, "true") || same_name(value, "sspi") ||
         same_name(value, "mandatory") || value == "1";
}

// Collects NAME=VALUE pairs, in braces where a value needs them.
class Writer {
 public:
  void add(std::string_view name, std::string_view value) {
    if (name.empty()) return;
    if (!text_.empty()) text_ += ';';
    text_ += name;
    text_ += '=';
    text_ += needs_braces(value) ? braced(value) : std::string(value);
  }
  // A text of pairs as it stands.
  void add_text(std::string_view pairs) {
    if (!text_.empty() && !pairs.empty()) text_ += ';';
    text_ += pairs;
  }
  std::string text() const { return text_; }

 private:
  static bool needs_braces(std::string_view value) {
    return value.find_first_of("[]{}(),;?*=!@\"'") != std::string_view::npos || value != value::trim(value);
  }
  static std::string braced(std::string_view value) {
    std::string text = "{";
    for (const char c : value) text += c == '}' ? "}}" : std::string(1, c);
    return text + "}";
  }
  std::string text_;
};

// "tcp:host\instance,port". Of an instance and a port the port counts.
struct Server {
  std::string host, instance, port;
};
Server server_of(const ConnectionText& text) {
  std::string name = text.value(kServer);
  if (same_name(name.substr(0, 4), "tcp:")) name.erase(0, 4);
  Server server;
  if (const std::size_t comma = name.find(','); comma != std::string::npos) {
    server.port = value::trim(std::string_view(name).substr(comma + 1));
    name.erase(comma);
  }
  if (const std::size_t slash = name.find('\\'); slash != std::string::npos) {
    server.instance = name.substr(slash + 1);
    name.erase(slash);
  }
  const bool here = name.empty() || name == "." || same_name(name, "(local)");
  server.host = here ? "localhost" : std::string(value::trim(name));
  return server;
}

// Drivers of one kind have one such row: how they spell the server, and which name of a property is theirs.
struct Style {
  std::string_view Property::*name;
  void (*server)(Writer&, const Server&);
};

void microsoft_server(Writer& out, const Server& server) {
  out.add_text("Server=" + server.host +
               (!server.port.empty()       ? "," + server.port
                : !server.instance.empty() ? "\\" + server.instance
                                           : ""));
}

void freetds_server(Writer& out, const Server& server) {
  const bool by_name = server.port.empty() && !server.instance.empty();
  out.add("Server", by_name ? server.host + "\\" + server.instance : server.host);
  if (!by_name) out.add("Port", server.port.empty() ? "1433" : server.port);
  out.add("ClientCharset", "UTF-8");
}

void postgres_server(Writer& out, const Server& server) {
  out.add("Servername", server.host);
  out.add("Port", server.port.empty() ? "5432" : server.port);
  out.add("BoolsAsChar", "0");
}

constexpr Style kMicrosoft = {&Property::microsoft, &microsoft_server};
constexpr Style kFreeTds = {&Property::freetds, &freetds_server};
constexpr Style kPostgres = {&Property::postgres, &postgres_server};

// The newest of the drivers whose names begin so, by the number in the name.
std::string newest(const std::vector<std::string>& installed, std::string_view begin) {
  std::string best;
  double best_number = -1;
  for (const std::string& name : installed) {
    if (!same_name(std::string_view(name).substr(0, begin.size()), begin)) continue;
    const std::size_t digit = name.find_first_of("0123456789");
    const double number = digit == std::string::npos ? 0 : value::Val(name.substr(digit));
    if (number > best_number) best = name, best_number = number;
  }
  return best;
}

struct Choice {
  std::string_view begin;
  Style style;
};
constexpr std::array<Choice, 3> kSqlServerDrivers = {
    {{"ODBC Driver ", kMicrosoft}, {"SQL Server", kMicrosoft}, {"FreeTDS", kFreeTds}}};
constexpr std::array<Choice, 3> kPostgresDrivers = {
    {{"PostgreSQL Unicode", kPostgres}, {"PostgreSQL", kPostgres}, {"psqlODBC", kPostgres}}};

std::string built(const ConnectionText& text, const std::string& driver, const Style& style) {
  Writer out;
  out.add_text("Driver={" + driver + "}");
  style.server(out, server_of(text));
  for (const Property& property : kProperties)
    if (text.has(property.ado)) out.add(property.*style.name, text.value(property.ado));
  for (const Property& property : kSwitches)
    if (text.has(property.ado)) out.add(property.*style.name, is_yes(text.value(property.ado)) ? "yes" : "no");
  // The OLE DB providers encrypt only when they are told to; a newer driver would refuse a server without certificate.
  if (style.name == kMicrosoft.name && !text.has({"Use Encryption for Data", "Encrypt"})) out.add("Encrypt", "no");
  return out.text();
}

std::string with_best_driver(const ConnectionText& text, const std::vector<std::string>& installed,
                             const std::array<Choice, 3>& choices, const char* missing) {
  for (const Choice& choice : choices)
    if (const std::string driver = newest(installed, choice.begin); !driver.empty())
      return built(text, driver, choice.style);
  throw Failure(Error::CannotConnect, missing);
}

// The provider that passes everything on to ODBC.
std::string passed_on(const ConnectionText& text) {
  struct Renamed {
    std::string_view ado, odbc;
  };
  static constexpr std::array<Renamed, 7> kNames = {{{"Provider", ""},
                                                     {"Persist Security Info", ""},
                                                     {"Extended Properties", ""},
                                                     {"Data Source", "DSN"},
                                                     {"Initial Catalog", "Database"},
                                                     {"User ID", "UID"},
                                                     {"Password", "PWD"}}};
  Writer out;
  out.add_text(text.value({"Extended Properties"}));
  for (const auto& [key, value] : text.pairs()) {
    const auto* row =
        std::find_if(kNames.begin(), kNames.end(), [&, &k = key](auto& name) { return same_name(name.ado, k); });
    out.add(row == kNames.end() ? std::string_view(key) : row->odbc, value);
  }
  return out.text();
}

std::chrono::seconds seconds_of(const ConnectionText& text, const Keys& keys, std::chrono::seconds otherwise) {
  if (!text.has(keys)) return otherwise;
  const std::string value = text.value(keys);
  const double number = value::Val(value);
  if (value.empty() || value.size() > 6 || value.find_first_not_of("0123456789") != std::string::npos || number < 1)
    throw Failure(Error::BadConnectionText, "Bad connection text: a timeout is no whole number of seconds above 0");
  return std::chrono::seconds(static_cast<int>(number));
}

}  // namespace

std::string odbc_text(const ConnectionText& text, const std::vector<std::string>& installed) {
  switch (text.kind()) {
    case ConnectionText::Kind::SqlServer:
      return with_best_driver(
          text, installed, kSqlServerDrivers,
          "Cannot connect: no ODBC driver for SQL Server is installed; expected Microsoft's or FreeTDS "
          "(Debian package tdsodbc)");
    case ConnectionText::Kind::PostgreSql:
      return with_best_driver(text, installed, kPostgresDrivers,
                              "Cannot connect: no ODBC driver for PostgreSQL is installed; expected Debian package "
                              "odbc-postgresql");
    default:
      return text.has({"Provider"}) ? passed_on(text) : text.text();
  }
}

TimeLimits time_limits(const ConnectionText& text) {
  const TimeLimits usual;
  return {seconds_of(text, kLoginTime, usual.login), seconds_of(text, kQueryTime, usual.query)};
}

}  // namespace dorvo::data
