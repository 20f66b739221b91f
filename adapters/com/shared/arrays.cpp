#include "arrays.h"

#include <vector>

#include "failures.h"
#include "values.h"

namespace tamarok::com {

namespace {

/// The data of an array, locked while it is read or filled.
class LockedData {
public:
    explicit LockedData(SAFEARRAY* array) : array_{array} { check(SafeArrayAccessData(array, &data_), "array"); }
    ~LockedData() { SafeArrayUnaccessData(array_); }
    LockedData(const LockedData&) = delete;
    LockedData& operator=(const LockedData&) = delete;

    /// Returns a reference, as a value of the interface, to an element.
    VARIANT element(std::size_t index, VARTYPE type) const noexcept
    {
        VARIANT reference;
        VariantInit(&reference);
        V_VT(&reference) = static_cast<VARTYPE>(type | VT_BYREF);
        V_BYREF(&reference) = static_cast<char*>(data_) + index * array_->cbElements;
        return reference;
    }

private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

std::vector<VariantArray::Bounds> boundsOf(SAFEARRAY* array)
{
    std::vector<VariantArray::Bounds> bounds;
    for (UINT dimension = 1; dimension <= SafeArrayGetDim(array); ++dimension) {
        LONG lower = 0;
        LONG upper = -1;
        check(SafeArrayGetLBound(array, dimension, &lower), "array");
        check(SafeArrayGetUBound(array, dimension, &upper), "array");
        bounds.push_back({lower, upper});
    }
    return bounds;
}

std::size_t countOf(const std::vector<VariantArray::Bounds>& bounds)
{
    std::size_t count = 1;
    for (const auto& dimension : bounds)
        count *= static_cast<std::size_t>(std::int64_t{dimension.upper} - dimension.lower + 1);
    return count;
}

} // namespace

VariantArray fromSafeArray(SAFEARRAY* array)
{
    // An array variable without ReDim has no array yet.
    if (array == nullptr || SafeArrayGetDim(array) == 0) return {};
    VARTYPE type = VT_EMPTY;
    check(SafeArrayGetVartype(array, &type), "array");
    auto bounds = boundsOf(array);
    std::vector<Variant> elements(countOf(bounds));
    if (!elements.empty()) {
        const LockedData data{array};
        // In both worlds the first index runs fastest.
        for (std::size_t index = 0; index < elements.size(); ++index)
            elements[index] = fromVariant(data.element(index, type));
    }
    return VariantArray{std::move(bounds), std::move(elements)};
}

SAFEARRAY* toSafeArray(const VariantArray& array, VARTYPE element)
{
    std::vector<SAFEARRAYBOUND> bounds;
    for (std::int32_t dimension = 1; dimension <= array.dimensions(); ++dimension) {
        const auto [lower, upper] = array.bounds(dimension);
        bounds.push_back({static_cast<ULONG>(std::int64_t{upper} - lower + 1), lower});
    }
    OwnedVariant owner;
    V_ARRAY(&owner.get()) = SafeArrayCreate(element, static_cast<UINT>(bounds.size()), bounds.data());
    if (V_ARRAY(&owner.get()) == nullptr) throw Error{errors::outOfMemory, "Out of memory: an array."};
    V_VT(&owner.get()) = static_cast<VARTYPE>(VT_ARRAY | element);
    if (!array.elements().empty()) {
        const LockedData data{V_ARRAY(&owner.get())};
        for (std::size_t index = 0; index < array.elements().size(); ++index)
            writeBack(data.element(index, element), array.elements()[index]);
    }
    return owner.release().parray;
}

} // namespace tamarok::com
