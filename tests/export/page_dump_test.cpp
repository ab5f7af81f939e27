#include "export/page_dump.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/export/page_builder.h"
#include "tests/export/test_files.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using engine::ControlKind;
using nlohmann::json;
using test::Folder;
using test::PageBuilder;
using test::read_file;

class Dump : public testing::Test {
 protected:
  Folder folder;
  PageDump dump;
  void SetUp() override {
    dump.FileName = folder.file("form.json");
    dump.Report = "Form1";
  }
};

TEST_F(Dump, TellsEveryItemInPrintOrder) {
  PageBuilder page(1, 16838, 11906);
  page.text("Form-1", 720, 360, 2000, 300, ControlKind::Label);
  page.text("", 720, 700, 2000, 300);
  page.line(720, 1000, -300, 15);
  page.shape(10, 20, 30, 40);
  engine::Pages pages;
  pages.add(page.page());
  pages.add(PageBuilder(2).page());
  dump.RunMessages = {"Form1, page 1: \"txtName\" is cut"};
  dump.Export(pages);

  const json expected = json::parse(R"({"report": "Form1", "pages": [
    {"number": 1, "width": 16838, "height": 11906, "items": [
      {"kind": "Label", "section": "Detail", "name": "c0", "text": "Form-1",
       "left": 720, "top": 360, "width": 2000, "height": 300},
      {"kind": "Field", "section": "Detail", "name": "c1", "text": "",
       "left": 720, "top": 700, "width": 2000, "height": 300},
      {"kind": "Line", "section": "Detail", "name": "c2", "text": "",
       "left": 720, "top": 1000, "width": -300, "height": 15},
      {"kind": "Shape", "section": "Detail", "name": "c3", "text": "",
       "left": 10, "top": 20, "width": 30, "height": 40}]},
    {"number": 2, "width": 11906, "height": 16838, "items": []}],
    "messages": ["Form1, page 1: \"txtName\" is cut"]})");
  EXPECT_EQ(json::parse(read_file(folder.file("form.json"))), expected);
}

TEST_F(Dump, KeepsItemsWithoutPaperOut) {
  PageBuilder page;
  engine::PageItem& item = page.shape(0, 0, 10, 10);
  const_cast<engine::ControlLayout*>(item.control)->kind = ControlKind::PageBreak;
  dump.begin();
  dump.page(page.page());
  dump.end();
  EXPECT_TRUE(json::parse(read_file(dump.FileName))["pages"][0]["items"].empty());
}

TEST_F(Dump, WritesAnyTextAsJson) {
  const std::string texts[] = {"a\r\nb\tc", "\"quoted\" \\ back", "\x01\x1F", "राम ट्रेडर्स", "\xE2\x82\xB9 5"};
  for (const std::string& text : texts) {
    PageBuilder page;
    page.text(text, 0, 0, 5000, 300);
    dump.begin();
    dump.page(page.page());
    dump.end();
    EXPECT_EQ(json::parse(read_file(dump.FileName))["pages"][0]["items"][0]["text"], text);
  }
}

TEST_F(Dump, ARunWithoutPagesHasAFile) {
  dump.RunMessages = {"13, Type mismatch"};
  dump.Export({});
  EXPECT_EQ(json::parse(read_file(dump.FileName)),
            json::parse(R"({"report": "Form1", "pages": [], "messages": ["13, Type mismatch"]})"));
}

TEST_F(Dump, NothingStandsThereBeforeTheEnd) {
  {
    PageDump unfinished;
    unfinished.FileName = folder.file("other.json");
    unfinished.begin();
    unfinished.page(PageBuilder().page());
    EXPECT_FALSE(std::filesystem::exists(unfinished.FileName));
  }
  EXPECT_EQ(folder.files(), 0u);
  dump.FileName = folder.file("no such folder/form.json");
  EXPECT_THROW(dump.begin(), value::Failure);
}

}  // namespace
}  // namespace dorvo::export_
