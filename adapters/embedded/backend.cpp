#include "tamarok_embedded/backend.h"

#include "tamarok_embedded/connect.h"

namespace tamarok::embedded {

void registerBackend(ado::BackendRegistry& registry)
{
    registry.add(std::string{provider}, connectText);
}

} // namespace tamarok::embedded
