#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/variant.h"

namespace tamarok::ado {

/// The parsed criterion of Recordset::Find, "COLUMN operator value".
class FindCriterion {
public:
    /// Parses the criterion. Error 5 for a text of another form.
    explicit FindCriterion(std::string_view criterion);

    const std::string& column() const noexcept { return column_; }

    /// Returns whether `value` meets the criterion; Null never does. Error 13 if the two cannot be compared.
    bool holds(const Variant& value) const;

private:
    enum class Operator : std::uint8_t { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual, Like };
    struct Spelling;
    static const Spelling spellings[];

    [[noreturn]] void refuse(std::string_view why) const;
    std::string_view readColumn(std::string_view rest);
    std::string_view readOperator(std::string_view rest);
    void readValue(std::string_view rest);
    void readPattern(std::string_view pattern);
    bool matchesPattern(std::string_view folded) const;
    int compare(const Variant& value) const;
    bool accepts(int order) const noexcept;

    std::string criterion_;
    std::string column_;
    Operator operator_ = Operator::Equal;
    Variant value_;          ///< String (in upper case), Double or Date
    bool openStart_ = false; ///< LIKE '*...'
    bool openEnd_ = false;   ///< LIKE '...*'
};

} // namespace tamarok::ado
