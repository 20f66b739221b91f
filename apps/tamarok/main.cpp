#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>
#include <string_view>

#include "command_line.h"
#include "init/interrupt.h"
#include "list/list_query.h"
#include "print/output.h"
#include "usage_error.h"

#include "tamarok/error.h"

namespace {

/// Prints one line on standard error: line ends in the message become blanks, other control characters, which
/// would move the terminal's cursor or change its colours, are shown as "\x1b". Returns `status`.
int complain(std::string_view message, int status)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string line;
    for (const char character : message) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n' || character == '\r')
            line += ' ';
        else if (byte < 0x20 || byte == 0x7f)
            line.append("\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 15]);
        else
            line += character;
    }
    std::cerr << "tamarok: " << line << '\n';
    return status;
}

} // namespace

int main(int count, char** arguments)
{
    using namespace tamarok;
    cli::ignoreBrokenPipes();
    cli::Output output;
    try {
        return cli::parseCommandLine(count, arguments)(output);
    } catch (const cli::PipeClosed&) {
        return 0;
    } catch (const cli::UsageError& error) {
        return complain(error.message + " (see tamarok --help)", 2);
    } catch (const cli::UnknownColumn& error) {
        return complain(error.message, 2);
    } catch (const cli::Interrupted& interrupted) {
        constexpr int killedBySignal = 128;
        return complain("interrupted", killedBySignal + interrupted.signal);
    } catch (const Error& error) {
        return complain(error.description, 1);
    } catch (const std::filesystem::filesystem_error& error) {
        return complain("Cannot access '" + error.path1().string() + "': " + error.code().message() + ".", 1);
    } catch (const std::bad_alloc&) {
        return complain("The memory does not suffice.", 1);
    } catch (const std::exception& error) {
        return complain(error.what(), 1);
    }
}
