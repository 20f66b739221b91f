#include "reserved_words.h"

#include <array>

#include "keyword.h"
#include "name_table.h"

namespace tamarok::tsql {
namespace {

struct Word {
    std::string_view name;
};

/// The reserved keywords of the server's documentation that are not reserved words of the parser.
constexpr NameTable words{std::array{
    Word{"AUTHORIZATION"},
    Word{"BACKUP"},
    Word{"BROWSE"},
    Word{"BULK"},
    Word{"CASCADE"},
    Word{"CHECKPOINT"},
    Word{"CLOSE"},
    Word{"COMPUTE"},
    Word{"CONTAINS"},
    Word{"CONTAINSTABLE"},
    Word{"CONTINUE"},
    Word{"CURRENT"},
    Word{"CURRENT_DATE"},
    Word{"CURRENT_TIME"},
    Word{"CURRENT_TIMESTAMP"},
    Word{"CURRENT_USER"},
    Word{"DATABASE"},
    Word{"DBCC"},
    Word{"DEALLOCATE"},
    Word{"DENY"},
    Word{"DISK"},
    Word{"DISTRIBUTED"},
    Word{"DOUBLE"},
    Word{"DUMP"},
    Word{"ERRLVL"},
    Word{"ESCAPE"},
    Word{"EXIT"},
    Word{"EXTERNAL"},
    Word{"FILE"},
    Word{"FILLFACTOR"},
    Word{"FOR"},
    Word{"FREETEXT"},
    Word{"FREETEXTTABLE"},
    Word{"FUNCTION"},
    Word{"GRANT"},
    Word{"HOLDLOCK"},
    Word{"IDENTITY"},
    Word{"IDENTITYCOL"},
    Word{"IDENTITY_INSERT"},
    Word{"KILL"},
    Word{"LINENO"},
    Word{"LOAD"},
    Word{"NATIONAL"},
    Word{"NOCHECK"},
    Word{"OF"},
    Word{"OFFSETS"},
    Word{"OPEN"},
    Word{"OPENDATASOURCE"},
    Word{"OPENQUERY"},
    Word{"OPENROWSET"},
    Word{"OPENXML"},
    Word{"PLAN"},
    Word{"PRECISION"},
    Word{"PROC"},
    Word{"PROCEDURE"},
    Word{"PUBLIC"},
    Word{"READ"},
    Word{"READTEXT"},
    Word{"RECONFIGURE"},
    Word{"REPLICATION"},
    Word{"RESTORE"},
    Word{"RESTRICT"},
    Word{"REVERT"},
    Word{"REVOKE"},
    Word{"ROWCOUNT"},
    Word{"ROWGUIDCOL"},
    Word{"RULE"},
    Word{"SCHEMA"},
    Word{"SECURITYAUDIT"},
    Word{"SEMANTICKEYPHRASETABLE"},
    Word{"SEMANTICSIMILARITYDETAILSTABLE"},
    Word{"SEMANTICSIMILARITYTABLE"},
    Word{"SESSION_USER"},
    Word{"SETUSER"},
    Word{"SHUTDOWN"},
    Word{"STATISTICS"},
    Word{"SYSTEM_USER"},
    Word{"TABLESAMPLE"},
    Word{"TEXTSIZE"},
    Word{"TO"},
    Word{"TRIGGER"},
    Word{"TRY_CONVERT"},
    Word{"TSEQUAL"},
    Word{"UNPIVOT"},
    Word{"UPDATETEXT"},
    Word{"USER"},
    Word{"VARYING"},
    Word{"WRITETEXT"},
}};

} // namespace

bool isReservedWord(std::string_view word)
{
    return isReserved(findKeyword(word)) || words.find(word) != nullptr;
}

} // namespace tamarok::tsql
