// Launchers: which report gets the key, which is shown, what stays set.
#include "frame/launcher.h"

#include <gtest/gtest.h>

#include "tests/frame/sample_report.h"

namespace dorvo::frame {
namespace {

constexpr char kForm201[] = "Form201";
constexpr char kForm201132[] = "Form201132";
constexpr char kForm208[] = "Form208";
constexpr char kForm1[] = "Form1";
constexpr char kPTR[] = "PTRFormIIInew";
constexpr char kRegister[] = "BillRegister";
constexpr char kLabels[] = "AddressLabel";
constexpr char kFormVIII[] = "FormVIII";

class LauncherTest : public testing::Test {
 protected:
  LauncherTest() {
    basMain() = {};
    use_sample_reports<kForm201, kForm201132, kForm208, kForm1, kPTR, kRegister, kLabels, kFormVIII>();
    register_ports(ports);
  }
  ~LauncherTest() override { register_ports(nullptr); }

  static Launcher launcher(std::string_view name) { return Launcher(*find_launcher_class(name)); }
  static void put(Launcher& launcher, std::string_view member, const value::Variant& value) {
    launcher.put(*launcher.row().find(member), value);
  }
  std::string last_shown() const { return ports->shown.empty() ? "" : ports->shown.back()->Name(); }

