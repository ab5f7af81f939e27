#include "frame/address_block.h"

namespace dorvo::frame {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr AddressPiece kDealerAddress[] = {
    {.column = "Name", .after = kLineEnd, .missing = kLineEnd},
    {.column = "Address", .after = kLineEnd},
    {.column = "Address1", .after = kLineEnd},
    {.column = "Taluka", .after = ","},
    {.column = "City", .after = ","},
    {.column = "District", .after = ","},
    {.column = "State", .after = ".\r\n"},
    {.column = "PinCode", .before = "PinCode - "},
};

}  // namespace

std::span<const AddressPiece> dealer_address() {
  return kDealerAddress;
}

std::string address_block(std::span<const AddressPiece> pieces,
                          const std::function<value::Variant(std::string_view)>& column) {
  std::string block;
  for (const AddressPiece& piece : pieces) {
    const value::Variant held = column(piece.column);
    if (value::is_empty(held)) {
      block += piece.missing;
      continue;
    }
    block += piece.before;
    block += value::text_of(held);
    block += piece.after;
  }
  return block;
}

}  // namespace dorvo::frame
