#include <clocale>
#include <gtest/gtest.h>

/// The locale is for SQLite's driver, which has no wide functions.
int main(int argc, char** argv)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
