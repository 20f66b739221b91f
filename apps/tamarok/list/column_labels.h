#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/tmkvar.h"

namespace tamarok::cli {

/// The labels of a list type's columns in the session's language, read by two statements.
class ColumnLabels {
public:
    /// Errors: those of the database.
    ColumnLabels(const std::string& type, const TmkVar& session);

    /// The label of a column; type and id, such as "LOG 36", where the database has none.
    std::string label(std::int16_t id) const;
    /// Its short form, by which a list is headed; the label where there is none.
    std::string header(std::int16_t id) const;

    /// The columns that a label or its short form names, compared without regard to case.
    std::vector<std::int16_t> columnsNamed(std::string_view text) const;

    /// Every label and short form.
    std::vector<std::string_view> texts() const;

private:
    struct Entry {
        std::int16_t id;
        std::string label;
        std::string header;
    };
    const Entry* find(std::int16_t id) const;
    std::string nameless(std::int16_t id) const;

    std::string key_;
    std::vector<Entry> entries_;
};

/// The headers of a list's columns.
std::vector<std::string> columnHeaders(const std::string& type, const std::vector<std::int16_t>& ids,
                                       const TmkVar& session);

/// The patterns in which a list shows its columns, "" for a text.
std::vector<std::string> columnPatterns(const std::string& type, const std::vector<std::int16_t>& ids,
                                        const TmkVar& session);

} // namespace tamarok::cli
