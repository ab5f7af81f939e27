#include "export/text_filter.h"

#include <gtest/gtest.h>

#include "tests/export/hand_pages.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using test::Folder;
using test::HandPages;
using test::read_file;

struct Setting {
  std::string delimiter;
  bool suppress = false;
  bool unicode = false;
};

std::string written(const HandPages& hand, const Setting& setting, TextFilter& filter) {
  const Folder folder;
  filter.FileName = folder.file("out.txt");
  filter.TextDelimiter = setting.delimiter;
  filter.SuppressEmptyLines = setting.suppress;
  filter.Unicode = setting.unicode;
  filter.Export(hand.pages());
  EXPECT_EQ(folder.files(), 1u);
  return read_file(filter.FileName);
}

std::string written(const HandPages& hand, const Setting& setting) {
  TextFilter filter;
  return written(hand, setting, filter);
}

// Two lines of a register with one empty line between them; the amounts end at 7200 twips = 60 characters.
void register_page(HandPages& hand) {
  hand.page();
  hand.style(engine::Align::Left);
  hand.text(0, 0, 3600, 240, "Sales").text(0, 480, 3600, 240, "Goods \"A\", B");
  hand.style(engine::Align::Right);
  hand.text(4800, 0, 2400, 240, "1500.5").text(4800, 480, 2400, 240, "-20");
}

TEST(TextFilter, DelimitedRows) {
  HandPages hand;
  register_page(hand);
  EXPECT_EQ(written(hand, {","}), "Sales,1500.5\r\n\r\n\"Goods \"\"A\"\", B\",-20\r\n");
  EXPECT_EQ(written(hand, {";", true}), "Sales;1500.5\r\n\"Goods \"\"A\"\", B\";-20\r\n");
}

TEST(TextFilter, PlacesWithoutADelimiter) {
  HandPages hand;
  register_page(hand);
  register_page(hand);
  const std::string sales = "Sales" + std::string(49, ' ') + "1500.5\r\n";
  const std::string goods = "Goods \"A\", B" + std::string(45, ' ') + "-20\r\n";
  EXPECT_EQ(written(hand, {}), sales + "\r\n" + goods + "\f" + sales + "\r\n" + goods);
  EXPECT_EQ(written(hand, {"", true}), sales + goods + "\f" + sales + goods);
}

TEST(TextFilter, TextsThatWouldMeetMoveApart) {
  HandPages hand;
  hand.page().text(0, 0, 1200, 240, "A long name of a dealer").text(1200, 0, 1200, 240, "27");
  EXPECT_EQ(written(hand, {}), "A long name of a dealer 27\r\n");
}

TEST(TextFilter, WrappedTextTakesItsLines) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 480, "first\r\nsecond", "txtTwo").text(3600, 0, 1200, 240, "x");
  EXPECT_EQ(written(hand, {}), "first" + std::string(25, ' ') + "x\r\nsecond\r\n");
  EXPECT_EQ(written(hand, {"|"}), "first second|x\r\n");
}

TEST(TextFilter, OverlappingControlsAreToldAndBothWritten) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "one").text(5, 0, 3000, 240, "two");
  TextFilter filter;
  EXPECT_EQ(written(hand, {"|"}, filter), "one two\r\n");
  EXPECT_EQ(filter.Messages(),
            (std::vector<std::string>{"Page 1: one and two stand over each other; both texts are kept"}));
}

TEST(TextFilter, CharacterSets) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "\u00A31 \u0915");  // pound sign, Devanagari ka
  TextFilter filter;
  EXPECT_EQ(written(hand, {}, filter),
            "\xA3"
            "1 ?\r\n");
  ASSERT_EQ(filter.Messages().size(), 1u);
  EXPECT_NE(filter.Messages()[0].find("1252"), std::string::npos);
  EXPECT_EQ(written(hand, {"", false, true}), std::string("\xFF\xFE\xA3\0"
                                                          "1\0 \0\x15\x09\r\0\n\0",
                                                          14));
}

TEST(TextFilter, WholeOrNotAtAll) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "x");
  const Folder folder;
  {
    TextFilter filter;
    filter.FileName = folder.file("cut.txt");
    filter.begin();
    filter.page(hand.pages().at(0));
  }
  EXPECT_EQ(folder.files(), 0u);
  TextFilter filter;
  filter.FileName = folder.file("missing/out.txt");
  try {
    filter.Export(hand.pages());
    FAIL() << "wrote into a folder that does not exist";
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.number(), value::Error::CannotWrite);
    EXPECT_NE(failure.description().find(filter.FileName), std::string::npos);
  }
}

}  // namespace
}  // namespace dorvo::export_
