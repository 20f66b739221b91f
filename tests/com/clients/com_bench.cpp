#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

#include "com_pointer.h"
#include "component_types.h"
#include "wide_text.h"

#include "tamarok/comm_conv.h"

// Figures of a compiled client: a late-bound call over the direct call of the library, the same by the dual interface,
// and the creation and release of an object by its class object.

namespace {

using tamarok::com::Bstr;
using tamarok::com::ComPointer;

constexpr int rounds = 5;
constexpr int repetitions = 100000;

/// Returns the nanoseconds of one repetition, of the best round.
template <class Operation>
double nanoseconds(const Operation& operation)
{
    double best = 1e12;
    for (int round = 0; round < rounds; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        for (int repetition = 0; repetition < repetitions; ++repetition)
            operation();
        const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - begin;
        best = std::min(best, taken.count() / repetitions);
    }
    return best;
}

DISPID idOf(IDispatch& object, const wchar_t* name)
{
    std::wstring text{name};
    LPOLESTR raw = text.data();
    DISPID id = DISPID_UNKNOWN;
    object.GetIDsOfNames(IID_NULL, &raw, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

void measureCalls(_Comm_Conv& conv)
{
    tamarok::Comm_Conv direct;
    std::size_t length = 0;
    const double plain = nanoseconds([&] { length += direct.NoComma("1.234,50", ".").size(); });
    const Bstr number{"1.234,50"};
    const Bstr separator{"."};
    const double dual = nanoseconds([&] {
        Bstr result;
        conv.NoComma(number.get(), separator.get(), result.put());
        length += SysStringLen(result.get());
    });
    const DISPID id = idOf(conv, L"NoComma");
    const double late = nanoseconds([&] {
        std::array<VARIANT, 2> arguments{};
        V_VT(&arguments[0]) = V_VT(&arguments[1]) = VT_BSTR;
        V_BSTR(&arguments[0]) = separator.get();
        V_BSTR(&arguments[1]) = number.get();
        DISPPARAMS parameters{arguments.data(), nullptr, 2, 0};
        VARIANT result;
        VariantInit(&result);
        conv.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
        length += SysStringLen(V_BSTR(&result));
        VariantClear(&result);
    });
    const double named = nanoseconds([&] { length += static_cast<std::size_t>(idOf(conv, L"NoComma")); });
    std::printf("NoComma direct            %8.0f ns\n", plain);
    std::printf("NoComma dual interface    %8.0f ns, %.0f ns over the direct call\n", dual, dual - plain);
    std::printf("NoComma late bound        %8.0f ns, %.0f ns over the direct call (bound: 1000)\n", late, late - plain);
    std::printf("its name to its id        %8.0f ns\n", named);
    if (length == 0) std::printf("no result\n");
}

} // namespace

int main()
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        ComPointer<IClassFactory> factory;
        const HRESULT found =
            CoGetClassObject(__uuidof(Comm_Conv), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, factory.putVoid());
        if (FAILED(found)) {
            std::printf("Tamarok_Comm.dll is not registered: 0x%08X\n", static_cast<unsigned>(found));
            return 1;
        }
        ComPointer<_Comm_Conv> conv;
        factory->CreateInstance(nullptr, __uuidof(_Comm_Conv), conv.putVoid());
        measureCalls(*conv);
        const double created = nanoseconds([&] {
            ComPointer<IDispatch> made;
            factory->CreateInstance(nullptr, IID_IDispatch, made.putVoid());
        });
        std::printf("create and release        %8.0f ns (bound: 5000)\n", created);
    }
    CoUninitialize();
    return 0;
}
