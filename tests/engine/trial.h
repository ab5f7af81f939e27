// Small reports of the tests: a layout as XML text, rows in a database of their own, handlers as lambdas.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/active_report.h"
#include "tests/data/scratch_database.h"
#include "tests/engine/read.h"

namespace dorvo::tests {

class Trial : public engine::ActiveReport {
 public:
  // Sheet 5000 by 2000 twips without margins unless the test sets others.
  Trial(engine::LayoutPtr layout, std::string connection, std::string select)
      : ActiveReport(layout->name, layout), connection_(std::move(connection)), select_(std::move(select)) {}

  using ActiveReport::on;
  std::function<void()> at_start;
  std::function<void()> at_end;
  int height = 2000;
  int width = 5000;
  int margin = 0;  // left and top

  engine::Field& field(std::string_view name) { return control_as<engine::Field>(name); }
  // Notes the event with the text of a box or the page, when told.
  void trace(std::string_view event, std::vector<std::string>& into, std::string box = "") {
    on(event, [this, event = std::string(event), &into, box] {
      into.push_back(event + (box.empty() ? "" : " " + field(box).Text()));
    });
  }

 protected:
  void ActiveReport_ReportStart() override {
    PageSettings().PaperSize = engine::kPaperCustom;
    PageSettings().PaperWidth = static_cast<float>(width);
    PageSettings().PaperHeight = static_cast<float>(height);
    PageSettings().LeftMargin = PageSettings().TopMargin = static_cast<float>(margin);
    PageSettings().RightMargin = PageSettings().BottomMargin = 0;
    recMaster().ConnectionString(connection_);
    recMaster().Source(select_);
    if (at_start) at_start();
  }
  void ActiveReport_ReportEnd() override {
    if (at_end) at_end();
  }

 private:
  std::string connection_;
  std::string select_;
};

// "txtNo=1@0" for each Field and Label, "Line1@40" for each rule, with its top; pages apart by " | ".
inline std::string shown(const engine::Page& page) {
  std::string result;
  for (const engine::PageItem& item : page.items) {
    if (!result.empty()) result += " ";
    result += item.name();
    if (item.text) result += "=" + *item.text;
    result += "@" + std::to_string(item.top);
  }
  return result;
}

inline std::string shown(const engine::ActiveReport& report) {
  std::string result;
  for (const engine::PagePtr& page : report.Pages()) {
    if (page->number > 1) result += " | ";
    result += shown(*page);
  }
  return result;
}

// The rows n = 1 to 12 of the tests: a = n in tenths, g = 1 for three rows, then 2 for three, and so on, h = 1 for six.
class Rows {
 public:
  explicit Rows(int count = 12)
      : database_(
            "CREATE TABLE r (n INT, g INT, h INT, a DECIMAL(12,2), t VARCHAR(20));"
            "INSERT INTO r WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM c WHERE i < " +
            std::to_string(count) + ") SELECT i, (i + 2) / 3, (i + 5) / 6, i / 10.0, 'row ' || i FROM c;") {}
  // A report of `xml` over the first `count` rows.
  std::unique_ptr<Trial> report(const std::string& xml, int count) const {
    return std::make_unique<Trial>(read(xml), database_.path(),
                                   "SELECT * FROM r WHERE n <= " + std::to_string(count) + " ORDER BY n");
  }
  const std::string path() const { return database_.path(); }

 private:
  data::ScratchDatabase database_;
};

}  // namespace dorvo::tests
