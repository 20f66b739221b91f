#include "class_call.h"

#include <cstddef>
#include <memory_resource>
#include <string>
#include <vector>

#include "call_objects.h"

#include "tamarok/error.h"

namespace tamarok::com {

namespace {

using component::OperationInfo;
using component::ParameterInfo;
using component::ValueType;

/// In the order of ValueType.
constexpr std::array<VARTYPE, 16> types{VT_EMPTY,
                                        VT_BOOL,
                                        VT_UI1,
                                        VT_I2,
                                        VT_I4,
                                        VT_R8,
                                        VT_DATE,
                                        VT_BSTR,
                                        VT_VARIANT,
                                        VT_ARRAY | VT_I2,
                                        VT_ARRAY | VT_BSTR,
                                        VT_DISPATCH,
                                        VT_DISPATCH,
                                        VT_DISPATCH,
                                        VT_DISPATCH,
                                        VT_RECORD};
static_assert(types.size() == static_cast<std::size_t>(ValueType::Record) + 1);

/// The arguments of one call: the library's values, and the copies that show which of them the operation changed.
class Arguments {
public:
    Arguments(const OperationInfo& operation, std::span<const VARIANT> given) : operation_{operation}, given_{given}
    {
        if (given.size() > operation.parameterCount) {
            throw Error{errors::wrongArgumentCount,
                        "Wrong number of arguments: " + std::to_string(operation.parameterCount) + " needed, " +
                            std::to_string(given.size()) + " given"};
        }
        values_.reserve(given.size());
        before_.reserve(given.size());
        for (std::size_t index = 0; index < given.size(); ++index) {
            values_.push_back(read(operation.parameterList[index], given[index]));
            before_.push_back(isReference(index) ? values_.back() : Variant{});
        }
        objects_.prepare();
    }

    std::span<Variant> values() noexcept { return values_; }

    /// Gives changed values back to the caller's variables, and recordsets their new state.
    void store()
    {
        objects_.finish();
        for (std::size_t index = 0; index < given_.size(); ++index)
            if (isReference(index) && !(values_[index] == before_[index])) writeBack(given_[index], values_[index]);
    }

private:
    Variant read(const ParameterInfo& parameter, const VARIANT& value)
    {
        try {
            return objects_.argument(parameter.type, value);
        } catch (Error& error) {
            throw error.addContext("argument " + std::string{parameter.name});
        }
    }
    bool isReference(std::size_t index) const noexcept
    {
        return operation_.parameterList[index].byReference && (V_VT(&given_[index]) & VT_BYREF) != 0;
    }

    const OperationInfo& operation_;
    std::span<const VARIANT> given_;
    CallObjects objects_;
    std::array<std::byte, 2 * OperationInfo::maxParameters * sizeof(Variant)> room_;
    std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
    std::pmr::vector<Variant> values_ = std::pmr::vector<Variant>(&memory_);
    std::pmr::vector<Variant> before_ =
        std::pmr::vector<Variant>(&memory_); ///< the values of references before the call
};

} // namespace

VARTYPE typeOf(ValueType type) noexcept
{
    return types[static_cast<std::size_t>(type)];
}

VARIANT callOperation(const component::ClassInfo& info, const OperationInfo& operation, const Object& instance,
                      std::span<const VARIANT> given)
{
    try {
        Arguments arguments{operation, given};
        Variant result;
        try {
            result = component::invoke(info, operation, instance, arguments.values());
        } catch (...) {
            arguments.store();
            throw;
        }
        arguments.store();
        return toVariant(result, operation.result == ValueType::None ? VARTYPE{VT_VARIANT} : typeOf(operation.result));
    } catch (Error& error) {
        if (error.source.empty()) error.source = std::string{info.name} + "." + std::string{operation.name};
        throw;
    }
}

} // namespace tamarok::com
