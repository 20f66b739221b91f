#pragma once

#include <string_view>
#include <vector>

#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok::component {

/// A session record reached by late binding; it does not own the record.
class RecordObject final : public Object {
public:
    explicit RecordObject(TmkVar& record) : record_{record} {}

    TmkVar& record() const noexcept { return record_; }

    std::string_view typeName() const override { return "TmkVar"; }
    Variant get(std::string_view name, std::span<const Variant> args) const override;
    void put(std::string_view name, const Variant& value) override;
    std::vector<std::string_view> memberNames() const override;

private:
    TmkVar& record_;
};

} // namespace tamarok::component
