// write_samples DIR: the sample report in every format and kind, for the checks with outside readers.
#include <iostream>

#include "export/html_filter.h"
#include "export/rtf_filter.h"
#include "export/text_filter.h"
#include "export/xls_filter.h"
#include "tests/export/sample_report.h"

using namespace dorvo;

int main(int, char** argv) {
  const std::string folder = std::string(argv[1]) + "/";
  const test::HandPages hand = test::sample_report();
  export_::RtfFilter rtf;
  rtf.FileName = folder + "sample.rtf";
  rtf.Export(hand.pages());
  export_::TextFilter text;
  text.FileName = folder + "sample.txt";
  text.Export(hand.pages());
  for (int version : {2, 3, 4, 5, 7, 8}) {
    export_::XlsFilter xls;
    xls.FileName = folder + "sample" + std::to_string(version) + ".xls";
    xls.FileFormat = version;
    xls.Export(hand.pages());
    for (const std::string& message : xls.Messages()) std::cout << message << '\n';
  }
  export_::XlsFilter sheets;
  sheets.FileName = folder + "sheets.xls";
  sheets.MultiSheet = true;
  sheets.Export(hand.pages());
  struct Kind {
    const char* prefix;
    void (*set)(export_::HtmlFilter&);
  };
  using H = export_::HtmlFilter;
  for (const Kind& kind : std::initializer_list<Kind>{
           {"dynamic", [](H& h) { h.CharSet = "utf-8"; }},
           {"tables", [](H& h) { h.HTMLVersion = 0; }},
           {"css", [](H& h) { h.CreateCSS = true, h.CharSet = "windows-1252"; }},
           {"many", [](H& h) { h.MultiPage = true, h.TOCFormat = 1; }},
           {"frames", [](H& h) { h.CreateFrameset = true, h.TOCFormat = 2, h.MultiPage = true; }},
           {"plainframes", [](H& h) { h.CreateFrameset = true, h.TOCFormat = 3; }},
           {"archive", [](H& h) { h.MHTArchive = true, h.CreateCSS = true, h.CharSet = "utf-8"; }},
           {"oldarchive",
            [](H& h) { h.MHTArchive = true, h.HTMLVersion = 0, h.CreateFrameset = true, h.TOCFormat = 1; }},
       }) {
    export_::HtmlFilter html;
    html.FileNamePrefix = kind.prefix;
    html.HTMLOutputPath = html.ImagesOutputPath = folder;
    html.Title = "Sample <report>";
    kind.set(html);
    html.Export(hand.pages());
    for (const std::string& message : html.Messages()) std::cout << message << '\n';
  }
  for (const std::string& message : text.Messages()) std::cout << message << '\n';
}
