#pragma once

#include <memory>
#include <utility>

namespace tamarok::qt {

/// Makes a Qt object that its parent, the last argument, owns.
template <class Type, class... Arguments>
Type& makeOwned(Arguments&&... arguments)
{
    return *std::make_unique<Type>(std::forward<Arguments>(arguments)...).release(); // NOLINT: the parent owns it
}

} // namespace tamarok::qt
