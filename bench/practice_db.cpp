#include "bench/practice_db.h"

#include <filesystem>

#include "data/connection.h"
#include "frame/settings.h"
#include "layouts/layouts.h"

namespace dorvo::bench {

void open_practice(const practice::Options& options) {
  const std::string name = "dorvo-bench-" + std::to_string(options.dealers) + ".db";
  const std::string file = (std::filesystem::temp_directory_path() / name).string();
  practice::write_practice(file, options);
  layouts::embed();
  frame::basMain().ConnectionString = "Provider=SQLite;Data Source=" + file;
  frame::basMain().myConn = data::Connection::open(frame::basMain().ConnectionString);
}

}  // namespace dorvo::bench
