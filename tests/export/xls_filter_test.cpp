#include "export/xls_filter.h"

#include <gsf/gsf.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "tests/export/hand_pages.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using test::Folder;
using test::HandPages;
using test::read_file;

struct Record {
  std::size_t type = 0;
  std::string data;
  std::size_t u(std::size_t at, std::size_t size = 2) const {
    std::size_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
      value |= static_cast<std::size_t>(static_cast<unsigned char>(data.at(at + i))) << (8 * i);
    return value;
  }
  double f64(std::size_t at) const {
    double value = 0;
    std::memcpy(&value, data.data() + at, sizeof value);
    return value;
  }
};

std::vector<Record> records_of(const std::string& stream) {
  std::vector<Record> records;
  for (std::size_t at = 0; at + 4 <= stream.size();) {
    Record head{0, stream.substr(at, 4)};
    const std::size_t size = head.u(2);
    records.push_back({head.u(0), stream.substr(at + 4, size)});
    at += 4 + size;
  }
  return records;
}

// The worksheet stream of a file: the file itself, or its stream in the compound container.
std::string stream_of(const std::string& path, int version) {
  if (version < 5) return read_file(path);
  gsf_init();
  const std::string bytes = read_file(path);
  GsfInput* input =
      gsf_input_memory_new(reinterpret_cast<const guint8*>(bytes.data()), static_cast<gsf_off_t>(bytes.size()), FALSE);
  GsfInfile* container = gsf_infile_msole_new(input, nullptr);
  if (!container) return {};
  GsfInput* stream = gsf_infile_child_by_name(container, version == 8 ? "Workbook" : "Book");
  const auto size = static_cast<std::size_t>(gsf_input_size(stream));
  std::string read(reinterpret_cast<const char*>(gsf_input_read(stream, size, nullptr)), size);
  for (void* object : {static_cast<void*>(stream), static_cast<void*>(container), static_cast<void*>(input)})
    g_object_unref(object);
  return read;
}

// What a reader would find in the sheets, numbers as "=value".
struct Book {
  std::map<std::pair<std::size_t, std::size_t>, std::string> cells;  // of all sheets together
  std::vector<std::size_t> widths, heights, breaks;
  std::vector<std::string> sheets;
  std::size_t merges = 0;
  std::vector<std::size_t> sheet_starts, sheet_offsets;
};

std::string shared_string(const std::string& sst, std::size_t number) {
  std::size_t at = 8;
  for (;; --number) {
    const Record entry{0, sst.substr(at)};
    const std::size_t unit = entry.u(2, 1) == 0 ? 1 : 2;
    std::string text;
    for (std::size_t i = 0; i < entry.u(0); ++i) text += static_cast<char>(entry.u(3 + i * unit, unit) & 0xFF);
    if (number == 0) return text;
    at += 3 + entry.u(0) * unit;
  }
}

Book read_book(const std::string& stream, int version) {
  Book book;
  std::string sst;
  std::size_t offset = 0;
  bool more = false;
  for (const Record& r : records_of(stream)) {
    if ((r.type & 0xFF) == 0x09 && r.u(2) == 0x10) book.sheet_starts.push_back(offset);
    offset += 4 + r.data.size();
    if (r.type == 0x003C && more) {
      sst += r.data.substr(1);  // each of the test's long strings goes on in the width it began with
      continue;
    }
    more = r.type == 0x00FC;
    const std::size_t cell = version == 2 ? 7 : 6;
    switch (r.type) {
      case 0x00FC:
        sst = r.data;
        break;
      case 0x0003:
      case 0x0203:
        book.cells[{r.u(0), r.u(2)}] = "=" + std::to_string(r.f64(cell));
        break;
      case 0x0004:
        book.cells[{r.u(0), r.u(2)}] = r.data.substr(8);
        break;
      case 0x0204:
        book.cells[{r.u(0), r.u(2)}] = r.data.substr(8);
        break;
      case 0x00FD:
        book.cells[{r.u(0), r.u(2)}] = shared_string(sst, r.u(6, 4));
        break;
      case 0x0024:
        book.widths.push_back(r.u(2));
        break;
      case 0x007D:
        book.widths.push_back(r.u(4));
        break;
      case 0x0008:
      case 0x0208:
        book.heights.push_back(r.u(6));
        break;
      case 0x001B:
        for (std::size_t i = 0; i < r.u(0); ++i) book.breaks.push_back(r.u(2 + i * (version == 8 ? 6 : 2)));
        break;
      case 0x0085:
        book.sheet_offsets.push_back(r.u(0, 4));
        book.sheets.push_back(r.data.substr(version == 8 ? 8 : 7));
        break;
      case 0x00E5:
        book.merges += r.u(0);
        break;
      default:
        break;
    }
  }
  return book;
}

