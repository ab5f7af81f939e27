// Small practices for the tests of this room, and a form as it came out on paper.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/layout_store.h"
#include "frame/settings.h"
#include "frame/slots.h"
#include "practice/practice_file.h"

namespace dorvo::composition {

using Texts = std::map<std::string, std::string>;  // by control name

// The visible controls of a run's pages. A name that stands twice fails the test.
struct Paper {
  std::size_t pages = 0;
  Texts fields;
  Texts labels;
  std::size_t rules = 0;  // lines and shapes
  std::vector<std::string> messages;
};

inline Paper paper_of(frame::Report& report) {
  report.run();
  Paper paper;
  paper.pages = report.Pages().Count();
  paper.messages = report.Messages();
  for (const auto& page : report.Pages()) {
    for (const auto& item : page->items) {
      Texts* texts = item.kind() == engine::ControlKind::Field   ? &paper.fields
                     : item.kind() == engine::ControlKind::Label ? &paper.labels
                                                                 : nullptr;
      if (!texts) {
        ++paper.rules;
      } else if (!texts->emplace(item.name(), item.string()).second) {
        ADD_FAILURE() << report.Name() << ": " << item.name() << " stands twice";
      }
    }
  }
  return paper;
}

using Columns = std::vector<std::pair<std::string, value::Variant>>;

// A practice with a signature "Proprietor" (key 1); settings at their zero values but for its connection text.
class PracticeTest : public ::testing::Test {
 protected:
  PracticeTest() {
    engine::layouts_from(DORVO_SOURCE_DIR "/layouts");
    frame::basMain() = frame::Settings();
    frame::basMain().ConnectionString = path_;
  }
  ~PracticeTest() override {
    frame::basMain() = frame::Settings();
    std::filesystem::remove(path_);
  }

  // One row of Customer a dealer; their CustomerIDs count from 1.
  void write_dealers(const std::vector<Columns>& dealers) {
    practice::PracticeFile file(path_);
    practice::Row signature("signature");
    file.insert(signature.set("SignatureID", 1).set("Signature", "Proprietor"));
    for (int id = 1; const auto& dealer : dealers) {
      practice::Row row("Customer");
      row.set("CustomerID", id).set("CustomerCode", id).set("YearID", 1).set("SignatureID", 1);
      ++id;
      for (const auto& [column, held] : dealer) row.set(column, held);
      file.insert(row);
    }
    file.commit();
  }

  static Paper print(frame::Report& report, int key) {
    report.PropCMasterID(key);
    return paper_of(report);
  }

 private:
  std::string path_ =
      (std::filesystem::temp_directory_path() / ("dorvo-dealers-" + std::to_string(getpid()) + ".db")).string();
};

}  // namespace dorvo::composition
