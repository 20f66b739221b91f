#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "binder.h"

#include "tamarok/error.h"

namespace tamarok::component::test {

/// A class with one operation for each kind of parameter, described as the library's own are.
class Probe {
public:
    bool boolean(bool value) const { return value; }
    std::int16_t integer(std::int16_t value) const { return value; }
    std::int32_t number(std::int32_t value) const { return value; }
    double real(double value) const { return value; }
    Date date(Date value) const { return value; }
    std::string text(std::string_view value) const { return std::string{value}; }
    Variant any(const Variant& value) const { return value; }
    std::int32_t count(std::span<const std::int16_t> values) const { return static_cast<std::int32_t>(values.size()); }
    std::string typeOf(Object& object) const { return std::string{object.typeName()}; }
    bool isConnected(const ado::ConnectionRef& connection) const { return connection != nullptr; }
    std::string customer(const TmkVar& session) const { return session.strCustomer; }

    void changeBoolean(bool& value) const { value = !value; }
    void changeInteger(std::int16_t& value) const { value = static_cast<std::int16_t>(value + 1); }
    void changeLong(std::int32_t& value) const { value += 1; }
    void changeDouble(double& value) const { value += 0.5; }
    void changeDate(Date& value) const { value.days += 1; }
    void changeText(std::string& value) const { value += "!"; }
    void changeAny(Variant& value) const { value = Variant{"changed"}; }
    void changeThenFail(std::string& value) const
    {
        value += "!";
        throw Error{errors::invalidArgument, "refused"};
    }
    void changeOneThenFail(std::int16_t& first, std::vector<std::string>& second, std::string& third) const
    {
        first = 7;
        second.emplace_back("added");
        throw Error{errors::invalidArgument, "refused before " + third};
    }
    std::int32_t readByReference(const std::string& marked, const std::string& plain) const
    {
        return static_cast<std::int32_t>(marked.size() + plain.size());
    }

    std::string optional(std::string_view first, std::string_view second, bool third) const
    {
        return std::string{first} + "|" + std::string{second} + "|" + (third ? "true" : "false");
    }
    Variant optionalAny(const Variant& value) const { return value; }
    void optionalChange(std::int16_t& value) const { value = 7; }

    void caption(std::string_view value) { caption_ = value; }
    std::string caption() const { return caption_; }

    static std::int32_t twice(std::int32_t value) { return 2 * value; }

private:
    std::string caption_;
};

// clang-format off
inline constexpr std::array probeOperations{
    operation<&Probe::boolean>(1, "boolean", "value", "."),
    operation<&Probe::integer>(2, "integer", "value", "."),
    operation<&Probe::number>(3, "number", "value", "."),
    operation<&Probe::real>(4, "real", "value", "."),
    operation<&Probe::date>(5, "date", "value", "."),
    operation<&Probe::text>(6, "text", "value", "."),
    operation<&Probe::any>(7, "any", "value", "."),
    operation<&Probe::count>(8, "count", "values", "."),
    operation<&Probe::typeOf>(9, "typeOf", "&object", "."),
    operation<&Probe::isConnected>(10, "isConnected", "connection", "."),
    operation<&Probe::customer>(11, "customer", "&session", "."),
    operation<&Probe::changeBoolean>(12, "changeBoolean", "&value", "."),
    operation<&Probe::changeInteger>(13, "changeInteger", "&value", "."),
    operation<&Probe::changeLong>(14, "changeLong", "&value", "."),
    operation<&Probe::changeDouble>(15, "changeDouble", "&value", "."),
    operation<&Probe::changeDate>(16, "changeDate", "&value", "."),
    operation<&Probe::changeText>(17, "changeText", "&value", "."),
    operation<&Probe::changeAny>(18, "changeAny", "&value", "."),
    operation<&Probe::changeThenFail>(19, "changeThenFail", "&value", "."),
    operation<&Probe::optional>(20, "optional", "first, [second], [third]", "."),
    operation<&Probe::optionalAny>(21, "optionalAny", "[value]", "."),
    operation<&Probe::optionalChange>(22, "optionalChange", "[&value]", "."),
    operation<static_cast<void (Probe::*)(std::string_view)>(&Probe::caption)>(23, "caption", "value", ".", MemberKind::PropertyPut),
    operation<static_cast<std::string (Probe::*)() const>(&Probe::caption)>(24, "caption", "", ".", MemberKind::PropertyGet),
    operation<&Probe::twice>(25, "twice", "value", "."),
    operation<&Probe::changeOneThenFail>(26, "changeOneThenFail", "&first, &second, &third", "."),
    operation<&Probe::readByReference>(27, "readByReference", "&marked, plain", "."),
};
// clang-format on
static_assert(slotsAscend(probeOperations));

inline constexpr ClassInfo probeClass{"Probe", "Probe of the binder.", probeOperations, makeClass<Probe>};

/// Calls an operation of a new probe.
inline Variant probe(std::string_view name, std::span<Variant> args)
{
    return invoke(probeClass, requireOperation(probeClass, name, args.size()), *makeInstance(probeClass), args);
}

inline Variant probe(std::string_view name, Variant arg)
{
    return probe(name, std::span<Variant>{&arg, 1});
}

} // namespace tamarok::component::test
