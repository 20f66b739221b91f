#include <gtest/gtest.h>

#include "embedded/contract/contract.h"

namespace tamarok::embedded::contract {
namespace {

TEST(OracleContract, Expressions)
{
    constexpr Row rows[] = {
        {"NVL(NULL,'x') FROM DUAL", "'x'"},
        {"NVL(PIECES,0) FROM WOOD WHERE ID=3", "0"},
        {"'a'||'b' FROM DUAL", "'ab'"},
        {"'a'||5 FROM DUAL", "'a5'"},
        {"LPAD('0',4,'0') FROM DUAL", "'0000'"},
        {"LPAD(0,LENGTH('1203'),0) FROM DUAL", "'0000'"},
        {"SUBSTR('abcdef',2,3) FROM DUAL", "'bcd'"},
        {"SUBSTR('abcdef',-3,2) FROM DUAL", "'de'"},
        {"LENGTH('abc ') FROM DUAL", "4"},
        {"INSTR('abcabc','c') FROM DUAL", "3"},
        {"CHR(65) FROM DUAL", "'A'"},
        {"MOD(7,3) FROM DUAL", "1"},
        {"TRUNC(2.79) FROM DUAL", "2.0"},
        {"TO_CHAR(FELLED,'DD.MM.YYYY') FROM WOOD WHERE ID=1", "'05.03.2024'"},
        {"TO_DATE('05.03.2024','DD.MM.YYYY') FROM DUAL", "2024-03-05"},
        {"TO_NUMBER('1.5') FROM DUAL", "1.5"},
        {"ID FROM WOOD WHERE ROWNUM<=2", "1 | 2"},
        {"CASE WHEN TRUNC(SYSDATE)<=SYSDATE THEN 'past' ELSE 'future' END FROM DUAL", "'past'"},
    };
    checkExpressions(rows);
}

} // namespace
} // namespace tamarok::embedded::contract
