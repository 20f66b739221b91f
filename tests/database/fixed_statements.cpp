#include "fixed_statements.h"

#include <array>
#include <initializer_list>
#include <string_view>

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_lock.h"
#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/tmkvar.h"

namespace tamarok::database::test {
namespace {

using enum FixedStatement::Expect;

struct StatementRow {
    std::string_view name;
    std::string_view text;
    FixedStatement::Expect expect = Rows;
};

/// Settings, and what the dialogs of the lookup read and write. The texts of the dialogs' boxes are "7" and "neu".
constexpr StatementRow statements[]{
    {"option, number", "SELECT NUMBER_VALUE FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'KUBATURPLACE'"},
    {"option, double", "SELECT ISNULL(DOUBLE_VALUE,0) FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = 'UFAKTNAT_EURO'"},
    {"option, text", "SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'ORDERBY'"},
    {"option, date", "SELECT DATE_VALUE FROM OPTIONEN WHERE PROPERTY_ID = 'DATE_FROM'"},
    {"form setting, read",
     "SELECT NUMBER_VALUE FROM FORMS_CONFIG WHERE FORM_ID = 'F_STAMMEINKONF' AND PROPERTY_ID = 'NEU'", Runs},
    {"form setting, written",
     "INSERT INTO FORMS_CONFIG (FORM_ID, PROPERTY_ID, NUMBER_VALUE) VALUES ('F_STAMMEINKONF', 'NEU',5)"},
    {"widths of columns", "SELECT MODEL FROM MODELS WHERE NAME = 'STANDARD' AND RELATION = 'GH_HOLZARTHAHA'"},

    {"several codes, first condition", "SELECT ID,NUMMER,SHORT,LONG FROM BB_T_FSC WHERE NUMMER = '1'"},
    {"several codes, further condition",
     "SELECT ID,NUMMER,SHORT,LONG FROM BB_T_FSC WHERE ISNULL(DISABLE,0)=0 AND SHORT = 'FMIX'"},

    {"lookup, default row", "SELECT NUMMER FROM BB_T_KZ_LEISTUNG WHERE STANDART = 1"},
    {"lookup, no default row", "SELECT NUMMER FROM BB_T_OBJEKTE WHERE STANDART = 1", Runs},
    {"lookup, sorted by a column", "SELECT KURZNAME,LANGNAME FROM RELTABLE WHERE ISNULL(DISABLE,0)=0 AND "
                                   "RELTABLE_ID = 11 ORDER BY 2 DESC"},

    {"free list, new",
     "INSERT INTO RELTABLE (ID,RELTABLE_ID,KURZNAME,LANGNAME,ID_ACCESS_LEVELS) SELECT ISNULL(MAX(ID),0)+1,11,'7','neu',"
     "5 FROM RELTABLE"},
    {"free list, change",
     "UPDATE RELTABLE SET KURZNAME = '7',LANGNAME = 'neu' WHERE RELTABLE_ID = 11 AND KURZNAME = 'alt' AND "
     "LANGNAME  = 'alt' AND ID_ACCESS_LEVELS  IS NULL",
     Runs},
    {"free list of standing timber, new",
     "INSERT INTO T_STEH_RELTABLE (RELTABLE_ID,SHORT,LONG,STAMMDATEN_EXPORT,ID_ACCESS_LEVELS) VALUES (11,'7','neu',1,"
     "5)"},
    {"free list of standing timber, change",
     "UPDATE T_STEH_RELTABLE SET SHORT = '7',LONG = 'neu',STAMMDATEN_EXPORT = NULL WHERE RELTABLE_ID = 11 AND "
     "SHORT = 'alt' AND LONG  = 'alt' AND ID_ACCESS_LEVELS = 5",
     Runs},
    {"free list of standing timber, change without a level",
     "UPDATE T_STEH_RELTABLE SET SHORT = '7',LONG = 'neu',STAMMDATEN_EXPORT = 1 WHERE RELTABLE_ID = 11 AND "
     "SHORT = 'alt' AND LONG  = 'alt' AND ID_ACCESS_LEVELS = NULL",
     Runs},
    {"order, new",
     "INSERT INTO BB_T_AUFTRAGS_PLANUNG (NUMMER,LONG,IST_STUNDEN_ZV,ERSTELLERDATUM,ID_ACCESS_LEVELS,ID_USER) VALUES "
     "('7','neu',12.50,'2024-5-17',5,3)"},
    {"order, change",
     "UPDATE BB_T_AUFTRAGS_PLANUNG SET NUMMER = '7',LONG = 'neu',IST_STUNDEN_ZV = NULL WHERE ID IN (SELECT TOP 1 "
     "BB_T_AUFTRAGS_PLANUNG.ID  FROM BB_T_AUFTRAGS_PLANUNG LEFT JOIN (SELECT ID_AUFTRAG FROM LOHNERFASSUNG_ZEIT_SONST "
     "WHERE ID_NN_POSITIONEN IS NULL AND ISNULL(MENGE,0)<>0 GROUP BY ID_AUFTRAG) A ON A.ID_AUFTRAG = "
     "BB_T_AUFTRAGS_PLANUNG.ID WHERE ISNULL(ABGESCHLOSSEN,0) = 0 AND ISNULL(DISABLE,0)=0 AND NUMMER = 'alt' AND LONG "
     "IS NULL ORDER BY BB_T_AUFTRAGS_PLANUNG.NUMMER)",
     Runs},
    {"project, new", "INSERT INTO BB_T_PROJEKT_PLANUNG (NUMMER,LONG,SHORT,ID_ACCESS_LEVELS)  VALUES ('7','neu','',5)"},
    {"project, change",
     "UPDATE BB_T_PROJEKT_PLANUNG SET NUMMER = '7',LONG = 'neu',SHORT = NULL WHERE ID IN (SELECT TOP 1 "
     "BB_T_PROJEKT_PLANUNG.ID  FROM BB_T_PROJEKT_PLANUNG WHERE ISNULL(DISABLE,0)=0 AND NUMMER = 'alt' AND LONG = 'alt' "
     "ORDER BY 1)",
     Runs},
    {"object, new",
     "INSERT INTO OBJEKT (ID,TABLE_NAME,NUMBER,NAME) SELECT (SELECT ISNULL(MAX(ID),0)+1 FROM OBJEKT),OBJEKT,'7','neu' "
     "FROM PERSONAL WHERE ID_PERSONAL = 01"},
    {"any table, new row gets the level",
     "UPDATE BB_T_VERTRAG SET ID_ACCESS_LEVELS = 5 WHERE ID IN (SELECT MAX(ID) FROM BB_T_VERTRAG)"},

    {"budget tree",
     "SELECT HH_TITEL.NUMBER+ ' ' +ISNULL(HH_TITEL.NAME,''),T_EBENE1.SHORT+ ' ' +ISNULL(T_EBENE1.LONG,''),"
     "T_EBENE2.SHORT+ ' ' +ISNULL(T_EBENE2.LONG,''),T_EBENE3.SHORT+ ' ' +ISNULL(T_EBENE3.LONG,''),"
     "T_EBENE4.SHORT+ ' ' +ISNULL(T_EBENE4.LONG,''),HH_TITEL.ID,T_EBENE1.ID,T_EBENE2.ID,T_EBENE3.ID,T_EBENE4.ID"
     " FROM HH_TITEL LEFT JOIN T_EBENE1 ON T_EBENE1.ID_HH_TITEL = HH_TITEL.ID"
     " LEFT JOIN T_EBENE2 ON T_EBENE2.ID_T_EBENE1 = T_EBENE1.ID LEFT JOIN T_EBENE3 ON T_EBENE3.ID_T_EBENE2 = "
     "T_EBENE2.ID LEFT JOIN T_EBENE4 ON T_EBENE4.ID_T_EBENE3 = T_EBENE3.ID WHERE ISNULL(HH_TITEL.DISABLE,0) = 0"
     " AND ISNULL(T_EBENE1.DISABLE,0) = 0 AND ISNULL(T_EBENE2.DISABLE,0) = 0 AND ISNULL(T_EBENE3.DISABLE,0) = 0"
     " AND ISNULL(T_EBENE4.DISABLE,0) = 0 AND HH_TITEL.ID IN (SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = "
     "'HH_KAPITEL.HH_TITEL' AND ID_MASTER = 01) ORDER BY HH_TITEL.NUMBER,T_EBENE1.SHORT,T_EBENE2.SHORT,T_EBENE3.SHORT,"
     "T_EBENE4.SHORT"},
};

/// What a list selects besides its columns: the tag and the key of a row.
struct ListFields {
    std::string_view type;
    std::string_view tag;
    std::string_view groups; ///< of the tag
    std::string_view key;
    std::array<std::int16_t, 2> joins{-1, -1}; ///< columns whose joins the two need
};

constexpr ListFields listFields[]{
    {"BBKLR",
     "BB_BELEGE_KOPF.BELEGNUMMER+CHAR(13)+RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6)",
     "BB_BELEGE_KOPF.BELEGNUMMER,ACCESS_LEVELS.ACCESS_LEVELS",
     "BB_BELEGE_KOPF.ID",
     {10}},
    {"BBLTN",
     "PERSONAL.NAME+CHAR(44)+PERSONAL.VORNAME+CHAR(13)+CAST(PERSONAL.NUMMER AS VARCHAR(10))",
     "PERSONAL.NAME,PERSONAL.VORNAME,PERSONAL.NUMMER",
     "BB_LEISTUNGS_KOPF.ID",
     {1}},
    {"BBHAB",
     "BB_HAB_KOPF.HAB_NUMMER + CHAR(13) + RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6)",
     "BB_HAB_KOPF.HAB_NUMMER,ACCESS_LEVELS.ACCESS_LEVELS",
     "BB_HAB_KOPF.ID",
     {4}},
    {"BBVS",
     "KOSTENSTELLE.NUMMER+CHAR(13)+RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6)",
     "KOSTENSTELLE.NUMMER,ACCESS_LEVELS.ACCESS_LEVELS",
     "BB_VERTEILSCHLUSSEL_KOPF.ID",
     {1, 7}},
    {"BERM", "BEREITSTELLUNG_KOPF.BEREITSTELLUNGSNAME", "BEREITSTELLUNG_KOPF.BEREITSTELLUNGSNAME",
     "BEREITSTELLUNG_KOPF.ID"},
    {"PLAN", "PLAN_KOPF.PLANNUMMER", "PLAN_KOPF.PLANNUMMER", "PLAN_KOPF.ID"},
    {"BBPLAN",
     "BB_PLAN_KOPF.PLAN_NUMMER+CHAR(13)+RIGHT(ACCESS_LEVELS.ACCESS_LEVELS,6)",
     "BB_PLAN_KOPF.PLAN_NUMMER,ACCESS_LEVELS.ACCESS_LEVELS",
     "BB_PLAN_KOPF.ID",
     {1}},
    {"BBZV",
     "BB_AUFTRAG_KOPF.AUFTRAG_NUMMER+CHAR(13)+RIGHT(AL0.ACCESS_LEVELS,6)",
     "BB_AUFTRAG_KOPF.AUFTRAG_NUMMER,AL0.ACCESS_LEVELS",
     "BB_AUFTRAG_KOPF.ID",
     {8}},
    {"BBMAP",
     "BB_MAP_KOPF.MAP_NUMMER+CHAR(13)+LEFT(RIGHT(AL0.ACCESS_LEVELS,6),4)",
     "BB_MAP_KOPF.MAP_NUMMER,AL0.ACCESS_LEVELS",
     "BB_MAP_KOPF.ID",
     {8}},
    {"AKAT", "BB_T_AUFTRAGS_PLANUNG.NUMMER", "BB_T_AUFTRAGS_PLANUNG.NUMMER", "BB_T_AUFTRAGS_PLANUNG.ID"},
    {"BBJAGD",
     "BB_ABSCHUSSPLAN_KOPF.JAGDJAHR+CHAR(13)+BB_JAGDBEZIRKE.NUMMER",
     "BB_ABSCHUSSPLAN_KOPF.JAGDJAHR,BB_JAGDBEZIRKE.NUMMER",
     "BB_ABSCHUSSPLAN_KOPF.ID",
     {3, 7}},
    {"BBWILD", "BB_WILDURSPRUNGS.WILDMARKENNUMMER", "BB_WILDURSPRUNGS.WILDMARKENNUMMER", "BB_WILDURSPRUNGS.ID", {0}},
    {"BBHUNDE",
     "BB_JAGDHUNDE.NUMMER+CHAR(13)+BB_JAGDHUNDE.GEBURTSNAME",
     "BB_JAGDHUNDE.NUMMER,BB_JAGDHUNDE.GEBURTSNAME",
     "BB_JAGDHUNDE.ID",
     {0}},
    {"BBSTRK",
     "BB_JAGDBEZIRKE.NUMMER+CHAR(13)+BB_STRECKE_NIEDER.NUMMER",
     "BB_STRECKE_NIEDER.NUMMER,BB_JAGDBEZIRKE.NUMMER",
     "BB_STRECKE_NIEDER.ID",
     {7}},
    {"BBJB",
     "BB_JAGDBEZIRKE.JAGDJAHR+CHAR(13)+BB_JAGDBEZIRKE.NUMMER",
     "BB_JAGDBEZIRKE.JAGDJAHR,BB_JAGDBEZIRKE.NUMMER",
     "BB_JAGDBEZIRKE.ID",
     {13}},
    {"BBFAHR",
     "CAST(BB_FAHRTENBUCH_KOPF.JAHR as nvarchar(4))+CHAR(13)+BB_T_OBJEKTGRUPPE.NUMMER+CHAR(13)+BB_T_OBJEKTE.NUMMER",
     "BB_FAHRTENBUCH_KOPF.JAHR,BB_T_OBJEKTGRUPPE.NUMMER,BB_T_OBJEKTE.NUMMER",
     "BB_FAHRTENBUCH_KOPF.ID",
     {18, 19}},
    {"BBOBJ",
     "BB_T_OBJEKTGRUPPE.NUMMER+CHAR(13)+BB_T_OBJEKTE.NUMMER",
     "BB_T_OBJEKTGRUPPE.NUMMER,BB_T_OBJEKTE.NUMMER",
     "BB_T_OBJEKTE.ID",
     {13}},
    {"STEH",
     "STEH_AUFNAHMEPROTOKOLL_KOPF.NUMMER",
     "STEH_AUFNAHMEPROTOKOLL_KOPF.NUMMER",
     "STEH_AUFNAHMEPROTOKOLL_KOPF.ID",
     {5}},
    {"TRANSPORT",
     "CAST(TRANSPORTLOGISTIK_KOPF.ID AS nvarchar(50))+','+CAST(ISNULL(MIN(TRANSPORTLOGISTIK.ID),0) as nvarchar(50))",
     "",
     "TRANSPORTLOGISTIK_KOPF.ID",
     {50}},
    {"BBFS", "", "", "LOHNERFASSUNG_KOPF.ID"},
    {"BBFS",
     "CAST(LOHNERFASSUNG_KOPF.ID AS NVARCHAR(20))+','+CAST(ARB.ID_ARBEITER AS NVARCHAR(20))",
     "LOHNERFASSUNG_KOPF.ID",
     "ARB.ID_ARBEITER",
     {20}},
    {"BBFB", "", "", "SCH_BELEGE_KOPF.ID"},
    {"MSCH", "", "", "SCH_MASCHINENBUCH.ID"},
    {"USERS", "", "", "USERS.ID"},
    {"ACL", "'ID = ' + RTRIM(CAST(ID AS CHAR(100)))", "", "ID"},
    {"BBUN", "", "", "BB_TAKL01_KLR.ID"},
    {"VERTRAG", "", "", "VERTRAEGE.ID_VERTRAG"},
    {"SAPAGRUPPE", "", "", "PA_GRUPPE.ID"},
    {"BBWAL", "", "", "BB_WALDARBEITERLOHN_KOPF.ID"},
    {"FHPEXP", "", "", "FHP_IMPORT.ID"},
    {"WAREN", "", "", "WARENKATALOG.ART_ID", {0}},
};

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string list;
    for (const std::string_view part : parts) {
        if (part.empty()) continue;
        if (!list.empty()) list += ',';
        list += part;
    }
    return list;
}

std::string fromBody(std::string_view type, std::initializer_list<std::int16_t> columns, const TmkVar& session)
{
    std::string body;
    for (const std::int16_t column : columns)
        if (column >= 0) body = Comm_CSel{}.GetFrom(type, column, body, "R", session);
    // A type whose tag needs no join still has its base tables.
    return body.empty() ? Comm_CSel{}.GetFrom(type, -1, body, "R", session) : body;
}

/// The tag and the key of each type that fills a list view.
void addListFields(std::vector<FixedStatement>& all, const TmkVar& session)
{
    for (const ListFields& row : listFields) {
        const std::string text = "SELECT " + joined({row.tag, row.key}) + " FROM " +
                                 fromBody(row.type, {row.joins[0], row.joins[1]}, session) + " GROUP BY " +
                                 joined({row.groups, row.key});
        all.push_back(
            {"list " + std::string{row.type} + ", " + std::string{row.tag.empty() ? row.key : row.tag}, text});
    }
    all.push_back({"list MVLOSE, lots are summed",
                   "SELECT ISNULL(MAX(BB_MV_LOSE.ID),0) AS ID FROM " + fromBody("MVLOSE", {12}, session)});
    const std::string invoice = Comm_CSel{}.GetColumnTyp("BBFAK", 1, true, false, session);
    const std::string grouped = Comm_CSel{}.GetColumnTyp("BBFAK", 1, true, true, session);
    all.push_back({"list BBFAK", "SELECT " + invoice + ",BB_FAKTURA_KOPF.ID FROM " + fromBody("BBFAK", {1}, session) +
                                     " GROUP BY " + joined({grouped, "BB_FAKTURA_KOPF.ID"})});
}

/// The further conditions of articles, and the order of goods by the column that the control sorts by.
void addListOrders(std::vector<FixedStatement>& all, const TmkVar& session)
{
    const Comm_CSel columns;
    std::string where;
    Comm_Lock{}.Access_Levels("HEADERRECH", where, session, session.ID_Access_Levels);
    for (const std::string condition :
         {" ISNULL(HEADERRECH.STORNO,0) = 0", " NN_POSITIONEN.VER_TYPE = 'R'",
          "HEADERRECH.R_NAME NOT IN (SELECT LOGS_RECH.R_NAME FROM LOGS_RECH WHERE LOGS_RECH.R_NAME = "
          "HEADERRECH.R_NAME)"})
        where = columns.InsertToWhere(where, condition);
    all.push_back({"list ARTIKEL", "SELECT " + columns.GetColumnTyp("ARTIKEL", 472, true, false, session) + " FROM " +
                                       fromBody("ARTIKEL", {472, 480}, session) + " WHERE " + where + " GROUP BY " +
                                       columns.GetColumnTyp("ARTIKEL", 472, true, true, session)});
    const std::string number = columns.GetColumnTyp("WAREN", 1, true, false, session);
    const std::string order =
        " ORDER BY (CASE WHEN ISNUMERIC(" + number + ")=1 THEN CAST(" + number + " AS FLOAT) ELSE NULL END) DESC";
    all.push_back({"list WAREN, ordered by numbers",
                   "SELECT " + number + ",WARENKATALOG.ART_ID FROM " + fromBody("WAREN", {1, 0}, session) +
                       " GROUP BY " +
                       joined({columns.GetColumnTyp("WAREN", 1, true, true, session), "WARENKATALOG.ART_ID"}) + order});
}

/// A table that the rights know, and how it is read.
struct LevelTable {
    std::string_view name;
    std::string_view from;
};

constexpr LevelTable levelTables[]{
    {"PERSONAL", "PERSONAL"},
    {"BB_T_AUFTRAGS_PLANUNG", "BB_T_AUFTRAGS_PLANUNG"},
    {"BB_T_PROJEKT_PLANUNG", "BB_T_PROJEKT_PLANUNG"},
    {"VERKAUFSART", "VERKAUFSART"},
    {"BB_T_OBJEKTE", "BB_T_OBJEKTE"},
    {"BB_T_VERTRAG", "BB_T_VERTRAG"},
    {"WARENKATALOG", "WARENKATALOG"},
    {"BB_T_FSC", "BB_T_FSC"},
    {"T_ERLEGER", "T_ERLEGER"},
    {"T_JAGDBEZIRK", "T_JAGDBEZIRK"},
    {"MODELS", "MODELS"},
    {"BB_LEISTUNGS_KOPF", "BB_LEISTUNGS_KOPF"},
    {"RELTABLE", "RELTABLE"},
    {"T_STEH_RELTABLE", "T_STEH_RELTABLE"},
    {"KLR", "KLR"},
    {"HEADERRECH", "HEADERRECH"},
    {"RECHNUNGSJOURNAL", "RECHNUNGSJOURNAL"},
    {"LISTENKOPF", "LOGS INNER JOIN LISTENKOPF ON LISTENKOPF.LISTE = LOGS.LISTE"},
    {"BB_HAB_KOPF", "BB_HAB_KOPF"}, // any other table
};

/// Each rule that a table can have, of the editions and with and without visible levels, for the root, a node and a
/// district. The working period is that of the data.
void addLevelClauses(std::vector<FixedStatement>& all, TmkVar session)
{
    for (const std::string_view customer : {"", "BB", "ALF"}) {
        for (const std::string_view visible : {"", "4,5,6,7"}) {
            for (const std::int32_t level : {0, 1, 4, 5}) {
                session.strCustomer = customer;
                session.strID_Access_Levels = visible;
                for (const LevelTable& table : levelTables) {
                    std::string where;
                    Comm_Lock{}.Access_Levels(table.name, where, session, level);
                    // Whether a level sees a row depends on the data; this node sees some of every table.
                    const bool sees = !visible.empty() && level == 4;
                    all.push_back(
                        {"rights on " + std::string{table.name} + " of level " + std::to_string(level) + " " +
                             std::string{customer} + (visible.empty() ? " without levels" : " with levels"),
                         "SELECT COUNT(*) FROM " + std::string{table.from} + " WHERE " + where + " HAVING COUNT(*) > 0",
                         sees ? Rows : Runs});
                }
            }
        }
    }
}

/// The predicates for a position in the hierarchy: of a level by its number, of none, and of levels by a statement.
void addLevelPositions(std::vector<FixedStatement>& all, const TmkVar& session)
{
    for (const std::string level : {"5", "0", "SELECT ID FROM ACCESS_LEVELS WHERE ID IN (5,9)"}) {
        for (const std::uint8_t groups : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{2}}) {
            for (const std::string exactly : {"True", "False"}) {
                const std::string predicate = Comm_Set{}.CreateSQL_ACCESS_LEVELS(session, level, groups, exactly);
                all.push_back({"position " + level + " " + std::to_string(groups) + " " + exactly,
                               "SELECT ID FROM BB_HAB_KOPF WHERE ID_ACCESS_LEVELS " + predicate, Runs});
            }
        }
    }
}

