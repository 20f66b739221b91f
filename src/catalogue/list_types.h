#pragma once

#include <span>
#include <string_view>

#include "list_type.h"

namespace tamarok::catalogue {

/// All list types, by key.
std::span<const ListType* const> listTypes() noexcept;

/// The type of that key, compared without regard to case, or nullptr.
const ListType* findListType(std::string_view key);

/// The log list, which has operations of its own (Comm_CSel::GetColumn and others).
const ListType& logList() noexcept;

/// The deduction list, which has operations of its own (Comm_CSel::GetColumnAbs and others) and no key.
const ListType& deductionList() noexcept;

/// Whether `key` is one of the keys of a choice list. Case counts.
bool namesKey(const Choice& choice, std::string_view key) noexcept;

} // namespace tamarok::catalogue
