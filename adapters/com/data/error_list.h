#pragma once

#include <memory>
#include <vector>

#include "tamarok/error.h"
#include "tamarok/members.h"

namespace tamarok::data {

/// The collection `Errors` of a connection: the failures of the database at the last operation that had any. A wrong
/// call, such as reading a closed recordset, is none of the database and leaves it as it is.
class ErrorList final : public WithMembers<ErrorList> {
public:
    static std::span<const Member<ErrorList>> members() noexcept;

    std::string_view typeName() const override { return "Errors"; }
    Variant defaultValue() const override { return count(); }
    bool hasDefaultValue() const noexcept override { return true; }

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(errors_.size()); }
    /// Returns an entry by its index from 0. Error 3265 for any other.
    const Error& at(std::int64_t index) const;
    void clear() noexcept { errors_.clear(); }
    /// Takes the failure in, if it is one of a database.
    void note(const Error& error);

private:
    std::vector<Error> errors_;
};

/// Runs an operation of a connection or of one of its recordsets, and enters its failure into the list, which may be
/// null.
template <class Operation>
decltype(auto) noting(const std::shared_ptr<ErrorList>& errors, const Operation& operation)
{
    try {
        return operation();
    } catch (const Error& error) {
        if (errors) errors->note(error);
        throw;
    }
}

} // namespace tamarok::data
