#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "row_file.h"

#include "tamarok/variant.h"

namespace tamarok::odbc {

/// Rows that wait to be read, in their order: in memory up to a bound, beyond it in a temporary file without name,
/// which no other process can open and which goes with this object.
class RowSpool {
public:
    static constexpr std::size_t memoryBytes = std::size_t{8} << 20U;

    RowSpool() = default;
    RowSpool(const RowSpool&) = delete;
    RowSpool& operator=(const RowSpool&) = delete;
    ~RowSpool();

    /// Appends a row. Error 57 where the temporary file cannot be written.
    void append(std::span<const Variant> row);
    /// Takes the first row out. Returns false where there is none.
    bool take(std::vector<Variant>& row);
    bool empty() const noexcept { return rows_ == 0; }
    bool usesFile() const noexcept { return file_.isOpen(); }
    void clear() noexcept;

private:
    void appendValue(const Variant& value);
    void moveToFile();
    void refill();
    Variant takeValue();
    void takeBytes(void* target, std::size_t count);

    std::string written_; ///< rows that are not in the file
    std::string read_;    ///< bytes being read, from `at_` on
    std::size_t at_ = 0;
    std::size_t rows_ = 0;
    RowFile file_;
    std::size_t fileEnd_ = 0;  ///< bytes written to the file
    std::size_t fileRead_ = 0; ///< bytes read from it
};

} // namespace tamarok::odbc
