#pragma once

namespace tamarok::test {

/// The two settings of MakeStkl that choose the searched diameter and the bounds of the classes.
struct ClassRule {
    bool deductsByOption; ///< STKL_Berechnung_Rindenabzug
    bool computesBark;    ///< bolCalculation
};

inline constexpr ClassRule overBark{.deductsByOption = false, .computesBark = false};
inline constexpr ClassRule underBark{.deductsByOption = false, .computesBark = true}; ///< bark is deducted
inline constexpr ClassRule secondBounds{.deductsByOption = true, .computesBark = false};
inline constexpr ClassRule bothSettings{.deductsByOption = true, .computesBark = true}; ///< as overBark

} // namespace tamarok::test
