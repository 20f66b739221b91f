#include "tamarok/backend_registry.h"

#include <algorithm>
#include <utility>

#include "tamarok/connection_text.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::ado {

void BackendRegistry::add(std::string provider, Opener opener)
{
    if (provider.empty() || !opener) {
        throw Error{errors::invalidArgument, "A back end needs a provider name and a function that opens connections."};
    }
    // Otherwise the order of registration would decide which back end opens a connection.
    if (find(provider) != nullptr) {
        throw Error{errors::invalidArgument, "The provider '" + provider + "' is registered already."};
    }
    backends_.push_back({std::move(provider), std::move(opener)});
}

ConnectionRef BackendRegistry::open(std::string_view connectionText) const
{
    const std::string provider = connectionProperty(connectionText, "Provider").value_or("");
    if (provider.empty()) fail("The connection text names no provider");
    // The back end receives the whole text and reads its other properties itself.
    return open(provider, connectionText);
}

ConnectionRef BackendRegistry::open(std::string_view provider, std::string_view connectionText) const
{
    const Backend* const backend = find(provider);
    if (backend == nullptr) fail("There is no provider '" + std::string{provider} + "'");
    return backend->opener(connectionText);
}

std::vector<std::string_view> BackendRegistry::providers() const
{
    std::vector<std::string_view> names;
    for (const Backend& backend : backends_)
        names.push_back(backend.provider);
    return names;
}

const BackendRegistry::Backend* BackendRegistry::find(std::string_view provider) const
{
    // Provider names have no case.
    const auto found = std::ranges::find_if(
        backends_, [&](const Backend& backend) { return text::equalsNoCase(backend.provider, provider); });
    return found == backends_.end() ? nullptr : &*found;
}

/// Error 3706 with the known providers. The connection text stays out of it, for it may hold a password.
void BackendRegistry::fail(const std::string& reason) const
{
    std::string known;
    for (const Backend& backend : backends_)
        known += (known.empty() ? "" : ", ") + backend.provider;
    throw Error{errors::providerNotFound, reason + "; known are: " + (known.empty() ? "none" : known) + "."};
}

} // namespace tamarok::ado
