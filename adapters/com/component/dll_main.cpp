#include "component_server.h"

// The four functions that the system looks for. They have no other name in the file than these.

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, LPVOID* target)
{
    return tamarok::com::giveClassObject(tamarok::com::componentServer(), classId, interfaceId, target);
}

STDAPI DllCanUnloadNow()
{
    return tamarok::com::canUnload();
}

STDAPI DllRegisterServer()
{
    return tamarok::com::enterServer(tamarok::com::componentServer());
}

STDAPI DllUnregisterServer()
{
    return tamarok::com::removeServer(tamarok::com::componentServer());
}
