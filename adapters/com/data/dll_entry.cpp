#include <array>

#include "command_object.h"
#include "connection_object.h"
#include "failures.h"
#include "machine_regional.h"
#include "object_dispatch.h"
#include "recordset_object.h"
#include "server.h"

#include "tamarok/platform.h"

// The four entries of the DLL. Its classes are reached by name only, so that it has no type library.

namespace tamarok::data {

namespace {

template <class Class>
com::ComPointer<IUnknown> make()
{
    return com::adopt<IUnknown>(com::toDispatch(std::make_shared<Class>()).release());
}

/// Fixed once: programs on Windows know the classes by these identifiers.
const std::array classes{
    com::OfferedClass{{0x5A0B6C53, 0x1F7E, 0x4D0A, {0x9C, 0x1E, 0x2B, 0x8F, 0x60, 0xD4, 0x7A, 0x31}},
                      "Tamarok.Connection",
                      "Connection to an embedded database or to a server",
                      &make<ConnectionObject>},
    com::OfferedClass{{0x8E94D2F7, 0x3B61, 0x4C58, {0xA7, 0x42, 0x0D, 0x95, 0xEE, 0x13, 0xB8, 0x6C}},
                      "Tamarok.Recordset",
                      "Rows of a statement",
                      &make<RecordsetObject>},
    com::OfferedClass{{0xC36F1E08, 0xA25D, 0x47B9, {0x81, 0xFA, 0x54, 0x3C, 0x9E, 0x07, 0xD2, 0x4F}},
                      "Tamarok.Command",
                      "Statement or procedure with parameters",
                      &make<CommandObject>},
};

const com::Server server{.classes = classes};

} // namespace

} // namespace tamarok::data

// The system declares the first two; the names of all four are exported by exports.def.

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** target)
{
    // Texts that scripts give for dates and numbers are read as the user writes them.
    const HRESULT ready = tamarok::com::guarded([] {
        tamarok::Platform::current().regional = tamarok::com::machineRegional();
        return S_OK;
    });
    if (FAILED(ready)) return ready;
    return tamarok::com::giveClassObject(tamarok::data::server, classId, interfaceId, target);
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow()
{
    return tamarok::com::canUnload();
}

extern "C" HRESULT STDAPICALLTYPE DllRegisterServer()
{
    return tamarok::com::enterServer(tamarok::data::server);
}

extern "C" HRESULT STDAPICALLTYPE DllUnregisterServer()
{
    return tamarok::com::removeServer(tamarok::data::server);
}
