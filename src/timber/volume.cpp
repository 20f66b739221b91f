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

/// Returns a volume under the caller's pattern, which rounds the number's 15-digit decimal form with halves
/// away from zero. Error 6 for a volume that is too large.
std::string formatVolume(double volume, std::string_view pattern, const Regional& regional)
{
    return format::value(timber::checkedResult(volume, "the volume"), pattern, regional);
}

} // namespace

std::string timber::roundWoodVolume(const RoundWood& wood, std::string_view pattern, std::int16_t places,
                                    const Regional& regional)
{
    const double volume = checkedResult(roundVolume(wood.diameter, wood.length, wood.bark, wood.mode), "the volume");
    // Required by the contract: the piece is rounded half to even before the multiplication, and the pattern
    // rounds the product with halves away from zero. Do not correct.
    const double rounded = convert::roundHalfEven(volume, places);
    return formatVolume(rounded * wood.pieces, pattern, regional);
}

std::string Comm_Set::CalculateRundKubatur(std::string_view txtStk, std::string_view txtDurch,
                                           std::string_view txtLange, std::string_view txtRinde2, bool rbtFolgestuck,
                                           std::string_view txtModus, bool boolMantel,
                                           std::string_view strFormatKubatur, std::int16_t KUBATURPLACE) const
{
    const Regional& regional = Platform::current().regional;
    // Required by the contract: an empty bark makes the volume 0 even if the mode does not use the bark. Do
    // not correct.
    if (txtStk.empty() || txtDurch.empty() || txtLange.empty() || txtRinde2.empty())
        return formatVolume(0.0, strFormatKubatur, regional);
    timber::RoundWood wood;
    const double pieces = enteredNumber(txtStk, "txtStk", regional);
    wood.pieces = rbtFolgestuck && !boolMantel ? 1.0 : pieces;
    wood.diameter = enteredNumber(txtDurch, "txtDurch", regional);
    wood.length = enteredNumber(txtLange, "txtLange", regional);
    wood.mode = timber::barkMode(txtModus);
    if (wood.mode != BarkMode::None) wood.bark = enteredNumber(txtRinde2, "txtRinde2", regional);
    return timber::roundWoodVolume(wood, strFormatKubatur, KUBATURPLACE, regional);
}

std::string Comm_Set::CalculateSchichtKubatur(std::string_view UFakt_Tmp, std::string_view RM_Tmp,
                                              std::string_view strFormatKubatur) const
{
    const Regional& regional = Platform::current().regional;
    if (RM_Tmp.empty() || UFakt_Tmp.empty()) return formatVolume(0.0, strFormatKubatur, regional);
    const double factor = enteredNumber(UFakt_Tmp, "UFakt_Tmp", regional);
    const double stacked = enteredNumber(RM_Tmp, "RM_Tmp", regional);
    // Required by the contract: a negative stacked measure gives a negative volume, while a negative factor,
    // and a negative count of poles below, give 0. Do not correct.
    const double volume = stacked == 0 || factor <= 0 ? 0.0 : stacked * factor;
    return formatVolume(volume, strFormatKubatur, regional);
}

std::string Comm_Set::CalculateStangKubatur(std::string_view UFakt_Tmp, std::string_view Stuck_Tmp,
                                            std::string_view strFormatKubatur) const
{
    const Regional& regional = Platform::current().regional;
    if (UFakt_Tmp.empty() || Stuck_Tmp.empty()) return formatVolume(0.0, strFormatKubatur, regional);
    const double factor = enteredNumber(UFakt_Tmp, "UFakt_Tmp", regional);
    const double pieces = enteredNumber(Stuck_Tmp, "Stuck_Tmp", regional);
    const double volume = factor <= 0 || pieces <= 0 ? 0.0 : factor * pieces / 100;
    return formatVolume(volume, strFormatKubatur, regional);
}

} // namespace tamarok
