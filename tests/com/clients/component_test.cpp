#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "checks.h"
#include "com_pointer.h"
#include "component_types.h"
#include "wide_text.h"
// The base headers come first.
#include <aclapi.h>
#include <psapi.h>

// A compiled client of the registered DLL: dual interfaces, dispatch, type library, records, marshalling, life time,
// registration. Arguments: an empty folder, the folder of the DLLs.

namespace {

using checks::expect;
using tamarok::com::Bstr;
using tamarok::com::ComPointer;
using tamarok::com::query;
using tamarok::com::toUtf8;
using tamarok::com::toWide;

constexpr HRESULT runtimeError(unsigned number) noexcept
{
    return static_cast<HRESULT>(0x800A0000U + number);
}

template <class Class, class Interface>
ComPointer<Interface> create()
{
    ComPointer<Interface> made;
    CoCreateInstance(__uuidof(Class), nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), made.putVoid());
    expect(static_cast<bool>(made), "a class is created");
    return made;
}

template <class Function>
Function entry(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

void callsDualInterfaces()
{
    const auto find = create<Comm_find, _Comm_find>();
    const Bstr separator{";"};
    SHORT count = 0;
    const Bstr source{"a;b;c"};
    BSTR raw = source.get();
    BSTR mark = separator.get();
    expect(find->FindNumOfChar(&raw, &mark, &count) == S_OK && count == 2, "texts by reference and a result");
    expect(find->FindNumOfChar(&raw, &mark, nullptr) == E_POINTER, "no place for the result");
    SHORT place = 2;
    Bstr field;
    expect(find->FindSubstring(&raw, &mark, &place, field.put()) == S_OK && toUtf8(field.get()) == "c",
           "a number by reference: " + toUtf8(field.get()));

    const auto getter = create<Comm_Get, _Comm_Get>();
    SHORT key = 'x';
    SHORT passed = 1;
    expect(FAILED(getter->OnlyNumbers(&key, VARIANT_FALSE, nullptr, VARIANT_FALSE, &passed)), "Nothing for a control");
}

void reportsErrors()
{
    const auto getter = create<Comm_Get, _Comm_Get>();
    VARIANT null;
    VariantInit(&null);
    V_VT(&null) = VT_NULL;
    DATE date = 0;
    expect(getter->Get_Date_N(null, &date) == runtimeError(94), "the number of an error as HRESULT");
    ComPointer<IErrorInfo> info;
    expect(GetErrorInfo(0, info.put()) == S_OK, "an error has its information");
    Bstr source;
    Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    expect(toUtf8(source.get()) == "Comm_Get.Get_Date_N" && !toUtf8(description.get()).empty(),
           "source and description");
    const auto support = query<ISupportErrorInfo>(getter.get());
    expect(support && support->InterfaceSupportsErrorInfo(__uuidof(_Comm_Get)) == S_OK &&
               support->InterfaceSupportsErrorInfo(IID_IPersist) == S_FALSE,
           "the interface announces its errors");
}

void answersInterfaces()
{
    const auto find = create<Comm_find, _Comm_find>();
    void* none = &none;
    expect(find->QueryInterface(__uuidof(_Comm_Get), &none) == E_NOINTERFACE && none == nullptr,
           "the interface of another class");
    expect(find->QueryInterface(IID_IPersistStream, &none) == E_NOINTERFACE, "an interface that the class lacks");
    expect(find->QueryInterface(IID_IUnknown, nullptr) == E_POINTER, "no place for the interface");
    const auto dispatch = query<IDispatch>(find.get());
    expect(query<IUnknown>(dispatch.get()).get() == query<IUnknown>(find.get()).get(), "one identity");
    ComPointer<IUnknown> outer;
    expect(CoCreateInstance(__uuidof(Comm_find), find.get(), CLSCTX_INPROC_SERVER, IID_IUnknown, outer.putVoid()) ==
               CLASS_E_NOAGGREGATION,
           "no aggregation");
}

DISPID idOf(IDispatch& object, const wchar_t* name)
{
    std::wstring text{name};
    LPOLESTR raw = text.data();
    DISPID id = DISPID_UNKNOWN;
    object.GetIDsOfNames(IID_NULL, &raw, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

void dispatchesNames()
{
    const auto find = create<Comm_find, IDispatch>();
    expect(idOf(*find, L"FindNumOfChar") == 1 && idOf(*find, L"FINDSUBSTRING") == 2,
           "ids in slot order, names in any case");
    expect(idOf(*find, L"Nonsense") == DISPID_UNKNOWN, "an unknown name");
    const auto forms = create<Comm_Forms, IDispatch>();
    expect(idOf(*forms, L"Info_ProgressLabel") == 1 && idOf(*forms, L"Info_ProgressValue") == 3 &&
               idOf(*forms, L"info_init") == 5,
           "the functions of a property share an id");

    std::array<std::wstring, 3> names{L"FindNumOfChar", L"STRFCHAR", L"sTmpString"};
    std::array<LPOLESTR, 3> raw{names[0].data(), names[1].data(), names[2].data()};
    std::array<DISPID, 3> ids{};
    expect(find->GetIDsOfNames(IID_NULL, raw.data(), 3, LOCALE_USER_DEFAULT, ids.data()) == S_OK && ids[1] == 1 &&
               ids[2] == 0,
           "names of arguments");
    const Bstr text{"a,b"};
    const Bstr mark{","};
    std::array<VARIANT, 2> arguments{};
    V_VT(&arguments[0]) = VT_BSTR;
    V_BSTR(&arguments[0]) = mark.get();
    V_VT(&arguments[1]) = VT_BSTR;
    V_BSTR(&arguments[1]) = text.get();
    std::array<DISPID, 2> named{ids[1], ids[2]};
    DISPPARAMS parameters{arguments.data(), named.data(), 2, 2};
    VARIANT result;
    VariantInit(&result);
    expect(find->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr,
                        nullptr) == S_OK &&
               V_VT(&result) == VT_I2 && V_I2(&result) == 1,
           "named arguments");
    EXCEPINFO info{};
    expect(find->Invoke(99, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, &info, nullptr) ==
                   DISP_E_EXCEPTION &&
               info.scode == runtimeError(438),
           "an unknown id");
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
}

/// The functions of an interface in the type library: ids and places ascend, a property's put comes before its get.
void describesInterface(ITypeInfo& dispatch, std::string_view what)
{
    HREFTYPE reference = 0;
    ComPointer<ITypeInfo> table;
    expect(SUCCEEDED(dispatch.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
               SUCCEEDED(dispatch.GetRefTypeInfo(reference, table.put())),
           what);
    if (!table) return;
    TYPEATTR* attributes = nullptr;
    table->GetTypeAttr(&attributes);
    expect((attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0 && attributes->cFuncs > 0, what);
    SHORT lastPlace = -1;
    MEMBERID lastId = 0;
    for (UINT index = 0; index < attributes->cFuncs; ++index) {
        FUNCDESC* function = nullptr;
        if (FAILED(table->GetFuncDesc(index, &function))) continue;
        const bool isGetOfPut = function->memid == lastId && function->invkind == INVOKE_PROPERTYGET;
        expect(function->oVft > lastPlace && (function->memid == static_cast<MEMBERID>(index) + 1 || isGetOfPut), what);
        lastPlace = function->oVft;
        lastId = function->memid;
        table->ReleaseFuncDesc(function);
    }
    table->ReleaseTypeAttr(attributes);
}

void describesItself()
{
    const std::array classes{__uuidof(Comm_find), __uuidof(GridHelp),    __uuidof(C_Version), __uuidof(Comm_Forms),
                             __uuidof(Comm_Act),  __uuidof(Comm_CSel),   __uuidof(Comm_Conv), __uuidof(Comm_Lock),
                             __uuidof(Comm_SQL),  __uuidof(Comm_Models), __uuidof(Comm_Get),  __uuidof(Comm_Set)};
    for (const CLSID& id : classes) {
        ComPointer<IDispatch> made;
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made.putVoid());
        expect(static_cast<bool>(made), "each class is created");
        if (!made) continue;
        UINT count = 0;
        ComPointer<ITypeInfo> own;
        made->GetTypeInfoCount(&count);
        expect(count == 1 && SUCCEEDED(made->GetTypeInfo(0, LOCALE_USER_DEFAULT, own.put())),
               "each class has its description");
        if (own) describesInterface(*own, "functions in slot order");
        const auto provider = query<IProvideClassInfo>(made.get());
        ComPointer<ITypeInfo> classInfo;
        expect(provider && SUCCEEDED(provider->GetClassInfo(classInfo.put())), "each object names its class");
    }
}

ComPointer<IRecordInfo> recordOf()
{
    const auto getter = create<Comm_Get, IDispatch>();
    ComPointer<ITypeInfo> own;
    ComPointer<ITypeLib> library;
    ComPointer<ITypeInfo> record;
    ComPointer<IRecordInfo> description;
    UINT place = 0;
    std::wstring name{L"TmkVar"};
    MEMBERID id = 0;
    USHORT found = 1;
    getter->GetTypeInfo(0, LOCALE_USER_DEFAULT, own.put());
    own->GetContainingTypeLib(library.put(), &place);
    library->FindName(name.data(), 0, record.put(), &id, &found);
    expect(SUCCEEDED(GetRecordInfoFromTypeInfo(record.get(), description.put())), "the record of the type library");
    return description;
}

void takesRecords()
{
    const auto description = recordOf();
    if (!description) return;
    ::TmkVar record{};
    ULONG size = 0;
    description->GetSize(&size);
    expect(size == sizeof record,
           "the size of the record: " + std::to_string(size) + ", in C++ " + std::to_string(sizeof record));
    const auto liesAt = [&](const wchar_t* name, const void* place) {
        VARIANT reference;
        VariantInit(&reference);
        void* data = nullptr;
        return SUCCEEDED(description->GetFieldNoCopy(&record, name, &reference, &data)) && V_BYREF(&reference) == place;
    };
    expect(liesAt(L"ID_User", &record.ID_User) && liesAt(L"DateTo", &record.DateTo) &&
               liesAt(L"strEmptyText", &record.strEmptyText) && liesAt(L"bolOracle", &record.bolOracle),
           "the places of the fields");

    // The same statement by the dual interface and by name.
    const auto setter = create<Comm_Set, _Comm_Set>();
    const Bstr kind{"HOLZART"};
    const Bstr condition{""};
    Bstr typed;
    const HRESULT dual = setter->CreateSQL(&record, kind.get(), condition.get(), typed.put());
    std::array<VARIANT, 3> arguments{};
    V_VT(&arguments[0]) = VT_BSTR;
    V_BSTR(&arguments[0]) = condition.get();
    V_VT(&arguments[1]) = VT_BSTR;
    V_BSTR(&arguments[1]) = kind.get();
    V_VT(&arguments[2]) = VT_RECORD | VT_BYREF;
    V_RECORD(&arguments[2]) = &record;
    V_RECORDINFO(&arguments[2]) = description.get();
    DISPPARAMS parameters{arguments.data(), nullptr, 3, 0};
    VARIANT result;
    VariantInit(&result);
    EXCEPINFO info{};
    const HRESULT named = setter->Invoke(idOf(*setter, L"CreateSQL"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                         &parameters, &result, &info, nullptr);
    const bool isSame =
        dual == S_OK ? named == S_OK && V_VT(&result) == VT_BSTR && toUtf8(V_BSTR(&result)) == toUtf8(typed.get())
                     : info.scode == dual;
    expect(isSame, "a record by the dual interface and by name");
    VariantClear(&result);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);

    const auto getter = create<Comm_Get, _Comm_Get>();
    const Bstr column{"NAME"};
    Bstr value;
    expect(getter->Get_FieldValue(&record, column.get(), kind.get(), condition.get(), value.put()) == runtimeError(91),
           "a record without connection");
    expect(getter->Get_FieldValue(nullptr, column.get(), kind.get(), condition.get(), value.put()) == runtimeError(91),
           "no record");
}

/// A host's control that answers names only by the extended interface, and each kind of request by itself.
class ExtendedControl final : public IDispatchEx {
public:
    explicit ExtendedControl(HRESULT answer = S_OK) : answer_{answer} {}

    LONG selectionStart = 5;
    LONG selectionLength = 0;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** target) override
    {
        const bool isKnown = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(IDispatchEx);
        *target = isKnown ? static_cast<IDispatchEx*>(this) : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDispID(BSTR name, DWORD, DISPID* id) override
    {
        static constexpr std::array<const wchar_t*, 4> names{L"Text", L"SelStart", L"SelLength", L"TypeName"};
        for (std::size_t index = 0; index < names.size(); ++index)
            if (lstrcmpiW(name, names[index]) == 0) *id = static_cast<DISPID>(index) + 10;
        return *id >= 10 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE InvokeEx(DISPID id, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                                       IServiceProvider*) override
    {
        if (FAILED(answer_)) return answer_;
        LONG& number = id == 11 ? selectionStart : selectionLength;
        if (kind == DISPATCH_PROPERTYGET && (id == 10 || id == 13)) {
            V_VT(result) = VT_BSTR;
            V_BSTR(result) = tamarok::com::makeBstr(id == 10 ? "abcd" : "TextBox");
            return S_OK;
        }
        if (kind == DISPATCH_PROPERTYPUT && id != 10) {
            VARIANT value;
            VariantInit(&value);
            VariantChangeType(&value, &parameters->rgvarg[0], 0, VT_I4);
            number = V_I4(&value);
            return S_OK;
        }
        return kind == DISPATCH_METHOD ? DISP_E_MEMBERNOTFOUND : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

private:
    HRESULT answer_;
};

void reachesHostsObjects()
{
    const auto setter = create<Comm_Set, _Comm_Set>();
    ExtendedControl control;
    expect(setter->Select_Text(&control) == S_OK && control.selectionStart == 0 && control.selectionLength == 4,
           "a control by its extended interface");
    ExtendedControl gone{RPC_E_DISCONNECTED};
    expect(setter->Select_Text(&gone) == RPC_E_DISCONNECTED, "a control that has been released");
}

/// Runs a function on a thread while this apartment handles the calls that come in.
void whilePumping(const std::function<void()>& work)
{
    const HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread worker{[&] {
        work();
        SetEvent(done);
    }};
    while (MsgWaitForMultipleObjects(1, &done, FALSE, 20000, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0)
            DispatchMessageW(&message);
    }
    worker.join();
    CloseHandle(done);
}

void isMarshalled()
{
    const auto find = create<Comm_find, _Comm_find>();
    ComPointer<IStream> stream;
    expect(CoMarshalInterThreadInterfaceInStream(__uuidof(_Comm_find), find.get(), stream.put()) == S_OK,
           "an interface leaves");
    SHORT count = 0;
    bool isOther = false;
    HRESULT called = E_FAIL;
    whilePumping([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        {
            ComPointer<_Comm_find> there;
            CoGetInterfaceAndReleaseStream(stream.release(), __uuidof(_Comm_find), there.putVoid());
            isOther = there.get() != find.get();
            const Bstr text{"x/y/z"};
            const Bstr mark{"/"};
            BSTR raw = text.get();
            BSTR separator = mark.get();
            if (there) called = there->FindNumOfChar(&raw, &separator, &count);
        }
        CoUninitialize();
    });
    expect(isOther && called == S_OK && count == 2, "a call from another apartment is marshalled");
}

std::size_t privateBytes()
{
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

void createAndCall(int times)
{
    for (int time = 0; time < times; ++time) {
        const auto find = create<Comm_find, _Comm_find>();
        const Bstr text{"a;b"};
        const Bstr mark{";"};
        BSTR raw = text.get();
        BSTR separator = mark.get();
        SHORT count = 0;
        find->FindNumOfChar(&raw, &separator, &count);
        find->FindNumOfChar(&raw, &separator, nullptr);
    }
}

void leaksNothing()
{
    createAndCall(10000); // what is kept for the process is there afterwards
    const std::size_t before = privateBytes();
    createAndCall(10000);
    expect(privateBytes() < before + 256 * 1024, "10,000 objects leave no memory behind");
}

void staysWhileItIsUsed(const std::wstring& file)
{
    const HMODULE library = LoadLibraryW(file.c_str());
    const auto canUnload = entry<HRESULT(STDAPICALLTYPE*)()>(library, "DllCanUnloadNow");
    const auto classObject = entry<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(library, "DllGetClassObject");
    expect(canUnload != nullptr && classObject != nullptr, "the entry points");
    if (canUnload == nullptr || classObject == nullptr) return;
    expect(canUnload() == S_OK, "nothing is used");
    {
        ComPointer<IClassFactory> factory;
        expect(classObject(__uuidof(Comm_find), IID_IClassFactory, factory.putVoid()) == S_OK, "a class object");
        expect(canUnload() == S_FALSE, "a class object keeps the DLL");
        ComPointer<_Comm_find> find;
        expect(factory->CreateInstance(nullptr, __uuidof(_Comm_find), find.putVoid()) == S_OK, "an object");
        factory = nullptr;
        CoFreeUnusedLibraries();
        expect(canUnload() == S_FALSE, "an object keeps the DLL");
        const Bstr text{"a"};
        BSTR raw = text.get();
        SHORT count = 5;
        expect(find->FindNumOfChar(&raw, &raw, &count) == S_OK, "an object is still there");
        classObject(__uuidof(Comm_find), IID_IClassFactory, factory.putVoid());
        factory->LockServer(TRUE);
        factory = nullptr;
        find = nullptr;
        expect(canUnload() == S_FALSE, "a lock keeps the DLL");
        classObject(__uuidof(Comm_find), IID_IClassFactory, factory.putVoid());
        factory->LockServer(FALSE);
    }
    expect(canUnload() == S_OK, "nothing is used any more");
    void* none = nullptr;
    expect(classObject(IID_IPersist, IID_IClassFactory, &none) == CLASS_E_CLASSNOTAVAILABLE, "an unknown class");
    FreeLibrary(library);
}

/// Reads the names of the export table as the loader has it in memory.
void exportsFourNames(const std::wstring& file)
{
    const HMODULE library = LoadLibraryW(file.c_str());
    const auto* const base = reinterpret_cast<const char*>(library);
    const auto& head =
        *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto place = head.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    const auto& table = *reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + place);
    const auto* const names = reinterpret_cast<const DWORD*>(base + table.AddressOfNames);
    std::vector<std::string> found;
    for (DWORD index = 0; index < table.NumberOfNames; ++index)
        found.emplace_back(base + names[index]);
    std::ranges::sort(found);
    expect(found == std::vector<std::string>{"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer",
                                             "DllUnregisterServer"} &&
               table.NumberOfFunctions == 4,
           "the four exports and no other");
    FreeLibrary(library);
}

/// Returns where a part of the registry has the DLL of a class; "" without an entry.
/// @param classes  the path of the classes in the hive, with "\\" at its end, or ""
std::wstring registeredPath(HKEY hive = HKEY_CLASSES_ROOT, const std::wstring& classes = {})
{
    std::array<wchar_t, 40> id{};
    StringFromGUID2(__uuidof(Comm_find), id.data(), static_cast<int>(id.size()));
    const std::wstring key = classes + L"CLSID\\" + id.data() + L"\\InprocServer32";
    std::array<wchar_t, 1024> path{};
    DWORD size = sizeof path;
    const LSTATUS state = RegGetValueW(hive, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path.data(), &size);
    return state == ERROR_SUCCESS ? std::wstring{path.data()} : std::wstring{};
}

HRESULT callEntry(const std::wstring& file, const char* name)
{
    const HMODULE library = LoadLibraryW(file.c_str());
    const auto function = entry<HRESULT(STDAPICALLTYPE*)()>(library, name);
    const HRESULT result = function != nullptr ? function() : E_FAIL;
    FreeLibrary(library);
    return result;
}

void registersAnyFolder(const std::wstring& original, const std::wstring& scratch)
{
    const std::wstring folder = scratch + L"\\" +
                                toWide("Gr\xC3\xB6\xC3\x9F"
                                       "e aus K\xC3\xB6ln");
    const std::wstring file = folder + L"\\Tamarok_Comm.dll";
    CreateDirectoryW(folder.c_str(), nullptr);
    expect(CopyFileW(original.c_str(), file.c_str(), FALSE) != 0, "a copy of the DLL");
    expect(callEntry(original, "DllUnregisterServer") == S_OK && registeredPath().empty(),
           "unregistering removes the class");
    expect(callEntry(original, "DllUnregisterServer") == S_OK, "unregistering again is no failure");
    expect(callEntry(file, "DllRegisterServer") == S_OK && registeredPath() == file,
           "a folder with umlauts and blanks");
    expect(callEntry(file, "DllRegisterServer") == S_OK, "registering again");
    createAndCall(1);
    CoFreeUnusedLibrariesEx(0, 0);
    expect(callEntry(file, "DllUnregisterServer") == S_OK && registeredPath().empty(), "unregistered from there");
    expect(callEntry(original, "DllRegisterServer") == S_OK && registeredPath() == original, "the first place again");
}

/// A key of the machine's classes that refuses to be written, as all of them do to a user without administrator rights.
class RefusingKey {
public:
    explicit RefusingKey(std::wstring path) : path_{std::move(path)}
    {
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
        std::array<BYTE, SECURITY_MAX_SID_SIZE> everyone{};
        DWORD size = everyone.size();
        CreateWellKnownSid(WinWorldSid, nullptr, everyone.data(), &size);
        EXPLICIT_ACCESSW refusal{};
        refusal.grfAccessPermissions = KEY_SET_VALUE | KEY_CREATE_SUB_KEY;
        refusal.grfAccessMode = DENY_ACCESS;
        refusal.Trustee.TrusteeForm = TRUSTEE_IS_SID;
        refusal.Trustee.ptstrName = reinterpret_cast<LPWSTR>(everyone.data());
        PACL former = nullptr; // belongs to the description
        GetSecurityInfo(key_, SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr, &former, nullptr,
                        &description_);
        SetEntriesInAclW(1, &refusal, former, &refusing_);
        SetSecurityInfo(key_, SE_REGISTRY_KEY, DACL_SECURITY_INFORMATION, nullptr, nullptr, refusing_, nullptr);
    }
    ~RefusingKey()
    {
        RegCloseKey(key_);
        LocalFree(refusing_);
        LocalFree(description_);
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, path_.c_str());
    }
    RefusingKey(const RefusingKey&) = delete;
    RefusingKey& operator=(const RefusingKey&) = delete;

    bool refuses() const
    {
        HKEY opened = nullptr;
        const LSTATUS state = RegOpenKeyExW(HKEY_LOCAL_MACHINE, path_.c_str(), 0, KEY_SET_VALUE, &opened);
        if (opened != nullptr) RegCloseKey(opened);
        return state == ERROR_ACCESS_DENIED;
    }

private:
    std::wstring path_;
    HKEY key_ = nullptr;
    PSECURITY_DESCRIPTOR description_ = nullptr;
    PACL refusing_ = nullptr;
};

void registersForTheUserWhereTheMachineRefuses(const std::wstring& file)
{
    const std::wstring classes = L"Software\\Classes\\";
    expect(callEntry(file, "DllUnregisterServer") == S_OK, "unregistered before");
    {
        const RefusingKey refusing{classes + L"Tamarok_Comm.Comm_find"};
        expect(refusing.refuses(), "the machine's part refuses");
        expect(callEntry(file, "DllRegisterServer") == S_OK, "registered for the user");
        expect(registeredPath(HKEY_LOCAL_MACHINE, classes).empty(), "no entry for the machine");
        expect(registeredPath(HKEY_CURRENT_USER, classes) == file, "the entry of the user");
        // Wine makes classes of the machine's part alone, so that none is made here.
        expect(callEntry(file, "DllUnregisterServer") == S_OK, "unregistered for the user");
        expect(registeredPath(HKEY_CURRENT_USER, classes).empty(), "no entry of the user stays");
    }
    expect(callEntry(file, "DllRegisterServer") == S_OK, "registered for the machine again");
    expect(registeredPath(HKEY_LOCAL_MACHINE, classes) == file, "the entry of the machine");
}

} // namespace

int main(int count, char** arguments)
{
    if (count < 3) return 2;
    const std::wstring scratch = toWide(arguments[1]);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const std::wstring file = registeredPath();
    expect(!file.empty(), "the DLL is registered");
    exportsFourNames(file);
    staysWhileItIsUsed(file);
    callsDualInterfaces();
    reportsErrors();
    answersInterfaces();
    dispatchesNames();
    describesItself();
    takesRecords();
    reachesHostsObjects();
    isMarshalled();
    leaksNothing();
    registersAnyFolder(file, scratch);
    registersForTheUserWhereTheMachineRefuses(file);
    CoUninitialize();
    return checks::finish();
}