/// Records what the library sends while it reads numbers, default models, options and rights.
void addSent(std::vector<FixedStatement>& all, TmkVar session)
{
    std::string name;
    session.db_ADO->listen([&](std::string_view text) { all.push_back({name, std::string{text}, Runs}); });
    const auto record = [&](std::string_view what, const auto& action) {
        name = what;
        action();
    };
    const Comm_Get get;
    record("default model", [&] { get.GetStandardModel(session, "LOG", false); });
    record("default model of any level", [&] { get.GetStandardModel(session, "LOG", true); });
    record("default model of several rows", [&] { get.GetStandardModel(session, "ABSCHLAG1", false); });
    record("default model of several rows and any level", [&] { get.GetStandardModel(session, "ABSCHLAG1", true); });
    record("number of a list", [&] { get.GetNewNumber(1, session, "5"); });
    record("number of a list without level", [&] { get.GetNewNumber(1, session, "0"); });
    record("models may be changed", [&] { Comm_SQL{}.OPTIONEN_glbModel(session); });
    session.strCustomer = "ALF";
    record("first number of a list", [&] { get.GetNewNumber(1, session, "1"); });
    record("first number of a provision",
           [&] { get.GetNewNumber(0, session, "SELECT BEREITSTELLUNGSNAME FROM BEREITSTELLUNG_KOPF WHERE ID < 0"); });
    session.db_ADO->listen({});
    all.push_back({"wage rate of a person", get.getSatzLohnerfassung(1, 2024, 3, 340, 0)});
    all.push_back({"wage rate of a machine", get.getSatzLohnerfassung(3, 2024, 3, 340, 1)});
    all.push_back({"wage rate by date", get.getSatzLohnerfassung(4, 2024, 3, 340, 0)});
    all.push_back({"wage rate by date, with a machine", get.getSatzLohnerfassung(4, 2024, 3, 340, 1)});
}

