#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"

namespace tamarok::selections {

/// Fields separated by tabs, counted from 0. No text is one empty field.
class FieldVector {
public:
    explicit FieldVector(std::string_view text) noexcept : text_{text} {}

    bool has(std::size_t index) const noexcept;
    /// Error 9 beyond the last field.
    std::string_view operator[](std::size_t index) const;

private:
    std::string_view text_;
};

/// Fills the statement of one selection in a single pass.
class StatementWriter {
public:
    /// The views must outlive the writer.
    StatementWriter(const TmkVar& tmkVar, std::string_view key, std::string_view fields) noexcept :
        tmkVar_{tmkVar}, key_{key}, fields_{fields}, fieldBytes_{fields.size()}
    {}

    /// The statement with every placeholder filled.
    /// Errors: 9 for a field beyond the vector, 5 for a placeholder that does not exist.
    std::string fill(std::string_view statement);

private:
    struct Placeholder;
    static const Placeholder placeholders[];

    void write(std::string_view statement);
    void writePlaceholder(std::string_view name);
    bool holds(std::string_view condition) const;

    void writeField(std::size_t index);
    void writeNumber(std::size_t index);
    void writeCapitals(std::size_t index);
    void writeLevels(std::size_t groups);
    void writeMeasure(std::size_t index);
    void writePlace(std::size_t index);
    void writeGroup(std::size_t);
    void writeKeyPart(std::size_t);
    void writeKey(std::size_t);

    const TmkVar& tmkVar_;
    std::string_view key_;
    FieldVector fields_;
    std::size_t fieldBytes_;
    std::string text_;
};

} // namespace tamarok::selections
