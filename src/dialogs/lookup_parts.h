#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "lookup_dialog.h"

/// What the parts of the lookup share.
namespace tamarok::dialogs {

inline constexpr std::size_t returnColumn = 0; ///< index of the field that the lookup returns, visible or not
inline constexpr std::array<std::string_view, lookupBoxes> boxNames{"Text1", "Text2", "Text3"};

/// Sets the flag of a dialog that positions itself; the destructor clears it.
class LookupDialog::Loading {
public:
    explicit Loading(bool& flag) : flag_{flag} { flag_ = true; }
    ~Loading() { flag_ = false; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;

private:
    bool& flag_;
};

} // namespace tamarok::dialogs
