#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/object.h"

namespace tamarok {

struct TmkVar;
namespace ado {
class Command;
}

/// The language and procedure service of the sibling library Tamarok_Loc. The library makes one
/// for the length of an operation through `Platform::makeLocService`.
class LocService {
public:
    virtual ~LocService() = default;

    /// Puts the language's captions on a form. A control without a text number stays as it is.
    virtual void TranslateForm(const TmkVar& session, Object& form) = 0;

    /// The text of that number in the session's language. A number without a text gives a visible
    /// mark that holds the number, never a failure of its own.
    virtual std::string GetText(std::int16_t number, const TmkVar& session) = 0;

    /// The same kind of look-up, for texts inside computed columns.
    virtual std::string GetText2(std::int16_t number, const TmkVar& session) = 0;

    /// Runs the stored procedure `name` with the parameters already appended to `command`: sets
    /// the command's connection, text and type, and executes it.
    virtual void RunProcedure(const TmkVar& session, std::string_view name, ado::Command& command) = 0;
};

} // namespace tamarok
