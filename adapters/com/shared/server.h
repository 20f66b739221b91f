#pragma once

#include <span>
#include <string_view>

#include "com_pointer.h"

/// What a DLL offers to COM, its class objects and its registration.
namespace tamarok::com {

/// A class that clients create.
struct OfferedClass {
    GUID id;
    std::string_view programId; ///< the name by which scripts create it, such as "Tamarok.Connection"
    std::string_view help;
    ComPointer<IUnknown> (*make)(); ///< makes an object; throws where it cannot
};

/// An interface that the type library describes, so that the system can carry its calls to other apartments.
struct OfferedInterface {
    GUID id;
    std::string_view name;
};

/// The type library in the DLL's resources.
struct TypeLibrary {
    GUID id;
    std::string_view version; ///< as the registry has it, such as "2.0"
    std::string_view help;
};

struct Server {
    std::span<const OfferedClass> classes;
    const TypeLibrary* library = nullptr; ///< null for a DLL that is reached by name only
    std::span<const OfferedInterface> interfaces = {};
};

/// Does what DllGetClassObject is asked for.
HRESULT giveClassObject(const Server& server, REFCLSID classId, REFIID interfaceId, void** target) noexcept;

/// Does what DllCanUnloadNow is asked for.
HRESULT canUnload() noexcept;

/// Enters the DLL into the registry: for the machine, or for the user where the machine's part refuses it. A failure
/// leaves nothing behind; its HRESULT is that of the registry.
HRESULT enterServer(const Server& server) noexcept;

/// Removes every entry of the DLL, of the machine and of the user. What the DLL of the other word size needs stays
/// until that one is removed too. Nothing to remove is no failure.
HRESULT removeServer(const Server& server) noexcept;

} // namespace tamarok::com
