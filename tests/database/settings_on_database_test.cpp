#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "records_database.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_models.h"
#include "tamarok/comm_set.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"

// Column widths, default models, wage rates, numbers and the lookups' own tables on the sample database.

namespace tamarok::database {
namespace {

Variant number(std::int32_t value)
{
    return value;
}

class SettingsOnDatabase : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample_ = embedded::connectInMemory();
        createReferenceDatabase(*sample_, {.logs = 500, .records = 100});
    }
    static void TearDownTestSuite() { sample_.reset(); }

    SettingsOnDatabase() : scope_{makePlatform()}
    {
        session_.db_ADO = sample_;
        session_.strLanguage = "GERMAN";
        sample_->BeginTrans();
    }
    ~SettingsOnDatabase() override { sample_->RollbackTrans(); }

    /// All rows of a statement, columns by "|", rows by line.
    static std::string content(const std::string& statement)
    {
        std::string text;
        ado::Recordset rows;
        for (rows.Open(statement, sample_); !rows.AtEOF(); rows.MoveNext()) {
            for (std::int32_t i = 0; i < rows.Fields().Count(); ++i) {
                const Variant value = rows.Fields().Item(i).Value();
                text.append(i == 0 ? "" : "|").append(value.isNull() ? "-" : convert::toText(value));
            }
            text += '\n';
        }
        return text;
    }

    void signIn(std::int32_t user, std::int32_t level)
    {
        session_.ID_User = user;
        session_.ID_Access_Levels = level;
    }
    std::string defaultModel(std::string_view relation, bool anyLevel = false)
    {
        const std::int32_t id = Comm_Get{}.GetStandardModel(session_, relation, anyLevel);
        return id == 0 ? "none" : content("SELECT NAME FROM MODELS WHERE ID = " + std::to_string(id));
    }

    static ado::ConnectionRef sample_;
    TmkVar session_;

private:
    static Platform makePlatform()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        platform.makeLocService = &loc::makeLocService;
        return platform;
    }
    PlatformScope scope_;
};
ado::ConnectionRef SettingsOnDatabase::sample_;

/// A control with columns of these widths; a negative one hides the column.
ObjectRef controlWith(std::string_view type, const std::vector<std::int32_t>& widths)
{
    const ObjectRef control = controls::make(type);
    if (type == "MSFlexGrid") control->put("Cols", number(static_cast<std::int32_t>(widths.size())));
    const std::string collection = type == "ListView" ? "ColumnHeaders" : "Columns";
    std::int32_t index = type == "ListView" ? 1 : 0;
    for (const std::int32_t width : widths) {
        std::vector<Variant> place{number(index++)};
        if (type == "MSFlexGrid") {
            control->putIndexed("ColWidth", place, number(std::abs(width)));
            continue;
        }
        std::vector<Variant> arguments;
        if (type == "DataGrid") arguments = place;
        control->get(collection, {}).asObject()->call("Add", arguments);
        const ObjectRef column = control->get(collection, place).asObject();
        column->put("Width", number(std::abs(width)));
        if (width < 0) column->put("Visible", false);
    }
    return control;
}

std::vector<std::int32_t> widthsOf(std::string_view type, const Object& control, std::int32_t count)
{
    std::vector<std::int32_t> widths;
    for (std::int32_t i = 0; i < count; ++i) {
        const Variant place = number(type == "ListView" ? i + 1 : i);
        if (type == "MSFlexGrid")
            widths.push_back(convert::toLong(control.get("ColWidth", {&place, 1})));
        else
            widths.push_back(convert::toLong(control.get(type == "ListView" ? "ColumnHeaders" : "Columns", {&place, 1})
                                                 .asObject()
                                                 ->get("Width", {})));
    }
    return widths;
}

