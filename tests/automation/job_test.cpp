// A job of a host without a window: a run that fails on its way, streamed pages, nothing shown.
#include "automation/job.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "engine/layout_store.h"
#include "frame/slots.h"
#include "tests/data/scratch_database.h"

namespace dorvo::automation {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLayout = R"(<Layout name="Rows" version="1" width="9000">
  <Style name="body" font="Arial" size="10"/>
  <Section kind="Detail" name="Detail" height="12000">
    <Field name="txtA" column="A" style="body" left="0" top="0" width="2000" height="240"/>
    <Field name="txtNarrow" style="body" left="0" top="300" width="300" height="240" wrap="false"/>
  </Section>
</Layout>)";

// One page a row; the row that is NULL fails.
class Rows : public frame::Report {
 public:
  Rows() : Report("Rows") {}

 protected:
  std::string query() const override { return "SELECT A FROM T ORDER BY rowid"; }
  void Detail_Format() override {
    put("txtA", master("A"));
    put("txtNarrow", "much too long for its box");
  }
};

// The layout store must know the layout before the report is made.
struct RowsLayout {
  RowsLayout() {
    static const engine::EmbeddedLayout layout{"Rows", kLayout};
    engine::embed_layouts(&layout, 1);
  }
};

class JobTest : public testing::Test, private RowsLayout {
 protected:
  JobTest() {
    frame::basMain() = {};
    frame::basMain().ConnectionString = database.path();
    job.add_output(file("a.pdf"));
    job.add_output(file("a.json"));
  }

  std::string file(const std::string& name) const { return folder.file(name); }
  nlohmann::json dump() const {
    std::ifstream in(file("a.json"));
    return nlohmann::json::parse(in, nullptr, false);
  }
  std::set<std::string> files() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(file("a")).parent_path())) {
      names.insert(entry.path().filename());
    }
    return names;
  }

  data::ScratchFolder folder;
  data::ScratchDatabase database{"CREATE TABLE T (A INT); INSERT INTO T VALUES (1), (2), (3);"};
  Job job;
  Rows report;
};

TEST_F(JobTest, CutTextIsTold) {
  job.show(report);
  EXPECT_EQ(job.pages(), 3u);
  EXPECT_FALSE(job.failed());
  EXPECT_EQ(files(), (std::set<std::string>{"a.json", "a.pdf"}));
  ASSERT_FALSE(job.messages.empty());
  EXPECT_NE(job.messages[0].find("txtNarrow"), std::string::npos) << job.messages[0];
  EXPECT_EQ(dump()["messages"].size(), job.messages.size());
  EXPECT_EQ(report.Pages().Count(), 0u) << "nothing keeps the pages";
}

TEST_F(JobTest, FailureOnTheWayKeepsThePagesSoFarInTheDumpAlone) {
  database.run("UPDATE T SET A = NULL WHERE A = 3");
  EXPECT_THROW(job.show(report), value::Failure);
  EXPECT_TRUE(job.failed());
  EXPECT_EQ(files(), std::set<std::string>{"a.json"});
  const nlohmann::json dumped = dump();
  ASSERT_GE(dumped["pages"].size(), 2u);
  EXPECT_EQ(dumped["pages"][1]["items"][0]["text"], "2");
  EXPECT_NE(dumped["messages"].back().get<std::string>().find("txtA"), std::string::npos);
}

TEST_F(JobTest, OfReportsShownOneAfterAnotherTheLastCounts) {
  database.run("UPDATE T SET A = NULL WHERE A = 3");
  EXPECT_THROW(job.show(report), value::Failure);
  database.run("UPDATE T SET A = 3 WHERE A IS NULL");
  for (int run = 0; run < 2; ++run) {
    job.show(report);
    EXPECT_FALSE(job.failed());
    EXPECT_EQ(job.messages.size(), 3u) << "a cut text a page";
  }
}

}  // namespace
}  // namespace dorvo::automation
