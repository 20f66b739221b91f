#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "day/steps.h"
#include "print/list_printer.h"

#include "tamarok/ado.h"
#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/transaction.h"

namespace tamarok::cli::day {

namespace {

constexpr std::string_view list = "TAGESLISTE";
constexpr std::int16_t measureKind = 1;
constexpr std::int16_t volumePlaces = 3;

/// A log as it is called out to the person at the keyboard: codes of the master data, and the keys that
/// are pressed in the two number boxes, typing errors included.
struct CalledLog {
    std::string_view species;
    std::string_view assortment;
    std::string_view quality;
    std::string_view barkKey;
    std::string_view diameterKeys;
    std::string_view lengthKeys;
};

constexpr std::array calledLogs{
    CalledLog{"FI", "BL", "B", "MR", "32,5", "4,1"},  CalledLog{"FI", "BL", "B", "MR", "41", "5"},
    CalledLog{"FI", "LA", "C", "OR", "2x8", "12,35"}, CalledLog{"TA", "BL", "A", "MR", "55,5", "4,1"},
    CalledLog{"KI", "AB", "C", "MR", "24,9", "3"},    CalledLog{"KI", "ZH", "C", "MR", "14", "4"},
    CalledLog{"BU", "FU", "A", "OR", "61", "2,8"},    CalledLog{"BU", "BL", "B", "MR", "38-", "5,2"},
    CalledLog{"EI", "FU", "A", "MR", "72,5", "3,4"},  CalledLog{"FI", "IF", "C", "OR", "18", "2"},
};

/// The measured log as the boxes of the form show it.
struct MeasuredLog {
    std::string diameter;
    std::string length;
    std::string bark;
    std::string strengthClass;
    std::string volume;
    double stackedFactor = 0;
    double dryFactor = 0;
};

/// The text of a number box after the keys were pressed in it; its filter refuses some of them.
std::string typedNumber(std::string_view keys, const std::string& format)
{
    controls::TextBox box;
    controls::typeText(box, keys, [&](std::int16_t& key) { Comm_Get{}.OnlyNumbersKeyPress(key, box, format); });
    return box.text();
}

MeasuredLog measureLog(const CalledLog& log, const TmkVar& session)
{
    const Comm_Get get;
    const Comm_Set set;
    const auto& connection = session.db_ADO;
    const Regional& regional = Platform::current().regional;
    MeasuredLog result;
    result.diameter = typedNumber(log.diameterKeys, "000.00");
    result.length = typedNumber(log.lengthKeys, "00.00");
    const bool computesBark = get.GetCalculationRinden(log.barkKey, connection);
    const std::string_view mode = computesBark ? "cm" : "";
    result.bark = set.CalculateRinde(session, "0", log.species, mode, result.diameter, computesBark, "0", "");
    result.strengthClass = set.MakeStkl("", result.diameter, mode, result.bark, connection, false, computesBark,
                                        get.GetCalculationSTKL(log.assortment, connection),
                                        get.GetCalculationSTKL_ID(log.assortment, connection));
    result.volume = set.CalculateRundKubatur("1", result.diameter, result.length, result.bark, false, mode, false,
                                             "0.000", volumePlaces);
    const double length = convert::parseNumber(result.length, regional).value_or(0.0);
    const auto factor = [&](std::string_view field) {
        return get.GetHolzTabValue(session, {}, field, measureKind, log.species, log.assortment, "rm", log.quality,
                                   result.strengthClass, true, log.barkKey, length);
    };
    result.stackedFactor = factor("RM_UFA");
    result.dryFactor = factor("ATO_UFA");
    return result;
}

/// Inserts a line of one piece, measured in cubic metres, and its row of settlements.
void store(const CalledLog& log, const MeasuredLog& line, ado::Connection& connection)
{
    const Regional& regional = Platform::current().regional;
    const auto sql = [&](const std::string& text) {
        return convert::toPlainText(convert::parseNumber(text, regional).value_or(0.0));
    };
    const auto quoted = [](std::string_view text) { return std::string{"'"}.append(text).append("'"); };
    std::string values = quoted(list);
    for (const std::string& value :
         {std::string{"1"}, quoted(log.species), quoted(log.assortment), quoted(log.quality),
          quoted(line.strengthClass), sql(line.length), sql(line.diameter), std::string{"1"}, sql(line.volume),
          sql(line.volume), std::string{"1"}, sql(line.bark), convert::toPlainText(line.stackedFactor),
          convert::toPlainText(line.dryFactor), std::string{"1"}, std::to_string(measureKind)})
        values.append(",").append(value);
    connection.Execute("INSERT INTO LOGS (LISTE,BLNR,HA,HS,GKL,STKL,LAENGE,DURCH,STK,KUBATUR,MENGE,ID_MASSEINHEIT,"
                       "RINDE_WERT,UFAKT_RM,UFAKT_ATO,KLST,DSART) VALUES (" +
                       values + ")");
    connection.Execute("INSERT INTO LOGS_RECH (ID_LOG) SELECT MAX(ID_LOG) FROM LOGS");
}

void printMeasuring(const Context& context)
{
    const auto table = makeListPrinter(ListFormat::Table, context.output,
                                       {"Species", "Assortment", "Keys", "Diameter cm", "Keys", "Length m", "Bark cm",
                                        "Class", "Volume m³", "Factor rm", "Factor t"});
    for (const CalledLog& log : calledLogs) {
        const MeasuredLog line = measureLog(log, context.session);
        store(log, line, ado::require(context.session.db_ADO));
        table->row({log.species, log.assortment, log.diameterKeys, line.diameter, log.lengthKeys, line.length,
                    line.bark, line.strengthClass, line.volume, line.stackedFactor, line.dryFactor});
    }
    table->finish();
}

/// Prints the stored lines with their quantity in stacked cubic metres, dry tons and pieces, and their
/// volume class.
void printQuantities(const Context& context)
{
    const auto quantity = [&](const char* unit) {
        return Comm_CSel{}.MengeSQL(context.session, false, "R", unit, "0.00");
    };
    ado::Recordset rows;
    rows.Open("SELECT LOGS.HA,LOGS.HS,LOGS.KUBATUR," + quantity("2") + " AS RM," + quantity("5") + " AS ATRO," +
                  quantity("3") +
                  " AS STUECK,LOGS.KKLASSE FROM LOGS INNER JOIN LOGS_RECH ON LOGS.ID_LOG = "
                  "LOGS_RECH.ID_LOG WHERE LOGS.LISTE = '" +
                  std::string{list} + "' ORDER BY LOGS.ID_LOG",
              context.session.db_ADO);
    const auto table =
        makeListPrinter(ListFormat::Table, context.output,
                        {"Species", "Assortment", "Volume m³", "rm", "t atro", "Pieces", "Volume class"});
    printRows(rows, *table);
}

} // namespace

/// Measures ten logs line by line, then sets the volume classes of the list and archives it. At the end
/// everything is rolled back, so that the day can be shown again.
void measureLogs(const Context& context)
{
    const Comm_Set set;
    const auto& connection = context.session.db_ADO;
    const ado::Transaction rollback{ado::require(connection)};
    printMeasuring(context);
    const std::string ofList = "LISTE = '" + std::string{list} + "'";
    set.CalculateKubaturKlasse(connection, "SELECT ID_LOG FROM LOGS WHERE " + ofList, false);
    context.output.write("\nThe same lines in other units, with the class of their mean volume:\n\n");
    printQuantities(context);
    set.Set_Logs_Archiv(ofList, connection, false);
    context.output.write(
        "\nArchived: " +
        Comm_Get{}.Get_Number(Comm_Get{}.Get_FieldValueN(context.session, "COUNT(*)", "LOGS_HISTORY", ofList)) +
        " lines\n");
}

} // namespace tamarok::cli::day
