#include "engine/layout_store.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <span>
#include <sstream>

#include "engine/layout_reader.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::engine {
namespace {

struct Store {
  std::span<const EmbeddedLayout> embedded;
  std::string folder;
  std::map<std::string, LayoutPtr> read;  // by lower case name
};

Store& store() {
  static Store the_store;
  return the_store;
}

[[noreturn]] void no_layout(std::string_view name) {
  const std::string where = store().folder.empty() ? "built into the library" : "in " + store().folder;
  throw value::Failure(value::Error::BadLayout, "no layout " + std::string(name) + " " + where);
}

bool is_layout_file(const std::filesystem::path& path) {
  return path.extension() == ".xml";
}

std::string xml_in_folder(std::string_view name) {
  std::error_code problem;
  for (const auto& entry : std::filesystem::directory_iterator(store().folder, problem)) {
    if (!is_layout_file(entry.path()) || !value::same_name(entry.path().stem().string(), name)) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (file && text) return text.str();
    throw value::Failure(value::Error::BadLayout, "cannot read " + entry.path().string());
  }
  no_layout(name);
}

std::string xml_of(std::string_view name) {
  if (!store().folder.empty()) return xml_in_folder(name);
  for (const EmbeddedLayout& layout : store().embedded) {
    if (value::same_name(layout.name, name)) return std::string(layout.xml);
  }
  no_layout(name);
}

LayoutPtr read_stored(std::string_view name) {
  const std::string file = std::string(name) + ".xml";
  LayoutPtr layout = read_layout(xml_of(name), file, xml_of);
  if (value::same_name(layout->name, name)) return layout;
  throw value::Failure(value::Error::BadLayout,
                       file + ": Layout: name=\"" + layout->name + "\", expected the name of the file");
}

}  // namespace

void embed_layouts(const EmbeddedLayout* first, std::size_t count) {
  store().embedded = {first, count};
  store().read.clear();
}

void layouts_from(std::string folder) {
  store().folder = std::move(folder);
  store().read.clear();
}

LayoutPtr stored_layout(std::string_view name) {
  LayoutPtr& layout = store().read[value::lower_name(name)];
  if (!layout) layout = read_stored(name);
  return layout;
}

std::vector<std::string> stored_layout_names() {
  std::vector<std::string> names;
  if (store().folder.empty()) {
    for (const EmbeddedLayout& layout : store().embedded) names.emplace_back(layout.name);
  } else {
    std::error_code problem;
    for (const auto& entry : std::filesystem::directory_iterator(store().folder, problem)) {
      if (is_layout_file(entry.path())) names.push_back(entry.path().stem().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace dorvo::engine
