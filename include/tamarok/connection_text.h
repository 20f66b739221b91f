#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

/// Connection texts: "Name=value;Name=value", such as "Provider=Tamarok.Embedded;Data Source=demo.db".
namespace tamarok::ado {

/// One property of a connection text.
struct ConnectionProperty {
    std::string name;  ///< as written, without blanks around it
    std::string value; ///< without blanks around it and without its quotes
};

/// Splits a connection text into its properties, in their order. Blanks, tabs and line ends around names
/// and values do not count. A value in single or double quotes may contain semicolons; a doubled quote in
/// it stands for one. An empty text has no properties.
/// Errors: 5 for a part that is not of the form name=value, for a quote that does not end, and for text
/// behind a quoted value. A message names the part by its number alone, since its text may belong to a password.
std::vector<ConnectionProperty> splitConnectionText(std::string_view text);

/// The value of the property `name`, compared without regard to case. If the property stands more than
/// once, the last one counts. No value where the text does not have it. Errors as splitConnectionText.
std::optional<std::string> connectionProperty(std::string_view text, std::string_view name);

/// A value as it stands in a connection text: in double quotes where it contains quotes or semicolons or
/// begins or ends with a blank, unchanged otherwise.
std::string connectionValue(std::string_view value);

} // namespace tamarok::ado

#pragma GCC visibility pop
