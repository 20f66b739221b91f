#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "rights/lock_database.h"

namespace tamarok {
namespace {

constexpr std::size_t stations = 16;
constexpr int objects = 20;
constexpr int turnsEach = 200;
constexpr int firstUser = 101;

/// Sixteen processes lock and release twenty objects; some are killed at any moment and start again.
///
/// A conflict costs the process that asks five seconds, during which its own row refuses the next one, so free
/// processes would soon only wait for each other. Therefore they work in rounds. In most rounds each asks for
/// another object and releases it. In some rounds all ask for one of four objects, and a process that gets its
/// object keeps it until all have their answer. A killed process starts again between two rounds.
class LockStress : public ::testing::Test {
protected:
    struct Station {
        std::unique_ptr<test::ChildProcess> process;
        int done = 0;
    };

    LockStress()
    {
        for (std::size_t i = 0; i < stations; ++i) {
            const std::string id = std::to_string(userOf(i));
            database.connection->Execute("INSERT INTO USERS (ID,NAME) VALUES (" + id + ",'USER" + id + "')");
            start(i);
        }
        database.connection->Execute("DELETE FROM BB_BELEGE_KOPF");
        for (int object = 1; object <= objects; ++object)
            database.connection->Execute("SET IDENTITY_INSERT BB_BELEGE_KOPF ON INSERT INTO BB_BELEGE_KOPF "
                                         "(ID,BELEGNUMMER) VALUES (" +
                                         std::to_string(object) + ",'B')");
    }

    static int userOf(std::size_t station) { return firstUser + static_cast<int>(station); }
    int random(int below) { return std::uniform_int_distribution<int>{0, below - 1}(random_); }

    /// Starts a station, also again: the rows of a dead session do not hinder its own user.
    void start(std::size_t station)
    {
        all[station].process = database.station(userOf(station));
        ASSERT_EQ(all[station].process->ask("login"), "true") << userOf(station);
    }

    /// Draws an object for each station: all different, or one of four.
    std::array<int, stations> draw(bool crowded)
    {
        std::array<int, objects> order{};
        std::iota(order.begin(), order.end(), 1);
        std::ranges::shuffle(order, random_);
        std::array<int, stations> drawn{};
        for (std::size_t i = 0; i < stations; ++i)
            drawn[i] = crowded ? order[static_cast<std::size_t>(random(4))] : order[i];
        return drawn;
    }

    /// Tells whether a station got its object. A refusal is right only if others asked for it too.
    bool judge(std::size_t station, const std::string& answer, bool crowded)
    {
        if (answer == "held") {
            ++all[station].done;
            return true;
        }
        refusals += answer == "refused" ? 1 : 0;
        EXPECT_TRUE(crowded && answer == "refused") << userOf(station) << ": " << answer;
        return false;
    }

    /// All stations ask at the same time; `victim`, if any, is killed while they wait.
    void round(bool crowded, std::optional<std::size_t> victim)
    {
        const auto drawn = draw(crowded);
        for (std::size_t i = 0; i < stations; ++i)
            all[i].process->tell((crowded ? "keep " : "turn ") + std::to_string(drawn[i]));
        if (victim) all[*victim].process->kill();
        std::vector<std::size_t> holders;
        for (std::size_t i = 0; i < stations; ++i)
            if (i != victim && judge(i, all[i].process->line(), crowded) && crowded) holders.push_back(i);
        EXPECT_LE(holders.size(), 4U);
        for (const std::size_t holder : holders)
            EXPECT_EQ(all[holder].process->ask("release " + std::to_string(drawn[holder])), "released");
    }

    /// Kills a station that has a lock. The next one to ask gets the lock, and all rows of the dead session go.
    void killHolder(std::size_t victim)
    {
        const std::size_t heir = (victim + 1) % stations;
        const std::string object = std::to_string(1 + random(objects));
        EXPECT_EQ(all[victim].process->ask("keep " + object), "held");
        all[victim].process->kill();
        judge(heir, all[heir].process->ask("turn " + object), false);
        EXPECT_EQ(database.count("ID_USERS = " + std::to_string(userOf(victim))), 0);
        start(victim);
    }

    test::LockDatabase database;
    std::array<Station, stations> all;
    int refusals = 0;

private:
    std::mt19937 random_{20240517};
};

TEST_F(LockStress, NoObjectIsEverHeldByTwoLiveSessionsAndDeadOnesHinderNobody)
{
    constexpr int crowdedEvery = 32;
    int kills = 0;
    int rounds = 0;
    const auto finished = [&] { return std::ranges::all_of(all, [](const auto& s) { return s.done >= turnsEach; }); };
    while (!finished() && !HasFailure()) {
        const bool crowded = rounds++ % crowdedEvery == 0;
        std::optional<std::size_t> victim;
        if (random(6) == 0) victim = static_cast<std::size_t>(random(stations));
        round(crowded, victim);
        if (victim) {
            ++kills;
            start(*victim);
        } else if (random(10) == 0) {
            ++kills;
            killHolder(static_cast<std::size_t>(random(stations)));
        }
    }
    EXPECT_GE(kills, 20);
    EXPECT_GE(refusals, 10);
    EXPECT_EQ(database.count("LOGIN IS NULL"), 0);
    EXPECT_EQ(database.count("LOGIN IS NOT NULL"), static_cast<std::int32_t>(stations));
    RecordProperty("rounds", rounds);
    RecordProperty("kills", kills);
    RecordProperty("refusals", refusals);
}

} // namespace
} // namespace tamarok
