#include <string>
#include <string_view>

#include "runtime/convert.h"
#include "runtime/format.h"
#include "timber/volume_formulas.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok {
namespace {

using timber::BarkMode;

/// A number out of an entry field; `field` names it in the error.
double entered(std::string_view text, std::string_view field)
{
    const std::optional<double> number = convert::parseNumber(text, Platform::current().regional);
    if (!number)
        throw Error{errors::typeMismatch,
                    "Type mismatch: \"" + std::string{text} + "\" in field " + std::string{field} + " is no number.",
                    "Comm_Set"};
    return *number;
}

/// A volume under the caller's pattern. The pattern sees the number's 15-digit form, as a text in
/// between would give it.
std::string patterned(double volume, std::string_view pattern)
{
    return format::value(Variant{volume}, pattern);
}

} // namespace

std::string Comm_Set::CalculateRundKubatur(std::string_view txtStk, std::string_view txtDurch,
                                           std::string_view txtLange, std::string_view txtRinde2, bool rbtFolgestuck,
                                           std::string_view txtModus, bool boolMantel,
                                           std::string_view strFormatKubatur, std::int16_t KUBATURPLACE) const
{
    // An empty bark blanks the volume even where the mode would not use it.
    if (txtStk.empty() || txtDurch.empty() || txtLange.empty() || txtRinde2.empty())
        return patterned(0.0, strFormatKubatur);
    const double pieces = entered(txtStk, "txtStk");
    const double factor = rbtFolgestuck && !boolMantel ? 1.0 : pieces;
    const double diameter = entered(txtDurch, "txtDurch");
    const double length = entered(txtLange, "txtLange");
    const BarkMode mode = timber::barkMode(txtModus);
    const double bark = mode == BarkMode::None ? 0.0 : entered(txtRinde2, "txtRinde2");

    const double volume = timber::checkedResult(timber::roundVolume(diameter, length, bark, mode), "the volume");
    // The piece is rounded, not the line: a line of many pieces is the rounded piece times the pieces.
    const double rounded = convert::roundHalfEven(volume, KUBATURPLACE);
    return patterned(timber::checkedResult(rounded * factor, "the volume"), strFormatKubatur);
}

std::string Comm_Set::CalculateSchichtKubatur(std::string_view UFakt_Tmp, std::string_view RM_Tmp,
                                              std::string_view strFormatKubatur) const
{
    if (RM_Tmp.empty() || UFakt_Tmp.empty()) return patterned(0.0, strFormatKubatur);
    const double factor = entered(UFakt_Tmp, "UFakt_Tmp");
    const double stacked = entered(RM_Tmp, "RM_Tmp");
    // A negative stacked measure passes; a negative factor does not.
    const double volume = stacked == 0 || factor <= 0 ? 0.0 : stacked * factor;
    return patterned(timber::checkedResult(volume, "the volume"), strFormatKubatur);
}

std::string Comm_Set::CalculateStangKubatur(std::string_view UFakt_Tmp, std::string_view Stuck_Tmp,
                                            std::string_view strFormatKubatur) const
{
    if (UFakt_Tmp.empty() || Stuck_Tmp.empty()) return patterned(0.0, strFormatKubatur);
    const double factor = entered(UFakt_Tmp, "UFakt_Tmp");
    const double pieces = entered(Stuck_Tmp, "Stuck_Tmp");
    const double volume = factor <= 0 || pieces <= 0 ? 0.0 : factor * pieces / 100;
    return patterned(timber::checkedResult(volume, "the volume"), strFormatKubatur);
}

} // namespace tamarok
