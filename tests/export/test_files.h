// A folder of its own for a test's files, and other people's programs to read them.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace dorvo::test {

// An empty folder of a test's own, gone with it.
class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "dorvo-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  std::string file(const std::string& name) const { return (path_ / name).string(); }
  std::string path() const { return path_.string(); }
  std::size_t files() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::recursive_directory_iterator(path_),
                                                  std::filesystem::recursive_directory_iterator()));
  }

 private:
  std::filesystem::path path_;
};

inline std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// What a command says on both its channels; fails the test when it does not end with status 0.
inline std::string output_of(const std::string& command) {
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (!pipe) {
    ADD_FAILURE() << "cannot start: " << command;
    return {};
  }
  std::string out;
  char part[4096];
  for (std::size_t got = 0; (got = std::fread(part, 1, sizeof part, pipe)) > 0;) out.append(part, got);
  EXPECT_EQ(pclose(pipe), 0) << command << "\n" << out;
  return out;
}

}  // namespace dorvo::test
