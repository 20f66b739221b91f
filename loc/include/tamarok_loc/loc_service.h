#pragma once

#include <memory>

#include "tamarok/loc_service.h"

namespace tamarok::loc {

/// The language and procedure service over table STRINGS of the session's connection.
///
/// A text is the customer's own wording (`CUSTOM_` + language suffix) or else the language column.
/// A number without a text, or with an empty one, gives the number in angle brackets ("<4711>"), so
/// that a gap shows on the screen and names itself.
///
/// Forms: `TranslateForm` reads the property `Tag` of the form and of each object in its array
/// `Controls`; where the tag is a text number, `Caption` is set to that text. Anything without a
/// numeric tag stays as it is.
///
/// Errors: 91 where the session has no connection; provider failures.
std::unique_ptr<LocService> makeLocService();

} // namespace tamarok::loc
