#pragma once

#include <utility>

#include "windows_headers.h"

namespace tamarok::com {

/// A counted reference to an interface; mostly empty or the only owner.
template <class Interface>
class ComPointer {
public:
    ComPointer() noexcept = default;
    ComPointer(std::nullptr_t) noexcept {}
    /// Adds a reference of its own.
    explicit ComPointer(Interface* pointer) noexcept : pointer_{pointer}
    {
        if (pointer_ != nullptr) pointer_->AddRef();
    }
    ComPointer(const ComPointer& other) noexcept : ComPointer{other.pointer_} {}
    ComPointer(ComPointer&& other) noexcept : pointer_{std::exchange(other.pointer_, nullptr)} {}
    ~ComPointer()
    {
        if (pointer_ != nullptr) pointer_->Release();
    }
    ComPointer& operator=(ComPointer other) noexcept
    {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    Interface* get() const noexcept { return pointer_; }
    Interface* operator->() const noexcept { return pointer_; }
    Interface& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    /// Returns where a function of the system puts a new reference.
    Interface** put() noexcept
    {
        *this = nullptr;
        return &pointer_;
    }
    void** putVoid() noexcept { return static_cast<void**>(static_cast<void*>(put())); }

    /// Gives the reference to the caller, who releases it.
    Interface* release() noexcept { return std::exchange(pointer_, nullptr); }

private:
    Interface* pointer_ = nullptr;
};

/// Takes over a reference that the caller holds.
template <class Interface>
ComPointer<Interface> adopt(Interface* pointer) noexcept
{
    ComPointer<Interface> adopted;
    *adopted.put() = pointer;
    return adopted;
}

/// Asks an object for an interface; empty where it has none, and for no object.
template <class Interface>
ComPointer<Interface> query(IUnknown* object) noexcept
{
    ComPointer<Interface> found;
    if (object != nullptr) object->QueryInterface(__uuidof(Interface), found.putVoid());
    return found;
}

} // namespace tamarok::com
