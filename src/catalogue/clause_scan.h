#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::catalogue {

/// Error 6 where a text is longer than a scan's 16-bit counter can reach; `what` names the text.
inline void checkScanLength(std::string_view clause, std::string_view what)
{
    if (clause.size() > INT16_MAX && text::length(clause) > INT16_MAX) {
        throw Error{errors::overflow, std::string{what} + " is longer than 32767 characters."};
    }
}

/// Follows the nesting of parentheses through a clause. Quotes have no effect.
class ParenthesisDepth {
public:
    /// To be called with each character in turn; true where the character stands outside parentheses.
    bool outsideAt(char character) noexcept
    {
        if (character == '(') {
            ++depth_;
        } else if (character == ')') {
            --depth_;
        }
        return depth_ == 0;
    }

private:
    std::ptrdiff_t depth_ = 0; ///< below 0 behind a closing parenthesis too many
};

} // namespace tamarok::catalogue
