#pragma once

#include "call/json.h"

#include "tamarok/variant.h"

/// Arrays as requests and answers write them.
///
/// One dimension from 0 is a JSON array: [1,"x"]. Any other is {"$array":[...],"base":1}. In "$array"
/// each level of nested JSON arrays is a dimension, the outermost the first; an element that is itself
/// an array is written as {"$array":...} there. "base" is the lower bound of all dimensions, or a list with
/// one lower bound for each; left out, it is 0. An array of several dimensions that has no element
/// also has the list "upper", its upper bounds.
namespace tamarok::cli {

class ObjectNames;

/// Whether the object is a marked array.
bool isMarkedArray(const Json& json);

/// A marked array. Error 5 for one of another form: nested arrays that differ in length, and bounds that
/// are no 32-bit whole numbers or do not fit the elements.
Variant arrayFromMarked(const Json& json, const ObjectNames& names);

/// An array in an answer, in one of both forms. Errors as fromVariant.
Json arrayToJson(const VariantArray& array, ObjectNames& names);

} // namespace tamarok::cli
