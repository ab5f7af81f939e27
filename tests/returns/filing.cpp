#include "filing.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "data/connection.h"
#include "frame/settings.h"
#include "layouts/layouts.h"
#include "practice/practice_file.h"
#include "returns/form_201.h"

namespace dorvo::returns {
namespace {

constexpr int kKey = 41;

practice::Row named(std::string_view table, std::string_view id, std::string_view column, std::string_view text) {
  practice::Row row(table);
  row.set(id, 1).set(column, text);
  return row;
}

std::string fresh_file() {
  static int count = 0;
  return testing::TempDir() + "filing-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".db";
}

}  // namespace

Filing::Filing() {
  customer_.set("CustomerID", 7).set("CustomerCode", 7).set("YearID", 1).set("Name", "ABC Traders");
  customer_.set("ConstitutionID", 1).set("SignatureID", 1).set("STOID", 1);
  master_.set("CMasterID", kKey).set("CustomerCode", 7).set("YearID", 1).set("ReturnType", "Original");
  period(value::Date{2005, 4, 1, 0}, value::Date{2005, 4, 30, 0});
}

Filing& Filing::dealer(std::string_view column, value::Variant held) {
  customer_.set(column, std::move(held));
  return *this;
}

Filing& Filing::set(std::string_view column, value::Variant held) {
  master_.set(column, std::move(held));
  return *this;
}

Filing& Filing::set(const Columns& columns) {
  for (const auto& [column, held] : columns) set(column, held);
  return *this;
}

Filing& Filing::period(value::Variant from, value::Variant to) {
  return set("FromDate", std::move(from)).set("ToDate", std::move(to));
}

Filing& Filing::line(std::string_view entry, std::string_view sub_entry, value::Variant rate, const Columns& columns) {
  practice::Row& row = lines_.emplace_back("CDetail");
  row.set("CMasterID", kKey).set("EntryType", entry).set("SubEntryType", sub_entry).set("VATPercentage", rate);
  for (const auto& [column, held] : columns) row.set(column, held);
  return *this;
}

Filing& Filing::sale(double rate, double net, double tax, std::string_view sub_entry) {
  return line("SALESTAXABLE", sub_entry, rate, {{"NetSalesAmount", net}, {"VATTaxAmount", tax}});
}

Filing& Filing::purchase(double rate, double net, double tax, double set_off, std::string_view sub_entry) {
  return line("PURCHASERD", sub_entry, rate, {{"NetPurchaseAmount", net}, {"VATTaxAmount", tax}, {"Setoff", set_off}});
}

Filing& Filing::spoil(std::string_view column, value::Variant held) {
  lines_.back().set(column, std::move(held));
  return *this;
}

void Filing::open() {
  if (file_.empty()) {
    file_ = fresh_file();
    practice::PracticeFile practice(file_);
    practice.insert(practice::Row("YearMaster").set("YearID", 1).set("YearFrom", 2005).set("YearTo", 2006));
    practice.insert(named("Constitution", "ConstitutionID", "Constitution", "Proprietor"));
    practice.insert(named("signature", "SignatureID", "Signature", "Proprietor"));
    practice.insert(named("STO", "STOID", "ChargeNo", "C-101"));
    practice::Row bank("BAnk");
    practice.insert(
        bank.set("ID", 1).set("YearID", 1).set("CustomerCode", 7).set("BankName", "Dena Bank").set("Branch", "Fort"));
    practice.insert(customer_);
    practice.insert(master_);
    for (const practice::Row& row : lines_) practice.insert(row);
    practice.commit();
  }
  frame::basMain().ConnectionString = file_;
  frame::basMain().myConn = data::Connection::open(file_);
}

const std::vector<std::string>& six_forms() {
  static const std::vector<std::string> names = {"Form201",    "Form202",    "Form203",
                                                 "Form201132", "Form202132", "Form203132"};
  return names;
}

std::unique_ptr<frame::Report> make(std::string_view form) {
  layouts::embed();
  std::unique_ptr<frame::Report> report;
  if (form == "Form201") report = std::make_unique<Form201>();
  if (form == "Form202") report = std::make_unique<Form202>();
  if (form == "Form203") report = std::make_unique<Form203>();
  if (form == "Form201132") report = std::make_unique<Form201132>();
  if (form == "Form202132") report = std::make_unique<Form202132>();
  if (form == "Form203132") report = std::make_unique<Form203132>();
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
  if (!found.Visible()) return kHidden;
  if (auto* field = dynamic_cast<const engine::Field*>(&found)) return field->Text();
  return report.control_as<engine::Label>(control).Caption();
}

FreshSettings::FreshSettings() {
  frame::basMain() = frame::Settings();
}
FreshSettings::~FreshSettings() {
  frame::basMain() = frame::Settings();
}

}  // namespace dorvo::returns
