// How the values of a column reach a table: by the type that the database declares for the column.
#pragma once

#include <string_view>

#include "data/table.h"

namespace dorvo::data {

enum class ColumnType { Undeclared, Bool, Integer, Number, Text, Date, Binary };

// The type that a declaration names: "DECIMAL(18,2)", "datetime", "nvarchar(50)". Undeclared for an empty text and for
// a type that none of the reports' columns has.
ColumnType declared_type(std::string_view declaration);

// Adds a value that the database delivered as text. A text that is no value of its column's type stays the text that it
// is: the report that computes with it fails there, and one that only prints it prints what is stored.
void add_text(Table& table, ColumnType type, std::string_view text);
// A number in a column of any type. A whole-number column keeps the decimals of a value that has some.
void add_number(Table& table, ColumnType type, double number);
void add_integer(Table& table, ColumnType type, std::int64_t number);
// Bytes read as "0x" and hexadecimal digits.
void add_bytes(Table& table, std::string_view bytes);

}  // namespace dorvo::data
