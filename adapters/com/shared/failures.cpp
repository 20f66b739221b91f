#include "failures.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <string>

#include "com_pointer.h"
#include "wide_text.h"

namespace tamarok::com {

namespace {

struct Pair {
    HRESULT result;
    std::int32_t number;
};

/// The system's result codes that have a number of the runtime.
constexpr std::array pairs{
    Pair{DISP_E_UNKNOWNINTERFACE, errors::noSuchMember},
    Pair{DISP_E_MEMBERNOTFOUND, errors::noSuchMember},
    Pair{DISP_E_UNKNOWNNAME, errors::noSuchMember},
    Pair{DISP_E_PARAMNOTFOUND, 448},
    Pair{DISP_E_TYPEMISMATCH, errors::typeMismatch},
    Pair{DISP_E_BADVARTYPE, errors::typeMismatch},
    Pair{DISP_E_NONAMEDARGS, 446},
    Pair{DISP_E_OVERFLOW, errors::overflow},
    Pair{DISP_E_BADINDEX, errors::subscriptOutOfRange},
    Pair{DISP_E_BADPARAMCOUNT, errors::wrongArgumentCount},
    Pair{DISP_E_PARAMNOTOPTIONAL, 449},
    Pair{DISP_E_DIVBYZERO, errors::divisionByZero},
    Pair{DISP_E_NOTACOLLECTION, 451},
    Pair{E_OUTOFMEMORY, errors::outOfMemory},
    Pair{E_INVALIDARG, errors::invalidArgument},
    Pair{E_ACCESSDENIED, errors::permissionDenied},
    Pair{REGDB_E_CLASSNOTREG, errors::cannotCreateObject},
    Pair{CO_E_CLASSSTRING, errors::cannotCreateObject},
};

/// 0x800A0000: the numbers of the runtime as result codes.
constexpr std::uint32_t runtimeFailures = 0x800A0000U;

constexpr std::uint32_t bits(HRESULT result) noexcept
{
    return static_cast<std::uint32_t>(result);
}

/// What the system says about a result code, without the end of line.
std::string systemText(HRESULT result)
{
    std::array<wchar_t, 512> buffer{};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        bits(result), 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::string text = toUtf8(std::wstring_view{buffer.data(), length});
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' '))
        text.pop_back();
    if (!text.empty()) return text;
    std::array<char, 16> code{};
    std::snprintf(code.data(), code.size(), "0x%08X", static_cast<unsigned>(bits(result)));
    return "failure " + std::string{code.data()};
}

void freeTexts(EXCEPINFO& info) noexcept
{
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrHelpFile);
    info = EXCEPINFO{};
}

Error describedBy(HRESULT result, std::string source, std::string description, std::string_view what)
{
    if (description.empty()) description = std::string{what} + ": " + systemText(result);
    return Error{numberOf(result), std::move(description), std::move(source)};
}

} // namespace

HRESULT resultOf(std::int32_t number) noexcept
{
    const bool ofRuntime = number > 0 && number <= 0xFFFF;
    if (ofRuntime) return static_cast<HRESULT>(runtimeFailures + static_cast<std::uint32_t>(number));
    return number < 0 ? number : E_FAIL;
}

std::int32_t numberOf(HRESULT result) noexcept
{
    if ((bits(result) & 0xFFFF0000U) == runtimeFailures) return result & 0xFFFF;
    const auto* const pair = std::ranges::find(pairs, result, &Pair::result);
    return pair == pairs.end() ? result : pair->number;
}

Error currentError()
{
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error{errors::outOfMemory, "Out of memory."};
    } catch (const std::exception& failure) {
        return Error{errors::internalError, std::string{"Internal error: "} + failure.what()};
    } catch (...) {
        return Error{errors::internalError, "Internal error."};
    }
}

HRESULT report(const Error& error) noexcept
{
    const HRESULT result = resultOf(error.number);
    ComPointer<ICreateErrorInfo> made;
    if (FAILED(CreateErrorInfo(made.put()))) return result;
    try {
        const Bstr source{error.source};
        const Bstr description{error.description};
        made->SetSource(source.get());
        made->SetDescription(description.get());
    } catch (const std::exception&) {
        return result; // without memory for the texts the number alone goes
    }
    if (const auto info = query<IErrorInfo>(made.get())) SetErrorInfo(0, info.get());
    return result;
}

HRESULT fill(EXCEPINFO* info, const Error& error) noexcept
{
    if (info == nullptr) return DISP_E_EXCEPTION;
    *info = EXCEPINFO{};
    info->scode = resultOf(error.number);
    try {
        info->bstrSource = makeBstr(error.source);
        info->bstrDescription = makeBstr(error.description);
    } catch (const std::exception&) {
        return DISP_E_EXCEPTION; // as above
    }
    return DISP_E_EXCEPTION;
}

Error errorOf(HRESULT result, EXCEPINFO* info, std::string_view what)
{
    if (result != DISP_E_EXCEPTION || info == nullptr) return describedBy(result, {}, {}, what);
    // A callee may fill in the texts only when it is asked to.
    if (info->pfnDeferredFillIn != nullptr) info->pfnDeferredFillIn(info);
    const HRESULT code = info->scode != 0 ? info->scode : resultOf(info->wCode);
    Error error = describedBy(code, toUtf8(info->bstrSource), toUtf8(info->bstrDescription), what);
    freeTexts(*info);
    return error;
}

void check(HRESULT result, std::string_view what)
{
    if (SUCCEEDED(result)) return;
    ComPointer<IErrorInfo> info;
    Bstr source;
    Bstr description;
    if (GetErrorInfo(0, info.put()) == S_OK && info) {
        info->GetSource(source.put());
        info->GetDescription(description.put());
    }
    throw describedBy(result, toUtf8(source.get()), toUtf8(description.get()), what);
}

} // namespace tamarok::com
