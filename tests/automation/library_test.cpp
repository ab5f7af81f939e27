// The library as a stranger loads it: what it exports, by plain tables of functions, registration, a printed form.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "tests/automation/caller.h"
#include "tests/data/scratch_database.h"

namespace dorvo::automation {
namespace {

namespace fs = std::filesystem;

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
  const data::ScratchFolder folder;
  setenv("XDG_DATA_HOME", folder.file("").c_str(), 1);
  ASSERT_EQ(DllRegisterServer(), S_OK) << DorvoLastError();
  const fs::path file = folder.file("dorvoform/classes");
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

TEST(Library, FailureReachesTheHostWithItsDescription) {
  const Caller general("generalPrintClass");
  general.put("ConnectionString", text("/nowhere.db"));
  const Caller form("clsForm1");
  const Answer answer = form.call("SHowForm");
  EXPECT_EQ(answer.code, DISP_E_EXCEPTION);
  EXPECT_EQ(answer.scode & 0x7FFF0000, 0x000A0000);
  EXPECT_NE(answer.description.find("nowhere.db"), std::string::npos) << answer.description;
  DorvoOutcome outcome{};
  DorvoEndJob("clsForm1", nullptr, &outcome);
  EXPECT_NE(outcome.failed, 0);
}

TEST(Library, ClosedConnectionTellsItsState) {
  const data::ScratchDatabase database;
  IDispatch* opened = nullptr;
  ASSERT_EQ(DorvoOpenConnection(database.path().c_str(), &opened), S_OK);
  const Caller connection(opened);
  EXPECT_EQ(connection.call("Close").code, S_OK);
  EXPECT_EQ(connection.get("State").result.lVal, 0);
  EXPECT_EQ(connection.call("State").code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(connection.put("State", whole(1)).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(DorvoOpenConnection("/nowhere.db", &opened), E_FAIL);
  EXPECT_EQ(opened, nullptr);
  EXPECT_NE(std::string(DorvoLastError()), "");
}

}  // namespace
}  // namespace dorvo::automation
