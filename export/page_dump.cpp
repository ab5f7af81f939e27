#include "export/page_dump.h"

#include <charconv>

#include "engine/utf8.h"

namespace dorvo::export_ {
namespace {

using engine::ControlKind;

// Name in the dump; nullptr: not an item of its own.
const char* kind_name(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
      return "Label";
    case ControlKind::Field:
      return "Field";
    case ControlKind::Line:
      return "Line";
    case ControlKind::Shape:
      return "Shape";
    case ControlKind::SubReport:
    case ControlKind::PageBreak:
    case ControlKind::Data:
      break;
  }
  return nullptr;
}

void put_escaped(std::string& out, char32_t character) {
  static const char kHex[] = "0123456789abcdef";
  switch (character) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  if (character >= 0x20) return engine::append_char(out, character);
  out += "\\u00";
  out += kHex[character >> 4];
  out += kHex[character & 15];
}

void put_text(std::string& out, std::string_view text) {
  out += '"';
  for (std::size_t at = 0; at < text.size();) put_escaped(out, engine::next_char(text, at));
  out += '"';
}

void put_key(std::string& out, std::string_view key, std::string_view text) {
  out.append("\"").append(key).append("\": ");
  put_text(out, text);
}

void put_key(std::string& out, std::string_view key, int number) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  out.append("\"").append(key).append("\": ").append(digits, end);
}

void put_item(std::string& out, const engine::PageItem& item) {
  out += '{';
  put_key(out, "kind", kind_name(item.kind()));
  put_key(out += ", ", "section", item.section->name);
  put_key(out += ", ", "name", item.name());
  put_key(out += ", ", "text", item.string());
  put_key(out += ", ", "left", item.left);
  put_key(out += ", ", "top", item.top);
  put_key(out += ", ", "width", item.width);
  put_key(out += ", ", "height", item.height);
  out += '}';
}

}  // namespace

void PageDump::begin() {
  file_ = std::make_unique<OutputFile>(FileName);
  first_ = true;
  std::string out = "{";
  put_key(out, "report", Report);
  file_->write(out += ", \"pages\": [");
}

void PageDump::page(const engine::PagePtr& page) {
  std::string out = first_ ? "\n{" : ",\n{";
  first_ = false;
  put_key(out, "number", page->number);
  put_key(out += ", ", "width", page->width);
  put_key(out += ", ", "height", page->height);
  out += ", \"items\": [";
  const char* between = "\n";
  for (const engine::PageItem& item : page->items) {
    if (!kind_name(item.kind())) continue;
    put_item(out += between, item);
    between = ",\n";
  }
  file_->write(out += "\n]}");
}

void PageDump::end() {
  std::string out = "], \"messages\": [";
  const char* between = "";
  for (const std::string& message : RunMessages) {
    put_text(out += between, message);
    between = ", ";
  }
  file_->write(out += "]}\n");
  file_->commit();
  file_.reset();
}

}  // namespace dorvo::export_
