#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// One step of a dotted name: a member and the arguments in its parentheses.
struct PathStep {
    std::string member;
    std::vector<Variant> args;
};

/// A dotted name such as `ColumnHeaders(1).Width` or `Fields("NAME").Value`. Arguments are numbers,
/// True, False, and texts in double quotes, a quote inside doubled. Error 5 with the position for a
/// name of another form.
std::vector<PathStep> parsePath(std::string_view path);

/// Walks the path from `root` and reads its last member. Error 91 where a step on the way holds
/// Nothing, 438 where a member does not exist, 13 where a step on the way is no object.
Variant getPath(const ObjectRef& root, std::string_view path);

/// Walks the path and writes its last member. An indexed last member that is an object, such as
/// `Fields("NAME")`, is written through its Value. Errors as getPath.
void putPath(const ObjectRef& root, std::string_view path, const Variant& value);

/// Walks the path and calls its last member. Arguments in its parentheses come before `args`. Errors as
/// getPath.
Variant callPath(const ObjectRef& root, std::string_view path, std::span<Variant> args);

} // namespace tamarok

#pragma GCC visibility pop
