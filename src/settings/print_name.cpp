#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>

#include "tamarok/comm_get.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// The names of reports.

namespace tamarok {

namespace {

/// A report with the numbers of the texts that name it, or with a fixed name that is the same in all languages.
struct PrintName {
    constexpr PrintName(std::string_view reportCode, std::int16_t textNumber, std::int16_t secondTextNumber = 0) :
        code{reportCode}, text{textNumber}, secondText{secondTextNumber}
    {}
    constexpr PrintName(std::string_view reportCode, std::string_view fixedName) : code{reportCode}, name{fixedName} {}

    std::string_view code;
    std::int16_t text = 0;
    std::int16_t secondText = 0; ///< 0 for none
    std::string_view name;
};

/// By code.
constexpr PrintName printNames[]{
#include "data/print_names.inc"
};
static_assert(std::size(printNames) == 168);
static_assert(std::ranges::adjacent_find(printNames, std::greater_equal{}, &PrintName::code) == std::end(printNames),
              "the codes ascend, so that none stands twice");
static_assert(std::ranges::all_of(printNames, [](const PrintName& row) { return (row.text == 0) != row.name.empty(); }),
              "each report has a text or a fixed name");

constexpr std::int32_t exclamationIcon = 48;

const PrintName* findPrintName(std::string_view code)
{
    const auto found = std::ranges::lower_bound(printNames, code, {}, &PrintName::code);
    return found != std::end(printNames) && found->code == code ? found : nullptr;
}

/// Returns the code with its placeholders X, Y, Z in lower case, "HV 9yz". Family JP keeps its capitals.
std::string shownCode(std::string_view code)
{
    const std::size_t familyEnd = code.find(' ');
    const std::string_view family = code.substr(0, familyEnd);
    return family == "JP" ? std::string{code} : std::string{family} + text::toLower(code.substr(familyEnd));
}

} // namespace

std::string Comm_Get::Get_Print_Name(const TmkVar& tmkVar, std::string_view strListe) const
{
    const PrintName* const row = findPrintName(strListe);
    if (row == nullptr) {
        mComm::ShowMessage("Error in F_BBFPrint_BB_HV.Get_Print_Name", exclamationIcon);
        return {};
    }
    if (!row->name.empty()) return std::string{row->name};
    const auto texts = Platform::locService();
    std::string name = shownCode(row->code) + "  " + texts->GetText(row->text, tmkVar);
    if (row->secondText != 0) name += " " + texts->GetText(row->secondText, tmkVar);
    return name;
}

} // namespace tamarok
