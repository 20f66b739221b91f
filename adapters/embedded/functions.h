#pragma once

#include "tamarok_tsql/date_order.h"

struct sqlite3;

/// The functions and the collation that translated statements use. A function that the server has is registered under
/// the server's name; the names of all others begin with "tm_".
///
/// Conversions (Null gives Null; a failure is an SQL error whose text begins with the server's
/// error number and a colon: "245:Conversion failed when converting the nvarchar value 'x' to data
/// type int."; where the server's message does not name the value, " Value: '...'." follows it):
///   tm_bit(x) tm_tinyint(x) tm_smallint(x) tm_int(x) tm_bigint(x)   floats are cut, texts must be whole numbers
///   tm_float(x) tm_real(x) tm_money(x) tm_decimal(x,precision,scale) half away from zero
///   tm_decimal_cut(x,precision,scale)  the same, further places cut off: what a division of decimals gives
///   tm_nvarchar(x,n)   as text, cut to n characters (n < 0: no limit); numbers as the server prints them; a number
///                      that does not fit is error 8115
///   tm_varchar(x,n)    the same, but a whole number that does not fit is "*"
///   tm_nchar(x,n) tm_char(x,n)   the same two, padded with blanks to n
///   tm_date(x) tm_datetime(x) tm_datetime2(x) tm_smalldatetime(x) tm_time(x)   x a date, a date text or a day number
///   tm_datetimestyle(x,style)   text to date by a CONVERT style; error 281 for an unknown style
///   tm_datetext(x,style,n)      date to text by a CONVERT style, cut to n
///   tm_floattext(x,style,n)     float to text by a CONVERT style (0, 1, 2, 3); error 8115 where it is longer than n
///   tm_decimaltext(x,scale,n)   decimal to text with exactly `scale` decimals; error 8115 where it is longer than n
///   tm_moneytext(x,style,n)     money to text: 0 two decimals, 1 with commas, 2 four decimals
///   tm_store_text(x,n)          assignment to a text column: error 2628 where it is too long (blanks are cut)
/// Operators:
///   tm_add(a,b) tm_sub(a,b) tm_mul(a,b) tm_div(a,b) tm_mod(a,b)  operand types known at run time only: two texts are
///                                        joined by tm_add, a text against a number is converted to that number's
///                                        type, a date in storage form is moved by days
///   tm_iadd tm_isub tm_imul tm_idiv tm_imod (a,b)  32-bit whole numbers, overflow and division by zero are errors
///   tm_badd tm_bsub tm_bmul tm_bdiv tm_bmod (a,b)  the same in 64 bits
///   tm_fdiv(a,b) tm_fmod(a,b)            floats, error 8134 for 0
///   tm_dateadd_days(date,number)         date + number, date - number by its negative
///   tm_datediff_days(a,b)                a - b of two dates, in days
///   tm_compare(a,b)                      -1, 0, 1 or Null: types known at run time only
///   tm_like(value,pattern,escape)        %, _, [a-z], [^a-z]; escape '' for none; trailing blanks of the value need
///                                        no match, as with varchar
///   tm_nlike(value,pattern,escape)       the same, but trailing blanks count, as with nvarchar
/// Functions under their own names: LEN, DATALENGTH, LEFT, RIGHT, SUBSTRING, CHARINDEX, PATINDEX, REPLACE, STUFF,
///   REPLICATE, SPACE, REVERSE, UPPER, LOWER, LTRIM, RTRIM, TRIM, CHAR, NCHAR, ASCII, UNICODE, STR, CONCAT,
///   ISNUMERIC, ISDATE, ABS, SIGN, ROUND (2 and 3 arguments), FLOOR, CEILING, SQRT, SQUARE, POWER, EXP, LOG (1 and 2
///   arguments), LOG10, PI, SIN, COS, TAN, ASIN, ACOS, ATAN, ATN2, RADIANS, DEGREES, GETDATE, GETUTCDATE, YEAR, MONTH,
///   DAY, DATEPART, DATENAME, DATEADD, DATEDIFF (part as text in the first argument), EOMONTH, NEWID, SUSER_SNAME,
///   DB_NAME; and of Oracle's LPAD, RPAD, INSTR, TO_CHAR, TO_DATE, TO_NUMBER, CHR, SUBSTR, LENGTH, TRUNC, MOD, SYSDATE
///   (a function without arguments here).
///   tm_isnull(a,b)             b where a is Null (also for NVL)
///   Functions whose result is of another type for whole numbers and floats decide by the argument's storage class.
/// Aggregates: tm_sum_int(x), tm_sum_big(x) (overflow is an error), tm_avg_int(x) (cut); SUM, AVG, MIN, MAX and COUNT
///   of floats and texts are SQLite's own, tm_stdev(x), tm_stdevp(x), tm_var(x), tm_varp(x).
/// Collation TAMAROK: any letter without regard to case, accents count (a < ä < b), trailing blanks ignored.
namespace tamarok::embedded {

/// Settings of the connection that functions read. Lives as long as the connection.
struct FunctionContext {
    tsql::DateOrder dateOrder = tsql::DateOrder::Dmy;
};

/// Registers all functions, aggregates and the collation. Error 0x80004005 if SQLite refuses one.
void registerFunctions(sqlite3* database, FunctionContext& context);

} // namespace tamarok::embedded
