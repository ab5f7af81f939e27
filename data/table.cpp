#include "data/table.h"

#include <algorithm>
#include <limits>

#include "data/utf8.h"
#include "value/text.h"

namespace dorvo::data {

Columns::Columns(std::vector<std::string> names_in_order) : names(std::move(names_in_order)) {
  index_.reserve(names.size());
  for (std::size_t at = 0; at < names.size(); ++at)
    index_.emplace_back(value::name_hash(names[at]), static_cast<std::uint32_t>(at));
  std::sort(index_.begin(), index_.end());
}

std::size_t Columns::find(std::string_view column) const {
  const std::uint64_t hash = value::name_hash(column);
  auto at = std::lower_bound(index_.begin(), index_.end(), std::pair<std::uint64_t, std::uint32_t>(hash, 0));
  for (; at != index_.end() && at->first == hash; ++at)
    if (value::same_name(names[at->second], column)) return at->second;
  return npos;
}

void Table::add_null() {
  cells_.push_back({Cell::Kind::Null, 0, {0}});
}

void Table::add(bool flag) {
  cells_.push_back({Cell::Kind::Bool, 0, {flag ? 1 : 0}});
}

void Table::add(std::int64_t number) {
  cells_.push_back({Cell::Kind::Integer, 0, {number}});
}

void Table::add(double number) {
  Cell cell{Cell::Kind::Double, 0, {0}};
  cell.number = number;
  cells_.push_back(cell);
}

void Table::add(std::string_view text) {
  const std::size_t offset = arena_.size();
  append_utf8(arena_, text);
  add_text_from(offset);
}

void Table::add(std::u16string_view text) {
  const std::size_t offset = arena_.size();
  append_utf8(arena_, text);
  add_text_from(offset);
}

void Table::add_text_from(std::size_t offset) {
  const std::size_t length = arena_.size() - offset;
  if (length > std::numeric_limits<std::uint32_t>::max())
    throw value::Failure(value::Error::QueryFailed, "A text column holds more than 4 GB");
  Cell cell{Cell::Kind::Text, static_cast<std::uint32_t>(length), {0}};
  cell.offset = offset;
  cells_.push_back(cell);
}

void Table::add(const value::Date& date) {
  Cell cell{Cell::Kind::Date, 0, {0}};
  cell.number = value::serial_of(date);
  cells_.push_back(cell);
}

value::Variant Table::cell(std::size_t row, std::size_t column) const {
  const Cell& cell = cells_.at(row * columns().size() + column);
  switch (cell.kind) {
    case Cell::Kind::Null:
      break;
    case Cell::Kind::Bool:
      return cell.integer != 0;
    case Cell::Kind::Integer:
      return cell.integer;
    case Cell::Kind::Double:
      return cell.number;
    case Cell::Kind::Text:
      return std::string_view(arena_).substr(cell.offset, cell.length);
    case Cell::Kind::Date:
      return value::date_of_serial(cell.number);
  }
  return value::Null{};
}

}  // namespace dorvo::data
