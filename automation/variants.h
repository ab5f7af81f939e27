// Between a host's VARIANT and a value of the library.
#pragma once

#include "automation/com.h"
#include "value/variant.h"

namespace dorvo::automation {

// Reads any simple kind, by value or by reference; dates, currency and decimals included. VT_EMPTY gives `when_empty`.
// DISP_E_TYPEMISMATCH for arrays and objects, DISP_E_PARAMNOTOPTIONAL for an argument that was left out,
// DISP_E_BADVARTYPE for a kind that does not exist.
HRESULT read_variant(const VARIANT& given, const value::Variant& when_empty, value::Variant& value);

// The object in a VT_DISPATCH or VT_UNKNOWN, by value or by reference; null for "no object". DISP_E_TYPEMISMATCH else.
HRESULT read_object(const VARIANT& given, IUnknown** object);

// NULL gives VT_EMPTY. The caller frees a VT_BSTR.
VARIANT write_variant(const value::Variant& value);

}  // namespace dorvo::automation
