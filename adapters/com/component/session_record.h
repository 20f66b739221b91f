#pragma once

#include <functional>

#include "windows_headers.h"

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::com {

/// Whether a value of the interface is no object and no record: Nothing, Empty, an omitted argument, or a plain value.
bool isNothing(const VARIANT& value) noexcept;

/// Reads the session record that a client gives: the type library's record, any other record, or any object with
/// properties of the fields' names. A field that is not there keeps its initial value.
/// @param connect  makes the library's connection for the client's one
/// Errors: 6, 13 and 94 for a field that does not convert, with its name.
void readSessionRecord(const VARIANT& value, TmkVar& record,
                       const std::function<ado::ConnectionRef(const ObjectRef&)>& connect);

} // namespace tamarok::com
