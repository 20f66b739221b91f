#include <string>
#include <string_view>

#include "entry_field.h"
#include "volume_formulas.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

using timber::BarkMode;
using timber::enteredNumber;

/// A volume under the caller's pattern. The pattern sees the number's 15-digit form, as a text in
/// between would give it.
std::string patterned(double volume, std::string_view pattern, const Regional& regional)
{
    return format::value(timber::checkedResult(volume, "the volume"), pattern, regional);
}

} // namespace

std::string Comm_Set::CalculateRundKubatur(std::string_view txtStk, std::string_view txtDurch,
                                           std::string_view txtLange, std::string_view txtRinde2, bool rbtFolgestuck,
                                           std::string_view txtModus, bool boolMantel,
                                           std::string_view strFormatKubatur, std::int16_t KUBATURPLACE) const
{
    const Regional& regional = Platform::current().regional;
    // An empty bark blanks the volume even where the mode would not use it.
    if (txtStk.empty() || txtDurch.empty() || txtLange.empty() || txtRinde2.empty())
        return patterned(0.0, strFormatKubatur, regional);
    const double pieces = enteredNumber(txtStk, "txtStk", regional);
    const double factor = rbtFolgestuck && !boolMantel ? 1.0 : pieces;
    const double diameter = enteredNumber(txtDurch, "txtDurch", regional);
    const double length = enteredNumber(txtLange, "txtLange", regional);
    const BarkMode mode = timber::barkMode(txtModus);
    const double bark = mode == BarkMode::None ? 0.0 : enteredNumber(txtRinde2, "txtRinde2", regional);

    const double volume = timber::checkedResult(timber::roundVolume(diameter, length, bark, mode), "the volume");
    // The piece is rounded, not the line: a line of many pieces is the rounded piece times the pieces.
    const double rounded = convert::roundHalfEven(volume, KUBATURPLACE);
    return patterned(rounded * factor, strFormatKubatur, regional);
}

std::string Comm_Set::CalculateSchichtKubatur(std::string_view UFakt_Tmp, std::string_view RM_Tmp,
                                              std::string_view strFormatKubatur) const
{
    const Regional& regional = Platform::current().regional;
    if (RM_Tmp.empty() || UFakt_Tmp.empty()) return patterned(0.0, strFormatKubatur, regional);
    const double factor = enteredNumber(UFakt_Tmp, "UFakt_Tmp", regional);
    const double stacked = enteredNumber(RM_Tmp, "RM_Tmp", regional);
    // A negative stacked measure passes; a negative factor does not.
    const double volume = stacked == 0 || factor <= 0 ? 0.0 : stacked * factor;
    return patterned(volume, strFormatKubatur, regional);
}

std::string Comm_Set::CalculateStangKubatur(std::string_view UFakt_Tmp, std::string_view Stuck_Tmp,
                                            std::string_view strFormatKubatur) const
{
    const Regional& regional = Platform::current().regional;
    if (UFakt_Tmp.empty() || Stuck_Tmp.empty()) return patterned(0.0, strFormatKubatur, regional);
    const double factor = enteredNumber(UFakt_Tmp, "UFakt_Tmp", regional);
    const double pieces = enteredNumber(Stuck_Tmp, "Stuck_Tmp", regional);
    const double volume = factor <= 0 || pieces <= 0 ? 0.0 : factor * pieces / 100;
    return patterned(volume, strFormatKubatur, regional);
}

} // namespace tamarok
