#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::catalogue {

/// Throws error 6 if a text has more than 32,767 characters, as many as the contract's 16-bit position counts.
/// @param what  names the text in the message
inline void checkScanLength(std::string_view clause, std::string_view what)
{
    if (clause.size() > INT16_MAX && text::length(clause) > INT16_MAX) {
        throw Error{errors::overflow, std::string{what} + " is longer than 32767 characters."};
    }
}

/// Follows the nesting of parentheses through a clause.
/// Required by the contract: quotes have no effect, so that a parenthesis in a literal counts. Do not correct.
class ParenthesisDepth {
public:
    /// Takes the next character of the clause. Returns true if it stands outside parentheses; a closing
    /// parenthesis that ends the outermost pair counts as outside.
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
    std::ptrdiff_t depth_ = 0; ///< below 0 after a surplus closing parenthesis
};

} // namespace tamarok::catalogue
