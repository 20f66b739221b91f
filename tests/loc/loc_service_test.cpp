#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/ado.h"
#include "tamarok/error.h"
#include "tamarok/form.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok::loc {
namespace {

/// An object with the properties given to it and no others.
class PropertyBag final : public Object {
public:
    explicit PropertyBag(std::map<std::string, Variant> properties) : properties_{std::move(properties)} {}

    std::string_view typeName() const override { return "PropertyBag"; }

    Variant get(std::string_view name, std::span<const Variant> /*args*/) const override
    {
        const auto found = properties_.find(std::string{name});
        if (found == properties_.end()) noSuchMember(name);
        return found->second;
    }

    void put(std::string_view name, const Variant& value) override
    {
        const auto found = properties_.find(std::string{name});
        if (found == properties_.end()) noSuchMember(name);
        found->second = value;
    }

    Variant caption() const { return get("Caption", {}); }

private:
    std::map<std::string, Variant> properties_;
};

std::shared_ptr<PropertyBag> label(const Variant& tag, std::string_view caption = "as designed")
{
    return std::make_shared<PropertyBag>(std::map<std::string, Variant>{{"Tag", tag}, {"Caption", caption}});
}

Variant arrayOf(std::vector<Variant> items)
{
    return VariantArray{std::move(items)};
}

/// Returns the error that `action` throws; number 0 if it throws none.
template <class Action>
Error failureOf(Action action)
{
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    return Error{0, "no failure", "test"};
}

/// The service on the texts of the reference database, with some texts of the customer.
class LocServiceTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        connection_ = embedded::connectInMemory();
        database::createReferenceDatabase(*connection_, {.logs = 0, .records = 0});
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN,CUSTOM_GERMAN,ENGLISH,CUSTOM_ENGLISH) VALUES "
                             "(7001,'Rundholz','Stämme','Logs',NULL)");
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN,CUSTOM_GERMAN) VALUES (7002,NULL,NULL)");
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN,CUSTOM_GERMAN) VALUES (7003,'','')");
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN,CUSTOM_GERMAN) VALUES (7004,'Polter','')");
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN,CUSTOM_GERMAN) VALUES (7005,NULL,'Nur Kunde')");
        connection_->Execute("INSERT INTO STRINGS (ID_STRING,GERMAN) VALUES (32767,'Letzter Text')");
    }
    static void TearDownTestSuite() { connection_.reset(); }

    LocServiceTest()
    {
        session_.db_ADO = connection_;
        session_.strLanguage = "GERMAN";
    }

    static ado::ConnectionRef connection_;
    TmkVar session_;
    std::unique_ptr<LocService> service_ = makeLocService();
};
ado::ConnectionRef LocServiceTest::connection_;

TEST_F(LocServiceTest, TextIsInTheLanguageOfTheSession)
{
    EXPECT_EQ(service_->GetText(6, session_), "Ja");
    EXPECT_EQ(service_->GetText(5, session_), "Nein");
    session_.strLanguage = "ENGLISH";
    EXPECT_EQ(service_->GetText(6, session_), "Yes");
    session_.strLanguage = "FRENCH";
    EXPECT_EQ(service_->GetText(6, session_), "Oui");
    session_.strLanguage = "german";
    EXPECT_EQ(service_->GetText(6, session_), "Ja") << "names of columns compare without regard to case";
}

TEST_F(LocServiceTest, TextOfTheCustomerComesFirst)
{
    EXPECT_EQ(service_->GetText(7001, session_), "Stämme");
    EXPECT_EQ(service_->GetText(7005, session_), "Nur Kunde");
    session_.strLanguage = "ENGLISH";
    EXPECT_EQ(service_->GetText(7001, session_), "Logs") << "the customer has no English wording";
}

