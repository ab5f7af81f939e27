#include "automation/variants.h"

#include <cmath>

#include "value/text.h"

namespace dorvo::automation {
namespace {

// A variant by reference to another variant refers to a value, never to a third variant.
constexpr int kDeepest = 2;

// 1/1/100 and 1/1/10000, as hosts count days.
constexpr double kFirstDay = -657434;
constexpr double kBehindLastDay = 2958466;

double decimal_number(const VARIANT& decimal) {
  const auto* high = reinterpret_cast<const char*>(&decimal) + 4;
  std::uint32_t high_bits = 0;
  std::memcpy(&high_bits, high, sizeof high_bits);
  const double magnitude = std::ldexp(static_cast<double>(high_bits), 64) + static_cast<double>(decimal.ullVal);
  const double number = magnitude / std::pow(10.0, decimal.reserved1 & 0xFF);
  return (decimal.reserved1 >> 8) & 0x80 ? -number : number;
}

value::Variant boolean(VARIANT_BOOL flag) {
  // A flag that is neither of the two Booleans keeps its number: it is true and is not the Boolean True.
  if (flag == VARIANT_TRUE || flag == VARIANT_FALSE) return flag == VARIANT_TRUE;
  return flag;
}

HRESULT read_simple(const VARIANT& given, const value::Variant& when_empty, value::Variant& value) {
  const auto take = [&](auto read) {
    value = read;
    return S_OK;
  };
  switch (given.vt) {
    case VT_EMPTY:
      return take(when_empty);
    case VT_NULL:
      return take(value::Null());
    case VT_I1:
      return take(given.cVal);
    case VT_I2:
      return take(given.iVal);
    case VT_I4:
    case VT_INT:
      return take(given.lVal);
    case VT_I8:
      return take(given.llVal);
    case VT_UI1:
      return take(given.bVal);
    case VT_UI2:
      return take(given.uiVal);
    case VT_UI4:
    case VT_UINT:
      return take(given.ulVal);
    case VT_UI8:
      return take(static_cast<double>(given.ullVal));
    case VT_R4:
      return take(static_cast<double>(given.fltVal));
    case VT_R8:
      return take(given.dblVal);
    case VT_CY:
      return take(static_cast<double>(given.cyVal) / 10000);
    case VT_DECIMAL:
      return take(decimal_number(given));
    case VT_DATE:
      if (!(given.date >= kFirstDay && given.date < kBehindLastDay)) return DISP_E_OVERFLOW;
      return take(value::date_of_serial(given.date));
    case VT_BOOL:
      return take(boolean(given.boolVal));
    case VT_BSTR:
      return take(utf8({given.bstrVal ? given.bstrVal : u"", SysStringLen(given.bstrVal)}));
    case VT_ERROR:
      return given.scode == DISP_E_PARAMNOTFOUND ? DISP_E_PARAMNOTOPTIONAL : DISP_E_TYPEMISMATCH;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return DISP_E_TYPEMISMATCH;
    default:
      return given.vt & VT_ARRAY ? DISP_E_TYPEMISMATCH : DISP_E_BADVARTYPE;
  }
}

std::size_t size_of(VARTYPE kind) {
  switch (kind) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    default:
      return 8;
  }
}

// The value behind a reference as a variant of its own; what it owns stays the caller's.
HRESULT follow(const VARIANT& given, VARIANT& value) {
  const VARTYPE kind = static_cast<VARTYPE>(given.vt & ~VT_BYREF);
  if (kind & VT_ARRAY) return DISP_E_TYPEMISMATCH;
  if (!given.byref) return E_INVALIDARG;
  if (kind == VT_VARIANT) {
    value = *given.pvarVal;
    return S_OK;
  }
  if (kind == VT_EMPTY || kind == VT_NULL) return DISP_E_BADVARTYPE;
  value = {};
  if (kind == VT_DECIMAL) {
    std::memcpy(static_cast<void*>(&value), given.byref, 16);
  } else {
    std::memcpy(&value.llVal, given.byref, size_of(kind));
  }
  value.vt = kind;
  return S_OK;
}

HRESULT followed(const VARIANT& given, VARIANT& value) {
  value = given;
  for (int depth = 0; value.vt & VT_BYREF; ++depth) {
    if (depth == kDeepest) return DISP_E_TYPEMISMATCH;
    VARIANT next{};
    if (const HRESULT code = follow(value, next); failed(code)) return code;
    value = next;
  }
  return S_OK;
}

}  // namespace

HRESULT read_variant(const VARIANT& given, const value::Variant& when_empty, value::Variant& value) {
  VARIANT direct{};
  if (const HRESULT code = followed(given, direct); failed(code)) return code;
  return read_simple(direct, when_empty, value);
}

HRESULT read_object(const VARIANT& given, IUnknown** object) {
  VARIANT direct{};
  if (const HRESULT code = followed(given, direct); failed(code)) return code;
  if (direct.vt != VT_DISPATCH && direct.vt != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;
  *object = direct.punkVal;
  return S_OK;
}

VARIANT write_variant(const value::Variant& value) {
  VARIANT out{};
  if (const auto* flag = value.as<bool>()) {
    out.vt = VT_BOOL;
    out.boolVal = *flag ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (const auto* integer = value.as<std::int64_t>()) {
    const bool fits = *integer == static_cast<std::int32_t>(*integer);
    out.vt = fits ? VT_I4 : VT_R8;
    if (fits) {
      out.lVal = static_cast<std::int32_t>(*integer);
    } else {
      out.dblVal = static_cast<double>(*integer);
    }
  } else if (const auto* number = value.as<double>()) {
    out.vt = VT_R8;
    out.dblVal = *number;
  } else if (const auto* date = value.as<value::Date>()) {
    out.vt = VT_DATE;
    out.date = value::serial_of(*date);
  } else if (const auto* text = value.as<std::string>()) {
    out.vt = VT_BSTR;
    out.bstrVal = bstr(*text);
  }
  return out;
}

}  // namespace dorvo::automation
