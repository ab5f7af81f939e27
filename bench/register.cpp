#include "bench/register.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "engine/layout_reader.h"

namespace dorvo::bench {
namespace {

struct Column {
  const char* name;
  const char* head;
  int width;
  const char* align;
};
constexpr Column kColumns[] = {
    {"No", "No.", 800, "right"},     {"ReturnDate", "Date", 1100, "left"}, {"Dealer", "Dealer", 2600, "left"},
    {"Tin", "TIN", 1400, "left"},    {"Sales", "Sales", 1100, "right"},    {"Tax", "Tax", 1000, "right"},
    {"Paid", "Paid", 1000, "right"}, {"Due", "Due", 900, "right"},         {"Bank", "Bank", 900, "left"}};

void run(sqlite3* database, const std::string& sql) {
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return;
  std::cerr << sqlite3_errmsg(database) << "\n";
  std::exit(1);
}

std::string layout() {
  std::string heads, boxes;
  int left = 0;
  for (const Column& column : kColumns) {
    const std::string place = "left=\"" + std::to_string(left) + "\" width=\"" + std::to_string(column.width - 60) +
                              "\" height=\"240\" align=\"" + column.align + "\" name=\"";
    heads += "<Label style=\"head\" top=\"0\" " + place + "lbl" + column.name + "\" text=\"" + column.head + "\"/>\n";
    boxes += "<Field style=\"body\" top=\"20\" wrap=\"false\" " + place + "txt" + column.name + "\" column=\"" +
             column.name + "\"/>\n";
    left += column.width;
  }
  const std::string width = std::to_string(left);
  return "<Layout name=\"Register\" version=\"1\" width=\"" + width +
         "\">\n<Style name=\"head\" font=\"Arial\" size=\"8\" bold=\"true\"/>\n"
         "<Style name=\"body\" font=\"Arial\" size=\"8\"/>\n"
         "<Section kind=\"PageHeader\" name=\"PageHeader\" height=\"320\">\n" +
         heads + "<Line name=\"Line1\" left=\"0\" top=\"280\" x2=\"" + width +
         "\" y2=\"280\" weight=\"10\"/>\n</Section>\n"
         "<Section kind=\"Detail\" name=\"Detail\" height=\"300\">\n" +
         boxes + "</Section>\n</Layout>\n";
}

class Register : public engine::ActiveReport {
 public:
  Register(engine::LayoutPtr layout, std::string connection)
      : ActiveReport("Register", std::move(layout)), connection_(std::move(connection)) {}

 protected:
  void ActiveReport_ReportStart() override {
    auto& page = PageSettings();
    page.LeftMargin = page.RightMargin = 500;
    page.TopMargin = page.BottomMargin = 700;
    recMaster().ConnectionString(connection_);
    recMaster().Source(kRegisterQuery);
  }

 private:
  std::string connection_;
};

}  // namespace

void make_register(const std::string& file, int rows) {
  std::filesystem::remove(file);
  sqlite3* database = nullptr;
  sqlite3_open(file.c_str(), &database);
  run(database,
      "CREATE TABLE Register (No INT PRIMARY KEY, ReturnDate DATETIME, Dealer VARCHAR(60), Tin VARCHAR(12), "
      "Sales MONEY, Tax MONEY, Paid MONEY, Due MONEY, Bank VARCHAR(20))");
  run(database, "WITH RECURSIVE Rows(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM Rows WHERE n < " +
                    std::to_string(rows) +
                    ") INSERT INTO Register SELECT n, date('2005-04-01', '+' || (n % 730) || ' days'), "
                    "'Dealer ' || (n * 7919 % 99991) || ' and Sons', 27000000000 + n * 611953 % 999999937 || 'V', "
                    "n * 7919 % 9999991 / 4.0, n * 104729 % 999983 / 4.0, n * 1299709 % 99991, n % 997, "
                    "CASE n % 3 WHEN 0 THEN 'Union' WHEN 1 THEN 'Central' ELSE 'State' END FROM Rows");
  sqlite3_close(database);
}

std::unique_ptr<engine::ActiveReport> register_report(const std::string& connection_text) {
  const engine::LayoutPtr read =
      engine::read_layout(layout(), "Register.xml", [](std::string_view) { return std::string(); });
  return std::make_unique<Register>(read, connection_text);
}

}  // namespace dorvo::bench
