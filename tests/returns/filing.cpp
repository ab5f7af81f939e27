#include "filing.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>

#include "data/connection.h"
#include "frame/settings.h"
#include "frame/slots.h"
#include "layouts/layouts.h"
#include "practice/practice_file.h"
#include "returns/form_201.h"
#include "value/text.h"

namespace dorvo::returns {
namespace {

constexpr int kKey = 41;

std::vector<std::string> split(std::string_view text, std::string_view mark) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(mark), text.size());
    if (end > 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + mark.size(), text.size()));
  }
  return parts;
}

value::Variant value_of(const std::string& text) {
  if (text == "NULL") return {};
  if (text == "true" || text == "false") return text == "true";
  const double number = value::Val(text);
  if (value::number_text(number) != text) return text;
  if (number == std::floor(number)) return static_cast<std::int64_t>(number);
  return number;
}

std::pair<std::string, std::string> named(const std::string& entry) {
  const std::size_t mark = std::min(entry.find('='), entry.size() - 1);
  return {entry.substr(0, mark), entry.substr(mark + 1)};
}

bool has(const practice::Row& row, std::string_view column) {
  return std::ranges::any_of(row.table().columns, [&](const auto& each) { return each.name == column; });
}

}  // namespace

Filing::Filing(std::string_view entries) {
  customer_.set("CustomerID", 7).set("CustomerCode", 7).set("YearID", 1).set("Name", "ABC Traders");
  customer_.set("SignatureID", 1).set("STOID", 1);
  master_.set("CMasterID", kKey).set("CustomerCode", 7).set("YearID", 1).set("ReturnType", "Original");
  master_.set("FromDate", "2005-04-01").set("ToDate", "2005-04-30");
  for (const std::string& entry : split(entries, "; ")) enter(entry);
  static int count = 0;
  file_ = testing::TempDir() + "filing-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".db";
  write();
}

void Filing::enter(std::string_view entry) {
  const std::vector<std::string> words = split(entry, " ");
  if (words[0] == "sale") return add_line("SALESTAXABLE", words, 3, "NetSalesAmount");
  if (words[0] == "buy") return add_line("PURCHASERD", words, 4, "NetPurchaseAmount");
  if (words[0] == "line") {
    lines_.emplace_back("CDetail").set("CMasterID", kKey).set("EntryType", words[1]);
    lines_.back().set("SubEntryType", words[2]).set("VATPercentage", value_of(words[3]));
    return;
  }
  const bool also = words[0] == "also";
  const auto [column, text] = named(std::string(entry.substr(also ? 5 : 0)));
  practice::Row& row = also ? lines_.back() : has(master_, column) ? master_ : customer_;
  row.set(column, value_of(text));
}

void Filing::add_line(std::string_view entry_type, const std::vector<std::string>& words, std::size_t amounts,
                      std::string_view net_column) {
  practice::Row& row = lines_.emplace_back("CDetail");
  row.set("CMasterID", kKey).set("EntryType", entry_type).set("VATPercentage", value_of(words[1]));
  row.set(net_column, value_of(words[2])).set("VATTaxAmount", value_of(words[3]));
  if (amounts == 4) row.set("Setoff", value_of(words[4]));
  row.set("SubEntryType", words.size() > amounts + 1 ? words.back() : "BASIC");
}

void Filing::write() const {
  using practice::Row;
  practice::PracticeFile practice(file_);
  practice.insert(Row("YearMaster").set("YearID", 1).set("YearFrom", 2005).set("YearTo", 2006));
  practice.insert(Row("signature").set("SignatureID", 1).set("Signature", "Proprietor"));
  practice.insert(Row("STO").set("STOID", 1).set("ChargeNo", "C-101"));
  Row bank("BAnk");
  bank.set("ID", 1).set("YearID", 1).set("CustomerCode", 7).set("BankName", "Dena Bank").set("Branch", "Fort");
  practice.insert(bank);
  practice.insert(customer_);
  practice.insert(master_);
  for (const Row& row : lines_) practice.insert(row);
  practice.commit();
}

void Filing::open() const {
  frame::basMain() = frame::Settings();
  frame::basMain().ConnectionString = file_;
  frame::basMain().myConn = data::Connection::open(file_);
}

const std::vector<std::string>& six_forms() {
  static const std::vector<std::string> names = {"Form201",    "Form202",    "Form203",
                                                 "Form201132", "Form202132", "Form203132"};
  return names;
}

const std::vector<std::string>& plain_and_twin() {
  static const std::vector<std::string> names = {"Form201", "Form203132"};
  return names;
}

std::unique_ptr<frame::Report> make(std::string_view form) {
  using frame::make_report;
  static const std::vector<frame::ReportClass> classes = {
      {"Form201", make_report<Form201>},       {"Form202", make_report<Form202>},
      {"Form203", make_report<Form203>},       {"Form201132", make_report<Form201132>},
      {"Form202132", make_report<Form202132>}, {"Form203132", make_report<Form203132>}};
  layouts::embed();
  auto report = std::ranges::find(classes, form, &frame::ReportClass::name)->make();
  report->PropCMasterID(kKey);
  return report;
}

std::unique_ptr<frame::Report> print(std::string_view form) {
  auto report = make(form);
  report->run();
  return report;
}

std::string seen(const frame::Report& report, std::string_view control) {
  const engine::Control& found = report.control(control);
  if (!found.Visible()) return "(hidden)";
  if (found.layout().kind == engine::ControlKind::Label) return report.control_as<engine::Label>(control).Caption();
  return report.control_as<engine::Field>(control).Text();
}

void expect(const std::vector<Case>& cases, const std::vector<std::string>& forms) {
  for (const Case& each : cases) {
    Filing(each.entries).open();
    for (const std::string& form : forms) {
      const auto report = print(form);
      for (const std::string& box : split(each.boxes, "; ")) {
        const auto [name, text] = named(box);
        EXPECT_EQ(seen(*report, name), text) << each.what << ", " << form << ", " << name;
      }
    }
  }
}

}  // namespace dorvo::returns
