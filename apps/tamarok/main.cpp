#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>

#include "command_line.h"
#include "init/interrupt.h"
#include "list/list_query.h"
#include "print/output.h"
#include "tamarok_embedded/shown_text.h"
#include "usage_error.h"

#include "tamarok/error.h"

namespace {

/// Prints one line on standard error; line ends in the message become blanks, other control characters their codes.
/// Returns `status`.
int complain(std::string message, int status)
{
    for (char& character : message) {
        if (character == '\n' || character == '\r') character = ' ';
    }
    std::cerr << "tamarok: " << tamarok::embedded::shownText(message) << '\n';
    return status;
}

} // namespace

int main(int count, char** arguments)
{
    using namespace tamarok;
    cli::ignoreWriteSignals();
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
