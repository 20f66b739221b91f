#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

namespace tamarok {

/// Reading of values: options of the installation. The class has no state.
class Comm_Get {
public:
    // Options, table OPTIONEN. A property without a row gives its default, and a row with an empty
    // value is made for it through the procedure tmk_OPTIONEN_INS. Failures of the database and of
    // the language service's procedure call are passed on; a value that does not convert is Error 13.

    /// A whole number, 0 by default and for Null. `property` is compared without regard to case.
    /// No row is made for a property given exactly as "DBCURSORLOCATION". Error 6 beyond 32 bits.
    std::int32_t GetOptionenNumber(const TmkVar& tmkVar, std::string_view property) const;
    /// A number, 0 by default and for Null. `property` is compared without regard to case.
    double GetOptionenDouble(const TmkVar& tmkVar, std::string_view property) const;
    /// A text, "" by default and for Null. `property` is compared as given.
    std::string GetOptionenText(const TmkVar& tmkVar, std::string_view property) const;
    /// A date. `property` is compared as given. The default, also for Null, is today for "DATE_TO"
    /// (trimmed, without regard to case) and TmkVar.DateFromDefault for any other property.
    Date GetOptionenDate(const TmkVar& tmkVar, std::string_view property) const;

    /// Setting of the form F_STAMMEINKONF as text, table FORMS_CONFIG. A setting without a row gets
    /// one with `intDefault`, which is then the result. Error 94 where the row holds Null.
    std::string GetKonfNumber(const ado::ConnectionRef& dbAdo, std::string_view property,
                              std::int16_t intDefault) const;
};

} // namespace tamarok
