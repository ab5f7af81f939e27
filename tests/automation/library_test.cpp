// The library as a stranger loads it: what it exports, by plain tables of functions, registration, a printed form.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "practice/practice.h"
#include "tests/automation/caller.h"

namespace dorvo::automation {
namespace {

namespace fs = std::filesystem;

class Folder {
 public:
  Folder() {
    std::string pattern = (fs::temp_directory_path() / "dorvo-automation-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { fs::remove_all(path_); }
  fs::path operator/(const std::string& name) const { return path_ / name; }

 private:
  fs::path path_;
};

std::string whole_file(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::set<std::string> names_in(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

TEST(Library, ExportsTheServerFunctionsAndItsOwnEntriesOnly) {
  FILE* list = popen("nm -D --defined-only \"" DORVO_LIBRARY "\"", "r");
  ASSERT_NE(list, nullptr);
  std::set<std::string> server;
  std::array<char, 4096> line{};
  while (std::fgets(line.data(), line.size(), list)) {
    std::string name(line.data());
    name = name.substr(name.find_last_of(' ') + 1);
    name = name.substr(0, name.find_last_not_of('\n') + 1);
    if (name.starts_with("Dll")) {
      server.insert(name);
    } else {
      EXPECT_TRUE(name.starts_with("Dorvo")) << name;
    }
  }
  ASSERT_EQ(pclose(list), 0);
  EXPECT_EQ(server, (std::set<std::string>{"DllGetClassObject", "DllCanUnloadNow", "DllRegisterServer",
                                           "DllUnregisterServer"}));
}

// What a host in C has: an object is a pointer to a pointer to a table of functions.
struct Plain;
struct PlainTable {
  HRESULT (*query_interface)(Plain*, const IID*, void**);
  ULONG (*add_ref)(Plain*);
  ULONG (*release)(Plain*);
  HRESULT (*fourth)(Plain*, void*, const IID*, void**);  // CreateInstance of a class object, GetTypeInfoCount else
  HRESULT (*get_type_info)(Plain*, UINT, LCID, void**);
  HRESULT (*get_ids_of_names)(Plain*, const IID*, OLECHAR**, UINT, LCID, DISPID*);
  HRESULT (*invoke)(Plain*, DISPID, const IID*, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*);
};
struct Plain {
  const PlainTable* table;
};

TEST(Library, WorksByPlainTablesOfFunctions) {
  void* library = dlopen(DORVO_LIBRARY, RTLD_NOW);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto class_object =
      reinterpret_cast<HRESULT (*)(const CLSID*, const IID*, void**)>(dlsym(library, "DllGetClassObject"));
  const auto class_id = reinterpret_cast<HRESULT (*)(const char*, CLSID*)>(dlsym(library, "DorvoClassID"));
  ASSERT_TRUE(class_object && class_id);
  CLSID clsid{};
  void* made = nullptr;
  ASSERT_EQ(class_id("DorvoFormDLL.clsFormVIII", &clsid), S_OK);
  ASSERT_EQ(class_object(&clsid, &IID_IClassFactory, &made), S_OK);
  auto* factory = static_cast<Plain*>(made);
  ASSERT_EQ(factory->table->fourth(factory, nullptr, &IID_IDispatch, &made), S_OK);
  auto* object = static_cast<Plain*>(made);

  std::u16string name = u"YRID";
  OLECHAR* names[] = {name.data()};
  DISPID id = 0;
  ASSERT_EQ(object->table->get_ids_of_names(object, &GUID_NULL, names, 1, 0, &id), S_OK);
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = 2009;
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS params{&value, &put, 1, 1};
  ASSERT_EQ(object->table->invoke(object, id, &GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr),
            S_OK);
  VARIANT read{};
  params = {};
  ASSERT_EQ(object->table->invoke(object, id, &GUID_NULL, 0, DISPATCH_PROPERTYGET, &params, &read, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(read.vt, VT_I4);
  EXPECT_EQ(read.lVal, 2009);
  EXPECT_EQ(object->table->release(object), 0u);
  factory->table->release(factory);
  dlclose(library);
}

TEST(Library, RegistersForTheUserAndTakesItBack) {
  const Folder data;
  setenv("XDG_DATA_HOME", (data / "").c_str(), 1);
  ASSERT_EQ(DllRegisterServer(), S_OK) << DorvoLastError();
  const fs::path file = data / "dorvoform/classes";
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  int classes = 0;
  while (std::getline(in, line)) {
    const std::size_t first = line.find('\t'), second = line.rfind('\t');
    CLSID clsid{};
    EXPECT_EQ(DorvoClassID(line.substr(0, first).c_str(), &clsid), S_OK) << line;
    EXPECT_EQ(second - first, 39u) << line;
    EXPECT_EQ(fs::canonical(line.substr(second + 1)), fs::canonical(DORVO_LIBRARY));
    ++classes;
  }
  EXPECT_EQ(classes, 35);
  EXPECT_EQ(names_in(file.parent_path()), std::set<std::string>{"classes"});
  EXPECT_EQ(DllRegisterServer(), S_OK) << "again";
  EXPECT_EQ(DllUnregisterServer(), S_OK);
  EXPECT_FALSE(fs::exists(file));
  EXPECT_EQ(DllUnregisterServer(), S_OK) << "nothing to remove is no failure";

  std::ofstream(file) << "# program id, class id, shared library\nDorvoFormDLL.clsForm1\t{}\t/elsewhere/lib.so\n";
  EXPECT_EQ(DllUnregisterServer(), S_OK);
  EXPECT_TRUE(fs::exists(file)) << "another library's registration is left alone";

  setenv("XDG_DATA_HOME", "/proc", 1);
  EXPECT_EQ(DllRegisterServer(), SELFREG_E_CLASS);
  EXPECT_NE(std::string(DorvoLastError()).find("/proc"), std::string::npos);
  unsetenv("XDG_DATA_HOME");
}

// ---- printing ----

class Printing : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder = new Folder;
    practice::write_practice((*folder / "practice.db").string(), {.dealers = 0, .years = 1, .seed = 1});
  }
  static void TearDownTestSuite() { delete folder; }

  static std::string path(const std::string& name) { return (*folder / name).string(); }
  static void open_practice() {
    const Caller general("generalPrintClass");
    IDispatch* opened = nullptr;
    ASSERT_EQ(DorvoOpenConnection(path("practice.db").c_str(), &opened), S_OK) << DorvoLastError();
    const Caller connection(opened);
    ASSERT_EQ(connection.get("State").result.lVal, 1);
    ASSERT_EQ(general.put("ConnectionString", text(path("practice.db"))).code, S_OK);
    ASSERT_EQ(general.put_reference("myConn", object(opened)).code, S_OK);
  }

  static Folder* folder;
};
Folder* Printing::folder = nullptr;

TEST_F(Printing, FormToFilesByNameAlone) {
  open_practice();
  ASSERT_EQ(DorvoAddOutput(path("form.json").c_str()), S_OK);
  ASSERT_EQ(DorvoAddOutput(path("form.pdf").c_str()), S_OK);
  const Caller form("clsForm1");
  ASSERT_EQ(form.put("PropCMasterID", whole(2)).code, S_OK);
  const Answer answer = form.call("SHowForm");
  EXPECT_EQ(answer.code, S_OK) << answer.description;
  EXPECT_EQ(answer.result.vt, VT_EMPTY);
  DorvoOutcome outcome{};
  ASSERT_EQ(DorvoEndJob("clsForm1", nullptr, &outcome), S_OK);
  EXPECT_EQ(outcome.pages, 1u);
  EXPECT_EQ(outcome.failed, 0);
  EXPECT_EQ(whole_file(path("form.pdf")).substr(0, 5), "%PDF-");
  EXPECT_NE(whole_file(path("form.json")).find("\"name\": \"txtName\""), std::string::npos);
}

TEST_F(Printing, FailureReachesTheHostWithItsDescription) {
  const Caller general("generalPrintClass");
  general.put("ConnectionString", text(path("nowhere.db")));
  const Caller form("clsForm1");
  const Answer answer = form.call("SHowForm");
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.scode & 0x7FFF0000, 0x000A0000);
  EXPECT_NE(answer.description.find("nowhere.db"), std::string::npos) << answer.description;
  DorvoOutcome outcome{};
  DorvoEndJob("clsForm1", nullptr, &outcome);
  EXPECT_NE(outcome.failed, 0);
}

TEST_F(Printing, ReportThatIsNotBuiltSaysItsName) {
  const Caller form("clsdealerlist");
  const Answer answer = form.call("SHowForm");
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_NE(answer.description.find("DealerList"), std::string::npos) << answer.description;
}

TEST_F(Printing, InertClassesOpenNothing) {
  for (const auto* name : {"clsInterestMaster", "clsInterestMasterVat"}) {
    const Caller form(name);
    EXPECT_EQ(form.put("PropYearID", whole(3)).code, S_OK);
    EXPECT_EQ(form.put("PropYearID", text("abc")).code, DISP_E_TYPEMISMATCH);
    const Answer answer = form.call("SHowForm");
    EXPECT_EQ(answer.code, S_OK);
    EXPECT_EQ(answer.result.vt, VT_EMPTY);
  }
}

TEST_F(Printing, ClosedConnectionTellsItsState) {
  IDispatch* opened = nullptr;
  ASSERT_EQ(DorvoOpenConnection(path("practice.db").c_str(), &opened), S_OK);
  const Caller connection(opened);
  EXPECT_EQ(connection.call("Close").code, S_OK);
  EXPECT_EQ(connection.get("State").result.lVal, 0);
  EXPECT_EQ(connection.call("State").code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(connection.put("State", whole(1)).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(DorvoOpenConnection(path("nowhere.db").c_str(), &opened), E_FAIL);
  EXPECT_EQ(opened, nullptr);
  EXPECT_NE(std::string(DorvoLastError()), "");
}

TEST_F(Printing, ReportByNameTakesEveryMember) {
  open_practice();
  IDispatch* made = nullptr;
  ASSERT_EQ(DorvoCreateReport("form4", &made), S_OK);
  const Caller report(made);
  EXPECT_EQ(report.put("PropCMasterID", text("1")).code, S_OK);
  EXPECT_EQ(report.put("PropSortBy", text("Name")).code, S_OK);
  EXPECT_EQ(report.call("SHowForm").code, S_OK);
  DorvoOutcome outcome{};
  DorvoEndJob("Form4", nullptr, &outcome);
  EXPECT_EQ(outcome.pages, 1u);
  EXPECT_EQ(DorvoCreateReport("Form999", &made), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(made, nullptr);
}

TEST_F(Printing, OutputsThatAreRefused) {
  EXPECT_EQ(DorvoAddOutput("form.doc"), E_INVALIDARG);
  EXPECT_EQ(DorvoAddOutput("form"), E_INVALIDARG);
  EXPECT_EQ(DorvoAddOutput("folder.pdf/form"), E_INVALIDARG);
  EXPECT_EQ(DorvoAddOutput(path("a.pdf").c_str()), S_OK);
  EXPECT_EQ(DorvoAddOutput(path("a.pdf").c_str()), E_INVALIDARG) << "twice";
  EXPECT_EQ(DorvoOutputOption("PDF.Version=0"), S_OK);
  EXPECT_EQ(DorvoOutputOption("pdf.version=one"), E_INVALIDARG);
  EXPECT_EQ(DorvoOutputOption("PDF.Colour=1"), E_INVALIDARG);
  EXPECT_EQ(DorvoOutputOption("Version=1"), E_INVALIDARG);
  DorvoOutcome outcome{};
  EXPECT_EQ(DorvoEndJob("", nullptr, &outcome), S_OK);
  EXPECT_FALSE(fs::exists(path("a.pdf")));
}

}  // namespace
}  // namespace dorvo::automation
