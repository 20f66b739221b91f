#include <sqlite3.h>
#include <string>

#include "functions.h"
#include "functions/catalog.h"
#include "functions/collation.h"

#include "tamarok/error.h"

namespace tamarok::embedded {

namespace functions {

namespace {

struct FunctionEntry {
    const char* name;
    int arguments; ///< -1 for any number
    int flags;
    void (*function)(sqlite3_context*, int, sqlite3_value**);
};

/// What SQLite calls: wraps the arguments and turns exceptions into errors of the statement.
template <void (*function)(Call&)>
void invoke(sqlite3_context* context, int count, sqlite3_value** arguments) noexcept
{
    try {
        Call call{context, {arguments, static_cast<std::size_t>(count)}};
        function(call);
    } catch (...) {
        reportFailure(context);
    }
}

/// A deterministic function may stand in an index and is computed once for constant arguments; an innocuous one may be
/// used in views and constraints of a file that is not trusted.
constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
constexpr int changing = SQLITE_UTF8 | SQLITE_INNOCUOUS;

/// A function with optional arguments has one row for each number of arguments, so that SQLite checks the number.
constexpr FunctionEntry functionEntries[] = {
    // Conversions
    {"tm_bit", 1, pure, &invoke<tmBit>},
    {"tm_tinyint", 1, pure, &invoke<tmTinyInt>},
    {"tm_smallint", 1, pure, &invoke<tmSmallInt>},
    {"tm_int", 1, pure, &invoke<tmInt>},
    {"tm_bigint", 1, pure, &invoke<tmBigInt>},
    {"tm_float", 1, pure, &invoke<tmFloat>},
    {"tm_real", 1, pure, &invoke<tmReal>},
    {"tm_smallmoney", 1, pure, &invoke<tmSmallMoney>},
    {"tm_money", 1, pure, &invoke<tmMoney>},
    {"tm_decimal", 3, pure, &invoke<tmDecimal>},
    {"tm_decimal_cut", 3, pure, &invoke<tmDecimalCut>},
    {"tm_nvarchar", 2, pure, &invoke<tmNVarChar>},
    {"tm_varchar", 2, pure, &invoke<tmVarChar>},
    {"tm_nchar", 2, pure, &invoke<tmNChar>},
    {"tm_char", 2, pure, &invoke<tmChar>},
    {"tm_date", 1, pure, &invoke<tmDate>},
    {"tm_datetime", 1, pure, &invoke<tmDateTime>},
    {"tm_datetime2", 1, pure, &invoke<tmDateTime2>},
    {"tm_smalldatetime", 1, pure, &invoke<tmSmallDateTime>},
    {"tm_time", 1, pure, &invoke<tmTime>},
    {"tm_datetimestyle", 2, pure, &invoke<tmDateTimeStyle>},
    {"tm_datetext", 3, pure, &invoke<tmDateText>},
    {"tm_floattext", 3, pure, &invoke<tmFloatText>},
    {"tm_decimaltext", 3, pure, &invoke<tmDecimalText>},
    {"tm_moneytext", 3, pure, &invoke<tmMoneyText>},
    {"tm_store_text", 2, pure, &invoke<tmStoreText>},
    // Operators
    {"tm_add", 2, pure, &invoke<tmAdd>},
    {"tm_sub", 2, pure, &invoke<tmSub>},
    {"tm_mul", 2, pure, &invoke<tmMul>},
    {"tm_div", 2, pure, &invoke<tmDiv>},
    {"tm_mod", 2, pure, &invoke<tmMod>},
    {"tm_iadd", 2, pure, &invoke<tmIAdd>},
    {"tm_isub", 2, pure, &invoke<tmISub>},
    {"tm_imul", 2, pure, &invoke<tmIMul>},
    {"tm_idiv", 2, pure, &invoke<tmIDiv>},
    {"tm_imod", 2, pure, &invoke<tmIMod>},
    {"tm_badd", 2, pure, &invoke<tmBAdd>},
    {"tm_bsub", 2, pure, &invoke<tmBSub>},
    {"tm_bmul", 2, pure, &invoke<tmBMul>},
    {"tm_bdiv", 2, pure, &invoke<tmBDiv>},
    {"tm_bmod", 2, pure, &invoke<tmBMod>},
    {"tm_int_chain", -1, pure, &invoke<tmIntChain>},
    {"tm_bigint_chain", -1, pure, &invoke<tmBigIntChain>},
    {"tm_tinyint_chain", -1, pure, &invoke<tmTinyIntChain>},
    {"tm_smallint_chain", -1, pure, &invoke<tmSmallIntChain>},
    {"tm_money_chain", -1, pure, &invoke<tmMoneyChain>},
    {"tm_smallmoney_chain", -1, pure, &invoke<tmSmallMoneyChain>},
    {"tm_xor", 2, pure, &invoke<tmXor>},
    {"tm_concat", -1, pure, &invoke<tmConcat>},
    {"tm_fdiv", 2, pure, &invoke<tmFDiv>},
    {"tm_fmod", 2, pure, &invoke<tmFMod>},
    {"tm_dateadd_days", 2, pure, &invoke<tmDateAddDays>},
    {"tm_datediff_days", 2, pure, &invoke<tmDateDiffDays>},
    {"tm_compare", 2, pure, &invoke<tmCompare>},
    {"tm_nullif", 2, pure, &invoke<tmNullIf>},
    {"tm_isnull", 2, pure, &invoke<tmIsNull>},
    {"tm_like", 3, pure, &invoke<tmLike>},
    {"tm_nlike", 3, pure, &invoke<tmNLike>},
    // Texts
    {"LEN", 1, pure, &invoke<len>},
    {"DATALENGTH", 1, pure, &invoke<dataLength>},
    {"tm_bytes", 2, pure, &invoke<tmBytes>},
    {"tm_characters", 1, pure, &invoke<tmCharacters>},
    {"LEFT", 2, pure, &invoke<left>},
    {"RIGHT", 2, pure, &invoke<right>},
    {"SUBSTRING", 3, pure, &invoke<substring>},
    {"CHARINDEX", 2, pure, &invoke<charIndex>},
    {"CHARINDEX", 3, pure, &invoke<charIndex>},
    {"PATINDEX", 2, pure, &invoke<patIndex>},
    {"REPLACE", 3, pure, &invoke<replace>},
    {"REPLACE", 4, pure, &invoke<replace>},
    {"STUFF", 4, pure, &invoke<stuff>},
    {"REPLICATE", 2, pure, &invoke<replicate>},
    {"SPACE", 1, pure, &invoke<space>},
    {"REVERSE", 1, pure, &invoke<reverse>},
    {"UPPER", 1, pure, &invoke<upper>},
    {"LOWER", 1, pure, &invoke<lower>},
    {"LTRIM", 1, pure, &invoke<ltrim>},
    {"RTRIM", 1, pure, &invoke<rtrim>},
    {"TRIM", 1, pure, &invoke<trim>},
    {"CHAR", 1, pure, &invoke<character>},
    {"NCHAR", 1, pure, &invoke<nationalCharacter>},
    {"ASCII", 1, pure, &invoke<ascii>},
    {"UNICODE", 1, pure, &invoke<unicode>},
    {"STR", 1, pure, &invoke<str>},
    {"STR", 2, pure, &invoke<str>},
    {"STR", 3, pure, &invoke<str>},
    {"CONCAT", -1, pure, &invoke<concat>},
    {"ISNUMERIC", 1, pure, &invoke<isNumeric>},
    // Numbers
    {"ABS", 1, pure, &invoke<absolute>},
    {"ABS", 2, pure, &invoke<absolute>},
    {"SIGN", 1, pure, &invoke<sign>},
    {"ROUND", 2, pure, &invoke<round>},
    {"ROUND", 3, pure, &invoke<round>},
    {"ROUND", 4, pure, &invoke<round>},
    {"FLOOR", 1, pure, &invoke<floorOf>},
    {"CEILING", 1, pure, &invoke<ceiling>},
    {"CEIL", 1, pure, &invoke<ceiling>},
    {"SQRT", 1, pure, &invoke<squareRoot>},
    {"SQUARE", 1, pure, &invoke<square>},
    {"POWER", 2, pure, &invoke<power>},
    {"POWER", 3, pure, &invoke<power>},
    {"EXP", 1, pure, &invoke<exponential>},
    {"LOG", 1, pure, &invoke<logarithm>},
    {"LOG", 2, pure, &invoke<logarithm>},
    {"LOG10", 1, pure, &invoke<logarithm10>},
    {"PI", 0, pure, &invoke<piValue>},
    {"SIN", 1, pure, &invoke<sine>},
    {"COS", 1, pure, &invoke<cosine>},
    {"TAN", 1, pure, &invoke<tangent>},
    {"ATAN", 1, pure, &invoke<arcTangent>},
    {"ASIN", 1, pure, &invoke<arcSine>},
    {"ACOS", 1, pure, &invoke<arcCosine>},
    {"ATN2", 2, pure, &invoke<arcTangentOfTwo>},
    {"RADIANS", 1, pure, &invoke<radians>},
    {"RADIANS", 2, pure, &invoke<radians>},
    {"DEGREES", 1, pure, &invoke<degrees>},
    {"DEGREES", 2, pure, &invoke<degrees>},
    // Dates
    {"GETDATE", 0, changing, &invoke<getDate>},
    {"GETUTCDATE", 0, changing, &invoke<getUtcDate>},
    {"YEAR", 1, pure, &invoke<year>},
    {"MONTH", 1, pure, &invoke<month>},
    {"DAY", 1, pure, &invoke<dayOfMonth>},
    {"DATEPART", 2, pure, &invoke<datePart>},
    {"DATENAME", 2, pure, &invoke<dateName>},
    {"DATEADD", 3, pure, &invoke<dateAdd>},
    {"DATEDIFF", 3, pure, &invoke<dateDiff>},
    {"EOMONTH", 1, pure, &invoke<endOfMonth>},
    {"EOMONTH", 2, pure, &invoke<endOfMonth>},
    {"ISDATE", 1, pure, &invoke<isDate>},
    // Server and session
    {"NEWID", 0, changing, &invoke<newId>},
    {"SUSER_SNAME", 0, pure, &invoke<userName>},
    {"DB_NAME", 0, pure, &invoke<databaseName>},
    // Oracle
    {"LPAD", 2, pure, &invoke<lpad>},
    {"LPAD", 3, pure, &invoke<lpad>},
    {"RPAD", 2, pure, &invoke<rpad>},
    {"RPAD", 3, pure, &invoke<rpad>},
    {"INSTR", 2, pure, &invoke<instr>},
    {"INSTR", 3, pure, &invoke<instr>},
    {"INSTR", 4, pure, &invoke<instr>},
    {"SUBSTR", 2, pure, &invoke<substr>},
    {"SUBSTR", 3, pure, &invoke<substr>},
    {"LENGTH", 1, pure, &invoke<length>},
    {"CHR", 1, pure, &invoke<character>},
    {"TRUNC", 1, pure, &invoke<trunc>},
    {"TRUNC", 2, pure, &invoke<trunc>},
    {"MOD", 2, pure, &invoke<mod>},
    {"TO_CHAR", 1, pure, &invoke<toChar>},
    {"TO_CHAR", 2, pure, &invoke<toChar>},
    {"TO_DATE", 1, pure, &invoke<toDateOfMask>},
    {"TO_DATE", 2, pure, &invoke<toDateOfMask>},
    {"TO_NUMBER", 1, pure, &invoke<toNumber>},
    {"TO_NUMBER", 2, pure, &invoke<toNumber>},
    {"SYSDATE", 0, changing, &invoke<getDate>},
};

int collate(void*, int lengthOfA, const void* a, int lengthOfB, const void* b) noexcept
{
    return compareTexts({static_cast<const char*>(a), static_cast<std::size_t>(lengthOfA)},
                        {static_cast<const char*>(b), static_cast<std::size_t>(lengthOfB)});
}

void check(sqlite3* database, int code, std::string_view what)
{
    if (code == SQLITE_OK) return;
    throw Error{errors::providerFailure,
                "SQLite refuses to register " + std::string{what} + ": " + sqlite3_errmsg(database),
                "Embedded database"};
}

} // namespace

} // namespace functions

/// Aggregates are registered as window functions, which SQLite uses in both ways. The value of a moving window is read
/// by the function that also gives the final result.
void registerFunctions(sqlite3* database, FunctionContext& context)
{
    for (const functions::FunctionEntry& entry : functions::functionEntries) {
        functions::check(database,
                         sqlite3_create_function_v2(database, entry.name, entry.arguments, entry.flags, &context,
                                                    entry.function, nullptr, nullptr, nullptr),
                         entry.name);
    }
    for (const functions::AggregateEntry& entry : functions::aggregateEntries()) {
        functions::check(database,
                         sqlite3_create_window_function(database, entry.name, 1, functions::pure, &context, entry.add,
                                                        entry.finish, entry.remove != nullptr ? entry.finish : nullptr,
                                                        entry.remove, nullptr),
                         entry.name);
    }
    functions::check(
        database, sqlite3_create_collation_v2(database, "TAMAROK", SQLITE_UTF8, nullptr, functions::collate, nullptr),
        "the collation TAMAROK");
}

} // namespace tamarok::embedded
