#include "practice/practice.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "value/failure.h"

using namespace dorvo;
namespace fs = std::filesystem;

namespace {

std::string bytes_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

class PracticeTest : public testing::Test {
 protected:
  PracticeTest() : folder_(fs::temp_directory_path() / ("practice_test_" + std::to_string(getpid()))) {
    fs::create_directories(folder_);
  }
  ~PracticeTest() override { fs::remove_all(folder_); }

  std::string write(const char* name, practice::Options options = {.dealers = 3, .years = 2, .seed = 1}) {
    const std::string file = folder_ / name;
    practice::write_practice(file, options);
    return file;
  }

  // The rows of a query, columns parted by "|", rows by line ends.
  static std::string ask(const std::string& file, const std::string& sql) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    std::string rows;
    const auto each = [](void* out, int columns, char** values, char**) {
      for (int i = 0; i < columns; ++i) {
        *static_cast<std::string*>(out) += std::string(i > 0 ? "|" : "") + (values[i] == nullptr ? "NULL" : values[i]);
      }
      *static_cast<std::string*>(out) += "\n";
      return 0;
    };
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), each, &rows, &message), SQLITE_OK) << message;
    sqlite3_close(database);
    return rows;
  }

  fs::path folder_;
};

TEST_F(PracticeTest, SameOptionsSameBytes) {
  EXPECT_EQ(bytes_of(write("a.db")), bytes_of(write("b.db")));
  EXPECT_NE(bytes_of(write("a.db")), bytes_of(write("c.db", {.dealers = 3, .years = 2, .seed = 2})));
}

TEST_F(PracticeTest, DescribedCasesKeepTheirKeys) {
  const std::string small = write("small.db", {.dealers = 0, .years = 1, .seed = 1});
  const std::string large = write("large.db", {.dealers = 20, .years = 3, .seed = 9});
  const std::string dealers = "select * from Customer where CustomerCode < 1000 and YearID <= 2 order by CustomerID";
  const std::string returns = "select * from CMaster where CMasterID < 1000 order by CMasterID";
  EXPECT_EQ(ask(small, dealers), ask(large, dealers));
  EXPECT_EQ(ask(small, returns), ask(large, returns));
}

TEST_F(PracticeTest, DealersAndYearsAreAsMany) {
  const std::string file = write("p.db", {.dealers = 7, .years = 4, .seed = 5});
  EXPECT_EQ(ask(file, "select count(distinct CustomerCode), count(*) from Customer where CustomerCode > 1000"),
            "7|28\n");
  EXPECT_EQ(ask(file, "select YearFrom, yearfromto from YearMaster where YearID = 4"), "2008|2008-2009\n");
}

// 240,000 at 4 %, 180,000 less 8,000 at 12.5 %, 20,000 at 1 %; purchases 145,000 at 4 %, 96,000 at 12.5 %.
TEST_F(PracticeTest, UsualReturn) {
  EXPECT_EQ(
      ask(write("p.db"),
          "select GrossSales, VATPlusExcess, GrossPurchaseFilling, SetoffClaimed, VATWithReturn, FromDate, ToDate "
          "from CMaster where CMasterID = 3"),
      "477800|31300|296000|17800|13500|2005-04-01|2005-04-30\n");
}

// Gross turnover is the sum of the boxes under it, for every return that is not wrong on purpose.
TEST_F(PracticeTest, GrossTurnoverAgreesWithItsParts) {
  const std::string balance =
      "(SalesWCBalance1 + SalesWCBalance2 + SalesWCBalance3 + SalesMS + SalesTaxable + coalesce((select "
      "sum(NetSalesAmount) from CDetail d where d.CMasterID = m.CMasterID and EntryType = 'SALESEC' and SubEntryType "
      "in ('BASIC', 'RETURN')), 0))";
  const std::string deductions =
      "(SalesTransit + SalesUS3 + SalesLabour + TaxCollected + DeemedTax + SalesNotLiable + SalesWC - SalesWCBalance1 "
      "- SalesWCBalance2 - SalesWCBalance3 + coalesce((select sum(PurchaseEc) from CDetail d where d.CMasterID = "
      "m.CMasterID and EntryType = 'SALESEC' and SubEntryType in ('BASIC', 'RETURN')), 0))";
  EXPECT_EQ(ask(write("p.db"),
                "select CMasterID from CMaster m where abs(GrossSales - SalesOMSBranch - SalesUs8 - "
                "SalesUS5 - " +
                    deductions + " - " + balance + ") > 0.05"),
            "");
}

TEST_F(PracticeTest, KeysOfEveryLineAndReturnExist) {
  const std::string file = write("p.db");
  EXPECT_EQ(ask(file, "select count(*) from CDetail where CMasterID not in (select CMasterID from CMaster)"), "0\n");
  EXPECT_EQ(ask(file,
                "select CMasterID from CMaster m where not exists (select 1 from Customer c where "
                "c.CustomerCode = m.CustomerCode and c.YearID = m.YearID)"),
            "57\n");
  EXPECT_EQ(ask(file, "select max(n) from (select count(*) n from FormIIIB group by CmasterID)"), "1\n");
}

// What is carried forward in one return is brought forward in the dealer's next.
TEST_F(PracticeTest, InventedDealersCarryTheirSetoff) {
  EXPECT_EQ(
      ask(write("p.db", {.dealers = 12, .years = 2, .seed = 1}),
          "select count(*) from (select SetoffBF, lag(SetoffCF) over (partition by CustomerCode order by "
          "FromDate) before from CMaster where CMasterID > 1000) where before is not null and before <> SetoffBF"),
      "0\n");
}

TEST_F(PracticeTest, ReadmeListsEveryCase) {
  const std::string readme = bytes_of(fs::path(DORVO_SOURCE_DIR) / "practice/README.md");
  std::istringstream cases(practice::described_cases());
  for (std::string line; std::getline(cases, line);) {
    EXPECT_NE(readme.find(line), std::string::npos) << line;
  }
}

TEST_F(PracticeTest, ReplacesAnEarlierSampleAndNoOtherFile) {
  const std::string file = folder_ / "p.db";
  practice::write_practice(file, {.years = 1});
  practice::write_practice(file, {});
  EXPECT_EQ(ask(file, "select count(*) from YearMaster"), "2\n");
  const std::string figures = folder_ / "figures.db";
  std::ofstream(figures) << "a practice's own";
  EXPECT_THROW(practice::write_practice(figures, {}), value::Failure);
  EXPECT_EQ(std::filesystem::file_size(figures), 16u);
}

TEST_F(PracticeTest, UnwritableTargetLeavesNothing) {
  const std::string target = folder_ / "no/such/folder/p.db";
  try {
    practice::write_practice(target, {});
    FAIL() << "written";
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.number(), value::Error::CannotWrite);
    EXPECT_NE(failure.description().find(target), std::string::npos);
  }
  fs::create_directory(folder_ / "taken");
  std::ofstream(folder_ / "taken/inside") << "kept";
  EXPECT_THROW(practice::write_practice(folder_ / "taken", {}), value::Failure);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
}

TEST_F(PracticeTest, OptionsOutOfRange) {
  EXPECT_THROW(write("p.db", {.dealers = -1, .years = 2, .seed = 1}), value::Failure);
  EXPECT_THROW(write("p.db", {.dealers = 1, .years = 21, .seed = 1}), value::Failure);
  EXPECT_FALSE(fs::exists(folder_ / "p.db"));
}

}  // namespace
