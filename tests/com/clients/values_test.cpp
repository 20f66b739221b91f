#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "arrays.h"
#include "automation_object.h"
#include "checks.h"
#include "failures.h"
#include "object_dispatch.h"
#include "values.h"
#include "wide_text.h"

#include "tamarok/collection.h"
#include "tamarok/component.h"
#include "tamarok/controls.h"

// Values, arrays, errors and objects between the component interface and the library, row by row.

namespace {

using namespace tamarok;
using checks::expect;
using com::OwnedVariant;

VARIANT typed(VARTYPE type) noexcept
{
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = type;
    return value;
}

template <class Set>
VARIANT made(VARTYPE type, const Set& set)
{
    VARIANT value = typed(type);
    set(value);
    return value;
}

void readsEveryType()
{
    struct Row {
        std::string_view what;
        VARIANT given;
        Variant expected;
    };
    DECIMAL small{};
    VarDecFromR8(12.5, &small);
    DECIMAL large{};
    VarDecFromI8(9007199254740993, &large);
    const auto decimal = [](const DECIMAL& number) {
        VARIANT value = typed(VT_EMPTY);
        value.decVal = number;
        V_VT(&value) = VT_DECIMAL;
        return value;
    };
    const com::Bstr umlaut{"Gr\xC3\xBC\xC3\x9F"};
    const std::array rows{
        Row{"Empty", typed(VT_EMPTY), Empty{}},
        Row{"Null", typed(VT_NULL), Null{}},
        Row{"true", made(VT_BOOL, [](VARIANT& v) { V_BOOL(&v) = VARIANT_TRUE; }), true},
        Row{"false", made(VT_BOOL, [](VARIANT& v) { V_BOOL(&v) = VARIANT_FALSE; }), false},
        Row{"signed byte", made(VT_I1, [](VARIANT& v) { V_I1(&v) = -5; }), std::int16_t{-5}},
        Row{"byte", made(VT_UI1, [](VARIANT& v) { V_UI1(&v) = 200; }), std::int16_t{200}},
        Row{"Integer", made(VT_I2, [](VARIANT& v) { V_I2(&v) = -32768; }), std::int16_t{-32768}},
        Row{"unsigned 16", made(VT_UI2, [](VARIANT& v) { V_UI2(&v) = 65535; }), std::int32_t{65535}},
        Row{"Long", made(VT_I4, [](VARIANT& v) { V_I4(&v) = -70000; }), std::int32_t{-70000}},
        Row{"int", made(VT_INT, [](VARIANT& v) { V_INT(&v) = 5; }), std::int32_t{5}},
        Row{"unsigned 32", made(VT_UI4, [](VARIANT& v) { V_UI4(&v) = 4000000000U; }), std::int64_t{4000000000}},
        Row{"64 bits", made(VT_I8, [](VARIANT& v) { V_I8(&v) = -5; }), std::int64_t{-5}},
        Row{"Single", made(VT_R4, [](VARIANT& v) { V_R4(&v) = 0.5F; }), 0.5},
        Row{"Double", made(VT_R8, [](VARIANT& v) { V_R8(&v) = 1e300; }), 1e300},
        Row{"Currency", made(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = 12345; }), 1.2345},
        Row{"Decimal", decimal(small), 12.5},
        Row{"whole Decimal of 16 digits", decimal(large), std::int64_t{9007199254740993}},
        Row{"Date", made(VT_DATE, [](VARIANT& v) { V_DATE(&v) = 45000.25; }), Date{45000.25}},
        Row{"text", made(VT_BSTR, [&](VARIANT& v) { V_BSTR(&v) = umlaut.get(); }), "Gr\xC3\xBC\xC3\x9F"},
        Row{"absent text", made(VT_BSTR, [](VARIANT& v) { V_BSTR(&v) = nullptr; }), ""},
        Row{"Nothing", made(VT_DISPATCH, [](VARIANT& v) { V_DISPATCH(&v) = nullptr; }), Variant{ObjectRef{}}},
        Row{"array not dimensioned", made(VT_ARRAY | VT_I2, [](VARIANT& v) { V_ARRAY(&v) = nullptr; }), VariantArray{}},
    };
    for (const Row& row : rows)
        expect(com::fromVariant(row.given) == row.expected, row.what);
    VARIANT missing = typed(VT_ERROR);
    V_ERROR(&missing) = DISP_E_PARAMNOTFOUND;
    expect(component::isMissing(com::fromVariant(missing)), "omitted argument");
}

