// Secondary recordsets and the folder browser.
#include "frame/settings.h"

#include <gtest/gtest.h>

#include "tests/data/scratch_database.h"
#include "tests/frame/sample_report.h"

namespace dorvo::frame {
namespace {

using RecordsetPtr = std::shared_ptr<data::Recordset>;

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    basMain() = {};
    register_ports(ports);
  }
  ~SettingsTest() override {
    basMain() = {};
    register_ports(nullptr);
  }

  std::shared_ptr<RecordingPorts> ports = std::make_shared<RecordingPorts>();
  data::ScratchDatabase database{"CREATE TABLE T (A INT); INSERT INTO T VALUES (1), (2), (3);"};
};

TEST_F(SettingsTest, RecordsetIsReusedAndYieldsOnlyWhenItWasOpen) {
  basMain().myConn = data::Connection::open(database.path());
  RecordsetPtr rows;
  EXPECT_TRUE(OpenRecordset(rows, "SELECT A FROM T"));
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(ports->yields, 0);
  const data::Recordset* first = rows.get();

  EXPECT_TRUE(OpenRecordset(rows, "SELECT A FROM T WHERE A > 2"));
  EXPECT_EQ(rows.get(), first);
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(ports->yields, 1);

  rows->Close();
  EXPECT_TRUE(OpenRecordset(rows, "SELECT A FROM T WHERE A > 9"));
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(ports->yields, 1) << "a closed one needs no yield";
}

TEST_F(SettingsTest, CloseEmptiesTheVariable) {
  basMain().myConn = data::Connection::open(database.path());
  RecordsetPtr rows;
  EXPECT_TRUE(CloseRecordset(rows));
  OpenRecordset(rows, "SELECT A FROM T");
  const RecordsetPtr held = rows;
  EXPECT_TRUE(CloseRecordset(rows));
  EXPECT_EQ(rows, nullptr);
  EXPECT_EQ(held->State(), data::State::Closed);
}

TEST_F(SettingsTest, WithoutConnectionTheFirstOpenFails) {
  RecordsetPtr rows;
  try {
    OpenRecordset(rows, "SELECT A FROM T");
    ADD_FAILURE() << "it opened";
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.number(), value::Error::ObjectClosed) << failure.description();
  }
  basMain().myConn = data::Connection::open(database.path());
  EXPECT_TRUE(OpenRecordset(rows, "SELECT A FROM T")) << "the variable is still good";
}

TEST_F(SettingsTest, FolderBrowser) {
  std::string folder = "/before";
  EXPECT_TRUE(BrowseForFolder("Select the HTML pages folder", folder));
  EXPECT_EQ(folder, "/before") << "Cancel leaves it as it came";
  EXPECT_EQ(ports->browsed.back(), "Select the HTML pages folder|/before");
  EXPECT_EQ(basMain().InitialFolder, "/before");

  ports->chosen_folder = "/chosen";
  EXPECT_TRUE(BrowseForFolder("Select the HTML pages folder", folder));
  EXPECT_EQ(folder, "/chosen");
  EXPECT_EQ(basMain().InitialFolder, "/before");
}

}  // namespace
}  // namespace dorvo::frame
