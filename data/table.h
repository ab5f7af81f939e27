// Rows of a result, held compactly: 16 bytes a cell and one arena for all text.
//
// Filled by a driver column by column of each row, then only read.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "value/variant.h"

namespace dorvo::data {

// Names of the columns of a result, shared by all results of one query.
struct Columns {
  explicit Columns(std::vector<std::string> names_in_order);

  // The column of this name without regard to case, the first of several; npos when there is none.
  std::size_t find(std::string_view column) const;
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

  std::vector<std::string> names;

 private:
  std::vector<std::pair<std::uint64_t, std::uint32_t>> index_;  // hash of the name, column; sorted
};

class Table {
 public:
  explicit Table(std::vector<std::string> columns) : Table(std::make_shared<Columns>(std::move(columns))) {}
  explicit Table(std::shared_ptr<const Columns> columns) : columns_(std::move(columns)) {}

  // So many rows are about to come.
  void expect(std::size_t rows) { cells_.reserve(rows * columns().size()); }

  // Append the next cell, left to right, row after row.
  void add_null();
  void add(bool flag);
  void add(std::int64_t number);
  void add(double number);
  void add(std::string_view text);  // copied into the arena; bytes that are no UTF-8 become U+FFFD
  void add(std::u16string_view text);
  void add(const char*) = delete;  // would be taken for a flag
  void add(const value::Date& date);

  std::size_t rows() const { return columns().empty() ? 0 : cells_.size() / columns().size(); }
  const std::vector<std::string>& columns() const { return columns_->names; }
  value::Variant cell(std::size_t row, std::size_t column) const;

  std::size_t find(std::string_view column) const { return columns_->find(column); }
  static constexpr std::size_t npos = Columns::npos;

 private:
  struct Cell {
    enum class Kind : std::uint32_t { Null, Bool, Integer, Double, Text, Date } kind;
    std::uint32_t length;  // bytes of a text
    union {
      std::int64_t integer;  // Bool, Integer
      double number;         // Double, or the serial of a Date
      std::uint64_t offset;  // of a text in the arena
    };
  };
  void add_text_from(std::size_t offset);

  std::shared_ptr<const Columns> columns_;
  std::vector<Cell> cells_;
  std::string arena_;
};

}  // namespace dorvo::data