TEST_F(LocServiceTest, NumberWithoutTextIsShownInAngleBrackets)
{
    EXPECT_EQ(service_->GetText(4711, session_), "<4711>") << "no row";
    EXPECT_EQ(service_->GetText(7002, session_), "<7002>") << "Null";
    EXPECT_EQ(service_->GetText(7003, session_), "<7003>") << "empty";
    EXPECT_EQ(service_->GetText(7004, session_), "<7004>") << "an empty wording of the customer hides the text";
    session_.strLanguage = "FRENCH";
    EXPECT_EQ(service_->GetText(7001, session_), "<7001>") << "no French text";
}

TEST_F(LocServiceTest, NumbersAtTheEndsOfTheirRange)
{
    EXPECT_EQ(service_->GetText(0, session_), "<0>");
    EXPECT_EQ(service_->GetText(-1, session_), "<-1>");
    EXPECT_EQ(service_->GetText(INT16_MAX, session_), "Letzter Text");
    EXPECT_EQ(service_->GetText(INT16_MIN, session_), "<-32768>");
}

TEST_F(LocServiceTest, GetText2GivesTheSameTextAsAnSqlLiteral)
{
    for (const std::int16_t number : {std::int16_t{5}, std::int16_t{7001}, std::int16_t{4711}})
        EXPECT_EQ(service_->GetText2(number, session_), "N'" + service_->GetText(number, session_) + "'") << number;
    session_.strLanguage = "ENGLISH";
    EXPECT_EQ(service_->GetText2(6, session_), "N'Yes'");
    session_.db_ADO->Execute("UPDATE STRINGS SET CUSTOM_ENGLISH = 'O''Key' WHERE ID_STRING = 6");
    EXPECT_EQ(service_->GetText2(6, session_), "N'O''Key'");
}

TEST_F(LocServiceTest, UnknownLanguageIsRefusedByTheDatabase)
{
    for (const char* language : {"", "DANISH"}) {
        session_.strLanguage = language;
        const Error error = failureOf([&] { service_->GetText(6, session_); });
        EXPECT_EQ(error.number, errors::statementRefused) << '"' << language << '"';
    }
}

TEST_F(LocServiceTest, EachDialectHasItsNullFunction)
{
    std::vector<std::string> statements;
    connection_->listen([&](std::string_view statement) { statements.emplace_back(statement); });
    EXPECT_EQ(service_->GetText(6, session_), "Ja");
    session_.bolOracle = true;
    EXPECT_EQ(service_->GetText(6, session_), "Ja");
    connection_->listen({});
    EXPECT_EQ(statements, (std::vector<std::string>{
                              "SELECT ISNULL(CUSTOM_GERMAN,ISNULL(GERMAN,'')) FROM STRINGS WHERE ID_STRING = 6",
                              "SELECT NVL(CUSTOM_GERMAN,NVL(GERMAN,'')) FROM STRINGS WHERE ID_STRING = 6"}));
}

TEST_F(LocServiceTest, SessionWithoutOpenConnectionFails)
{
    session_.db_ADO = nullptr;
    EXPECT_EQ(failureOf([&] { service_->GetText(6, session_); }).number, errors::objectNotSet);
    session_.db_ADO = embedded::connectInMemory();
    EXPECT_EQ(failureOf([&] { service_->GetText(6, session_); }).number, errors::statementRefused)
        << "an empty database has no table STRINGS";
    session_.db_ADO->Close();
    EXPECT_EQ(failureOf([&] { service_->GetText(6, session_); }).number, errors::connectionClosed);
}

TEST_F(LocServiceTest, FormAndControlsGetTheCaptionsOfTheirTags)
{
    const auto yes = label("6");
    const auto no = label("00005");
    PropertyBag form{{{"Tag", "7001"}, {"Caption", ""}, {"Controls", arrayOf({yes, no})}}};
    service_->TranslateForm(session_, form);
    EXPECT_EQ(form.caption(), Variant{"Stämme"});
    EXPECT_EQ(yes->caption(), Variant{"Ja"});
    EXPECT_EQ(no->caption(), Variant{"Nein"}) << "leading zeros";
    session_.strLanguage = "FRENCH";
    service_->TranslateForm(session_, form);
    EXPECT_EQ(yes->caption(), Variant{"Oui"}) << "a form is translated again";
}

