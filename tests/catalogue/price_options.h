#pragma once

#include "support/surroundings.h"

namespace tamarok::test {

inline constexpr const char* readNationalFactor =
    "SELECT ISNULL(DOUBLE_VALUE,0) FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'UFAKTNAT_EURO'";
inline constexpr const char* readBaseIsEuro = "SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'STATEURO'";
inline constexpr const char* readNationalCurrency = "SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'NATWAHRUNG'";

/// The options that price columns read.
inline void setPriceOptions(test::RecordingDatabase& database, double nationalFactor, std::int32_t baseIsEuro)
{
    database.answer(readNationalFactor, nationalFactor);
    database.answer(readBaseIsEuro, baseIsEuro);
    database.answer(readNationalCurrency, "ATS");
}

} // namespace tamarok::test