void readsReferences()
{
    std::int16_t number = 7;
    VARIANT reference = typed(VT_I2 | VT_BYREF);
    V_I2REF(&reference) = &number;
    expect(com::fromVariant(reference) == Variant{std::int16_t{7}}, "reference to an Integer");
    VARIANT outer = typed(VT_VARIANT | VT_BYREF);
    V_VARIANTREF(&outer) = &reference;
    expect(com::fromVariant(outer) == Variant{std::int16_t{7}}, "reference to a Variant with a reference");
    com::writeBack(outer, Variant{std::int16_t{9}});
    expect(number == 9, "writing through both references");
    com::Bstr text{"old"};
    VARIANT textReference = typed(VT_BSTR | VT_BYREF);
    V_BSTRREF(&textReference) = text.put();
    com::writeBack(textReference, Variant{"new"});
    expect(com::toUtf8(text.get()) == "new", "writing to a text");
    OwnedVariant variable;
    V_VT(&variable.get()) = VT_BSTR;
    V_BSTR(&variable.get()) = com::makeBstr("old");
    VARIANT variableReference = typed(VT_VARIANT | VT_BYREF);
    V_VARIANTREF(&variableReference) = &variable.get();
    com::writeBack(variableReference, Variant{std::int32_t{5}});
    expect(V_VT(&variable.get()) == VT_I4 && V_I4(&variable.get()) == 5, "a Variant takes the type of the value");
}

void refuses(std::int32_t number, const std::function<void()>& operation, std::string_view what)
{
    try {
        operation();
        expect(false, what);
    } catch (const Error& error) {
        expect(error.number == number, what);
    }
}

void refusesBadValues()
{
    std::int16_t number = 7;
    VARIANT reference = typed(VT_I2 | VT_BYREF);
    V_I2REF(&reference) = &number;
    refuses(
        6, [&] { com::writeBack(reference, Variant{std::int32_t{70000}}); }, "overflow");
    refuses(
        13, [&] { com::writeBack(reference, Variant{"seven"}); }, "a text for an Integer");
    expect(number == 7, "a refused value is not written");
    refuses(
        13, [] { com::fromVariant(typed(VT_FILETIME)); }, "a type without counterpart");
    refuses(
        13, [] { com::fromVariant(typed(VT_RECORD)); }, "a record without description");
    VARIANT error = typed(VT_ERROR);
    V_ERROR(&error) = E_FAIL;
    refuses(
        13, [&] { com::fromVariant(error); }, "an error value");
}

void carriesValuesBothWays()
{
    const std::array<Variant, 12> values{Variant{},
                                         Variant{Null{}},
                                         Variant{true},
                                         Variant{std::int16_t{-3}},
                                         Variant{std::int32_t{70000}},
                                         Variant{std::int64_t{5000000000}},
                                         Variant{1.25},
                                         Variant{Date{45000.5}},
                                         Variant{"L\xC3\xA4rche"},
                                         Variant{""},
                                         Variant{ObjectRef{}},
                                         Variant{std::string_view{"a\0b", 3}}};
    for (const Variant& value : values) {
        const OwnedVariant there{com::toVariant(value)};
        const Variant back = com::fromVariant(there.get());
        // A 64-bit number goes as a Decimal, which comes back as a Double.
        const bool isLarge = value.kind() == Variant::Kind::LongLong;
        expect(isLarge ? back == Variant{5000000000.0} : back == value, name(value.kind()));
    }
}

