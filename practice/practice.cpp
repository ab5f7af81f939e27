#include "practice/practice.h"

#include <algorithm>
#include <string_view>

#include "practice/cases.h"
#include "practice/dealers.h"
#include "practice/practice_file.h"
#include "practice/random.h"
#include "practice/return_figures.h"
#include "value/failure.h"

namespace dorvo::practice {
namespace {

constexpr int kFirstYear = 2005;
constexpr int kDescribedYears = 2;
constexpr int kMostDealers = 100000;
constexpr int kMostYears = 20;
constexpr int kFirstInventedKey = 1001;  // of CustomerID and CMasterID

constexpr std::string_view kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                        "July",    "August",   "September", "October", "November", "December"};

constexpr std::string_view kAdHocTypes[] = {"Retention on sale of scrap", "Reduction agreed at assessment",
                                            "Goods lost or destroyed"};

void check(const std::string& name, int held, int most) {
  if (held >= 0 && held <= most) return;
  throw value::Failure(value::Error::Overflow, name + ": a number from 0 to " + std::to_string(most) +
                                                   " was expected, not " + std::to_string(held));
}

void write_years(PracticeFile& file, int years) {
  for (int year = 1; year <= years; ++year) {
    const int from = kFirstYear + year - 1;
    Row row("YearMaster");
    row.set("YearID", year)
        .set("YearFrom", from)
        .set("YearTo", from + 1)
        .set("yearfromto", std::to_string(from) + "-" + std::to_string(from + 1));
    file.insert(row);
  }
}

void write_names(PracticeFile& file, std::string_view table, std::string_view key, std::string_view name,
                 std::span<const NamedRow> rows) {
  for (const NamedRow& named : rows) file.insert(Row(table).set(key, named.id).set(name, named.name));
}

void write_lists(PracticeFile& file, int years) {
  write_years(file, years);
  int month = 0;
  for (const std::string_view name : kMonths)
    file.insert(Row("Monthmaster").set("MonthID", ++month).set("Month", name));
  write_names(file, "Constitution", "ConstitutionID", "Constitution", constitutions());
  write_names(file, "signature", "SignatureID", "Signature", signatures());
  write_names(file, "STO", "STOID", "ChargeNo", offices());
  int kind = 0;
  for (const std::string_view name : kAdHocTypes) {
    file.insert(Row("adhoctype").set("adhoctypeid", ++kind).set("adhocType", name));
  }
}

// Each dealer's list for a year: a bank with its branch, and one whose branch is not known.
void write_banks(PracticeFile& file, int code, int year) {
  const auto branches = bank_branches();
  const BankBranch& own = branches[static_cast<std::size_t>(code) % branches.size()];
  const BankBranch& other = branches[static_cast<std::size_t>(code + 1) % branches.size()];
  Row row("BAnk");
  row.set("YearID", year).set("CustomerCode", code);
  file.insert(row.set("ID", 1).set("BankName", own.bank).set("Branch", own.branch));
  file.insert(row.set("ID", 2).set("BankName", other.bank).set("Branch", value::Variant()));
}

void write_return(PracticeFile& file, Return document) {
  file.insert(document.master);
  for (Row& line : document.lines) file.insert(line.set("CMasterID", document.master.at("CMasterID")));
  for (const int certificate : document.certificates) {
    file.insert(Row("CmasterEC").set("CustomerECID", certificate).set("cmasterid", document.master.at("CMasterID")));
  }
  const bool central = std::any_of(document.lines.begin(), document.lines.end(),
                                   [](const Row& line) { return value::equals(line.at("EntryType"), "SALESUS81"); });
  if (central) file.insert(form_3b(document));
}

void write_certificates(PracticeFile& file) {
  constexpr int kDealer = 15;
  const auto certificate = [&](int id, int from_year, double ceiling) {
    file.insert(Row("CustomerEC")
                    .set("CustomerECID", id)
                    .set("CustomerCode", kDealer)
                    .set("FromDate", value::Date{from_year, 4, 1, 0})
                    .set("toDate", value::Date{from_year + 9, 3, 31, 0})
                    .set("Scheme", "Package Scheme of Incentives 1993")
                    .set("TotalCeilingOrg", ceiling)
                    .set("TotalCeiling", ceiling)
                    .set("EleigibilityCertificateNo", "PSI/93/NGP/" + std::to_string(400 + id))
                    .set("EleigibilityCertificateNoDAte", value::Date{from_year, 6, 15, 0})
                    .set("EODPercentage", 75));
  };
  certificate(1, 1998, 2500000);
  certificate(2, 2001, 1400000);
}

void write_described(PracticeFile& file, int years) {
  for (int year = 1; year <= years; ++year) {
    for (const DescribedDealer& dealer : described_dealers()) {
      file.insert(described_dealer(dealer.code, year));
      write_banks(file, dealer.code, year);
    }
  }
  write_certificates(file);
  for (const DescribedReturn& described : described_returns()) write_return(file, described_return(described));
}

// Lines of one period: the dealer's main rate, now and then another, and now and then goods returned.
void invent_lines(Return& document, const Trade& trade, Random& random) {
  constexpr double kRates[] = {4, 12.5, 4, 12.5, 8, 1, 20, 5};
  const auto hundreds = [](double amount) { return static_cast<double>(static_cast<long long>(amount / 100)) * 100; };
  const double turnover = trade.turnover * trade.months;
  const int lines = random.between(1, 4);
  for (int i = 0; i < lines; ++i) {
    const double rate = i == 0 ? kRates[trade.main_rate] : random.pick(kRates);
    const double net = hundreds(turnover / (lines + i) * random.between(60, 140) / 100);
    document.lines.push_back(sales_line("SALESTAXABLE", rate, net));
    document.lines.push_back(purchase_line("PURCHASERD", rate, hundreds(net * random.between(55, 108) / 100)));
    if (random.chance(15)) {
      document.lines.push_back(returned(sales_line("SALESTAXABLE", rate, hundreds(net / random.between(8, 30)))));
    }
  }
  if (trade.interstate) document.lines.push_back(central_line("Form \"C\"", 4, hundreds(turnover / 10)));
}

void invent_figures(Row& master, const Trade& trade, Random& random) {
  const double turnover = trade.turnover * trade.months;
  const auto sometimes = [&](int percent, std::string_view column, double most) {
    if (random.chance(percent))
      master.set(column, static_cast<double>(static_cast<long long>(most * random.between(1, 100) / 100)));
  };
  sometimes(30, "SalesUS5", turnover / 10);
  sometimes(15, "SalesOMSBranch", turnover / 4);
  sometimes(10, "SalesLabour", turnover / 50);
  sometimes(40, "PurchaseURD", turnover / 20);
  sometimes(20, "PurchaseOMS", turnover / 5);
  sometimes(5, "PurchaseImports", turnover / 8);
  sometimes(5, "TDS", turnover / 400);
}

// The returns of one dealer for one year. What is carried forward of one return is brought forward in the next;
// `carried` is the figure between years.
void write_invented_year(PracticeFile& file, const InventedDealer& dealer, int year, int& next_id, double& carried,
                         Random& random) {
  const int code = static_cast<int>(dealer.row.number("CustomerCode"));
  const Trade& trade = dealer.trade;
  for (int month = 0; month < 12; month += trade.months) {
    const int calendar = 4 + month;
    const int from_year = kFirstYear + year - 1 + (calendar > 12 ? 1 : 0);
    Return document;
    set_head(document.master, next_id++, code, from_year, calendar > 12 ? calendar - 12 : calendar, trade.months);
    document.master.set("SetoffBF", carried);
    invent_lines(document, trade, random);
    invent_figures(document.master, trade, random);
    work_out(document);
    carried = document.master.number("SetoffCF");
    write_return(file, std::move(document));
  }
}

void write_invented(PracticeFile& file, const Options& options) {
  int next_customer = kFirstInventedKey;
  int next_return = kFirstInventedKey;
  for (int number = 0; number < options.dealers; ++number) {
    InventedDealer dealer = invented_dealer(number, options.seed);
    Random random(options.seed ^ (static_cast<std::uint64_t>(number) << 20));
    double carried = 0;
    for (int year = 1; year <= options.years; ++year) {
      file.insert(dealer.row.set("CustomerID", next_customer++).set("YearID", year));
      write_banks(file, static_cast<int>(dealer.row.number("CustomerCode")), year);
      write_invented_year(file, dealer, year, next_return, carried, random);
    }
  }
}

}  // namespace

void write_practice(const std::string& file, const Options& options) {
  check("dealers", options.dealers, kMostDealers);
  check("years", options.years, kMostYears);
  const int years = std::max(options.years, kDescribedYears);
  PracticeFile practice(file);
  write_lists(practice, years);
  write_described(practice, years);
  write_invented(practice, options);
  practice.commit();
}

std::string described_cases() {
  std::string text;
  for (const DescribedDealer& dealer : described_dealers()) {
    text += "CustomerID " + std::to_string(dealer.code) + ": " + dealer.what + "\n";
  }
  for (const DescribedReturn& described : described_returns()) {
    text += "CMasterID " + std::to_string(described.id) + ": " + described.what + "\n";
  }
  return text;
}

}  // namespace dorvo::practice