  std::shared_ptr<RecordingPorts> ports = std::make_shared<RecordingPorts>();
};

TEST_F(LauncherTest, OneThirtyIsReadAtTheKeyAndAgainAtTheLaunch) {
  struct Case {
    std::string_view name;
    bool at_key, at_launch;
    std::string shown;
    std::int32_t its_key;
  };
  const Case cases[] = {
      {"clsForm201", false, false, "Form201", 41},
      {"clsForm201", true, true, "Form201132", 42},
      {"clsForm208", true, true, "Form208", 43},
      {"clsPTRFormIII", true, true, "PTRFormIIInew", 44},
  };
  for (const Case& c : cases) {
    Launcher form = launcher(c.name);
    put(form, "onethirty", c.at_key);
    put(form, "PropCMasterID", c.its_key);
    put(form, "onethirty", c.at_launch);
    form.SHowForm();
    EXPECT_EQ(last_shown(), c.shown);
    EXPECT_EQ(ports->shown.back()->PropCMasterID(), c.its_key) << c.name;
    EXPECT_EQ(basMain().onethirty, c.at_launch);
  }
}

TEST_F(LauncherTest, FlagWrittenBehindTheKeyOpensTheTwinWithoutIt) {
  Launcher form = launcher("clsForm201");
  put(form, "PropCMasterID", 7);
  put(form, "onethirty", true);
  form.SHowForm();
  EXPECT_EQ(last_shown(), "Form201132");
  EXPECT_EQ(ports->shown.back()->PropCMasterID(), 0);
  EXPECT_EQ(report_slot("Form201").PropCMasterID(), 7);
}

TEST_F(LauncherTest, LateKeyGoesOverInsideTheLaunch) {
  Launcher first = launcher("clsPTRFormIII");
  Launcher second = launcher("clsPTRFormIII");
  put(first, "PropCMasterID", 5);
  put(second, "PropCMasterID", 6);
  EXPECT_EQ(report_slot("PTRFormIIInew").PropCMasterID(), 0);
  first.SHowForm();
  EXPECT_EQ(report_slot("PTRFormIIInew").PropCMasterID(), 5);
  second.SHowForm();
  EXPECT_EQ(report_slot("PTRFormIIInew").PropCMasterID(), 6);
}

TEST_F(LauncherTest, OptionsStaySetForTheNextReportOfAnyClass) {
  Launcher first = launcher("clsForm208");
  for (const auto* name : {"ShowPageSetup", "BlankForm", "preprinted", "ShowFilingDate", "ShowCity"}) {
    put(first, name, true);
  }
  launcher("clsdealerlist");
  const Settings& all = basMain();
  EXPECT_TRUE(all.ShowPageSetup && all.BlankForm && all.preprinted && all.ShowFilingDate && all.ShowCity);
  Launcher other = launcher("clsForm1");
  put(other, "BlankForm", false);
  EXPECT_FALSE(all.BlankForm);
  EXPECT_TRUE(all.preprinted);
}

TEST_F(LauncherTest, OnlyTheBooleanTrueAsksForDraftAndFooter) {
  Launcher general = launcher("generalPrintClass");
  for (const auto& [given, expected] : {std::pair<value::Variant, bool>{true, true}, {1, false}, {-1, true}}) {
    put(general, "PrintQuality", given);
    put(general, "ShowFooter", given);
    put(general, "ShowCity", given);
    EXPECT_EQ(basMain().PrintQuality, expected) << value::text_of(given);
    EXPECT_EQ(basMain().ShowFooter, expected) << value::text_of(given);
    EXPECT_TRUE(basMain().ShowCity);
  }
}

TEST_F(LauncherTest, HeadingIsReplacedAtOnce) {
  Launcher form = launcher("clsBillRegister");
  put(form, "PropHeading", "Bills of the year");
  EXPECT_TRUE(ports->shown.empty());
  EXPECT_EQ(report_slot("BillRegister").control_as<engine::Label>("lblHeading").Caption(), "Bills of the year");
}

TEST_F(LauncherTest, DataGoesToTheReport) {
  Launcher form = launcher("clsAddressLabel");
  put(form, "PropCustomerIDList", "1,2,3");
  put(form, "ShowBorder", 1);
  put(form, "ShowFileNo", "False");
  const Report& report = report_slot("AddressLabel");
  EXPECT_EQ(report.property("propcustomeridlist"), value::Variant("1,2,3"));
  EXPECT_EQ(report.property("ShowBorder"), value::Variant(true));
  EXPECT_EQ(report.property("ShowFileNo"), value::Variant(false));
  EXPECT_TRUE(report.property("ShowGroupName").is_null());
}

TEST_F(LauncherTest, YridIsTheLaunchersOwn) {
  Launcher form = launcher("clsFormVIII");
  EXPECT_TRUE(form.own().is_null());
  put(form, "yrid", 3);
  EXPECT_EQ(form.own(), value::Variant(3));
  put(form, "Prop_yrid", "2009-10");
  EXPECT_EQ(form.own(), value::Variant("2009-10"));
  EXPECT_TRUE(launcher("clsFormVIII").own().is_null());
  EXPECT_TRUE(report_slot("FormVIII").property("yrid").is_null());
}

TEST_F(LauncherTest, InertClassesAcceptEverythingAndKeepNothing) {
  for (const auto* name : {"clsInterestMaster", "clsInterestMasterVat"}) {
    Launcher inert = launcher(name);
    for (const auto& group : inert.row().members) {
      for (const Member& member : group) {
        if (!member.is_method()) inert.put(member, 1);
      }
    }
    inert.SHowForm();
    EXPECT_FALSE(basMain().ShowPageSetup);
  }
  EXPECT_TRUE(ports->shown.empty());
}

TEST_F(LauncherTest, ReportThatIsNotBuiltTakesItsPropertiesAndSaysSo) {
  set_report_classes({{"Form207"}});
  Launcher form = launcher("clsForm207");
  put(form, "PropCMasterID", 1);
  put(form, "BlankForm", true);
  EXPECT_TRUE(basMain().BlankForm);
  try {
    form.SHowForm();
    ADD_FAILURE() << "it opened";
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.number(), value::Error::ReportNotBuilt);
    EXPECT_EQ(failure.description(), "The report Form207 is not built in this version of the library");
  }
}

TEST_F(LauncherTest, WrongValueWritesNothing) {
  Launcher form = launcher("clsForm1");
  put(form, "PropCMasterID", 9);
  EXPECT_THROW(put(form, "PropCMasterID", "abc"), value::Failure);
  EXPECT_EQ(report_slot("Form1").PropCMasterID(), 9);
  put(form, "BlankForm", true);
  EXPECT_THROW(put(form, "BlankForm", "perhaps"), value::Failure);
  EXPECT_TRUE(basMain().BlankForm);
}

}  // namespace
}  // namespace dorvo::frame
