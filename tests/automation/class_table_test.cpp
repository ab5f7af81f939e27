// The public classes, stated three times: as hosts were promised them (here), in the library, and in the type library.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <vector>

#include "tests/automation/caller.h"

namespace dorvo::automation {
namespace {

constexpr auto kFive = "ShowPageSetup BlankForm preprinted ShowFilingDate ShowCity ";

struct Class {
  std::string name;
  std::string members;  // in any order, "+" for the five options, without SHowForm
};

// Everything but generalPrintClass has SHowForm too.
const Class kClasses[] = {
    {"clsForm201", "PropCMasterID + onethirty"},
    {"clsForm202", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm203", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm204", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm205", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm206", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm207", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm214", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm208", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm209", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm209E", "PropCMasterID ConnectionString + onethirty"},
    {"clsForm210", "PropCMasterID ConnectionString + onethirty"},
    {"clsCSTReturnIIIB", "PropCMasterID ShowPageSetup ShowFilingDate ShowCity onethirty"},
    {"clsForm1", "PropCMasterID ConnectionString +"},
    {"clsForm2", "PropCMasterID +"},
    {"clsForm3", "PropCMasterID +"},
    {"clsForm4", "PropCMasterID +"},
    {"clsForm5", "PropCMasterID +"},
    {"clsFormVIII", "PropCMasterID yrid Prop_yrid ConnectionString +"},
    {"clsPTRFormIII", "PropCMasterID ConnectionString + onethirty"},
    {"clsBill", "PropBillMasterIDs PropSortBy PropCMasterID ShowPageSetup BlankForm preprinted one"},
    {"clsReceipt", "PropReceiptMasterIDs PropSortBy PropCMasterID ShowPageSetup BlankForm preprinted"},
    {"clsBillRegister", "PropCMasterID PropBillMasterIDs PropSortBy PropHeading ShowPageSetup BlankForm preprinted"},
    {"clsReceiptRegiser",
     "PropHeading PropReceiptMasterIDs PropSortBy PropCMasterID ShowPageSetup BlankForm preprinted"},
    {"clsSumBill", "PropCMasterID ShowPageSetup BlankForm preprinted"},
    {"clsDealerBill", "PropCMasterID PropBillMasterIDs PropSortBy PropHeading ShowPageSetup BlankForm preprinted"},
    {"clsDealerReceipt",
     "PropReceiptMasterIDs PropSortBy PropCMasterID PropHeading ShowPageSetup BlankForm preprinted"},
    {"clscompositionst", "PropCMasterID PropmCFillingTYpe ShowPageSetup"},
    {"clsStatmentShort", "PropCMasterID PropmCFillingTYpe ShowPageSetup"},
    {"clsLiability0910", "PropCustomerName PropYearID"},
    {"clsdealerlist", ""},
    {"clsAddressLabel", "PropCustomerIDList ShowBorder ShowFileNo ShowGroupName ConnectionString"},
    {"clsInterestMaster", "PropYearID PropCustomerCode PropStatementTYpe PropInterestTYpe ShowPageSetup"},
    {"clsInterestMasterVat",
     "PropCMasterID PropYearID PropCustomerCode PropmCFillingTYpe PropStatementTYpe ShowPageSetup"},
    {"generalPrintClass", "ConnectionString PrintQuality myConn ShowFilingDate ShowCity ShowFooter UserName AppPath"},
};

// Types that a host sees, where they are not what the name has in most classes.
std::string type_promised(const std::string& name, const std::string& member) {
  static const std::map<std::string, std::string> usual = {
      {"PropCMasterID", "Long"},
      {"PropBillMasterIDs", "String"},
      {"PropReceiptMasterIDs", "String"},
      {"PropSortBy", "String"},
      {"PropCustomerIDList", "String"},
      {"PropmCFillingTYpe", "String"},
      {"PropCustomerName", "String"},
      {"PropYearID", "String"},
      {"PropHeading", "String"},
      {"PropStatementTYpe", "String"},
      {"PropInterestTYpe", "String"},
      {"PropCustomerCode", "Long"},
      {"ShowBorder", "Variant"},
      {"ShowFileNo", "Variant"},
      {"ShowGroupName", "Variant"},
      {"ConnectionString", "Variant"},
      {"yrid", "Variant"},
      {"Prop_yrid", "Variant"},
      {"myConn", "Object"},
      {"UserName", "String"},
      {"AppPath", "String"},
      {"SHowForm", "Variant"},
  };
  if (name.starts_with("clsInterestMaster") && member == "PropYearID") return "Long";
  if (name == "generalPrintClass" && member == "ConnectionString") return "String";
  const auto found = usual.find(member);
  return found == usual.end() ? "Boolean" : found->second;
}

// "class.member" to "id type use".
using Table = std::map<std::string, std::string>;

std::string use_of(bool is_method, bool is_readable, bool by_reference) {
  return is_method ? "method" : is_readable ? "read-write" : by_reference ? "reference" : "write";
}

std::vector<std::string> words(const std::string& text) {
  std::istringstream in(std::regex_replace(text, std::regex("\\+"), kFive));
  return {std::istream_iterator<std::string>(in), {}};
}

Table promised() {
  Table table;
  for (const Class& row : kClasses) {
    std::vector<std::string> members = words(row.members);
    if (row.name != "generalPrintClass") members.push_back("SHowForm");
    for (const std::string& member : members) {
      table[row.name + "." + member] =
          type_promised(row.name, member) + " " + use_of(member == "SHowForm", member == "yrid", member == "myConn");
    }
  }
  return table;
}

Table in_library(bool with_ids) {
  struct Filling {
    Table table;
    bool with_ids;
  } filling{{}, with_ids};
  DorvoEachMember(
      nullptr,
      [](void* context, const DorvoMember* m) {
        auto& [table, ids] = *static_cast<Filling*>(context);
        const std::string key = std::string(m->class_name) + "." + m->name;
        EXPECT_FALSE(table.contains(key)) << key;
        table[key] = (ids ? std::to_string(m->id) + " " : "") + m->type + " " +
                     use_of(m->is_method, m->is_readable, m->by_reference);
      },
      &filling);
  return filling.table;
}

std::string whole_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

const std::string& idl() {
  static const std::string text = whole_file(DORVO_SOURCE_DIR "/automation/DorvoFormDLL.idl");
  return text;
}

TEST(ClassTable, LibraryHasWhatHostsWerePromised) {
  EXPECT_EQ(in_library(false), promised());
}

TEST(ClassTable, TypeLibraryStatesTheSame) {
  static const std::map<std::string, std::string> types = {{"VARIANT_BOOL", "Boolean"}, {"long", "Long"},
                                                           {"BSTR", "String"},          {"VARIANT", "Variant"},
                                                           {"IDispatch*", "Object"},    {"VARIANT ", "Variant"}};
  const std::regex piece(R"(dispinterface _(\w+)\s*\{)"
                         R"(|\[id\((\d+)\)\] VARIANT (\w+)\(\);)"
                         R"(|\[id\((\d+)\), (propputref|propput|propget)\] (\S+) (\w+)\((?:\[in\] (\S+) value)?\);)");
  Table table;
  std::string name;
  for (std::sregex_iterator it(idl().begin(), idl().end(), piece), end; it != end; ++it) {
    const std::smatch& m = *it;
    if (m[1].matched) {
      name = m[1];
    } else if (m[2].matched) {
      table[name + "." + m[3].str()] = m[2].str() + " Variant method";
    } else {
      const bool is_get = m[5] == "propget";
      std::string& row = table[name + "." + m[7].str()];
      const std::string use = use_of(false, is_get || row.ends_with("read-write"), m[5] == "propputref");
      row = m[4].str() + " " + types.at(is_get ? m[6].str() : m[8].str()) + " " + use;
    }
  }
  EXPECT_EQ(table, in_library(true));
}

TEST(ClassTable, ClassIdsOfTheTypeLibraryCreateThoseClasses) {
  const std::regex coclass(R"(\[uuid\(([0-9A-F-]{36})\)\]\s*coclass (\w+)\s*\{\s*\[default\] dispinterface _(\w+);)");
  const std::regex dispinterface(R"(\[uuid\(([0-9A-F-]{36})\), hidden\]\s*dispinterface _(\w+))");
  const auto guid = [](const std::string& text) {
    GUID id{};
    unsigned w[11];
    EXPECT_EQ(std::sscanf(text.c_str(), "%8x-%4x-%4x-%2x%2x-%2x%2x%2x%2x%2x%2x", &w[0], &w[1], &w[2], &w[3], &w[4],
                          &w[5], &w[6], &w[7], &w[8], &w[9], &w[10]),
              11);
    id.Data1 = w[0];
    id.Data2 = static_cast<std::uint16_t>(w[1]);
    id.Data3 = static_cast<std::uint16_t>(w[2]);
    for (int i = 0; i < 8; ++i) id.Data4[i] = static_cast<std::uint8_t>(w[3 + i]);
    return id;
  };
  std::map<std::string, GUID> interfaces;
  for (std::sregex_iterator it(idl().begin(), idl().end(), dispinterface), end; it != end; ++it) {
    interfaces[(*it)[2]] = guid((*it)[1]);
  }
  int count = 0;
  for (std::sregex_iterator it(idl().begin(), idl().end(), coclass), end; it != end; ++it, ++count) {
    const std::string name = (*it)[2];
    EXPECT_EQ(name, (*it)[3].str());
    CLSID clsid{};
    EXPECT_EQ(DorvoClassID(("dorvoformdll." + name).c_str(), &clsid), S_OK) << name;
    EXPECT_EQ(clsid, guid((*it)[1])) << name;
    const Caller object(name);
    void* own = nullptr;
    EXPECT_EQ(object->QueryInterface(interfaces.at(name), &own), S_OK) << name;
    if (own) static_cast<IUnknown*>(own)->Release();
  }
  EXPECT_EQ(count, static_cast<int>(std::size(kClasses)));
}

TEST(ClassTable, CompiledTypeLibraryHoldsEveryName) {
  const std::string path = DORVO_TLB;
  if (path.empty()) GTEST_SKIP() << "no widl here, so no type library";
  const std::string bytes = whole_file(path);
  ASSERT_EQ(bytes.substr(0, 4), "MSFT");
  for (const auto& [key, use] : promised()) {
    const std::size_t point = key.find('.');
    EXPECT_NE(bytes.find(key.substr(0, point)), std::string::npos) << key;
    EXPECT_NE(bytes.find(key.substr(point + 1)), std::string::npos) << key;
  }
}

}  // namespace
}  // namespace dorvo::automation