Book exported(const HandPages& hand, XlsFilter& filter) {
  const Folder folder;
  filter.FileName = folder.file("out.xls");
  filter.Export(hand.pages());
  EXPECT_EQ(folder.files(), 1u);
  return read_book(stream_of(filter.FileName, filter.FileFormat), filter.FileFormat);
}

// Two columns 3000 and 2100 twips wide from the left margin on, a heading over both.
void register_page(HandPages& hand) {
  hand.page().text(1152, 720, 5100, 300, "Register");
  hand.text(1152, 1020, 2900, 240, "Deshmukh").text(4152, 1020, 2100, 240, "1500.50");
  hand.text(1152, 1260, 2900, 240, "0123").text(4152, 1260, 2100, 240, "-7");
}

class Versions : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Xls, Versions, testing::Values(2, 3, 4, 5, 7, 8));

TEST_P(Versions, HoldCellsNumbersWidthsHeightsAndBreaks) {
  HandPages hand;
  register_page(hand);
  register_page(hand);
  XlsFilter filter;
  filter.FileFormat = GetParam();
  const Book book = exported(hand, filter);
  const std::map<std::pair<std::size_t, std::size_t>, std::string> cells = {
      {{0, 0}, "Register"}, {{1, 0}, "Deshmukh"}, {{1, 1}, "=1500.500000"}, {{2, 0}, "0123"}, {{2, 1}, "=-7.000000"},
      {{3, 0}, "Register"}, {{4, 0}, "Deshmukh"}, {{4, 1}, "=1500.500000"}, {{5, 0}, "0123"}, {{5, 1}, "=-7.000000"}};
  EXPECT_EQ(book.cells, cells);
  // A digit is 105 twips wide: 3000 / 105 and 2100 / 105 digits, in 256ths.
  EXPECT_EQ(book.widths, (std::vector<std::size_t>{7314, 5120}));
  EXPECT_EQ(book.heights, (std::vector<std::size_t>{300, 240, 240, 300, 240, 240}));
  EXPECT_EQ(book.breaks, (std::vector<std::size_t>{3}));
  EXPECT_EQ(book.sheet_starts, GetParam() < 5 ? std::vector<std::size_t>{0} : book.sheet_offsets);
  EXPECT_EQ(book.merges, GetParam() == 8 ? 2u : 0u);
}

TEST_P(Versions, SamePagesSameBytes) {
  HandPages hand;
  register_page(hand);
  const Folder folder;
  XlsFilter filter;
  filter.FileFormat = GetParam();
  filter.FileName = folder.file("one.xls");
  filter.Export(hand.pages());
  const std::string first = read_file(filter.FileName);
  filter.FileName = folder.file("two.xls");
  filter.Export(hand.pages());
  EXPECT_EQ(read_file(filter.FileName), first);
}

TEST_P(Versions, OneSheetAPageWhereTheVersionHasSeveral) {
  HandPages hand;
  register_page(hand);
  register_page(hand);
  XlsFilter filter;
  filter.FileFormat = GetParam();
  filter.MultiSheet = true;
  const Book book = exported(hand, filter);
  if (GetParam() < 5) {
    ASSERT_EQ(filter.Messages().size(), 1u);
    EXPECT_EQ(book.heights.size(), 6u);
  } else {
    EXPECT_EQ(book.sheets, (std::vector<std::string>{"Page 1", "Page 2"}));
    EXPECT_EQ(book.sheet_starts, book.sheet_offsets);
    EXPECT_TRUE(book.breaks.empty());
  }
}

struct OptionCase {
  const char* what;
  void (*set)(XlsFilter&);
  std::vector<std::size_t> heights;
  std::size_t columns;
  std::size_t breaks;
};

