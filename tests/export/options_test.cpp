#include "export/options.h"

#include <gtest/gtest.h>

#include "export/html_filter.h"
#include "export/pdf_filter.h"
#include "export/text_filter.h"
#include "export/xls_filter.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

TEST(Options, ReachTheirProperty) {
  const std::vector<Option> options = {parse_option("XLS.FileFormat=5"), parse_option("xls.mincolumnwidth=0"),
                                       parse_option("XLS.GenPageBreaks=False"), parse_option("Text.TextDelimiter=;=;")};
  const auto filter = make_filter(Format::Xls, "/tmp/a.xls", options);
  const auto& xls = dynamic_cast<XlsFilter&>(*filter);
  EXPECT_EQ(xls.FileName, "/tmp/a.xls");
  EXPECT_EQ(xls.FileFormat, 5);
  EXPECT_EQ(xls.MinColumnWidth, 0);
  EXPECT_FALSE(xls.GenPageBreaks);
  EXPECT_EQ(xls.BorderSpace, 59);
  const auto text = make_filter(Format::Text, "a.txt", options);
  EXPECT_EQ(dynamic_cast<TextFilter&>(*text).TextDelimiter, ";=;");
}

TEST(Options, HtmlTakesFolderAndPrefixFromTheTarget) {
  const auto page = make_filter(Format::Html, "/srv/out/form.html", {});
  EXPECT_EQ(dynamic_cast<HtmlFilter&>(*page).FileNamePrefix, "form");
  EXPECT_EQ(dynamic_cast<HtmlFilter&>(*page).HTMLOutputPath, "/srv/out");
  EXPECT_EQ(dynamic_cast<HtmlFilter&>(*page).first_file(), "/srv/out/form.html");
  const auto archive = make_filter(Format::Html, "form.mht", {parse_option("HTML.ImagesOutputPath=img")});
  EXPECT_TRUE(dynamic_cast<HtmlFilter&>(*archive).MHTArchive);
  EXPECT_EQ(dynamic_cast<HtmlFilter&>(*archive).ImagesOutputPath, "img");
}

TEST(Options, WrongOnesSayWhatWasExpected) {
  struct Case {
    const char* text;
    value::Error number;
    const char* message;
  };
  const std::vector<Case> cases = {
      {"XLS.FileFormat=6", value::Error::TypeMismatch,
       "Option XLS.FileFormat: found \"6\", expected 2, 3, 4, 5, 7 or 8"},
      {"XLS.MultiSheet=yes", value::Error::TypeMismatch,
       "Option XLS.MultiSheet: found \"yes\", expected True or False"},
      {"XLS.MinRowHeight=12x", value::Error::TypeMismatch,
       "Option XLS.MinRowHeight: found \"12x\", expected a length in twips, 0 or more"},
      {"PNG.Resolution=0", value::Error::TypeMismatch,
       "Option PNG.Resolution: found \"0\", expected dots an inch, 1 or more"},
      {"PDF.Version", value::Error::TypeMismatch,
       "Option \"PDF.Version\": expected FORMAT.Property=value, such as XLS.FileFormat=5"},
  };
  for (const Case& c : cases) {
    try {
      parse_option(c.text);
      ADD_FAILURE() << c.text << " was taken";
    } catch (const value::Failure& failure) {
      EXPECT_EQ(failure.number(), c.number) << c.text;
      EXPECT_EQ(failure.description(), c.message);
    }
  }
  try {
    parse_option("PDF.Paper=9");
    ADD_FAILURE();
  } catch (const value::Failure& failure) {
    EXPECT_EQ(failure.number(), value::Error::PropertyNotFound);
    EXPECT_NE(failure.description().find("PDF.NeverEmbedFonts"), std::string::npos);
  }
}

TEST(Options, FormatsByExtension) {
  struct Case {
    const char* file;
    std::optional<Format> format;
  };
  const Case cases[] = {
      {"a/b.XLS", Format::Xls}, {"b.htm", Format::Html},    {"b.tiff", Format::Tif}, {"/x.y/a.b.json", Format::Json},
      {"a.png", Format::Png},   {".pdf", Format::Pdf},      {"a.txt", Format::Text}, {"b.doc", std::nullopt},
      {"xls", std::nullopt},    {"/x.pdf/a", std::nullopt}, {"a.", std::nullopt},    {"", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(format_of_file(c.file), c.format) << c.file;
}

}  // namespace
}  // namespace dorvo::export_
