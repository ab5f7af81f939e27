#include "export/html_filter.h"

#include <algorithm>
#include <filesystem>

#include "value/failure.h"
#include "value/text.h"

namespace dorvo::export_ {
namespace {

using value::Error;
using value::Failure;

enum Contents { kNone = 0, kSimple = 1, kDynamic = 2, kXml = 3 };

// A picture of one clear dot.
constexpr unsigned char kSpacer[] = {'G',  'I',  'F',  '8',  '9',  'a',  0x01, 0x00, 0x01, 0x00, 0x80,
                                     0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x21, 0xF9, 0x04,
                                     0x01, 0x00, 0x00, 0x00, 0x00, 0x2C, 0x00, 0x00, 0x00, 0x00, 0x01,
                                     0x00, 0x01, 0x00, 0x00, 0x02, 0x02, 0x44, 0x01, 0x00, 0x3B};

// Opens and folds the entries of the dynamic table of contents.
constexpr const char* kFoldScript =
    "<script>\nfunction fold(mark){var list=mark.parentNode.getElementsByTagName('ul')[0];"
    "var open=list.style.display==='none';list.style.display=open?'':'none';mark.textContent=open?'- ':'+ ';}\n"
    "</script>\n";

std::string path_in(const std::string& folder, const std::string& name) {
  return (std::filesystem::path(folder) / name).string();
}

// The headings of the groups that begin on the page: the first text of each group header.
std::vector<std::string> headings_of(const engine::Page& page) {
  std::vector<std::string> headings;
  const engine::SectionLayout* last = nullptr;
  int band_end = 0;
  for (const engine::PageItem& item : page.items) {
    const bool heading = item.section && item.section->kind == engine::SectionKind::GroupHeader;
    const bool text = item.kind() == engine::ControlKind::Label || item.kind() == engine::ControlKind::Field;
    const bool same_band = item.section == last && item.top < band_end;
    if (heading && text && !same_band && !item.string().empty()) {
      headings.push_back(cell_text(item, " "));
      last = item.section;
      band_end = item.top + item.section->height;
    }
  }
  return headings;
}

}  // namespace

std::string HtmlFilter::first_file() const {
  if (MHTArchive) return path_in(HTMLOutputPath, FileNamePrefix + ".mht");
  return path_in(HTMLOutputPath, CreateFrameset ? FileNamePrefix + ".html" : page_file(1));
}

std::string HtmlFilter::page_file(int number) const {
  if (MultiPage) return FileNamePrefix + std::to_string(number) + ".html";
  return FileNamePrefix + (CreateFrameset ? "pages.html" : ".html");
}

std::string HtmlFilter::navigation_file() const {
  return FileNamePrefix + (TOCFormat == kSimple || TOCFormat == kDynamic ? "toc.html" : "nav.html");
}

void HtmlFilter::begin() {
  const std::string named = value::lower_name(CharSet);
  const bool two_bytes = named == "utf-16" || named == "utf-16le";
  encoder_ = std::make_unique<Encoder>(two_bytes ? "UTF-16LE" : CharSet, Missing::Reference);
  if (!two_bytes && !encoder_->holds_ascii())
    throw Failure(Error::CannotWrite, "Cannot write \"" + first_file() +
                                          "\": HTML cannot be written in character set \"" + CharSet +
                                          "\"; expected one that contains ASCII, such as utf-8");
  mark_ = two_bytes ? "\xFF\xFE" : "";
  Encoder ascii("", Missing::QuestionMark);
  parts_ = MHTArchive ? mime_archive(first_file(), ascii(Title.empty() ? FileNamePrefix : Title))
                      : html_files(HTMLOutputPath, ImagesOutputPath);
  styles_ = {};
  notes_ = {};
  messages_.clear();
  rules_.clear();
  contents_.clear();
  navigation_.clear();
  begun_ = false;
  if (CreateFrameset) write_frames();
}

void HtmlFilter::page(const engine::PagePtr& page) {
  const bool new_file = MultiPage || !begun_;
  if (MultiPage && !CreateCSS) styles_.forget();
  const std::string spacer = parts_->image_reference(FileNamePrefix + "space.gif");
  const std::string body =
      dynamic() ? dynamic_page(*page, styles_) : table_page(*page, styles_, html_escaped(spacer), notes_, messages_);
  const std::string rules = styles_.take();
  if (CreateCSS) rules_ += rules;
  if (new_file) {
    if (begun_) write("</body>\n</html>\n");
    open_html(page_file(page->number));
    write(head(Title, rules) + "<body>\n");
  } else if (!CreateCSS && !rules.empty()) {
    write("<style type=\"text/css\">\n" + rules + "</style>\n");
  }
  begun_ = true;
  write(body);
  add_contents(*page);
}

void HtmlFilter::end() {
  if (!begun_) {
    open_html(page_file(1));
    write(head(Title, "") + "<body>\n");
  }
  write("</body>\n</html>\n");
  if (!dynamic()) write_spacer();
  write_contents();
  if (CreateFrameset && navigation_file() == FileNamePrefix + "nav.html") write_navigation();
  if (CreateCSS) {
    parts_->open(FileNamePrefix + ".css", "text/css");
    write(html_base_rules(dynamic()) + rules_);
  }
  parts_->commit();
  parts_.reset();
}

void HtmlFilter::open_html(const std::string& name) {
  parts_->open(name, CharSet.empty() ? "text/html" : "text/html; charset=\"" + CharSet + "\"");
  parts_->write(mark_);
}

void HtmlFilter::write(std::string_view utf8) {
  bytes_.clear();
  encoder_->append(bytes_, utf8);
  parts_->write(bytes_);
}

std::string HtmlFilter::head(const std::string& title, const std::string& rules) const {
  std::string head = dynamic() ? "<!DOCTYPE html>\n" : "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2 Final//EN\">\n";
  head += "<html>\n<head>\n";
  if (!CharSet.empty())
    head += "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=" + html_escaped(CharSet) + "\">\n";
  head += "<title>" + html_escaped(title) + "</title>\n";
  if (CreateCSS)
    head += "<link rel=\"stylesheet\" type=\"text/css\" href=\"" + html_escaped(FileNamePrefix) + ".css\">\n";
  else
    head += "<style type=\"text/css\">\n" + html_base_rules(dynamic()) + rules + "</style>\n";
  return head + "</head>\n";
}

void HtmlFilter::write_frames() {
  open_html(FileNamePrefix + ".html");
  write(
      "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Frameset//EN\" \"http://www.w3.org/TR/html4/frameset.dtd\">\n"
      "<html>\n<head>\n" +
      (CharSet.empty()
           ? std::string()
           : "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=" + html_escaped(CharSet) + "\">\n") +
      "<title>" + html_escaped(Title) +
      "</title>\n</head>\n<frameset cols=\"200,*\">\n<frame name=\"contents\" src=\"" +
      html_escaped(navigation_file()) + "\">\n<frame name=\"pages\" src=\"" + html_escaped(page_file(1)) +
      "\">\n</frameset>\n</html>\n");
}

// One entry in the table of contents, in its format, and one in the plain list of pages.
void HtmlFilter::add_contents(const engine::Page& page) {
  const std::string number = std::to_string(page.number);
  const std::string address = html_escaped(page_file(page.number)) + "#page" + number;
  const std::string link =
      "<a href=\"" + address + "\"" + (CreateFrameset ? " target=\"pages\"" : "") + ">Page " + number + "</a>";
  if (CreateFrameset) navigation_ += "<li>" + link + "</li>\n";
  if (TOCFormat == kNone) return;
  const std::vector<std::string> headings = headings_of(page);
  if (TOCFormat == kXml) {
    contents_ += "  <page number=\"" + number + "\" href=\"" + address + "\">";
    for (const std::string& heading : headings) contents_ += "<heading>" + html_escaped(heading) + "</heading>";
    contents_ += "</page>\n";
    return;
  }
  contents_ += "<li>";
  if (TOCFormat == kDynamic && !headings.empty()) contents_ += "<span onclick=\"fold(this)\">- </span>";
  contents_ += link;
  if (!headings.empty()) {
    contents_ += "<ul>";
    for (const std::string& heading : headings) contents_ += "<li>" + html_escaped(heading) + "</li>";
    contents_ += "</ul>";
  }
  contents_ += "</li>\n";
}

void HtmlFilter::write_contents() {
  if (TOCFormat == kNone) return;
  const std::string title = html_escaped(Title.empty() ? FileNamePrefix : Title);
  if (TOCFormat == kXml) {
    parts_->open(FileNamePrefix + "toc.xml", "text/xml");
    parts_->write(mark_);
    write("<?xml version=\"1.0\"" + (CharSet.empty() ? std::string() : " encoding=\"" + html_escaped(CharSet) + "\"") +
          "?>\n<contents title=\"" + title + "\">\n" + contents_ + "</contents>\n");
    return;
  }
  open_html(FileNamePrefix + "toc.html");
  write(head(Title, ""));
  if (TOCFormat == kDynamic)
    write(std::string("<body>\n") + kFoldScript + "<div><span onclick=\"fold(this)\">- </span><b>" + title +
          "</b>\n<ul>\n" + contents_ + "</ul></div>\n</body>\n</html>\n");
  else
    write("<body>\n<b>" + title + "</b>\n<ul>\n" + contents_ + "</ul>\n</body>\n</html>\n");
}

void HtmlFilter::write_navigation() {
  open_html(FileNamePrefix + "nav.html");
  write(head(Title, "") + "<body>\n<ul>\n" + navigation_ + "</ul>\n</body>\n</html>\n");
}

void HtmlFilter::write_spacer() {
  parts_->open(FileNamePrefix + "space.gif", "image/gif", HtmlParts::Folder::Images);
  parts_->write({reinterpret_cast<const char*>(kSpacer), sizeof kSpacer});
}

}  // namespace dorvo::export_
