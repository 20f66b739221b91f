#include <array>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "support/surroundings.h"

#include "tamarok/comm_get.h"

namespace tamarok {
namespace {

using test::Surroundings;

/// Texts that show their numbers.
std::string nameOf(std::string_view code)
{
    Surroundings with;
    for (int number = 1; number < 7000; ++number)
        with.loc.texts[number] = std::string{"<"}.append(std::to_string(number)).append(">");
    std::string name = Comm_Get{}.Get_Print_Name(with.session, code);
    EXPECT_TRUE(with.messages->shown.empty()) << code;
    EXPECT_TRUE(with.database.opened.empty());
    return name;
}

struct NameCase {
    const char* code;
    const char* name;
};

TEST(PrintName, IsTheCodeAndATextOfTheLanguage)
{
    for (const NameCase& c : {
             NameCase{"HV 11Z", "HV 11z  <5141>"},
             NameCase{"HV 9YZ", "HV 9yz  <5159>"},
             NameCase{"HE 110", "HE 110  <5130>"},
             NameCase{"HE 34Z", "HE 34z  <4973>"},
             NameCase{"BB 250", "BB 250  <5079>"},
             NameCase{"KW 510", "KW 510  <5542>"},
             NameCase{"KW 41Z", "KW 41z  <4738> <5109>"},
             NameCase{"KW 42Z", "KW 42z  <4738> <5110>"},
             NameCase{"HB 9YZ", "HB 9yz  <5424>"},
             NameCase{"FA 44Z", "FA 44z  <5429>"},
             NameCase{"KL 9XYZ", "KL 9xyz  <5455>"},
             NameCase{"KL 52Z", "KL 52z  <6160>"},
             NameCase{"JP 9XY", "JP 9XY  <5781>"},
             NameCase{"JP 02Z", "JP 02Z  <5759>"},
             NameCase{"TG 13Z", "TG 13z  <5077>"},
             NameCase{"KV 120", "KV 120  <5212>"},
             NameCase{"MV 730", "MV 730  <6251>"},
         })
        EXPECT_EQ(nameOf(c.code), c.name);
}

TEST(PrintName, IsFixedForSomeReports)
{
    for (const NameCase& c : {
             NameCase{"MB 110", "MB 110  Fahrtenbuch"},
             NameCase{"MB 120", "MB 120  Objektnummer"},
             NameCase{"MB 130", "MB 130  Stammkarte/Kostenblatt"},
             NameCase{"MB 21Z", "MB 21z  Kostenübersicht Maschinen"},
             NameCase{"HE 410", "HE 410  MV-Bereitstellung"},
             NameCase{"VJ 001", "VJ 001  Jagdbezirksverzeichnis"},
             NameCase{"VJ 210", "VJ 210  Abschussplan"},
             NameCase{"VJ 220", "VJ 220  Wildursprungsschein"},
             NameCase{"VJ 23Z", "VJ 23z  Streckenbuch Schalenwild"},
             NameCase{"VJ 24Z", "VJ 24z  Streckenbuch Niederwild"},
             NameCase{"VJ 25Z", "VJ 25z  Streckenbuch Raubwild"},
             NameCase{"VJ 26Z", "VJ 26z  Erlegungsaufwand"},
             NameCase{"VJ 31Z", "VJ 31z  Streckenmeldung Nieder- und Raubwild"},
             NameCase{"VJ 41Z", "VJ 41z  Bericht-Abschussbeteiligung"},
             NameCase{"VJ 42Z", "VJ 42z  Bericht-Abschuss von Trophäenträgern"},
             NameCase{"VJ 51Z", "VJ 51z  Plan-Ist-Vergleich Schalenwild"},
             NameCase{"VJ 52Z", "VJ 52z  Vergleich Jagdstrecke nach ÄfF/Oberförstereien"},
             NameCase{"VJ 610", "VJ 610  Jagdhunde"},
             NameCase{"UE 21Z", "UE 21z  Umsatzsteuer - Voranmeldung"},
             NameCase{"UE 31Z", "UE 31z  Umsatzsteuererklärung"},
             NameCase{"UE 41Z", "UE 41z  Meldung innergemeinschaftlicher Lieferungen"},
             NameCase{"JP 82Z", "JP 82Z  Projektabrechnung nach Projektnummern"},
             NameCase{"STEH_VORK", "Vorkalkulation"},
             NameCase{"STEH_DURC", "Auswertung nach Durchmesserstufen"},
             NameCase{"STEH_SORT", "Auswertung nach Sortimenten"},
             NameCase{"STEH_STKL", "Auswertung nach Stärkeklassen"},
         }) {
        const Surroundings with;
        EXPECT_EQ(Comm_Get{}.Get_Print_Name(with.session, c.code), c.name);
        EXPECT_EQ(with.loc.services, 0) << c.code;
    }
}

TEST(PrintName, OfAnUnknownCodeShowsAMessage)
{
    for (const std::string_view code : {"HV 11z", "", "HV", "HV11Z", "HV 11Z ", "XX 110", "ZZZ", "hv 11Z", "A"}) {
        const Surroundings with;
        EXPECT_EQ(Comm_Get{}.Get_Print_Name(with.session, code), "");
        EXPECT_EQ(with.messages->shown,
                  (std::vector<test::ShownMessage>{{"Error in F_BBFPrint_BB_HV.Get_Print_Name", 48, "Tamarok"}}))
            << code;
    }
}

} // namespace
} // namespace tamarok
