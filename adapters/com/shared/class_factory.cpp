#include <algorithm>

#include "counted_object.h"
#include "failures.h"
#include "server.h"

// Class objects: makers of instances, of which COM gets one for each class.

namespace tamarok::com {

namespace {

class ClassFactory final : public IClassFactory, public CountedObject<ClassFactory> {
public:
    explicit ClassFactory(const OfferedClass& offered) : class_{offered} {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** target) override
    {
        if (target == nullptr) return E_POINTER;
        if (id == IID_IUnknown || id == IID_IClassFactory) return give(static_cast<IClassFactory*>(this), target);
        *target = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return addReference(); }
    ULONG STDMETHODCALLTYPE Release() override { return dropReference(); }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** target) override
    {
        if (target == nullptr) return E_POINTER;
        *target = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return guarded([&] { return class_.make()->QueryInterface(id, target); });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override
    {
        if (lock != FALSE)
            module::hold();
        else
            module::release();
        return S_OK;
    }

private:
    const OfferedClass& class_;
};

} // namespace

HRESULT giveClassObject(const Server& server, REFCLSID classId, REFIID interfaceId, void** target) noexcept
{
    if (target == nullptr) return E_POINTER;
    *target = nullptr;
    const auto found =
        std::ranges::find_if(server.classes, [&](const OfferedClass& offered) { return offered.id == classId; });
    if (found == server.classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
    return guarded([&] { return makeObject<ClassFactory>(*found)->QueryInterface(interfaceId, target); });
}

HRESULT canUnload() noexcept
{
    return module::isHeld() ? S_FALSE : S_OK;
}

} // namespace tamarok::com
