#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>

#include "windows_headers.h"

// Behind the base header.
#include <psapi.h>

// Tamarok_Data.dll as a compiled client sees it: its exports, class objects, interfaces, releases and unloading. The
// second argument of the program is the folder of the DLL.

namespace {

std::filesystem::path dllFolder; // set by main

constexpr std::array classIds{
    GUID{0x5A0B6C53, 0x1F7E, 0x4D0A, {0x9C, 0x1E, 0x2B, 0x8F, 0x60, 0xD4, 0x7A, 0x31}},
    GUID{0x8E94D2F7, 0x3B61, 0x4C58, {0xA7, 0x42, 0x0D, 0x95, 0xEE, 0x13, 0xB8, 0x6C}},
    GUID{0xC36F1E08, 0xA25D, 0x47B9, {0x81, 0xFA, 0x54, 0x3C, 0x9E, 0x07, 0xD2, 0x4F}},
};

struct Release {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Release>;

/// The DLL, loaded by its path as the system loads a class's server.
class Dll {
public:
    Dll() : module_{LoadLibraryW((dllFolder / L"Tamarok_Data.dll").c_str())} { EXPECT_NE(module_, nullptr); }
    ~Dll() { FreeLibrary(module_); }
    Dll(const Dll&) = delete;
    Dll& operator=(const Dll&) = delete;

    HMODULE module() const noexcept { return module_; }

    template <class Function>
    Function* entry(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    HRESULT canUnload() const { return entry<HRESULT STDAPICALLTYPE()>("DllCanUnloadNow")(); }
    HRESULT classObject(const GUID& classId, const GUID& interfaceId, void** target) const
    {
        return entry<HRESULT STDAPICALLTYPE(const GUID&, const GUID&, void**)>("DllGetClassObject")(
            classId, interfaceId, target);
    }
    Owned<IClassFactory> factory(const GUID& classId) const
    {
        void* made = nullptr;
        EXPECT_EQ(classObject(classId, IID_IClassFactory, &made), S_OK);
        return Owned<IClassFactory>{static_cast<IClassFactory*>(made)};
    }

private:
    HMODULE module_;
};

Owned<IDispatch> make(IClassFactory& factory)
{
    void* made = nullptr;
    EXPECT_EQ(factory.CreateInstance(nullptr, IID_IDispatch, &made), S_OK);
    return Owned<IDispatch>{static_cast<IDispatch*>(made)};
}

std::size_t memoryInUse()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters), sizeof counters);
    return counters.PrivateUsage;
}

/// The address of what lies at an offset of a loaded module.
template <class Type>
const Type* at(HMODULE module, DWORD offset)
{
    return reinterpret_cast<const Type*>(reinterpret_cast<const char*>(module) + offset);
}

TEST(DataDll, exportsFourEntries)
{
    const Dll dll;
    const auto* const header = at<IMAGE_DOS_HEADER>(dll.module(), 0);
    const auto* const image = at<IMAGE_NT_HEADERS>(dll.module(), static_cast<DWORD>(header->e_lfanew));
    const auto* const exported = at<IMAGE_EXPORT_DIRECTORY>(
        dll.module(), image->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    const auto* const names = at<DWORD>(dll.module(), exported->AddressOfNames);
    std::set<std::string> found;
    for (DWORD index = 0; index < exported->NumberOfNames; ++index)
        found.insert(at<char>(dll.module(), names[index]));
    EXPECT_EQ(found, (std::set<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                            "DllUnregisterServer"}));
    EXPECT_EQ(exported->NumberOfFunctions, 4U);
}

TEST(DataDll, givesTheClassesThatItHas)
{
    const Dll dll;
    for (const GUID& id : classIds) {
        const auto factory = dll.factory(id);
        EXPECT_TRUE(make(*factory));
        void* none = &none;
        EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &none), CLASS_E_NOAGGREGATION);
        EXPECT_EQ(none, nullptr);
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, &none), E_NOINTERFACE);
        EXPECT_EQ(none, nullptr);
        EXPECT_EQ(dll.classObject(id, IID_IDispatch, &none), E_NOINTERFACE);
        EXPECT_EQ(none, nullptr);
    }
    void* none = &none;
    EXPECT_EQ(dll.classObject(IID_IUnknown, IID_IClassFactory, &none), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(none, nullptr);
}

TEST(DataDll, staysLoadedWhileSomethingLives)
{
    const Dll dll;
    EXPECT_EQ(dll.canUnload(), S_OK);
    {
        auto factory = dll.factory(classIds[0]);
        const auto object = make(*factory);
        factory.reset();
        EXPECT_EQ(dll.canUnload(), S_FALSE);
    }
    EXPECT_EQ(dll.canUnload(), S_OK);
    const auto factory = dll.factory(classIds[1]);
    factory->LockServer(TRUE);
    EXPECT_EQ(dll.canUnload(), S_FALSE);
    factory->LockServer(FALSE);
}

TEST(DataDll, namesMembersInAnyCaseAndRefusesOthers)
{
    const Dll dll;
    const auto object = make(*dll.factory(classIds[0]));
    std::wstring name = L"cOmMaNdTiMeOuT";
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
    VARIANT result;
    VariantInit(&result);
    DISPPARAMS none{};
    EXPECT_EQ(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(V_VT(&result), VT_I4);
    EXPECT_EQ(V_I4(&result), 30);
    std::wstring wrong = L"Wheels";
    names = wrong.data();
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
    void* interfaceOfOthers = nullptr;
    EXPECT_EQ(object->QueryInterface(IID_IPersistFile, &interfaceOfOthers), E_NOINTERFACE);
}

TEST(DataDll, tenThousandObjectsLeaveNothing)
{
    const Dll dll;
    const auto cycle = [&dll] {
        for (const GUID& id : classIds) {
            const auto factory = dll.factory(id);
            for (int count = 0; count < 10'000; ++count)
                make(*factory);
        }
    };
    cycle(); // the first round fills what the process keeps for later
    const std::size_t before = memoryInUse();
    cycle();
    constexpr std::size_t slack = std::size_t{256} << 10U; // 30,000 leaked objects would take megabytes
    EXPECT_LT(memoryInUse(), before + slack);
    EXPECT_EQ(dll.canUnload(), S_OK);
}

TEST(DataDll, canBeLoadedAgain)
{
    for (int count = 0; count < 20; ++count) {
        const Dll dll;
        make(*dll.factory(classIds[2]));
        EXPECT_EQ(dll.canUnload(), S_OK);
    }
}

} // namespace

int main(int count, char** words)
{
    testing::InitGoogleTest(&count, words);
    if (count > 2) dllFolder = words[2];
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = RUN_ALL_TESTS();
    CoUninitialize();
    return result;
}
