#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include "fuzz_input.h"
#include "volume/line_reader.h"
#include "volume/volume_table.h"

#include "tamarok/error.h"

/// Tables of round timber. Every line of an input is measured, or left out with a complaint that names its fault.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tamarok;
    std::stringbuf source{std::string{fuzz::textOf(data, size)}, std::ios::in};
    std::string written;
    std::int64_t complaints = 0;
    try {
        cli::VolumeTable table{cli::VolumeSettings{}};
        cli::LineReader lines{source};
        const std::int64_t leftOut = table.measure(
            lines, [&](std::string_view block) { written += block; },
            [&](std::int64_t, std::string_view fault) { complaints += fault.empty() ? 0 : 1; },
            [](std::int64_t, std::int64_t) {});
        if (leftOut == complaints) return 0;
        std::cerr << leftOut << " lines left out, but " << complaints << " complaints\n";
        std::abort();
    } catch (const Error& error) {
        if (error.number != 0) return 0;
        std::cerr << "an error without a number: " << error.description << '\n';
        std::abort();
    }
}
