// Name and address as the forms print them: pieces of the dealer's row joined in order, each with its own marks.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "value/variant.h"

namespace dorvo::frame {

// One piece: `before`, the column's text and `after`; `missing` in place of all three when the column is empty or NULL.
struct AddressPiece {
  std::string_view column;
  std::string_view before = {};
  std::string_view after = {};
  std::string_view missing = {};
};

// The block of the return-cum-chalan forms: name, two lines of address, place in one line, PIN code.
std::span<const AddressPiece> dealer_address();

// Joins the pieces; `column` reads one column of the dealer's row.
std::string address_block(std::span<const AddressPiece> pieces,
                          const std::function<value::Variant(std::string_view)>& column);

}  // namespace dorvo::frame
