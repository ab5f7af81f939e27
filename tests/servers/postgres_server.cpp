#include "postgres_server.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace dorvo::data {
namespace {

struct ClosePipe {
  void operator()(std::FILE* pipe) const {
    if (pipe) pclose(pipe);
  }
};

std::string script(const std::string& arguments) {
  return "'" DORVO_SOURCE_DIR "/tests/servers/postgres' " + arguments;
}

}  // namespace

const std::string PostgresServer::kPassword = "ge;h}e=i'm\"{@ x";

std::string run_command(const std::string& command) {
  std::FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) throw std::runtime_error("cannot run " + command);
  std::array<char, 4096> line{};
  std::string text = std::fgets(line.data(), static_cast<int>(line.size()), pipe) ? line.data() : "";
  while (std::fgets(line.data(), static_cast<int>(line.size()), pipe)) {
  }
  if (pclose(pipe) != 0) throw std::runtime_error("failed: " + command);
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

PostgresServer& PostgresServer::shared() {
  static PostgresServer server;
  return server;
}

PostgresServer::PostgresServer() {
  std::string pattern = "/tmp/dorvo-postgres-XXXXXX";
  folder_ = mkdtemp(pattern.data());
  port_ = std::atoi(run_command(script("make " + folder_)).c_str());
  const std::string doubled = "ge;h}e=i''m\"{@ x";
  run_command("PGPASSWORD=owner psql -q -h 127.0.0.1 -U owner -p " + std::to_string(port_) +
              " -d postgres -c 'CREATE DATABASE practice' 2>&1");
  run("CREATE SCHEMA dbo; CREATE ROLE reader LOGIN PASSWORD '" + doubled +
      "'; GRANT USAGE ON SCHEMA dbo TO reader; ALTER DEFAULT PRIVILEGES IN SCHEMA dbo GRANT SELECT ON TABLES TO reader;"
      "CREATE ROLE stranger LOGIN PASSWORD 'stranger'");
}

PostgresServer::~PostgresServer() {
  try {
    call("remove");
  } catch (const std::exception&) {  // the folder stays, for whoever wants to look
  }
}

void PostgresServer::run(const std::string& sql) const {
  answer(sql);
}

std::string PostgresServer::answer(const std::string& sql) const {
  static std::atomic<int> number = 0;
  const std::string file = folder_ + "." + std::to_string(++number) + ".sql";
  std::ofstream(file) << sql;
  const std::string line = run_command("PGPASSWORD=owner psql -qAt -v ON_ERROR_STOP=1 -h 127.0.0.1 -U owner -p " +
                                       std::to_string(port_) + " -d practice -f " + file + " 2>&1");
  std::remove(file.c_str());
  return line;
}

void PostgresServer::stop() const {
  call("stop");
}

void PostgresServer::start() const {
  call("start");
}

std::string PostgresServer::text(const std::string& more) const {
  return text_of("practice", "reader", kPassword, more);
}

std::string PostgresServer::text_of(const std::string& database, const std::string& user, const std::string& password,
                                    const std::string& more) const {
  std::string quoted = "{";
  for (const char c : password) quoted += c == '}' ? "}}" : std::string(1, c);
  return "Provider=PostgreSQL;Data Source=127.0.0.1," + std::to_string(port_) + ";Initial Catalog=" + database +
         ";User ID=" + user + ";Password=" + quoted + "};" + more;
}

void PostgresServer::call(const std::string& command) const {
  run_command(script(command + " " + folder_));
}

}  // namespace dorvo::data
