// Rows of a result, held compactly: 16 bytes a cell and one arena for all text.
//
// Filled by a driver column by column of each row, then only read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "value/variant.h"

namespace dorvo::data {

class Table {
 public:
  explicit Table(std::vector<std::string> columns) : columns_(std::move(columns)) {}

  // Append the next cell, left to right, row after row.
  void add_null();
  void add(bool flag);
  void add(std::int64_t number);
  void add(double number);
  void add(std::string_view text);  // copied into the arena
  void add(const value::Date& date);

  std::size_t rows() const { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }
  const std::vector<std::string>& columns() const { return columns_; }
  value::Variant cell(std::size_t row, std::size_t column) const;

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
  std::vector<std::string> columns_;
  std::vector<Cell> cells_;
  std::string arena_;
};

}  // namespace dorvo::data
