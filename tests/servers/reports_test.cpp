// Every report that is built, on the embedded database and on PostgreSQL: the same pages, the same failures.
//
// The texts that the reports send are kept in the file that DORVO_QUERIES names, for the check of their grammar.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include "../data/scratch_database.h"
#include "automation/report_list.h"
#include "data/connection.h"
#include "data/recordset.h"
#include "engine/layout_store.h"
#include "export/page_dump.h"
#include "frame/settings.h"
#include "frame/slots.h"
#include "postgres_server.h"
#include "practice/practice.h"
#include "practice_sql.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using Properties = std::vector<std::pair<std::string, std::string>>;

// What a report is launched with: keys of its records, and the properties that a host writes.
struct Launch {
  std::string_view reports;  // names, between blanks
  std::string_view keys;     // query of the keys; empty: one run without a key
  Properties properties;
};

// A report that is in no row is launched with the keys of the returns.
const Launch kReturns = {"", "select CMasterID from CMaster", {}};
const Launch kLaunches[] = {
    {" Form1 Form2 Form3 Form4 Form5 ", "select CustomerID from Customer", {}},
    {" Form204 Form204132 Form205 Form205132 Form206 Form206132 Form207 Form207132 Form214 Form214132 "
     "CompositionStatement ",
     "select CCMasterID from CCMaster",
     {{"PropmCFillingTYpe", "MONTHLY"}}},
    {" PTFormIII PTFormIII132 PTFormIIINew PTFormIIINew10 PTRFormIII PTRFormIIInew ",
     "select PTRMasterID from PTRMaster",
     {}},
    {" FormVIII ", "select PTEMasterID from PTEMaster", {}},
    {" Bill ",
     "",
     {{"PropBillMasterIDs", "1,2,3"}, {"PropSortBy", "BillMaster.BillMasterID, BillDetail.BillDetailID"}}},
    {" BillRegister ", "", {{"PropBillMasterIDs", "1,2,3"}, {"PropSortBy", "BillMasterID desc"}}},
    {" DealerBill ", "", {{"PropBillMasterIDs", "1,2,3"}, {"PropSortBy", ", BillMasterID"}}},
    {" Receipt ReceiptRegister ", "", {{"PropReceiptMasterIDs", "1,2,3"}, {"PropSortBy", "BillReceiptID"}}},
    {" DealerReceipt ",
     "",
     {{"PropReceiptMasterIDs", "1,2,3"}, {"PropSortBy", "BillReceipt.CustomerID, BillReceiptID"}}},
    {" SummerisedBill DealerList ", "", {}},
    {" Liability0910 ", "", {{"PropYearID", "1"}, {"PropCustomerName", ""}}},
    {" AddressLabel ", "", {{"PropCustomerIDList", "1,2,3,4,5"}}},
};

const Launch& launch_of(std::string_view report) {
  for (const Launch& launch : kLaunches)
    if (launch.reports.find(" " + std::string(report) + " ") != std::string_view::npos) return launch;
  return kReturns;
}

std::string content(const std::string& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

class ReportsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<ScratchFolder>();
    practice::write_practice(folder_->file("practice.db"), {});
    PostgresServer& server = PostgresServer::shared();
    server.run("DROP SCHEMA IF EXISTS dbo CASCADE; " + postgres_script(folder_->file("practice.db")) +
               "GRANT USAGE ON SCHEMA dbo TO reader; GRANT SELECT ON ALL TABLES IN SCHEMA dbo TO reader");
    engine::layouts_from(DORVO_SOURCE_DIR "/layouts");
    frame::set_report_classes(automation::report_list());
    sqlite_ = folder_->file("practice.db");
    postgres_ = server.text();
  }
  static void TearDownTestSuite() {
    frame::basMain() = frame::Settings();
    folder_.reset();
  }

  // The pages of a run as a dump, or the number of the failure that ended it.
  static std::string pages(frame::Report& report, const std::string& text) {
    frame::basMain().ConnectionString = text;
    frame::basMain().myConn = Connection::pooled(text);
    std::string failure;
    try {
      report.run();
    } catch (const value::Failure& ended) {
      failure = "failure " + std::to_string(static_cast<int>(ended.number()));
      last_failure_ = ended.description();
    }
    export_::PageDump dump;
    dump.FileName = folder_->file("pages.json");
    dump.Report = report.Name();
    dump.RunMessages = report.Messages();
    dump.Export(report.Pages());
    return content(dump.FileName) + failure;
  }

  static std::vector<std::int32_t> keys(const Launch& launch) {
    std::vector<std::int32_t> found;
    if (launch.keys.empty()) return {0};
    const auto rows = Connection::pooled(sqlite_)->query(launch.keys);
    for (std::size_t row = 0; row < rows->rows(); ++row)
      found.push_back(static_cast<std::int32_t>(value::number_of(rows->cell(row, 0))));
    found.push_back(999999);  // names no record
    return found;
  }

  // Runs one launch on both databases, in one of the three print modes.
  static void compare(frame::Report& report, std::int32_t key, const char* mode) {
    frame::basMain() = frame::Settings();
    frame::basMain().BlankForm = mode == std::string_view("blank");
    frame::basMain().preprinted = mode == std::string_view("data only");
    frame::basMain().ShowFilingDate = frame::basMain().ShowCity = frame::basMain().ShowFooter = true;
    frame::basMain().UserName = "Practice";
    report.PropCMasterID(key);
    const std::string here = pages(report, sqlite_);
    const std::string there = pages(report, postgres_);
    EXPECT_TRUE(here == there) << report.Name() << " " << key << " " << mode << " differs: " << last_failure_;
    compared_ += 1;
    printed_ += here.find("\"items\"") != std::string::npos;
  }

  static std::unique_ptr<ScratchFolder> folder_;
  static std::string sqlite_, postgres_, last_failure_;
  static int compared_, printed_;
};
std::unique_ptr<ScratchFolder> ReportsTest::folder_;
std::string ReportsTest::sqlite_, ReportsTest::postgres_, ReportsTest::last_failure_;
int ReportsTest::compared_, ReportsTest::printed_;

// One text for all keys, so that the file holds each question once.
std::string without_keys(std::string_view text) {
  const std::size_t end = text.find_last_not_of("0123456789");
  return end + 1 < text.size() && text[end] == '=' ? std::string(text.substr(0, end + 1)) + "1" : std::string(text);
}

TEST_F(ReportsTest, PrintTheSamePagesFromEitherDatabase) {
  std::set<std::string> texts;
  for (const frame::ReportClass& row : frame::report_classes()) {
    if (!row.is_built()) continue;
    frame::Report& report = frame::report_slot(row.name);
    const Launch& launch = launch_of(row.name);
    for (const auto& [name, value] : launch.properties) report.property(name, value);
    const int before = printed_;
    const std::vector<std::int32_t> all = keys(launch);
    Connection::watch([&](std::string_view text) { texts.insert(without_keys(text)); });
    for (const std::int32_t key : all) compare(report, key, "complete");
    for (const char* mode : {"blank", "data only"}) compare(report, all.front(), mode);
    Connection::watch({});
    EXPECT_GT(printed_, before) << row.name << " printed nothing: " << last_failure_;
  }
  std::cout << "    " << compared_ << " runs compared, " << printed_ << " with pages\n";
  if (const char* file = std::getenv("DORVO_QUERIES")) {
    std::ofstream out(file);
    for (const std::string& text : texts) out << text << '\n';
  }
}

}  // namespace
}  // namespace dorvo::data
