#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/object.h"

#pragma GCC visibility push(default)

namespace tamarok {

struct TmkVar;
namespace ado {
class Command;
}

/// The language and procedure service of the sibling library Tamarok_Loc. An operation that needs one makes
/// it by `Platform::locService` and destroys it at its end.
class LocService {
public:
    virtual ~LocService() = default;

    /// Sets the captions of a form in the session's language. A control without a text number keeps its own.
    virtual void TranslateForm(const TmkVar& session, Object& form) = 0;

    /// Returns the text of that number in the session's language. A number without text gives a placeholder
    /// text with the number in it, not an error. Failures of the database are passed on.
    virtual std::string GetText(std::int16_t number, const TmkVar& session) = 0;

    /// Returns a text like GetText as an SQL expression, such as a literal between quotes: computed columns place it
    /// between parentheses.
    virtual std::string GetText2(std::int16_t number, const TmkVar& session) = 0;

    /// Runs the stored procedure `name` with the parameters that the caller has appended to `command`: sets
    /// the command's connection, text and type and executes it. Failures of the database are passed on.
    virtual void RunProcedure(const TmkVar& session, std::string_view name, ado::Command& command) = 0;
};

} // namespace tamarok

#pragma GCC visibility pop
