// Finished pages as HTML: HTML 3.2 tables or dynamic HTML with positioned elements; in one file or one a page.
//
// Names, with P for FileNamePrefix:
//   P.html          all pages, or the frames where there are any
//   Ppages.html     all pages in one file, where P.html has the frames
//   P1.html ...     one page each
//   Ptoc.html/.xml  the table of contents: the pages, and the group headings on them
//   Pnav.html       the list of pages that frames show when there is no table of contents to show in them
//   P.css           the style sheet, where it stands apart
//   Pspace.gif      in the images folder: one clear dot that keeps the columns of tables at their widths
//   P.mht           everything in one MIME archive, instead of the files
// With a character set the pages name it and are written in it; without one they are plain ASCII. Characters that are
// not in it stand as references by their number. All files appear at end(), or none.
#pragma once

#include <memory>
#include <string>

#include "export/encoding.h"
#include "export/filter.h"
#include "export/html_page.h"
#include "export/html_parts.h"

namespace dorvo::export_ {

class HtmlFilter : public Filter {
 public:
  std::string FileNamePrefix;
  std::string HTMLOutputPath;    // folder of the pages; must exist
  std::string ImagesOutputPath;  // folder of the pictures; must exist
  std::string CharSet;           // empty: none is named
  std::string Title;
  int HTMLVersion = 1;     // 0 HTML 3.2, 1 dynamic HTML
  int TOCFormat = 0;       // 0 none, 1 simple HTML, 2 dynamic HTML, 3 XML
  bool CreateCSS = false;  // the style sheet in a file of its own
  bool CreateFrameset = false;
  bool MHTArchive = false;
  bool MultiPage = false;  // a file for each page

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

  // The file that a user opens first, as a path.
  std::string first_file() const;

 private:
  bool dynamic() const { return HTMLVersion == 1; }
  std::string page_file(int number) const;
  std::string navigation_file() const;
  std::string head(const std::string& title, const std::string& rules) const;
  void open_html(const std::string& name);
  void write(std::string_view utf8);
  void write_frames();
  void add_contents(const engine::Page& page);
  void write_contents();
  void write_navigation();
  void write_spacer();

  std::unique_ptr<HtmlParts> parts_;
  std::unique_ptr<Encoder> encoder_;
  std::string mark_;  // at the start of each file, where the character set wants one
  HtmlStyles styles_;
  OverlapNotes notes_;
  std::string rules_;  // of the style sheet that stands apart
  std::string contents_;
  std::string navigation_;
  std::string bytes_;
  bool begun_ = false;  // the file of all pages
};

}  // namespace dorvo::export_
