#include <charconv>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"
#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

/// Operations by name. An input has three lines or more: the class, the operation, and one argument a line, whose first
/// character tells its type: d a Double, l a Long, n Null, e Empty, r the session record, c the connection, anything
/// else the text of the line.
namespace {

using namespace tamarok;

class SilentBox final : public MessageBox {
public:
    std::int16_t show(std::string_view, std::int32_t, std::string_view) override { return 1; }
};

/// Fixed settings and a clock that stands still, so that a finding is one again the next day. Without files: no input
/// can write to those of the machine.
Platform fixedPlatform()
{
    Platform platform;
    platform.regional = Regional::named("de-DE");
    platform.clock = std::make_shared<FixedClock>(fromCivil({.year = 2024, .month = 5, .day = 17, .hour = 18}));
    platform.messageBox = std::make_shared<SilentBox>();
    platform.files = nullptr;
    return platform;
}

Variant argumentOf(std::string_view line, const ObjectRef& record, const ado::ConnectionRef& connection)
{
    const std::string_view rest = line.empty() ? line : line.substr(1);
    double number = 0;
    switch (line.empty() ? 't' : line.front()) {
    case 'd': std::from_chars(rest.data(), rest.data() + rest.size(), number); return Variant{number};
    case 'l': {
        std::int32_t whole = 0;
        std::from_chars(rest.data(), rest.data() + rest.size(), whole);
        return Variant{whole};
    }
    case 'n': return Variant{Null{}};
    case 'e': return Variant{};
    case 'r': return Variant{record};
    case 'c': return Variant{ObjectRef{connection}};
    default: return Variant{std::string{line}};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const PlatformScope scope{fixedPlatform()};
    const ado::ConnectionRef connection = embedded::connectInMemory();
    TmkVar session;
    const ObjectRef record = component::makeRecordObject(session);
    std::string_view rest = fuzz::textOf(data, size);
    const std::string_view className = fuzz::takeUpTo(rest, '\n');
    const std::string_view operation = fuzz::takeUpTo(rest, '\n');
    std::vector<Variant> arguments;
    while (!rest.empty())
        arguments.push_back(argumentOf(fuzz::takeUpTo(rest, '\n'), record, connection));
    try {
        component::invoke(className, operation, arguments);
    } catch (const Error& error) {
        if (error.number != 0) return 0;
        std::cerr << "an error without a number: " << error.description << '\n';
        std::abort();
    }
    return 0;
}
