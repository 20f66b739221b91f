#pragma once

#include <span>

#include "functions/call.h"

/// The functions by topic; register.cpp has their SQL names, numbers of arguments and flags.
/// What they do is said in functions.h and beside each definition.
namespace tamarok::embedded::functions {

// Conversions
void tmBit(Call& call);
void tmTinyInt(Call& call);
void tmSmallInt(Call& call);
void tmInt(Call& call);
void tmBigInt(Call& call);
void tmFloat(Call& call);
void tmReal(Call& call);
void tmSmallMoney(Call& call);
void tmMoney(Call& call);
void tmDecimal(Call& call);
void tmDecimalCut(Call& call);
void tmNVarChar(Call& call);
void tmVarChar(Call& call);
void tmNChar(Call& call);
void tmChar(Call& call);
void tmDate(Call& call);
void tmDateTime(Call& call);
void tmSmallDateTime(Call& call);
void tmDateTime2(Call& call);
void tmTime(Call& call);
void tmDateTimeStyle(Call& call);
void tmDateText(Call& call);
void tmFloatText(Call& call);
void tmDecimalText(Call& call);
void tmMoneyText(Call& call);
void tmStoreText(Call& call);

// Operators
void tmAdd(Call& call);
void tmSub(Call& call);
void tmMul(Call& call);
void tmDiv(Call& call);
void tmMod(Call& call);
void tmIAdd(Call& call);
void tmISub(Call& call);
void tmIMul(Call& call);
void tmIDiv(Call& call);
void tmIMod(Call& call);
void tmBAdd(Call& call);
void tmBSub(Call& call);
void tmBMul(Call& call);
void tmBDiv(Call& call);
void tmBMod(Call& call);
void tmIntChain(Call& call);
void tmBigIntChain(Call& call);
void tmTinyIntChain(Call& call);
void tmSmallIntChain(Call& call);
void tmMoneyChain(Call& call);
void tmSmallMoneyChain(Call& call);
void tmXor(Call& call);
void tmConcat(Call& call);
void tmFDiv(Call& call);
void tmFMod(Call& call);
void tmDateAddDays(Call& call);
void tmDateDiffDays(Call& call);
void tmCompare(Call& call);
void tmNullIf(Call& call);
void tmIsNull(Call& call);
void tmLike(Call& call);
void tmNLike(Call& call);

// Texts
void len(Call& call);
void dataLength(Call& call);
void tmBytes(Call& call);
void tmCharacters(Call& call);
void left(Call& call);
void right(Call& call);
void substring(Call& call);
void charIndex(Call& call);
void patIndex(Call& call);
void replace(Call& call);
void stuff(Call& call);
void replicate(Call& call);
void space(Call& call);
void reverse(Call& call);
void upper(Call& call);
void lower(Call& call);
void ltrim(Call& call);
void rtrim(Call& call);
void trim(Call& call);
void character(Call& call);
void nationalCharacter(Call& call);
void ascii(Call& call);
void unicode(Call& call);
void str(Call& call);
void concat(Call& call);
void isNumeric(Call& call);

// Numbers
void absolute(Call& call);
void sign(Call& call);
void round(Call& call);
void floorOf(Call& call);
void ceiling(Call& call);
void squareRoot(Call& call);
void square(Call& call);
void power(Call& call);
void exponential(Call& call);
void logarithm(Call& call);
void logarithm10(Call& call);
void piValue(Call& call);
void sine(Call& call);
void cosine(Call& call);
void tangent(Call& call);
void arcTangent(Call& call);
void arcSine(Call& call);
void arcCosine(Call& call);
void arcTangentOfTwo(Call& call);
void radians(Call& call);
void degrees(Call& call);

// Dates
void getDate(Call& call);
void getUtcDate(Call& call);
void year(Call& call);
void month(Call& call);
void dayOfMonth(Call& call);
void datePart(Call& call);
void dateName(Call& call);
void dateAdd(Call& call);
void dateDiff(Call& call);
void endOfMonth(Call& call);
void isDate(Call& call);

// Server and session
void newId(Call& call);
void userName(Call& call);
void databaseName(Call& call);

// Oracle
void lpad(Call& call);
void rpad(Call& call);
void instr(Call& call);
void substr(Call& call);
void length(Call& call);
void trunc(Call& call);
void mod(Call& call);
void toChar(Call& call);
void toDateOfMask(Call& call);
void toNumber(Call& call);

struct AggregateEntry {
    const char* name;
    void (*add)(sqlite3_context*, int, sqlite3_value**);
    void (*remove)(sqlite3_context*, int,
                   sqlite3_value**); ///< a row leaves a moving window; nullptr: no window function
    void (*finish)(sqlite3_context*);
};
std::span<const AggregateEntry> aggregateEntries() noexcept;

} // namespace tamarok::embedded::functions
