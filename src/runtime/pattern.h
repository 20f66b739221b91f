#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "tamarok/text.h"

/// The syntax of number patterns: quotes, escapes and sections.
namespace tamarok::format {

/// Splits a pattern into pieces: quoted or escaped text without quotes and backslash, or one character.
class PatternWalker {
public:
    explicit PatternWalker(std::string_view pattern) noexcept : pattern_{pattern} {}

    bool next(std::string_view& piece) noexcept
    {
        if (at_ >= pattern_.size()) return false;
        const char first = pattern_[at_];
        literal_ = first == '"' || first == '\\';
        if (first == '"') {
            const std::size_t end = std::min(pattern_.find('"', at_ + 1), pattern_.size());
            piece = pattern_.substr(at_ + 1, end - at_ - 1);
            at_ = std::min(end + 1, pattern_.size());
            return true;
        }
        if (literal_) ++at_;
        const std::size_t begin = at_;
        if (at_ < pattern_.size()) {
            if (static_cast<unsigned char>(pattern_[at_]) < 0x80)
                ++at_;
            else
                text::decode(pattern_, at_);
        }
        piece = pattern_.substr(begin, at_ - begin);
        return true;
    }

    /// Returns whether the last piece was quoted or escaped.
    bool isLiteral() const noexcept { return literal_; }

    /// Returns the pattern from `piece` on.
    std::string_view from(std::string_view piece) const noexcept
    {
        return pattern_.substr(static_cast<std::size_t>(piece.data() - pattern_.data()));
    }

    void skip(std::size_t bytes) noexcept { at_ = std::min(at_ + bytes, pattern_.size()); }

    std::size_t offset() const noexcept { return at_; }

private:
    std::string_view pattern_;
    std::size_t at_ = 0;
    bool literal_ = false;
};

/// The sections of a pattern, separated by ";": positive, negative, zero. A missing section is empty; further
/// ones are ignored.
class PatternSections {
public:
    explicit PatternSections(std::string_view pattern) noexcept
    {
        if (pattern.find(';') == std::string_view::npos) {
            sections_[0] = pattern;
            return;
        }
        std::size_t begin = 0;
        std::size_t index = 0;
        PatternWalker walker{pattern};
        for (std::string_view piece; index < sections_.size() && walker.next(piece);) {
            if (walker.isLiteral() || piece != ";") continue;
            sections_[index++] = pattern.substr(begin, walker.offset() - 1 - begin);
            begin = walker.offset();
        }
        if (index < sections_.size()) sections_[index] = pattern.substr(begin);
    }

    std::string_view operator[](std::size_t index) const noexcept { return sections_[index]; }

private:
    std::array<std::string_view, 3> sections_;
};

} // namespace tamarok::format
