#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tamarok/ado.h"

#pragma GCC visibility push(default)

namespace tamarok::errors {
inline constexpr std::int32_t providerNotFound = 3706; ///< No back end is registered for a connection text.
} // namespace tamarok::errors

namespace tamarok::ado {

/// The database back ends of a program by provider name. A value: a program makes one, enters the back
/// ends that it was built with, and opens connections through it:
///
///     ado::BackendRegistry backends;
///     embedded::registerBackend(backends);
///     const ado::ConnectionRef connection = backends.open("Provider=Tamarok.Embedded;Data Source=demo.db");
///
/// A back end offers a function like `embedded::registerBackend`, so that a program adds it with one line.
class BackendRegistry {
public:
    /// Opens a connection. @param connectionText  the whole text, with or without its Provider
    using Opener = std::function<ConnectionRef(std::string_view connectionText)>;

    /// Registers a back end. @param provider  name for the property Provider; not empty
    /// Error 5 for an empty or taken name and for an empty function.
    void add(std::string provider, Opener opener);

    /// Opens a connection with the back end that the property Provider names. Names of providers compare
    /// without regard to case.
    /// Errors: 3706 where the text names no provider or one that is not registered, with the registered
    /// ones named; 5 for a text of another form; whatever the back end raises.
    ConnectionRef open(std::string_view connectionText) const;

    /// Opens a connection with a given back end, which receives the text as it is. For texts that name
    /// none, such as those of ODBC. Error 3706 where the provider is not registered; whatever it raises.
    ConnectionRef open(std::string_view provider, std::string_view connectionText) const;

    /// Names of the registered back ends, in the order of registration.
    std::vector<std::string_view> providers() const;

private:
    struct Backend {
        std::string provider;
        Opener opener;
    };

    const Backend* find(std::string_view provider) const;
    [[noreturn]] void fail(const std::string& reason) const;

    std::vector<Backend> backends_;
};

} // namespace tamarok::ado

#pragma GCC visibility pop
