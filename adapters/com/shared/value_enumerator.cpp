#include "value_enumerator.h"

#include <algorithm>
#include <span>

#include "counted_object.h"
#include "failures.h"
#include "values.h"

#include "tamarok/convert.h"

namespace tamarok::com {

namespace {

class ValueEnumerator final : public IEnumVARIANT, public CountedObject<ValueEnumerator> {
public:
    ValueEnumerator(std::vector<Variant> values, std::size_t position) : values_{std::move(values)}, position_{position}
    {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** target) override
    {
        if (target == nullptr) return E_POINTER;
        if (id == IID_IUnknown || id == IID_IEnumVARIANT) return give(static_cast<IEnumVARIANT*>(this), target);
        *target = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return addReference(); }
    ULONG STDMETHODCALLTYPE Release() override { return dropReference(); }

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* values, ULONG* given) override
    {
        if (values == nullptr) return E_POINTER;
        return guarded([&] {
            const ULONG count = std::min(wanted, static_cast<ULONG>(values_.size() - position_));
            for (VARIANT& target : std::span{values, count})
                target = toVariant(values_[position_++]);
            if (given != nullptr) *given = count;
            return count == wanted ? S_OK : S_FALSE;
        });
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override
    {
        const std::size_t left = values_.size() - position_;
        position_ += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        position_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override
    {
        if (copy == nullptr) return E_POINTER;
        return guarded([&] {
            *copy = makeObject<ValueEnumerator>(values_, position_).release();
            return S_OK;
        });
    }

private:
    std::vector<Variant> values_;
    std::size_t position_;
};

Variant element(const Object& list, std::int32_t index)
{
    const Variant position{index};
    return list.get("Item", {&position, 1});
}

/// Whether the index of the list begins at 0.
bool beginsAtZero(const Object& list)
{
    try {
        element(list, 0);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

ComPointer<IEnumVARIANT> makeEnumerator(const Object& list)
{
    const std::int32_t count = convert::toLong(list.get("Count", {}));
    const std::int32_t first = count == 0 || beginsAtZero(list) ? 0 : 1;
    std::vector<Variant> values;
    for (std::int32_t index = first; index < first + count; ++index)
        values.push_back(element(list, index));
    return adopt<IEnumVARIANT>(makeObject<ValueEnumerator>(std::move(values), 0U).release());
}

} // namespace tamarok::com
