#pragma once

#include "error_list.h"

#include "tamarok/object.h"

namespace tamarok::data {

/// An object whose members are those of another one, besides its own. Failures of the database are entered into a list.
class ForwardingObject : public Object {
public:
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    void putIndexed(std::string_view name, std::span<const Variant> index, const Variant& value) override;
    Variant call(std::string_view name, std::span<Variant> args) override;
    std::vector<std::string_view> memberNames() const override;

protected:
    /// The object behind this one.
    virtual Object& target() const = 0;
    /// The list for failures; may be null.
    virtual std::shared_ptr<ErrorList> failures() const = 0;
};

} // namespace tamarok::data
