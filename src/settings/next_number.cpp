#include <string>
#include <string_view>

#include "ado/first_row.h"

#include "tamarok/comm_get.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// The next number of a series.

namespace tamarok {

namespace {

constexpr std::int16_t listNumber = 1;
constexpr std::int16_t otherNumber = 0;

std::string selectLastList(std::int32_t level)
{
    return "SELECT LISTE FROM LISTENKOPF WHERE ID IN (SELECT MAX(LISTENKOPF.ID) FROM LISTENKOPF  WHERE "
           "LISTENKOPF.ID_ACCESS_LEVELS" +
           (level == 0 ? std::string{" IS NULL"} : " = " + std::to_string(level)) + ")";
}

std::string currentYear()
{
    const std::string year = std::to_string(toCivil(Platform::today()).year);
    return std::string{text::right(year, 2)};
}

/// Reads the number of the forest office of a level with eight characters; false if the level has none.
bool readOffice(const TmkVar& session, std::int32_t level, std::string& number)
{
    const auto value = ado::readFirstValue(
        session.db_ADO,
        "SELECT TOP 1 PERSONAL.NUMMER FROM PERSONAL WHERE PERSONAL.MANDANTEN = 1 AND ISNULL(PERSONAL.DISABLE,0) = 0 "
        "AND PERSONAL.ID_ACCESS_LEVELS = " +
            std::to_string(level));
    if (!value) return false;
    number = text::right("00000000" + ado::fieldText(*value), 8);
    return true;
}

/// Returns the number before the first one of a series of the edition ALF, or "" where there is none. It ends in "00",
/// so that the first number ends in "01".
/// @param level  the level of a list number
std::string seedOf(std::int16_t type, const TmkVar& session, std::string_view statement, std::int32_t level)
{
    std::string office;
    if (type == listNumber && readOffice(session, level, office))
        return office + currentYear() + std::string{text::mid(office, 4, 3)} + "00";
    // Required by the contract: a statement that begins with the word does not count. Do not correct.
    if (type == otherNumber && text::find(statement, "BEREITST") > 1 &&
        readOffice(session, session.ID_Access_Levels, office))
        return "BM" + office + "-" + currentYear() + "00";
    return {};
}

/// Counts a text up like an odometer. Digits and unaccented letters turn, any other character is passed over.
std::string increment(std::string number)
{
    for (std::size_t at = number.size(); at-- > 0;) {
        char& c = number[at];
        if ((c >= '0' && c < '9') || (c >= 'A' && c < 'Z') || (c >= 'a' && c < 'z')) {
            ++c;
            return number;
        }
        if (c == '9') c = '0';
        if (c == 'Z') c = 'A';
        if (c == 'z') c = 'a';
    }
    return "1" + number;
}

} // namespace

std::string Comm_Get::GetNewNumber(std::int16_t SpecialType, const TmkVar& tmkVar, std::string_view strSQL) const
{
    const std::int32_t level = SpecialType == listNumber ? convert::toLong(Variant{strSQL}) : 0;
    std::string number = SpecialType == listNumber ? ado::readFirstText(tmkVar.db_ADO, selectLastList(level))
                                                   : ado::readFirstText(tmkVar.db_ADO, strSQL);
    if (number.empty() && tmkVar.strCustomer == "ALF") number = seedOf(SpecialType, tmkVar, strSQL, level);
    return increment(std::move(number));
}

} // namespace tamarok