void carriesArraysBothWays()
{
    const VariantArray list{{Variant{"a"}, Variant{std::int16_t{2}}, Variant{Null{}}}, 1};
    const OwnedVariant there{com::toVariant(Variant{list})};
    expect(V_VT(&there.get()) == (VT_ARRAY | VT_VARIANT), "an array is one of Variants");
    expect(com::fromVariant(there.get()) == Variant{list}, "an array with bounds from 1");
    const VariantArray table{{0, 1}, {1, 2}, {Variant{"00"}, Variant{"10"}, Variant{"01"}, Variant{"11"}}};
    const OwnedVariant rows{com::toVariant(Variant{table})};
    std::array<LONG, 2> place{1, 2};
    OwnedVariant element;
    SafeArrayGetElement(V_ARRAY(&rows.get()), place.data(), element.put());
    expect(com::fromVariant(element.get()) == Variant{"11"}, "an element of two dimensions");
    expect(com::fromVariant(rows.get()) == Variant{table}, "two dimensions");
    const OwnedVariant texts{
        com::toVariant(Variant{VariantArray{{Variant{"x"}, Variant{std::int16_t{5}}}}}, VT_ARRAY | VT_BSTR)};
    expect(com::fromVariant(texts.get()) == Variant{VariantArray{{Variant{"x"}, Variant{"5"}}}}, "an array of texts");
    refuses(
        13, [] { com::toVariant(Variant{VariantArray{{Variant{"x"}}}}, VT_ARRAY | VT_I2); },
        "an element that does not convert");
}

void carriesErrors()
{
    expect(com::resultOf(13) == static_cast<HRESULT>(0x800A000DU), "a number of the runtime");
    expect(com::resultOf(errors::timeout) == errors::timeout, "a provider's number");
    expect(com::numberOf(static_cast<HRESULT>(0x800A0BCDU)) == 3021, "a number back");
    expect(com::numberOf(DISP_E_TYPEMISMATCH) == 13, "a result code of the system");
    expect(com::numberOf(DISP_E_BADPARAMCOUNT) == 450, "a wrong number of arguments");
    expect(com::numberOf(E_NOINTERFACE) == E_NOINTERFACE, "any other result code");
    const HRESULT result = com::report(Error{errors::typeMismatch, "Type mismatch: L\xC3\xA4rche", "Comm_Get.Get_Key"});
    try {
        com::check(result, "call");
        expect(false, "a failed call");
    } catch (const Error& error) {
        expect(error.number == 13 && error.source == "Comm_Get.Get_Key" &&
                   error.description == "Type mismatch: L\xC3\xA4rche",
               "number, source and text of an error");
    }
}

/// An object of the library as its client sees it.
void offersObjects()
{
    const ObjectRef box = controls::make("TextBox");
    const auto dispatch = com::toDispatch(box);
    expect(com::fromDispatch(dispatch.get()) == Variant{box}, "an object that comes back is the same one");
    com::AutomationObject client{dispatch.get()};
    client.put("text", Variant{"abc"});
    expect(client.get("Text", {}) == Variant{"abc"}, "a property by name, in any case");
    refuses(
        438, [&] { client.get("Nonsense", {}); }, "an unknown member");
    refuses(
        380, [&] { client.put("SelStart", Variant{std::int16_t{-1}}); }, "an error of a property");
    expect(client.hasDefaultValue() && client.defaultValue() == Variant{"abc"}, "the default value");
    const auto list = std::make_shared<Collection>();
    list->Add(Variant{"first"}, "A");
    const auto listDispatch = com::toDispatch(list);
    com::AutomationObject listClient{listDispatch.get()};
    const Variant key{"a"};
    expect(listClient.get("Item", {&key, 1}) == Variant{"first"}, "an element of a collection");
    expect(listClient.get("Count", {}) == Variant{std::int32_t{1}}, "the number of elements");
}

} // namespace

int main()
{
    const HRESULT initialised = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    readsEveryType();
    readsReferences();
    refusesBadValues();
    carriesValuesBothWays();
    carriesArraysBothWays();
    carriesErrors();
    offersObjects();
    if (SUCCEEDED(initialised)) CoUninitialize();
    return checks::finish();
}
