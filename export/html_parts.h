// The files that one HTML export makes, as files of their own or as the parts of one MIME archive.
//
// Parts are written one after the other. All of them appear at commit(), or none: until then they stand beside their
// targets under other names.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace dorvo::export_ {

class HtmlParts {
 public:
  virtual ~HtmlParts() = default;
  enum class Folder { Pages, Images };
  // Ends the part before and begins the next; `name` is a bare file name, `type` a MIME type with its parameters.
  virtual void open(const std::string& name, const std::string& type, Folder folder = Folder::Pages) = 0;
  virtual void write(std::string_view bytes) = 0;
  virtual void commit() = 0;
  // How a page refers to a part in the images folder.
  virtual std::string image_reference(const std::string& name) const = 0;
};

std::unique_ptr<HtmlParts> html_files(const std::string& pages_folder, const std::string& images_folder);
// `subject` is ASCII.
std::unique_ptr<HtmlParts> mime_archive(const std::string& file, const std::string& subject);

}  // namespace dorvo::export_
