#pragma once

#include <string_view>

#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok {

/// Writing of values: options of the installation. The class has no state.
class Comm_Set {
public:
    // Options, table OPTIONEN, written by the procedure tmk_OPTIONEN_INS, which makes the row where
    // there is none. The procedure takes the value as text; an empty text means no value.
    // Errors: 91 without a language service, failures of the procedure, 13 for a value without a
    // text form.

    /// A whole number; Null writes no value.
    void SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A number, written with a point whatever the regional settings are.
    void SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const;
    /// A text of at most 100 characters; Null writes no value.
    void SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A date in the regional short form; Null writes no value.
    void SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
};

} // namespace tamarok