TEST(XlsFilter, OptionsHaveTheirEffect) {
  // Text at 2000 twips below a top margin of 720, a second one 1000 lower; then a page like it. The second text's left
  // edge is 50 twips off the first one's, and a third stands 700 beside it.
  HandPages hand;
  for (int i = 0; i < 2; ++i) {
    hand.page().text(1652, 2720, 400, 240, "a").text(1702, 3720, 400, 240, "b").text(2402, 3720, 1500, 240, "c");
    hand.last().height = 8000;
  }
  constexpr std::size_t kAuto = 0x8000 | 255;
  const std::vector<OptionCase> cases = {
      {"as the dialog opens", [](XlsFilter&) {}, {2000, 1000, 240, 2000, 1000, 240}, 3, 1},
      {"TrimEmptySpace", [](XlsFilter& f) { f.TrimEmptySpace = true; }, {240, 240, 240, 240}, 2, 1},
      {"ShowMarginSpace",
       [](XlsFilter& f) { f.ShowMarginSpace = true; },
       {720, 2000, 1000, 240, 4040, 720, 2000, 1000, 240, 4040},
       4,
       1},
      {"GenPageBreaks off", [](XlsFilter& f) { f.GenPageBreaks = false; }, {2000, 1000, 240, 2000, 1000, 240}, 3, 0},
      {"AutoRowHeight", [](XlsFilter& f) { f.AutoRowHeight = true; }, {kAuto, kAuto, kAuto, kAuto, kAuto, kAuto}, 3, 1},
      {"BorderSpace below the difference",
       [](XlsFilter& f) { f.BorderSpace = 40, f.MinColumnWidth = 0; },
       {2000, 1000, 240, 2000, 1000, 240},
       4,
       1},
      {"MinRowHeight", [](XlsFilter& f) { f.MinRowHeight = 300; }, {2000, 1000, 300, 2000, 1000, 300}, 3, 1},
      {"DoubleBoundaries",
       [](XlsFilter& f) { f.DoubleBoundaries = true, f.MinColumnWidth = 0; },
       {2000, 240, 760, 240, 2000, 240, 760, 240},
       4,
       1},
  };
  for (const OptionCase& c : cases) {
    XlsFilter filter;
    c.set(filter);
    const Book book = exported(hand, filter);
    EXPECT_EQ(book.heights, c.heights) << c.what;
    EXPECT_EQ(book.widths.size(), c.columns) << c.what;
    EXPECT_EQ(book.breaks.size(), c.breaks) << c.what;
  }
  HandPages steps;
  steps.page().text(1152, 720, 400, 240, "a").text(1652, 1020, 400, 240, "b");
  XlsFilter wide, narrow;
  narrow.MinColumnWidth = 400;
  EXPECT_EQ(exported(steps, wide).widths.size(), 1u);
  EXPECT_EQ(exported(steps, narrow).widths.size(), 2u);
}

TEST(XlsFilter, WhatIsANumber) {
  const std::vector<std::pair<const char*, bool>> cases = {{"0", true},
                                                           {"-20", true},
                                                           {"1500.50", true},
                                                           {"0.5", true},
                                                           {"123456789012345", true},
                                                           {"007", false},
                                                           {"-0", false},
                                                           {"1234567890123456", false},
                                                           {"1.", false},
                                                           {".5", false},
                                                           {"27120000001V", false},
                                                           {"1,500", false},
                                                           {"12/04/2009", false},
                                                           {"NIL", false},
                                                           {"1E5", false},
                                                           {"-", false}};
  for (const auto& [text, number] : cases) {
    HandPages hand;
    hand.page().text(1152, 720, 2000, 240, text);
    XlsFilter filter;
    EXPECT_EQ(exported(hand, filter).cells.begin()->second.substr(0, 1) == "=", number) << text;
  }
}

TEST(XlsFilter, SharedStringsCrossRecords) {
  // 30 texts of 1,000 wide characters: the table needs eight records, cut within texts.
  HandPages hand;
  hand.page();
  for (int i = 0; i < 30; ++i) {
    std::string text(1000, static_cast<char>('a' + i % 26));
    text += "\u0915";
    hand.text(1152, 720 + i * 300, 3000, 240, text, "txt" + std::to_string(i));
  }
  XlsFilter filter;
  const Book book = exported(hand, filter);
  ASSERT_EQ(book.cells.size(), 30u);
  for (std::size_t i = 0; i < 30; ++i) {
    const std::string& text = book.cells.at({i, 0});
    EXPECT_EQ(text, std::string(1000, static_cast<char>('a' + i % 26)) + "\x15") << i;
  }
}

TEST(XlsFilter, AFullSheetGoesOnInTheNextOrFails) {
  HandPages hand;
  for (int i = 0; i < 1100; ++i) hand.page().text(1152, 720, 2000, 240, "x");
  XlsFilter filter;
  const Book book = exported(hand, filter);
  EXPECT_EQ(book.sheets, (std::vector<std::string>{"Sheet1", "Sheet2"}));
  EXPECT_EQ(book.heights.size(), 1100u);
  const Folder folder;
  {
    XlsFilter bare;
    bare.FileFormat = 4;
    bare.FileName = folder.file("out.xls");
    EXPECT_THROW(bare.Export(hand.pages()), value::Failure);
  }
  EXPECT_EQ(folder.files(), 0u);
}

TEST(XlsFilter, LongTextsOfOldVersionsAreCutAndTold) {
  HandPages hand;
  hand.page().text(1152, 720, 2000, 240, std::string(300, 'x'));
  XlsFilter filter;
  filter.FileFormat = 5;
  EXPECT_EQ(exported(hand, filter).cells.begin()->second, std::string(255, 'x'));
  EXPECT_EQ(filter.Messages().size(), 1u);
}

TEST(XlsFilter, RefusesOtherVersions) {
  XlsFilter filter;
  filter.FileFormat = 6;
  EXPECT_THROW(filter.begin(), value::Failure);
}

}  // namespace
}  // namespace dorvo::export_
