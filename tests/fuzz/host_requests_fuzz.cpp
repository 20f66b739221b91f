#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "call/call_host.h"
#include "fuzz_input.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/platform.h"

/// Lines to the call host, with an empty database in memory. Every line is answered by one JSON object on one line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tamarok;
    cli::CallHost host{embedded::connectInMemory(), "de-DE"};
    Platform::current().files = nullptr; // no input can write parameter files of the machine
    for (std::string_view rest = fuzz::textOf(data, size); !rest.empty();) {
        const std::string answer = host.answer(fuzz::takeUpTo(rest, '\n'));
        const auto parsed = nlohmann::json::parse(answer, nullptr, false);
        const bool one = parsed.is_object() && (parsed.contains("result") != parsed.contains("error"));
        if (one && answer.find('\n') == std::string::npos) continue;
        std::cerr << "not one answer on one line: " << answer << '\n';
        std::abort();
    }
    return 0;
}
