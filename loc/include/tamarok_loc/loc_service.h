#pragma once

#include <memory>

#include "tamarok/loc_service.h"

#pragma GCC visibility push(default)

namespace tamarok::loc {

/// Makes the language and procedure service over table STRINGS of the session's connection.
///
/// Texts: `GetText` and `GetText2` return the customer's wording (column `CUSTOM_` + language suffix), or the
/// text of the language's column if that is Null. A number without a text, or with an empty one, gives the
/// number in angle brackets ("<4711>"), so that a missing text is visible on the screen. The language suffix is
/// inserted into the SQL verbatim. `GetText2` gives the text as an SQL literal of national characters, N'...'.
///
/// Forms: `TranslateForm` reads the property `Tag` of the form and of each object in its `Controls`, an array or a
/// collection with `Count` and `Item` from 1. Where the tag is a text of one to five digits from 1 to 32,767, `Caption`
/// is set to the text of that number. An object without such a tag stays unchanged.
///
/// Procedures: `RunProcedure` executes the command on the session's connection and waits for its end. The
/// command keeps connection, text and type.
///
/// Errors: 91 for texts without a connection, 3709 for a closed one and for procedures without an open one;
/// 438 for a tagged object without `Caption`; provider failures, among them 0x80040E14 for a language without
/// columns and for an unknown procedure.
std::unique_ptr<LocService> makeLocService();

} // namespace tamarok::loc

#pragma GCC visibility pop
