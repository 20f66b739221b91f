#pragma once

#include <string>
#include <vector>

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::database::test {

/// A statement whose text the library fixes, with values of the sample database.
struct FixedStatement {
    enum class Expect { Rows, Runs }; ///< at least one row, read or changed; or any number

    std::string name;
    std::string text;
    Expect expect = Expect::Rows;
};

/// Makes the temporary table that the caller of a list of services fills.
std::vector<std::string> callersTables();

/// The session in which the statements are composed: a user of level 5 who sees four levels and three years.
TmkVar sessionOf(const ado::ConnectionRef& sample);

/// All of them: those that a table lists, and those that operations of the library compose or send when they run on the
/// sample database: options, numbers, default models and wage rates, the tags and keys of lists, rights, and the
/// statements of the lookup dialogs.
/// @param sample  a reference database with business records
std::vector<FixedStatement> fixedStatements(const ado::ConnectionRef& sample);

} // namespace tamarok::database::test
