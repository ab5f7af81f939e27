// Where pages stand on the ground, and which pages a user names.
#include <gtest/gtest.h>

#include "preview/page_arrangement.h"
#include "preview/page_ranges.h"
#include "preview/papers.h"
#include "tests/export/hand_pages.h"

namespace dorvo::preview {
namespace {

constexpr int kGap = PageArrangement::kGap;

// Two portrait sheets of 100 x 150 dots and one landscape of 150 x 100.
test::HandPages three_pages() {
  test::HandPages hand;
  hand.page(1000, 1500).page(1000, 1500).page(1500, 1000);
  return hand;
}

TEST(PageArrangement, OneInARowIsCentred) {
  const test::HandPages hand = three_pages();
  const PageArrangement pages(hand.pages(), 1, 0.1);
  EXPECT_EQ(pages.place(0), QRect(kGap + 25, kGap, 100, 150));
  EXPECT_EQ(pages.place(1), QRect(kGap + 25, 2 * kGap + 150, 100, 150));
  EXPECT_EQ(pages.place(2), QRect(kGap, 3 * kGap + 300, 150, 100));
  EXPECT_EQ(pages.size(), QSize(150 + 2 * kGap, 400 + 4 * kGap));
}

TEST(PageArrangement, ARowIsAsHighAsItsHighestPage) {
  const test::HandPages hand = three_pages();
  const PageArrangement pages(hand.pages(), 2, 0.1);
  EXPECT_EQ(pages.place(1), QRect(2 * kGap + 100, kGap, 100, 150));
  // The width is that of the first row: 200 and three gaps; the last page has 150 and two.
  EXPECT_EQ(pages.place(2), QRect(kGap + (50 + kGap) / 2, 2 * kGap + 150, 150, 100));
  EXPECT_EQ(pages.size(), QSize(200 + 3 * kGap, 250 + 3 * kGap));
}

TEST(PageArrangement, TellsThePagesBetweenTwoHeights) {
  const test::HandPages hand = three_pages();
  const PageArrangement pages(hand.pages(), 1, 0.1);
  using Range = std::pair<std::size_t, std::size_t>;
  const std::tuple<int, int, Range> cases[] = {
      {0, 10, {0, 1}},    {0, 170, {0, 1}},    {0, 174, {0, 2}},
      {174, 180, {1, 2}}, {-50, 5000, {0, 3}}, {5000, 6000, {3, 3}},
  };
  // Rows end at 12 + 150 + 12 = 174, then at 336 and 448.
  for (const auto& [top, bottom, range] : cases) {
    const Range told = pages.between(top, bottom);
    EXPECT_EQ(told, range) << top << " to " << bottom;
  }
  EXPECT_EQ(PageArrangement().between(0, 100), Range(0, 0));
}

TEST(PageRanges, ReadsNumbersAndRanges) {
  using Pages = std::vector<std::size_t>;
  const std::pair<const char*, Pages> right[] = {
      {"1", {0}}, {"1-3", {0, 1, 2}}, {" 2 , 4-5", {1, 3, 4}}, {"3,1,3", {2, 0, 2}}, {"5-5", {4}}};
  for (const auto& [text, pages] : right) EXPECT_EQ(page_ranges(text, 5), pages) << text;
  for (const char* text : {"", "0", "6", "3-1", "1-", "-2", "1,,2", "a", "1 2", "1-2-3", "1-99999999999"})
    EXPECT_FALSE(page_ranges(text, 5)) << text;
}

TEST(Papers, KnowsASizeWhicheverWayItIsHeld) {
  EXPECT_EQ(paper_of({11906, 16838}), engine::kPaperA4);
  EXPECT_EQ(paper_of({16838, 11906}), engine::kPaperA4);
  EXPECT_EQ(paper_of({12240, 15840}), 1);
  EXPECT_EQ(paper_of({21600, 17280}), engine::kPaperCustom);
  EXPECT_EQ(size_text({21600, 17280}), "381 x 305 mm");
}

}  // namespace
}  // namespace dorvo::preview
