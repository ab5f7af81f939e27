// Every report that is built, over the whole sample practice in all print modes: each column that a box is bound to is
// in the query, each control that the report's code names is in its layout, and no text is cut.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "automation/report_list.h"
#include "data/connection.h"
#include "data/recordset.h"
#include "frame/settings.h"
#include "layouts/layouts.h"
#include "practice/cases.h"
#include "practice/practice.h"

namespace dorvo {
namespace {

struct Mode {
  const char* name;
  bool blank;
  bool preprinted;
};
constexpr Mode kModes[] = {{"complete", false, false}, {"blank", true, false}, {"data only", false, true}};

// Some described returns hold on purpose what ends a run.
bool is_spoiled(std::int32_t key) {
  for (const practice::DescribedReturn& each : practice::described_returns()) {
    if (each.id == key) return each.spoil != nullptr;
  }
  return false;
}

bool is_fault_of_the_data(const value::Failure& failure) {
  return failure.number() == value::Error::InvalidUseOfNull || failure.number() == value::Error::TypeMismatch;
}

class BuiltReports : public ::testing::Test {
 protected:
  BuiltReports() {
    layouts::embed();
    practice::write_practice(path_, {.dealers = 3, .years = 1});
    frame::basMain() = frame::Settings();
    frame::basMain().ConnectionString = path_;
    frame::basMain().myConn = data::Connection::open(path_);
    frame::basMain().ShowFilingDate = frame::basMain().ShowCity = frame::basMain().ShowFooter = true;
    frame::basMain().UserName = "R. V. Deshpande, Tax Practitioner";
    add_keys("SELECT CMasterID FROM CMaster");
    add_keys("SELECT CustomerID FROM Customer");
  }
  ~BuiltReports() override {
    frame::basMain() = frame::Settings();
    std::filesystem::remove(path_);
  }

  // The keys of all tables that a report may be printed for; one that a report's table has not makes no page.
  std::set<std::int32_t> keys;

 private:
  void add_keys(const char* select) {
    data::Recordset rows;
    rows.Open(select, frame::basMain().myConn);
    for (; !rows.EOF_(); rows.MoveNext()) {
      keys.insert(static_cast<std::int32_t>(value::number_of(rows.Fields(std::size_t{0}))));
    }
  }

  std::string path_ =
      (std::filesystem::temp_directory_path() / ("dorvo-reports-" + std::to_string(getpid()) + ".db")).string();
};

TEST_F(BuiltReports, RunOverTheSamplePractice) {
  for (const frame::ReportClass& each : automation::report_list()) {
    const frame::ReportKind* kind = frame::find_report_kind(each.name);
    if (!each.is_built() || (kind && kind->sub_report)) continue;
    for (const Mode& mode : kModes) {
      const auto report = each.make();
      frame::basMain().BlankForm = mode.blank;
      frame::basMain().preprinted = mode.preprinted;
      std::size_t pages = 0;
      report->sink([&](const engine::PagePtr&) { ++pages; });
      for (const std::int32_t key : keys) {
        report->PropCMasterID(key);
        try {
          report->run();
        } catch (const value::Failure& failure) {
          if (is_spoiled(key) && is_fault_of_the_data(failure)) continue;
          ADD_FAILURE() << mode.name << ", key " << key << ": " << failure.description();
        }
        for (const std::string& message : report->Messages()) ADD_FAILURE() << "key " << key << ": " << message;
      }
      EXPECT_GT(pages, 0u) << each.name << ", " << mode.name << ": nothing in the sample practice makes a page";
    }
  }
}

}  // namespace
}  // namespace dorvo