TEST_F(LocServiceTest, AHeadlessFormAndItsLabelsGetTheCaptionsOfTheirTags)
{
    const auto form = std::make_shared<controls::Form>();
    form->Tag = "7001";
    for (const char* tag : {"6", "", "5"}) {
        const auto made = controls::make("Label");
        made->Tag = tag;
        made->Parent(form);
    }
    service_->TranslateForm(session_, *form);
    EXPECT_EQ(form->Caption, "Stämme");
    const auto captionOf = [&](std::int32_t position) { return form->controls()->Item(position)->get("Caption", {}); };
    EXPECT_EQ(captionOf(1), Variant{"Ja"});
    EXPECT_EQ(captionOf(2), Variant{""});
    EXPECT_EQ(captionOf(3), Variant{"Nein"});
}

TEST_F(LocServiceTest, TagThatIsNoTextNumberLeavesTheCaption)
{
    const std::vector<Variant> tags{"",       "0",     "-6",    "6 ",   " 6", "6a", "0x6",   "6.0",          "Ja",
                                    "123456", "32768", "99999", Null{}, true, 6.0,  Empty{}, std::int32_t{6}};
    std::vector<std::shared_ptr<PropertyBag>> labels;
    std::vector<Variant> controls;
    for (const Variant& tag : tags) {
        labels.push_back(label(tag));
        controls.emplace_back(ObjectRef{labels.back()});
    }
    PropertyBag form{{{"Controls", arrayOf(controls)}}};
    service_->TranslateForm(session_, form);
    for (std::size_t i = 0; i < labels.size(); ++i)
        EXPECT_EQ(labels[i]->caption(), Variant{"as designed"}) << "tag " << i;
}

TEST_F(LocServiceTest, UnknownTextNumberShowsItself)
{
    PropertyBag form{{{"Tag", "4711"}, {"Caption", ""}}};
    service_->TranslateForm(session_, form);
    EXPECT_EQ(form.caption(), Variant{"<4711>"});
}

TEST_F(LocServiceTest, FormWithoutTagOrControlsStaysAsItIs)
{
    PropertyBag form{{{"Caption", "as designed"}}};
    service_->TranslateForm(session_, form);
    EXPECT_EQ(form.caption(), Variant{"as designed"});
    PropertyBag without{{{"Caption", "as designed"}, {"Controls", Null{}}}};
    service_->TranslateForm(session_, without);
    PropertyBag untagged{{{"Controls", arrayOf({ObjectRef{}, "text",
                                                std::make_shared<PropertyBag>(std::map<std::string, Variant>{})})}}};
    EXPECT_NO_THROW(service_->TranslateForm(session_, untagged)) << "entries without a tag are skipped";
}

TEST_F(LocServiceTest, TaggedControlWithoutCaptionIsAnError)
{
    const auto line = std::make_shared<PropertyBag>(std::map<std::string, Variant>{{"Tag", "6"}});
    PropertyBag form{{{"Controls", arrayOf({ObjectRef{line}})}}};
    EXPECT_EQ(failureOf([&] { service_->TranslateForm(session_, form); }).number, errors::noSuchMember);
}

/// A form whose tag cannot be read for another reason than that it has none.
class BrokenForm final : public Object {
public:
    std::string_view typeName() const override { return "BrokenForm"; }
    Variant get(std::string_view /*name*/, std::span<const Variant> /*args*/) const override
    {
        throw Error{errors::objectClosed, "The form is unloaded.", "BrokenForm"};
    }
};

