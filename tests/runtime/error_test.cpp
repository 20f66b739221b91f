#include "runtime/support.h"

namespace tamarok {
namespace {

TEST(Error, CarriesNumberSourceAndDescription)
{
    const Error error{errors::typeMismatch, "Type mismatch.", "Comm_Get.Get_Number"};
    EXPECT_EQ(error.number, 13);
    EXPECT_EQ(error.description, "Type mismatch.");
    EXPECT_EQ(error.source, "Comm_Get.Get_Number");
    EXPECT_STREQ(error.what(), "Comm_Get.Get_Number: Type mismatch.");
}

TEST(Error, WithoutSourceWhatIsTheDescription)
{
    EXPECT_STREQ(Error(errors::overflow, "Overflow.").what(), "Overflow.");
}

TEST(Error, ContextGoesBeforeTheDescriptionWhileTheErrorRises)
{
    try {
        try {
            throw Error{errors::overflow, "Overflow."};
        } catch (Error& error) {
            throw error.addContext("row 7");
        }
    } catch (const Error& error) {
        EXPECT_EQ(error.description, "row 7: Overflow.");
        EXPECT_STREQ(error.what(), "row 7: Overflow.");
        return;
    }
    FAIL() << "no error arrived";
}

TEST(Error, ProviderNumbersAreThoseOfTheirHexadecimalForm)
{
    EXPECT_EQ(errors::statementRefused, -2147217900);
    EXPECT_EQ(errors::timeout, -2147217871);
    EXPECT_EQ(errors::constraintViolated, -2147217873);
    EXPECT_EQ(errors::providerFailure, -2147467259);
}

} // namespace
} // namespace tamarok
