#include <gtest/gtest.h>
#include <string>

#include "tamarok/component.h"

namespace tamarok {
namespace {

/// "name: Type, &byReference: Type, [optional]: Type -> Result".
std::string signature(const component::OperationInfo& operation)
{
    std::string text;
    for (const component::ParameterInfo& parameter : operation.parameters()) {
        std::string name{parameter.name};
        if (parameter.byReference) name = "&" + name;
        if (parameter.optional) name = "[" + name + "]";
        text += (text.empty() ? "" : ", ") + name + ": " + std::string{component::name(parameter.type)};
    }
    if (operation.result != component::ValueType::None) text += " -> " + std::string{component::name(operation.result)};
    return text;
}

struct Row {
    const char* className;
    const char* operation;
    std::int16_t slot;
    const char* signature;
};

constexpr const char* update = "column: String, value: String, table: String, sqlWhere: String, "
                               "db_ADO_dll: ADODB.Connection";
constexpr const char* updateValue = "column: String, value: Variant, table: String, sqlWhere: String, "
                                    "db_ADO_dll: ADODB.Connection, par_strThousantSep_dll: String";

const Row rows[] = {
    {"Comm_Get", "Get_String", 1, "value: Variant, [NoSpaces]: Boolean, [NoTrim]: Boolean -> String"},
    {"Comm_Get", "Get_Number", 2, "value: Variant -> String"},
    {"Comm_Get", "Get_Number_N", 3, "value: Variant -> Double"},
    {"Comm_Get", "Get_Date_N", 4, "value: Variant -> Date"},
    {"Comm_Get", "Get_Datum", 5, "value: Variant -> Date"},
    {"Comm_Get", "Get_Val", 6, "value: Variant -> String"},
    {"Comm_Get", "Get_Key", 7, "strValue: String -> String"},
    {"Comm_Get", "Get_Text", 8, "column: String, tmpRecordSet: ADODB.Recordset -> String"},
    {"Comm_Get", "Get_RelatedText", 9,
     "column: String, strSQL: String, primaryRS: ADODB.Recordset, db_ADO_dll: ADODB.Connection -> String"},
    {"Comm_Get", "Get_FieldValue", 10, "&TmkVar: TmkVar, column: String, table: String, sqlWhere: String -> String"},
    {"Comm_Get", "Get_FieldValueN", 11, "&TmkVar: TmkVar, column: String, table: String, sqlWhere: String -> Double"},
    {"Comm_Get", "Get_FieldSize", 12, "table: String, column: String, &TmkVar: TmkVar -> Long"},
    {"Comm_Get", "OnlyNumbers", 22,
     "&KeyAscii: Integer, blnDecSep: Boolean, &ActiveControl: Object, bolNegativ: Boolean -> Integer"},
    {"Comm_Get", "OnlyNumbersLostFocus", 23, "&ActiveControl: Object, [&strFormat]: String"},
    {"Comm_Get", "OnlyNumbersKeyPress", 24, "&KeyAscii: Integer, &ActiveControl: Object, &strFormat: String"},
    {"Comm_Get", "OnlyDate", 25, "KeyAscii: Integer, &ActiveControl: Object -> Integer"},
    {"Comm_Set", "Set_StrVal", 2, "value: String -> String"},
    {"Comm_Set", "Set_NumVal", 3, "value: String -> String"},
    {"Comm_Set", "Set_StrVal2", 4, "value: String, [wald]: String -> String"},
    {"Comm_Set", "Set_Number", 5,
     "column: String, value: String, table: String, sqlWhere: String, db_ADO_dll: ADODB.Connection, "
     "par_strThousantSep_dll: String"},
    {"Comm_Set", "Set_Number2", 6,
     "&column: String, value: Variant, table: String, sqlWhere: String, db_ADO_dll: ADODB.Connection, "
     "par_strThousantSep_dll: String"},
    {"Comm_Set", "Set_Text", 7, update},
    {"Comm_Set", "Set_Text2", 8, updateValue},
    {"Comm_Set", "Set_Text3", 9, updateValue},
    {"Comm_Set", "Set_Boolean", 10,
     "column: String, value: Boolean, table: String, sqlWhere: String, db_ADO_dll: ADODB.Connection"},
    {"Comm_Set", "Select_Text", 11, "[ControlActive]: Object"},
    {"Comm_Set", "Set_Separator", 12, "value: String, glDecSep: String -> String"},
    {"Comm_find", "FindNumOfChar", 1, "&sTmpString: String, &strFChar: String -> Integer"},
    {"Comm_find", "FindSubstring", 2, "&sTmpString: String, &strFChar: String, &tmp_Number: Integer -> String"},
    {"Comm_Conv", "TransDate", 1, "strDate: Variant, strDateFormat: String -> Variant"},
    {"Comm_Conv", "NoComma", 2, "strVar: String, strThousantSep_dll: String -> String"},
    {"Comm_Conv", "NoComma3", 3, "&strVar: String -> String"},
    {"Comm_Conv", "NoSpace", 4, "&strValue: String -> String"},
    {"Comm_Conv", "AddBrackets", 5, "&rObjName: String -> String"},
    {"Comm_Conv", "AddSpaces", 6, "&rstring: String, &rnumber: Integer -> String"},
    {"Comm_Conv", "NationalDate", 7, "USDate: String -> String"},
    {"Comm_Conv", "USDate", 8, "NationalDate: String, dbAdo: ADODB.Connection -> String"},
    {"Comm_Conv", "USDateA", 9, "NationalDate: String -> String"},
    {"Comm_Conv", "ConvBoolSQLColumnToStr", 10, "&TmkVar: TmkVar, strColumn: String, strLanguage: String -> String"},
};

TEST(ValueSignatures, EveryOperationAsItsCallersKnowIt)
{
    for (const Row& row : rows) {
        const component::OperationInfo& operation =
            component::requireOperation(component::requireClass(row.className), row.operation, 0);
        EXPECT_EQ(operation.name, row.operation);
        EXPECT_EQ(operation.slot, row.slot) << row.operation;
        EXPECT_EQ(signature(operation), row.signature) << row.operation;
    }
}

} // namespace
} // namespace tamarok
