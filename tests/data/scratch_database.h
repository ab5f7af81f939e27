// A database file of a test, filled by SQL and removed at the end.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace dorvo::data {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "dorvo-data-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

class ScratchDatabase {
 public:
  explicit ScratchDatabase(const std::string& sql = "") { run(sql); }
  void run(const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path().c_str(), &database), SQLITE_OK);
    char* problem = nullptr;
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &problem), SQLITE_OK) << problem;
    sqlite3_free(problem);
    sqlite3_close(database);
  }
  std::string path() const { return folder_.file("practice.db"); }

 private:
  ScratchFolder folder_;
};

}  // namespace dorvo::data
