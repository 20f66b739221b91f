#include "work/measured_line.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"
#include "tamarok/transaction.h"

namespace tamarok::workbench {

namespace {

constexpr std::int16_t volumePlaces = 3;
constexpr std::int16_t roundWood = 1; ///< measure kind

/// What a selection reads before the code.
enum class Before { Nothing, RoundWood, Assortment };

/// A code field: the selections that offer and check its codes.
struct CodeField {
    std::string_view field;
    std::string_view offer;
    Before beforeOffer;
    std::string_view check;
    Before beforeCheck;
    std::string_view code; ///< column of the check
};
constexpr std::array fields{
    CodeField{"species", "HOLZART_GRID", Before::Nothing, "HOLZART_HS_LOGS_VALID", Before::Assortment, "SHORT"},
    CodeField{"assortment", "HOLZSORTE_GRID", Before::RoundWood, "HOLZSORTE_VALID", Before::RoundWood, "HS"},
    CodeField{"quality", "GUETEKLASSE_HS_GRID", Before::Assortment, "GUETEKLASSE_HS_LOGS_VALID", Before::Assortment,
              "SHORT"},
    CodeField{"barkKey", "RINDENKENNZ_GRID", Before::Nothing, "RINDENKENNZ_VALID", Before::Nothing, "SHORT"},
};

/// Returns the fields of a selection, with tabs between.
std::string parametersOf(Before before, const MeasuredLine& line, const std::string& code)
{
    switch (before) {
    case Before::RoundWood: return "1\t" + code;
    case Before::Assortment: return line.assortment + "\t" + code;
    case Before::Nothing: break;
    }
    return code;
}

std::string codeOf(std::string_view field, const MeasuredLine& line)
{
    if (field == "species") return line.species;
    if (field == "assortment") return line.assortment;
    return field == "quality" ? line.quality : line.barkKey;
}

const CodeField* find(std::string_view field)
{
    for (const CodeField& known : fields)
        if (known.field == field) return &known;
    return nullptr;
}

double numberOf(const std::string& text)
{
    return convert::toDouble(Variant{text});
}

std::string quoted(std::string_view text)
{
    if (text.empty()) return "NULL";
    return std::string{"'"}.append(text::replaceAll(text, "'", "''")).append("'");
}

/// Returns a number as SQL writes it, "NULL" for an empty text.
std::string sqlNumber(const std::string& text)
{
    return text.empty() ? "NULL" : convert::toPlainText(numberOf(text));
}

} // namespace

LineFigures figuresOf(const MeasuredLine& line, const TmkVar& session)
{
    if (line.diameter.empty() || line.length.empty()) return {};
    const Comm_Get get;
    const Comm_Set set;
    const bool computesBark = get.GetCalculationRinden(line.barkKey, session.db_ADO);
    const std::string_view mode = computesBark ? "cm" : "";
    LineFigures figures;
    figures.bark = set.CalculateRinde(session, "0", line.species, mode, line.diameter, computesBark, "0", "");
    figures.strengthClass = set.MakeStkl("", line.diameter, mode, figures.bark, session.db_ADO, false, computesBark,
                                         get.GetCalculationSTKL(line.assortment, session.db_ADO),
                                         get.GetCalculationSTKL_ID(line.assortment, session.db_ADO));
    figures.volume = set.CalculateRundKubatur(line.pieces, line.diameter, line.length, figures.bark, false, mode, false,
                                              "0.000", volumePlaces);
    return figures;
}

std::string checkOf(std::string_view field, const MeasuredLine& line, const TmkVar& session)
{
    const CodeField* const known = find(field);
    if (known == nullptr) return {};
    const std::string code = text::replaceAll(codeOf(field, line), "'", "''");
    return Comm_Set{}.CreateSQL(session, known->check, parametersOf(known->beforeCheck, line, code));
}

std::string spelledCode(std::string_view field, const MeasuredLine& line, const TmkVar& session)
{
    const CodeField* const known = find(field);
    if (known == nullptr) return {};
    ado::Recordset rows;
    rows.Open(checkOf(field, line, session), session.db_ADO);
    return rows.AtEOF() ? codeOf(field, line) : convert::toText(rows.Fields().Item(known->code).Value());
}

std::string choiceOf(std::string_view field, const MeasuredLine& line, const TmkVar& session)
{
    const CodeField* const known = find(field);
    if (known == nullptr) return {};
    return Comm_Set{}.CreateSQL(session, known->offer, parametersOf(known->beforeOffer, line, {}));
}

std::int32_t addLine(const std::string& list, const MeasuredLine& line, const TmkVar& session)
{
    const LineFigures figures = figuresOf(line, session);
    if (figures.volume.empty())
        throw Error{errors::invalidArgument, "A line needs a diameter and a length.", "Workbench"};
    ado::Transaction transaction{*session.db_ADO};
    const Comm_Get get;
    const std::string ofList = "LISTE = " + quoted(list);
    const auto number = static_cast<std::int32_t>(get.Get_FieldValueN(session, "MAX(BLNR)", "LOGS", ofList)) + 1;
    const std::string bark = figures.bark.empty() ? "0" : figures.bark;
    session.db_ADO->Execute(
        "INSERT INTO LOGS (LISTE,LISTDATUM,BLNR,HA,HS,GKL,STKL,LAENGE,DURCH,STK,KUBATUR,MENGE,ID_MASSEINHEIT,"
        "ID_RINDENKENNZ,RINDE_WERT,KLST,DSART) SELECT " +
        quoted(list) + ",(SELECT MIN(LISTDATUM) FROM LOGS WHERE " + ofList + ")," + std::to_string(number) + "," +
        quoted(line.species) + "," + quoted(line.assortment) + "," + quoted(line.quality) + "," +
        quoted(figures.strengthClass) + "," + sqlNumber(line.length) + "," + sqlNumber(line.diameter) + "," +
        sqlNumber(line.pieces) + "," + sqlNumber(figures.volume) + "," + sqlNumber(figures.volume) +
        ",1,(SELECT MIN(ID_RINDENKENNZ) FROM RINDENKENNZ WHERE RINDENKENNZ = " + quoted(line.barkKey) + ")," +
        sqlNumber(bark) + ",1," + std::to_string(roundWood));
    session.db_ADO->Execute("INSERT INTO LOGS_RECH (ID_LOG) SELECT MAX(ID_LOG) FROM LOGS WHERE " + ofList);
    transaction.commit();
    return number;
}

} // namespace tamarok::workbench