/// A new number of a framework contract must not be in use where the user sees it.
void addContractCheck(std::vector<FixedStatement>& all, const TmkVar& session)
{
    std::string where;
    Comm_Lock{}.Access_Levels("BB_T_VERTRAG", where, session, session.ID_Access_Levels);
    all.push_back({"framework contract, number in use",
                   "SELECT ID FROM BB_T_VERTRAG WHERE NUMMER = '3' AND ISNULL(DISABLE,0) = 0 AND " + where});
}

} // namespace

std::vector<std::string> callersTables()
{
    return {"CREATE TABLE #BB_LEISTUNGS_KOPF (ID INT NOT NULL PRIMARY KEY)",
            "INSERT INTO #BB_LEISTUNGS_KOPF (ID) SELECT ID FROM BB_LEISTUNGS_KOPF"};
}

TmkVar sessionOf(const ado::ConnectionRef& sample)
{
    TmkVar session;
    session.db_ADO = sample;
    session.strLanguage = "GERMAN";
    session.strDateFormat = "YYYY-MM-DD";
    session.ID_User = 3;
    session.ID_Access_Levels = 5;
    session.strID_Access_Levels = "4,5,6,7";
    session.DateFrom = makeDate(2022, 1, 1);
    session.DateTo = makeDate(2024, 12, 31);
    return session;
}

std::vector<FixedStatement> fixedStatements(const ado::ConnectionRef& sample)
{
    const TmkVar session = sessionOf(sample);
    std::vector<FixedStatement> all;
    for (const StatementRow& row : statements)
        all.push_back({std::string{row.name}, std::string{row.text}, row.expect});
    addListFields(all, session);
    addListOrders(all, session);
    addLevelClauses(all, session);
    addLevelPositions(all, session);
    addSent(all, session);
    addContractCheck(all, session);
    return all;
}

} // namespace tamarok::database::test
