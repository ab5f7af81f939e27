// A folder of its own for a test's files, and other people's programs to read them.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace dorvo::testing_pages {

// Gone with the test.
class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "dorvo-test-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  // How many files stand in it.
  std::ptrdiff_t count() const {
    return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path path_;
};

inline std::string bytes_of(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.good()) << file;
  return {std::istreambuf_iterator<char>(in), {}};
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

}  // namespace dorvo::testing_pages
