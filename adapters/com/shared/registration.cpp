#include <array>
#include <string>
#include <vector>

#include "failures.h"
#include "module.h"
#include "server.h"
#include "wide_text.h"

// The entries of a DLL in the registry, as one list that is written and removed as a whole.

namespace tamarok::com {

namespace {

/// The system's marshaller of interfaces that a type library describes.
constexpr std::wstring_view typeLibraryMarshaller = L"{00020424-0000-0000-C000-000000000046}";
constexpr std::wstring_view platformKey = sizeof(void*) == 4 ? L"win32" : L"win64";
/// The view of the registry that programs of the other word size have; the same one on a 32-bit system.
constexpr REGSAM otherView = sizeof(void*) == 4 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;

struct Entry {
    std::wstring key;
    std::wstring name; ///< empty for the key's default value
    std::wstring data;
};

struct Root {
    HKEY hive;
    std::wstring_view path;
};

const std::array roots{Root{HKEY_LOCAL_MACHINE, L"Software\\Classes"}, Root{HKEY_CURRENT_USER, L"Software\\Classes"}};

std::wstring textOf(const GUID& id)
{
    std::array<wchar_t, 40> buffer{};
    const int length = StringFromGUID2(id, buffer.data(), static_cast<int>(buffer.size()));
    return std::wstring{buffer.data(), static_cast<std::size_t>(length > 0 ? length - 1 : 0)};
}

std::wstring classKey(const OfferedClass& offered)
{
    return L"CLSID\\" + textOf(offered.id);
}

std::wstring interfaceKey(const OfferedInterface& offered)
{
    return L"Interface\\" + textOf(offered.id);
}

void addClass(std::vector<Entry>& entries, const OfferedClass& offered, const TypeLibrary* library,
              const std::wstring& path)
{
    const std::wstring key = classKey(offered);
    const std::wstring programId = toWide(offered.programId);
    const std::wstring help = toWide(offered.help);
    entries.push_back({programId, {}, help});
    entries.push_back({programId + L"\\CLSID", {}, textOf(offered.id)});
    entries.push_back({key, {}, help});
    entries.push_back({key + L"\\InprocServer32", {}, path});
    entries.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
    entries.push_back({key + L"\\ProgID", {}, programId});
    entries.push_back({key + L"\\Programmable", {}, {}});
    if (library == nullptr) return;
    entries.push_back({key + L"\\TypeLib", {}, textOf(library->id)});
    entries.push_back({key + L"\\Version", {}, toWide(library->version)});
}

void addLibrary(std::vector<Entry>& entries, const Server& server, const std::wstring& path)
{
    const std::wstring version = toWide(server.library->version);
    const std::wstring key = L"TypeLib\\" + textOf(server.library->id) + L"\\" + version;
    entries.push_back({key, {}, toWide(server.library->help)});
    entries.push_back({key + L"\\0\\" + std::wstring{platformKey}, {}, path});
    entries.push_back({key + L"\\FLAGS", {}, L"0"});
    entries.push_back({key + L"\\HELPDIR", {}, path.substr(0, path.find_last_of(L"\\/"))});
    for (const OfferedInterface& offered : server.interfaces) {
        const std::wstring of = interfaceKey(offered);
        entries.push_back({of, {}, toWide(offered.name)});
        entries.push_back({of + L"\\ProxyStubClsid32", {}, std::wstring{typeLibraryMarshaller}});
        entries.push_back({of + L"\\TypeLib", {}, textOf(server.library->id)});
        entries.push_back({of + L"\\TypeLib", L"Version", version});
    }
}

std::vector<Entry> entriesOf(const Server& server)
{
    const std::wstring path = module::path();
    std::vector<Entry> entries;
    for (const OfferedClass& offered : server.classes)
        addClass(entries, offered, server.library, path);
    if (server.library != nullptr) addLibrary(entries, server, path);
    return entries;
}

/// An open key of the registry, which may be absent.
class Key {
public:
    Key(HKEY parent, const std::wstring& path, REGSAM access)
    {
        state_ = RegOpenKeyExW(parent, path.c_str(), 0, access, &key_);
    }
    Key(HKEY parent, const std::wstring& path)
    {
        state_ = RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key_, nullptr);
    }
    ~Key()
    {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    LSTATUS state() const noexcept { return state_; }
    bool isOpen() const noexcept { return state_ == ERROR_SUCCESS; }
    HKEY get() const noexcept { return key_; }

private:
    HKEY key_ = nullptr;
    LSTATUS state_ = ERROR_SUCCESS;
};

std::wstring under(const Root& root, const std::wstring& key)
{
    return std::wstring{root.path} + L"\\" + key;
}

LSTATUS write(const Root& root, const Entry& entry)
{
    const Key key{root.hive, under(root, entry.key)};
    if (!key.isOpen()) return key.state();
    const auto* const bytes = static_cast<const BYTE*>(static_cast<const void*>(entry.data.c_str()));
    const auto size = static_cast<DWORD>((entry.data.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key.get(), entry.name.empty() ? nullptr : entry.name.c_str(), 0, REG_SZ, bytes, size);
}

/// Removes a key with all that it holds.
LSTATUS remove(const Root& root, const std::wstring& key)
{
    const std::wstring path = under(root, key);
    if (!Key{root.hive, path, KEY_QUERY_VALUE}.isOpen()) return ERROR_SUCCESS;
    // Its content goes first: a key that refuses it keeps its name.
    if (const LSTATUS state = RegDeleteTreeW(root.hive, path.c_str()); state != ERROR_SUCCESS) return state;
    const LSTATUS state = RegDeleteKeyW(root.hive, path.c_str());
    return state == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : state;
}

bool hasSubkeys(const Root& root, const std::wstring& key)
{
    const Key open{root.hive, under(root, key), KEY_READ};
    DWORD count = 0;
    return open.isOpen() &&
           RegQueryInfoKeyW(open.get(), nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr) == ERROR_SUCCESS &&
           count != 0;
}

/// Removes the keys that hold classes, interfaces and libraries, where a user has none: they came with the first entry.
/// RegDeleteKey refuses a key that has something below it.
void removeEmptyHolders(const Root& root)
{
    for (const wchar_t* const holder : {L"CLSID", L"Interface", L"TypeLib"})
        RegDeleteKeyW(root.hive, under(root, holder).c_str());
}

/// Remembers the first failure of a series that goes on.
class Outcome {
public:
    void add(LSTATUS state) noexcept
    {
        if (first_ == ERROR_SUCCESS) first_ = state;
    }
    LSTATUS first() const noexcept { return first_; }

private:
    LSTATUS first_ = ERROR_SUCCESS;
};

LSTATUS removeAll(const Root& root, const Server& server)
{
    Outcome outcome;
    for (const OfferedClass& offered : server.classes) {
        outcome.add(remove(root, classKey(offered)));
        // The name is common to both word sizes.
        if (!Key{root.hive, under(root, classKey(offered)), KEY_QUERY_VALUE | otherView}.isOpen())
            outcome.add(remove(root, toWide(offered.programId)));
    }
    for (const OfferedInterface& offered : server.interfaces)
        outcome.add(remove(root, interfaceKey(offered)));
    if (server.library == nullptr) return outcome.first();
    const std::wstring library = L"TypeLib\\" + textOf(server.library->id);
    const std::wstring files = library + L"\\" + toWide(server.library->version) + L"\\0";
    outcome.add(remove(root, files + L"\\" + std::wstring{platformKey}));
    if (!hasSubkeys(root, files)) outcome.add(remove(root, library));
    return outcome.first();
}

LSTATUS writeAll(const Root& root, const Server& server, const std::vector<Entry>& entries)
{
    for (const Entry& entry : entries) {
        const LSTATUS state = write(root, entry);
        if (state == ERROR_SUCCESS) continue;
        removeAll(root, server);
        return state;
    }
    return ERROR_SUCCESS;
}

} // namespace

HRESULT enterServer(const Server& server) noexcept
{
    return guarded([&] {
        const std::vector<Entry> entries = entriesOf(server);
        LSTATUS state = ERROR_SUCCESS;
        for (const Root& root : roots) {
            state = writeAll(root, server, entries);
            // Another failure than a refusal would be the same for the user.
            if (state != ERROR_ACCESS_DENIED) break;
        }
        return HRESULT_FROM_WIN32(static_cast<DWORD>(state));
    });
}

HRESULT removeServer(const Server& server) noexcept
{
    return guarded([&] {
        Outcome outcome;
        for (const Root& root : roots) {
            outcome.add(removeAll(root, server));
            if (root.hive == HKEY_CURRENT_USER) removeEmptyHolders(root);
        }
        return HRESULT_FROM_WIN32(static_cast<DWORD>(outcome.first()));
    });
}

} // namespace tamarok::com
