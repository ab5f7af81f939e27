// Runs the host program as a user does, in a folder of its own beside a sample practice.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "practice/practice.h"

namespace dorvo::host {

namespace fs = std::filesystem;

inline std::string whole_file(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

class HostTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    std::string pattern = (fs::temp_directory_path() / "dorvo-host-XXXXXX").string();
    base() = mkdtemp(pattern.data());
    practice::write_practice((base() / "practice.db").string(), {.dealers = 0, .years = 1, .seed = 1});
  }
  static void TearDownTestSuite() { fs::remove_all(base()); }

  HostTest() { fs::create_directories(folder()); }
  ~HostTest() override { fs::remove_all(folder()); }

  static fs::path& base() {
    static fs::path path;
    return path;
  }
  static fs::path folder() { return base() / "work"; }
  static std::string practice_file() { return (base() / "practice.db").string(); }

  // `before` is shell text in front of the command: limits, variables.
  static Outcome run(const std::vector<std::string>& arguments, const std::string& before = "") {
    std::string command = "cd '" + folder().string() + "' && " + before + " '" DORVO_HOST "'";
    for (const std::string& argument : arguments) command += " '" + argument + "'";
    command = "( " + command + " ) >'" + (base() / "out").string() + "' 2>'" + (base() / "err").string() + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, whole_file(base() / "out"), whole_file(base() / "err")};
  }

  // print on the sample practice, with a page dump and a PDF.
  static Outcome print(std::vector<std::string> arguments, const std::string& database = practice_file()) {
    arguments.insert(arguments.begin(), {"print", "--db", database, "--out", "a.json", "--out", "a.pdf"});
    return run(arguments);
  }

  static nlohmann::json dump(const std::string& name = "a.json") {
    return nlohmann::json::parse(whole_file(folder() / name), nullptr, false);
  }
  static std::set<std::string> files() {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder())) names.insert(entry.path().filename());
    return names;
  }
  // Texts of a box on all pages; empty when it is on none.
  static std::vector<std::string> box(const std::string& name) {
    std::vector<std::string> texts;
    const nlohmann::json pages = dump()["pages"];
    for (const auto& page : pages) {
      for (const auto& item : page["items"]) {
        if (item["name"] == name) texts.push_back(item["text"]);
      }
    }
    return texts;
  }
  static bool is_one_line(const std::string& text) {
    return text.starts_with("dorvoform: ") && text.find('\n') == text.size() - 1;
  }
};

}  // namespace dorvo::host