TEST_F(SettingsOnDatabase, WidthsComeBackOnEachKindOfControl)
{
    for (const std::string_view type : {"ListView", "MSFlexGrid", "DataGrid"}) {
        const ObjectRef form = controls::make("Form");
        form->put("Width", number(8000));
        form->put("Height", number(6000));
        dynamic_cast<controls::Control&>(*form).Name = "frmViewGrid";
        const ObjectRef saved = controlWith(type, {1200, 4500, 700});
        saved->put("Parent", form);
        Comm_Models{}.ColWidth_Set(session_, type, *saved);
        const std::string widths = content("SELECT MODEL FROM MODELS WHERE RELATION = '" + std::string{type} + "'");
        EXPECT_EQ(widths, type == "DataGrid" ? "1200,4500,700,8000,6000\n" : "1200,4500,700\n");

        form->put("Width", number(1));
        const ObjectRef restored = controlWith(type, {1, 2, 3});
        restored->put("Parent", form);
        Comm_Models{}.ColWidth_Get(session_, type, *restored);
        EXPECT_EQ(widthsOf(type, *restored, 3), (std::vector<std::int32_t>{1200, 4500, 700})) << type;
        EXPECT_EQ(convert::toLong(form->get("Width", {})), type == "DataGrid" ? 8000 : 1);
    }
}

TEST_F(SettingsOnDatabase, WidthsAreReplacedAndNoOtherModelIsTouched)
{
    const std::string others = "SELECT * FROM MODELS WHERE RELATION <> 'LOG' OR NAME <> 'STANDARD' ORDER BY ID";
    const std::string before = content(others);
    for (const std::int32_t width : {100, 200}) {
        const ObjectRef list = controlWith("ListView", {width});
        Comm_Models{}.ColWidth_Set(session_, "LOG", *list);
    }
    EXPECT_EQ(
        content("SELECT MODEL,STANDARD,ID_USER,NICHT_ANDERBAR,ID_ACCESS_LEVELS FROM MODELS WHERE RELATION = 'LOG' "
                "AND NAME = 'STANDARD'"),
        "200|Wahr|-|Falsch|-\n");
    EXPECT_EQ(content(others), before);
}

TEST_F(SettingsOnDatabase, TheDefaultModelIsTheUsersThenTheLevelsThenTheFixedOne)
{
    signIn(3, 5);
    EXPECT_EQ(defaultModel("LOG"), "Meine Abfuhr\n");
    signIn(2, 5);
    EXPECT_EQ(defaultModel("LOG"), "Holzliste des Reviers\n");
    signIn(2, 6);
    EXPECT_EQ(defaultModel("LOG"), "Grundeinstellung\n") << "another district";
    EXPECT_EQ(defaultModel("LOG", true), "Meine Abfuhr\n") << "of any user";
    signIn(2, 5);
    EXPECT_EQ(defaultModel("BBKLR"), "Kosten des Amtes\n") << "a level above sees it";
    EXPECT_EQ(defaultModel("BBOBJ"), "none") << "no default";
    EXPECT_EQ(defaultModel("NONE"), "none");
}

TEST_F(SettingsOnDatabase, TheDefaultModelOfSeveralRowsIsTheirFirst)
{
    signIn(2, 4);
    EXPECT_EQ(defaultModel("ABSCHLAG1"), "Käferholz\n");
    const std::int32_t id = Comm_Get{}.GetStandardModel(session_, "ABSCHLAG1", false);
    EXPECT_EQ(content("SELECT MODEL FROM MODELS WHERE ID = " + std::to_string(id)), "FI;C;25\n");
    signIn(2, 12);
    EXPECT_EQ(defaultModel("ABSCHLAG1"), "Frischholz\n");
}

TEST_F(SettingsOnDatabase, SavedWidthsAreNobodysDefaultModel)
{
    const ObjectRef list = controlWith("ListView", {100});
    Comm_Models{}.ColWidth_Set(session_, "BBFAK", *list);
    for (const std::int32_t user : {0, 2, 3}) {
        signIn(user, 5);
        EXPECT_EQ(defaultModel("BBFAK"), "Grundeinstellung\n");
        EXPECT_EQ(defaultModel("BBFAK", true), "STANDARD\n") << "whoever asks for rows of any owner gets this one";
    }
}

