// Wrong names, wrong types, too many arguments, use after release: the usual codes, never a crash.
#include <gtest/gtest.h>

#include <limits>

#include "tests/automation/caller.h"

namespace dorvo::automation {
namespace {

constexpr IID kForeign{0x12345678, 1, 2, {1, 2, 3, 4, 5, 6, 7, 8}};

TEST(Server, ClassObjects) {
  void* object = &object;
  EXPECT_EQ(DllGetClassObject(kForeign, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
  CLSID clsid{};
  ASSERT_EQ(DorvoClassID("DorvoFormDLL.clsForm1", &clsid), S_OK);
  EXPECT_EQ(DllGetClassObject(clsid, IID_IDispatch, &object), E_NOINTERFACE);
  EXPECT_EQ(DllGetClassObject(clsid, IID_IClassFactory, nullptr), E_POINTER);
  ASSERT_EQ(DllGetClassObject(clsid, IID_IUnknown, &object), S_OK);
  auto* factory = static_cast<IClassFactory*>(object);
  EXPECT_EQ(factory->CreateInstance(factory, IID_IDispatch, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(factory->CreateInstance(nullptr, kForeign, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, nullptr), E_POINTER);
}

TEST(Server, ProgramIds) {
  CLSID clsid{};
  for (const auto* name : {"DorvoFormDLL.clsForm1", "dorvoformdll.CLSFORM1"})
    EXPECT_EQ(DorvoClassID(name, &clsid), S_OK);
  for (const auto* name : {"clsForm1", "DorvoFormDLL.", "DorvoFormDLL.Form1", "Other.clsForm1", ""}) {
    EXPECT_EQ(DorvoClassID(name, &clsid), CO_E_CLASSSTRING) << name;
  }
}

TEST(Server, UnloadsWhenNothingIsHeld) {
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
  CLSID clsid{};
  void* factory = nullptr;
  DorvoClassID("DorvoFormDLL.clsBill", &clsid);
  DllGetClassObject(clsid, IID_IClassFactory, &factory);
  {
    const Caller bill("clsBill");
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  }
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
  static_cast<IClassFactory*>(factory)->LockServer(1);
  EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
  static_cast<IClassFactory*>(factory)->LockServer(0);
  EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST(Dispatch, NamesIgnoreCase) {
  const Caller form("clsForm1");
  EXPECT_EQ(form.id("SHowForm"), form.id("showform"));
  EXPECT_EQ(form.id("PROPCMASTERID"), form.id("PropCMasterID"));
  EXPECT_NE(form.id("PropCMasterID"), DISPID_UNKNOWN);
  EXPECT_EQ(form.id("PropHeading"), DISPID_UNKNOWN);

  std::u16string member = u"PropCMasterID", argument = u"value";
  OLECHAR* names[] = {member.data(), argument.data()};
  DISPID ids[2] = {0, 0};
  EXPECT_EQ(form->GetIDsOfNames(GUID_NULL, names, 2, 0, ids), DISP_E_UNKNOWNNAME) << "arguments have no names";
  EXPECT_EQ(ids[0], form.id("PropCMasterID"));
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);
  EXPECT_EQ(form->GetIDsOfNames(kForeign, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(form->GetIDsOfNames(GUID_NULL, nullptr, 1, 0, ids), E_INVALIDARG);
}

TEST(Dispatch, NoTypeInformationAtRunTime) {
  const Caller form("clsForm1");
  UINT count = 7;
  EXPECT_EQ(form->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 0u);
  ITypeInfo* info = nullptr;
  EXPECT_EQ(form->GetTypeInfo(0, 0, &info), DISP_E_BADINDEX);
}

TEST(Dispatch, WrongUse) {
  const Caller form("clsForm1");
  const Caller eight("clsFormVIII");
  Value key = whole(1);
  VARIANT two[] = {whole(1), whole(2)};
  struct Case {
    const char* what;
    const Caller& object;
    const char* member;
    WORD flags;
    VARIANT* arguments;
    UINT count;
    HRESULT expected;
  };
  const Case cases[] = {
      {"put", form, "PropCMasterID", DISPATCH_PROPERTYPUT, &key, 1, S_OK},
      {"read of a write-only property", form, "PropCMasterID", DISPATCH_PROPERTYGET, nullptr, 0, DISP_E_MEMBERNOTFOUND},
      {"call of a property", form, "PropCMasterID", DISPATCH_METHOD, nullptr, 0, DISP_E_MEMBERNOTFOUND},
      {"put of a method", form, "SHowForm", DISPATCH_PROPERTYPUT, &key, 1, DISP_E_MEMBERNOTFOUND},
      {"read of a method", form, "SHowForm", DISPATCH_PROPERTYGET, nullptr, 0, DISP_E_MEMBERNOTFOUND},
      {"put by reference of a value", form, "PropCMasterID", DISPATCH_PROPERTYPUTREF, &key, 1, DISP_E_MEMBERNOTFOUND},
      {"put either way", form, "PropCMasterID", DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, &key, 1, S_OK},
      {"no argument", form, "PropCMasterID", DISPATCH_PROPERTYPUT, nullptr, 0, DISP_E_BADPARAMCOUNT},
      {"two arguments", form, "PropCMasterID", DISPATCH_PROPERTYPUT, two, 2, DISP_E_BADPARAMCOUNT},
      {"argument to a method", form, "SHowForm", DISPATCH_METHOD, &key, 1, DISP_E_BADPARAMCOUNT},
      {"argument to a read", eight, "yrid", DISPATCH_PROPERTYGET, &key, 1, DISP_E_BADPARAMCOUNT},
      {"count without arguments", form, "PropCMasterID", DISPATCH_PROPERTYPUT, nullptr, 1, E_INVALIDARG},
      {"other writer is not read", eight, "Prop_yrid", DISPATCH_PROPERTYGET, nullptr, 0, DISP_E_MEMBERNOTFOUND},
      {"read as scripts do", eight, "yrid", DISPATCH_PROPERTYGET | DISPATCH_METHOD, nullptr, 0, S_OK},
      {"no kind of use", form, "SHowForm", 0, nullptr, 0, DISP_E_MEMBERNOTFOUND},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.object.invoke(c.object.id(c.member), c.flags, c.arguments, c.count).code, c.expected) << c.what;
  }
  EXPECT_EQ(form.invoke(9999, DISPATCH_METHOD, nullptr, 0).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(form.invoke(DISPID_UNKNOWN, DISPATCH_METHOD, nullptr, 0).code, DISP_E_MEMBERNOTFOUND);
  DISPPARAMS params{};
  EXPECT_EQ(form->Invoke(1, kForeign, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(form->Invoke(1, GUID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
  DISPID strange = 5;
  params = {&key, &strange, 1, 1};
  EXPECT_EQ(
      form->Invoke(form.id("PropCMasterID"), GUID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr),
      DISP_E_NONAMEDARGS);
}

// ---- kinds of argument ----

TEST(Dispatch, ArgumentsOfEveryKind) {
  std::int16_t small = 3;
  std::int32_t number = 4;
  double real = 5.4;
  VARIANT_BOOL flag = VARIANT_TRUE;
  Value word = text("17");
  BSTR word_behind = word.bstrVal;
  Value inner = whole(9);
  Value by_number = reference(VT_I4, &number);
  Value money = of_kind(VT_CY);
  money.cyVal = 123456;
  Value decimal = of_kind(VT_DECIMAL);
  decimal.reserved1 = 0x8001;  // minus, one place
  decimal.ullVal = 125;
  Value date = of_kind(VT_DATE);
  date.date = 39904.0;  // 1/4/2009
  Value missing = of_kind(VT_ERROR);
  missing.scode = DISP_E_PARAMNOTFOUND;
  Value far_date = of_kind(VT_DATE);
  far_date.date = 1e300;
  Value not_a_number = of_kind(VT_R8);
  not_a_number.dblVal = std::numeric_limits<double>::quiet_NaN();

  struct Case {
    const char* what;
    const VARIANT& given;
    HRESULT as_long;
    HRESULT as_boolean;
    HRESULT as_text;
  };
  const Case cases[] = {
      {"VT_EMPTY", of_kind(VT_EMPTY), S_OK, S_OK, S_OK},
      {"VT_NULL", of_kind(VT_NULL), DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH},
      {"VT_I4", whole(1), S_OK, S_OK, S_OK},
      {"VT_BOOL", boolean(VARIANT_TRUE), S_OK, S_OK, S_OK},
      {"number in a text", text("12"), S_OK, S_OK, S_OK},
      {"True in a text", text("tRUE"), DISP_E_TYPEMISMATCH, S_OK, S_OK},
      {"other text", text("abc"), DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH, S_OK},
      {"no string", of_kind(VT_BSTR), DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH, S_OK},
      {"too large", text("3000000000"), DISP_E_OVERFLOW, S_OK, S_OK},
      {"NaN", not_a_number, DISP_E_OVERFLOW, S_OK, DISP_E_OVERFLOW},
      {"VT_CY", money, S_OK, S_OK, S_OK},
      {"VT_DECIMAL", decimal, S_OK, S_OK, S_OK},
      {"VT_DATE", date, S_OK, S_OK, S_OK},
      {"date of no calendar", far_date, DISP_E_OVERFLOW, DISP_E_OVERFLOW, DISP_E_OVERFLOW},
      {"VT_I2 by reference", reference(VT_I2, &small), S_OK, S_OK, S_OK},
      {"VT_R8 by reference", reference(VT_R8, &real), S_OK, S_OK, S_OK},
      {"VT_BOOL by reference", reference(VT_BOOL, &flag), S_OK, S_OK, S_OK},
      {"VT_BSTR by reference", reference(VT_BSTR, &word_behind), S_OK, S_OK, S_OK},
      {"variant by reference", reference(VT_VARIANT, static_cast<VARIANT*>(&inner)), S_OK, S_OK, S_OK},
      {"reference behind a variant", reference(VT_VARIANT, static_cast<VARIANT*>(&by_number)), S_OK, S_OK, S_OK},
      {"reference to nothing", reference(VT_I4, nullptr), E_INVALIDARG, E_INVALIDARG, E_INVALIDARG},
      {"array", of_kind(VT_ARRAY | VT_I4), DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH},
      {"object", of_kind(VT_DISPATCH), DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH},
      {"left out", missing, DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTOPTIONAL, DISP_E_PARAMNOTOPTIONAL},
      {"no kind", of_kind(4095), DISP_E_BADVARTYPE, DISP_E_BADVARTYPE, DISP_E_BADVARTYPE},
  };
  const Caller bill("clsBill");
  for (const Case& c : cases) {
    EXPECT_EQ(bill.put("PropCMasterID", c.given).code, c.as_long) << c.what;
    EXPECT_EQ(bill.put("one", c.given).code, c.as_boolean) << c.what;
    EXPECT_EQ(bill.put("PropSortBy", c.given).code, c.as_text) << c.what;
  }
}

TEST(Dispatch, ValuesComeBackAsTheyWent) {
  const Caller form("clsFormVIII");
  EXPECT_EQ(form.get("yrid").result.vt, VT_EMPTY);
  form.put("yrid", whole(7));
  EXPECT_EQ(form.get("yrid").result.vt, VT_I4);
  EXPECT_EQ(form.get("yrid").result.lVal, 7);
  form.put("Prop_yrid", text("2009-10 \xE0\xA4\xB6 \xF0\x9F\x98\x80"));
  const Answer answer = form.get("YRID");
  ASSERT_EQ(answer.result.vt, VT_BSTR);
  EXPECT_EQ(utf8({answer.result.bstrVal, SysStringLen(answer.result.bstrVal)}),
            "2009-10 \xE0\xA4\xB6 \xF0\x9F\x98\x80");
  form.put("yrid", boolean(VARIANT_TRUE));
  EXPECT_EQ(form.get("yrid").result.boolVal, VARIANT_TRUE);
}

TEST(Dispatch, VariantPropertiesConvertThemselvesAndRaise) {
  const Caller label("clsAddressLabel");
  const Answer perhaps = label.put("ShowBorder", text("perhaps"));
  EXPECT_EQ(perhaps.code, DISP_E_EXCEPTION);
  EXPECT_EQ(perhaps.scode, hresult(0x800A000D));
  EXPECT_EQ(perhaps.source, "DorvoFormDLL");
  EXPECT_NE(perhaps.description, "");
  const Answer null = label.put("ConnectionString", of_kind(VT_NULL));
  EXPECT_EQ(null.code, DISP_E_EXCEPTION);
  EXPECT_EQ(null.scode, hresult(0x800A005E));
  EXPECT_EQ(label.put("ShowBorder", whole(1)).code, S_OK);
}

// ---- objects ----

TEST(Dispatch, ConnectionIsPutByReferenceOnly) {
  const Caller general("generalPrintClass");
  const Caller stranger("clsForm1");
  EXPECT_EQ(general.put("myConn", whole(1)).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(general.put_reference("myConn", whole(1)).code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(general.put_reference("myConn", object(&*stranger)).code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(general.put_reference("myConn", object(nullptr)).code, S_OK) << "no object empties it";
}

TEST(Dispatch, ReleasedObjectsSayThatTheyAreGone) {
  IDispatch* gone = nullptr;
  {
    const Caller form("clsForm1");
    gone = &*form;
  }
  UINT count = 0;
  ITypeInfo* info = nullptr;
  void* found = nullptr;
  DISPPARAMS params{};
  std::u16string name = u"SHowForm";
  OLECHAR* names[] = {name.data()};
  DISPID id = 0;
  EXPECT_EQ(gone->QueryInterface(IID_IDispatch, &found), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(gone->GetTypeInfoCount(&count), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(gone->GetTypeInfo(0, 0, &info), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(gone->GetIDsOfNames(GUID_NULL, names, 1, 0, &id), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(gone->Invoke(1, GUID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(gone->AddRef(), 0u);
  EXPECT_EQ(gone->Release(), 0u);
  EXPECT_EQ(DllCanUnloadNow(), S_OK) << "a second release takes nothing away from others";
}

TEST(Dispatch, ReferencesAreCounted) {
  const Caller form("clsForm1");
  void* again = nullptr;
  ASSERT_EQ(form->QueryInterface(IID_IUnknown, &again), S_OK);
  EXPECT_EQ(static_cast<IUnknown*>(again)->AddRef(), 3u);
  EXPECT_EQ(static_cast<IUnknown*>(again)->Release(), 2u);
  EXPECT_EQ(static_cast<IUnknown*>(again)->Release(), 1u);
  EXPECT_EQ(form->QueryInterface(kForeign, &again), E_NOINTERFACE);
  EXPECT_EQ(again, nullptr);
  EXPECT_EQ(form->QueryInterface(IID_IDispatch, nullptr), E_POINTER);
}

}  // namespace
}  // namespace dorvo::automation
