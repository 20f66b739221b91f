#include "keyword.h"

#include <array>
#include <cstddef>

#include "name_table.h"

namespace tamarok::tsql {
namespace {

/// A word of the grammar. Rows are sorted by name, which NameTable checks, and by keyword.
struct KeywordRow {
    std::string_view name;
    Keyword keyword;
    bool reserved;
};

// A reserved word cannot be a name without quotes. The free ones are keywords at certain places of the grammar and
// names everywhere else.
constexpr bool reserved = true;
constexpr bool free = false;

constexpr NameTable keywords{std::array{
    KeywordRow{"ADD", Keyword::Add, reserved},
    KeywordRow{"ALL", Keyword::All, reserved},
    KeywordRow{"ALTER", Keyword::Alter, reserved},
    KeywordRow{"AND", Keyword::And, reserved},
    KeywordRow{"ANY", Keyword::Any, reserved},
    KeywordRow{"AS", Keyword::As, reserved},
    KeywordRow{"ASC", Keyword::Asc, reserved},
    KeywordRow{"BEGIN", Keyword::Begin, reserved},
    KeywordRow{"BETWEEN", Keyword::Between, reserved},
    KeywordRow{"BREAK", Keyword::Break, reserved},
    KeywordRow{"BY", Keyword::By, reserved},
    KeywordRow{"CASE", Keyword::Case, reserved},
    KeywordRow{"CAST", Keyword::Cast, free},
    KeywordRow{"CHECK", Keyword::Check, reserved},
    KeywordRow{"CLUSTERED", Keyword::Clustered, reserved},
    KeywordRow{"COALESCE", Keyword::Coalesce, reserved},
    KeywordRow{"COLLATE", Keyword::Collate, reserved},
    KeywordRow{"COLUMN", Keyword::Column, reserved},
    KeywordRow{"COMMIT", Keyword::Commit, reserved},
    KeywordRow{"CONSTRAINT", Keyword::Constraint, reserved},
    KeywordRow{"CONVERT", Keyword::Convert, reserved},
    KeywordRow{"CREATE", Keyword::Create, reserved},
    KeywordRow{"CROSS", Keyword::Cross, reserved},
    KeywordRow{"CURSOR", Keyword::Cursor, reserved},
    KeywordRow{"DECLARE", Keyword::Declare, reserved},
    KeywordRow{"DEFAULT", Keyword::Default, reserved},
    KeywordRow{"DELETE", Keyword::Delete, reserved},
    KeywordRow{"DESC", Keyword::Desc, reserved},
    KeywordRow{"DISTINCT", Keyword::Distinct, reserved},
    KeywordRow{"DROP", Keyword::Drop, reserved},
    KeywordRow{"DUAL", Keyword::Dual, free},
    KeywordRow{"ELSE", Keyword::Else, reserved},
    KeywordRow{"END", Keyword::End, reserved},
    KeywordRow{"ESCAPE", Keyword::Escape, free},
    KeywordRow{"EXCEPT", Keyword::Except, reserved},
    KeywordRow{"EXEC", Keyword::Exec, reserved},
    KeywordRow{"EXECUTE", Keyword::Execute, reserved},
    KeywordRow{"EXISTS", Keyword::Exists, reserved},
    KeywordRow{"FETCH", Keyword::Fetch, reserved},
    KeywordRow{"FIRST", Keyword::First, free},
    KeywordRow{"FOREIGN", Keyword::Foreign, reserved},
    KeywordRow{"FROM", Keyword::From, reserved},
    KeywordRow{"FULL", Keyword::Full, reserved},
    KeywordRow{"GO", Keyword::Go, free},
    KeywordRow{"GOTO", Keyword::Goto, reserved},
    KeywordRow{"GROUP", Keyword::Group, reserved},
    KeywordRow{"HAVING", Keyword::Having, reserved},
    KeywordRow{"IDENTITY", Keyword::Identity, free},
    KeywordRow{"IF", Keyword::If, reserved},
    KeywordRow{"IIF", Keyword::Iif, free},
    KeywordRow{"IN", Keyword::In, reserved},
    KeywordRow{"INDEX", Keyword::Index, reserved},
    KeywordRow{"INNER", Keyword::Inner, reserved},
    KeywordRow{"INSERT", Keyword::Insert, reserved},
    KeywordRow{"INTERSECT", Keyword::Intersect, reserved},
    KeywordRow{"INTO", Keyword::Into, reserved},
    KeywordRow{"IS", Keyword::Is, reserved},
    KeywordRow{"ISNULL", Keyword::IsNull, free},
    KeywordRow{"JOIN", Keyword::Join, reserved},
    KeywordRow{"KEY", Keyword::Key, reserved},
    KeywordRow{"LEFT", Keyword::Left, reserved},
    KeywordRow{"LIKE", Keyword::Like, reserved},
    KeywordRow{"MERGE", Keyword::Merge, reserved},
    KeywordRow{"NEXT", Keyword::Next, free},
    KeywordRow{"NONCLUSTERED", Keyword::NonClustered, reserved},
    KeywordRow{"NOT", Keyword::Not, reserved},
    KeywordRow{"NULL", Keyword::Null, reserved},
    KeywordRow{"NULLIF", Keyword::NullIf, reserved},
    KeywordRow{"NVL", Keyword::Nvl, free},
    KeywordRow{"OFF", Keyword::Off, reserved},
    KeywordRow{"OFFSET", Keyword::Offset, free},
    KeywordRow{"ON", Keyword::On, reserved},
    KeywordRow{"ONLY", Keyword::Only, free},
    KeywordRow{"OPTION", Keyword::Option, reserved},
    KeywordRow{"OR", Keyword::Or, reserved},
    KeywordRow{"ORDER", Keyword::Order, reserved},
    KeywordRow{"OUTER", Keyword::Outer, reserved},
    KeywordRow{"OVER", Keyword::Over, reserved},
    KeywordRow{"PARTITION", Keyword::Partition, free},
    KeywordRow{"PERCENT", Keyword::Percent, reserved},
    KeywordRow{"PIVOT", Keyword::Pivot, reserved},
    KeywordRow{"PRIMARY", Keyword::Primary, reserved},
    KeywordRow{"PRINT", Keyword::Print, reserved},
    KeywordRow{"RAISERROR", Keyword::Raiserror, reserved},
    KeywordRow{"REFERENCES", Keyword::References, reserved},
    KeywordRow{"RETURN", Keyword::Return, reserved},
    KeywordRow{"RIGHT", Keyword::Right, reserved},
    KeywordRow{"ROLLBACK", Keyword::Rollback, reserved},
    KeywordRow{"ROW", Keyword::Row, free},
    KeywordRow{"ROWNUM", Keyword::RowNum, free},
    KeywordRow{"ROWS", Keyword::Rows, free},
    KeywordRow{"SAVE", Keyword::Save, reserved},
    KeywordRow{"SELECT", Keyword::Select, reserved},
    KeywordRow{"SET", Keyword::Set, reserved},
    KeywordRow{"SOME", Keyword::Some, reserved},
    KeywordRow{"TABLE", Keyword::Table, reserved},
    KeywordRow{"THEN", Keyword::Then, reserved},
    KeywordRow{"TOP", Keyword::Top, reserved},
    KeywordRow{"TRAN", Keyword::Tran, reserved},
    KeywordRow{"TRANSACTION", Keyword::Transaction, reserved},
    KeywordRow{"TRUNCATE", Keyword::Truncate, reserved},
    KeywordRow{"UNION", Keyword::Union, reserved},
    KeywordRow{"UNIQUE", Keyword::Unique, reserved},
    KeywordRow{"UPDATE", Keyword::Update, reserved},
    KeywordRow{"USE", Keyword::Use, reserved},
    KeywordRow{"VALUES", Keyword::Values, reserved},
    KeywordRow{"VIEW", Keyword::View, reserved},
    KeywordRow{"WAITFOR", Keyword::WaitFor, reserved},
    KeywordRow{"WHEN", Keyword::When, reserved},
    KeywordRow{"WHERE", Keyword::Where, reserved},
    KeywordRow{"WHILE", Keyword::While, reserved},
    KeywordRow{"WITH", Keyword::With, reserved},
    KeywordRow{"WORK", Keyword::Work, free},
}};

/// A row is found by its keyword, too.
constexpr bool isInOrderOfKeywords()
{
    for (std::size_t i = 0; i < keywords.size(); ++i) {
        if (static_cast<std::size_t>(keywords[i].keyword) != i + 1) return false;
    }
    return true;
}
static_assert(isInOrderOfKeywords());

} // namespace

Keyword findKeyword(std::string_view word)
{
    const KeywordRow* row = keywords.find(word);
    return row == nullptr ? Keyword::None : row->keyword;
}

/// The value None has no row, hence the offset of one.
std::string_view keywordText(Keyword keyword)
{
    return keyword == Keyword::None ? std::string_view() : keywords[static_cast<std::size_t>(keyword) - 1].name;
}

bool isReserved(Keyword keyword)
{
    return keyword != Keyword::None && keywords[static_cast<std::size_t>(keyword) - 1].reserved;
}

} // namespace tamarok::tsql