/// Each branch of the statement, in the first month of the data, the last, and one before all rates.
TEST_F(SettingsOnDatabase, WageRatesByDateMachineAndGroup)
{
    const auto rate = [](std::int32_t type, std::int32_t year, std::int32_t month, std::int32_t person,
                         std::int32_t machine) {
        return content(Comm_Get{}.getSatzLohnerfassung(type, year, month, person, machine));
    };
    EXPECT_EQ(rate(4, 2024, 12, 0, 0), "fm|9,8\n") << "the present rate";
    EXPECT_EQ(rate(4, 2022, 1, 0, 0), "fm|9,21\n");
    EXPECT_EQ(rate(4, 2022, 1, 0, 1), "fm|9,21\n") << "the machine does not count";
    EXPECT_EQ(rate(4, 2017, 12, 0, 0), "fm|-\n");
    EXPECT_EQ(rate(3, 2024, 3, 340, 1), "Std|18,6\n") << "the driver of a harvester";
    EXPECT_EQ(rate(3, 2024, 3, 340, 4), "Std|17,35\n") << "of a tractor";
    EXPECT_EQ(rate(3, 2024, 3, 340, 99999), "Std|-\n") << "of no machine";
    // A worker of the second group, who came into it on 1 January 2022.
    EXPECT_EQ(content("SELECT DATUM,TEXT FROM ONETODATE WHERE TABLE_COLUMN = 'PERSONAL.LOHNGRUPPE' AND TABLE_ID = 350 "
                      "ORDER BY DATUM"),
              "01.01.2018|LG1\n01.01.2022|LG2\n");
    EXPECT_EQ(rate(1, 2024, 12, 350, 0), "Std|14,15\n");
    EXPECT_EQ(rate(1, 2022, 1, 350, 0), "Std|13,3\n") << "in the second group";
    EXPECT_EQ(rate(1, 2021, 12, 350, 0), "Std|11,28\n") << "in the first group";
    EXPECT_EQ(rate(1, 2017, 12, 350, 0), "Std|-\n");
    EXPECT_EQ(rate(1, 2024, 12, 1, 0), "Std|-\n") << "a partner without a wage group";
    EXPECT_EQ(rate(999, 2024, 12, 350, 0), "") << "no such wage type";
}

TEST_F(SettingsOnDatabase, TheNextListFollowsTheLastOneOfItsLevel)
{
    const std::string last = content("SELECT LISTE FROM LISTENKOPF WHERE ID = (SELECT MAX(ID) FROM LISTENKOPF WHERE "
                                     "ID_ACCESS_LEVELS = 5)");
    const std::string next = Comm_Get{}.GetNewNumber(1, session_, "5");
    EXPECT_EQ(std::stoi(next.substr(next.size() - 5)), std::stoi(last.substr(last.size() - 6)) + 1) << last << next;
    EXPECT_EQ(next.substr(0, 4), last.substr(0, 4));
    EXPECT_EQ(content("SELECT COUNT(*) FROM LISTENKOPF WHERE ID IS NULL"), "0\n");
}

TEST_F(SettingsOnDatabase, TheFirstNumbersOfTheEditionAlfBeginWithTheOffice)
{
    session_.strCustomer = "ALF";
    sample_->Execute("DELETE FROM LISTENKOPF WHERE ID_ACCESS_LEVELS = 11");
    EXPECT_EQ(content("SELECT NUMMER FROM PERSONAL WHERE MANDANTEN = 1 AND ID_ACCESS_LEVELS = 11"), "21232\n");
    const std::string year = std::to_string(toCivil(Platform::today()).year % 100);
    EXPECT_EQ(Comm_Get{}.GetNewNumber(1, session_, "11"), "00021232" + year + "21201");
    session_.ID_Access_Levels = 11;
    EXPECT_EQ(
        Comm_Get{}.GetNewNumber(0, session_, "SELECT MAX(BEREITSTELLUNGSNAME) FROM BEREITSTELLUNG_KOPF WHERE ID < 0"),
        "BM00021232-" + year + "01");
}

