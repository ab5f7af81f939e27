#include "export/html_parts.h"

#include <cstdio>
#include <filesystem>
#include <vector>

#include "export/output_file.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::export_ {
namespace {

namespace fs = std::filesystem;

class Files : public HtmlParts {
 public:
  Files(const std::string& pages, const std::string& images) : pages_(pages), images_(images) {}

  void open(const std::string& name, const std::string&, Folder folder) override {
    if (!files_.empty()) files_.back()->close();
    files_.push_back(std::make_unique<OutputFile>(((folder == Folder::Pages ? pages_ : images_) / name).string()));
  }
  void write(std::string_view bytes) override { files_.back()->write(bytes); }

  void commit() override {
    for (const auto& file : files_) file->close();
    for (std::size_t i = 0; i < files_.size(); ++i) {
      try {
        files_[i]->commit();
      } catch (const value::Failure&) {
        for (std::size_t k = 0; k < i; ++k) std::remove(files_[k]->target().c_str());
        throw;
      }
    }
  }

  std::string image_reference(const std::string& name) const override {
    const fs::path folder =
        fs::absolute(images_).lexically_normal().lexically_relative(fs::absolute(pages_).lexically_normal());
    return (folder / name).lexically_normal().generic_string();
  }

 private:
  fs::path pages_;
  fs::path images_;
  std::vector<std::unique_ptr<OutputFile>> files_;
};

constexpr const char* kBoundary = "----=_DorvoForm_Report_Part";
constexpr std::size_t kLineLength = 76;

// Lines of at most 76 characters, bytes outside printable ASCII by their value. What is not text has no lines of its
// own: there line ends are bytes like others.
class QuotedPrintable {
 public:
  explicit QuotedPrintable(bool text) : text_(text) {}

  std::string operator()(std::string_view bytes) {
    std::string out;
    for (char c : bytes) {
      if (text_ && c == '\r') continue;
      if (text_ && c == '\n') {
        out += "\r\n";
        column_ = 0;
        continue;
      }
      const bool plain = c >= ' ' && c <= '~' && c != '=';
      if (column_ + 3 >= kLineLength) {
        out += "=\r\n";
        column_ = 0;
      }
      if (plain && !(c == ' ' && column_ + 4 >= kLineLength)) {
        out += c;
        ++column_;
      } else {
        constexpr const char* kDigits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        out += {'=', kDigits[byte >> 4], kDigits[byte & 15]};
        column_ += 3;
      }
    }
    return out;
  }

 private:
  bool text_;
  std::size_t column_ = 0;
};

class Archive : public HtmlParts {
 public:
  Archive(const std::string& file, const std::string& subject) : file_(file) {
    file_.write("From: <Saved by DorvoForm>\r\nSubject: " + subject +
                "\r\nMIME-Version: 1.0\r\nContent-Type: multipart/related; type=\"text/html\"; boundary=\"" +
                kBoundary + "\"\r\n\r\n");
  }

  void open(const std::string& name, const std::string& type, Folder) override {
    file_.write(std::string(begun_ ? "\r\n" : "") + "--" + kBoundary + "\r\nContent-Type: " + type +
                "\r\nContent-Transfer-Encoding: quoted-printable\r\nContent-Location: " + address(name) + "\r\n\r\n");
    const bool wide = value::lower_name(type).find("utf-16") != std::string::npos;
    encode_ = QuotedPrintable(type.starts_with("text/") && !wide);
    begun_ = true;
  }
  void write(std::string_view bytes) override { file_.write(encode_(bytes)); }
  void commit() override {
    file_.write(std::string("\r\n--") + kBoundary + "--\r\n");
    file_.commit();
  }
  std::string image_reference(const std::string& name) const override { return name; }

 private:
  // Readers want a whole address of each part; references between parts are relative to it.
  static std::string address(const std::string& name) { return "thismessage:/" + name; }

  OutputFile file_;
  QuotedPrintable encode_{true};
  bool begun_ = false;
};

}  // namespace

std::unique_ptr<HtmlParts> html_files(const std::string& pages_folder, const std::string& images_folder) {
  return std::make_unique<Files>(pages_folder, images_folder);
}

std::unique_ptr<HtmlParts> mime_archive(const std::string& file, const std::string& subject) {
  return std::make_unique<Archive>(file, subject);
}

}  // namespace dorvo::export_