TEST_F(LocServiceTest, FailureOfAFormOrOfTheDatabaseReachesTheCaller)
{
    BrokenForm broken;
    EXPECT_EQ(failureOf([&] { service_->TranslateForm(session_, broken); }).number, errors::objectClosed);
    PropertyBag form{{{"Tag", "6"}, {"Caption", "as designed"}}};
    session_.strLanguage = "DANISH";
    EXPECT_EQ(failureOf([&] { service_->TranslateForm(session_, form); }).number, errors::statementRefused);
    EXPECT_EQ(form.caption(), Variant{"as designed"});
}

/// Appends the parameters of tmk_OPTIONEN_INS, which stores a setting.
void appendOption(ado::Command& command, std::string_view property, std::int64_t kind, std::string_view value)
{
    const auto append = [&](std::string_view name, ado::DataType type, const Variant& argument) {
        command.Parameters().push_back(
            command.CreateParameter(name, type, ado::ParameterDirection::Input, 100, argument));
    };
    append("PROPERTY", ado::DataType::VarChar, property);
    append("KIND", ado::DataType::BigInt, kind);
    append("VALUE", ado::DataType::VarChar, value);
}

std::string optionText(const ado::ConnectionRef& connection, const std::string& property)
{
    ado::Recordset rows;
    rows.Open("SELECT TEXT_VALUE FROM OPTIONEN WHERE PROPERTY_ID = '" + property + "'", connection);
    if (rows.AtEOF()) return "no row";
    const Variant value = rows.Fields().Item(0).Value();
    return value.isString() ? value.asString() : "no text";
}

TEST_F(LocServiceTest, ProcedureRunsWithTheParametersOfTheCommand)
{
    ado::Command command;
    appendOption(command, "LOC_TEST", 1, "Fichte");
    service_->RunProcedure(session_, "tmk_OPTIONEN_INS", command);
    EXPECT_EQ(optionText(connection_, "LOC_TEST"), "Fichte");
    EXPECT_EQ(command.CommandText, "tmk_OPTIONEN_INS");
    EXPECT_EQ(command.CommandType, ado::CommandType::StoredProcedure);
    EXPECT_EQ(command.ActiveConnection, connection_);

    command.Parameters().back().value = "Tanne";
    service_->RunProcedure(session_, "tmk_OPTIONEN_INS", command);
    EXPECT_EQ(optionText(connection_, "LOC_TEST"), "Tanne") << "the command can be run again";
}

TEST_F(LocServiceTest, FailedProcedureReachesTheCallerAndChangesNothing)
{
    ado::Command wrongKind;
    appendOption(wrongKind, "LOC_REFUSED", 9, "x");
    const Error refused = failureOf([&] { service_->RunProcedure(session_, "tmk_OPTIONEN_INS", wrongKind); });
    EXPECT_NE(refused.number, 0);
    EXPECT_NE(refused.description.find("tmk_OPTIONEN_INS"), std::string::npos) << refused.description;
    EXPECT_EQ(optionText(connection_, "LOC_REFUSED"), "no row");

    ado::Command unknown;
    appendOption(unknown, "LOC_REFUSED", 1, "x");
    const Error missing = failureOf([&] { service_->RunProcedure(session_, "tmk_NO_SUCH", unknown); });
    EXPECT_EQ(missing.number, errors::statementRefused);
    EXPECT_NE(missing.description.find("tmk_NO_SUCH"), std::string::npos) << missing.description;
}

TEST_F(LocServiceTest, ProcedureNeedsAnOpenConnection)
{
    ado::Command command;
    appendOption(command, "LOC_REFUSED", 1, "x");
    session_.db_ADO = nullptr;
    EXPECT_EQ(failureOf([&] { service_->RunProcedure(session_, "tmk_OPTIONEN_INS", command); }).number,
              errors::connectionClosed);
    session_.db_ADO = embedded::connectInMemory();
    session_.db_ADO->Close();
    EXPECT_EQ(failureOf([&] { service_->RunProcedure(session_, "tmk_OPTIONEN_INS", command); }).number,
              errors::connectionClosed);
}

} // namespace
} // namespace tamarok::loc