/// The chosen columns of a saved list are columns of its type.
TEST_F(SettingsOnDatabase, ModelsOfListsNameColumns)
{
    std::size_t checked = 0;
    ado::Recordset models;
    models.Open("SELECT RELATION,MODEL FROM MODELS WHERE NAME <> 'STANDARD' AND RELATION NOT LIKE 'ABSCHLAG%'",
                sample_);
    for (; !models.AtEOF(); models.MoveNext()) {
        const std::string type = convert::toText(models.Fields().Item(0).Value());
        std::istringstream ids{convert::toText(models.Fields().Item(1).Value())};
        for (std::string id; std::getline(ids, id, ','); ++checked) {
            const auto column = static_cast<std::int16_t>(std::stoi(id));
            const std::string text = type == "LOG" ? Comm_CSel{}.GetColumn(column, "R", session_)
                                                   : Comm_CSel{}.GetColumnTyp(type, column, true, false, session_);
            EXPECT_NE(text, "") << type << " " << id;
        }
    }
    EXPECT_EQ(checked, 37U);
}

TEST_F(SettingsOnDatabase, KeysAreFound)
{
    for (const test::Reference& reference : {test::Reference{"MODELS", "ID_USER", "USERS", "ID"},
                                             {"MODELS", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"},
                                             {"MASCHINENBUCH", "ID", "SCH_MASCHINENBUCH", "ID"},
                                             {"ONETODATE", "TEXT", "LOHNGRUPPE", "NAME"},
                                             {"PERSONAL", "LOHNGRUPPE", "LOHNGRUPPE", "NAME"},
                                             {"RECHNUNGSJOURNAL", "R_NAME", "HEADERRECH", "R_NAME"},
                                             {"T_EBENE1", "ID_HH_TITEL", "HH_TITEL", "ID"},
                                             {"T_EBENE2", "ID_T_EBENE1", "T_EBENE1", "ID"},
                                             {"T_EBENE3", "ID_T_EBENE2", "T_EBENE2", "ID"},
                                             {"T_EBENE4", "ID_T_EBENE3", "T_EBENE3", "ID"},
                                             {"BB_T_VERTRAG", "ID_ACCESS_LEVELS", "ACCESS_LEVELS", "ID"}})
        test::expectFound(sample_, reference);
    for (const test::Fault& fault :
         {test::Fault{"a rate of no wage type", "ONETODATE WHERE TABLE_COLUMN = 'LOHNARTEN.SATZ' AND TABLE_ID NOT IN "
                                                "(SELECT ID FROM LOHNARTEN)"},
          {"a wage type by date without a rate",
           "LOHNARTEN WHERE SLA = 1 AND ID NOT IN (SELECT TABLE_ID FROM ONETODATE "
           "WHERE TABLE_COLUMN = 'LOHNARTEN.SATZ')"},
          {"a worker whose last group is another one", "PERSONAL WHERE LOHNGRUPPE <> (SELECT TOP 1 TEXT FROM ONETODATE "
                                                       "WHERE TABLE_COLUMN = 'PERSONAL.LOHNGRUPPE' AND "
                                                       "TABLE_ID = PERSONAL.ID_PERSONAL ORDER BY DATUM DESC)"},
          {"a title of another chapter", "ONETOMANY INNER JOIN HH_TITEL ON HH_TITEL.ID = ONETOMANY.ID_SLAVE WHERE "
                                         "RELATION = 'HH_KAPITEL.HH_TITEL' AND ID_MASTER <> ID_HH_KAPITEL"},
          {"a machine without a driver's wage", "SCH_MASCHINENBUCH WHERE ID NOT IN (SELECT ID FROM MASCHINENBUCH)"}})
        test::expectNone(sample_, fault);
}

/// A title without levels is a leaf; one whose level is disabled falls out.
TEST_F(SettingsOnDatabase, TheBudgetIsATreeOfUpToFiveLevels)
{
    const std::string tree =
        "SELECT HH_TITEL.ID,T_EBENE1.ID,T_EBENE2.ID,T_EBENE3.ID,T_EBENE4.ID FROM HH_TITEL LEFT JOIN T_EBENE1 ON "
        "T_EBENE1.ID_HH_TITEL = HH_TITEL.ID LEFT JOIN T_EBENE2 ON T_EBENE2.ID_T_EBENE1 = T_EBENE1.ID LEFT JOIN "
        "T_EBENE3 "
        "ON T_EBENE3.ID_T_EBENE2 = T_EBENE2.ID LEFT JOIN T_EBENE4 ON T_EBENE4.ID_T_EBENE3 = T_EBENE3.ID WHERE "
        "ISNULL(T_EBENE1.DISABLE,0) = 0 AND HH_TITEL.ID IN (SELECT ID_SLAVE FROM ONETOMANY WHERE RELATION = "
        "'HH_KAPITEL.HH_TITEL' AND ID_MASTER = ";
    const std::string order = ") ORDER BY HH_TITEL.NUMBER,T_EBENE1.SHORT,T_EBENE2.SHORT,T_EBENE3.SHORT,T_EBENE4.SHORT";
    EXPECT_EQ(content(tree + "01" + order), "1|1|1|1|1\n1|1|1|1|2\n1|1|1|2|4\n1|1|2|3|3\n1|2|3|-|-\n2|3|4|4|5\n");
    EXPECT_EQ(content(tree + "02" + order), "3|4|5|-|-\n4|-|-|-|-\n");
    EXPECT_EQ(content(tree + "03" + order), "6|-|-|-|-\n");
    EXPECT_EQ(content(tree + "0" + order), "");
}

/// The lookup adds a row through its recordset, which gives no key, and then sets the level of the row with the
/// greatest one.
TEST_F(SettingsOnDatabase, ANewFrameworkContractGetsItsKeyAndLevel)
{
    ado::Recordset rows;
    rows.Open("SELECT SHORT,LONG,NUMMER FROM BB_T_VERTRAG WHERE ISNULL(DISABLE,0)=0", sample_,
              ado::CursorType::OpenDynamic, ado::LockType::Pessimistic, -1);
    rows.AddNew();
    rows.Fields().Item(0).Value("NV");
    rows.Fields().Item(1).Value("neuer Vertrag");
    rows.Fields().Item(2).Value("9");
    EXPECT_EQ(rows.Fields().Item(0).BASETABLENAME(), "BB_T_VERTRAG");
    rows.Update();
    rows.Close();
    sample_->Execute("UPDATE BB_T_VERTRAG SET ID_ACCESS_LEVELS = 5 WHERE ID IN (SELECT MAX(ID) FROM BB_T_VERTRAG)");
    EXPECT_EQ(content("SELECT ID,NUMMER,SHORT,LONG,ID_ACCESS_LEVELS FROM BB_T_VERTRAG WHERE ID > 3"),
              "4|9|NV|neuer Vertrag|5\n");
}

TEST_F(SettingsOnDatabase, AJournalRowStandsForEachDocument)
{
    EXPECT_EQ(content("SELECT COUNT(*) FROM RECHNUNGSJOURNAL"), content("SELECT COUNT(*) FROM HEADERRECH"));
    EXPECT_EQ(content("SELECT COUNT(*) FROM RECHNUNGSJOURNAL A INNER JOIN RECHNUNGSJOURNAL B ON B.ID = A.ID + 1 WHERE "
                      "A.INVDATE > B.INVDATE"),
              "0\n");
}

TEST_F(SettingsOnDatabase, TheChoiceOfAnUnsavedModelIsAddedToABox)
{
    const ObjectRef box = controls::make("ComboBox");
    std::vector<Variant> entry{"Grundeinstellung"};
    box->call("AddItem", entry);
    Comm_Set{}.Set_UnknownModelCmb(session_, *box);
    EXPECT_EQ(convert::toText(box->get("Text", {})), "<Unbekanntes Modell>");
    EXPECT_EQ(convert::toLong(box->get("ListIndex", {})), 1);
}

} // namespace
} // namespace tamarok::database
