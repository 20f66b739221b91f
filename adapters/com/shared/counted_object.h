#pragma once

#include <atomic>
#include <memory>

#include "com_pointer.h"
#include "module.h"

namespace tamarok::com {

/// The counting of references of a COM object, whose class is `Derived`. The object deletes itself with the last one.
/// It keeps the DLL loaded.
template <class Derived>
class CountedObject : private module::Held {
protected:
    CountedObject() = default;
    ~CountedObject() = default;

    ULONG addReference() noexcept { return ++references_; }
    ULONG dropReference() noexcept
    {
        const ULONG left = --references_;
        if (left == 0) const std::unique_ptr<Derived> last{static_cast<Derived*>(this)};
        return left;
    }

private:
    std::atomic<ULONG> references_{1};
};

/// Makes a COM object and returns its first reference.
template <class Class, class... Arguments>
ComPointer<Class> makeObject(Arguments&&... arguments)
{
    return adopt(std::make_unique<Class>(std::forward<Arguments>(arguments)...).release());
}

/// Returns a reference to an interface as QueryInterface does.
template <class Interface>
HRESULT give(Interface* object, void** target) noexcept
{
    object->AddRef();
    *target = object;
    return S_OK;
}

} // namespace tamarok::com
