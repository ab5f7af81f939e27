#include "automation/registration.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "automation/class_ids.h"
#include "export/output_file.h"
#include "value/failure.h"

namespace dorvo::automation {
namespace {

namespace fs = std::filesystem;

// An absolute folder in an environment variable; empty when it is none.
fs::path folder_in(const char* variable) {
  const char* text = std::getenv(variable);
  return text && *text == '/' ? fs::path(text) : fs::path();
}

std::string line_of(const frame::LauncherClass& row, const std::string& library) {
  return std::string(kLibraryName) + "." + std::string(row.name) + "\t" + text_of(class_id(row)) + "\t" + library +
         "\n";
}

bool is_registered(const fs::path& file, const std::string& library) {
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    if (line.ends_with("\t" + library)) return true;
  }
  return false;
}

[[noreturn]] void no_access(const std::string& file, const std::string& reason) {
  throw value::Failure(value::Error::PathAccess, "Cannot register in \"" + file + "\": " + reason);
}

}  // namespace

std::string registration_file() {
  fs::path data = folder_in("XDG_DATA_HOME");
  if (data.empty()) {
    data = folder_in("HOME");
    if (data.empty()) no_access("classes", "neither XDG_DATA_HOME nor HOME names a folder");
    data = data / ".local" / "share";
  }
  return data / "dorvoform" / "classes";
}

void register_classes(const std::string& library) {
  const std::string file = registration_file();
  std::error_code error;
  fs::create_directories(fs::path(file).parent_path(), error);
  if (error) no_access(file, error.message());
  export_::OutputFile out(file);
  out.write("# program id, class id, shared library\n");
  for (const frame::LauncherClass& row : frame::launcher_classes()) out.write(line_of(row, library));
  out.commit();
}

void unregister_classes(const std::string& library) {
  const std::string file = registration_file();
  if (!is_registered(file, library)) return;
  if (std::remove(file.c_str()) != 0) no_access(file, std::strerror(errno));
}

}  // namespace dorvo::automation
